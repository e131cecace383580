"""Knots and links as objects: `Knot` and `Link` join curves, topology, tube, mass, dynamics and pictures."""

from vkmcore.knots.knot import Knot
from vkmcore.knots.link import Link

__all__ = ["Knot", "Link"]
