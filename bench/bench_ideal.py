"""Tight shapes: the program of a step against an interior point of general use, and a whole search beside the tightener
from the same start."""

from __future__ import annotations

import time
from collections.abc import Callable

import _native
import numpy as np
from harness import Case
from vkmcore import _engine
from vkmcore.ideal.polygons import tighten_polygons
from vkmcore.ideal.starts import grid_polygons

TREFOIL = [(1, 3), (2, 4), (3, 5), (1, 4), (2, 5)]
FIGURE_EIGHT = [(1, 3), (2, 4), (3, 6), (1, 5), (4, 6), (2, 5)]
TIGHTENER_STEPS = 300


def next_vertices(n: int) -> np.ndarray:
    return np.roll(np.arange(n), -1)


def general_solver(program: dict) -> Callable[[], object] | None:
    """The same program of one component, sparse, for PIQP; None without it."""
    try:
        import piqp
        from scipy import sparse
    except ImportError:
        return None
    (n,) = program["sizes"]
    edges, kinks, struts = program["edges"], program["kinks"], program["struts"]
    after = next_vertices(n)
    before = np.argsort(after)
    u, length = edges[:, :3], edges[:, 3]
    differences = sparse.lil_matrix((3 * n, 3 * n + 1))
    along = sparse.lil_matrix((n, 3 * n + 1))
    rows = sparse.lil_matrix((len(kinks) + len(struts), 3 * n + 1))
    for k in range(n):
        across = (np.eye(3) - np.outer(u[k], u[k])) / np.sqrt(length[k])
        for vertex, sign in ((k, -1), (after[k], 1)):
            differences[3 * k : 3 * k + 3, 3 * vertex : 3 * vertex + 3] = sign * across
            along[k, 3 * vertex : 3 * vertex + 3] = sign * u[k]
        along[k, 3 * n] = -1
    for r, row in enumerate(kinks):
        k = int(row[0])
        for vertex, sign in ((before[k], -1), (after[k], 1)):
            rows[r, 3 * vertex : 3 * vertex + 3] = sign * row[1:4]
        rows[r, 3 * n] = -row[4]
    for r, row in enumerate(struts, len(kinks)):
        i, j, s, t = int(row[0]), int(row[1]), row[2], row[3]
        for vertex, factor in ((i, 1 - s), (after[i], s), (j, t - 1), (after[j], -t)):
            rows[r, 3 * vertex : 3 * vertex + 3] += factor * row[4:7]
    stays = sparse.diags([program["rho"]] * (3 * n) + [0.0])
    hessian = (differences.T @ differences + stays).tocsc()
    cost = np.concatenate([np.zeros(3 * n), [n]])
    demands = np.concatenate([kinks[:, 6], struts[:, 8]])
    box = np.concatenate([np.full(3 * n, program["bound"]), [1e3]])
    equalities, inequalities = along.tocsc(), (-rows).tocsc()

    def solve() -> object:
        solver = piqp.SparseSolver()
        solver.settings.eps_abs = solver.settings.eps_rel = 1e-7
        solver.setup(hessian, cost, equalities, -length, inequalities, None, -demands, -box, box)
        return solver.solve()

    return solve


def program_case(edge: float) -> Case:
    start = list(next(iter(grid_polygons(FIGURE_EIGHT))).components)
    points = _engine.contract(start, edge=0.75)["points"]
    for level in (0.4, 0.25, 0.15, 0.10, 0.07):
        if level >= edge:
            points = _engine.refine(points, level)["points"]
    program = _engine.program(points, bound=0.25 * edge)
    solution = _engine.solve_program(**program)
    rows = len(program["kinks"]) + len(program["struts"])
    return Case(
        "ideal: program of a step (PIQP beside it)",
        f"{program['sizes'][0]} vertices, {rows} rows",
        ours=lambda: _engine.solve_program(**program),
        numpy=general_solver(program),
        note=f"{solution['iterations']} iterations",
    )


def search_case(name: str, grid: list[tuple[int, int]], best_known: float) -> Case:
    """Ours, and in the note the tightener from the first of the same starts, both in processor seconds."""
    starts = [list(start.components) for start in grid_polygons(grid)]

    def note() -> str:
        begin = time.process_time()
        shape = tighten_polygons(starts, threads=1)
        ours = time.process_time() - begin
        (points,) = _engine.contract(starts[0], edge=0.25, programs=1)["points"]  # a start with even edges
        options = _native.TighteningOptions()
        options.max_steps, options.max_step_size, options.skip_neighbors = TIGHTENER_STEPS, 0.2, 13
        begin = time.process_time()
        result = _native.ResolvedTubeTightener.tighten(points.tolist(), options)
        seconds = time.process_time() - begin
        excess, other = (100 * (value / best_known - 1) for value in (shape.ropelength, result.metrics.ropelength_rad))
        return (
            f"{excess:+.3f} % of the best known after {ours:.1f} s of the processor; "
            f"the tightener {other:+.1f} % after {seconds:.1f} s and {len(result.steps)} steps"
        )

    return Case(
        f"ideal: {name} from its grid to edges of 0.15",
        f"{len(starts)} starts",
        ours=lambda: tighten_polygons(starts, threads=1),
        note=note,
    )


def cases() -> list[Case]:
    return [
        *(program_case(edge) for edge in (0.4, 0.15, 0.07)),
        search_case("trefoil", TREFOIL, 32.7436),
        search_case("figure-eight", FIGURE_EIGHT, 42.0887),
    ]
