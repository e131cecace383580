"""A link: one or more closed curves."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING

from vkmcore.knots.knot import Knot
from vkmcore.knots.shape import Shape, block_of

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray

    from vkmcore import FourierBlock

    Points = NDArray[np.float64]


class Link(Shape):
    """Closed curves, from a name ("L6a4", "Borromean"), a file, a list of points, a planar diagram or a braid."""

    __slots__ = ()

    def __len__(self) -> int:
        return self.components

    def __iter__(self) -> Iterator[Knot]:
        return (self[number] for number in range(len(self)))

    def __getitem__(self, number: int) -> Knot:
        """A component, counted from 0."""
        name = f"{self.name}, component {range(len(self))[number]}"
        return Knot._made([self._strands[number]], name, f"component of {self._source}")

    def points(self, count: int | None = None) -> list[Points]:
        """For each component `count` points at equal steps of arc length; by default 512 or a polygon's own."""
        return [knot.points(count) for knot in self]

    def curvature(self, count: int | None = None) -> list[Points]:
        """For each component the curvature at `points(count)`."""
        return [knot.curvature(count) for knot in self]

    @property
    def fourier(self) -> list[FourierBlock | None]:
        """The series of the components, each about its own centre; None for polygons."""
        return [block_of(strand) for strand in self._strands]
