"""Thickness, contacts and gradients of closed polygons."""

import math

import _native
import numpy as np
import pytest
import tube.tube_forms as forms
from interruption import ended_by_a_signal

Geometry = _native.ResolvedTubeGeometry


def torus_knot(n, p=2, q=3, minor=1.0):
    u = 2.0 * np.pi * np.arange(n) / n
    r = 2.0 + minor * np.cos(q * u)
    return np.stack([r * np.cos(p * u), r * np.sin(p * u), minor * np.sin(q * u)], axis=1)


def polygon(n, radius=1.0):
    u = 2.0 * np.pi * np.arange(n) / n
    return np.stack([radius * np.cos(u), radius * np.sin(u), 0.0 * u], axis=1)


def random_walk(n, seed, step=0.3):
    return np.cumsum(np.random.default_rng(seed).normal(scale=step, size=(n, 3)), axis=0)


def grid_walk(n, seed):
    """Unit steps along the axes: parallel, touching and coincident edges, exact ties."""
    rng = np.random.default_rng(seed)
    steps = np.eye(3)[rng.integers(0, 3, n)] * rng.choice([-1.0, 1.0], n)[:, None]
    return np.cumsum(steps, axis=0)


def with_entry(points, row, value):
    changed = points.copy()
    changed[row, 1] = value
    return changed


CURVES = {
    "trefoil": torus_knot(90),
    "tight trefoil": torus_knot(70, minor=0.4),
    "fine trefoil": 0.002 * torus_knot(120),  # all pairs count as near-parallel
    "five vertices": random_walk(5, 1),
    "nine vertices": random_walk(9, 2),
    "circle": polygon(64),
    "walk": random_walk(101, 3),
    "chords": np.random.default_rng(4).uniform(-1.0, 1.0, (80, 3)),
    "grid": grid_walk(75, 5),
    "flat grid": grid_walk(60, 6) * [1.0, 1.0, 0.0],
    "line": np.linspace(0.0, 1.0, 40)[:, None] * [1.0, 2.0, -1.0],
    "coincident": np.ones((30, 3)),
    "far away": torus_knot(70) + 1e9,
    "huge": 1e200 * torus_knot(40),
    "tiny": 1e-160 * torus_knot(40),
    "overflowing": 1.7e308 * np.sign(torus_knot(40)),
    "not a number": with_entry(torus_knot(70), 33, math.nan),
    "infinite": with_entry(torus_knot(70), 0, -math.inf),
    "no number at all": np.full((20, 3), math.nan),
}


def same(a, b):
    return all(x == y or (x != x and y != y) for x, y in zip(a, b, strict=True))


def fields(pair):
    return (pair.i, pair.j, pair.s, pair.t, pair.distance, pair.arclength_i, pair.arclength_j)


def kink_fields(kink):
    return (kink.vertex, kink.minrad_minus, kink.minrad_plus, kink.minrad, kink.turning_angle)


@pytest.mark.parametrize("skip", [-3, 0, 2, 9])
@pytest.mark.parametrize("name", CURVES)
def test_near_pairs_and_analysis_have_the_bits_of_the_all_pairs_loop(name, skip):
    points = CURVES[name]
    rows = points.tolist()
    for tol in (-1.0, 0.0, 0.001, 0.4, 3.0):
        expected, _ = forms.candidates(rows, skip, tol)
        found = [fields(pair) for pair in Geometry.dcsd_candidates(points, skip, tol)]
        assert len(found) == len(expected)
        assert all(same(a, b) for a, b in zip(found, expected, strict=True))
    for tol in (0.0, 0.001, 0.4):
        radius, least, thickness, struts, kinks = forms.analyze(rows, skip, tol)
        tube = Geometry.analyze(points, skip, tol)
        assert (tube.minrad, tube.min_dcsd, tube.half_min_dcsd) == (radius, least, 0.5 * least)
        assert tube.thickness_rad == tube.reach_rad == thickness
        assert len(tube.struts) == len(struts)
        assert all(same(fields(a), b) for a, b in zip(tube.struts, struts, strict=True))
        assert [kink_fields(kink) for kink in tube.kinks] == kinks


