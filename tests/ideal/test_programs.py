"""The quadratic program of one step: its rows, and its solver against plain matrices and an independent solver."""

import numpy as np
import pytest
from vkmcore import _engine

from ideal import grids, programs


def polygons(name):
    grid = {"trefoil": grids.TREFOIL, "figure-eight": grids.FIGURE_EIGHT, "hopf": grids.HOPF}[name]
    return _engine.contract(grids.grid_polygons(grid, 1, 2), edge=0.9, programs=8)["points"]


def split(points, sizes):
    return np.split(points, np.cumsum(sizes)[:-1])


def mean_edges(points, sizes):
    parts = split(points, sizes)
    return np.array([np.linalg.norm(np.roll(p, -1, 0) - p, axis=1).mean() for p in parts])


def equilateral(parts):
    """Polygons near these whose edges have one length each, by Newton's method."""
    for _ in range(6):
        program = _engine.program(parts, bound=0.1)
        lengths = [np.linalg.norm(np.roll(p, -1, 0) - p, axis=1) for p in parts]
        uneven = np.concatenate([edges - edges.mean() for edges in lengths])
        x = np.linalg.lstsq(programs.matrices(program)[2], -uneven, rcond=None)[0]
        moves = x[: 3 * len(uneven)].reshape(-1, 3)
        parts = split(np.concatenate(parts) + moves, program["sizes"])
    return parts


@pytest.mark.parametrize("name", ["trefoil", "hopf"])
def test_rows_are_the_derivatives_of_lengths_corners_and_distances(name):
    parts = equilateral(polygons(name))
    found = _engine.program(parts, bound=0.1)
    sizes, struts, kinks = found["sizes"], found["struts"], found["kinks"]
    assert len(struts) > 20 and len(kinks) == sum(sizes)
    points = np.concatenate(parts)
    _, _, A, _, G, _ = programs.matrices(found)
    x = np.random.default_rng(5).normal(size=3 * len(points) + len(sizes))
    x -= np.linalg.lstsq(A, A @ x, rcond=None)[0]  # the corners' rows suppose that edges stay even
    moves, change = x[: 3 * len(points)].reshape(-1, 3), x[3 * len(points) :]
    after, part = programs.next_vertices(sizes), programs.components_of(sizes)
    before = np.argsort(after)
    h = mean_edges(points, sizes)

    def values(step):
        p, edge = points + step * moves, (h + step * change)[part]
        lengths = np.linalg.norm(p[after] - p, axis=1)
        directions = (p[after] - p) / lengths[:, None]
        corners = np.linalg.norm(directions[before] + directions, axis=1) - 2 / np.sqrt(1 + edge**2 / 4)
        i, j = struts[:, 0].astype(int), struts[:, 1].astype(int)
        s, t = struts[:, 2:3], struts[:, 3:4]
        gaps = (1 - s) * p[i] + s * p[after[i]] - (1 - t) * p[j] - t * p[after[j]]
        return np.concatenate([lengths - edge, 2 / h[part] ** 3 * edge * corners, np.linalg.norm(gaps, axis=1) - 2])

    step = 1e-6
    derivative = (values(step) - values(-step)) / (2 * step)
    np.testing.assert_allclose(np.concatenate([A @ x, G @ x]), derivative, rtol=1e-6, atol=1e-6)
    excess = np.concatenate([kinks[:, 5], struts[:, 7]])
    np.testing.assert_allclose(values(0.0)[sum(sizes) :], excess, atol=1e-9)


def with_copies(program):
    return {**program, "struts": np.concatenate([program["struts"]] * 2)}


def without_struts(program):
    return {**program, "struts": np.empty((0, 9))}


def stiff(program):
    return {**program, "stiffness": 0.05}


@pytest.mark.parametrize(
    "change",
    [dict, with_copies, without_struts, stiff],
    ids=["as it is", "degenerate", "no struts", "stiff"],
)
@pytest.mark.parametrize("name", ["trefoil", "figure-eight", "hopf"])
def test_the_solver_finds_the_optimum(name, change):
    program = change(_engine.program(polygons(name), bound=0.1))
    P, c, A, b, G, g = programs.matrices(program)
    n = 3 * sum(program["sizes"])
    mine = _engine.solve_program(**program, tolerance=2e-9)
    assert mine["solved"]
    x = np.concatenate([mine["moves"].ravel(), mine["edge_lengths"]])
    z = np.concatenate([mine["kink_forces"], mine["strut_forces"]])
    # Where it is feasible and what pulls is balanced by forces, a convex program is at its optimum.
    np.testing.assert_allclose(A @ x, b, atol=1e-8)
    assert (G @ x - g).min() > -1e-8
    assert abs(x[:n]).max() <= program["bound"]
    force = P @ x + c + A.T @ mine["edge_forces"] - G.T @ z
    assert z.min() >= 0 and z @ (G @ x - g) < 1e-6
    np.testing.assert_allclose(force[n:], 0.0, atol=1e-6)
    inside = abs(x[:n]) < 0.99 * program["bound"]
    np.testing.assert_allclose(force[:n][inside], 0.0, atol=1e-5)
    assert (force[:n] * x[:n])[~inside].max(initial=-1.0) < 1e-6

    piqp = pytest.importorskip("piqp")
    solver = piqp.DenseSolver()
    solver.settings.eps_abs = solver.settings.eps_rel = 1e-10
    box = np.concatenate([np.full(n, program["bound"]), np.full(len(c) - n, 1e3)])
    solver.setup(P, c, A, b, -G, np.full(len(g), -np.inf), -g, -box, box)
    assert solver.solve() == piqp.PIQP_SOLVED
    theirs = np.array(solver.result.x)
    assert 0.5 * x @ P @ x + c @ x == pytest.approx(0.5 * theirs @ P @ theirs + c @ theirs, abs=1e-7)
    np.testing.assert_allclose(x, theirs, atol=1e-3)  # flat directions: the objective differs in its seventh digit


def test_a_program_without_a_solution_is_told():
    program = _engine.program(polygons("trefoil"), bound=0.1)
    program["struts"][0, 8] = 1.0  # more than the box allows
    assert not _engine.solve_program(**program)["solved"]


@pytest.mark.parametrize("key, row", [("kinks", [1e9] + [0.0] * 6), ("struts", [-1.0] + [0.0] * 8), ("edges", [0.0])])
def test_bad_tables_are_refused(key, row):
    program = _engine.program(polygons("trefoil"), bound=0.1)
    with pytest.raises(ValueError):
        _engine.solve_program(**{**program, key: np.array([row])})
