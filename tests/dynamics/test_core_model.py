"""What the velocity of a polygon lacks, and runs against the theory of thin filaments."""

import math

import numpy as np
import pytest
import vkmcore
from validate_dynamics import leapfrog_quarter, leapfrogging_pair, thin_filament_run, trefoil
from vkmcore import simulate
from vkmcore.dynamics.core_model import EVEN_DEFICIT, MODELS, filament_velocity, sum_deficit
from vkmcore.dynamics.thin_filament import kelvin_wave_frequency, ring_speed, thin_filament_velocity

CORE = 1e-3


def circle(n, angles=None):
    t = 2 * np.pi * np.arange(n) / n if angles is None else angles
    return np.stack([np.cos(t), np.sin(t), 0 * t], axis=1)


def crowded(n):
    """Edges that vary by a factor of four, smoothly."""
    t = 2 * np.pi * np.arange(n) / n
    return circle(n, t + 0.6 * np.sin(t))


def order(errors):
    """Of errors at resolutions that double."""
    return -np.polyfit(np.arange(len(errors)), np.log2(np.abs(errors)), 1)[0]


def test_even_edges_lack_the_closed_form():
    assert pytest.approx(0.0364899739785765 + (7 * 1.2020569031595942 - 8) / 4, abs=1e-14) == EVEN_DEFICIT
    assert np.allclose(sum_deficit(vkmcore.sample_circle(60)), EVEN_DEFICIT, rtol=0, atol=1e-7)
    assert np.allclose(sum_deficit(1e-15 * circle(5)), EVEN_DEFICIT, rtol=0, atol=1e-7)


def test_uneven_edges_lack_the_plain_sum():
    """The sum over all edges of a long straight polygon, which needs no model of the rest."""
    lengths = np.random.default_rng(4).uniform(0.5, 2.0, 4000)
    points = np.zeros((4001, 3))
    points[1:, 0] = np.cumsum(lengths)
    i = 2000
    total = 0.0
    for side in (lengths[i:], lengths[:i][::-1]):
        ends = np.cumsum(side)
        q = side[1:] / (ends[1:] + ends[:-1])
        total += 0.5 * (2 * np.arctanh(q) - 2 * q * (1 - q * q)).sum()
    assert sum_deficit(points)[i] == pytest.approx(total, abs=2e-3)  # the far edges are taken as even
    assert abs(total - EVEN_DEFICIT) > 5 * 2e-3  # and are not


@pytest.mark.parametrize("core, constant", [("solid", -0.25), ("hollow", -0.5)])
@pytest.mark.parametrize("ring", [circle, crowded])
def test_the_speed_of_a_ring_converges_with_order_two(core, constant, ring):
    theory = (math.log(8 / 5e-4) + constant) / (4 * math.pi)
    assert ring_speed(1.0, 5e-4, 1.0, core) == pytest.approx(theory, rel=1e-15)
    errors = []
    for n in (25, 50, 100, 200):
        [velocity], fastest = filament_velocity([{"points": ring(n)}], {"core_radius": 5e-4}, core)
        errors.append(np.abs(velocity[:, 2] / theory - 1).max())
        assert fastest == pytest.approx(np.linalg.norm(velocity, axis=1).max(), rel=1e-14)
    assert 1.8 < order(errors) < 3.5 and errors[-1] < 1e-4, errors
    options = {"core_radius": 5e-4, "lia_constant": constant}
    [raw], _ = filament_velocity([{"points": circle(1000)}], options, "raw")
    assert raw[:, 2].mean() == pytest.approx(theory - EVEN_DEFICIT / (4 * math.pi), rel=2e-6)
    assert np.array_equal(raw, vkmcore.compute_filament_velocity([{"points": circle(1000)}], options)["velocity"][0])


def test_edges_of_any_lengths_do():
    angles = 2 * np.pi * (np.arange(400) + np.random.default_rng(1).uniform(-0.4, 0.4, 400)) / 400
    [velocity], _ = filament_velocity([{"points": circle(400, angles)}], {"core_radius": CORE}, "solid")
    assert np.allclose(velocity[:, 2], ring_speed(1.0, CORE), rtol=3e-4)


def test_only_a_filament_s_own_sum_lacks_something():
    ring = {"points": circle(50)}
    passive, ghost = {**ring, "source": False}, {**ring, "ghost": True}
    for filament, options in ((passive, {}), (ghost, {}), (ring, {"lia_only": True})):
        raw = vkmcore.compute_filament_velocity([filament], options)
        [velocity], fastest = filament_velocity([filament], options)
        assert np.array_equal(velocity, raw["velocity"][0]) and fastest == raw["maximum_speed"]
    apart = {"points": circle(50) + [0, 0, 3.0], "circulation": -2.0}
    raw = vkmcore.compute_filament_velocity([ring, passive, apart])["velocity"]
    both, _ = filament_velocity([ring, passive, apart])
    shift = EVEN_DEFICIT / (4 * math.pi) * math.cos(math.pi / 50)  # the polygon's curvature
    for velocity, before, added in zip(both, raw, (shift, 0.0, -2.0 * shift), strict=True):
        assert np.allclose(velocity - before, [0, 0, added], rtol=0, atol=1e-8)


