"""From start polygons to a tight shape: the package's face of the search in the library."""

from __future__ import annotations

import os
from collections.abc import Callable, Iterable, Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore import _engine
from vkmcore.ideal.shape import IdealShape, SearchStep

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

Progress = Callable[[SearchStep, float], object]
Check = Callable[[Sequence["Points"]], object]


def _shape(found: dict[str, Any], seed: int, earlier: Sequence[SearchStep]) -> IdealShape:
    history = tuple(SearchStep(seed, *step) for step in found["history"])
    fields = "length thickness min_radius strut_distance struts kinks kkt_residual edge settled interrupted".split()
    return IdealShape(
        points=tuple(found["points"]),
        seed=seed,
        history=(*earlier, *history),
        **{key: found[key] for key in fields},
    )


def _replaced(shape: IdealShape, **changes: Any) -> IdealShape:
    return IdealShape(**{**vars(shape), **changes})


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

    Starts are contracted at edges of 0.75 tube radii with a little noise, the best of them hop on, and the best shapes
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
        effort: start_count, first_chains, first_hops, second_chains, second_hops, refined, finished, adaptive.

    Returns: IdealShape. Ctrl-C ends the search with the best shape so far, `interrupted` set; KeyboardInterrupt if
    there is none yet.
    Raises: ValueError for curves that touch or cross themselves, fewer than six vertices, coordinates that are not
    finite; MemoryError for absurd sizes.
    """
    polygons = [[np.asarray(component, dtype=np.float64) for component in start] for start in starts]
    chosen = list(range(1, seeds + 1)) if isinstance(seeds, int) else list(seeds)
    if not chosen:
        raise ValueError("the search needs at least one seed")
    best: IdealShape | None = None
    history: tuple[SearchStep, ...] = ()
    for seed in chosen:

        def watch(*values: Any, seed: int = seed) -> None:
            if progress is not None:
                progress(SearchStep(seed, *values[:-1]), values[-1])

        try:
            found = _engine.tighten(
                polygons, edge=edge, seed=seed, threads=threads or os.cpu_count() or 1, watch=watch, **effort
            )
        except KeyboardInterrupt:
            if best is None:
                raise
            best = _replaced(best, interrupted=True)
            break
        shape = _shape(found, seed, history)
        history = shape.history
        # An interrupted search may have ended at a coarser level, where ropelengths are larger.
        if best is None or shape.ropelength < best.ropelength:
            best = shape
        if shape.interrupted:
            best = _replaced(best, interrupted=True)
            break
    assert best is not None
    certificate = str(check(best.points)) if check is not None else None
    return _replaced(best, history=history, certificate=certificate)
