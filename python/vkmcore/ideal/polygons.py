"""From start polygons to a tight shape: the package's face of the search in the library."""

from __future__ import annotations

import os
from collections.abc import Callable, Iterable, Sequence
from dataclasses import dataclass, field, replace
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore import _engine
from vkmcore.ideal.shape import IdealShape, SearchStep

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

Progress = Callable[[SearchStep, float], object]
Check = Callable[[Sequence["Points"]], object]


@dataclass(frozen=True)
class Batch:
    """Starts of one kind, and how they are searched."""

    kind: str  # "table", "lobed torus", ...
    starts: Callable[[int], Iterable[Sequence[Points]]]  # for a seed; a list of (N, 3) arrays a start
    effort: dict[str, Any] = field(default_factory=dict)


def _shape(found: dict[str, Any], seed: int, kind: str) -> IdealShape:
    fields = "length thickness min_radius strut_distance struts kinks kkt_residual edge settled interrupted".split()
    return IdealShape(
        points=tuple(found["points"]),
        seed=seed,
        history=tuple(replace(SearchStep(seed, *step), starts=kind) for step in found["history"]),
        **{key: found[key] for key in fields},
    )


def tighten_polygons(
    starts: Iterable[Sequence[Points]],
    *,
    edge: float = 0.15,
    seeds: int | Sequence[int] = 1,
    threads: int | None = None,
    progress: Progress | None = None,
    check: Check | None = None,
    **effort: Any,
) -> IdealShape:
    """Search the tightest shape that start polygons of one knot or link lead to.

    Starts are contracted at edges of 0.9 tube radii with a little noise, the best of them hop on, and the best shapes
    are refined level by level. No strand ever passes through another. The same starts, seeds and options give the same
    points, whatever the number of threads.

    Args:
        starts: one start each, a list of (N, 3) arrays, one a component; any unit of length, any spacing.
        edge: edge length of the finest level, in tube radii. The excess over the smooth shape goes with its square:
            about 0.05 % at 0.15, 0.01 % at 0.07.
        seeds: how many searches, with seeds 1, 2, ...; or the seeds themselves. The best of them is returned.
        threads: all processors by default.
        progress: called after each step with the SearchStep and the best ropelength of its seed so far.
        check: called with the components of the result; raises if they are not of the wanted knot type. What it
            returns stands, as text, in the result's `certificate`.
        effort: start_count, first_chains, first_hops, second_chains, second_hops, refined, finished, adaptive,
            small_hops, coarse_edge, small_noise, large_noise.

    Returns: IdealShape. Ctrl-C ends the search with the best shape so far, `interrupted` set; KeyboardInterrupt if
    there is none yet.
    Raises: ValueError for curves that touch or cross themselves, fewer than six vertices, coordinates that are not
    finite; MemoryError for absurd sizes.
    """
    polygons = [list(start) for start in starts]
    batch = Batch("", lambda seed: polygons, effort)
    return search([batch], edge=edge, seeds=seeds, threads=threads, progress=progress, check=check)


def search(
    batches: Sequence[Batch],
    *,
    edge: float = 0.15,
    seeds: int | Sequence[int] = 1,
    threads: int | None = None,
    progress: Progress | None = None,
    check: Check | None = None,
    enough: float = 0.0,
) -> IdealShape:
    """`tighten_polygons` for starts of several kinds: each seed searches from all of them in turn.

    Args:
        enough: a ropelength; nothing more is searched once it is reached.
    """
    chosen = range(1, seeds + 1) if isinstance(seeds, int) else list(seeds)
    if not chosen:
        raise ValueError("the search needs at least one seed")
    best: IdealShape | None = None
    history: list[SearchStep] = []
    interrupted = False
    try:
        for seed, batch in ((seed, batch) for seed in chosen for batch in batches):
            shape = _searched(batch, edge, seed, threads or os.cpu_count() or 1, progress)
            history += shape.history
            interrupted = shape.interrupted
            # An interrupted search may have ended at a coarser level, where ropelengths are larger.
            if best is None or shape.ropelength < best.ropelength:
                best = shape
            if interrupted or best.ropelength <= enough:
                break
    except KeyboardInterrupt:
        if best is None:
            raise
        interrupted = True
    assert best is not None
    certificate = None
    if check is not None:
        try:
            certificate = str(check(best.points))
        except KeyboardInterrupt:  # what was found is not lost for want of its certificate
            interrupted = True
            certificate = str(check(best.points))
    return replace(best, history=tuple(history), interrupted=interrupted, certificate=certificate)


def _searched(batch: Batch, edge: float, seed: int, threads: int, progress: Progress | None) -> IdealShape:
    def watch(*values: Any) -> None:
        if progress is not None:
            progress(replace(SearchStep(seed, *values[:-1]), starts=batch.kind), values[-1])

    starts = [[np.asarray(part, dtype=np.float64) for part in start] for start in batch.starts(seed)]
    found = _engine.tighten(starts, edge=edge, seed=seed, threads=threads, watch=watch, **batch.effort)
    return _shape(found, seed, batch.kind)
