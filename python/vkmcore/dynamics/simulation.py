"""Evolution of several vortex filaments: propose a step, take it, look for contacts on the way."""

from __future__ import annotations

import math
import os
from collections.abc import Iterator, Mapping, Sequence
from dataclasses import dataclass, field
from pathlib import Path
from typing import TYPE_CHECKING, Any

import _native
import numpy as np

from vkmcore.dynamics.core_model import EVEN_DEFICIT, core_options, rk4_step
from vkmcore.dynamics.recorded import Recorded
from vkmcore.dynamics.trajectory import Frame, Trajectory, TrajectoryWriter, described, load_trajectory
from vkmcore.dynamics.velocity import Summation
from vkmcore.progress import progress_bar
from vkmcore.results import TopologyGuard

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

Filaments = list[dict[str, Any]]

OPTIONS: dict[str, bool | float] = {
    "lia_only": False,
    "a_sim": 0.0,
    "core_delta": 0.0,
    "lia_constant": 0.25,
    "core_radius": 0.01,
}
LEAST_STEP = 1e-6  # s; `estimate_cfl_dt` proposes no shorter one
OLDER = {"core": "raw", "far_field": "direct"}  # of trajectories from before there was a choice
RETRIES = 8  # shorter steps that are tried towards a contact


@dataclass(frozen=True, repr=False)
class Simulation(Recorded):
    """The outcome of a run: it shows itself, and `animate`, `plot`, `save` and `to_xarray` are its ways out."""

    filaments: Filaments  # as given, at their last positions
    frames: list[Frame]  # the start, every frame_interval, and the end
    time: float  # s, of the last positions
    steps: int
    contact: bool  # ended before t_end, on the safe side of a contact
    message: str  # of the guard; empty without a contact
    settings: dict[str, Any] = field(default_factory=dict)  # options, dt, cfl, ...
    far_field: str = "direct"  # how the velocities were summed: "direct", "tree", or "direct and tree"
    sampled_error: float = 0.0  # largest of the tree at a sample of the points, relative to the largest speed


