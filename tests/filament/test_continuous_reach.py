"""Reach and length of the splines through polygons, against closed forms and an independent spline."""

import math
from itertools import pairwise

import _native
import numpy as np
import pytest
from scipy.integrate import quad
from scipy.interpolate import CubicSpline
from scipy.optimize import minimize

REACH_KEYS = [
    "curvature_radius",
    "self_dcsd",
    "self_radius",
    "inter_component_distance",
    "inter_component_radius",
    "reach",
    "limiter",
    "orth_residual",
    "component_count",
    "curvature_intervals_examined",
    "dcsd_seed_count",
    "dcsd_refined_count",
    "dcsd_rejected_count",
    "search_resolution",
    "refinement_tolerance",
    "search_converged",
]
TUBE_KEYS = [
    "spline_length",
    "spline_length_error",
    "curvature_radius",
    "self_dcsd",
    "self_radius",
    "inter_component_radius",
    "reach",
    "ropelength_rad",
    "ropelength_diam",
    "orthogonality_residual",
    "converged",
    "limiter",
    "curvature_intervals_examined",
    "dcsd_seed_count",
    "dcsd_refined_count",
    "dcsd_rejected_count",
    "search_resolution",
    "refinement_tolerance",
    "search_converged",
    "length_interval_count",
    "length_converged",
]


def angles(n):
    return 2 * np.pi * np.arange(n) / n


def ellipse(n, a, b):
    t = angles(n)
    return np.stack([a * np.cos(t), b * np.sin(t), 0 * t], axis=1)


def torus_knot(n, p=2, q=3, big=2.0, small=1.0):
    t = angles(n)
    r = big + small * np.cos(q * t)
    return np.stack([r * np.cos(p * t), r * np.sin(p * t), small * np.sin(q * t)], axis=1)


def chord_spline(points):
    closed = np.vstack([points, points[:1]])
    s = np.concatenate([[0], np.cumsum(np.linalg.norm(np.diff(closed, axis=0), axis=1))])
    return CubicSpline(s, closed, bc_type="periodic"), s


def spline_curvature_radius(points):
    spline, s = chord_spline(points)
    x = np.concatenate([np.linspace(0, s[-1], 200001), s])  # the second derivative has its kinks at the knots
    d1, d2 = spline(x, 1), spline(x, 2)
    return float(1 / (np.linalg.norm(np.cross(d1, d2), axis=1) / np.linalg.norm(d1, axis=1) ** 3).max())


def knot_dcsd(curve, gap):
    """Least distance of two points of the exact curve that are more than `gap` apart in the angle and critical."""
    t = angles(600)
    points = curve(t)
    d2 = ((points[:, None] - points[None]) ** 2).sum(axis=2)
    apart = np.abs(t[:, None] - t[None])
    d2[np.minimum(apart, 2 * np.pi - apart) < gap] = np.inf
    inner = d2[1:-1, 1:-1]
    around = [d2[1 + i : 599 + i, 1 + j : 599 + j] for i in (-1, 0, 1) for j in (-1, 0, 1)]
    starts = np.argwhere(np.all([(inner <= d) & np.isfinite(d) for d in around], axis=0)) + 1
    assert len(starts) > 0

    def distance2(x):
        return float(((curve(x[:1]) - curve(x[1:])) ** 2).sum())

    return math.sqrt(min(minimize(distance2, t[ij], tol=1e-12).fun for ij in starts))


@pytest.mark.parametrize("radius", [0.02, 1.0, 50.0])
def test_circle_is_a_tie(radius):
    result = _native.compute_continuous_reach([radius * _native.sample_circle(800)])
    assert list(result) == REACH_KEYS
    assert result["curvature_radius"] == pytest.approx(radius, rel=1e-4)
    assert result["self_dcsd"] == pytest.approx(2 * radius, rel=1e-6)
    assert result["self_radius"] == 0.5 * result["self_dcsd"]
    assert result["reach"] == pytest.approx(radius, rel=1e-4)
    assert result["limiter"] == "TIE"
    assert result["inter_component_distance"] == result["inter_component_radius"] == math.inf
    assert result["component_count"] == 1 and result["curvature_intervals_examined"] == 800
    assert result["search_converged"] is True and result["refinement_tolerance"] == 1e-13
    assert result["search_resolution"] == pytest.approx(2 * math.pi * radius / 192, rel=1e-4)  # 10 sqrt(800) > 192
    assert result["dcsd_seed_count"] <= 144
    assert result["dcsd_refined_count"] + result["dcsd_rejected_count"] == result["dcsd_seed_count"]


@pytest.mark.parametrize("a,b", [(2.0, 1.0), (1.0, 1.5), (1.0, 0.3)])
def test_ellipse_is_limited_by_its_curvature(a, b):
    result = _native.compute_continuous_reach([ellipse(600, a, b)])
    low, high = min(a, b), max(a, b)
    assert result["curvature_radius"] == pytest.approx(low**2 / high, rel=2e-3)
    assert result["reach"] == result["curvature_radius"] and result["limiter"] == "CURVATURE"
    assert result["self_dcsd"] == pytest.approx(2 * low, rel=1e-6)  # the minor axis
    assert result["search_converged"]


