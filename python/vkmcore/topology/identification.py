"""Names for knots and links, from the tables to ten crossings (knots) and nine (links), and beyond with SnapPy.

A knot with a diagram of at most ten crossings is the unknot, a prime knot of the table, or a sum of such. Jones and
Alexander polynomials, signature and linking form tell all of these apart but five pairs of primes, which the coloured
Jones polynomial tells apart; so the name is proved. So is that of a link with a diagram of at most nine crossings whose
Jones polynomial no other such link has. From more crossings the polynomials only propose names, and the
complements decide.
"""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass, field
from functools import lru_cache

from numpy.typing import ArrayLike

from vkmcore.reference.tables import TableEntry, find, knots, large_knots, large_links, links
from vkmcore.topology import complements
from vkmcore.topology.bracket import coloured_jones, jones, unoriented_jones
from vkmcore.topology.certificate import COLOURED_LIMIT, TABLE_LIMIT
from vkmcore.topology.diagram import PlanarDiagram
from vkmcore.topology.fox_calculus import alexander
from vkmcore.topology.goeritz import linking_form, signature
from vkmcore.topology.laurent import Laurent, laurent
from vkmcore.topology.link_sums import LIMIT, composite_polynomials, unoriented_of
from vkmcore.topology.projection import diagram_of_curves
from vkmcore.topology.simplification import simplified

HOPF = "L2a1"  # reflection in the plane of one of its circles keeps it
AS_TABLE, MIRROR, AMPHICHEIRAL, UNKNOWN = "as in the table", "mirror image of the table's", "amphicheiral", "unknown"


@dataclass(frozen=True)
class Identification:
    """The name of a knot or link, and how it was found."""

    name: str | None  # "3_1", "0_1" (unknot), "3_1 # m3_1", "L5a1", "unlink of 2 components"; m for a mirror image
    chirality: str  # "as in the table", "mirror image of the table's", "amphicheiral", "unknown"
    decided: bool  # whether the type is proved
    how: tuple[str, ...]  # what was compared
    candidates: tuple[str, ...]  # types that agree in all that was compared, m for mirror images
    crossings: int  # of the simplified diagram
    jones: str

    def __str__(self) -> str:
        if self.name is None:
            return f"not in the tables ({self.crossings} crossings, Jones polynomial {self.jones})"
        chirality = "chirality unknown" if self.chirality == UNKNOWN else self.chirality
        text = self.name if self.name in ("0_1",) or " " in self.name else f"{self.name}, {chirality}"
        return text if self.decided else f"{text} (not proved; candidates: {', '.join(self.candidates)})"


@dataclass(frozen=True)
class _Type:
    """A knot type to compare with: factors of the table, each as it stands or mirrored."""

    factors: tuple[tuple[TableEntry, bool], ...]
    jones: Laurent
    alexander: Laurent
    signature: int
    crossings: int = field(compare=False)

    @property
    def name(self) -> str:
        return " # ".join(("m" if mirrored else "") + entry.name for entry, mirrored in self.factors)

    def linking_form(self) -> dict[int, int] | None:
        """None for sums, which the polynomials tell apart."""
        if len(self.factors) > 1:
            return None
        ((entry, mirrored),) = self.factors
        diagram = entry.diagram
        return linking_form(diagram.mirrored() if mirrored else diagram)

    def coloured_jones(self) -> Laurent:
        product = laurent({0: 1}, "A")
        for entry, mirrored in self.factors:
            polynomial = _coloured_of(entry.name)
            product = product * (polynomial.mirrored() if mirrored else polynomial)
        return product


@lru_cache(maxsize=300)
def _coloured_of(name: str) -> Laurent:
    return coloured_jones(find(name).diagram)


def _prime(entry: TableEntry, mirrored: bool) -> _Type:
    lowest, *coefficients = entry.alexander_numbers
    polynomial = {2 * (lowest + n): c for n, c in enumerate(coefficients)}
    centre = (min(polynomial) + max(polynomial)) // 2
    sign = 1 if sum(coefficients) > 0 else -1
    return _Type(
        ((entry, mirrored),),
        entry.jones.mirrored() if mirrored else entry.jones,
        laurent({power - centre: sign * c for power, c in polynomial.items()}, "t", 2),
        -(entry.signature or 0) if mirrored else entry.signature or 0,
        entry.crossings,
    )