def simulate(
    filaments: Sequence[Mapping[str, Any]],
    t_end: float,
    options: Mapping[str, Any] | None = None,
    *,
    core: str = "constant",
    dt: float | None = None,
    cfl: float = 0.5,
    frame_interval: float | None = None,
    contact_threshold: float | None = None,
    resample_ratio: float | None = None,
    far_field: str = "direct",
    tolerance: float = 1e-6,
    threads: int | None = None,
    trajectory: str | os.PathLike[str] | None = None,
    resume: bool = False,
    progress: bool = False,
) -> Simulation:
    """Evolve closed vortex filaments from time 0 to `t_end`, or up to a contact.

    Each step is a Runge-Kutta step of fourth order; `guard_topology_step` then looks for a contact on its way. Before
    the first contact the run ends on the safe side of it, with the guard's message in the result. All roles of the
    filaments are kept.

    The velocity is that of `compute_filament_velocity` with what its sum over edges lacks at any resolution, 0.1401 in
    the logarithm for even edges (`vkmcore.dynamics.core_model`), so that runs converge to thin filaments of the core
    that `core` names; docs/validation.md holds them against theory.

    Args:
        filaments: dicts as of `compute_filament_velocity`: points (N, 3) in m, circulation in m^2/s, source, ghost,
            id, carrier. Other keys are carried along. Nothing is changed in place.
        t_end: s.
        options: as of `compute_filament_velocity`: lia_only, a_sim, core_delta, lia_constant, core_radius.
        core: "solid" (in solid rotation, constant -1/4 of the logarithm), "hollow" (-1/2), "constant" (lia_constant of
            the options), or "raw": lia_constant, and the library's `rk4_step` as it is, nothing added.
        dt: s, the longest step. By default each step is proposed: `estimate_cfl_dt`, but no longer than
            cfl h^2 / beta with the shortest edge h and beta = Gamma / (4 pi) |log(2 h / a_eff) + constant|, since
            the scheme keeps the shortest waves that a polygon carries, of frequency 4 beta / h^2, up to
            0.7 h^2 / beta only.
        cfl: part of the shortest edge that a vertex may pass in a step, and of h^2 / beta.
        frame_interval: s between frames, t_end / 100 by default. Steps are evened out so that one ends at each frame.
        contact_threshold: m, the clearance that is a contact: two effective core radii by default, and 0 looks for
            none. Passive filaments touch too, ghosts do not.
        resample_ratio: a moving filament whose longest edge is more than this many times its shortest is resampled by
            `resample_closed_curve`, with as many points, before a step. Never by default.
        far_field: "direct", or "tree": velocities as of `vkmcore.velocity`, for many thousand vertices.
        tolerance: of the tree: the error of a velocity, relative to the largest one.
        threads: for the velocities; all usable cores by default. The same bits for any number.
        trajectory: a `.npz` file to which each frame is appended as it is reached; see `load_trajectory`. It must not
            exist yet, unless the run is resumed.
        resume: go on from the last frame in `trajectory`, if there is such a file. The filaments and settings must be
            those of its run; only t_end may differ. The outcome has the same bits as that of a run in one go.
        progress: draw a progress bar on standard error.

    Returns:
        A `Simulation` with the final filaments, all frames, the time, and whether a contact ended the run.

    Raises:
        ValueError: no filament moves, points are not finite or not (N, 3), a setting is out of range, proposed steps
            would be below 1e-6 s, or `trajectory` is of another run.
        RuntimeError: positions run away to infinity.
        FileExistsError: `trajectory` exists and `resume` is false.
    """
    state = [_checked(number, filament) for number, filament in enumerate(filaments, start=1)]
    summation = Summation(far_field, tolerance, threads)
    run = _Run(
        state, t_end, dict(options or {}), core, dt, cfl, frame_interval, contact_threshold, resample_ratio, summation
    )
    frames = [Frame(0.0, 0, _points(state))]
    writer = None
    if trajectory is None:
        if resume:
            raise ValueError("simulate: resume needs a trajectory")
    else:
        path = Path(trajectory)
        if resume and path.exists():
            frames = run.frames_of(load_trajectory(path), path)
            writer = TrajectoryWriter.reopen(path)
        else:
            writer = TrajectoryWriter.create(path, run.described(), run.settings, frames[0])
    try:
        with progress_bar(t_end, progress, counted=False) as tell:
            tell(frames[-1].time, _time_text(frames[-1]))
            for frame in run.frames_from(frames[-1]):
                frames.append(frame)
                if writer is not None:
                    writer.append(frame)
                tell(frame.time, _time_text(frame))
    finally:
        if writer is not None:
            writer.close()
    last = frames[-1]
    moved = [{**filament, "points": points} for filament, points in zip(state, last.points)]
    used = " and ".join(sorted(summation.used)) or summation.far_field
    return Simulation(
        moved,
        frames,
        last.time,
        last.step,
        bool(run.message),
        run.message,
        run.settings,
        used,
        summation.sampled_error,
    )


