"""Closed curves as tubes in space, drawn by the library that the caller names; its own figure is returned."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.tube_surface import ring_triangles, tube_rings
from vkmcore.errors import PlotError
from vkmcore.pictures.figure import PALETTE, show_in_notebook, style_axes
from vkmcore.pictures.tubes import SIDES, shade, tube_faces

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

BACKENDS = {"matplotlib": "plot", "plotly": "view", "pyvista": "vtk"}  # and the extra that brings each
COLOURS = "viridis"
FINE_SIDES = 24  # of a ring where a graphics card draws
THROUGH = 0.3  # opacity of a tube that lets its inside show
EYE = {"x": 1.4, "y": -1.4, "z": 1.85}  # of plotly's camera, in boxes: the view of matplotlib's pictures
STRUT, KINK = "#30343b", "#c8102e"


@dataclass(frozen=True)
class _Picture:
    """What every backend draws."""

    polygons: Sequence[Points]
    radius: float
    values: Sequence[Points] | None
    title: str
    unit: str
    label: str
    struts: Points  # (K, 2, 3), drawn inside of the tubes
    kinks: Points  # (M, 3)

    @property
    def opacity(self) -> float:
        return THROUGH if len(self.struts) or len(self.kinks) else 1.0

    @property
    def range(self) -> tuple[float, float]:
        """Of the values."""
        if self.values is None:
            return 0.0, 1.0
        return min(float(row.min()) for row in self.values), max(float(row.max()) for row in self.values)

    def frame(self) -> tuple[Points, float]:
        """Centre and half the edge of the cube that the tubes fit into."""
        every = np.concatenate(self.polygons)
        low, high = every.min(axis=0), every.max(axis=0)
        return (low + high) / 2.0, float((high - low).max()) / 2.0 + 1.1 * self.radius


def plot_shape(
    polygons: Sequence[Points],
    *,
    radius: float,
    backend: str = "matplotlib",
    values: Sequence[Points] | None = None,
    title: str = "",
    unit: str = "",
    label: str = "values",
    struts: Points | None = None,
    kinks: Points | None = None,
) -> Any:
    """Draw tubes around closed polygons.

    Args:
        polygons: the components, each (N, 3).
        radius: of the tubes, in the polygons' unit.
        backend: "matplotlib", "plotly" or "pyvista".
        values: for each component a number (N,) a vertex, shown as colour; None: a colour a component.
        title: above the picture.
        unit: of length, at the axes; none is written if it is empty.
        label: of the values.
        struts: lines (K, 2, 3) to draw; the tubes are then translucent.
        kinks: points (M, 3) to mark; the tubes are then translucent.

    Returns:
        A matplotlib `Figure`, a plotly `Figure`, or a pyvista `Plotter`.

    Raises:
        PlotError: the library is not installed; the text names the extra.
        ValueError: no such backend, or values of another number than vertices.
    """
    if backend not in BACKENDS:
        raise ValueError(f"no backend {backend!r}; there are {', '.join(BACKENDS)}")
    if values is not None and [len(row) for row in values] != [len(points) for points in polygons]:
        raise ValueError("colours: expected a value for each vertex")
    draw = {"matplotlib": _matplotlib, "plotly": _plotly, "pyvista": _pyvista}[backend]
    struts = np.zeros((0, 2, 3)) if struts is None else struts
    kinks = np.zeros((0, 3)) if kinks is None else kinks
    try:
        return draw(_Picture(polygons, radius, values, title, unit, label, struts, kinks))
    except ImportError as error:
        extra = BACKENDS[backend]
        raise PlotError(f'these pictures need {backend}: pip install "vkmcore[{extra}]" ({error})') from error


def _matplotlib(picture: _Picture) -> Any:
    from matplotlib import colormaps
    from matplotlib.cm import ScalarMappable
    from matplotlib.colors import Normalize, to_rgb
    from matplotlib.figure import Figure
    from mpl_toolkits.mplot3d.art3d import Line3DCollection, Poly3DCollection

    figure = Figure(figsize=(6.4, 5.6), dpi=120, facecolor="white")
    axes: Any = figure.add_axes((0.0, 0.02, 0.94 if picture.values is None else 0.84, 0.9), projection="3d")
    axes.computed_zorder = False
    scale = Normalize(*picture.range)
    faces, colours = [], []
    for number, points in enumerate(picture.polygons):
        quads, normals = tube_faces(points, picture.radius)
        if picture.values is None:
            base = np.tile(to_rgb(PALETTE[number % len(PALETTE)]), (len(quads), 1))
        else:
            base = np.repeat(colormaps[COLOURS](scale(picture.values[number]))[:, :3], SIDES, axis=0)
        faces.append(quads)
        colours.append(shade(base, normals))
    # One collection for all tubes: faces are then sorted by depth against each other, which shows over and under.
    paint = np.concatenate(colours)
    tubes = Poly3DCollection(np.concatenate(faces), facecolors=paint, linewidths=0.15, alpha=picture.opacity)
    tubes.set_edgecolor(paint if picture.opacity == 1.0 else "none")
    axes.add_collection3d(tubes)
    if len(picture.struts):  # matplotlib 3.11 takes no empty collection
        axes.add_collection3d(Line3DCollection(picture.struts, colors=STRUT, linewidths=0.5, alpha=0.7))
    axes.scatter(*picture.kinks.T, color=KINK, s=14, depthshade=False)
    centre, reach = picture.frame()
    style_axes(axes, picture.unit)
    axes.set(**{f"{axis}lim": (c - reach, c + reach) for axis, c in zip("xyz", centre)})
    axes.set_box_aspect((1, 1, 1), zoom=0.88)
    axes.view_init(elev=52, azim=-60)
    if picture.title:
        figure.suptitle(picture.title, fontsize=12, color="#30343b", parse_math=False)
    if picture.values is not None:
        bar = figure.add_axes((0.86, 0.22, 0.022, 0.5))
        figure.colorbar(ScalarMappable(scale, COLOURS), cax=bar, label=picture.label)
    show_in_notebook()
    return figure


def _plotly(picture: _Picture) -> Any:
    import plotly.graph_objects as go

    low, high = picture.range
    figure = go.Figure()
    for number, points in enumerate(picture.polygons):
        x, y, z = tube_rings(points, picture.radius, FINE_SIDES)[0].reshape(-1, 3).T
        i, j, k = ring_triangles(len(points), FINE_SIDES).T
        look: dict[str, Any] = {"color": PALETTE[number % len(PALETTE)]}
        if picture.values is not None:
            bar = {"title": {"text": picture.label}}
            look = {"intensity": np.repeat(picture.values[number], FINE_SIDES), "cmin": low, "cmax": high}
            look |= {"colorscale": COLOURS, "showscale": number == 0, "colorbar": bar}
        light = {"ambient": 0.45, "diffuse": 0.8, "specular": 0.3, "roughness": 0.5}
        figure.add_mesh3d(
            x=x, y=y, z=z, i=i, j=j, k=k, lighting=light, hoverinfo="skip", opacity=picture.opacity, **look
        )
    ends = np.full((len(picture.struts), 3, 3), np.nan)  # a line ends where there is no number
    ends[:, :2] = picture.struts
    for rows, kind, colour in ((ends.reshape(-1, 3), "lines", STRUT), (picture.kinks, "markers", KINK)):
        if len(rows):
            look = (
                {"line": {"color": colour, "width": 3}} if kind == "lines" else {"marker": {"color": colour, "size": 4}}
            )
            x, y, z = rows.T
            figure.add_scatter3d(x=x, y=y, z=z, mode=kind, hoverinfo="skip", showlegend=False, **look)
    names = {f"{axis}axis": {"title": {"text": f"{axis} / {picture.unit}" if picture.unit else axis}} for axis in "xyz"}
    figure.update_layout(
        title={"text": picture.title},
        scene={"aspectmode": "data", "camera": {"eye": EYE}, **names},
        margin={"l": 0, "r": 0, "t": 40, "b": 0},
    )
    return figure


def _pyvista(picture: _Picture) -> Any:
    import pyvista

    plotter = pyvista.Plotter(off_screen=pyvista.OFF_SCREEN or None)
    for number, points in enumerate(picture.polygons):
        triangles = ring_triangles(len(points), FINE_SIDES)
        rings = tube_rings(points, picture.radius, FINE_SIDES)[0].reshape(-1, 3)
        mesh = pyvista.PolyData(rings, np.column_stack([np.full(len(triangles), 3), triangles]).ravel())
        if picture.values is None:
            plotter.add_mesh(mesh, color=PALETTE[number % len(PALETTE)], smooth_shading=True, opacity=picture.opacity)
        else:
            mesh[picture.label] = np.repeat(picture.values[number], FINE_SIDES)
            look = {"scalars": picture.label, "cmap": COLOURS, "clim": picture.range}
            plotter.add_mesh(mesh, smooth_shading=True, opacity=picture.opacity, **look)
    if len(picture.struts):
        plotter.add_mesh(pyvista.line_segments_from_points(picture.struts.reshape(-1, 3)), color=STRUT, line_width=2)
    if len(picture.kinks):
        plotter.add_mesh(pyvista.PolyData(picture.kinks), color=KINK, point_size=8, render_points_as_spheres=True)
    if picture.unit:
        plotter.show_bounds(
            xtitle=f"x / {picture.unit}",
            ytitle=f"y / {picture.unit}",
            ztitle=f"z / {picture.unit}",
            location="outer",
            grid="back",
        )
    if picture.title:
        plotter.add_title(picture.title, font_size=12)
    return plotter
