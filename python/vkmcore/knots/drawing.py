"""What the picture of a shape shows: the numbers for its colours, its contacts, and its tube."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.resampling import arc_lengths
from vkmcore.knots.strand import extent
from vkmcore.pictures.shapes import plot_shape
from vkmcore.tube.contacts import Contacts, contacts

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    from vkmcore.knots.shape import Shape

    Points = NDArray[np.float64]

COLOURS = ("curvature", "velocity", "pressure", "component")
CONTACT_EDGE = 0.25  # of the polygons whose contacts are found, in tube radii
MOST_CONTACT_VERTICES = 400  # of all of them
LEAST_FORCE = 0.1  # of a strut that is drawn, over the greatest


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
            core; "pressure" of contacts; "component"; or a number a vertex, for a link a row a component. By default
            curvature for a knot and component for a link.
        struts: draw the contacts as lines, and the tubes so that they show.
        kinks: mark where a curve is bent to the tube's radius.
        radius: of the tube; `shape.thickness` by default.
        samples: rings along a component.
        title: the shape's name by default.
        unit: of length, at the axes.

    Returns:
        A matplotlib `Figure`, a plotly `Figure`, or a pyvista `Plotter`.

    Raises:
        PlotError: the library is not installed; the text names the extra.
        ValueError: no such backend or colour, or contacts of curves without thickness.
    """
    polygons = shape._polygons(samples)
    if colour is None:
        colour = "component" if len(polygons) > 1 else "curvature"
    values: list[Points] | None = None
    label = "values"
    per = f" / {unit}⁻¹" if unit else ""
    found: Contacts | None = None
    if struts or kinks or (isinstance(colour, str) and colour == "pressure"):
        touching = _contact_polygons(shape)
        found = contacts(touching)
    if not isinstance(colour, str):
        rows = colour if len(polygons) > 1 else [colour]
        values = [np.asarray(row, dtype=np.float64) for row in rows]  # type: ignore[union-attr]
    elif colour == "curvature":
        values, label = [s.curvature(len(p)) for s, p in zip(shape._strands, polygons)], f"curvature{per}"
    elif colour == "velocity":
        values, label = _speeds(shape, polygons), f"speed / (circulation{per or ' / length'})".replace("⁻¹", "")
    elif colour == "pressure":
        assert found is not None
        values = [carried(*row) for row in zip(found.pressures, touching, polygons)]
        label = f"contact pressure / tension{per}"
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
        struts=_shown(found.struts, found.strut_forces) if found is not None and struts else None,
        kinks=found.kinks if found is not None and kinks else None,
    )


def _contact_polygons(shape: Shape) -> list[Points]:
    """The polygons as they stand, or sampled ones where a component is a series or they are too fine."""
    strands = shape._strands
    given = sum(MOST_CONTACT_VERTICES + 1 if strand.vertices is None else len(strand.vertices) for strand in strands)
    if given <= MOST_CONTACT_VERTICES:
        return shape._polygons()
    edge = max(CONTACT_EDGE * shape.thickness, shape.length / MOST_CONTACT_VERTICES)
    return [strand.points(max(24, round(strand.length() / edge))) for strand in strands]


def _shown(struts: Points, forces: Points) -> Points:
    """Those that carry force: others are nearly contacts."""
    loaded: Points = struts[forces > LEAST_FORCE * forces.max(initial=0.0)]
    return loaded


def _speeds(shape: Shape, polygons: Sequence[Points]) -> list[Points]:
    """Speeds at the vertices for a circulation of 1, in 1 / length."""
    from vkmcore import compute_filament_velocity

    width = extent(shape._strands)
    filaments = [{"points": points / width, "circulation": 1.0} for points in polygons]
    found = compute_filament_velocity(filaments, {"core_radius": shape.thickness / width})["velocity"]
    return [np.linalg.norm(velocity, axis=1) / width for velocity in found]


def carried(values: Points, polygon: Points, other: Points) -> Points:
    """Values at the vertices of a polygon, at those of another one of the same curve: by their share of its length."""
    found: Points = np.interp(_shares(other)[:-1], _shares(polygon), np.append(values, values[:1]))
    return found


def _shares(polygon: Points) -> Points:
    """How far around a closed polygon its vertices stand, from 0 to 1 for the first one again."""
    arc = arc_lengths(np.vstack([polygon, polygon[:1]]))
    shares: Points = arc / arc[-1]
    return shares
