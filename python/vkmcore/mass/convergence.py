"""A knot's ropelength and mass against the number of points: does the catalogued shape, does the relaxed one converge?

A way is a law of relaxing: no sweeps, or so many of a time step. It is followed through resolutions N1 < N2 < ...; with
the ropelengths f1, f2, ... of a way

- the change of a refinement is |f_k - f_(k-1)| / f_k, and for a doubling that over log2(N_k / N_(k-1));
- `order` is minus the slope, by least squares, of the log of the change for a doubling against log N_k; the changes are
  said to shrink from order 1/2 on. `limit` extrapolates the last two ropelengths with it (Richardson);
- `growth` is the slope of log f against log N over the last three.

"Fail": a ropelength is not finite, or the last change is above the tolerance and the changes do not shrink.
"Pass": the last two changes are within the tolerance, and the changes shrink. "Indeterminate": all else, fewer than
three resolutions included. A "Pass" tells of the arithmetic alone.
"""

from __future__ import annotations

import itertools
import math
from collections.abc import Iterable, Sequence
from dataclasses import asdict, dataclass

from vkmcore import CheckKind, CheckResult, EvidenceReportAPI, ParticleEvaluator
from vkmcore.evidence.report import check, check_record, report_meta
from vkmcore.mass.names import ideal_id
from vkmcore.progress import progress_bar
from vkmcore.rows import csv_text

TOLERANCE = 1e-3  # relative change of the ropelength
STEPS = (1e-3, 1e-2)
SWEEPS = (100,)
RESOLUTIONS = (100, 200, 400, 800, 1600)
LEAST_CHANGE = 1e-16  # a smaller one is rounding
LEAST_ORDER = 0.5


@dataclass(frozen=True)
class Way:
    """One law of relaxing, followed through all resolutions."""

    iterations: int  # sweeps; 0 is the catalogued shape
    timestep: float  # of a sweep at the fewest points
    step_exponent: float  # the step at N points is timestep (fewest points / N)^step_exponent
    ropelengths: tuple[float, ...]
    masses_MeV: tuple[float, ...]  # of the core
    change: float  # relative, from the last resolution but one to the last; NaN with fewer than two
    order: float | None  # None with fewer than three
    limit: float | None  # None where the changes do not shrink
    growth: float  # NaN with fewer than two resolutions
    verdict: str  # "Pass", "Fail" or "Indeterminate"
    reason: str

    @property
    def name(self) -> str:
        if not self.iterations:
            return "catalogued"
        law = f" (first/N)^{self.step_exponent:g}" if self.step_exponent else ""
        return f"{self.iterations} sweeps of {self.timestep:g}{law}"


@dataclass(frozen=True)
class MassStudy:
    """What `study_mass` found; the catalogued shape is the first way."""

    id: str
    resolutions: tuple[int, ...]  # points a filament
    tolerance: float
    ways: tuple[Way, ...]

    def checks(self) -> list[CheckResult]:
        """A check of kind NumericalConvergence a way: the change against the tolerance, the verdict in the message."""
        checks = []
        for way in self.ways:
            kind = CheckKind.NumericalConvergence
            name = f"{self.id}, {way.name}: ropelength"
            result = check(name, way.change, self.tolerance, kind, f"{way.verdict}: {way.reason}")
            result.passed = way.verdict == "Pass"
            checks.append(result)
        return checks

    def report_json(self) -> str:
        """The evidence report of this study, with where it was made."""
        return EvidenceReportAPI.build_report_json(report_meta(), self.checks())

    def record(self) -> dict[str, object]:
        """Everything by name."""
        ways = [{"name": way.name, **asdict(way)} for way in self.ways]
        checks = [check_record(result) for result in self.checks()]
        head = {"id": self.id, "resolutions": list(self.resolutions), "tolerance": self.tolerance}
        return {**head, "ways": ways, "checks": checks}

    def csv_text(self) -> str:
        """A heading and a line a way and resolution, numbers in full precision, lines ending with a line feed."""
        rows = []
        for way in self.ways:
            law = {name: getattr(way, name) for name in ("iterations", "timestep", "step_exponent")}
            for points, ropelength, mass in zip(self.resolutions, way.ropelengths, way.masses_MeV, strict=True):
                found = {"points": points, "ropelength": ropelength, "mass_MeV": mass, "verdict": way.verdict}
                rows.append({"id": self.id, **law, **found})
        return csv_text(rows)


