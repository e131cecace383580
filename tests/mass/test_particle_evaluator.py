"""ParticleEvaluator: construction, measures, metrics and the printed derivation."""

import math

import _native
import numpy as np
import pytest
from sums import one_by_one

ELECTRON_RADIUS = 2.81794034e-15
SQUARE = [[0.0, 0.0, 0.0], [1.0, 0.0, 0.0], [1.0, 1.0, 0.0], [0.0, 1.0, 0.0]]


@pytest.mark.parametrize(
    "knot_id",
    ["", "3", "3_1", "3:1:", ":3:1", "3::1", "3:1:1\n", " 3:1:1", "3:1:a", "-3:1", "3:1:1\0", "٣:١", "knot.3_1"],
)
def test_other_ids_are_blocked(knot_id):
    with pytest.raises(RuntimeError) as error:
        _native.ParticleEvaluator(knot_id)
    assert str(error.value) == (
        "[!] VKMcore: ParticleEvaluator requires ideal.txt AB id (n:m:k). Non-canon geometry refs (KnotPlot/Tarnow) "
        "are blocked for CanonMass. Set allow_non_canonical_geometry_for_research_only=True for research only. "
        "Got: " + knot_id.split("\0")[0]  # what() is a C string
    )


@pytest.mark.parametrize(("knot_id", "allow"), [("99:9:9", False), ("12345678901234567890:1", False), ("3_1", True)])
def test_ids_that_no_catalogue_holds(knot_id, allow):
    with pytest.raises(RuntimeError) as error:
        _native.ParticleEvaluator(knot_id, allow_non_canonical_geometry_for_research_only=allow)
    assert str(error.value) == f"[!] VKMcore: Knoop ID {knot_id} niet gevonden in ideal.txt / ideal catalog."


@pytest.mark.parametrize(
    ("text", "where"),
    [
        ('<AB Id="77:1:1">\n<Coeff I="1" A="1,0,0" B="0,1,0"/>\n', "ideal.txt / ideal catalog."),  # no end
        # The search takes the id anywhere in the tag, the reader of filaments only in the first place.
        ('<AB L="1" Id="77:1:1">\n<Coeff I="1" A="1,0,0" B="0,1,0"/>\n</AB>\n', "database."),
    ],
)
def test_blocks_that_cannot_be_read(tmp_path, monkeypatch, text, where):
    file = tmp_path / "ideal.txt"
    file.write_text(text)
    monkeypatch.setenv("VKM_IDEAL_TXT", str(file))
    with pytest.raises(RuntimeError) as error:
        _native.ParticleEvaluator("77:1:1")
    assert str(error.value) == f"[!] VKMcore: Knoop ID 77:1:1 niet gevonden in {where}"


def test_filaments_of_a_catalogue_block(tmp_path, monkeypatch):
    file = tmp_path / "ideal.txt"
    file.write_text(
        '<AB Id="77:2:1" L="1" D="1">\n'
        '<Component><Coeff I="1" A="1,0,0" B="0,1,0"/></Component>\n'
        '<Component><Coeff I="0" A="5,0,0" B="9,9,9"/><Coeff I="2" A="0,0,2" B="0,0,1"/></Component>\n'
        "</AB>\n"
    )
    monkeypatch.setenv("VKM_IDEAL_TXT", str(file))
    first, second = _native.ParticleEvaluator("77:2:1", 16).get_filaments()
    t = np.arange(16) * 2 * np.pi / 16
    np.testing.assert_allclose(first, np.column_stack([np.cos(t), np.sin(t), 0 * t]), atol=1e-15)
    z = 2 * np.cos(2 * t) + np.sin(2 * t)
    np.testing.assert_allclose(second, np.column_stack([5 + 0 * t, 0 * t, z]), atol=1e-15)


@pytest.mark.parametrize("knot_id", ["3:1:1", "4:1:1"])
def test_road_from_the_embedded_catalogue_to_a_mass(knot_id):
    evaluator = _native.ParticleEvaluator(knot_id, resolution=500)
    assert [len(f) for f in evaluator.get_filaments()] == [500]
    evaluator.relax(20)
    length = evaluator.get_dimless_ropelength()
    points = np.array(evaluator.get_filaments()[0])
    edges = np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1)
    assert length == pytest.approx(edges.sum() / ELECTRON_RADIUS, rel=1e-13)
    assert evaluator.get_mass_mev_ab_initio() == evaluator.compute_core_energy_J() / 1.602176634e-13 > 0


@pytest.mark.parametrize("resolution", [0, -4])
def test_a_resolution_below_one_gives_filaments_of_no_points(resolution):
    evaluator = _native.ParticleEvaluator("3:1:1", resolution)
    assert evaluator.get_filaments() == [[]]
    evaluator.relax(3)
    assert evaluator.get_mass_mev_ab_initio() == 0.0
    assert evaluator.compute_relativistic_metrics().time_dilation_map == []


def test_arguments():
    with pytest.raises(TypeError):
        _native.ParticleEvaluator("3:1:1", 2**31)
    with pytest.raises(TypeError):
        _native.ParticleEvaluator(input_filaments=[[[0.0, 1.0]]])
    evaluator = _native.ParticleEvaluator(input_filaments=[SQUARE])
    evaluator.get_filaments()[0][0][0] = 5.0
    assert evaluator.get_filaments() == [SQUARE]


