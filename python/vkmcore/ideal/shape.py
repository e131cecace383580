"""The record of a tight shape: its polygons, what was measured on them, and the contacts that hold it."""

from __future__ import annotations

import json
from dataclasses import asdict, dataclass, field
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore.ideal.fourier_form import FourierForm

    Points = NDArray[np.float64]

FORMAT = 1
NUMBERS = (
    "length thickness min_radius strut_distance kkt_residual edge seed settled interrupted certificate name published"
).split()


@dataclass(frozen=True)
class SearchStep:
    """A step of a search: a contracted start, a chain of hops, or a finer level."""

    seed: int
    phase: str  # "start", "hop", "level"
    task: int
    edge: float  # edge length, in tube radii
    hops: int  # tried in the chain
    ropelength: float  # length / tube radius at this edge length
    starts: str = ""  # their kind: "table", "own", "lobed torus", "twist"


@dataclass(frozen=True, eq=False)
class IdealShape:
    """A knot or link tightened to a tube of radius 1 (lengths are in tube radii).

    The measures are the polygon's own: MinRad at its vertices, and the least distance of edges more than pi radii
    apart along the curve; thickness is the smaller of MinRad and half of that distance.
    """

    points: tuple[Points, ...]  # (N, 3) a component
    length: float
    thickness: float  # radius of the thickest embedded tube
    min_radius: float  # least MinRad
    strut_distance: float
    struts: NDArray[np.float64]  # rows (i, s, j, t, distance, force); edge i is met at (1 - s) p_i + s p_(i+1)
    kinks: NDArray[np.float64]  # rows (vertex, MinRad, force); vertices are counted over all components
    kkt_residual: float  # forces that no contact balances over the tension's forces, by their norms
    edge: float  # edge length of the finest level reached, in tube radii
    seed: int
    settled: bool  # the last level came to rest within its tolerance
    interrupted: bool  # stopped before its end, the best so far
    history: tuple[SearchStep, ...] = field(repr=False)
    certificate: str | None = None  # what the check of the knot type said
    name: str = ""
    published: float | None = None  # best published ropelength of the type, length over radius

    @property
    def ropelength(self) -> float:
        """Length over tube radius (a circle's is 2 pi)."""
        return self.length / self.thickness

    @property
    def ropelength_diameter(self) -> float:
        """Length over tube diameter (a circle's is pi)."""
        return 0.5 * self.ropelength

    @property
    def excess(self) -> float | None:
        """Relative to the best published ropelength, as 0.0005 for 0.05 % above it; None where there is none."""
        return None if self.published is None else self.ropelength / self.published - 1.0

    def __repr__(self) -> str:
        vertices = "+".join(str(len(component)) for component in self.points)
        name = f"{self.name!r}, " if self.name else ""
        return (
            f"IdealShape({name}ropelength={self.ropelength:.4f} by radius, {self.ropelength_diameter:.4f} by diameter, "
            f"vertices={vertices}, struts={len(self.struts)}, kinks={len(self.kinks)}, "
            f"kkt_residual={self.kkt_residual:.1e}, seed={self.seed}{', interrupted' if self.interrupted else ''})"
        )

    def fourier(self, excess: float = 1e-3, *, polished: bool = False) -> FourierForm:
        """The Fourier form of fewest harmonics whose ropelength is at most `excess` above this one's.

        See `vkmcore.ideal.least_harmonics.least_form`, also for what it raises.
        """
        from vkmcore.ideal.least_harmonics import least_form

        return least_form(self.points, self.ropelength, excess, polished=polished)

    def plot(self, title: str = "") -> Any:
        """A matplotlib Figure: the tube with its contacts, the curve with struts and kinks, and the strut map.

        Raises:
            PlotError: matplotlib is not installed.
        """
        from vkmcore.errors import PlotError

        try:
            from vkmcore.pictures.ideal import ideal_figure

            return ideal_figure(self, title)
        except ImportError as error:
            raise PlotError(f'plots need matplotlib: pip install "vkmcore[plot]" ({error})') from error

    def record(self) -> dict[str, Any]:
        """All of it in plain lists and numbers, for JSON."""
        return {
            "name": self.name,
            "ropelength": self.ropelength,
            "ropelength_diameter": self.ropelength_diameter,
            "published": self.published,
            "excess": self.excess,
            **{key: getattr(self, key) for key in NUMBERS if key not in ("name", "published")},
            "points": [component.tolist() for component in self.points],
            "struts": self.struts.tolist(),
            "kinks": self.kinks.tolist(),
            "history": [asdict(step) for step in self.history],
        }

    def save(self, path: str | Path) -> None:
        """Write the shape; the suffix of `path` gives the format.

        .npz holds everything, which `load` reads back with the same bits; the other formats of
        `vkmcore.curves.writer.FORMATS` hold the polygons, and .stl and .obj the tube.

        Raises:
            ValueError: no such format.
            OSError: the file cannot be written.
        """
        if Path(path).suffix.lower() != ".npz":
            from vkmcore.curves.writer import write_curves

            write_curves(path, self.points, comment=self.name, radius=lambda: self.thickness)
            return
        numbers = {key: getattr(self, key) for key in NUMBERS}
        head = {"format": FORMAT, "numbers": numbers, "history": [asdict(step) for step in self.history]}
        arrays: dict[str, Any] = {f"component_{k}": component for k, component in enumerate(self.points)}
        with open(path, "wb") as file:
            np.savez_compressed(file, head=json.dumps(head), struts=self.struts, kinks=self.kinks, **arrays)

    @classmethod
    def load(cls, path: str | Path) -> IdealShape:
        """Read what `save` wrote; ValueError for any other file."""
        try:
            with np.load(path, allow_pickle=False) as file:
                head = json.loads(str(file["head"]))
                if head["format"] != FORMAT:
                    raise ValueError(f"format {head['format']}")
                points = tuple(file[f"component_{k}"] for k in range(len(file.files) - 3))
                history = tuple(SearchStep(**step) for step in head["history"])
                return cls(points, struts=file["struts"], kinks=file["kinks"], history=history, **head["numbers"])
        except (KeyError, TypeError, ValueError, EOFError) as error:
            raise ValueError(f"{path}: not a saved ideal shape ({error})") from None