@lru_cache(maxsize=1)
def known_types() -> tuple[_Type, ...]:
    """All knot types of 3 to 10 crossings but for the reversal of directions, sums included."""
    primes = [
        _prime(entry, mirrored) for entry in knots() for mirrored in ((False,) if entry.amphicheiral else (False, True))
    ]
    every = list(primes)
    layer = [(n, kind) for n, kind in enumerate(primes)]
    while layer:
        longer = []
        for first, kind in layer:
            for n in range(first, len(primes)):  # factors in the order of the table: each sum once
                if kind.crossings + primes[n].crossings > TABLE_LIMIT:
                    continue
                factor = primes[n]
                longer.append(
                    (
                        n,
                        _Type(
                            kind.factors + factor.factors,
                            kind.jones * factor.jones,
                            kind.alexander * factor.alexander,
                            kind.signature + factor.signature,
                            kind.crossings + factor.crossings,
                        ),
                    )
                )
        every += [kind for _, kind in longer]
        layer = longer
    return tuple(every)


@lru_cache(maxsize=1)
def _by_jones() -> dict[Laurent, list[_Type]]:
    groups: dict[Laurent, list[_Type]] = {}
    for kind in known_types():
        groups.setdefault(kind.jones, []).append(kind)
    return groups


def _narrowed(diagram: PlanarDiagram, polynomial: Laurent) -> tuple[list[_Type], list[str]]:
    """The known types that agree with a diagram of a knot in every invariant asked, and the invariants' names."""
    candidates = list(_by_jones().get(polynomial, []))
    how = ["Jones polynomial", "Alexander polynomial", "signature"]
    found = alexander(diagram), signature(diagram)
    candidates = [kind for kind in candidates if (kind.alexander, kind.signature) == found]
    if len(candidates) > 1:
        how.append("linking form")
        form = linking_form(diagram)
        candidates = [kind for kind in candidates if kind.linking_form() in (None, form)]
    if len(candidates) > 1 and len(diagram) <= COLOURED_LIMIT:
        how.append("coloured Jones polynomial")
        coloured = coloured_jones(diagram)
        candidates = [kind for kind in candidates if kind.coloured_jones() == coloured]
    return candidates, how


def _chirality(kind: _Type) -> str:
    if len(kind.factors) > 1:
        return UNKNOWN
    ((entry, mirrored),) = kind.factors
    return AMPHICHEIRAL if entry.amphicheiral else MIRROR if mirrored else AS_TABLE


def _identify_knot(diagram: PlanarDiagram, use_snappy: bool) -> Identification:
    polynomial = jones(diagram)
    size, text = len(diagram), str(polynomial)
    if not size:
        return Identification("0_1", AMPHICHEIRAL, True, ("a diagram without crossings",), ("0_1",), 0, text)
    candidates, how = _narrowed(diagram, polynomial)
    names = tuple(kind.name for kind in candidates)
    if size <= TABLE_LIMIT and len(candidates) == 1:
        name = names[0].removeprefix("m") if len(candidates[0].factors) == 1 else names[0]
        how.append(f"no other knot to {TABLE_LIMIT} crossings agrees")
        return Identification(name, _chirality(candidates[0]), True, tuple(how), names, size, text)
    if use_snappy:
        entries = [kind.factors[0][0] for kind in candidates if len(kind.factors) == 1]
        found = _by_complement(diagram, [*dict.fromkeys(entries), *_large_entries(polynomial, size)], how)
        if found is not None:
            return Identification(*found, size, text)
    if str(polynomial) == "1" and not candidates:
        names, how = ("0_1",), ["Jones polynomial"]
    elif not candidates:
        names = tuple(_names(_large_entries(polynomial, size), polynomial))
    if len(names) != 1:
        return Identification(names[0] if names else None, UNKNOWN, False, tuple(how), names, size, text)
    prime = "#" not in names[0]
    chirality = _chirality(candidates[0]) if candidates else _large_chirality(names[0])
    return Identification(
        names[0].removeprefix("m") if prime else names[0], chirality, False, tuple(how), names, size, text
    )


def _large_chirality(name: str) -> str:
    if name == "0_1":
        return AMPHICHEIRAL
    entry = find(name.removeprefix("m"))
    return AMPHICHEIRAL if entry.amphicheiral else MIRROR if name.startswith("m") else AS_TABLE


def _names(entries: Sequence[TableEntry], polynomial: Laurent) -> list[str]:
    return [entry.name if entry.amphicheiral or entry.jones == polynomial else "m" + entry.name for entry in entries]


