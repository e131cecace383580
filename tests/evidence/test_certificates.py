"""Certificates of geometries, pressures, series and limits."""

import math

import _native
import numpy as np
import pytest
from _native import CertificateStatus as Status
from interruption import ended_by_a_signal

API = _native.GeometryCertificateAPI
SMOOTH = _native.PolygonalSmoothCertificateAPI
GATE = _native.BiotSavartGateAPI
PASS, FAIL, INDETERMINATE = Status.Pass, Status.Fail, Status.Indeterminate
INF, NAN = math.inf, math.nan


def circle(n, radius=1.0, height=0.0, harmonic=0.0):
    t = 2 * np.pi * np.arange(n) / n
    return np.stack([radius * np.cos(t), radius * np.sin(t), height + harmonic * np.cos(2 * t)], axis=1)


def trefoil(n):
    t = 2 * np.pi * np.arange(n) / n
    return np.stack([np.sin(t) + 2 * np.sin(2 * t), np.cos(t) - 2 * np.cos(2 * t), -np.sin(3 * t)], axis=1)


def test_records_are_results():
    assert [int(Status.__members__[name]) for name in ("Pass", "Fail", "Indeterminate", "NotEvaluated")] == [0, 1, 2, 3]
    for name in (
        "GeometryCertificate ContactSaturationResult ChronosFirstHittingResult Rank9ChannelDiagnostics "
        "PolygonalSmoothCertificate BiotSavartGateResult"
    ).split():
        with pytest.raises(TypeError, match="No constructor defined"):
            getattr(_native, name)()
    with pytest.raises(AttributeError):
        API.evaluate_tube_geometry([], 1.0).tube_radius = 2.0


# --- tube geometry ------------------------------------------------------------------------------------------------


def test_tube_geometry_reports_the_analysis():
    points = trefoil(200)
    metrics = _native.ResolvedTubeGeometry.analyze(points, 2)
    radius = 0.9 * metrics.thickness_rad
    result = API.evaluate_tube_geometry(pts=points, tube_radius=radius)
    assert result.status == PASS
    assert (result.minimum_separation, result.minimum_radius_of_curvature) == (metrics.min_dcsd, metrics.minrad)
    assert (result.tube_radius, result.thickness_margin) == (radius, metrics.min_dcsd - 2 * radius)
    assert result.discretization_error == metrics.edge_length_max_rel_dev
    assert result.geometry_hash == API.sha256_hex_of_points(points)


def test_tube_geometry_limits():
    points = circle(6, 2.0)  # separation of opposite edges 2 sqrt(3), vertex radius sqrt(3)
    found = API.evaluate_tube_geometry(points, 0.1)
    separation, radius = found.minimum_separation, found.minimum_radius_of_curvature
    assert (separation, radius) == pytest.approx((2 * 3**0.5, 3**0.5), rel=1e-14)
    small = radius / 4  # so that only the separation's tolerance decides
    assert API.evaluate_tube_geometry(points, small, separation - 2 * small).status == FAIL
    assert API.evaluate_tube_geometry(points, small, np.nextafter(separation - 2 * small, 0) - 1e-15).status == PASS
    crowded = 0.5 * separation * 0.999
    assert API.evaluate_tube_geometry(points, crowded, 0.0, 0.0).status == PASS
    sharp = [[-4, 0, 0], [-3, 1, 0], [3, 1, 0], [4, 0, 0], [3, -1, 0], [-3, -1, 0]]  # corners of radius sqrt(1/2)
    sharp_radius = API.evaluate_tube_geometry(sharp, 0.1).minimum_radius_of_curvature
    assert sharp_radius == pytest.approx(0.5**0.5, rel=1e-14)
    assert API.evaluate_tube_geometry(sharp, 1.1 * sharp_radius, 0.0, 0.05).status == FAIL
    assert API.evaluate_tube_geometry(sharp, 1.1 * sharp_radius, 0.0, 0.1001).status == PASS
    assert API.evaluate_tube_geometry(sharp, 0.1, NAN).status == FAIL
    assert API.evaluate_tube_geometry(sharp, 0.1, 0.0, NAN).status == FAIL


