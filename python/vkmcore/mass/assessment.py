"""The masses of a knot's catalogued and relaxed shapes beside each other, and how far each may be believed.

The catalogued shape's ropelength converges with the number of points: its length by second order, its radius, which is
that of the farthest sample, less evenly. No limit of the relaxation is known: its repulsion is
a sum over all points nearer than 0.2, which grows with their number, while the tension between neighbours falls with
the square of their spacing. So a relaxed shape is shown with all that tells whether it is still the knot.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from dataclasses import asdict, dataclass, field

import numpy as np
import numpy.typing as npt

from vkmcore import CheckKind, CheckResult, ParticleEvaluator, TailApproxConfig, parallel
from vkmcore.evidence.report import check, check_record
from vkmcore.mass.table import RelaxSettings, Weight, measure

Filaments = list[npt.NDArray[np.float64]]

DEFAULTS = RelaxSettings(resolution=200, iterations=100, timestep=1e-3)
REFERENCE_POINTS = 400  # of the catalogued shape whose knot type is the knot's
CONVERGED = 1e-2  # relative change of the ropelength from half the points
STEADY = 1e-3  # motion of the last tenth of the sweeps, root mean square, in radii of the body
STEADY_PART = 0.02  # of the whole way; a way gone evenly has 0.1 of it in its last tenth
STILL = 1e-9  # radii; less is rounding
BURST_SPREAD = 0.5  # deviation of the edge lengths over their mean
BURST_GROWTH = 1.25  # ropelength over the catalogued shape's
MOST_CROSSINGS = 40  # of a projection; the type of a wilder one is not asked for


@dataclass(frozen=True)
class Shape:
    """Measures of one shape at the resolution asked for, and its ropelength with half the points."""

    weight: Weight
    half_ropelength: float
    half_core_mass_MeV: float
    half_mass_with_tail_MeV: float | None
    relative_change: float  # of the ropelength, from half the resolution

    @property
    def converged(self) -> bool:
        return self.relative_change <= CONVERGED


@dataclass(frozen=True)
class Assessment:
    """What is known of a knot's mass. Lengths are in units of the body's radius."""

    id: str
    settings: RelaxSettings
    catalogued: Shape
    relaxed: Shape
    moved: float  # root mean square way of a point over all sweeps
    moved_last_tenth: float
    motion: str  # "steady", "drifting", "burst" or "collapsed"
    edge_spread: float  # standard deviation of the relaxed edges over their mean
    knot_type: str  # "kept", "lost" or "undecided"
    knot_type_reason: str
    verdict: str
    filaments: Filaments = field(repr=False)  # the catalogued ones, points in metres
    relaxed_filaments: Filaments = field(repr=False)

    def checks(self) -> list[CheckResult]:
        """The assessment as checks, each with the kind of claim that it supports; none is about nature."""
        numeric, synthetic = CheckKind.NumericalConvergence, CheckKind.SyntheticDiagnostic
        return [
            check("catalogued ropelength at half the points", self.catalogued.relative_change, CONVERGED, numeric),
            check("relaxed ropelength at half the points", self.relaxed.relative_change, CONVERGED, numeric),
            check("motion of the last tenth of the sweeps", self.moved_last_tenth, STEADY, numeric, self.motion),
            check("spread of the relaxed edges", self.edge_spread, BURST_SPREAD, synthetic),
            check("knot type kept", float(self.knot_type != "kept"), 0.0, synthetic, self.knot_type_reason),
        ]

    def record(self) -> dict[str, object]:
        """Everything but the points, by name. The relaxed shape's measures stand on top, as `Weight` names them."""
        shape = {name: asdict(value) for name, value in (("catalogued", self.catalogued), ("relaxed", self.relaxed))}
        names = ("moved", "moved_last_tenth", "motion", "edge_spread", "knot_type", "knot_type_reason", "verdict")
        checks = [check_record(result) for result in self.checks()]
        return {**self.relaxed.weight.record(), **shape, **{n: getattr(self, n) for n in names}, "checks": checks}