class _Run:
    """The settings of a run, checked, and its steps. The next state follows from the last alone, so that a run which
    goes on from a frame is the run that never stopped."""

    def __init__(
        self,
        start: Filaments,
        t_end: float,
        options: dict[str, Any],
        core: str,
        dt: float | None,
        cfl: float,
        frame_interval: float | None,
        contact_threshold: float | None,
        resample_ratio: float | None,
        summation: Summation,
    ) -> None:
        if unknown := sorted(set(options) - set(OPTIONS)):
            raise ValueError(f"simulate: unknown option {unknown[0]!r}; known are {', '.join(OPTIONS)}")
        try:
            options = core_options(core, options)
        except ValueError as error:
            raise ValueError(f"simulate: {error}") from None
        if not 0.0 <= t_end < math.inf:
            raise ValueError("simulate: t_end must be finite and not negative")
        interval = t_end / 100.0 if frame_interval is None else frame_interval
        for name, value in (("dt", dt), ("cfl", cfl), ("frame_interval", interval if t_end > 0.0 else None)):
            if value is not None and not 0.0 < value < math.inf:
                raise ValueError(f"simulate: {name} must be finite and positive")
        if resample_ratio is not None and not resample_ratio > 1.0:
            raise ValueError("simulate: resample_ratio must be above 1")
        if not any(_moves(filament) for filament in start):
            raise ValueError("simulate: no filament moves")
        full: dict[str, Any] = {**OPTIONS, **options}
        full = {name: bool(value) if name == "lia_only" else float(value) for name, value in full.items()}
        self.core_radius = math.exp(full["core_delta"]) * max(1e-30, full["core_radius"])
        self.threshold = 2.0 * self.core_radius if contact_threshold is None else contact_threshold
        if not 0.0 <= self.threshold < math.inf:
            raise ValueError("simulate: contact_threshold must be finite and not negative")
        lacking = 0.0 if core == "raw" or full["lia_only"] else EVEN_DEFICIT
        self.constant = full["lia_constant"] + lacking
        self.estimated = {**options, "lia_constant": self.constant}  # for the estimate of a step
        self.start, self.t_end, self.options, self.core = start, t_end, options, core
        self.dt, self.cfl, self.interval, self.ratio = dt, cfl, interval, resample_ratio
        self.summation = summation
        self.message = ""
        self.settings = {
            "options": full,
            "core": core,
            "dt": dt,
            "cfl": cfl,
            "frame_interval": interval,
            "contact_threshold": self.threshold,
            "resample_ratio": resample_ratio,
            "far_field": summation.far_field,
            "tolerance": summation.tolerance if summation.far_field == "tree" else None,
        }

    def described(self) -> list[dict[str, Any]]:
        """The filaments without their points, for the record."""
        return described(self.start, [len(filament["points"]) for filament in self.start])

    def frames_of(self, past: Trajectory, path: Path) -> list[Frame]:
        """The frames of a trajectory, if it is one of this run."""
        for name, value in self.settings.items():
            own = past.settings.get(name, OLDER.get(name))
            if own != value:
                raise ValueError(f"{path}: of a run with {name} = {own}, not {value}")
        same = all(map(np.array_equal, past.frames[0].points, _points(self.start)))
        if past.filaments != self.described() or not same:
            raise ValueError(f"{path}: of a run with other filaments")
        self.message = past.frames[-1].message
        return past.frames

    def frames_from(self, last: Frame) -> Iterator[Frame]:
        """The frames that follow `last`."""
        if last.message:
            return
        time, step = last.time, last.step
        filaments = [{**filament, "points": points} for filament, points in zip(self.start, last.points)]
        while time < self.t_end:
            target = self._next_frame(time)
            before = time
            while time < target:
                filaments = self._resampled(filaments)
                count = max(1, math.ceil((target - time) / self._proposal(filaments) - 1e-9))
                h = (target - time) / count
                if not self.t_end + h > self.t_end:
                    raise ValueError(f"simulate: steps of {h:.3g} s do not move the clock at t = {time:.6g} s")
                filaments, h = self._step(filaments, h, time)
                if h > 0.0:
                    time, step = target if count == 1 and not self.message else time + h, step + 1
                if self.message:
                    break
            if time > before:
                yield Frame(time, step, _points(filaments), self.message)
            if self.message:
                return

    def _next_frame(self, time: float) -> float:
        """The first multiple of the interval behind `time`, or t_end; what differs by rounding is one time."""
        number = math.floor(time / self.interval)
        while number * self.interval <= time * (1.0 + 1e-12):
            number += 1
        target = number * self.interval
        return target if target < self.t_end * (1.0 - 1e-12) else self.t_end

    def _proposal(self, filaments: Filaments) -> float:
        if self.dt is not None:
            return self.dt
        proposed = self.summation.estimate_cfl_dt(filaments, self.estimated, self.cfl)
        if not proposed > LEAST_STEP:
            raise ValueError(
                "simulate: a step of 1e-6 s, the least that is proposed, is too long for these filaments: "
                "their points repeat, or their unit of length calls for a dt"
            )
        for filament in filaments:
            if _moves(filament):
                h = float(_edges(filament["points"]).min())
                local = abs(math.log(2.0 * h / self.core_radius) + self.constant)
                beta = abs(filament.get("circulation", 1.0)) / (4.0 * math.pi) * local
                if beta > 0.0:
                    proposed = min(proposed, self.cfl * h * h / beta)
        return proposed

    def _resampled(self, filaments: Filaments) -> Filaments:
        if self.ratio is None:
            return filaments
        resampled = []
        for filament in filaments:
            points = filament["points"]
            if _moves(filament):
                edges = _edges(points)
                if edges.max() > self.ratio * edges.min():
                    filament = {**filament, "points": _native.resample_closed_curve(points, len(points))}
            resampled.append(filament)
        return resampled

    def _step(self, filaments: Filaments, h: float, time: float) -> tuple[Filaments, float]:
        """The filaments after a step of `h`, or of what a contact leaves of it, and the time that it took."""
        after, verdict = self._guarded(filaments, h, time)
        if verdict is None:
            return after, h
        self.message = verdict["message"]
        # The guard looks at straight ways; the shorter step bends a little, so it is guarded in its turn.
        for _ in range(RETRIES):
            h *= verdict["safe_dt_fraction"]
            if not h > 0.0:
                break
            after, verdict = self._guarded(filaments, h, time)
            if verdict is None:
                return after, h
        return filaments, 0.0

    def _guarded(self, filaments: Filaments, h: float, time: float) -> tuple[Filaments, TopologyGuard | None]:
        """The filaments after a step of `h`, and the guard's verdict if it is a contact."""
        moved, fastest = rk4_step(filaments, h, self.options, self.core, self.summation)
        after = [{**old, "points": points} for old, points in zip(filaments, moved)]
        if not all(math.isfinite(filament["points"].sum()) for filament in after):
            raise RuntimeError(f"simulate: positions run away after t = {time:.6g} s; a shorter dt may help")
        if not self.threshold > 0.0:
            return after, None
        verdict = _native.guard_topology_step(
            _solid(filaments), _solid(after), self.threshold, fastest * h, self.core_radius
        )
        return after, verdict if verdict["contact"] else None


