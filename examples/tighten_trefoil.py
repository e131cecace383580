"""Tighten the trefoil and the figure-eight and compare their ropelength with the best published values.

python examples/tighten_trefoil.py [POINTS] [STEPS]

Ropelength is length over tube radius. The trefoil is the ideal one of the catalogue, 3:1:1. The figure-eight starts
from a harmonic curve: the catalogue's 4:1:1 is the symmetric configuration, which tightens to a local minimum near
55.7.
"""

from __future__ import annotations

import math
import sys

import _native as vkm
import numpy as np
from vkmcore.curves import evenly_spaced

PUBLISHED = {"trefoil": 32.7436, "figure-eight": 42.0887}  # least known length over radius of the smooth knots


def trefoil(s: np.ndarray) -> np.ndarray:
    block = vkm.parse_embedded_ideal_ab_by_id("3:1:1")
    return np.asarray(vkm.evaluate_ideal_ab_components(block, s)[0])


def figure_eight(s: np.ndarray) -> np.ndarray:
    """Of harmonics up to the third (A. K. Trautwein, Harmonic knots, 1995)."""
    basis = np.array([f(k * s) for k in (1, 2, 3) for f in (np.cos, np.sin)])
    x = [32, -51, -104, -34, 104, -91]
    y = [94, 41, 113, 0, -68, -124]
    z = [16, 73, -211, -39, -99, -21]
    return (np.array([x, y, z]) @ basis).T


def equilateral(curve, count: int) -> np.ndarray:
    """`count` vertices at equal arc lengths of a closed curve of period 2 pi."""
    return evenly_spaced(curve(np.arange(64 * count) * 2.0 * np.pi / (64 * count)), count)


def tighten(points: np.ndarray, published: float, steps: int):
    """(start, result, diagnosis), in units of the start's tube radius."""
    options = vkm.TighteningOptions()
    options.max_steps = steps
    options.max_step_size = 0.05
    # Edges within half a turn of the tube are kept apart by the curvature; closer ones would count as contacts.
    options.skip_neighbors = math.ceil(math.pi * len(points) / published)
    radius = vkm.ResolvedTubeGeometry.analyze(points, options.skip_neighbors).thickness_rad
    start = vkm.ResolvedTubeGeometry.analyze(points / radius, options.skip_neighbors, options.contact_tol)
    result = vkm.ResolvedTubeTightener.tighten(points / radius, options)
    diagnosis = vkm.ContactStressMap.diagnose_length_criticality(result.points, result.metrics)
    return start, result, diagnosis


def main(count: int = 60, steps: int = 400) -> None:
    for name, curve in (("trefoil", trefoil), ("figure-eight", figure_eight)):
        start, result, diagnosis = tighten(equilateral(curve, count), PUBLISHED[name], steps)
        print(f"{name}, {count} vertices")
        print(f"  ropelength before     {start.ropelength_rad:10.4f}")
        print(
            f"  ropelength after      {result.metrics.ropelength_rad:10.4f}  {len(result.steps)} steps, {result.reason}"
        )
        print(f"  best published        {PUBLISHED[name]:10.4f}")
        print(f"  residual of criticality {diagnosis.contact_residual:8.2g}")
        print(f"  contacts carrying     {diagnosis.nnls_active_set_size:5d} of {diagnosis.rigidity_columns}")
        stress = diagnosis.strut_weight_sum + diagnosis.kink_weight_sum
        print(f"  stress on struts      {100.0 * diagnosis.strut_weight_sum / max(stress, 1e-300):9.1f} %")


if __name__ == "__main__":
    main(*map(int, sys.argv[1:]))