def test_three_levels_of_boxes_have_the_bits_of_the_all_pairs_loop():
    # Runs of coincident vertices, and two strands one edge apart, at a size that fills three levels.
    points = torus_knot(600, minor=0.05)
    points[100:120] = points[100]
    rows = points.tolist()
    found = [fields(pair) for pair in Geometry.dcsd_candidates(points, 40, 0.02)]
    assert found == forms.candidates(rows, 40, 0.02)[0]


@pytest.mark.parametrize("n", [5, 6, 12, 100])
def test_regular_polygon(n):
    radius, edge = 2.0, 4.0 * math.sin(math.pi / n)
    tube = Geometry.analyze(polygon(n, radius), 1)
    # The tangent circle at the midpoints of the edges is the inscribed one.
    inradius = radius * math.cos(math.pi / n)
    assert tube.minrad == pytest.approx(inradius, rel=1e-12)
    assert tube.length == pytest.approx(n * edge, rel=1e-14)
    dcsd = 2.0 * radius * math.sin(math.pi / n)  # edges two apart, by the edge between
    assert tube.min_dcsd == pytest.approx(dcsd, rel=1e-12)
    assert tube.thickness_rad == min(tube.minrad, tube.half_min_dcsd)
    assert tube.ropelength_rad == tube.length / tube.thickness_rad
    assert tube.ropelength_diam == 0.5 * tube.ropelength_rad
    assert tube.equilateral_ok and tube.edge_length_rel_std < 1e-14
    assert len(tube.struts) == n  # one contact across each edge


def test_circle_that_skips_its_own_arc_is_bound_by_its_radius():
    tube = Geometry.analyze(polygon(100), 50)
    assert tube.thickness_rad == tube.minrad == pytest.approx(math.cos(math.pi / 100))
    assert len(tube.kinks) == 100
    assert tube.ropelength_rad == pytest.approx(2.0 * 100 * math.tan(math.pi / 100))
    assert not tube.lower_bound_ok  # no knot is that short


def test_two_strands_at_a_distance():
    x = np.arange(21.0)
    strands = np.concatenate([np.stack([x, 0 * x, 0 * x], 1), np.stack([x[::-1], 0 * x + 0.5, 0 * x], 1)])
    tube = Geometry.analyze(strands, 2, 0.0)
    assert tube.min_dcsd == 0.5 and tube.thickness_rad == 0.25
    assert {(strut.i, strut.j) for strut in tube.struts} >= {(k, 40 - k) for k in range(1, 18)}
    gradient = np.array(Geometry.strut_gradient_flat(strands, tube.struts[0])).reshape(-1, 3)
    assert gradient[:, 1].sum() == 0.0 and np.abs(gradient[:, 1]).sum() == 1.0  # half a unit pull on either side


@pytest.mark.parametrize(
    ("points", "expected"),
    [
        ([], (0.0, 0.0, 0.0, 0.0)),
        ([[1.0, 2.0, 3.0]], (0.0, 0.0, 0.0, 0.0)),
        ([[0.0, 0.0, 0.0], [3.0, 4.0, 0.0]], (10.0, 5.0, 0.0, 0.0)),
        ([[0.0, 0.0, 0.0], [3.0, 0.0, 0.0], [3.0, 4.0, 0.0]], (12.0, 4.0, math.sqrt(2 / 3) / 4.0, 0.25)),
        ([[1.0, 1.0, 1.0]] * 4, (0.0, 0.0, 0.0, 0.0)),
    ],
)
def test_edge_statistics(points, expected):
    found = (
        Geometry.length(points),
        Geometry.edge_length_mean(points),
        Geometry.edge_length_relative_std(points),
        Geometry.edge_length_max_relative_deviation(points),
    )
    assert found == pytest.approx(expected, rel=1e-15)
    assert _native.resolved_tube_length(points) == found[0]
    assert Geometry.length_gradient_flat(points) == pytest.approx(
        _native.resolved_tube_length_gradient_flat(points), abs=0
    )


