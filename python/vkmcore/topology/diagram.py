"""Planar diagrams of oriented knots and links in the standard convention.

A crossing is X[i, j, k, l]: the arcs around it, counterclockwise, from the incoming under strand. The under strand
runs from i to k; the over strand from l to j where the crossing is positive (right-handed), else from j to l.
KnotInfo, KnotTheory and SnapPy read these codes.

Seen as a plane graph, slot s of crossing c is the dart 4 c + s; `darts` pairs the two ends of every arc.
"""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from dataclasses import dataclass

Crossing = tuple[int, int, int, int]


class DiagramError(ValueError):
    """The code is no planar diagram of a link."""


@dataclass(frozen=True)
class PlanarDiagram:
    """An oriented link diagram; arcs are numbered from 1 along the components."""

    code: tuple[Crossing, ...]
    signs: tuple[int, ...]  # +1 or -1, a crossing each
    components: tuple[tuple[int, ...], ...]  # the arcs in order; empty for a component without crossings

    def __len__(self) -> int:
        return len(self.code)

    @property
    def writhe(self) -> int:
        """Sum of the signs."""
        return sum(self.signs)

    def pd_code(self) -> list[list[int]]:
        """The crossings as lists. Components without crossings do not show in a code."""
        return [list(crossing) for crossing in self.code]

    def passages(self) -> list[list[tuple[int, bool]]]:
        """For each component its passages in order from its first arc on: crossing (from 0), and whether over."""
        under = {crossing[0]: (number, False) for number, crossing in enumerate(self.code)}
        over = {crossing[_over_in(sign)]: (n, True) for n, (crossing, sign) in enumerate(zip(self.code, self.signs))}
        leads_to = {**under, **over}
        return [[leads_to[arc] for arc in arcs] for arcs in self.components]

    def strand_components(self) -> list[tuple[int, int]]:
        """The components of the under and of the over strand of each crossing."""
        owner = {arc: number for number, arcs in enumerate(self.components) for arc in arcs}
        return [(owner[crossing[0]], owner[crossing[1]]) for crossing in self.code]

    def linking_matrix(self) -> list[list[int]]:
        """Linking numbers of the components, half the sum of the signs where two of them cross; 0 on the diagonal."""
        size = len(self.components)
        doubled = [[0] * size for _ in range(size)]
        for (a, b), sign in zip(self.strand_components(), self.signs):
            if a != b:
                doubled[a][b] += sign
                doubled[b][a] += sign
        return [[entry // 2 for entry in row] for row in doubled]

    def gauss_code(self) -> list[list[int]]:
        """For each component the crossings passed, numbered from 1 in order of first passage, negative where under."""
        number: dict[int, int] = {}
        return [
            [(1 if over else -1) * number.setdefault(crossing, len(number) + 1) for crossing, over in passages]
            for passages in self.passages()
        ]

    def dt_code(self) -> list[list[int]]:
        """Dowker-Thistlethwaite code: for each component the even labels that meet its labels 1, 3, 5, ...

        An alternating diagram has one sign throughout; the first entry is positive, since the code does not tell a
        diagram from its mirror image. Components follow in the order in which the labels reach them.

        Raises:
            ValueError: the diagram has no crossing, or falls into pieces.
        """
        passages = self.passages()
        if not self.code or any(not component for component in passages):
            raise ValueError("a diagram with a component without crossings has no Dowker-Thistlethwaite code")
        labels: dict[tuple[int, bool], int] = {}
        order: list[list[tuple[int, bool]]] = []
        waiting = list(range(len(passages)))
        while waiting:
            for component in waiting:
                run = passages[component]
                known = [(at, labels[c, not over]) for at, (c, over) in enumerate(run) if (c, not over) in labels]
                if known or not order:
                    break
            else:
                raise ValueError("a diagram that falls into pieces has no Dowker-Thistlethwaite code")
            waiting.remove(component)
            # A crossing pairs an odd with an even label, which says at which passage the labels may begin.
            if known:
                at, partner = known[0]
                begin = (at + partner + len(labels)) % 2
                run = run[begin:] + run[:begin]
            for passage in run:
                labels[passage] = len(labels) + 1
            order.append(run)
        code = []
        for run in order:
            row = []
            for crossing, over in run:
                if labels[crossing, over] % 2:
                    row.append((-1 if over else 1) * labels[crossing, not over])
            code.append(row)
        return code if code[0][0] > 0 else [[-entry for entry in row] for row in code]

    def mirrored(self) -> PlanarDiagram:
        """The mirror image in the plane of the diagram: every crossing changed."""
        changed = [
            (crossing[over], *(crossing[(over + step) % 4] for step in (1, 2, 3)))
            for crossing, over in zip(self.code, map(_over_in, self.signs))
        ]
        code = tuple((a, b, c, d) for a, b, c, d in changed)
        return PlanarDiagram(code, tuple(-sign for sign in self.signs), self.components)

    def with_reversed(self, component: int) -> PlanarDiagram:
        """The diagram with one component's direction reversed."""
        arcs = self.components[component]
        renamed = {old: new for old, new in zip(arcs, reversed(arcs))}
        code, signs = [], []
        for crossing, sign, strands in zip(self.code, self.signs, self.strand_components()):
            a, b, c, d = (renamed.get(arc, arc) for arc in crossing)
            code.append((c, d, a, b) if strands[0] == component else (a, b, c, d))
            signs.append(-sign if (strands[0] == component) != (strands[1] == component) else sign)
        return PlanarDiagram(tuple(code), tuple(signs), self.components)

    def darts(self) -> list[int]:
        """For every dart 4 c + s the dart at the other end of its arc."""
        ends: dict[int, list[int]] = {}
        for number, crossing in enumerate(self.code):
            for slot, arc in enumerate(crossing):
                ends.setdefault(arc, []).append(4 * number + slot)
        paired = [0] * (4 * len(self.code))
        for one, other in ends.values():
            paired[one], paired[other] = other, one
        return paired


def _over_in(sign: int) -> int:
    """The slot by which the over strand comes in."""
    return 3 if sign > 0 else 1


def diagram_of_darts(darts: Sequence[int], signs: Sequence[int], first_darts: Sequence[int | None]) -> PlanarDiagram:
    """The diagram of a plane graph.

    Args:
        darts: the pairing of the darts 4 c + s.
        signs: of the crossings.
        first_darts: for each component a dart that one of its arcs leaves a crossing by; None where it has no crossing.
    """
    arc_of = [0] * len(darts)
    components, count = [], 0
    for first in first_darts:
        arcs: list[int] = []
        dart = first
        while dart is not None:
            count += 1
            arcs.append(count)
            arc_of[dart] = arc_of[darts[dart]] = count
            dart = darts[dart] ^ 2  # on through the crossing
            if dart == first:
                break
        components.append(tuple(arcs))
    code = tuple((arc_of[4 * n], arc_of[4 * n + 1], arc_of[4 * n + 2], arc_of[4 * n + 3]) for n in range(len(signs)))
    return PlanarDiagram(code, tuple(signs), tuple(components))


def faces(darts: Sequence[int]) -> list[int]:
    """For every dart the number of the face on its left, seen along the dart away from its crossing."""
    face = [-1] * len(darts)
    count = 0
    for first in range(len(darts)):
        dart = first
        if face[dart] >= 0:
            continue
        while face[dart] < 0:
            face[dart] = count
            end = darts[dart]
            dart = end - 1 if end & 3 else end + 3  # the next slot clockwise: a turn to the left
        count += 1
    return face


def pieces(darts: Sequence[int]) -> list[int]:
    """For every crossing the number of the connected piece of the diagram that it lies in."""
    piece = [-1] * (len(darts) // 4)
    count = 0
    for first in range(len(piece)):
        if piece[first] >= 0:
            continue
        stack = [first]
        piece[first] = count
        while stack:
            crossing = stack.pop()
            for slot in range(4):
                other = darts[4 * crossing + slot] // 4
                if piece[other] < 0:
                    piece[other] = count
                    stack.append(other)
        count += 1
    return piece


def diagram_of_code(code: Iterable[Sequence[int]], loops: int = 0) -> PlanarDiagram:
    """The diagram of a planar-diagram code in the standard convention.

    Args:
        code: rows X[i, j, k, l]; any whole numbers may name the arcs, each named twice.
        loops: further components, without crossings.

    The components are ordered, and begin, by their least arcs. A component that only passes over runs so that its
    least arc is followed by its second least.

    Raises:
        DiagramError: the rows are no code, the under strands contradict each other, or the code is not planar.
    """
    rows = [tuple(int(arc) for arc in row) for row in code]
    if any(len(row) != 4 for row in rows):
        raise DiagramError("a planar diagram's crossings name four arcs each")
    ends: dict[int, list[int]] = {}
    for number, row in enumerate(rows):
        for slot, arc in enumerate(row):
            ends.setdefault(arc, []).append(4 * number + slot)
    if wrong := [arc for arc, places in sorted(ends.items()) if len(places) != 2]:
        raise DiagramError(f"a planar diagram names every arc twice: arc {wrong[0]} comes {len(ends[wrong[0]])} times")
    darts = [0] * (4 * len(rows))
    for one, other in ends.values():
        darts[one], darts[other] = other, one
    if len(set(faces(darts))) != len(rows) + 2 * len(set(pieces(darts))):
        raise DiagramError("the code is not planar")

    signs = [0] * len(rows)
    first_darts: list[int | None] = []
    seen: set[int] = set()
    for arc in sorted(ends):
        if arc in seen:
            continue
        cycle: list[int] = []
        dart = ends[arc][0]  # of the darts by which arcs leave crossings, in one of the two directions
        while not cycle or dart != cycle[0]:
            cycle.append(dart)
            dart = darts[dart] ^ 2
        names = [rows[dart // 4][dart % 4] for dart in cycle]
        seen.update(names)
        directions = {dart % 4 == 2 for dart in cycle if dart % 2 == 0}
        if len(directions) == 2:
            raise DiagramError(f"the under strands of the component of arc {arc} run against each other")
        forward = directions.pop() if directions else len(names) < 3 or names[1] < names[-1]
        if not forward:  # the other end of each arc leaves; keep the arc that it begins with
            cycle = [darts[dart] for dart in reversed(cycle)]
            cycle = cycle[-1:] + cycle[:-1]
        first_darts.append(cycle[0])
        for dart in cycle:
            if dart % 2:
                signs[dart // 4] = 1 if dart % 4 == 1 else -1
    return diagram_of_darts(darts, signs, [*first_darts, *[None] * loops])