@pytest.mark.parametrize("p,q,big,small", [(2, 3, 2.0, 1.0), (3, 2, 3.0, 1.0), (2, 5, 2.0, 0.6)])
def test_torus_knot(p, q, big, small):
    points = torus_knot(300, p, q, big, small)
    result = _native.compute_continuous_reach([points])
    assert result["curvature_radius"] == pytest.approx(spline_curvature_radius(points), rel=1e-6)

    def exact(t):
        r = big + small * np.cos(q * t)
        return np.stack([r * np.cos(p * t), r * np.sin(p * t), small * np.sin(q * t)], axis=1)

    assert result["self_dcsd"] == pytest.approx(knot_dcsd(exact, 0.6), rel=1e-5)
    assert result["reach"] == min(result["curvature_radius"], result["self_radius"])
    assert result["orth_residual"] < 5e-9 and result["search_converged"]


def test_two_components():
    circle = _native.sample_circle(200)
    apart = [circle, circle + np.array([2.3, 0, 0])]
    result = _native.compute_continuous_reach(apart)
    assert result["inter_component_distance"] == pytest.approx(0.3, rel=1e-6)
    assert result["reach"] == result["inter_component_radius"] and result["limiter"] == "INTER_COMPONENT"
    assert result["component_count"] == 2 and result["curvature_intervals_examined"] == 400
    hopf = _native.compute_continuous_reach([circle, circle[:, [0, 2, 1]] + np.array([1.0, 0, 0])])
    assert hopf["inter_component_distance"] == pytest.approx(1.0, rel=1e-6) and hopf["reach"] < 0.51
    # Counters are sums over both self searches and the pair's.
    single = _native.compute_continuous_reach(apart[:1])
    assert result["dcsd_seed_count"] >= 2 * single["dcsd_seed_count"]


@pytest.mark.parametrize(
    "points",
    [
        torus_knot(150),
        ellipse(4, 1, 1),
        np.random.default_rng(1).normal(size=(12, 3)),
        torus_knot(150)[np.random.default_rng(2).random(150) < 0.5],  # uneven spans
    ],
    ids=["trefoil", "square", "random", "uneven"],
)
def test_length_and_curvature_of_the_spline(points):
    spline, s = chord_spline(points)
    length = sum(
        quad(lambda x: np.linalg.norm(spline(x, 1)), a, b, epsabs=1e-13, epsrel=1e-13)[0] for a, b in pairwise(s)
    )
    tube = _native.analyze_smooth_resolved_tube([points])
    assert list(tube) == TUBE_KEYS
    assert tube["spline_length"] == pytest.approx(length, rel=1e-10)
    assert tube["spline_length"] > s[-1]
    assert tube["length_converged"] is True and tube["spline_length_error"] <= 1e-10 * (1 + length)
    assert tube["length_interval_count"] >= len(points)
    assert tube["curvature_radius"] == pytest.approx(spline_curvature_radius(points), rel=1e-5)
    reach = _native.compute_continuous_reach([points])
    for key in set(REACH_KEYS) & set(TUBE_KEYS):
        assert tube[key] == reach[key]
    assert tube["orthogonality_residual"] == reach["orth_residual"]
    assert tube["ropelength_rad"] == tube["spline_length"] / tube["reach"]
    assert tube["ropelength_diam"] == 0.5 * tube["ropelength_rad"]
    assert tube["converged"] is (tube["length_converged"] and tube["search_converged"])


def test_length_tolerances():
    points = np.random.default_rng(4).normal(size=(9, 3))
    loose = _native.analyze_smooth_resolved_tube([points], 1.0, 1.0)
    tight = _native.analyze_smooth_resolved_tube([points], length_abs_tol=1e-13, length_rel_tol=1e-13)
    usual = _native.analyze_smooth_resolved_tube([points])
    assert loose["length_interval_count"] == 9 < usual["length_interval_count"] < tight["length_interval_count"]
    assert loose["spline_length"] == pytest.approx(tight["spline_length"], rel=1e-2)
    for none in (0.0, -1.0, math.nan):
        assert _native.analyze_smooth_resolved_tube([points], none, none) == usual
    two = _native.analyze_smooth_resolved_tube([points, points + 50])
    assert two["spline_length"] == pytest.approx(2 * usual["spline_length"], rel=1e-12)
    assert two["length_interval_count"] == 2 * usual["length_interval_count"]


def test_no_curves_and_short_curves():
    nothing = _native.compute_continuous_reach([])
    assert nothing.pop("limiter") == "ERROR" and nothing.pop("refinement_tolerance") == 1e-13
    assert nothing["search_converged"] is False and set(nothing.values()) == {0}
    nothing = _native.analyze_smooth_resolved_tube([])
    assert nothing.pop("limiter") == "ERROR" and nothing.pop("refinement_tolerance") == 1e-13
    assert set(nothing.values()) == {0}
    for call in (_native.compute_continuous_reach, _native.analyze_smooth_resolved_tube):
        with pytest.raises(ValueError, match=r"^PeriodicCubicSpline3D requires >= 4 points$"):
            call([_native.sample_circle(9), _native.sample_circle(3)])


def test_degenerate_curves_stay_finite_or_empty():
    repeated = np.repeat(ellipse(12, 2, 1), 2, axis=0)
    result = _native.analyze_smooth_resolved_tube([repeated])
    assert math.isfinite(result["spline_length"]) and math.isfinite(result["reach"])
    point = _native.analyze_smooth_resolved_tube([np.ones((6, 3))])  # neither curvature nor pairs
    assert point["self_dcsd"] == math.inf and point["search_converged"] is False and point["converged"] is False
    assert math.isnan(point["ropelength_rad"]) and math.isnan(point["ropelength_diam"])
    for bad in (math.nan, math.inf, 1e200):
        curve = torus_knot(40)
        curve[3, 2] = bad
        result = _native.analyze_smooth_resolved_tube([curve, torus_knot(40)])
        assert result["converged"] is False and list(result) == TUBE_KEYS