def test_degenerate_corners_differ_between_radius_and_kink():
    collapsed = [[0.0, 0.0, 0.0], [1.0, 0.0, 0.0], [1.0, 0.0, 0.0], [0.0, 1.0, 0.0]]
    for vertex in (1, 2):
        assert Geometry.minrad_at_vertex(collapsed, vertex) == 0.0
        kink = Geometry.kink_at_vertex(collapsed, vertex)
        assert kink_fields(kink) == (vertex, math.inf, math.inf, math.inf, 0.0)
    tube = Geometry.analyze(collapsed, 0)
    assert (tube.thickness_rad, tube.ropelength_rad, tube.lower_bound_ok) == (0.0, 0.0, True)
    assert tube.struts == [] and tube.kinks == []

    straight = [[0.0, 0.0, 0.0], [1.0, 0.0, 0.0], [2.0, 0.0, 0.0], [0.0, 3.0, 0.0]]
    assert Geometry.minrad_at_vertex(straight, 1) == math.inf
    assert kink_fields(Geometry.kink_at_vertex(straight, 1)) == (1, math.inf, math.inf, math.inf, 0.0)
    assert Geometry.turning_angle([0, 0, 0], [1, 0, 0], [0, 0, 0]) == math.pi
    assert 0.0 < Geometry.minrad_at_vertex([[0, 0, 0], [1, 0, 0], [0, 0, 0], [0, 1, 0]], 1) < 1e-15


def test_few_vertices():
    triangle = [[0.0, 0.0, 0.0], [3.0, 0.0, 0.0], [0.0, 4.0, 0.0]]
    tube = Geometry.analyze(triangle)
    assert tube.min_dcsd == tube.half_min_dcsd == math.inf
    assert tube.thickness_rad == tube.minrad > 0.0 and tube.struts == []
    square = [[0.0, 0.0, 0.0], [1.0, 0.0, 0.0], [1.0, 1.0, 0.0], [0.0, 1.0, 0.0]]
    assert Geometry.dcsd_candidates(square) == []
    assert [(p.i, p.j, p.distance) for p in Geometry.dcsd_candidates(square, 1)] == [(0, 2, 1.0), (1, 3, 1.0)]
    assert Geometry.global_minrad(square[:2]) == Geometry.minrad_at_vertex(square[:2], 0) == 0.0
    with pytest.raises(ValueError, match=r"^kink_at_vertex requires at least 3 points\.$"):
        Geometry.kink_at_vertex(square[:2], 0)


@pytest.mark.parametrize(
    ("count", "tolerances", "text"),
    [
        (2, (-1.0, -1.0), "analyze requires at least 3 points."),
        (3, (-1.0, -1.0), "contact_tol must be non-negative."),
        (3, (0.0, -1e-300), "equilateral_tol must be non-negative."),
    ],
)
def test_analysis_refuses(count, tolerances, text):
    for analyze in (Geometry.analyze, _native.resolved_tube_analyze):
        with pytest.raises(ValueError) as failure:
            analyze(polygon(count), 2, *tolerances)
        assert str(failure.value) == text


def test_tolerances_without_a_number_and_without_end():
    points = torus_knot(40)
    tube = Geometry.analyze(points, 2, math.nan, math.nan)
    assert tube.struts == [] and tube.kinks == [] and not tube.equilateral_ok
    assert tube.min_dcsd == Geometry.analyze(points).min_dcsd
    assert Geometry.dcsd_candidates(points, 2, math.nan) == []
    tube = Geometry.analyze(points, 2, math.inf)
    assert len(tube.struts) == 40 * 39 // 2 - 2 * 40 and len(tube.kinks) == 40
    assert Geometry.dcsd_candidates(points, 2**31 - 1) == []


def test_long_searches_end_on_a_signal():
    chords = np.random.default_rng(13).uniform(-1.0, 1.0, (40000, 3))
    for search in (Geometry.analyze, Geometry.dcsd_candidates):
        with ended_by_a_signal():
            search(chords)


def test_lower_bound_allows_for_rounding():
    assert Geometry.nontrivial_knot_lower_bound_rad() == (4 + 2 * math.sqrt(2)) * math.pi == 21.452136490675905
    assert _native.resolved_tube_lower_bound_rad() == 21.452136490675905
    assert Geometry.radius_to_diameter_ropelength(3.0) == 1.5 and Geometry.diameter_to_radius_ropelength(3.0) == 6.0
    # Triangles with ropelengths on both sides of the bound.
    triangles = [[[0.0, 0.0, 0.0], [2.0, 0.0, 0.0], [1.0, h, 0.0]] for h in np.linspace(0.5, 1.5, 200)]
    found = [Geometry.analyze(triangle) for triangle in triangles]
    assert len({tube.lower_bound_ok for tube in found}) == 2
    assert all(tube.lower_bound_ok == (tube.ropelength_rad + 1e-9 >= 21.452136490675905) for tube in found)


