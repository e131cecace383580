"""Where a tube touches itself and how hard it presses there.

A tight knot is in balance: the pull of its length is held by struts, shortest chords between touching strands, and by
kinks, vertices bent to the tube's radius. The struts' multipliers are forces in units of the tension along the curve;
spread over the edges at their feet they are the pressure a unit of length (Cantarella, Fu, Kusner, Sullivan, Wrinkle,
Geometry and Topology 10 (2006)).
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import TYPE_CHECKING

import numpy as np

from vkmcore import ContactStressMap
from vkmcore.parallel import analyze_tube
from vkmcore.tube.tightening import half_turn

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class Contacts:
    """The contacts of a closed polygon of N vertices."""

    struts: Points  # (K, 2, 3), both feet of each
    strut_forces: Points  # (K,) over the tension along the curve
    kinks: Points  # (M, 3), vertices
    kink_forces: Points  # (M,)
    pressure: Points  # (N,) force a unit of length over the tension, a curvature; spread over a tube radius
    residual: float  # part of the pull of the length that the contacts do not hold; 0 for a tight knot


def contacts(points: Points, tolerance: float = 1e-2) -> Contacts:
    """Struts, kinks and the pressure of a closed polygon (N, 3) in any unit of length.

    Args:
        points: the vertices; a hundred are fitted within seconds, and the time grows as a high power of their number.
        tolerance: how far from the thickness, relatively, a pair may be and still count as a contact.

    Raises:
        ValueError: fewer than three vertices, a negative tolerance, or a polygon without thickness.
    """
    width = float(np.ptp(points, axis=0).max()) or 1.0  # the library's cut-offs are lengths of its own
    skip = half_turn(points / width)
    unit = width * analyze_tube(points / width, skip, 0.0).thickness_rad
    if not unit > 0.0:
        raise ValueError("the polygon has no thickness: it meets itself")
    scaled = points / unit
    tube = analyze_tube(scaled, skip, 0.5 * tolerance)  # taken relatively and absolutely
    rigidity = ContactStressMap.build_sparse_rigidity_matrix(scaled.tolist(), tube)
    stress = ContactStressMap.diagnose_length_criticality(scaled.tolist(), tube)
    strut_forces, kink_forces = np.zeros(len(tube.struts)), np.zeros(len(tube.kinks))
    for column, force in zip(rigidity.columns, stress.multipliers, strict=True):
        if column.kind == "strut":
            strut_forces[column.strut_index] = force
        else:
            kink_forces[column.kink_index] = force

    ahead = np.roll(points, -1, axis=0)
    edges = np.linalg.norm(ahead - points, axis=1)
    feet = np.array([[(pair.i, pair.s), (pair.j, pair.t)] for pair in tube.struts]).reshape(-1, 2, 2)
    edge, part = feet[..., 0].astype(int), feet[..., 1]
    load = np.zeros(len(points))
    half = 0.5 * strut_forces[:, None]  # the column is the gradient of half the distance
    np.add.at(load, edge, half * (1.0 - part))
    np.add.at(load, (edge + 1) % len(points), half * part)
    return Contacts(
        struts=points[edge] * (1.0 - part[..., None]) + ahead[edge] * part[..., None],
        strut_forces=strut_forces,
        kinks=points[[kink.vertex for kink in tube.kinks]].reshape(-1, 3),
        kink_forces=kink_forces,
        pressure=_spread(load, edges, unit),
        residual=float(stress.contact_residual),
    )


def _spread(load: Points, edges: Points, width: float) -> Points:
    """Forces at vertices as a force a unit of length, by a Gaussian of standard deviation width / 2 along the curve.

    The fit chooses few among many struts that are nearly one: by itself each is a needle.
    """
    length = float(edges.sum())
    arc = np.cumsum(edges) - edges
    apart = np.abs(arc[:, None] - arc[None, :])
    apart = np.minimum(apart, length - apart)
    weight = np.exp(-2.0 * (apart / width) ** 2)
    share = 0.5 * (edges + np.roll(edges, 1))  # length that belongs to a vertex
    spread: Points = weight @ (load / (share @ weight))
    return spread
