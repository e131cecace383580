"""How low the tightener gets the trefoil and the figure-eight from so many vertices, in how many steps and seconds.

python examples/tighten_limits.py [VERTICES ...]

The default, 60 120 240, takes up to ten minutes. A polygon lies above the smooth knot: its corners cost length, about
as 1 / vertices^2.

Each knot is tightened with falling tolerances of its contacts. A wide one (1e-3 tube radii) sees the contacts that a
step is about to make and so allows long steps; a narrow one (1e-5) gets the last thousandth. With each tolerance the
tightener is called for as many steps as the polygon has vertices, again and again until a call gains less than 1e-5 of
the ropelength. The contacts are fitted by 200 sweeps of coordinate descent: the direction need not be exact, and
with the 770 contacts of a trefoil of 240 vertices a step takes an eighth of the time that it takes with the active set.
"""

from __future__ import annotations

import math
import sys
import time

import _native as vkm
import numpy as np
from tighten_trefoil import PUBLISHED, equilateral, figure_eight, trefoil

CONTACT_TOLERANCES = (1e-3, 1e-4, 1e-5)  # tube radii
LEAST_GAIN = 1e-5  # of the ropelength, by one call


def tighten(points: np.ndarray, published: float):
    """(steps, metrics) of the tightest polygon reached."""
    options = vkm.TighteningOptions()
    options.max_steps = len(points)
    options.max_step_size = 0.05
    options.use_active_set_solver = False
    options.nnls_max_iterations = 200
    # Two points that hold the tube apart are at least half a turn of it from each other along the curve.
    options.skip_neighbors = int(math.pi * len(points) / published)
    steps = 0
    metrics = vkm.ResolvedTubeGeometry.analyze(points, options.skip_neighbors)
    for options.contact_tol in CONTACT_TOLERANCES:
        gain = 1.0
        while gain > LEAST_GAIN:
            # Step sizes and tolerances are in the unit of the points: keep that the tube's radius.
            points = np.array(points) / vkm.ResolvedTubeGeometry.analyze(points, options.skip_neighbors).thickness_rad
            result = vkm.ResolvedTubeTightener.tighten(points, options)
            gain = 1.0 - result.metrics.ropelength_rad / metrics.ropelength_rad
            if gain > 0.0:
                points, metrics = result.points, result.metrics
            steps += len(result.steps)
    return steps, metrics


def main(*counts: int) -> None:
    print(f"{'':14}{'vertices':>9}{'start':>10}{'reached':>10}{'published':>11}{'above':>9}{'steps':>7}{'seconds':>9}")
    for name, curve in (("trefoil", trefoil), ("figure-eight", figure_eight)):
        for count in counts or (60, 120, 240):
            start = equilateral(curve, count)
            begin = time.perf_counter()
            steps, metrics = tighten(start, PUBLISHED[name])
            seconds = time.perf_counter() - begin
            skip = int(math.pi * count / PUBLISHED[name])
            before = vkm.ResolvedTubeGeometry.analyze(start, skip).ropelength_rad
            reached = metrics.ropelength_rad
            print(
                f"{name:14}{count:9}{before:10.4f}{reached:10.4f}{PUBLISHED[name]:11.4f}"
                f"{100.0 * (reached / PUBLISHED[name] - 1.0):8.3f}%{steps:7}{seconds:9.1f}",
                flush=True,
            )


if __name__ == "__main__":
    main(*map(int, sys.argv[1:]))
