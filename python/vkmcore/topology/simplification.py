"""Fewer crossings: strands that only pass over (or only under) are laid anew along the shortest way.

A run is a part of a component that passes over at every crossing between two passages under. It may be taken up and
put down anywhere else above the diagram with the same ends; the way with the fewest crossings is a shortest path in the
plane graph of the faces, those beside the run merged. Reidemeister moves I and II, nugatory crossings and strands on
the wrong side of a tangle are all such moves, for over runs and, seen from below, for under runs.
"""

from __future__ import annotations

import random
from dataclasses import dataclass

from vkmcore.topology.diagram import PlanarDiagram, diagram_of_darts, faces


@dataclass
class _PlaneGraph:
    """A diagram under change. Removed crossings leave holes until `diagram` is called."""

    darts: list[int]
    signs: list[int]
    owner: list[int]  # for every dart its component
    alive: list[bool]

    def leaves(self, dart: int) -> bool:
        """Whether the strand goes out of the crossing by this dart."""
        slot = dart & 3
        return slot == 2 or slot == (1 if self.signs[dart >> 2] > 0 else 3)


def _graph(diagram: PlanarDiagram) -> _PlaneGraph:
    owner_of = {arc: number for number, arcs in enumerate(diagram.components) for arc in arcs}
    owner = [owner_of[arc] for crossing in diagram.code for arc in crossing]
    return _PlaneGraph(diagram.darts(), list(diagram.signs), owner, [True] * len(diagram.code))


def _diagram(graph: _PlaneGraph, components: int) -> PlanarDiagram:
    new_number: dict[int, int] = {}
    for crossing, alive in enumerate(graph.alive):
        if alive:
            new_number[crossing] = len(new_number)

    def renamed(dart: int) -> int:
        return 4 * new_number[dart >> 2] + (dart & 3)

    old = list(new_number)
    darts = [renamed(graph.darts[4 * crossing + slot]) for crossing in old for slot in range(4)]
    first: list[int | None] = [None] * components
    for crossing in old:
        for slot in range(4):
            dart = 4 * crossing + slot
            if first[graph.owner[dart]] is None and graph.leaves(dart):
                first[graph.owner[dart]] = renamed(dart)
    return diagram_of_darts(darts, [graph.signs[crossing] for crossing in old], first)


def _join_through(graph: _PlaneGraph, crossing: int, slot: int) -> None:
    """Let the strand of a crossing that is taken away go straight on, and forget the crossing's other strand."""
    before, after = graph.darts[4 * crossing + slot], graph.darts[4 * crossing + (slot ^ 2)]
    if before >> 2 == crossing and before & 1 == slot & 1:
        return  # a component that crosses nothing else is left without crossings
    graph.darts[before], graph.darts[after] = after, before


def _runs(graph: _PlaneGraph, over: bool) -> list[list[int]]:
    """For each maximal run the darts that its strand leaves crossings by, the first of another level than the rest.

    A component that never changes level is a run that begins with one of its own darts, which then ends it too.
    """
    runs = []
    level = 1 if over else 0
    seen_whole: set[int] = set()
    changes: set[int] = set()
    for start in range(len(graph.darts)):
        if not graph.alive[start >> 2] or not graph.leaves(start):
            continue
        if start & 1 == level:
            continue
        changes.add(graph.owner[start])
        run = [start]
        while (following := graph.darts[run[-1]] ^ 2) & 1 == level:
            run.append(following)
        if len(run) > 1:
            runs.append(run)
    for start in range(len(graph.darts)):
        owner = graph.owner[start]
        if graph.alive[start >> 2] and graph.leaves(start) and owner not in changes and owner not in seen_whole:
            seen_whole.add(owner)
            run = [start]
            while (following := graph.darts[run[-1]] ^ 2) != start:
                run.append(following)
            runs.append([*run, start])
    return runs


def _shortest_way(
    graph: _PlaneGraph, run: list[int], face: list[int], limit: int, rng: random.Random | None
) -> list[int] | None:
    """Darts crossed from left to right on a way with at most `limit` crossings from the run's start to its end."""
    parent: dict[int, int] = {}

    def find(a: int) -> int:
        while a in parent:
            a = parent[a]
        return a

    blocked: set[int] = set()
    for dart in run:
        blocked.update((dart, graph.darts[dart]))
        a, b = find(face[dart]), find(face[graph.darts[dart]])
        if a != b:
            parent[a] = b
    source, target = find(face[run[0]]), find(face[run[-1]])
    if source == target:
        return []
    around: dict[int, list[int]] = {}
    for dart, number in enumerate(face):
        if number >= 0 and dart not in blocked:
            around.setdefault(find(number), []).append(dart)
    came_by: dict[int, int] = {source: -1}
    layer = [source]
    for _ in range(limit):
        following = []
        for here in layer:
            ways = around.get(here, [])
            if rng is not None:
                rng.shuffle(ways)
            for dart in ways:
                there = find(face[graph.darts[dart]])
                if there not in came_by:
                    came_by[there] = dart
                    following.append(there)
        if target in came_by:
            way = []
            while target != source:
                way.append(came_by[target])
                target = find(face[came_by[target]])
            return way[::-1]
        layer = following
        if rng is not None:
            rng.shuffle(layer)
    return None