def _checked(number: int, filament: Mapping[str, Any]) -> dict[str, Any]:
    """A copy of the filament with points of its own."""
    if "points" not in filament:
        raise ValueError(f"simulate: filament {number} has no points")
    points = np.array(filament["points"], dtype=np.float64, order="C")
    if points.ndim != 2 or points.shape[1] != 3:
        raise ValueError(f"simulate: filament {number} has points of shape {points.shape}, not (N, 3)")
    if not np.isfinite(points).all():
        raise ValueError(f"simulate: filament {number} has points that are not finite")
    return {**filament, "points": points}


def _moves(filament: Mapping[str, Any]) -> bool:
    return not filament.get("ghost", False) and len(filament["points"]) > 0


def _points(filaments: Filaments) -> list[Points]:
    return [filament["points"] for filament in filaments]


def _solid(filaments: Filaments) -> list[Points]:
    return [filament["points"] for filament in filaments if not filament.get("ghost", False)]


def _edges(points: Points) -> Points:
    """Lengths (N,) of the edges of a closed polygon."""
    edge = np.empty_like(points)
    np.subtract(points[1:], points[:-1], out=edge[:-1])
    np.subtract(points[0], points[-1], out=edge[-1])
    lengths: Points = np.sqrt(np.einsum("ij,ij->i", edge, edge))
    return lengths


def _time_text(frame: Frame) -> str:
    return f"t = {frame.time:.4g} s"
