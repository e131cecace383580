"""The tail surrogate against plain loops of its formula."""

import math

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal
from sums import one_by_one

CORE_RADIUS = 1.40897017e-15


def sub(a, b):
    return (a[0] - b[0], a[1] - b[1], a[2] - b[2])


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def norm(a):
    return math.sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2])


def normalise(a):
    length = norm(a)
    return (1.0, 0.0, 0.0) if length < 1e-30 else (a[0] / length, a[1] / length, a[2] / length)


def frame(points, j):
    n = len(points)
    t = normalise(sub(points[(j + 1) % n], points[j - 1]))
    ref = (0.0, 0.0, 1.0) if abs(t[2]) < 0.9 else (0.0, 1.0, 0.0)
    b = normalise(cross(t, normalise(cross(ref, t))))
    return cross(b, t), b


def field(filaments, q, f, j, exclusion):
    u = [0.0, 0.0, 0.0]
    for g, points in enumerate(filaments):
        m = len(points)
        if m < 2:
            continue
        mean_ds = one_by_one(norm(sub(points[(k + 1) % m], points[k])) for k in range(m)) / m
        w = math.ceil(min(exclusion / max(mean_ds, 1e-30), 1e9))
        for k in range(m):
            d = abs(j - k)
            if g == f and min(m - d, d) <= max(w, 1):
                continue
            a, b = points[k], points[(k + 1) % m]
            r = (q[0] - (a[0] + b[0]) * 0.5, q[1] - (a[1] + b[1]) * 0.5, q[2] - (a[2] + b[2]) * 0.5)
            r2 = (r[0] * r[0] + r[1] * r[1] + r[2] * r[2]) + 1e-24
            factor = 7.705979316274285e-10 / (math.sqrt(r2) * r2)
            term = cross(sub(b, a), r)
            for axis in range(3):
                u[axis] += term[axis] * factor
    return u


def plain_tail(filaments, config):
    shells, angles = max(config.radial_samples, 1), max(config.azimuth_samples, 1)
    r_min = max(config.r_min_factor, 1.01) * CORE_RADIUS
    r_max = max(config.r_max_factor * CORE_RADIUS, r_min * 1.1)
    e = [(r_max - r_min) * (i / shells) + r_min for i in range(shells + 1)]
    total = 0.0
    for f, points in enumerate(filaments):
        n = len(points)
        if n < 3:
            continue
        ds = [norm(sub(points[(j + 1) % n], points[j])) for j in range(n)]
        exclusion = one_by_one(ds) / n * config.exclusion_ds_factor
        for j in range(n):
            normal, binormal = frame(points, j)
            for i in range(shells):
                rm = (e[i] + e[i + 1]) * 0.5
                s = 0.0
                for a in range(angles):
                    th = (a + 0.5) * (2 * math.pi) / angles
                    c, d = math.cos(th) * rm, math.sin(th) * rm
                    q = [points[j][x] + normal[x] * c + binormal[x] * d for x in range(3)]
                    u = field(filaments, q, f, j, exclusion)
                    s += u[0] * u[0] + u[1] * u[1] + u[2] * u[2]
                total += (s / angles) * 3.5e-7 * ((e[i + 1] * e[i + 1] - e[i] * e[i]) * math.pi * ds[j])
    return total


def ring(n, radius, seed=0, shift=(0.0, 0.0, 0.0)):
    t = np.arange(n) * 2 * np.pi / n
    p = np.column_stack([np.cos(t), np.sin(t), 0.3 * np.sin(2 * t)]) * radius
    p += np.random.default_rng(seed).normal(size=p.shape) * 0.05 * radius + np.array(shift) * radius
    return p.tolist()


def config(**changes):
    c = _native.TailApproxConfig()
    c.enabled = True
    for name, value in changes.items():
        setattr(c, name, value)
    return c


def tail(filaments, c):
    evaluator = _native.ParticleEvaluator(filaments)
    evaluator.set_tail_approx_config(c)
    return evaluator.compute_tail_energy_surrogate_J()


