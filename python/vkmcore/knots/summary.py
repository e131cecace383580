"""How a shape shows itself: a line in a shell, a card with a drawing in a notebook."""

from __future__ import annotations

from html import escape
from typing import TYPE_CHECKING

from vkmcore.pictures.outline import outline

if TYPE_CHECKING:
    from vkmcore.knots.shape import Shape


def line(shape: Shape) -> str:
    """Class, name, what defines the curve, source."""
    strands = shape._strands
    kinds = {"series" if strand.series is not None else "polygon" for strand in strands}
    counts = "+".join(
        str(len(strand.numbers) - 1 if strand.series is not None else len(strand.numbers)) for strand in strands
    )
    unit = "harmonics" if kinds == {"series"} else "vertices" if kinds == {"polygon"} else "harmonics or vertices"
    parts = [repr(shape.name)] if shape.name else []
    if type(shape).__name__ == "Link":
        parts.append(f"{len(strands)} components")
    return f"{type(shape).__name__}({', '.join([*parts, f'{counts} {unit}', shape.source])})"


def html(shape: Shape) -> str:
    """Drawing, type, crossing number, writhe, ropelength, source."""
    try:
        found = shape.identify()
        kind, crossings = str(found), str(found.crossings)
    except ValueError as error:
        kind, crossings = str(error), "-"
    rows = {
        "type": kind,
        "crossings of the diagram": crossings,
        "writhe": f"{shape.writhe:.4f}",
        "ropelength": f"{shape.ropelength:.4f} (length over tube radius)",
        "length": f"{shape.length:.6g}",
        "source": shape.source,
    }
    cells = "".join(
        f'<tr><th style="text-align:left">{escape(title)}</th><td style="text-align:left">{escape(value)}</td></tr>'
        for title, value in rows.items()
    )
    title = escape(shape.name or type(shape).__name__)
    return (
        '<div style="display:flex;align-items:center;gap:1.5em">'
        f"{outline(shape._polygons())}<table><caption>{title}</caption>{cells}</table></div>"
    )