def _lay(graph: _PlaneGraph, run: list[int], way: list[int], over: bool) -> None:
    """Take the run up and lay it along the way."""
    owner = graph.owner[run[0]]
    begin, end = run[0], graph.darts[run[-1]]
    last = begin
    for south in way:  # the strand that is crossed runs from south to north or back; the way leads from west to east
        north = graph.darts[south]
        upward = graph.leaves(south)
        new = len(graph.signs)
        if over:
            slots = (south, -1, north, -1) if upward else (north, -1, south, -1)
            west = 3 if upward else 1
            graph.signs.append(1 if upward else -1)
        else:
            slots = (-1, south, -1, north)
            west = 0
            graph.signs.append(-1 if upward else 1)
        crossed = graph.owner[south]
        graph.alive.append(True)
        for slot, outer in enumerate(slots):
            graph.darts.append(outer)
            graph.owner.append(crossed if outer >= 0 else owner)
            if outer >= 0:
                graph.darts[outer] = 4 * new + slot
        graph.darts[4 * new + west] = last
        graph.darts[last] = 4 * new + west
        last = 4 * new + (west ^ 2)
    graph.darts[last], graph.darts[end] = end, last
    _take_away(graph, run)


def _take_away(graph: _PlaneGraph, run: list[int]) -> None:
    """Remove the run's crossings. All of a component that never changes level goes: it lies apart from all others."""
    for dart in run[1:]:
        _join_through(graph, dart >> 2, (dart & 1) ^ 1)
        graph.alive[dart >> 2] = False


def _faces(graph: _PlaneGraph) -> list[int]:
    """As `faces`, with -1 at the darts of removed crossings."""
    face = faces([dart if graph.alive[n >> 2] else n for n, dart in enumerate(graph.darts)])
    return [number if graph.alive[n >> 2] else -1 for n, number in enumerate(face)]


def _shorten(graph: _PlaneGraph) -> None:
    """Lay runs anew as long as one gets shorter, longest first."""
    improved = True
    while improved:
        improved = False
        for over in (True, False):
            face = _faces(graph)
            for run in sorted(_runs(graph, over), key=len, reverse=True):
                if run[0] == run[-1]:
                    _take_away(graph, run)
                else:
                    way = _shortest_way(graph, run, face, len(run) - 2, None)
                    if way is None:
                        continue
                    _lay(graph, run, way, over)
                improved = True
                break
            if improved:
                break


def _untwist(graph: _PlaneGraph) -> None:
    """Reidemeister moves I and II alone, in one sweep: cheap, for diagrams of many crossings."""
    waiting = [crossing for crossing, alive in enumerate(graph.alive) if alive]
    darts = graph.darts

    def remove(crossing: int) -> None:
        graph.alive[crossing] = False
        waiting.extend(dart >> 2 for dart in darts[4 * crossing : 4 * crossing + 4] if graph.alive[dart >> 2])
        for slot in (0, 1):
            _join_through(graph, crossing, slot)

    while waiting:
        crossing = waiting.pop()
        if not graph.alive[crossing]:
            continue
        for slot in range(4):
            dart = 4 * crossing + slot
            following = 4 * crossing + (slot + 1) % 4
            if darts[dart] == following:  # a kink: what comes by one outer dart leaves by the other
                one, other = 4 * crossing + (slot + 2) % 4, 4 * crossing + (slot + 3) % 4
                a, b = darts[one], darts[other]
                graph.alive[crossing] = False
                if a != other:
                    darts[a], darts[b] = b, a
                    waiting.extend((a >> 2, b >> 2))
                break
            # A bigon whose one side lies over the other.
            end = darts[dart]
            other_end = darts[following]
            partner = end >> 2
            if partner != crossing and other_end == 4 * partner + ((end & 3) + 3) % 4 and (end & 1) == (slot & 1):
                remove(crossing)
                remove(partner)
                break


def simplified(diagram: PlanarDiagram, effort: int = 12, seed: int = 1) -> PlanarDiagram:
    """The diagram with as few crossings as laying runs anew finds.

    Args:
        effort: how often runs are laid anew along ways of equal length, drawn at random, to get on from a diagram that
            no single move shortens.
        seed: of those draws; the same arguments give the same diagram.

    The link type, the order of the components and their directions stay.
    """
    graph = _graph(diagram)
    _untwist(graph)
    _shorten(graph)
    best = _diagram(graph, len(diagram.components))
    rng = random.Random(seed)
    tries = 0
    while tries < effort and len(best) > 2:
        tries += 1
        graph = _graph(best)
        for _ in range(4):
            over = rng.random() < 0.5
            runs = [run for run in _runs(graph, over) if len(run) > 2 and run[0] != run[-1]]
            if not runs:
                continue
            run = rng.choice(runs)
            way = _shortest_way(graph, run, _faces(graph), len(run) - 1, rng)
            if way is not None:
                _lay(graph, run, way, over)
        _shorten(graph)
        found = _diagram(graph, len(diagram.components))
        if len(found) < len(best):
            tries = 0
        if len(found) <= len(best):
            best = found
    return best
