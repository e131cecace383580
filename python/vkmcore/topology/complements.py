"""Complements of knots and links by SnapPy (extra `snappy`): conversion and comparison.

SnapPy's own names are never used: its tables number some knots differently. Complements are compared with those of the
tables' diagrams.
"""

from __future__ import annotations

import importlib.util
from typing import Any

from vkmcore.topology.diagram import PlanarDiagram


def available() -> bool:
    """Whether SnapPy is installed."""
    return importlib.util.find_spec("snappy") is not None


def missing() -> ImportError:
    """The error that names the extra."""
    return ImportError('complements need SnapPy: pip install "vkmcore[snappy]"')


def to_snappy(diagram: PlanarDiagram) -> Any:
    """SnapPy's `Link` of the diagram; components without crossings are left out, as its codes leave them out.

    Raises:
        ImportError: SnapPy is not installed (extra `snappy`).
        ValueError: the diagram has no crossing.
    """
    if not available():
        raise missing()
    import snappy

    if not diagram.code:
        raise ValueError("SnapPy takes no diagram without crossings")
    return snappy.Link([list(crossing) for crossing in diagram.code])


GEOMETRIC = ("all tetrahedra positively oriented", "contains negatively oriented tetrahedra")


def volume(diagram: PlanarDiagram, tries: int = 20) -> float:
    """Hyperbolic volume of the complement; 0 where SnapPy finds no hyperbolic structure in so many triangulations.

    Raises:
        ImportError: SnapPy is not installed (extra `snappy`).
    """
    if not diagram.code:
        return 0.0
    exterior = to_snappy(diagram).exterior()
    for _ in range(tries):
        if exterior.solution_type() in GEOMETRIC:
            return float(exterior.volume())
        exterior.randomize()
    return 0.0


def _peripheral_match(isometry: Any, oriented: bool) -> bool:
    """Whether an isometry comes from a map of space: orientation preserved, meridians to meridians."""
    for matrix in isometry.cusp_maps():
        a, b, c, d = (int(matrix[i, j]) for i in (0, 1) for j in (0, 1))
        if a * d - b * c != 1 or abs(a) != 1 or c != 0:
            return False
        if oriented and a != 1:
            return False
    return True


def compare(
    first: PlanarDiagram, second: PlanarDiagram, oriented: bool = False, tries: int = 20
) -> tuple[bool | None, str]:
    """Whether two links are isotopic, by their complements: (True, how), (False, how), or (None, why not decided).

    Only hyperbolic complements decide. An isometry found is a proof up to SnapPy's verification of a combinatorial
    isomorphism of triangulations; none found, with volumes apart, is as good as the volumes' digits.
    """
    import snappy

    if any(not arcs for diagram in (first, second) for arcs in diagram.components) or not first.code or not second.code:
        return None, "complements not compared: a component without crossings"
    manifolds = [to_snappy(diagram).exterior() for diagram in (first, second)]
    for manifold in manifolds:
        for _ in range(tries):
            if manifold.solution_type() == "all tetrahedra positively oriented":
                break
            manifold.randomize()
        else:
            return None, "complements not compared: no hyperbolic structure found"
    a, b = manifolds
    volumes = float(a.volume()), float(b.volume())
    if abs(volumes[0] - volumes[1]) > 1e-6 * max(volumes):
        return False, f"the complements have volumes {volumes[0]:.6f} and {volumes[1]:.6f}"
    for _ in range(tries):
        try:
            isometries = a.is_isometric_to(b, return_isometries=True)
        except (RuntimeError, snappy.SnapPeaFatalError):
            isometries = []
        if any(_peripheral_match(isometry, oriented) for isometry in isometries):
            return True, "complements by isometry"
        if isometries:
            return False, "the complements are isometric only by reflections, or by maps that move the meridians"
        a.randomize()
        b.randomize()
    return None, "complements not compared: SnapPy found no isometry and no difference"
