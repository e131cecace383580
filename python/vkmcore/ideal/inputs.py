"""What a search begins with: the knot or link that a user means, in any of the forms that users have it in."""

from __future__ import annotations

import json
import os
import re
from collections.abc import Sequence
from dataclasses import dataclass, replace
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.reader import is_file, read_curves
from vkmcore.errors import CurveError
from vkmcore.ideal.starts import Start, braid_polygon, diagram_polygon, grid_polygon, grid_polygons
from vkmcore.reference.tables import TableEntry, UnknownName, find
from vkmcore.topology.diagram import PlanarDiagram, diagram_of_code
from vkmcore.topology.identification import MIRROR, UNKNOWN, identify
from vkmcore.topology.projection import diagram_of_curves

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

UNKNOTS = ("0_1", "unknot")
UNKNOT_GRID = ((1, 2), (1, 2))
SAMPLES = 512  # of a series


@dataclass(frozen=True)
class Problem:
    """A knot or link type, and the polygons of it that are at hand."""

    title: str  # "8_18", "planar diagram", a file's name
    diagram: PlanarDiagram  # of the type
    starts: tuple[Start, ...]  # the user's own, or all of his arc presentation; none where only a name was given
    entry: TableEntry | None = None  # of the tables, where the type is known
    mirrored: bool = False  # whether the type is the mirror image of the table's


def problem_of(curve: Any) -> Problem:
    """The problem that a user states: see `vkmcore.idealize`.

    Raises:
        ValueError: it is none of the forms, or a bad one.
        ImportError: a name of the larger tables, which are not installed.
    """
    if isinstance(curve, Problem):
        return curve
    if callable(getattr(curve, "points", None)):  # a Knot or Link
        points = curve.points()
        return _of_polygons([points] if isinstance(points, np.ndarray) else points, curve.name or "points")
    if isinstance(curve, PlanarDiagram):
        return _of_diagram(curve, "planar diagram")
    if isinstance(curve, str | os.PathLike):
        return _of_text(os.fspath(curve))
    return _of_numbers(curve)


def _of_text(text: str) -> Problem:
    if is_file(text) or text == "-":
        return _of_file(text)
    if (numbers := _numbers_in(text)) is not None:
        return _of_numbers(numbers)
    if text.lower() in UNKNOTS:
        return _own(list(grid_polygons(UNKNOT_GRID)), text)
    try:
        return _of_entry(find(text))
    except UnknownName as error:
        unknown = error
    try:
        return _of_file(text)  # a key of the catalogue, FILE#ID
    except ValueError:
        raise ValueError(f"{text}: no such file; {unknown}") from None


def _numbers_in(text: str) -> Any:
    """A code written as text: JSON's lists, KnotInfo's with braces, or X[i, j, k, l] rows; None for other texts."""
    if rows := re.findall(r"X\s*\[([\d\s,]+)\]", text):
        return [[int(n) for n in re.findall(r"\d+", row)] for row in rows]
    if text[:1] not in "[{" or "," not in text:
        return None
    try:
        return json.loads(text.replace("{", "[").replace("}", "]").replace(";", ","))
    except ValueError:
        return None


def _of_numbers(values: Any) -> Problem:
    """By the shape: whole numbers one by one are a braid, by twos an arc presentation, by fours a planar diagram, and
    numbers by threes points."""
    array = _as_array(values)
    if array is not None and array.size and np.issubdtype(array.dtype, np.integer):
        if array.ndim == 1:
            word = [int(letter) for letter in array]
            return _own([braid_polygon(word)], "braid")
        if array.ndim == 2 and array.shape[1] == 2:
            grid = [(int(low), int(high)) for low, high in array]
            grid_polygon(grid)  # raises where it is none
            return _own(list(grid_polygons(grid)), "arc presentation")
        if array.ndim == 2 and array.shape[1] == 4:
            return _of_diagram(diagram_of_code(array.tolist()), "planar diagram")
    try:
        curves = read_curves(values)
    except CurveError as error:
        raise ValueError(str(error)) from None
    return _of_polygons([part.sampled(SAMPLES) for part in curves], "points")


def _as_array(values: Any) -> NDArray[Any] | None:
    try:
        return np.asarray(values)
    except (ValueError, TypeError):  # components of different lengths
        return None


def _of_file(name: str) -> Problem:
    try:
        curves = read_curves(name)
    except CurveError as error:
        raise ValueError(str(error)) from None
    return _of_polygons([part.sampled(SAMPLES) for part in curves], curves[0].title)


def _of_entry(entry: TableEntry) -> Problem:
    return Problem(entry.name, entry.diagram, (), entry)


def _of_diagram(diagram: PlanarDiagram, title: str) -> Problem:
    if not diagram.code:
        raise ValueError(f"{title}: a diagram without crossings; the unknot is named 0_1")
    start = diagram_polygon(diagram.pd_code())
    return _known(Problem(title, diagram, (start,)))


def _own(starts: Sequence[Start], title: str) -> Problem:
    diagram = diagram_of_curves(list(starts[0].components))
    return _known(Problem(title, diagram, tuple(starts)))


def _of_polygons(polygons: Sequence[Points], title: str) -> Problem:
    for points in polygons:
        if not np.isfinite(points).all():
            raise ValueError(f"{title}: coordinates must be finite")
        if len(points) < 6:
            raise ValueError(f"{title}: a component needs at least six vertices, found {len(points)}")
    try:
        diagram = diagram_of_curves(polygons)
    except ValueError as error:
        raise ValueError(f"{title}: {error}") from None
    start = Start(tuple(polygons), float("nan"), title)
    return _known(Problem(title, diagram, (start,)))


def _known(problem: Problem) -> Problem:
    """With the entry of the tables, where the type is one of them and proved to be."""
    found = identify(problem.diagram)
    if not found.decided or found.name is None or found.chirality == UNKNOWN:
        return problem
    try:
        entry = find(found.name)
    except (UnknownName, ImportError):
        return problem
    return replace(problem, entry=entry, mirrored=found.chirality == MIRROR)
