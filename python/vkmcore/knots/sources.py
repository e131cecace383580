"""What a knot or link can be made from: names, files, points, planar diagrams, braids."""

from __future__ import annotations

import os
import re
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.reader import read_curves
from vkmcore.errors import CurveError
from vkmcore.ideal.stored_form import form_of_series
from vkmcore.knots.strand import Strand

if TYPE_CHECKING:
    from vkmcore.curves.closed_curve import ClosedCurve

UNKNOTS = ("0_1", "unknot")


def from_source(source: Any) -> tuple[tuple[Strand, ...], str, str]:
    """The strands of a name, a file, or points; a name for them; and where they come from.

    A name of the tables that the catalogue holds no shape of leads to the table's arc presentation, a polygon.

    Raises:
        CurveError: there is no such curve or file, or it cannot be read.
    """
    if not isinstance(source, str | os.PathLike):
        return tuple(map(_strand, read_curves(source))), "", "points"
    try:
        curves = read_curves(source)
    except CurveError:
        if os.path.exists(source) or not isinstance(source, str):
            raise
        return _from_tables(source)
    return tuple(map(_strand, curves)), *_labels(curves[0])


def _labels(curve: ClosedCurve) -> tuple[str, str]:
    if curve.kind in ("catalogue", "ideal") and not os.path.exists(curve.name):
        return curve.name, f"{'ideal' if curve.kind == 'ideal' else 'knot'} table, {curve.name}"
    return curve.title, f"file {curve.name}"


def _strand(curve: ClosedCurve) -> Strand:
    if curve.block is None:
        assert curve.vertices is not None
        if len(curve.vertices) < 3:
            raise CurveError(f"{curve.name}: a closed curve has at least three vertices, found {len(curve.vertices)}")
        return Strand(vertices=np.array(curve.vertices))
    return Strand(series=form_of_series(curve.block).series[0]).moved(np.array(curve.offset))


def _from_tables(name: str) -> tuple[tuple[Strand, ...], str, str]:
    """The shape of a table's name: in the catalogue under another name, else the table's arc presentation."""
    from vkmcore.ideal.starts import grid_polygon
    from vkmcore.reference.tables import UnknownName, find

    if name.lower() in UNKNOTS:
        (strand,), _, source = from_source("0:1:1")
        return (strand,), "0_1", source
    try:
        entry = find(name)
    except UnknownName as error:
        raise CurveError(f"{name}: no file, no key of the catalogue; {error}") from None
    for alias in sorted((entry.name, *entry.aliases), key=lambda alias: ":" not in alias):
        if alias == name or os.path.exists(alias):
            continue
        try:
            curves = read_curves(alias)
        except CurveError:
            continue
        return tuple(map(_strand, curves)), entry.name, _labels(curves[0])[1]
    polygons = grid_polygon(entry.grid).components
    return tuple(Strand(vertices=np.array(points)) for points in polygons), entry.name, "arc presentation of the table"


def from_pd_code(code: Sequence[Sequence[int]] | str) -> tuple[Strand, ...]:
    """A polygon that projects to the diagram. DiagramError as `diagram_of_code` raises it."""
    from vkmcore.ideal.starts import diagram_polygon

    if isinstance(code, str):
        rows = re.findall(r"[\[(]([^\[\]()]+)[\])]", code)
        code = [[int(number) for number in re.findall(r"-?\d+", row)] for row in rows]
    return tuple(Strand(vertices=np.array(points)) for points in diagram_polygon(code).components)


def from_braid(word: Sequence[int], strands: int | None) -> tuple[Strand, ...]:
    """The closure of a braid word; k and -k are the positive and negative crossing of strands k and k + 1."""
    from vkmcore.ideal.starts import braid_polygon

    return tuple(Strand(vertices=np.array(points)) for points in braid_polygon(word, strands).components)