def assess(knot_id: str, settings: RelaxSettings = DEFAULTS, tail: TailApproxConfig | None = None) -> Assessment:
    """Weigh the catalogued and the relaxed shape of an ideal-catalogue id, as "3:1:1", and judge both.

    Args:
        knot_id: the id.
        settings: points a filament, sweeps, step, stretch.
        tail: the surrogate for the flow outside the core; no tail if None.

    Raises:
        RuntimeError: the id is malformed or unknown.
    """
    sweeps = max(settings.iterations, 0)

    def shape(iterations: int) -> tuple[Shape, Filaments]:
        weight, points = _weigh(knot_id, settings, settings.resolution, iterations, tail)
        half, _ = _weigh(knot_id, settings, max(settings.resolution // 2, 3), iterations, tail)
        change = abs(half.ropelength / weight.ropelength - 1.0) if weight.ropelength else math.nan
        return Shape(weight, half.ropelength, half.core_mass_MeV, half.mass_with_tail_MeV, change), points

    catalogued, start = shape(0)
    relaxed, end = shape(sweeps)
    # A run of nine tenths of the sweeps is the same way, left earlier: a call sets the velocities to 0.
    earlier = start
    if sweeps > 1:
        earlier = _weigh(knot_id, settings, settings.resolution, sweeps - max(sweeps // 10, 1), None)[1]
    last, whole = motion_between(earlier, end), motion_between(start, end)
    spread = edge_spread(end)
    growth = relaxed.weight.ropelength / catalogued.weight.ropelength
    motion = judge_motion(last, whole, spread, growth)
    reference = ParticleEvaluator(knot_id, REFERENCE_POINTS)
    reference.relax(0)
    kind, reason = compare_types(end, _points(reference))
    verdict = judge(catalogued, relaxed, motion, kind)
    return Assessment(
        knot_id, settings, catalogued, relaxed, whole, last, motion, spread, kind, reason, verdict, start, end
    )


def _weigh(
    knot_id: str, settings: RelaxSettings, resolution: int, iterations: int, tail: TailApproxConfig | None
) -> tuple[Weight, Filaments]:
    evaluator = ParticleEvaluator(knot_id, resolution)
    evaluator.relax(iterations, settings.timestep)
    tail_energy = None
    if tail is not None:
        evaluator.set_tail_approx_config(tail)
        tail_energy = parallel.tail_energy(evaluator.get_filaments(), tail)
    weight, _ = measure(knot_id, evaluator, settings, tail_energy)
    return weight, _points(evaluator)


def _points(evaluator: ParticleEvaluator) -> Filaments:
    return [np.array(filament, dtype=np.float64).reshape(-1, 3) for filament in evaluator.get_filaments()]


def motion_between(first: Sequence[npt.NDArray[np.float64]], second: Sequence[npt.NDArray[np.float64]]) -> float:
    """Root mean square distance of corresponding points about their means, in radii of the second body."""
    a, b = (np.concatenate(list(filaments)) for filaments in (first, second))
    a, b = a - a.mean(axis=0), b - b.mean(axis=0)
    radius = float(np.linalg.norm(b, axis=1).max())
    return math.sqrt(float(((a - b) ** 2).sum(axis=1).mean())) / radius if radius else math.nan


def edge_spread(filaments: Sequence[npt.NDArray[np.float64]]) -> float:
    """Standard deviation of the edge lengths of each closed polygon over their mean; the largest of all polygons."""
    spreads = []
    for points in filaments:
        edges = np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1)
        spreads.append(float(edges.std() / edges.mean()) if edges.mean() > 0.0 else math.nan)
    return max(spreads)


def judge_motion(last: float, whole: float, spread: float, growth: float) -> str:
    """ "collapsed" (no finite extent), "burst" (no longer a smooth curve), "drifting" or "steady"; see the limits."""
    if not all(map(math.isfinite, (last, whole, spread, growth))) or not growth > 0.0:
        return "collapsed"
    if spread > BURST_SPREAD or growth > BURST_GROWTH:
        return "burst"
    if last <= STILL or (last <= STEADY and last <= STEADY_PART * whole):
        return "steady"
    return "drifting"


def compare_types(
    filaments: Sequence[npt.NDArray[np.float64]], reference: Sequence[npt.NDArray[np.float64]]
) -> tuple[str, str]:
    """Whether closed polygons are of the reference's knot type, by polynomials: "kept", "lost" or "undecided", why."""
    from vkmcore.topology.certificate import CertificateError, certify
    from vkmcore.topology.projection import DegenerateProjection, closed_polygons, crossings, view_directions

    counts = []
    try:
        polygons = closed_polygons(list(filaments))
        for direction in view_directions(4):
            try:
                counts.append(len(crossings(polygons, direction).over))
            except DegenerateProjection:
                continue
        if not counts or max(counts) > MOST_CROSSINGS:
            return "undecided", f"too many crossings to compare ({max(counts, default=0)} in a projection)"
        found = certify(list(filaments), list(reference), complements=False)
    except CertificateError as error:
        return "lost", str(error)
    except ValueError as error:
        return "undecided", str(error)
    return ("kept" if found.proved else "undecided"), str(found)


def judge(catalogued: Shape, relaxed: Shape, motion: str, knot_type: str) -> str:
    """One line that says which of the two masses may be used, and why the other may not."""
    first = "catalogued mass converged" if catalogued.converged else "catalogued mass NOT converged: more points"
    faults = []
    if motion != "steady":
        faults.append({"drifting": "still moving"}.get(motion, motion))
    if knot_type != "kept":
        faults.append(f"knot type {knot_type}")
    if not relaxed.converged:
        faults.append(f"changes by {relaxed.relative_change:.2g} from half the points")
    return f"{first}; relaxed: {', '.join(faults) or 'steady, converged, same knot'}"
