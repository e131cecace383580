"""How many vertices of a curve next to one are near it without being contacts."""

from __future__ import annotations

import math

from vkmcore import ResolvedTubeGeometry


def neighbours(points: list[list[float]]) -> int:
    """How many vertices to either side of one are its neighbours and no contacts.

    Two points whose chord is normal to the curve at both ends are at least pi radii of curvature apart along it, for
    the tangent has to turn by pi in between. What is nearer along the curve is near without being a contact.
    """
    radius = ResolvedTubeGeometry.global_minrad(points)
    edge = ResolvedTubeGeometry.edge_length_mean(points)
    most = len(points) // 2
    if not edge > 0.0 or radius >= most * edge:
        return max(most, 1)
    return min(max(int(math.pi * radius / edge), 1), max(most, 1))
