"""Jones polynomial by Kauffman's bracket, and its coloured kin by cables.

Bracket: <X[i, j, k, l]> = A <i joined to j, k to l> + A^-1 <i to l, j to k>, a loop is -A^2 - A^-2, the unknot is 1.
Jones polynomial: (-A^3)^-writhe <D> at t = A^-4, so that the right-handed trefoil has t + t^3 - t^4
(Kauffman, Topology 26 (1987) 395).

The sum over states grows crossing by crossing: a state of the part taken in is how it joins the arcs that lead out, so
their number depends on the width of the boundary and not on the number of crossings. A polynomial is held as its value
at A = 2^bits, one whole number from which the coefficients are read back at the end.
"""

from __future__ import annotations

from collections.abc import Sequence

from vkmcore.topology.diagram import Crossing, PlanarDiagram
from vkmcore.topology.laurent import Laurent, laurent, packed_terms

WIDEST_BOUNDARY = 24  # arcs; 24 make up to 208012 states, some seconds a crossing
State = tuple[tuple[int, int], ...]  # (arc, the arc that it is joined to), sorted


def boundary_order(code: Sequence[Crossing]) -> list[int]:
    """An order of the crossings that keeps few arcs between those taken and the rest.

    Raises:
        ValueError: they are too many for the sum over states.
    """
    crossings_of: dict[int, list[int]] = {}
    for number, crossing in enumerate(code):
        for arc in crossing:
            crossings_of.setdefault(arc, []).append(number)

    def grow(first: int, limit: int) -> tuple[int, int, list[int]] | None:
        """Widest boundary, sum of its widths, and order; None where it grows wider than the limit."""
        order: list[int] = []
        boundary: set[int] = set()
        taken = [False] * len(code)
        widest = total = 0
        for start in (first, *range(len(code))):  # another start for every connected piece
            crossing = start
            while not taken[crossing]:
                order.append(crossing)
                taken[crossing] = True
                for arc in code[crossing]:
                    boundary ^= {arc}
                widest, total = max(widest, len(boundary)), total + len(boundary)
                if widest > limit:
                    return None
                next_ones = [n for arc in boundary for n in crossings_of[arc] if not taken[n]]
                if next_ones:  # the one that takes most arcs off the boundary
                    crossing = max(next_ones, key=lambda n: (sum(arc in boundary for arc in code[n]), -n))
        return widest, total, order

    best: tuple[int, int, list[int]] | None = None
    for first in range(0, len(code), 1 + len(code) // 12):
        found = grow(first, best[0] if best else WIDEST_BOUNDARY)
        if found is not None and (best is None or found < best):
            best = found
    if best is None and code:
        raise ValueError(
            f"a diagram of {len(code)} crossings is too large for its polynomial: "
            f"more than {WIDEST_BOUNDARY} arcs at once; simplify it first"
        )
    return best[2] if best else []


def _join(ends: dict[int, int], a: int, b: int) -> int:
    """Add a line from arc a to arc b to the joined ends; returns the loops that it closes."""
    if a == b or ends.get(a) == b:
        ends.pop(a, None)
        ends.pop(b, None)
        return 1
    far_a, far_b = ends.pop(a, a), ends.pop(b, b)
    ends[far_a], ends[far_b] = far_b, far_a
    return 0


def _bracket_terms(code: Sequence[Crossing], loops: int) -> dict[int, int]:
    """Power of A -> coefficient of the bracket in which every loop counts, further loops without crossings included."""
    n = len(code)
    bits = 2 * n + 2 * loops + 6
    base = 4 * n + 2 * loops + 4  # power of A that the number is multiplied by, so that it is whole throughout

    def loop(number: int) -> int:
        return -((number << (2 * bits)) + (number >> (2 * bits)))

    states: dict[State, int] = {(): 1 << (bits * base)}
    for crossing in boundary_order(code):
        i, j, k, l = code[crossing]  # noqa: E741
        grown: dict[State, int] = {}
        for state, value in states.items():
            for pairs, weight in ((((i, j), (k, l)), value << bits), (((i, l), (j, k)), value >> bits)):
                ends = dict(state)
                for a, b in pairs:
                    if _join(ends, a, b):
                        weight = loop(weight)
                key = tuple(sorted(ends.items()))
                grown[key] = grown.get(key, 0) + weight
        states = grown
    (value,) = states.values()
    for _ in range(loops):
        value = loop(value)
    return {power - base: c for power, c in packed_terms(value, bits).items()}


def _divided(terms: dict[int, int], divisor: dict[int, int]) -> dict[int, int]:
    """Exact quotient of two polynomials; the divisor's highest coefficient is 1 or -1."""
    rest, quotient = dict(terms), {}
    top = max(divisor)
    lead = divisor[top]
    while rest:
        power = max(rest)
        factor = rest[power] * lead
        quotient[power - top] = factor
        for shift, coefficient in divisor.items():
            at = power - top + shift
            rest[at] = rest.get(at, 0) - factor * coefficient
            if not rest[at]:
                del rest[at]
    return quotient


def kauffman_bracket(diagram: PlanarDiagram) -> Laurent:
    """Kauffman's bracket of the diagram in A, the unknot's being 1.

    Raises:
        ValueError: the diagram is too large, some hundred crossings; simplify it first.
    """
    loops = sum(not arcs for arcs in diagram.components)
    terms = _bracket_terms(diagram.code, loops)
    return laurent(_divided(terms, {2: -1, -2: -1}) if diagram.components else terms, "A")


def _normalised(bracket: Laurent, writhe: int) -> Laurent:
    """(-A^3)^-writhe times the bracket, in t = A^-4, by half powers."""
    sign = -1 if writhe % 2 else 1
    terms = {-(power - 3 * writhe): sign * c for power, c in enumerate(bracket.coefficients, bracket.lowest)}
    return laurent({power // 2: c for power, c in terms.items() if c}, "t", 2)


def jones(diagram: PlanarDiagram) -> Laurent:
    """Jones polynomial of the oriented link in t, by half powers (`parts` = 2)."""
    return _normalised(kauffman_bracket(diagram), diagram.writhe)


def unoriented_jones(diagram: PlanarDiagram) -> Laurent:
    """The bracket times (-A^3)^-w, w the signs of the crossings of components with themselves only, in A.

    An invariant of the link without orientations: reversing a component leaves those signs. For a knot the Jones
    polynomial at t = A^-4.
    """
    own = sum(sign for (under, over), sign in zip(diagram.strand_components(), diagram.signs) if under == over)
    bracket = kauffman_bracket(diagram)
    sign = -1 if own % 2 else 1
    return Laurent(bracket.lowest - 3 * own, tuple(sign * c for c in bracket.coefficients), "A")


# --- cables ---------------------------------------------------------------------------------------------------------


def two_cable(diagram: PlanarDiagram) -> list[Crossing]:
    """The code of two parallel strands along every strand of a diagram, in the blackboard framing, undirected."""

    def strand(arc: int, right: bool) -> int:
        return 4 * arc + right

    inner = 4 * len(diagram.code) * 2 + 4  # pieces between the four crossings
    cabled: list[Crossing] = []
    for (i, j, k, l), sign in zip(diagram.code, diagram.signs):  # noqa: E741
        # The under strands run north from i to k, the over strands between j in the east and l in the west.
        west, east, south, north = range(inner, inner + 4)
        inner += 4
        near = sign > 0  # the southern over strand is on the right of an over strand that runs east
        cabled += [
            (strand(i, True), strand(j, near), east, south),
            (strand(i, False), south, west, strand(l, near)),
            (east, strand(j, not near), strand(k, True), north),
            (west, north, strand(k, False), strand(l, not near)),
        ]
    return cabled


def coloured_jones(diagram: PlanarDiagram) -> Laurent:
    """Coloured Jones polynomial of a knot in dimension three, the unknot's being 1, in A (t = A^-4).

    A^(-8 w) (<two-cable> - 1) / (d^2 - 1) with d = -A^2 - A^-2, w the writhe and every loop of the bracket counting d:
    the second Chebyshev polynomial of the core of the annulus (Masbaum and Vogel, Pacific J. Math. 164 (1994) 361).
    It tells most knots apart that share Jones and Alexander polynomials, 5_1 and 10_132 for one.

    Raises:
        ValueError: the diagram has several components.
    """
    if len(diagram.components) != 1:
        raise ValueError("the coloured Jones polynomial is computed for knots only")
    terms = _bracket_terms(two_cable(diagram), 0 if diagram.code else 2)
    terms[0] = terms.get(0, 0) - 1
    shifted = {power - 8 * diagram.writhe: c for power, c in terms.items() if c}
    return laurent(_divided(shifted, {4: 1, 0: 1, -4: 1}), "A")
