"""How the relaxed ropelength of five knots depends on points, step and sweeps, with the exponent of its growth.

PYTHONPATH=build/dev:python python tools/study_mass.py      (about a minute)
"""

from __future__ import annotations

import itertools
import math

import numpy as np
from vkmcore import ParticleEvaluator

KNOTS = ("3:1:1", "4:1:1", "5:1:1", "5:1:2", "6:1:1")
POINTS = (100, 200, 400, 800)
WAYS = ((1e-2, 100), (1e-2, 1000), (1e-3, 100), (1e-3, 1000))


def ropelength(knot: str, points: int, sweeps: int, step: float) -> float:
    evaluator = ParticleEvaluator(knot, points)
    evaluator.relax(sweeps, step)
    return float(evaluator.get_dimless_ropelength())


def row(knot: str, name: str, values: list[float]) -> None:
    steps = [abs(b - a) for a, b in itertools.pairwise(values)]
    if name == "none":
        fitted = f"last change {steps[-1] / values[-1]:.0e}"
    else:
        fitted = f"growth {np.polyfit(np.log(POINTS[-3:]), np.log(values[-3:]), 1)[0]:.2f}"
    print(f"| {knot} | {name} | " + " | ".join(f"{value:.4f}" for value in values) + f" | {fitted} |", flush=True)


def main() -> None:
    print("| knot | step, sweeps | " + " | ".join(map(str, POINTS)) + " | fit |")
    print("| --- | --- |" + " --- |" * (len(POINTS) + 1))
    for knot in KNOTS:
        row(knot, "none", [ropelength(knot, n, 0, 1e-3) for n in POINTS])
        for step, sweeps in WAYS:
            row(knot, f"{step:g}, {sweeps}", [ropelength(knot, n, sweeps, step) for n in POINTS])
        # Keeps the repulsion's way in one sweep: the force grows with the points, the way with the step's square.
        values = [ropelength(knot, n, 1000, 1e-3 * math.sqrt(POINTS[0] / n)) for n in POINTS]
        row(knot, "1e-3 sqrt(100 / points), 1000", values)


if __name__ == "__main__":
    main()
