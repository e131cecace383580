"""How times grow with the number of vertices: velocities directly and by the tree, and the analyses of long curves.

python bench/growth.py [--most 1000000] [--markdown FILE]

Each time is processor time on one thread, the best of a few runs. The direct sum is taken whole up to 10^5 vertices,
and beyond at 2000 of the vertices and scaled. Errors are those of all vertices, relative to the largest velocity;
beyond 10^5 vertices those of the 64 at which the tree checks itself.
"""

from __future__ import annotations

import sys
import time
from collections.abc import Callable, Sequence
from functools import partial
from pathlib import Path

import click
import numpy as np

sys.path.insert(0, str(Path(__file__).resolve().parent))

from markdown_table import conditions, row
from vkmcore import _native, curve_velocity, velocity
from vkmcore.parallel import far_writhe

TOLERANCES = (1e-3, 1e-6, 1e-10)
WHOLE = 100_000
SAMPLE = 2_000
SHAPES = ("trefoil", "100 rings at random")


def trefoil(count: int) -> np.ndarray:
    t = np.arange(count) * 2 * np.pi / count
    r = np.cos(3 * t) + 2
    return np.ascontiguousarray(np.stack([np.cos(2 * t) * r, np.sin(2 * t) * r, np.sin(3 * t)], axis=1))


def filaments(shape: str, count: int) -> list[dict[str, np.ndarray]]:
    if shape == "trefoil":
        return [{"points": trefoil(count)}]
    rng = np.random.default_rng(0)
    t = np.arange(count // 100) * 2 * np.pi / (count // 100)
    circle = np.stack([np.cos(t), np.sin(t), 0 * t], axis=1)
    turns = (np.linalg.qr(rng.normal(size=(3, 3)))[0] for _ in range(100))
    return [{"points": circle @ turn.T + rng.uniform(-2, 2, 3)} for turn in turns]


def best(call: Callable[[], object], budget: float = 0.5) -> tuple[float, object]:
    """Least processor time of a call, and its result."""
    least, spent = float("inf"), 0.0
    while spent < budget:
        start = time.process_time()
        result = call()
        seconds = time.process_time() - start
        least, spent = min(least, seconds), spent + seconds
    return least, result


def direct(curves: list[dict[str, np.ndarray]]) -> tuple[float, np.ndarray | None]:
    """Time of the direct sum, and the velocities if it was taken whole."""
    count = sum(len(curve["points"]) for curve in curves)
    if count <= WHOLE:
        seconds, found = best(lambda: velocity(curves, threads=1))
        return seconds, np.concatenate(found.velocity)
    taken = np.arange(0, count, count // SAMPLE)
    points = np.concatenate([curve["points"] for curve in curves])[taken]
    seconds, _ = best(lambda: [curve_velocity(curve["points"], points, threads=1) for curve in curves])
    return seconds * count / len(taken), None


def row_of(shape: str, count: int) -> list[str]:
    curves = filaments(shape, count)
    seconds, exact = direct(curves)
    cells = [shape, str(count), f"{seconds:.3g}"]
    for tolerance in TOLERANCES:
        tree, found = best(partial(velocity, curves, far_field="tree", tolerance=tolerance, threads=1))
        if exact is not None:
            miss = np.abs(np.concatenate(found.velocity) - exact).max() / np.linalg.norm(exact, axis=1).max()
        else:
            miss = found.sampled_error
        used = "" if found.far_field == "tree" else ", direct"
        cells.append(f"{tree:.3g} ({seconds / tree:.1f}; {miss:.0e}{used})")
    return cells


ANALYSES: dict[str, tuple[int, Callable[[np.ndarray], object]]] = {
    "tube_analyze": (10**6, lambda curve: _native.ResolvedTubeGeometry.analyze(curve)),
    "pd_from_curve, 4 tries": (10**5, lambda curve: _native.pd_from_curve(curve, 4)),
    "compute_writhe": (10**5, lambda curve: _native.compute_writhe(curve)),
    "far_writhe, 1e-06": (10**6, lambda curve: far_writhe(curve, 1e-6, threads=1)),
}


def table(headings: Sequence[str], rows: Sequence[Sequence[str]]) -> list[str]:
    return [row(headings), row(["---", *["---:"] * (len(headings) - 1)]), *map(row, rows)]


@click.command()
@click.option(
    "--most", type=int, default=10**6, show_default=True, help="Vertices at most; ten times as many of the analyses."
)
@click.option("--markdown", "markdown_file", type=click.Path(dir_okay=False), help="Write the tables to this file too.")
def main(most: int, markdown_file: str | None) -> None:
    """Time direct sum, tree and analyses for growing numbers of vertices."""
    counts = [count for count in (1000, 8000, 100_000, 1_000_000) if count <= most]
    velocities = []
    for shape in SHAPES:
        for count in counts:
            velocities.append(row_of(shape, count))
            print(*velocities[-1], sep="  ", flush=True)
    analyses = []
    for name, (limit, analyse) in ANALYSES.items():
        sizes = [count for count in (1000, 10_000, 100_000, 1_000_000) if count <= min(10 * most, limit)]
        curves = {count: trefoil(count) for count in sizes}
        analyses.append(
            [
                name,
                *(
                    f"{best(partial(analyse, curves[n]))[0]:.3g}" if n in curves else "-"
                    for n in (1000, 10_000, 100_000, 1_000_000)
                ),
            ]
        )
        print(*analyses[-1], sep="  ", flush=True)
    if markdown_file:
        lines = [row(("measured", "")), row(("---", "---")), *map(row, conditions()), ""]
        headings = (
            "vertices of",
            "n",
            "direct, s",
            *(f"tree, {tolerance:g}, s (ratio; error)" for tolerance in TOLERANCES),
        )
        lines += [
            *table(headings, velocities),
            "",
            *table(("trefoil of n vertices, s", "10^3", "10^4", "10^5", "10^6"), analyses),
        ]
        Path(markdown_file).write_text("\n".join(lines) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