def test_measures_of_known_lengths():
    chord, point = [[0.0, 0.0, 0.0], [0.0, 3.0, 4.0]], [[7.0, 7.0, 7.0]]
    evaluator = _native.ParticleEvaluator([SQUARE, chord, [], point])
    length = evaluator.get_dimless_ropelength()
    assert length == 14.0 / ELECTRON_RADIUS
    assert evaluator.get_dimless_ropelength(stretch_lambda=2.0) == length / 4
    assert evaluator.get_dimless_ropelength(0.0) == math.inf
    assert evaluator.get_physical_length_m() == length * ELECTRON_RADIUS
    assert evaluator.compute_core_energy_J() == length * ELECTRON_RADIUS * 14.5267535
    assert evaluator.get_core_mass_mev_only() == evaluator.compute_core_energy_J() / 1.602176634e-13


def test_without_filaments_every_measure_is_zero():
    evaluator = _native.ParticleEvaluator([])
    assert evaluator.get_dimless_ropelength(0.0) == evaluator.get_mass_mev_ab_initio(True) == 0.0
    assert math.isnan(_native.ParticleEvaluator([[]]).get_dimless_ropelength(0.0))
    metrics = evaluator.compute_relativistic_metrics()
    assert (metrics.helicity, metrics.time_dilation_map, metrics.core_time_dilation) == (0.0, [], 1.0)


def plain_metrics(points, circulation):
    p = np.array(points)
    n = len(p)
    tangents = np.zeros_like(p)
    tangents[1:-1] = [d / math.sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]) for d in p[2:] - p[:-2]]
    tangents[0], tangents[-1] = tangents[1], tangents[-2]
    mean, rates = np.float32(0), []
    for i in range(n):
        u = np.zeros(3)
        for j in range(n):
            d = p[i] - p[j]
            r = math.sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2])
            if r > 1e-6:
                u = u + np.cross(tangents[j], d) * 0.07957747154594767 * (circulation / (r * r * r))
        w = tangents[i] * (circulation / 6.236680122475321e-30)
        with np.errstate(all="ignore"):
            mean += np.float32(u[0] * w[0] + u[1] * w[1] + u[2] * w[2])
        b2 = (u[0] * u[0] + u[1] * u[1] + u[2] * u[2]) / (299792458.0 * 299792458.0)
        rates.append(math.sqrt(1 - (0.999999 if b2 >= 1 else b2)))
    return float(mean / np.float32(n)), rates


def wavy_ring(n):
    t = np.arange(n) * 2 * np.pi / n
    return np.column_stack([np.cos(t), np.sin(t), 0.4 * np.sin(3 * t) + 0.2 * np.cos(2 * t)])


@pytest.mark.parametrize("circulation", [9.683619203e-9, -25.0, 1e9, 3e7])
def test_metrics_are_the_formulas_on_the_first_filament(circulation):
    ring = wavy_ring(30)
    evaluator = _native.ParticleEvaluator([ring.tolist(), SQUARE])
    metrics = evaluator.compute_relativistic_metrics(circulation=circulation)
    helicity, rates = plain_metrics(ring, circulation)
    np.testing.assert_allclose(metrics.helicity, helicity, rtol=1e-5)  # beyond the range of a float from 1e5 on
    np.testing.assert_allclose(metrics.time_dilation_map, rates, rtol=1e-9)
    assert metrics.core_time_dilation == one_by_one(metrics.time_dilation_map) / 30
    if circulation == 1e9:
        assert metrics.time_dilation_map.count(math.sqrt(1 - 0.999999)) > 0  # faster than light: clamped


def test_sources_of_a_body_of_femtometres_are_all_skipped():
    evaluator = _native.ParticleEvaluator([wavy_ring(30).tolist()])
    evaluator.relax(0)
    metrics = evaluator.compute_relativistic_metrics()
    assert metrics.helicity == 0.0 and metrics.time_dilation_map == [1.0] * 30 and metrics.core_time_dilation == 1.0


@pytest.mark.parametrize("count", [1, 2])
def test_metrics_of_filaments_without_a_frame(count):
    metrics = _native.ParticleEvaluator([SQUARE[:count]]).compute_relativistic_metrics()
    assert metrics.time_dilation_map == [1.0] * count and metrics.helicity == 0.0


def test_metrics_record_hands_out_copies():
    metrics = _native.RelativisticMetrics()
    metrics.time_dilation_map = [1.0, 2.0]
    metrics.time_dilation_map.append(3.0)
    assert metrics.time_dilation_map == [1.0, 2.0]


def test_derivation_goes_to_standard_output(capfd):
    rule = "=" * 66
    text = f"""
{rule}
VKM CANON: DYNAMIC CLOSURE OF CORE DENSITY
{rule}
The effective mass density of the vortex core (rho_core) is strictly
derived as a dynamic closure relation. The maximum tangential tension
(F_max) perfectly balances the hydrodynamic inertia of the fluid.

Formula: rho_core = F_max / (pi * r_c^2 * ||v_swirl||^2)

[*] Core Primitives:
    F_max   = 29.053507 N
    r_c     = 1.40897017e-15 m
    v_swirl = 1.09384563e+06 m/s

[*] Derived Invariant Densities:
    rho_core = {3893435826691868672.0:.16e} kg/m^3
    rho_E    = {3.49924561231878e35:.16e} J/m^3
{rule}

"""
    # The second call finds the scientific format that the first has left.
    for _ in range(2):
        _native.ParticleEvaluator.print_canonical_derivation()
        assert capfd.readouterr().out == text
    doc = _native.ParticleEvaluator.print_canonical_derivation.__doc__
    assert "Prints the dynamic fluid derivation of the core density." in doc
