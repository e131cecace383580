"""Hyperbolic volumes for `hyperbolic_volume_from_pd`, by SnapPy (https://snappy.computop.org, `pip install snappy`).

The library asks a module of this name for the volume and ships none. Put this folder on the Python path, or copy the
file to where Python finds it:

    PYTHONPATH=examples/hyperbolic_volume_adapter vkmcore pd 4:1:1 --volume

SnapPy brings networkx, which is used here too. Another solver serves as well: all that the library asks of the module
is a function `hyperbolic_volume_from_pd(pd, verbose=False)` that returns a number; what it raises comes through.

A code of the library says which strand is over, not from which side it comes. A planar drawing of the crossings tells,
up to mirror images of the diagram and of its connected summands, so that the volume of a prime knot is certain.
"""

from __future__ import annotations

from collections.abc import Sequence


def hyperbolic_volume_from_pd(pd: Sequence[Sequence[int]], verbose: bool = False) -> float:
    """Volume of the complement of a prime knot; 0.0 if the knot is not hyperbolic.

    Args:
        pd: rows (under in, over in, under out, over out) of arc labels, numbered along the knot from 1.
        verbose: print what SnapPy takes the complement for.

    Raises:
        ValueError: the rows are no planar diagram of one closed curve.
    """
    import snappy

    if not pd:
        return 0.0
    link = snappy.Link(counterclockwise(pd))
    link.simplify("global")
    if not link.crossings:
        return 0.0
    exterior = link.exterior()
    for _ in range(20):  # an unlucky triangulation has no geometric solution; another one of the same manifold may
        kind = exterior.solution_type()
        if kind in ("all tetrahedra positively oriented", "contains negatively oriented tetrahedra"):
            if verbose:
                print(f"{len(link.crossings)} crossings, {exterior.num_tetrahedra()} tetrahedra: {kind}")
            return float(exterior.volume())
        exterior.randomize()
    return 0.0


def counterclockwise(pd: Sequence[Sequence[int]]) -> list[tuple[int, int, int, int]]:
    """The arcs around each crossing in the order that SnapPy reads: counterclockwise from the entering under strand."""
    import networkx

    # A wheel stands for a crossing. Its four spokes keep their order in every drawing, but for reflection.
    graph = networkx.Graph()
    ends: dict[int, list[tuple[int, int]]] = {}
    for crossing, row in enumerate(pd):
        for place, label in enumerate(row):
            graph.add_edge(crossing, (crossing, place))
            graph.add_edge((crossing, place), (crossing, (place + 1) % 4))
            ends.setdefault(label, []).append((crossing, place))
    if sorted(ends) != list(range(1, 2 * len(pd) + 1)) or any(len(places) != 2 for places in ends.values()):
        raise ValueError("hyperbolic_volume_from_pd: each label from 1 on must stand in the code twice")
    graph.add_edges_from(ends.values())
    planar, drawing = networkx.check_planarity(graph)
    if not planar:
        raise ValueError("hyperbolic_volume_from_pd: not a planar diagram of one closed curve")
    rows = []
    for crossing, (under_in, over_in, under_out, over_out) in enumerate(pd):
        around = list(drawing.neighbors_cw_order(crossing))
        clockwise = around[(around.index((crossing, 0)) + 1) % 4] == (crossing, 1)
        rows.append((under_in, over_out, under_out, over_in) if clockwise else (under_in, over_in, under_out, over_out))
    return rows
