"""Jones polynomials without directions of the links that are no prime links: sums, and unions of parts that lie apart.

A link with a diagram of at most nine crossings is prime and of the tables, or made of such and of unknots: their
polynomials multiply, with -A^2 - A^-2 for each place where parts lie apart and are not joined. So a type of the tables
whose polynomial no other has is proved.
"""

from __future__ import annotations

from collections.abc import Iterator
from functools import lru_cache

from vkmcore.reference.tables import TableEntry, knots, links
from vkmcore.topology.laurent import Laurent, laurent

LIMIT = 9  # crossings of the table of links
APART = laurent({2: -1, -2: -1}, "A")


def unoriented_of(entry: TableEntry) -> Laurent:
    """The unoriented Jones polynomial from the table's: A^(6 lk) V(A^-4), lk the sum of the linking numbers."""
    total = sum(entry.linking[i][j] for i in range(entry.components) for j in range(i)) if entry.linking else 0
    terms = {6 * total - 2 * int(2 * power): c for power, c in entry.jones.terms().items()}
    return laurent(terms, "A")


@lru_cache(maxsize=32)
def composite_polynomials(crossings: int, components: int) -> frozenset[Laurent]:
    """Of all links of so many components that are not prime and have at most so many crossings, of the tables' nine."""
    found = set()
    for polynomial, parts, own in _products(crossings):
        apart = components - own
        if apart < 0 or (parts == 1 and apart == 0):
            continue
        for _ in range(apart):
            polynomial = polynomial * APART
        found.add(polynomial)
    return frozenset(found)


@lru_cache(maxsize=1)
def _primes() -> tuple[tuple[Laurent, int, int], ...]:
    """Polynomial, crossings and components of the prime knots and links to nine crossings, and of the mirror images."""
    kinds = set()
    for entry in (*knots(), *links()):
        if entry.crossings <= LIMIT:
            polynomial = unoriented_of(entry)
            kinds |= {(p, entry.crossings, entry.components) for p in (polynomial, polynomial.mirrored())}
    return tuple(sorted(kinds, key=lambda kind: (kind[1], kind[2], str(kind[0]))))


def _products(crossings: int) -> Iterator[tuple[Laurent, int, int]]:
    """Polynomial, number of factors and components of all sums to so many crossings, unknot and primes among them."""
    layer = [(laurent({0: 1}, "A"), 0, 1, 0, 0)]
    while layer:
        longer = []
        for polynomial, used, own, parts, first in layer:
            yield polynomial, max(parts, 1), own
            for n, (factor, more, its) in enumerate(_primes()[first:], first):
                if used + more <= crossings:
                    longer.append((polynomial * factor, used + more, own + its - 1, parts + 1, n))
        layer = longer
