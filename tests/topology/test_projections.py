"""Closed polygons as diagrams: any direction, any unit, degenerate views, messy curves, comparison with SnapPy."""

import numpy as np
import pytest
from vkmcore.ideal.starts import braid_polygon, grid_polygon, torus_polygon
from vkmcore.reference import find
from vkmcore.topology import alexander, diagram_of_curves, jones, signature, simplified
from vkmcore.topology.projection import (
    DegenerateProjection,
    closed_polygons,
    crossings,
    project,
    view_directions,
)


def random_link(seed):
    rng = np.random.default_rng(seed)
    count = 1 + seed % 3
    return [rng.normal(size=(rng.integers(5, (15, 9, 7)[count - 1]), 3)) for _ in range(count)]


def plain_crossings(polygons):
    """Pairs of edges that cross in the plane z = 0, each by solving two linear equations."""
    edges = [(p[k], p[(k + 1) % len(p)]) for p in polygons for k in range(len(p))]
    found = []
    for i in range(len(edges)):
        for j in range(i):
            (a, b), (c, d) = edges[i], edges[j]
            matrix = np.array([b[:2] - a[:2], c[:2] - d[:2]]).T
            if abs(np.linalg.det(matrix)) > 1e-14:
                s, t = np.linalg.solve(matrix, c[:2] - a[:2])
                if 1e-9 < s < 1 - 1e-9 and 1e-9 < t < 1 - 1e-9:
                    over = i if a[2] + s * (b - a)[2] > c[2] + t * (d - c)[2] else j
                    found.append((over, i + j - over))
    return sorted(found)


@pytest.mark.parametrize("seed", range(6))
def test_crossings_against_the_plain_search(seed):
    polygons = closed_polygons(random_link(seed))
    table = crossings(polygons, [0.0, 0.0, 1.0])
    assert sorted(zip(table.over.tolist(), table.under.tolist())) == plain_crossings(polygons)


@pytest.mark.parametrize("seed", range(30))
def test_invariants_do_not_depend_on_the_direction(seed):
    link = random_link(seed)
    views = [project(closed_polygons(link), direction) for direction in view_directions(3)]
    views.append(simplified(views[0]))
    for invariant in (jones, alexander, signature, lambda d: d.linking_matrix()):
        assert len({str(invariant(diagram)) for diagram in views}) == 1


@pytest.mark.parametrize("seed", range(12))
def test_random_polygons_against_snappy(seed):
    snappy = pytest.importorskip("snappy")
    diagram = simplified(project(closed_polygons(random_link(seed)), [0.3, 0.2, 0.9]), effort=0)
    if not diagram.code or not all(diagram.components):
        assert str(jones(diagram)) != "0"
        return
    link = snappy.Link(diagram.pd_code())
    assert link.writhe() == diagram.writhe
    order = [sorted(abs(int(x)) for x in row) for row in np.array(link.linking_matrix())]
    assert sorted(order) == sorted(sorted(map(abs, row)) for row in diagram.linking_matrix())


@pytest.mark.parametrize("unit", [1e-200, 1e-15, 1.0, 1e200])
def test_units_and_place_do_not_matter(unit):
    points = torus_polygon(2, 3).components[0]
    diagram = diagram_of_curves(points * unit + 3.0 * unit)
    assert len(diagram) == 3
    assert str(jones(diagram)) == "t + t^3 - t^4"


def test_a_view_along_the_strands_is_degenerate_and_passed_over():
    (trefoil,) = grid_polygon(find("3_1").grid).components
    for direction in ([1.0, 0.0, 0.0], [0.0, 1.0, 0.0]):  # columns lie behind columns
        with pytest.raises(DegenerateProjection):
            project(closed_polygons(trefoil), direction)
    assert len(diagram_of_curves(trefoil)) == 3


def test_a_vertex_behind_an_edge_is_degenerate():
    square = np.array([[0.0, 0, 0], [2, 0, 0], [2, 2, 0], [0, 2, 0]])
    pointed = np.array([[1.0, 0, 1], [3, -1, 1], [3, -3, 1]])
    with pytest.raises(DegenerateProjection):
        project(closed_polygons([square, pointed]), [0.0, 0.0, 1.0])


@pytest.mark.parametrize("seed", range(4))
def test_messy_unknots_come_undone(seed):
    # A circle pushed about by smooth maps of space that are one to one: shears, each along one axis.
    rng = np.random.default_rng(seed)
    s = 2.0 * np.pi * np.arange(400) / 400
    p = np.stack([np.cos(s), np.sin(s), 0.1 * np.sin(2 * s)], axis=1)
    for _ in range(9):
        axis, other = rng.permutation(3)[:2]
        p[:, axis] += rng.uniform(0.6, 1.2) * np.sin(rng.uniform(2.0, 4.0) * p[:, other] + rng.uniform(0, 6))
    assert max(len(project(closed_polygons(p), d)) for d in view_directions(8)) > 10
    assert len(diagram_of_curves(p)) == 0


def test_a_messy_trefoil_gives_three_crossings():
    points = braid_polygon([1, 1, 2, -2, 3, 1, -3, 2, -2]).components[0]
    assert len(diagram_of_curves(points)) in (3, 4)


def test_repeated_and_nearly_repeated_vertices():
    (points,) = torus_polygon(2, 3).components
    doubled = np.repeat(points, 2, axis=0)
    closed = np.vstack([points, points[:1] * (1.0 + 1e-15)])
    assert jones(diagram_of_curves(doubled)) == jones(diagram_of_curves(closed)) == jones(diagram_of_curves(points))


@pytest.mark.parametrize(
    ("points", "text"),
    [
        (np.zeros((5, 2)), "three numbers"),
        (np.zeros((5, 3)), "one"),
        (np.array([[0.0, 0, 0], [1, 0, 0]]), "three vertices"),
        (np.array([[0.0, 0, 0], [1, 0, 0], [np.nan, 1, 0]]), "finite"),
        ([], "three"),
        (np.array([[0.0, 0, 0], [2, 0, 0], [2, 2, 0], [1, -1, 0], [0, 2, 0]]), "meets itself"),
    ],
)
def test_curves_refused(points, text):
    with pytest.raises(ValueError, match=text):
        diagram_of_curves(points)


def test_a_tangle_too_large_for_its_polynomial_is_refused():
    rng = np.random.default_rng(1)
    diagram = project(closed_polygons(rng.normal(size=(150, 3))), [0.1, 0.2, 1.0])
    with pytest.raises(ValueError, match="too large"):
        jones(diagram)
