"""Vertices as text: three numbers x y z a line, set apart by white space, commas or semicolons.

`#` and `%` begin comments. An empty line ends a component, and the next begins. The first row may be a heading: where
it names columns x, y and z (a unit behind a name is fine), these are taken from however many there are, and a column
`component`, `filament`, `curve` or `strand` tells the components apart.
"""

from __future__ import annotations

import math
import re
from dataclasses import dataclass
from typing import TYPE_CHECKING

import numpy as np

from vkmcore.errors import CurveError

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

GROUPS = ("component", "filament", "curve", "strand")


@dataclass(frozen=True)
class Columns:
    """Where the numbers of a vertex stand in a row."""

    count: int = 3
    xyz: tuple[int, int, int] = (0, 1, 2)
    group: int | None = None  # of the component's name
    mark: str = ""  # between the columns of a heading; white space, commas and semicolons alike where it is blank


def points_from_text(text: str, name: str) -> list[Points]:
    """The components (N, 3) of a text; `name` stands in errors.

    Raises:
        CurveError: no vertices, or a row that is none; the text names its line.
    """
    components: dict[tuple[int, str], list[list[float]]] = {}
    columns: Columns | None = None
    part = 0  # number of the empty lines so far
    for number, line in enumerate(text.splitlines(), start=1):
        row = re.split("[#%]", line, maxsplit=1)[0].strip()
        if not row:
            part += not line.strip()
            continue
        if columns is None:
            columns = _columns(row)
            if columns != Columns():
                continue
        words = _words(row, columns.mark)
        try:
            if len(words) != columns.count:
                raise ValueError
            vertex = [_number(words[place]) for place in columns.xyz]
        except ValueError:
            wanted = "three numbers x y z" if columns.count == 3 else f"{columns.count} columns as in the heading"
            raise CurveError(f"{name}: line {number}: expected {wanted}, found {_quoted(row)}") from None
        if not all(map(math.isfinite, vertex)):
            raise CurveError(f"{name}: line {number}: not a finite number in {_quoted(row)}")
        group = "" if columns.group is None else words[columns.group]
        components.setdefault((part if columns.group is None else 0, group), []).append(vertex)
    if not components:
        raise CurveError(f"{name}: no vertices: expected three numbers x y z a line, or Fourier rows of six")
    return [np.array(rows) for rows in components.values()]


def _words(row: str, mark: str) -> list[str]:
    words = row.split(mark) if mark.strip() else re.split(r"[\s,;]+", row.strip(" \t,;"))
    return [word.strip(" \t\"'") for word in words]


def _number(word: str) -> float:
    if "_" in word:  # which Python's own numbers may hold
        raise ValueError
    return float(word)


def _quoted(row: str) -> str:
    return repr(row if len(row) <= 40 else row[:37] + "...")


def _columns(row: str) -> Columns:
    """The columns that a heading names; the plain ones if this row has a number in it."""
    mark = next((mark for mark in ";," if mark in row), "")
    words = _words(row, mark)
    for word in words:
        try:
            _number(word)
        except ValueError:
            continue
        return Columns()
    names = [match[0].lower() if (match := re.match("[A-Za-z]+", word)) else "" for word in words]
    if not {"x", "y", "z"} <= set(names):
        # Without these names three columns are taken in their order.
        return Columns(len(names), mark=mark or " ") if len(names) == 3 else Columns()
    group = next((names.index(name) for name in GROUPS if name in names), None)
    return Columns(len(names), (names.index("x"), names.index("y"), names.index("z")), group, mark or " ")