def test_vertex_numbers_are_taken_modulo_the_count():
    points = random_walk(7, 8)
    for k in range(7):
        assert Geometry.minrad_at_vertex(points, k + 7) == Geometry.minrad_at_vertex(points, k)
        assert kink_fields(Geometry.kink_at_vertex(points, k + 70)) == forms.kink(points.tolist(), k)
    for huge in (2**63 - 1, 2**63, 2**64 - 1):  # their predecessors are signed, their successors wrap: no harm
        Geometry.minrad_at_vertex(points, huge)
        assert Geometry.kink_at_vertex(points, huge).vertex == huge % 7


@pytest.mark.parametrize(
    ("segments", "expected"),
    [
        (([0, 0, 0], [1, 0, 0], [0, 0, 1], [0, 1, 1]), (1.0, 0.0, 0.0)),
        (([0, 0, 0], [2, 0, 0], [1, -1, 3], [1, 1, 3]), (3.0, 0.5, 0.5)),
        (([0, 0, 0], [1, 0, 0], [3, 4, 0], [3, 9, 0]), (math.sqrt(20.0), 1.0, 0.0)),
        (([0, 0, 0], [1, 0, 0], [2, 1, 0], [0, 1, 0]), (1.0, 0.0, 1.0)),
        (([0, 0, 0], [0, 0, 0], [1, -1, 0], [1, 3, 0]), (1.0, 0.0, 0.25)),
        (([1, -1, 0], [1, 3, 0], [0, 0, 0], [0, 0, 0]), (1.0, 0.25, 0.0)),
        (([1, 1, 1], [1, 1, 1], [1, 1, 3], [1, 1, 3]), (2.0, 0.0, 0.0)),
    ],
)
def test_segment_distance(segments, expected):
    assert Geometry.segment_segment_distance(*segments) == expected


def test_segment_distance_is_least_and_reproduced_by_its_parameters():
    rng = np.random.default_rng(9)
    weights = np.linspace(0.0, 1.0, 41)
    for p0, p1, q0, q1 in rng.uniform(-1.0, 1.0, (200, 4, 3)):
        distance, s, t = Geometry.segment_segment_distance(p0, p1, q0, q1)
        assert distance == pytest.approx(np.linalg.norm(p0 + s * (p1 - p0) - q0 - t * (q1 - q0)), rel=1e-14)
        on_p = p0 + weights[:, None] * (p1 - p0)
        on_q = q0 + weights[:, None] * (q1 - q0)
        sampled = np.linalg.norm(on_p[:, None] - on_q[None], axis=2).min()
        assert distance <= sampled + 1e-12 and distance >= sampled - 0.2


def differences(function, points, h=1e-6):
    gradient = np.zeros(points.size)
    for k in range(points.size):
        plus, minus = points.copy(), points.copy()
        plus.flat[k] += h
        minus.flat[k] -= h
        gradient[k] = (function(plus) - function(minus)) / (2.0 * h)
    return gradient


def test_gradients_match_central_differences():
    points = random_walk(8, 11)
    assert Geometry.length_gradient_flat(points) == pytest.approx(differences(Geometry.length, points), abs=1e-8)
    for pair in Geometry.dcsd_candidates(points, 1, 5.0):
        ends = [pair.i, (pair.i + 1) % 8, pair.j, (pair.j + 1) % 8]

        def half_distance(p, ends=ends):
            return 0.5 * Geometry.segment_segment_distance(*p[ends])[0]

        assert Geometry.strut_gradient_flat(points, pair) == pytest.approx(differences(half_distance, points), abs=1e-7)
    for v in range(8):
        kink = Geometry.kink_at_vertex(points, v)
        sides = {
            "minrad_plus": Geometry.kink_minrad_plus_gradient_flat,
            "minrad_minus": Geometry.kink_minrad_minus_gradient_flat,
            "minrad": Geometry.kink_minrad_gradient_flat,
        }
        for name, gradient in sides.items():
            expected = differences(lambda p, v=v, name=name: getattr(Geometry.kink_at_vertex(p, v), name), points)
            assert gradient(points, kink) == pytest.approx(expected, abs=1e-6)
        numeric = Geometry.kink_minrad_gradient_flat(points, kink, use_analytic=False)
        assert numeric == pytest.approx(Geometry.kink_minrad_gradient_flat(points, kink), abs=1e-6)