@pytest.mark.parametrize(
    "arguments",
    [
        (circle(2), 0.1),
        ([], 0.1),
        (circle(9), 0.0),
        (circle(9), NAN),
        (circle(9), 0.1, -1e-300),
        (circle(9), 0.1, 0.0, -1.0),
        (circle(3), 0.1),  # no admissible pair of edges: infinite separation
        (np.full((9, 3), NAN), 0.1),
    ],
)
def test_tube_geometry_without_a_verdict(arguments):
    result = API.evaluate_tube_geometry(*arguments)
    assert result.status == INDETERMINATE
    assert result.geometry_hash == API.sha256_hex_of_points(arguments[0])
    assert result.tube_radius == arguments[1] or math.isnan(arguments[1])


def test_a_collapsed_edge_fails():
    points = circle(40).tolist()
    assert API.evaluate_tube_geometry([points[0], *points], 1e-3).status == FAIL


# --- contact saturation -------------------------------------------------------------------------------------------


@pytest.mark.parametrize(
    ("pressures", "status", "ratio", "active"),
    [
        ([1.0, 0.5, 0.0, 2.0], PASS, 0.5, 2),
        ([4.0], PASS, 1.0, 1),
        ([4.0 * 1.25], PASS, 1.25, 1),  # the edge of the band
        ([4.0 * 1.2500001], FAIL, 1.2500001, 1),
        ([0.5], PASS, 0.125, 0),
        ([0.0], PASS, 0.0, 0),
    ],
)
def test_contact_saturation(pressures, status, ratio, active):
    result = API.evaluate_contact_saturation(pressures, 4.0, ratio_epsilon=0.25, pressure_floor=0.5)
    assert (result.status, result.active_contact_count) == (status, active)
    assert result.saturation_ratio == pytest.approx(ratio, rel=1e-15)
    assert (result.peak_contact_pressure, result.saturation_pressure) == (max(pressures), 4.0)


@pytest.mark.parametrize(
    "arguments",
    [([], 1.0), ([1.0], 0.0), ([1.0], NAN), ([1.0], 1.0, -1.0), ([1.0], 1.0, 0.0, -1.0)]
    + [([1.0, bad], 1.0) for bad in (NAN, INF, -1e-300)],
)
def test_contact_saturation_without_a_verdict(arguments):
    result = API.evaluate_contact_saturation(*arguments)
    assert (result.status, result.peak_contact_pressure, result.active_contact_count) == (INDETERMINATE, 0.0, 0)


# --- first hitting ------------------------------------------------------------------------------------------------


@pytest.mark.parametrize(
    ("times", "observable", "expected"),
    [
        ([0.0, 1.0, 3.0], [0.0, 1.0, 5.0], (PASS, 1.5, 2)),
        ([0.0, 1.0, 3.0], [0.0, 2.0, 5.0], (PASS, 1.0, 1)),
        ([2.0, 3.0], [2.0, 2.0], (PASS, 2.0, 0)),
        ([2.0, 3.0], [9.0, 0.0], (PASS, 2.0, 0)),
        ([2.0, 4.0, 4.0], [0.0, 1.0, 3.0], (PASS, 4.0, 2)),
        ([0.0, 1.0, 2.0], [0.0, 1.0, 1.5], (FAIL, INF, 3)),
        ([0.0, 1.0], [np.nextafter(2.0, 0), 2.0], (PASS, 1.0, 1)),
    ],
)
def test_first_hitting(times, observable, expected):
    result = API.chronos_first_hitting(times=times, observable=observable, threshold=2.0)
    assert (result.status, result.first_hitting_time, result.event_index) == expected
    assert result.threshold == 2.0


def test_first_hitting_without_a_slope():
    result = API.chronos_first_hitting([1.0, 2.0], [0.0, 1e-31], 1e-32)  # too flat to interpolate
    assert (result.status, result.first_hitting_time, result.event_index) == (PASS, 1.0, 1)


@pytest.mark.parametrize(
    ("times", "observable", "threshold"),
    [
        ([0.0], [3.0], 2.0),
        ([0.0, 1.0], [3.0], 2.0),
        ([0.0, 1.0], [3.0, 3.0], INF),
        ([0.0, NAN], [3.0, 3.0], 2.0),
        ([0.0, 1.0], [3.0, INF], 2.0),
        ([1.0, 0.0], [3.0, 3.0], 2.0),
    ],
)
def test_first_hitting_without_a_verdict(times, observable, threshold):
    result = API.chronos_first_hitting(times, observable, threshold)
    assert (result.status, result.first_hitting_time, result.event_index) == (INDETERMINATE, 0.0, 0)
    assert result.threshold == threshold


# --- nine channels ------------------------------------------------------------------------------------------------