@pytest.mark.parametrize("core", ["solid", "hollow"])
def test_waves_of_a_ring_are_kelvin_s_where_they_are_short(core):
    """Kelvin (1880): k^2 Gamma / (4 pi) (log(2 / (k a)) - gamma + C + 1/2) on a straight filament."""
    constant = {"solid": -0.25, "hollow": -0.5}[core]
    for mode in (200, 2000):
        k = mode / 2.0
        kelvin = 3.0 * k * k / (4 * math.pi) * (math.log(2 / (k * 1e-7)) - np.euler_gamma + constant + 0.5)
        assert kelvin_wave_frequency(mode, 2.0, 1e-7, 3.0, core) == pytest.approx(kelvin, rel=3.0 / mode**1.5)
    assert kelvin_wave_frequency(1, 2.0, 1e-7, 3.0, core) == pytest.approx(0.0, abs=1e-6)
    with pytest.raises(ValueError, match="mode"):
        kelvin_wave_frequency(0, 1.0, CORE)


def test_the_velocity_of_a_smooth_curve_is_spectral_and_the_polygon_s_limit():
    uneven = thin_filament_velocity(2.0 * crowded(64), CORE, 3.0, "hollow")
    assert np.allclose(uneven, [0, 0, ring_speed(2.0, CORE, 3.0, "hollow")], rtol=0, atol=1e-9)
    exact = thin_filament_velocity(trefoil(512), CORE)
    coarse = thin_filament_velocity(trefoil(128), CORE)
    assert np.abs(coarse - exact[::4]).max() < 1e-7
    errors = []
    for n in (64, 128, 256, 512):
        [velocity], _ = filament_velocity([{"points": trefoil(n)}], {"core_radius": CORE}, "solid")
        errors.append(np.abs(velocity - exact[:: 512 // n]).max())
    assert 1.9 < order(errors) < 2.3 and errors[-1] < 5e-4, errors


def test_waves_on_a_ring_turn_at_their_frequency():
    """A standing wave of mode 3: its amplitude along the axis is 0 after a quarter of the period."""
    frequency = kelvin_wave_frequency(3, 1.0, CORE)
    errors = []
    for n in (32, 64, 128):
        t = 2 * np.pi * np.arange(n) / n
        points = circle(n) + 1e-4 * np.outer(np.cos(3 * t), [0, 0, 1])
        quarter = 0.5 * math.pi / frequency
        run = simulate([{"points": points}], quarter, {"core_radius": CORE}, core="solid", frame_interval=quarter)
        rest = 2 * (run.frames[-1].points[0][:, 2] * np.cos(3 * t)).mean() / 1e-4
        errors.append(rest)  # the phase that is left
    assert 1.7 < order(errors) < 2.6 and abs(errors[-1]) < 3e-3, errors


def test_rings_leapfrog_when_theory_says():
    theory = leapfrog_quarter(1.0, 0.6, CORE)
    errors = [leapfrogging_pair(n, 0.6, CORE)[0] / theory - 1 for n in (24, 48, 96)]
    assert 1.7 < order(errors) < 2.6 and abs(errors[-1]) < 3e-3, errors


def test_a_trefoil_moves_as_theory_says():
    theory = thin_filament_run(trefoil(96), 0.2, 20, CORE)[-1]
    errors = []
    for n in (48, 96, 192):
        run = simulate([{"points": trefoil(n)}], 0.2, {"core_radius": CORE}, core="solid", frame_interval=0.2)
        n_common = min(n, 96)
        found = run.frames[-1].points[0][:: n // n_common]
        errors.append(np.abs(found - theory[:: 96 // n_common]).max())
    assert 1.7 < order(errors) < 2.6 and errors[-1] < 1e-3, errors


@pytest.mark.parametrize(
    "core, options, text",
    [
        ("soft", {}, f"unknown core 'soft'; known are {', '.join(MODELS)}"),
        ("solid", {"lia_constant": 0.25}, "has the constant -0.25; leave out lia_constant"),
    ],
)
def test_bad_models(core, options, text):
    with pytest.raises(ValueError, match=f"^simulate: .*{text}"):
        simulate([{"points": circle(9)}], 1.0, options, core=core)
    with pytest.raises(ValueError, match=text):
        filament_velocity([{"points": circle(9)}], options, core)


def test_the_model_belongs_to_the_run(tmp_path):
    path, ring = tmp_path / "run.npz", [{"points": circle(12)}]
    simulate(ring, 0.1, core="hollow", trajectory=path, dt=0.05, frame_interval=0.05)
    assert vkmcore.load_trajectory(path).settings["core"] == "hollow"
    with pytest.raises(ValueError, match="of a run with"):
        simulate(ring, 0.2, core="solid", trajectory=path, resume=True, dt=0.05, frame_interval=0.05)
    more = simulate(ring, 0.2, core="hollow", trajectory=path, resume=True, dt=0.05, frame_interval=0.05)
    whole = simulate(ring, 0.2, core="hollow", dt=0.05, frame_interval=0.05)
    assert np.array_equal(more.frames[-1].points[0], whole.frames[-1].points[0])
