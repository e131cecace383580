"""A knot: one closed curve."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

from vkmcore.errors import CurveError
from vkmcore.knots.shape import Shape, block_of
from vkmcore.knots.strand import Strand

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray

    from vkmcore import FourierBlock
    from vkmcore.mass.assessment import Assessment

    Points = NDArray[np.float64]


class Knot(Shape):
    """One closed curve, from a name, a file, points, a planar diagram or a braid.

    knot = Knot("trefoil")
    knot.writhe, knot.ropelength, knot.identify()
    """

    __slots__ = ()

    def _check(self) -> None:
        if len(self._strands) != 1:
            what = self.name or self._source
            raise CurveError(f"{what}: a link of {len(self._strands)} components; Link takes it, Knot takes one curve")

    def points(self, count: int | None = None) -> Points:
        """`count` points (count, 3) at equal steps of arc length; by default 512 of a series, and a polygon's own.

        Raises:
            ValueError: a count below 1.
        """
        if count is not None and count < 1:
            raise ValueError(f"expected at least one point, not {count}")
        return self._strands[0].points(count)

    def curvature(self, count: int | None = None) -> Points:
        """Curvature (count,) at `points(count)`, over the unit of length."""
        return self._strands[0].curvature(count)

    @property
    def fourier(self) -> FourierBlock | None:
        """The series about its centre, a fresh record; None for a polygon."""
        return block_of(self._strands[0])

    def tighten(self, steps: int = 100, *, vertices: int | None = None, contact_tol: float = 1e-3) -> Knot:
        """A polygon shortened at a held tube radius by the library's tightener, as `vkmcore tighten` does.

        Args:
            steps: at most so many.
            vertices: of the polygon; 120 of a series by default, and a polygon's own.
            contact_tol: how far from the thickness a pair may be and still count as a contact.

        Raises:
            ValueError: a polygon without thickness, or a negative tolerance.
        """
        from vkmcore import TighteningOptions
        from vkmcore.tube.tightening import Tightening

        options = TighteningOptions()
        options.max_steps = steps
        if vertices is None and self._strands[0].series is not None:
            vertices = 120
        reached = Tightening(self.points(vertices))
        reached.tighten([contact_tol], options)
        return Knot._made([Strand(vertices=reached.points)], self.name, f"tightened from {self._source}")

    def mass(self, **settings: Any) -> Assessment:
        """Both shapes weighed, the catalogued and the relaxed one, with a verdict on each: `vkmcore mass`.

        Args:
            settings: resolution (points, 200), iterations (sweeps, 100), timestep (1e-3), stretch (1.0); and `tail`, a
                `TailApproxConfig`. The library's own defaults, 4000, 1000 and 0.01, burst most knots.

        Returns:
            An `Assessment`; `.catalogued.weight` and `.relaxed.weight` hold the measures, `.verdict` says what they are
            worth.

        Raises:
            ValueError: the knot is no entry of the ideal table, which alone the evaluator takes.
        """
        from dataclasses import replace

        from vkmcore.mass.assessment import DEFAULTS, assess

        origin, _, key = self._source.partition(", ")
        if origin != "ideal table":
            raise ValueError(f"masses are of the ideal table's shapes, as Knot('3:1:1'), not of: {self._source}")
        tail = settings.pop("tail", None)
        return assess(key, replace(DEFAULTS, **settings), tail)