@pytest.mark.parametrize(
    ("values", "limits", "expected"),
    [
        ([3.0, 9.0, 1.0, 2.0, 4.0, 5.0, 6.0, 7.0, 8.0], {}, (PASS, 9, 9.0)),
        ([8.0] * 8 + [2.0], {"max_conditioning": 4.0}, (PASS, 9, 4.0)),
        ([8.0] * 8 + [2.0], {"max_conditioning": 3.9}, (INDETERMINATE, 9, 4.0)),
        ([8.0] * 8 + [2.0], {"tau_rank": 0.25}, (FAIL, 8, 1.0)),  # at the limit is not above it
        ([8.0] * 7 + [0.0, 2.0], {}, (FAIL, 8, 4.0)),
        ([0.0] * 9, {}, (FAIL, 0, INF)),
        ([8.0] * 9, {"tau_rank": 1.0}, (FAIL, 0, INF)),
        ([1.0] * 9, {"tau_rank": 0.0}, (INDETERMINATE, 0, 0.0)),
        ([1.0] * 9, {"max_conditioning": NAN}, (INDETERMINATE, 0, 0.0)),
        ([1.0] * 8 + [-1e-300], {}, (INDETERMINATE, 0, 0.0)),
        ([1.0] * 8 + [INF], {}, (INDETERMINATE, 0, 0.0)),
        ([NAN] + [1.0] * 8, {}, (INDETERMINATE, 0, 0.0)),
    ],
)
def test_rank_of_nine(values, limits, expected):
    result = API.rank9_from_singular_values(singular_values=values, **limits)
    assert (result.status, result.numerical_rank, result.conditioning) == expected
    assert repr(result.singular_values) == repr(values)
    with pytest.raises(TypeError):
        API.rank9_from_singular_values(values[:8])


# --- polygon and smooth curve -------------------------------------------------------------------------------------


def hausdorff(a, b):
    start, edge = b, np.roll(b, -1, axis=0) - b
    squared = (edge**2).sum(axis=1)
    with np.errstate(invalid="ignore"):
        t = np.clip(((a[:, None] - start) * edge).sum(axis=2) / squared, 0.0, 1.0)
    t = np.where(squared > 0, t, 0.0)
    return np.linalg.norm(a[:, None] - (start + t[..., None] * edge), axis=2).min(axis=1).max()


def tangents(a):
    edge = np.roll(a, -1, axis=0) - a
    length = np.linalg.norm(edge, axis=1)[:, None]
    return np.divide(edge, length, out=np.zeros_like(edge), where=length > 0)


@pytest.mark.parametrize("seed", range(6))
def test_comparison_is_the_plain_form(seed):
    rng = np.random.default_rng(seed)
    a = trefoil(60 + 31 * seed) + 0.1 * rng.standard_normal((60 + 31 * seed, 3))
    b = rng.standard_normal((33 * seed + 40, 3)) if seed % 2 else trefoil(33 * seed + 40)
    b[5] = b[4]  # an edge without length
    result = SMOOTH.evaluate(a, b, 1e-9, 1.0, 1.0, 1.0)
    assert result.hausdorff_bound == pytest.approx(max(hausdorff(a, b), hausdorff(b, a)), rel=1e-14)
    n = min(len(a), len(b))
    expected = np.linalg.norm(tangents(a)[:n] - tangents(b)[:n], axis=1).max()
    assert result.tangent_error == pytest.approx(expected, rel=1e-14)
    assert result.polygon_hash == SMOOTH.fingerprint_points(a)
    assert result.smooth_hash == SMOOTH.fingerprint_points(b)


def test_circles_against_each_other():
    result = SMOOTH.evaluate(circle(8), circle(8, 1.5, 0.25), 0.5, 1.0, 1e-14, 1.0)
    assert result.hausdorff_bound == pytest.approx(math.hypot(0.5, 0.25), rel=1e-14)
    r = math.cos(math.pi / 8)
    assert result.thickness_lower_bound == pytest.approx(r, rel=1e-14)
    assert result.curvature_error == pytest.approx(1 / r - 1 / (1.5 * r), rel=1e-13)
    assert result.tangent_error < 1e-14