def test_kink_gradient_takes_the_minus_side_on_ties_and_differences_where_it_vanishes():
    points = [[-1.0, 0.0, 0.0], [0.0, 0.0, 0.0], [0.6, 0.8, 0.0], [-0.5, 2.0, 0.5]]
    kink = Geometry.kink_at_vertex(points, 1)
    assert kink.minrad_minus == kink.minrad_plus
    assert Geometry.kink_minrad_gradient_flat(points, kink) == Geometry.kink_minrad_minus_gradient_flat(points, kink)
    kink.minrad_plus = kink.minrad_minus - 3e-12
    assert Geometry.kink_minrad_gradient_flat(points, kink) == Geometry.kink_minrad_plus_gradient_flat(points, kink)

    # A reversal is collinear: its analytic gradients vanish.
    reversal = [[0.0, 0.0, 0.0], [1.0, 0.0, 0.0], [0.25, 0.0, 0.0], [0.0, 1.0, 0.0]]
    kink = Geometry.kink_at_vertex(reversal, 1)
    assert not any(Geometry.kink_minrad_plus_gradient_flat(reversal, kink))
    assert not any(Geometry.kink_minrad_minus_gradient_flat(reversal, kink))
    gradient = Geometry.kink_minrad_gradient_flat(reversal, kink, finite_difference_step=-1.0)
    assert gradient == Geometry.kink_minrad_gradient_flat(reversal, kink, False, 1e-6)
    moved = [forms.kink([[0, 0, 0], [1, y, 0], [0.25, 0, 0], [0, 1, 0]], 1)[3] for y in (1e-6, -1e-6)]
    assert gradient[4] == (moved[0] - moved[1]) / 2e-6

    # Of a straight corner only the moved ones have a radius, so no side is known: 0.
    straight = [[0.0, 0.0, 0.0], [1.0, 0.0, 0.0], [2.0, 0.0, 0.0], [0.0, 1.0, 0.0]]
    gradient = Geometry.kink_minrad_gradient_flat(straight, Geometry.kink_at_vertex(straight, 1))
    assert gradient[3] == 0.0 and gradient[4] == 0.0
    for few in ([], points[:2]):
        assert Geometry.kink_minrad_gradient_flat(few, kink) == [0.0] * (3 * len(few))
        assert Geometry.strut_gradient_flat(few[:1], _native.SegmentPair()) == [0.0] * (3 * len(few[:1]))


def test_gradients_of_records_for_other_points_stay_in_bounds():
    points = random_walk(5, 12)
    pair = _native.SegmentPair()
    pair.i, pair.j, pair.s, pair.t = 2**64 - 1, 2**63, math.nan, 7.0
    assert len(Geometry.strut_gradient_flat(points, pair)) == 15
    kink = _native.KinkRecord()
    for kink.vertex in (2**63, 2**64 - 1, 10**9):
        kink.turning_angle = 1.0
        for use_analytic in (True, False):
            assert len(Geometry.kink_minrad_gradient_flat(points, kink, use_analytic)) == 15


def test_records_have_their_defaults_and_hold_what_is_set():
    tube = _native.ResolvedTubeMetrics()
    assert tube.lower_bound_ok and not tube.equilateral_ok and tube.struts == [] and tube.ropelength_rad == 0.0
    pair = _native.SegmentPair()
    assert fields(pair) == (0, 0, 0.0, 0.0, 0.0, 0.0, 0.0)
    pair.distance = 2.0
    tube.struts = [pair]
    tube.struts[0].distance = 3.0  # a copy
    assert tube.struts[0].distance == 2.0
    for cls in (Geometry, _native.ContactStressMap):
        with pytest.raises(TypeError, match="No constructor defined!"):
            cls()