def study_mass(
    knot: str,
    resolutions: Iterable[int] = RESOLUTIONS,
    timesteps: Iterable[float] = STEPS,
    *,
    iterations: Iterable[int] = SWEEPS,
    step_exponent: float = 0.0,
    tolerance: float = TOLERANCE,
    progress: bool = False,
) -> MassStudy:
    """Weigh a knot at several resolutions: its catalogued shape, and relaxed by each number of sweeps of each step.

    Args:
        knot: a name ("3_1", "trefoil") or an id of the ideal table ("3:1:1").
        resolutions: points a filament, each at least 3, taken in increasing order.
        timesteps: of a sweep at the fewest points, dimensionless, positive.
        iterations: sweeps, at least 1.
        step_exponent: the step at N points is the time step times (fewest points / N) to this power.
        tolerance: relative change of the ropelength that passes.
        progress: draw a progress bar on standard error.

    Returns:
        A `MassStudy`; the module's text states the rule of its verdicts.

    Raises:
        ValueError: no name of the tables, or a setting out of range.
        RuntimeError: the id is malformed or unknown.
    """
    counts = tuple(sorted({int(n) for n in resolutions}))
    steps, sweeps = tuple(map(float, timesteps)), tuple(map(int, iterations))
    if not counts or counts[0] < 3:
        raise ValueError("study_mass: resolutions must be whole numbers from 3 on, and one at least")
    if not all(0.0 < step < math.inf for step in steps):
        raise ValueError("study_mass: a time step must be finite and positive")
    if not all(count > 0 for count in sweeps):
        raise ValueError("study_mass: iterations must be at least 1")
    if not (0.0 < tolerance < math.inf and math.isfinite(step_exponent)):
        raise ValueError("study_mass: the tolerance must be finite and positive, the exponent of the step finite")
    knot_id = ideal_id(knot)
    laws = [(0, steps[0] if steps else 0.0), *((count, step) for step in steps for count in sweeps)]
    cost = float(sum(n * n * (1 + count) for count, _ in laws for n in counts))
    found = []
    with progress_bar(cost, progress, counted=False) as tell:
        done = 0.0
        for count, step in laws:
            ropelengths, masses = [], []
            for n in counts:
                tell(done, f"{knot_id}: {count} sweeps of {step:g}, {n} points")
                evaluator = ParticleEvaluator(knot_id, n)
                evaluator.relax(count, step * (counts[0] / n) ** step_exponent)
                ropelengths.append(float(evaluator.get_dimless_ropelength()))
                masses.append(float(evaluator.get_core_mass_mev_only()))
                done += n * n * (1 + count)
            fitted = judged(counts, ropelengths, tolerance)
            found.append(Way(count, step, step_exponent if count else 0.0, tuple(ropelengths), tuple(masses), *fitted))
    return MassStudy(knot_id, counts, tolerance, tuple(found))


def judged(
    counts: Sequence[int], values: Sequence[float], tolerance: float
) -> tuple[float, float | None, float | None, float, str, str]:
    """Change, order, limit, growth, verdict and reason of values at increasing counts, by the module's rule."""
    if not all(math.isfinite(value) and value > 0.0 for value in values):
        return math.nan, None, None, math.nan, "Fail", "the relaxation ran away or collapsed"
    if len(values) < 2:
        return math.nan, None, None, math.nan, "Indeterminate", "one resolution tells of no change"
    logs = [math.log2(n) for n in counts]
    changes = [abs(b - a) / b for a, b in itertools.pairwise(values)]
    growth = _slope(logs[-3:], [math.log2(value) for value in values[-3:]])
    if len(values) < 3:
        return changes[-1], None, None, growth, "Indeterminate", "two resolutions tell of no order"
    doubling = [max(change / (b - a), LEAST_CHANGE) for change, a, b in zip(changes, logs[:-1], logs[1:], strict=True)]
    order = -_slope(logs[1:], [math.log2(change) for change in doubling])
    limit = None
    shrinks = order >= LEAST_ORDER
    if shrinks:
        limit = values[-1] + (values[-1] - values[-2]) / ((counts[-1] / counts[-2]) ** order - 1.0)
    small = changes[-1] <= tolerance
    passed = small and changes[-2] <= tolerance and shrinks
    verdict = "Pass" if passed else "Indeterminate" if small or shrinks else "Fail"
    fit = f"order {order:.2f}" if shrinks else f"the changes do not shrink, growth {growth:.2f}"
    reason = f"the last two refinements change it by {changes[-2]:.1e} and {changes[-1]:.1e}; {fit}"
    return changes[-1], order, limit, growth, verdict, reason


def _slope(xs: Sequence[float], ys: Sequence[float]) -> float:
    """Of the line of least squares."""
    x, y = sum(xs) / len(xs), sum(ys) / len(ys)
    return sum((a - x) * (b - y) for a, b in zip(xs, ys, strict=True)) / sum((a - x) ** 2 for a in xs)