def test_the_best_verdict_is_indeterminate():
    polygon, smooth = circle(20), circle(24, 1.1, harmonic=0.1)
    found = SMOOTH.evaluate(polygon, smooth, 1e-3, 1.0, 2.0, 9.0)
    bounds = [found.thickness_lower_bound, found.hausdorff_bound, found.tangent_error, found.curvature_error]
    assert found.status == INDETERMINATE and all(bound > 1e-3 for bound in bounds)
    thickness, *errors = bounds
    assert SMOOTH.evaluate(polygon, smooth, np.nextafter(thickness, 0), *errors).status == INDETERMINATE
    assert SMOOTH.evaluate(polygon, smooth, thickness, *errors).status == FAIL
    for place in range(3):
        tight = list(errors)
        tight[place] = np.nextafter(tight[place], 0)
        assert SMOOTH.evaluate(polygon, smooth, 1e-3, *tight).status == FAIL
    assert SMOOTH.evaluate(polygon, smooth, 1e-3, NAN, 9.0, 9.0).status == FAIL


@pytest.mark.parametrize(
    "arguments",
    [
        (circle(2), circle(9), 0.1, 0.0, 0.0, 0.0),
        (circle(9), circle(2), 0.1, 0.0, 0.0, 0.0),
        (circle(9), circle(8), 0.0, 0.0, 0.0, 0.0),
        (circle(9), circle(8), NAN, 0.0, 0.0, 0.0),
        *[(circle(9), circle(8), 0.1, *(-float(k == place) for k in range(3))) for place in range(3)],
        (circle(9), circle(8) * [NAN, 1, 1], 0.1, 0.0, 0.0, 0.0),
        (circle(9), [[INF, 0, 0], *circle(8).tolist()], 0.1, 0.0, 0.0, 0.0),
        (circle(9), [[0, 0, 0], [1, 0, 0], [1, 0, 0], [1, 1, 0]], 0.1, 0.0, 0.0, 0.0),  # infinite curvature
    ],
)
def test_comparison_without_a_verdict(arguments):
    result = SMOOTH.evaluate(*arguments)
    assert result.status == INDETERMINATE
    assert result.smooth_hash == SMOOTH.fingerprint_points(arguments[1])


@pytest.mark.parametrize(
    "call",
    [
        lambda points: API.evaluate_tube_geometry(points, 0.1),
        lambda points: SMOOTH.evaluate(points, points, 0.1, 1.0, 1.0, 1.0),
        lambda points: SMOOTH.evaluate(circle(9), circle(9).tolist() * 200_000, 0.1, 1.0, 1.0, 1.0),
    ],
)
def test_a_signal_is_no_verdict(call):
    """An interrupted analysis raises what the signal's handler raises; it is not Indeterminate."""

    points = np.random.default_rng(1).standard_normal((300_000, 3))
    with ended_by_a_signal(0.2):
        call(points)


# --- limit of an observable ---------------------------------------------------------------------------------------

INV_FOUR_PI = 0.07957747154594767


def gate(observable=INV_FOUR_PI, limit=5.0, margin=2.0, least=1.0, samples=8, name="id", **options):
    return GATE.evaluate(observable, limit, margin, least, samples, name, **options)


def test_gate_on_the_limit():
    result = gate()
    assert (result.status, result.estimated_limit, result.boundary_margin) == (PASS, INV_FOUR_PI, 2.0)
    assert (result.sample_count, result.regularization_id, result.observable) == (8, "id", INV_FOUR_PI)
    assert result.relative_residual == abs(INV_FOUR_PI * 12.566370614359172 - 1)
    assert gate(0.08).relative_residual == abs(0.08 * 12.566370614359172 - 1)
    assert gate(0.08).status == FAIL and gate(0.08, residual_tol=0.01).status == PASS
    assert gate(limit=NAN).status == PASS  # replaced
    assert gate(margin=0.5).status == FAIL and gate(margin=1.0).status == PASS and gate(least=NAN).status == PASS
    free = {"use_four_pi_identity": False}
    assert gate(6.0, -4.0, residual_tol=2.5, **free).status == PASS
    assert gate(6.0, -4.0, residual_tol=2.499, **free).status == FAIL
    assert gate(6.0, -4.0, **free).estimated_limit == -4.0
    assert gate(1e-32, 0.0, **free).relative_residual == 1e-32 / 1e-30
    assert gate(residual_tol=NAN).status == FAIL


@pytest.mark.parametrize(
    "changes",
    [
        {"name": ""},
        {"samples": 0},
        {"residual_tol": -1.0},
        {"least": -1.0},
        {"observable": NAN},
        {"margin": INF},
        {"limit": NAN, "use_four_pi_identity": False},
    ],
)
def test_gate_without_a_verdict(changes):
    result = gate(**changes)
    assert (result.status, result.relative_residual) == (INDETERMINATE, 0.0)
    assert result.estimated_limit == changes.get("limit", 5.0) or math.isnan(result.estimated_limit)