def _large_entries(polynomial: Laurent, size: int) -> list[TableEntry]:
    """Knots of eleven and twelve crossings with this Jones polynomial or its mirror image, if installed."""
    if size <= TABLE_LIMIT:
        return []
    try:
        tables = [large_knots(crossings) for crossings in (11, 12) if crossings <= size]
    except ImportError:
        return []
    both = polynomial, polynomial.mirrored()
    return [entry for table in tables for entry in table if entry.jones in both]


def _by_complement(
    diagram: PlanarDiagram, entries: Sequence[TableEntry], how: Sequence[str]
) -> tuple[str, str, bool, tuple[str, ...], tuple[str, ...]] | None:
    """Name, chirality, proof and candidates where the complement is that of one of the entries or its mirror image."""
    for entry in entries:
        own = entry.diagram
        matches = [complements.compare(diagram, other)[0] is True for other in (own, own.mirrored())]
        if any(matches):
            chirality = AMPHICHEIRAL if all(matches) else AS_TABLE if matches[0] else MIRROR
            name = ("m" if chirality == MIRROR else "") + entry.name
            return entry.name, chirality, True, (*how, "complements by isometry"), (name,)
    return None


# --- links ----------------------------------------------------------------------------------------------------------


def _linking_sizes(matrix: Sequence[Sequence[int]]) -> list[list[int]]:
    return sorted(sorted(abs(x) for j, x in enumerate(row) if j != i) for i, row in enumerate(matrix))


@lru_cache(maxsize=1)
def _links_by_polynomial() -> dict[Laurent, list[TableEntry]]:
    groups: dict[Laurent, list[TableEntry]] = {}
    for entry in links():
        groups.setdefault(unoriented_of(entry), []).append(entry)
    return groups


def _identify_link(diagram: PlanarDiagram, use_snappy: bool) -> Identification:
    polynomial = unoriented_jones(diagram)
    size, text, parts = len(diagram), str(jones(diagram)), len(diagram.components)
    if not size:
        name = f"unlink of {parts} components"
        return Identification(name, AMPHICHEIRAL, True, ("a diagram without crossings",), (name,), 0, text)
    how = ["linking numbers", "Jones polynomial without directions"]
    sizes = _linking_sizes(diagram.linking_matrix())
    mirrored = polynomial.mirrored()
    groups = _links_by_polynomial()
    entries = [*groups.get(polynomial, []), *groups.get(mirrored, [])]
    if size > 9 and use_snappy:
        try:
            tables = [large_links(crossings) for crossings in (10, 11) if crossings <= size]
        except ImportError:
            tables = []
        entries += [entry for table in tables for entry in table if unoriented_of(entry) in (polynomial, mirrored)]
    entries = [
        entry
        for entry in dict.fromkeys(entries)
        if entry.components == parts and _linking_sizes(entry.linking) == sizes
    ]
    proved = len(entries) == 1 and size <= LIMIT and polynomial not in composite_polynomials(size, parts)
    if proved and (polynomial != mirrored or entries[0].name == HOPF):
        how.append(f"no other link to {LIMIT} crossings agrees")
    elif use_snappy and (found := _by_complement(diagram, entries, how)) is not None:
        return Identification(*found, size, text)
    names = tuple(("" if unoriented_of(entry) == polynomial else "m") + entry.name for entry in entries)
    chirality = UNKNOWN
    if len(names) == 1 and polynomial != mirrored:
        chirality = MIRROR if names[0].startswith("m") else AS_TABLE
    elif names == (HOPF,):
        chirality = AMPHICHEIRAL
    best = names[0].removeprefix("m") if len(names) == 1 else names[0] if names else None
    return Identification(best, chirality, proved, tuple(how), names, size, text)


def identify(shape: PlanarDiagram | ArrayLike | Sequence[ArrayLike], use_snappy: bool | None = None) -> Identification:
    """The name of a knot or link, without directions of its components.

    Args:
        shape: a diagram, the vertices (N, 3) of a closed polygon, or a sequence of such for a link.
        use_snappy: compare complements where the polynomials do not prove the type; None: where SnapPy is installed.

    Raises:
        ValueError: points that are no closed curves, or that meet.
        ImportError: `use_snappy` is True and SnapPy is not installed (extra `snappy`).
    """
    diagram = simplified(shape) if isinstance(shape, PlanarDiagram) else diagram_of_curves(shape)
    if use_snappy and not complements.available():
        raise complements.missing()
    asked = complements.available() if use_snappy is None else use_snappy
    return _identify_knot(diagram, asked) if len(diagram.components) == 1 else _identify_link(diagram, asked)
