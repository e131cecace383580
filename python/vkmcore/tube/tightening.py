"""Tightening of a closed curve towards least ropelength, watched step by step."""

from __future__ import annotations

import ctypes
import math
import os
from collections.abc import Callable, Sequence
from pathlib import Path
from typing import TYPE_CHECKING, Any

import _native
import numpy as np

from vkmcore import (
    ContactStressMap,
    ResolvedTubeGeometry,
    ResolvedTubeMetrics,
    TighteningOptions,
    TighteningResult,
    TighteningStepRecord,
)
from vkmcore.curves.closed_curve import ClosedCurve
from vkmcore.curves.neighbours import neighbours
from vkmcore.curves.resampling import evenly_spaced
from vkmcore.files import write_text

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


def _watched_tighten() -> Callable[..., TighteningResult]:
    """The tightener with a function to call after each step: a C symbol of the extension, and no public name of it."""
    make = ctypes.PyDLL(_native.__file__).vkm_watched_tighten
    make.restype = ctypes.py_object
    function: Callable[..., TighteningResult] = make()
    return function


watched_tighten = _watched_tighten()

PATIENCE = 20  # steps over which a gain is measured


class EndOfRun(Exception):
    """A watched run is not worth going on; the text is its reason."""


class Tightening:
    """A closed curve on its way to least ropelength, with all that has been reached, also where a run was interrupted.

    Attributes:
        start: the first polygon, vertices (N, 3) in any unit.
        start_unit: its tube radius, in that unit.
        start_tube: its measures, over `start_unit`; None before the first run.
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
        self.start_tube: ResolvedTubeMetrics | None = None
        self.unit = ResolvedTubeGeometry.edge_length_mean(start.tolist()) or 1.0  # lengths about 1, until a run begins
        self.scaled = start / self.unit
        self.skip = 0
        self.fixed_skip = False
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

    def overlap(self) -> float:
        """How far tubes that are more than half a turn apart along the curve reach into each other, over the diameter:
        0 but where edges of uneven length put a contact among the skipped neighbours."""
        tube, vertices = self.tube(), self.scaled.tolist()
        diameter = 2.0 * tube.thickness_rad
        nearest = ResolvedTubeGeometry.dcsd_candidates(vertices, 1)
        if not nearest or not nearest[0].distance < diameter:
            return 0.0
        tolerance = (diameter - nearest[0].distance) / (1.0 + nearest[0].distance)
        least = diameter
        for pair in ResolvedTubeGeometry.dcsd_candidates(vertices, 1, tolerance):
            along = abs(pair.arclength_i - pair.arclength_j)
            if min(along, tube.length - along) > math.pi * tube.thickness_rad:
                least = min(least, pair.distance)
        return 1.0 - least / diameter

    def begin(self, contact_tol: float, skip: int | None = None) -> None:
        """Take the polygon as the start of a run: its tube radius is the unit from here on.

        Args:
            contact_tol: how far from the thickness an edge pair or a corner may be and still count as a contact.
            skip: edges to either side that are no contacts; `half_turn` of the polygon if None, or that of an earlier
                one where that was more.

        Raises:
            ValueError: fewer than three vertices, a polygon without thickness, or a negative tolerance.
        """
        self.fixed_skip = skip is not None
        self.skip = max(self.skip, half_turn(self.scaled)) if skip is None else skip
        self.contact_tol = contact_tol
        radius = self.tube().thickness_rad
        if not 0.0 < radius < math.inf:
            raise ValueError("nonpositive_initial_thickness: there is no tube to tighten around this polygon")
        self.unit, self.scaled = self.unit * radius, self.scaled / radius
        if self.start_tube is None:
            self.start_unit, self.start_tube = self.unit, self.tube()

    def run(
        self, options: TighteningOptions, watch: Callable[[], None] = lambda: None, least_gain: float = 0.0
    ) -> None:
        """Tighten by one call of the library's tightener, which is watched and not cut into pieces: each call holds the
        thickness that it starts from. It ends early where `PATIENCE` steps have gained less than `least_gain` of the
        ropelength, or where the polygon has become so short that more edges make half a turn of its tube: another run
        may begin there.

        `contact_tol` and `skip_neighbors` of the options are set to those that the run began with. `watch` is called
        after every step, and what it raises ends the run.
        """
        options.contact_tol, options.skip_neighbors = self.contact_tol, self.skip
        self.runs.append(0)
        self.reason = "interrupted"

        def see(step: TighteningStepRecord, points: list[list[float]]) -> None:
            self.scaled = np.array(points)
            self.steps.append(step)
            self.runs[-1] += 1
            watch()
            if not self.fixed_skip and half_turn_edges(len(points), step.ropelength_after) > self.skip:
                raise EndOfRun("more_neighbours")
            if self.runs[-1] >= PATIENCE:
                before = self.steps[-PATIENCE].ropelength_before
                if before - step.ropelength_after < least_gain * before:
                    raise EndOfRun("little_gain")

        try:
            result = watched_tighten(self.scaled.tolist(), options, see)
        except EndOfRun as end:
            self.reason = str(end)
        else:
            self.scaled, self.reason = np.array(result.points), result.reason

    def tighten(
        self,
        contact_tols: Sequence[float],
        options: TighteningOptions,
        skip: int | None = None,
        least_gain: float = 0.0,
        watch: Callable[[], None] = lambda: None,
    ) -> None:
        """Runs with each of the tolerances in turn, at most `options.max_steps` steps with each."""
        most = options.max_steps
        for contact_tol in contact_tols:
            left = most
            self.reason = "more_neighbours"
            while self.reason == "more_neighbours":
                self.begin(contact_tol, skip)
                options.max_steps = left
                self.run(options, watch, least_gain)
                left -= self.runs[-1]
                if left <= 0:
                    break
        options.max_steps = most


def start_polygon(source: ClosedCurve, vertices: int | None) -> Points:
    """Vertices (N, 3) to start from: `vertices` of them (120 if None) at equal arc lengths of a series, a polygon as it
    stands if `vertices` is None."""
    if source.block is not None:
        count = 120 if vertices is None else vertices
        return evenly_spaced(source.sampled(32 * count), count)
    points = source.sampled(0)
    return points if vertices is None else evenly_spaced(points, vertices)


def half_turn_edges(vertices: int, ropelength: float) -> int:
    """How many edges make half a turn of the tube, pi radii along the curve."""
    return min(max(math.ceil(math.pi * vertices / ropelength), 1), max(vertices // 2, 1))


def half_turn(points: Points) -> int:
    """How many edges to either side of one are too near to it along the curve for a contact.

    Where no radius of curvature is below the tube's, two points that hold the tube apart are at least half a turn from
    each other along the curve. Shortening at a held thickness adds edges to that turn and takes none away.
    """
    vertices = points.tolist()
    ropelength = ResolvedTubeGeometry.analyze(vertices, neighbours(vertices), 0.0).ropelength_rad
    return half_turn_edges(len(vertices), ropelength) if ropelength > 0.0 else 1


def record(reached: Tightening) -> dict[str, Any]:
    """All that a run has reached as plain values, in full precision."""
    first, last = reached.start_tube, reached.tube()
    assert first is not None
    return {
        "vertices": len(reached.scaled),
        "ropelength_before": first.ropelength_rad,
        "ropelength_after": last.ropelength_rad,
        "thickness_after": last.thickness_rad * reached.unit,
        "struts": len(last.struts),
        "kinks": len(last.kinks),
        "skipped_neighbours": reached.skip,
        "overlap": reached.overlap(),
        "runs": reached.runs,
        "reason": reached.reason,
        "steps": [{name: getattr(step, name) for name in STEP_FIELDS} for step in reached.steps],
        "points": reached.points.tolist(),
    }


def write_polygon(path: Path, name: str, reached: Tightening) -> None:
    """Vertices as text, in full precision; `read_curve` reads it."""
    ropelength = reached.tube().ropelength_rad
    label = name if name.isprintable() else ascii(name)
    lines = [f"# {label}, tightened in {len(reached.steps)} steps to a ropelength of {ropelength!r}"]
    lines += [f"{x!r} {y!r} {z!r}" for x, y, z in reached.points.tolist()]
    write_text(path, "\n".join(lines) + "\n")


def write_matrices(folder: Path, reached: Tightening) -> None:
    """The rigidity matrix of the last accepted polygon and its length gradient. Neither depends on the unit."""
    matrix = ContactStressMap.build_sparse_rigidity_matrix(reached.scaled.tolist(), reached.tube())
    gradient = ResolvedTubeGeometry.length_gradient_flat(reached.scaled.tolist())
    paths: Any = [os.fsencode(folder / name) for name in (MATRIX_FILE, GRADIENT_FILE)]  # need not be valid text
    ContactStressMap.write_sparse_matrix_market(matrix, paths[0])
    ContactStressMap.write_vector_market(gradient, paths[1])
