"""Tightening of a closed curve towards least ropelength, watched step by step."""

from __future__ import annotations

import math
from collections.abc import Callable
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore import (
    ContactStressMap,
    ResolvedTubeGeometry,
    ResolvedTubeMetrics,
    ResolvedTubeTightener,
    TighteningOptions,
    TighteningStepRecord,
)
from vkmcore.curve_description import neighbours
from vkmcore.curve_source import CurveSource, evenly_spaced

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

MATRIX_FILE = "rigidity.mtx"
GRADIENT_FILE = "length_gradient.mtx"
STEP_FIELDS = (
    "step",
    "ropelength_before",
    "ropelength_after",
    "thickness_before",
    "thickness_after",
    "length_before",
    "length_after",
    "kkt_residual_before",
    "projected_gradient_norm",
    "alpha",
    "strut_count",
    "kink_count",
    "rigidity_columns",
    "accepted",
    "thickness_corrected",
    "correction_strategy",
    "solver_algorithm",
)


class Tightening:
    """A closed curve on its way to least ropelength, with all that has been reached, also where a run was interrupted.

    Attributes:
        start: the first polygon, vertices (N, 3) in any unit.
        start_unit: its tube radius, in that unit.
        unit: tube radius of the polygon that the last run started from, in that unit too.
        scaled: the last accepted polygon, over `unit`.
        skip, contact_tol: of the last run.
        steps: TighteningStepRecord of all runs; lengths in the unit of the run.
        runs: the number of steps of each run.
        reason: why the last run ended.
    """

    def __init__(self, start: Points) -> None:
        self.start = start
        self.start_unit = 1.0
        self.unit = ResolvedTubeGeometry.edge_length_mean(start.tolist()) or 1.0  # lengths about 1, until a run begins
        self.scaled = start / self.unit
        self.skip = 0
        self.contact_tol = 0.0
        self.steps: list[TighteningStepRecord] = []
        self.runs: list[int] = []
        self.reason = ""

    @property
    def points(self) -> Points:
        """The last accepted polygon in the unit of the first."""
        return self.scaled * self.unit

    def tube(self) -> ResolvedTubeMetrics:
        """Of the last accepted polygon, over `unit`."""
        return ResolvedTubeGeometry.analyze(self.scaled.tolist(), self.skip, self.contact_tol)

    def begin(self, contact_tol: float, skip: int | None = None) -> None:
        """Take the polygon as the start of a run: its tube radius is the unit from here on.

        Args:
            contact_tol: how far from the thickness an edge pair or a corner may be and still count as a contact.
            skip: edges to either side that are no contacts; `out_of_touch` of the polygon if None.

        Raises:
            ValueError: fewer than three vertices, a polygon without thickness, or a negative tolerance.
        """
        self.skip = out_of_touch(self.scaled) if skip is None else skip
        self.contact_tol = contact_tol
        radius = self.tube().thickness_rad
        if not 0.0 < radius < math.inf:
            raise ValueError("nonpositive_initial_thickness: there is no tube to tighten around this polygon")
        self.unit, self.scaled = self.unit * radius, self.scaled / radius
        if not self.runs:
            self.start_unit = self.unit

    def run(self, options: TighteningOptions, watch: Callable[[], None] = lambda: None) -> None:
        """Tighten by one call of the library's tightener, which is watched and not cut into pieces: each call holds the
        thickness that it starts from. `watch` is called after every step, and what it raises ends the run.

        `contact_tol` and `skip_neighbors` of the options are set to those that the run began with.
        """
        options.contact_tol, options.skip_neighbors = self.contact_tol, self.skip
        self.runs.append(0)
        self.reason = "interrupted"

        def see(step: TighteningStepRecord, points: list[list[float]]) -> None:
            self.scaled = np.array(points)
            self.steps.append(step)
            self.runs[-1] += 1
            watch()

        result = ResolvedTubeTightener._watched_tighten(self.scaled.tolist(), options, see)
        self.scaled, self.reason = np.array(result.points), result.reason


def start_polygon(source: CurveSource, vertices: int | None) -> Points:
    """Vertices (N, 3) to start from: `vertices` of them (120 if None) at equal arc lengths of a series, a polygon as it
    stands if `vertices` is None."""
    if source.block is not None:
        count = 120 if vertices is None else vertices
        return evenly_spaced(source.sampled(32 * count), count)
    points = np.array(source.vertices, dtype=np.float64).reshape(-1, 3)
    return points if vertices is None else evenly_spaced(points, vertices)


def out_of_touch(points: Points) -> int:
    """How many edges to either side of one are too near to it along the curve for a contact.

    Where no radius of curvature is below the tube's, two points that hold the tube apart are at least pi radii from
    each other along the curve. Shortening at a held thickness keeps that true: edges become shorter, not longer.
    """
    vertices = points.tolist()
    edge = ResolvedTubeGeometry.edge_length_mean(vertices)
    radius = ResolvedTubeGeometry.analyze(vertices, neighbours(vertices), 0.0).thickness_rad
    if not edge > 0.0 or not math.isfinite(radius):
        return 1
    return min(max(int(math.pi * radius / edge), 1), max(len(points) // 2, 1))


def record(reached: Tightening, first: ResolvedTubeMetrics) -> dict[str, Any]:
    """All of it as plain values, in full precision; `first` is the tube of the first run's start."""
    last = reached.tube()
    return {
        "vertices": len(reached.scaled),
        "ropelength_before": first.ropelength_rad,
        "ropelength_after": last.ropelength_rad,
        "thickness_after": last.thickness_rad * reached.unit,
        "struts": len(last.struts),
        "kinks": len(last.kinks),
        "skipped_neighbours": reached.skip,
        "runs": reached.runs,
        "reason": reached.reason,
        "steps": [{name: getattr(step, name) for name in STEP_FIELDS} for step in reached.steps],
        "points": reached.points.tolist(),
    }


def write_polygon(path: Path, name: str, reached: Tightening) -> None:
    """Vertices as text, in full precision; `find_curve` reads it."""
    ropelength = reached.tube().ropelength_rad
    label = name if name.isprintable() else ascii(name)
    lines = [f"# {label}, tightened in {len(reached.steps)} steps to a ropelength of {ropelength!r}"]
    lines += [f"{x!r} {y!r} {z!r}" for x, y, z in reached.points.tolist()]
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def write_matrices(folder: Path, reached: Tightening) -> None:
    """The rigidity matrix of the last accepted polygon and its length gradient. Neither depends on the unit."""
    matrix = ContactStressMap.build_sparse_rigidity_matrix(reached.scaled.tolist(), reached.tube())
    ContactStressMap.write_sparse_matrix_market(matrix, str(folder / MATRIX_FILE))
    gradient = ResolvedTubeGeometry.length_gradient_flat(reached.scaled.tolist())
    ContactStressMap.write_vector_market(gradient, str(folder / GRADIENT_FILE))
