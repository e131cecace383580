"""VECT, the polylines of Geomview: reader and writer.

    VECT
    2 7 0        polylines, vertices, colours
    -4 -3        vertices of each polyline, negative for a closed one
    0 0          colours of each polyline
    x y z ...    the vertices of all polylines, then r g b a for each colour

White space and line ends count alike, and `#` begins a comment. Colours are passed over. A curve is a closed polyline;
an open one will do where its last vertex repeats its first.
"""

from __future__ import annotations

import math
import os
import re
from collections.abc import Callable, Iterator, Sequence
from typing import TYPE_CHECKING, TypeVar

import numpy as np

from vkmcore.errors import CurveError
from vkmcore.files import write_text

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    Points = NDArray[np.float64]

Number = TypeVar("Number", int, float)


def is_vect(text: str) -> bool:
    """Whether the first word of a text, comments aside, is that of the format."""
    return re.match(r"(\s|#[^\n]*\n)*VECT\b", text) is not None


def points_from_vect(text: str, name: str) -> list[Points]:
    """The closed polylines (N, 3) of a text; `name` stands in errors.

    Raises:
        CurveError: the text breaks the format, or a polyline is open; its line is named.
    """
    words = _Words(text, name)
    words.skip()  # VECT
    polylines = words.number("the number of polylines", int)
    vertices = words.number("the number of vertices", int)
    words.number("the number of colours", int)
    if polylines < 1:
        raise CurveError(f"{name}: line {words.line}: expected at least one polyline, found {polylines}")
    counts = [words.number("the number of vertices of a polyline", int) for _ in range(polylines)]
    if sum(map(abs, counts)) != vertices:
        total = sum(map(abs, counts))
        raise CurveError(f"{name}: line {words.line}: expected {vertices} vertices in all polylines, found {total}")
    for _ in range(polylines):
        words.number("the number of colours of a polyline", int)
    found: list[Points] = []
    for number, count in enumerate(counts, start=1):
        begin = words.line
        flat = [words.number("a coordinate", float) for _ in range(3 * abs(count))]
        points = np.array(flat).reshape(-1, 3)
        if count > 0 and not (points[0] == points[-1]).all():
            raise CurveError(
                f"{name}: polyline {number}, from line {begin} on, is open: expected closed ones, "
                "whose number of vertices is negative"
            )
        if count:
            found.append(points)
    return found


class _Words:
    """The words of a text, one by one, with the line that the last one stands in."""

    def __init__(self, text: str, name: str) -> None:
        self.name = name
        self.line = 1
        self._rest = self._walk(text)

    def _walk(self, text: str) -> Iterator[str]:
        for self.line, line in enumerate(text.splitlines(), start=1):
            yield from line.split("#", 1)[0].split()

    def number(self, expected: str, kind: Callable[[str], Number]) -> Number:
        """The next word as a number; CurveError says what was expected where."""
        word = next(self._rest, None)
        try:
            if word is None or "_" in word:
                raise ValueError
            value = kind(word)
            if not math.isfinite(value):
                raise ValueError
        except ValueError:
            found = "the end" if word is None else repr(word)
            raise CurveError(f"{self.name}: line {self.line}: expected {expected}, found {found}") from None
        return value

    def skip(self) -> None:
        next(self._rest)


def write_vect(path: str | os.PathLike[str], curves: Sequence[ArrayLike], comment: str = "") -> None:
    """Write closed polygons, each (N, 3), in full precision.

    Args:
        path: the file.
        curves: one array of vertices a component, the first vertex not repeated.
        comment: a line that stands behind the head of the file.

    Raises:
        ValueError: an array is not (N, 3) with at least one vertex.
        OSError: the file cannot be written.
    """
    arrays = [np.asarray(curve, dtype=np.float64) for curve in curves]
    if not arrays or any(points.ndim != 2 or points.shape[1] != 3 or not len(points) for points in arrays):
        raise ValueError(f"{path}: expected at least one array of vertices (N, 3)")
    lines = ["VECT", *(f"# {line}" for line in comment.splitlines())]
    lines.append(f"{len(arrays)} {sum(map(len, arrays))} 0")
    lines.append(" ".join(str(-len(points)) for points in arrays))
    lines.append(" ".join("0" for _ in arrays))
    lines += [f"{x!r} {y!r} {z!r}" for points in arrays for x, y, z in points.tolist()]
    write_text(path, "\n".join(lines) + "\n")
