"""What the picture of a shape shows: the numbers for its colours, its contacts, and its tube."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.knots.strand import extent
from vkmcore.pictures.shapes import plot_shape

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    from vkmcore.knots.shape import Shape
    from vkmcore.tube.contacts import Contacts

    Points = NDArray[np.float64]

COLOURS = ("curvature", "velocity", "pressure", "component")
CONTACT_VERTICES = 120  # of the polygon whose contacts are found


def plot(
    shape: Shape,
    backend: str = "matplotlib",
    *,
    colour: str | ArrayLike | Sequence[ArrayLike] | None = None,
    struts: bool = False,
    kinks: bool = False,
    radius: float | None = None,
    samples: int = 360,
    title: str | None = None,
    unit: str = "",
) -> Any:
    """Draw tubes around the curves.

    Args:
        shape: a knot or a link.
        backend: "matplotlib", "plotly" or "pyvista".
        colour: "curvature"; "velocity", the speed as a vortex filament of circulation 1 and of the tube's radius as its
            core; "pressure" of contacts, of a knot; "component"; or a number a vertex, for a link a row a component.
            By default curvature for a knot and component for a link.
        struts: draw the contacts of a knot as lines, and the tube so that they show.
        kinks: mark where the knot is bent to the tube's radius.
        radius: of the tube; `shape.thickness` by default.
        samples: rings along a component.
        title: the shape's name by default.
        unit: of length, at the axes.

    Returns:
        A matplotlib `Figure`, a plotly `Figure`, or a pyvista `Plotter`.

    Raises:
        PlotError: the library is not installed; the text names the extra.
        ValueError: no such backend or colour, or the contacts of a link are asked for.
    """
    polygons = shape._polygons(samples)
    if colour is None:
        colour = "component" if len(polygons) > 1 else "curvature"
    values: list[Points] | None = None
    label = "values"
    per = f" / {unit}^-1" if unit else ""
    found: Contacts | None = None
    if struts or kinks or (isinstance(colour, str) and colour == "pressure"):
        found = _contacts(shape)
    if not isinstance(colour, str):
        rows = colour if len(polygons) > 1 else [colour]
        values = [np.asarray(row, dtype=np.float64) for row in rows]  # type: ignore[union-attr]
    elif colour == "curvature":
        values, label = [s.curvature(len(p)) for s, p in zip(shape._strands, polygons)], f"curvature{per}"
    elif colour == "velocity":
        values, label = _speeds(shape, polygons), f"speed / (circulation{per or ' / length'})".replace("^-1", "")
    elif colour == "pressure":
        assert found is not None
        values, label = [_around(found.pressure, len(polygons[0]))], f"contact pressure / tension{per}"
    elif colour != "component":
        raise ValueError(f"colour is one of {', '.join(COLOURS)}, or a number a vertex, not {colour!r}")
    return plot_shape(
        polygons,
        backend=backend,
        radius=shape.thickness if radius is None else radius,
        values=values,
        title=shape.name if title is None else title,
        unit=unit,
        label=label,
        struts=found.struts if found is not None and struts else None,
        kinks=found.kinks if found is not None and kinks else None,
    )


def _contacts(shape: Shape) -> Contacts:
    from vkmcore.tube.contacts import contacts

    if shape.components > 1:
        raise ValueError("contacts are found for knots, not for links; a link's components are knots: link[0]")
    (strand,) = shape._strands
    given = strand.vertices is not None and len(strand.vertices) <= CONTACT_VERTICES
    return contacts(strand.points(None if given else CONTACT_VERTICES))


def _speeds(shape: Shape, polygons: Sequence[Points]) -> list[Points]:
    """Speeds at the vertices for a circulation of 1, in 1 / length."""
    from vkmcore import compute_filament_velocity

    width = extent(shape._strands)
    filaments = [{"points": points / width, "circulation": 1.0} for points in polygons]
    found = compute_filament_velocity(filaments, {"core_radius": shape.thickness / width})["velocity"]
    return [np.linalg.norm(velocity, axis=1) / width for velocity in found]


def _around(values: Points, count: int) -> Points:
    """Values at equal steps around a closed curve at `count` equal steps."""
    at = np.arange(count) * (len(values) / count)
    found: Points = np.interp(at, np.arange(len(values) + 1), np.append(values, values[:1]))
    return found
