"""Whether two shapes are of one knot or link type, chirality included: what was compared, and with what result.

Polynomials first: they cost a few milliseconds, and different ones prove different types. Equal ones prove equality of
knots to ten crossings only (see `identification`), so that with SnapPy (extra `snappy`) the complements are compared
too, by an isometry that respects orientation and takes meridians to meridians: where one is found the types are equal.
"""

from __future__ import annotations

from collections.abc import Callable, Sequence
from dataclasses import dataclass, field

from numpy.typing import ArrayLike

from vkmcore.topology.bracket import jones, unoriented_jones
from vkmcore.topology.diagram import PlanarDiagram
from vkmcore.topology.laurent import Laurent
from vkmcore.topology.projection import diagram_of_curves

TABLE_LIMIT = 10  # crossings to which the invariants of knots here tell all types apart
COLOURED_LIMIT = 14  # crossings to which a two-cable takes about a second


class CertificateError(RuntimeError):
    """The shape is not of the expected type."""


@dataclass(frozen=True)
class Certificate:
    """What was compared of two shapes that were found to be of one type."""

    expected: str  # a name of the tables, or what the shape was compared with
    crossings: int  # of the shape's diagram
    jones: str  # of the shape's diagram, its directions as given
    compared: tuple[str, ...]  # "Jones polynomial with chirality", "complements by isometry", ...
    proved: bool  # whether the comparisons prove equality; else they only found no difference
    notes: tuple[str, ...] = field(default=())

    def __str__(self) -> str:
        state = "proved" if self.proved else "no difference found"
        return f"{self.expected}: {state} by {', '.join(self.compared)} ({self.crossings} crossings)"


def _as_diagram(shape: PlanarDiagram | str | ArrayLike | Sequence[ArrayLike], directions: int) -> PlanarDiagram:
    if isinstance(shape, PlanarDiagram):
        return shape
    if isinstance(shape, str):
        from vkmcore.reference.tables import find

        return find(shape).diagram
    return diagram_of_curves(shape, directions=directions, best=2, effort=0)


def _linking_shape(diagram: PlanarDiagram, oriented: bool) -> list[tuple[int, ...]]:
    """Linking numbers without the order of the components; without directions their sizes only."""
    matrix = diagram.linking_matrix()
    rows = [[entry for column, entry in enumerate(row) if column != n] for n, row in enumerate(matrix)]
    return sorted(tuple(sorted(row if oriented else map(abs, row))) for row in rows)


def same_type(
    shape: PlanarDiagram | str | ArrayLike | Sequence[ArrayLike],
    other: PlanarDiagram | str | ArrayLike | Sequence[ArrayLike],
    oriented: bool = False,
    complements: bool | None = None,
    expected: str | None = None,
    directions: int = 8,
) -> Certificate:
    """Compare two knots or links, given by diagram, table's name, or points (a list of arrays for a link).

    Args:
        oriented: whether the directions of a link's components count; their order never does.
        complements: compare the complements with SnapPy; None: where it is installed.
        expected: how the record and an error call the other shape.
        directions: projections of points that are tried.

    Raises:
        CertificateError: the types differ; the text says in what.
        ValueError: points that are no closed curves, or that meet.
        ImportError: `complements` is True and SnapPy is not installed.
    """
    name = expected or (other if isinstance(other, str) else "the other shape")
    first, second = _as_diagram(shape, directions), _as_diagram(other, directions)
    if len(first.components) != len(second.components):
        raise CertificateError(f"not {name}: the shape has {_count(first)}, and {name} has {_count(second)}")
    compared = []
    if len(first.components) > 1:
        found, wanted = (_linking_shape(diagram, oriented) for diagram in (first, second))
        if found != wanted:
            raise CertificateError(f"not {name}: the linking numbers are {found}, expected {wanted}")
        compared.append("linking numbers")
    polynomials = [_polynomial(diagram, oriented) for diagram in (first, second)]
    if polynomials[0] != polynomials[1]:
        mirror = ", that of the mirror image" if polynomials[0] == polynomials[1].mirrored() else ""
        raise CertificateError(
            f"not {name}: the Jones polynomial is {polynomials[0]}{mirror}, expected {polynomials[1]}"
        )
    compared.append("Jones polynomial with chirality")
    notes: list[str] = []
    proved = _both_trivial(first, second)
    if not proved:
        verdict = _compare_complements(first, second, complements, oriented)
        if verdict is not None:
            same, how = verdict
            if same is False:
                raise CertificateError(f"not {name}: {how}")
            if same:
                compared.append(how)
                proved = True
            else:
                notes.append(how)
    if not proved and len(first.components) == 1:
        if _compare_further(first, second, name, compared):
            proved = True
            notes.append(f"no two knots to {TABLE_LIMIT} crossings agree in all of these")
    return Certificate(name, len(first), str(jones(first)), tuple(compared), proved, tuple(notes))


def certify(
    points: PlanarDiagram | ArrayLike | Sequence[ArrayLike],
    expected: PlanarDiagram | str | ArrayLike | Sequence[ArrayLike],
    complements: bool | None = None,
    directions: int = 8,
) -> Certificate:
    """That a shape has the type expected: a table's name ("8_18", in its chirality), a diagram, or a start's points.

    See `same_type`, which it calls without directions of components.
    """
    return same_type(points, expected, complements=complements, directions=directions)


def _count(diagram: PlanarDiagram) -> str:
    size = len(diagram.components)
    return "one component" if size == 1 else f"{size} components"


def _polynomial(diagram: PlanarDiagram, oriented: bool) -> Laurent:
    return jones(diagram) if oriented or len(diagram.components) == 1 else unoriented_jones(diagram)


def _both_trivial(first: PlanarDiagram, second: PlanarDiagram) -> bool:
    return not first.code and not second.code


def _compare_complements(
    first: PlanarDiagram, second: PlanarDiagram, wanted: bool | None, oriented: bool
) -> tuple[bool | None, str] | None:
    """(same, how): True or False where SnapPy decides, None where it cannot; None alone where it is not to be asked."""
    if wanted is False:
        return None
    from vkmcore.topology import complements

    if not complements.available():
        if wanted:
            raise complements.missing()
        return None
    return complements.compare(first, second, oriented)


def _compare_further(first: PlanarDiagram, second: PlanarDiagram, name: str, compared: list[str]) -> bool:
    """Alexander polynomial, signature and, of small diagrams, the coloured Jones polynomial of two knots.

    Returns whether their agreement proves the types equal: it does to ten crossings, see `identification`.
    """
    from vkmcore.topology.bracket import coloured_jones
    from vkmcore.topology.fox_calculus import alexander
    from vkmcore.topology.goeritz import linking_form, signature
    from vkmcore.topology.simplification import simplified

    first, second = simplified(first), simplified(second)
    tests: list[tuple[str, Callable[[PlanarDiagram], object]]] = [
        ("Alexander polynomial", alexander),
        ("signature", signature),
        ("linking form", linking_form),
    ]
    if max(len(first), len(second)) <= COLOURED_LIMIT:
        tests.append(("coloured Jones polynomial", coloured_jones))
    for what, invariant in tests:
        a, b = invariant(first), invariant(second)
        if a != b:
            raise CertificateError(f"not {name}: the {what} is {a}, expected {b}")
        compared.append(what)
    return max(len(first), len(second)) <= TABLE_LIMIT
