"""Closed curves: the catalogue, the one reader of keys and files, points at equal steps, planar diagrams.

from vkmcore.curves import read_curve, read_curves

trefoil = read_curve("3:1:1")                    # a key of the catalogue, or a file
points = trefoil.sampled(200)                    # (200, 3)
strands = [curve.sampled(200) for curve in read_curves("link.vect")]
"""

from vkmcore.curves.closed_curve import ClosedCurve
from vkmcore.curves.reader import read_curve, read_curves
from vkmcore.curves.resampling import evenly_spaced
from vkmcore.curves.vect import write_vect
from vkmcore.errors import CurveError

__all__ = ["ClosedCurve", "CurveError", "evenly_spaced", "read_curve", "read_curves", "write_vect"]
