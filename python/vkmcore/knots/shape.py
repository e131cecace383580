"""What knots and links have in common: measures that do not depend on the unit of length, topology, ways out.

Length, thickness, points and curvature are in the unit of the source. Writhe, linking numbers, ropelength and all of
topology are pure numbers and the same in any unit.
"""

from __future__ import annotations

import math
import os
from collections.abc import Iterable, Mapping, Sequence
from typing import TYPE_CHECKING, Any, TypeVar

import numpy as np

from vkmcore import FourierBlock
from vkmcore.knots import sources
from vkmcore.knots.strand import Strand, extent
from vkmcore.parallel import polygonal_gauss

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    from vkmcore.dynamics.simulation import Simulation
    from vkmcore.ideal.fourier_form import Measures
    from vkmcore.knots.field import GridField
    from vkmcore.topology.diagram import PlanarDiagram
    from vkmcore.topology.identification import Identification
    from vkmcore.topology.laurent import Laurent

    Points = NDArray[np.float64]

Self = TypeVar("Self", bound="Shape")


class Shape:
    """One or more closed curves. Immutable; equal where the numbers that define the curves are the same."""

    __slots__ = ("_cache", "_source", "_strands", "name")

    name: str  # of the key, table or file; "" where there is none
    _source: str
    _strands: tuple[Strand, ...]
    _cache: dict[str, Any]

    def __init__(self, source: str | os.PathLike[str] | ArrayLike | Sequence[ArrayLike], *, name: str = "") -> None:
        """From a name or alias, a file in any format that `read_curves` knows, or points.

        Args:
            source: a key of the catalogue ("3_1", "3:1:1"), a name of the tables ("trefoil", "K11a1", "L6a4"), a path,
                vertices (N, 3) of one closed polygon, or a sequence of such. A name of the tables that the catalogue
                has no shape of gives the table's arc presentation, a polygon of the table's chirality.
            name: instead of the source's own.

        Raises:
            CurveError: there is no such curve, it cannot be read, or it has another number of components.
            OSError: a file that is there cannot be read.
        """
        strands, own, origin = sources.from_source(source)
        self._fill(strands, name or own, origin)

    def _fill(self, strands: Iterable[Strand], name: str, source: str) -> None:
        for slot, value in (("_strands", tuple(strands)), ("name", name), ("_source", source), ("_cache", {})):
            object.__setattr__(self, slot, value)
        self._check()

    def _check(self) -> None:
        """Raise CurveError where the strands are not what the class holds."""

    @classmethod
    def _made(cls: type[Self], strands: Iterable[Strand], name: str, source: str) -> Self:
        made = cls.__new__(cls)
        made._fill(strands, name, source)
        return made

    @classmethod
    def from_pd_code(cls: type[Self], code: Sequence[Sequence[int]] | str, *, name: str = "") -> Self:
        """A lattice polygon of a planar diagram in the standard convention, rows X[i, j, k, l].

        A text is read too, as KnotInfo and KnotTheory print codes: "[[1,5,2,4],...]", "X[1, 5, 2, 4] ...".

        Raises:
            DiagramError: the rows are no planar diagram.
            CurveError: it has another number of components.
        """
        return cls._made(sources.from_pd_code(code), name, "planar diagram")

    @classmethod
    def from_braid(cls: type[Self], word: Sequence[int], *, strands: int | None = None, name: str = "") -> Self:
        """The closure of a braid: letter k crosses strands k and k + 1 positively, -k negatively.

        Raises:
            ValueError: a letter is 0 or needs more strands.
            CurveError: the closure has another number of components.
        """
        return cls._made(sources.from_braid(word, strands), name, "braid")

    def __setattr__(self, name: str, value: object) -> None:
        raise AttributeError(f"{type(self).__name__} is immutable: {name} cannot be set")

    def __delattr__(self, name: str) -> None:
        raise AttributeError(f"{type(self).__name__} is immutable: {name} cannot be deleted")

    def __reduce__(self) -> tuple[Any, ...]:
        return _restored, (type(self), self._strands, self.name, self._source)

    def __eq__(self, other: object) -> bool:
        return self._strands == other._strands if isinstance(other, Shape) else NotImplemented

    def __hash__(self) -> int:
        return hash(self._strands)

    @property
    def source(self) -> str:
        """Where the shape comes from, in words."""
        return self._source

    @property
    def components(self) -> int:
        """The number of closed curves."""
        return len(self._strands)

    def _polygons(self, count: int | None = None) -> list[Points]:
        return [strand.points(count) for strand in self._strands]

    # --- measures -----------------------------------------------------------------------------------------------

    @property
    def length(self) -> float:
        """Of all components together, in the source's unit."""
        return math.fsum(strand.length() for strand in self._strands)

    @property
    def writhe(self) -> float:
        """The Gauss integral over all pairs of points: the components' writhes and twice their linking numbers.

        Exact for the polygon of `points()` (Klenin and Langowski, Biopolymers 54 (2000) 307); positive for
        right-handed crossings.
        """
        polygons = self._in_own_unit()
        own = math.fsum(polygonal_gauss(points)["signed_integral"] for points in polygons)
        return own + float(self.linking_matrix.sum())

    @property
    def linking_matrix(self) -> NDArray[np.int64]:
        """Linking numbers (C, C) of the components, 0 on the diagonal."""
        polygons = self._in_own_unit()
        matrix = np.zeros((len(polygons), len(polygons)), dtype=np.int64)
        for row, column in zip(*np.triu_indices(len(polygons), 1)):
            number = polygonal_gauss(polygons[row], polygons[column])["linking_integer_audit"]
            matrix[row, column] = matrix[column, row] = number
        return matrix

    def _in_own_unit(self) -> list[Points]:
        """The polygons over their extent, so that no absolute cut-off of the library meets the unit of length."""
        width = extent(self._strands)
        return [points / width for points in self._polygons()]

    @property
    def thickness(self) -> float:
        """Radius of the thickest tube around the curves, in the source's unit: the least of the radii of curvature and
        half the least distance of points more than half a turn of the tube apart along the curve."""
        return self._measures().thickness

    @property
    def ropelength(self) -> float:
        """Length over `thickness`; 2 pi for a circle."""
        return self._measures().ropelength

    def _measures(self) -> Measures:
        from vkmcore.ideal.fourier_form import FourierForm, Measures, measure

        if "measures" not in self._cache:
            width = extent(self._strands)
            strands = [strand.scaled(1.0 / width) for strand in self._strands]
            series = [strand.series for strand in strands if strand.series is not None]
            if len(series) == len(strands):
                found = measure(FourierForm(tuple(series)))
            else:
                found = _of_polygons([strand.points(None) for strand in strands])
            self._cache["measures"] = Measures(
                found.length * width, found.least_radius * width, found.half_least_distance * width
            )
        measures: Measures = self._cache["measures"]
        return measures

    # --- topology -----------------------------------------------------------------------------------------------

    def diagram(self) -> PlanarDiagram:
        """A planar diagram with few crossings, simplified. ValueError where strands meet."""
        from vkmcore.topology import diagram_of_curves

        if "diagram" not in self._cache:
            self._cache["diagram"] = diagram_of_curves(self._in_own_unit())
        found: PlanarDiagram = self._cache["diagram"]
        return found

    def pd_code(self) -> list[list[int]]:
        """Planar-diagram code in the standard convention: the arcs counterclockwise from the incoming under strand."""
        return self.diagram().pd_code()

    def dt_code(self) -> list[list[int]]:
        """Dowker-Thistlethwaite code, a row a component. ValueError for a diagram without crossings."""
        return self.diagram().dt_code()

    def gauss_code(self) -> list[list[int]]:
        """Gauss code, a row a component: crossings numbered from 1, negative where the strand passes under."""
        return self.diagram().gauss_code()

    def jones(self) -> Laurent:
        """Jones polynomial; KnotInfo's 3_1 has t + t^3 - t^4."""
        from vkmcore.topology import jones

        return jones(self.diagram())

    def alexander(self) -> Laurent:
        """Alexander polynomial."""
        from vkmcore.topology import alexander

        return alexander(self.diagram())

    def to_snappy(self) -> Any:
        """SnapPy's `Link` of the diagram. ImportError without the extra `snappy`."""
        from vkmcore.topology import to_snappy

        return to_snappy(self.diagram())

    def identify(self) -> Identification:
        """The name in the tables, chirality as they have it, and whether it is proved."""
        from vkmcore.topology import identify

        if "identity" not in self._cache:
            self._cache["identity"] = identify(self.diagram())
        found: Identification = self._cache["identity"]
        return found

    def invariants(self) -> dict[str, Any]:
        """Invariants of the type: from the diagram, and what the tables say of the type if it has a name there.

        Keys: name, chirality, proved, crossings, jones, alexander, determinant, signature; from the tables conway,
        symmetry, geometry, volume, braid, published_ropelength (None or "" where a table does not say).
        """
        from vkmcore.reference.tables import UnknownName, find
        from vkmcore.topology import alexander, determinant, signature

        found, diagram = self.identify(), self.diagram()
        facts: dict[str, Any] = {
            "name": found.name,
            "chirality": found.chirality,
            "proved": found.decided,
            "crossings": found.crossings,
            "jones": found.jones,
            "alexander": str(alexander(diagram)),
            "determinant": determinant(diagram),
            "signature": signature(diagram),
        }
        try:
            entry = find(found.name or "")
        except UnknownName:
            return facts
        table = {name: getattr(entry, name) for name in ("conway", "symmetry", "geometry", "volume", "braid")}
        return facts | table | {"published_ropelength": entry.ropelength}

    # --- other shapes -------------------------------------------------------------------------------------------

    def scaled(self: Self, factor: float) -> Self:
        """All lengths times a positive factor. ValueError for another."""
        if not 0.0 < factor < math.inf:
            raise ValueError(f"a factor of length is positive and finite, not {factor!r}")
        return self._changed(strand.scaled(factor) for strand in self._strands)

    def mirrored(self: Self) -> Self:
        """The mirror image in the plane z = 0."""
        made = self._changed(strand.mirrored() for strand in self._strands)
        object.__setattr__(made, "name", f"mirror image of {self.name}" if self.name else "")
        return made

    def reversed(self: Self) -> Self:
        """All directions reversed."""
        return self._changed(strand.reversed() for strand in self._strands)

    def resampled(self: Self, count: int) -> Self:
        """Polygons of `count` vertices a component at equal steps of arc length. ValueError below 3."""
        if count < 3:
            raise ValueError(f"a closed polygon has at least three vertices, not {count}")
        return self._changed(Strand(vertices=points) for points in self._polygons(count))

    def _changed(self: Self, strands: Iterable[Strand]) -> Self:
        return type(self)._made(strands, self.name, self._source)

    def idealize(self: Self, **options: Any) -> Self:
        """The shape of least ropelength that a search finds, a tube of radius 1. Ctrl-C ends the search with the best
        so far, and `source` says so.

        Args:
            options: those of `vkmcore.idealize`, which returns all that is known of the shape and says what it raises.
        """
        from vkmcore.ideal.search import idealize

        shape = idealize(self._in_own_unit(), **options)
        how = "idealized, stopped early," if shape.interrupted else "idealized"
        strands = [Strand(vertices=np.array(points)) for points in shape.points]
        return type(self)._made(strands, self.name, f"{how} from {self._source}")

    # --- ways out -----------------------------------------------------------------------------------------------

    def simulate(
        self, t_end: float, *, circulation: float = 1.0, filament: Mapping[str, Any] | None = None, **options: Any
    ) -> Simulation:
        """Evolve as vortex filaments of one circulation, points in m: `vkmcore.simulate`.

        Args:
            t_end: s.
            circulation: m^2/s, of every component.
            filament: further keys of each filament, as source or ghost.
            options: those of `vkmcore.simulate`, and `samples`, the vertices of a component (default 128 for a series,
                the vertices themselves for a polygon).
        """
        from vkmcore.dynamics.simulation import simulate

        samples = options.pop("samples", None)
        if samples is None and self._strands[0].series is not None:
            samples = 128
        common = {"circulation": circulation, **(filament or {})}
        return simulate([{"points": points, **common} for points in self._polygons(samples)], t_end, **options)

    def velocity_field(
        self,
        shape: tuple[int, int, int] = (48, 48, 48),
        *,
        circulation: float = 1.0,
        margin: float = 0.25,
        samples: int | None = None,
    ) -> GridField:
        """The flow around vortex filaments along the curves, on a grid over their box; `.save("flow.vti")`.

        Args:
            shape: points along x, y and z.
            circulation: of every component; the velocity is in circulation over the source's unit of length.
            margin: how much wider than the curves' box the grid is on all sides, in its greatest extents.
            samples: vertices a component; by default 512 of a series, and a polygon's own.

        Raises:
            ValueError: fewer than two points along an axis.
        """
        from vkmcore.knots.field import velocity_field

        return velocity_field(self._polygons(samples), shape, circulation, margin)

    def plot(self, backend: str = "matplotlib", **options: Any) -> Any:
        """The tube at true thickness as a figure of `backend`: "matplotlib", "plotly" or "pyvista".

        Args:
            backend: the library, whose own figure is returned; it shows itself in a notebook.
            options: of `vkmcore.knots.drawing.plot`: colour ("curvature", "velocity", "pressure", "component", or
                values a vertex), struts, kinks, radius (`thickness` by default), samples, title, unit.

        Raises:
            PlotError: the library is not installed; the text names the extra.
            ValueError: no such backend or colour, or contacts of curves without thickness.
        """
        from vkmcore.knots.drawing import plot

        return plot(self, backend, **options)

    def save(self, path: str | os.PathLike[str], *, samples: int | None = None) -> None:
        """Write the shape; the suffix of `path` gives the format.

        .vect, .csv, .txt, .json, .npy and .npz hold the vertices; .vtp the vertices with their curvature, for ParaView;
        .stl and .obj the watertight tube of radius `thickness`, .obj the vertices too. `Knot(path)` and `Link(path)`
        read all of them but .stl.

        Args:
            path: the file.
            samples: vertices a component; by default 512 of a series, and a polygon's own.

        Raises:
            ValueError: no such format.
            OSError: the file cannot be written.
        """
        from vkmcore.curves.writer import write_curves

        polygons = self._polygons(samples)
        write_curves(
            path,
            polygons,
            comment=self.name or self._source,
            radius=lambda: self.thickness,
            values=lambda: {
                "curvature": [strand.curvature(samples) for strand in self._strands],
            },
        )

    # --- how it shows itself ------------------------------------------------------------------------------------

    def __repr__(self) -> str:
        from vkmcore.knots.summary import line

        return line(self)

    def _repr_html_(self) -> str:
        from vkmcore.knots.summary import html

        return html(self)


def _of_polygons(polygons: list[Points]) -> Measures:
    """Measures of polygons as they stand; a polygon by itself may have uneven edges, as a tightened one has."""
    from vkmcore.ideal.fourier_form import Measures, measure_polygons

    if len(polygons) > 1:
        return measure_polygons(polygons)
    from vkmcore.parallel import analyze_tube
    from vkmcore.tube.tightening import half_turn

    tube = analyze_tube(polygons[0], half_turn(polygons[0]), 0.0)
    return Measures(tube.length, tube.minrad, tube.min_dcsd / 2.0)


def _restored(cls: type[Self], strands: tuple[Strand, ...], name: str, source: str) -> Self:
    return cls._made(strands, name, source)


def block_of(strand: Strand) -> FourierBlock | None:
    """The series without its centre as a fresh record of the library; None for a polygon."""
    if strand.series is None:
        return None
    block = FourierBlock()
    for axis, letter in enumerate("xyz"):
        setattr(block, f"a_{letter}", strand.series[1:, axis].real.tolist())
        setattr(block, f"b_{letter}", (-strand.series[1:, axis].imag).tolist())
    return block