R = 2.8e-15
LINK = [ring(11, R, 1), [[0.0, 0.0, R]], ring(2, R, 4), [], ring(9, 40 * R, 2, (0.5, 0.0, 0.2)), ring(3, R, 3)]


@pytest.mark.parametrize("filaments", [[ring(24, R)], [ring(13, 1e-12)], LINK], ids=["ring", "larger", "link"])
@pytest.mark.parametrize(
    "changes",
    [
        {},
        {"radial_samples": 1, "azimuth_samples": 1},
        {"radial_samples": 0, "azimuth_samples": -3},
        {"radial_samples": 3, "azimuth_samples": 7, "r_min_factor": 1.0, "r_max_factor": 0.5},
        {"radial_samples": 2, "azimuth_samples": 33, "exclusion_ds_factor": 1.5},
        {"radial_samples": 2, "azimuth_samples": 3, "exclusion_ds_factor": -4.0},
        {"radial_samples": 2, "azimuth_samples": 3, "exclusion_ds_factor": 5.0},
        {"radial_samples": 2, "azimuth_samples": 3, "exclusion_ds_factor": 1e300},
    ],
)
def test_same_bits_as_the_plain_loops(filaments, changes):
    assert tail(filaments, config(**changes)) == plain_tail(filaments, config(**changes))


def test_vertical_and_degenerate_tangents_have_a_frame():
    points = [[0.0, 0.0, 0.0], [0.0, 0.0, R], [0.0, 0.0, 2 * R], [R, 0.0, R], [R, 0.0, R], [0.0, 0.0, 0.0]]
    c = config(radial_samples=2, azimuth_samples=4, exclusion_ds_factor=0.1)
    assert tail([points], c) == plain_tail([points], c) > 0


def test_excluding_all_segments_leaves_nothing():
    assert tail([ring(12, R)], config(exclusion_ds_factor=math.inf)) == 0.0
    assert math.isfinite(tail([ring(12, R)], config(exclusion_ds_factor=math.nan)))
    assert math.isnan(tail([[[math.nan, 0.0, 0.0], *ring(12, R)]], config()))


def test_log_weight_flag_has_no_effect():
    filaments = [ring(10, R)]
    assert tail(filaments, config(use_log_shell_weight=True)) == tail(filaments, config())


def test_tail_counts_only_when_enabled_and_asked_for():
    evaluator = _native.ParticleEvaluator([ring(20, R)])
    core = evaluator.get_core_mass_mev_only()
    assert evaluator.compute_tail_energy_surrogate_J() == evaluator.compute_tail_energy_J(True) == 0.0
    assert evaluator.get_mass_mev_ab_initio(True) == core
    evaluator.set_tail_approx_config(config())
    energy = evaluator.compute_tail_energy_surrogate_J()
    assert energy > 0 and evaluator.compute_tail_energy_J(include_tail=True) == energy
    assert evaluator.compute_tail_energy_J() == 0.0 and evaluator.get_mass_mev_ab_initio() == core
    assert (
        evaluator.get_mass_mev_ab_initio(include_tail=True)
        == (energy + evaluator.compute_core_energy_J()) / 1.602176634e-13
    )


def test_config_is_copied_in_and_out():
    evaluator = _native.ParticleEvaluator([ring(5, R)])
    c = evaluator.get_tail_approx_config()
    assert (c.enabled, c.radial_samples, c.azimuth_samples, c.use_log_shell_weight) == (False, 8, 8, False)
    assert (c.r_min_factor, c.r_max_factor, c.exclusion_ds_factor) == (1.25, 8.0, 3.0)
    c.enabled = True
    assert not evaluator.get_tail_approx_config().enabled
    evaluator.set_tail_approx_config(c)
    c.radial_samples = 99
    assert evaluator.get_tail_approx_config().enabled and evaluator.get_tail_approx_config().radial_samples == 8
    with pytest.raises(TypeError):
        c.radial_samples = 2**31


def test_no_filaments_no_tail():
    assert tail([], config()) == tail([[]], config()) == tail([ring(2, R)], config()) == 0.0


def test_interrupt():
    with ended_by_a_signal(0.05):
        tail([ring(300, R)], config(radial_samples=1000, azimuth_samples=100000))
