"""From a knot's or link's name, code or points to its tight shape, certified."""

from __future__ import annotations

import math
from collections.abc import Sequence
from dataclasses import replace
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.ideal.families import EFFORT, family_of
from vkmcore.ideal.inputs import Problem, problem_of
from vkmcore.ideal.polygons import Batch, Progress, search
from vkmcore.ideal.shape import IdealShape
from vkmcore.ideal.starts import Start, searched_starts
from vkmcore.topology.certificate import Certificate, CertificateError, same_type

if TYPE_CHECKING:
    import os

    from numpy.typing import ArrayLike

    from vkmcore.knots import Knot, Link
    from vkmcore.topology.diagram import PlanarDiagram

DISCRETISATION = 0.027  # excess of a polygon's ropelength over its smooth shape's, over the edge length squared
# Of a user's own polygon beside the many starts of a type from the tables: it is settled, and no more.
OWN_EFFORT: dict[str, Any] = {"start_count": 2, "first_chains": 1, "first_hops": 4, "second_chains": 0}


def idealize(
    curve: str | os.PathLike[str] | Knot | Link | PlanarDiagram | ArrayLike | Sequence[ArrayLike] | Problem,
    *,
    expected: str | None = None,
    edge: float = 0.15,
    seeds: int | Sequence[int] = 1,
    enough: float | str | None = None,
    threads: int | None = None,
    progress: Progress | None = None,
    complements: bool | None = None,
    **effort: Any,
) -> IdealShape:
    """The tight shape of a knot or link: of the least ropelength that a search finds.

    Args:
        curve: a name or alias of the tables ("8_18", "trefoil", "L6a4", "K12a100"), a file in any format that
            `read_curves` knows, a Knot or Link, points (N, 3) of a closed polygon or a list of such, a planar diagram
            or its code (rows of four whole numbers), an arc presentation (the two rows of each column), or a braid
            word (whole numbers). Codes may be texts too, as "[[1,5,2,4],[3,1,4,6],[5,3,6,2]]". What the tables know
            is searched from the table's arc presentation as well (seeds other than 1: from those that random walks
            lead to), and torus knots T(2, q) and twist knots from starts of their own. A `Problem`, what `problem_of`
            makes of any of these, is taken as it is.
        expected: the name of the type that the curve must have, chirality included.
        edge: edge length of the finest level, in tube radii. The excess over the smooth shape goes with its square:
            about 0.05 % at 0.15, 0.01 % at 0.07.
        seeds: how many searches, with seeds 1, 2, ...; or the seeds themselves. The best of them is returned.
        enough: a ropelength (length over radius) at which no more is searched; "published": the best published value
            and the discretisation of this edge.
        threads: all processors by default; their number changes no bit of the result.
        progress: called after each step with the SearchStep and the best ropelength of its search so far.
        complements: whether SnapPy compares the complements for the certificate; None: where it is installed.
        effort: of the search from the arc presentation; see `vkmcore.ideal.polygons.tighten_polygons`.

    Returns:
        An IdealShape of the same type, which its `certificate` tells. Ctrl-C ends the search with the best shape so
        far, `interrupted` set.

    Raises:
        ValueError: none of these forms; a name that is not in the tables; a diagram that is not planar; curves that
            meet, of fewer than six vertices or not finite; not of the type expected.
        MemoryError: a size that no memory holds.
        ImportError: an extra that is needed and missing; the text names it.
        CertificateError: the shape found is of another type than the curve; it is not returned.
        KeyboardInterrupt: before there is any shape.
    """
    problem = problem_of(curve)
    if expected is not None:
        _require_type(problem, expected)
    limit = _limit(enough, problem, edge)
    shape = search(
        [unknot_batch(edge)] if is_unknot(problem) else batches_of(problem, effort),
        edge=edge,
        seeds=seeds,
        threads=threads,
        progress=progress,
        check=lambda points: certified(points, problem, complements),
        enough=limit,
    )
    return replace(shape, name=problem.title, published=published(problem))


def published(problem: Problem) -> float | None:
    """The best published ropelength of the type, length over radius; None where it is not known."""
    return None if problem.entry is None else problem.entry.ropelength


def certified(points: Sequence[Any], problem: Problem, complements: bool | None = None) -> Certificate:
    """That a shape is of the problem's type. CertificateError where it is not."""
    return same_type(points, problem.diagram, complements=complements, expected=problem.title)


def batches_of(problem: Problem, effort: dict[str, Any]) -> list[Batch]:
    """The starts that a problem is searched from, and how."""
    entry, mirrored = problem.entry, problem.mirrored
    family = None if entry is None else family_of(entry)
    batches = []
    beside = entry is not None and len(problem.starts) <= 1  # starts from the tables beside the problem's own
    if problem.starts:
        polygons = [start.components for start in problem.starts]
        batches.append(Batch("own", lambda seed: polygons, {**effort, **OWN_EFFORT} if beside else effort))
    if entry is not None and beside and not (family is not None and family.alone):
        known = entry  # not None in the function below
        batches.append(Batch("table", lambda seed: _components(searched_starts(known, seed), mirrored), effort))
    if family is not None:
        chosen = family
        own = {**EFFORT, "start_count": family.count}
        batches.append(Batch(family.kind, lambda seed: _components(chosen.starts(seed), mirrored), own))
    return batches


def is_unknot(problem: Problem) -> bool:
    return len(problem.diagram.components) == 1 and not problem.diagram.code


def unknot_batch(edge: float) -> Batch:
    """The unknot's tight shape, a circle, stands at the limit of curvature everywhere, which the search from anything
    else reaches slowly: it begins there."""
    count = max(6, round(math.tau / edge)) if edge > 0.0 else 6
    angle = math.tau / count * np.arange(count)
    circle = np.stack([np.cos(angle), np.sin(angle), np.zeros(count)], axis=1)
    effort = {"start_count": 1, "first_chains": 0, "second_chains": 0, "small_noise": 0.0, "coarse_edge": edge}
    return Batch("circle", lambda seed: [[circle]], effort)


def _components(starts: Sequence[Start], mirrored: bool) -> list[tuple[Any, ...]]:
    return [(start.mirrored() if mirrored else start).components for start in starts]


def _require_type(problem: Problem, expected: str) -> None:
    try:
        same_type(problem.diagram, expected)
    except CertificateError as error:
        raise ValueError(f"{problem.title}: {error}") from None


def _limit(enough: float | str | None, problem: Problem, edge: float) -> float:
    if enough is None:
        return 0.0
    if isinstance(enough, str):
        if enough != "published":
            raise ValueError(f'enough is a ropelength or "published", not {enough!r}')
        known = published(problem)
        return 0.0 if known is None else known * (1.0 + DISCRETISATION * edge * edge)
    return enough
