"""Alexander polynomial by Fox's calculus on the Wirtinger presentation.

A generator for every over arc; at each crossing a relation in three of them, (1 - t) over + t a - b with a and b the
under arcs on the right and the left of the over strand. A minor of the matrix of the relations is the polynomial up to
a unit +-t^k (Fox, Ann. of Math. 57 (1953) 547). The determinant is computed at t = 2^bits in whole numbers (Bareiss),
and the coefficients are read from its digits.
"""

from __future__ import annotations

from vkmcore.topology.diagram import PlanarDiagram
from vkmcore.topology.laurent import Laurent, laurent, packed_terms


def determinant_of_matrix(entries: list[list[int]]) -> int:
    """Exact determinant of a square matrix of whole numbers, by fraction-free elimination."""
    matrix: list[list[int]] = [list(row) for row in entries]
    sign, previous = 1, 1
    while matrix:
        column = len(matrix) - 1
        candidates = [number for number, row in enumerate(matrix) if row[column]]
        if not candidates:
            return 0
        at = min(candidates, key=lambda number: matrix[number][column].bit_length())
        if at != column:
            matrix[at], matrix[column] = matrix[column], matrix[at]
            sign = -sign
        pivot_row = matrix.pop()
        pivot = pivot_row[column]
        for row in matrix:
            factor = row.pop()
            for k in range(column):
                row[k] = (pivot * row[k] - factor * pivot_row[k]) // previous
        previous = pivot
    return sign * previous


def alexander(diagram: PlanarDiagram) -> Laurent:
    """Alexander polynomial in t, one variable for links too, symmetric about power 0 (half powers: `parts` = 2).

    The sign is such that a knot has value 1 at t = 1, and a link's highest coefficient is positive. 0 for a diagram
    that falls apart; the unlink of one component has 1.
    """
    count = len(diagram)
    if len(diagram.components) > 1 and any(not arcs for arcs in diagram.components):
        return laurent({}, "t", 2)
    if count == 0:
        return laurent({0: 1} if diagram.components else {}, "t", 2)
    over_in = {crossing[3 if sign > 0 else 1] for crossing, sign in zip(diagram.code, diagram.signs)}
    generator: dict[int, int] = {}
    generators = 0
    for arcs in diagram.components:
        first = next((n for n in range(len(arcs)) if arcs[n - 1] not in over_in), None)
        if first is None:  # a component that is never under: it lies apart
            return laurent({}, "t", 2)
        for arc in arcs[first:] + arcs[:first]:
            if arc == arcs[first]:
                generators += 1
            generator[arc] = generators - 1
            if arc not in over_in:
                generators += 1
        generators -= 1
    bits = 2 * count + 3
    t = 1 << bits
    rows = []
    for crossing, sign in zip(diagram.code, diagram.signs):
        row = [0] * generators
        row[generator[crossing[1]]] += 1 - t
        comes, goes = (t, -1) if sign < 0 else (-1, t)
        row[generator[crossing[0]]] += comes
        row[generator[crossing[2]]] += goes
        rows.append(row[1:])
    terms = packed_terms(determinant_of_matrix(rows[1:]), bits)
    if not terms:
        return laurent({}, "t", 2)
    low, high = min(terms), max(terms)
    leading = sum(terms.values()) if len(diagram.components) == 1 else terms[high]
    sign = 1 if leading > 0 else -1
    return laurent({2 * power - low - high: sign * c for power, c in terms.items()}, "t", 2)


def determinant(diagram: PlanarDiagram) -> int:
    """The link's determinant, |Alexander polynomial at t = -1|."""
    polynomial = alexander(diagram)
    return abs(sum(-c if n % 2 else c for n, c in enumerate(polynomial.coefficients[::2])))
