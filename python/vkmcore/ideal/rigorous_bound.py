"""A proved upper bound of the ropelength of a knot or link, from a closed polygon whose coordinates are taken as exact.

The bound is that of an explicit curve. At every vertex the halves of its two edges are shortened to the lesser one's
length t and the corner is replaced by the circular arc that touches both at distance t from the vertex; what is left of
the longer half stays straight. With x = tan(turn / 2) the arc has the radius t / x and the length 2 t atan(x) / x, and
the tangent turns continuously: the curve is C^{1,1}, its radius of curvature nowhere below R = min t / x.

1. Thickness is the lesser of the least radius of curvature and half the least distance of a doubly critical pair, two
   points whose chord is perpendicular to the curve at both (Litherland, Simon, Durumeric, Rawdon, Topology Appl. 91
   (1999) 233-244; Cantarella, Kusner, Sullivan, Invent. Math. 150 (2002) 257-286).
2. The points p, q of a doubly critical pair of one component are at least pi R apart both ways along it: on a way from
   p to q of length l < pi R the tangent T makes an angle of at most s / R with T(p) after a length s, so that
   (q - p) . T(p) >= R sin(l / R) > 0. The same holds on one arc, which turns by less than pi, and on one straight
   piece, of whatever length. So the least distance of all other points, at least pi R apart or on different
   components, will do.
3. The curve is cut into arcs and straight pieces. A straight piece shorter than `SHORT` of its edge is left out: its
   points are within its length of the arcs at both its ends, and two points not on one piece can be moved to different
   pieces that are kept; distances, in space and along the curve, change by at most twice the longest left out.
4. An arc of half turn a lies within chord / 2 tan(a / 2) of its chord. Halving it halves its length; the tangents at
   the ends of the halves meet at (P + w C) / (1 + w), w = cos(a), where those at the ends P of the arc meet at C.
5. For any n two chords are nowhere nearer than the least n . (p - q) / |n|, which is at ends of both. The best n joins
   their nearest points, which are found in plain arithmetic: an inexact n weakens the bound and leaves it a bound.
6. Pairs whose bound is below the least distance found are halved on; the others, and those nearer than pi R along the
   curve, are done with. The result is not above that least distance, so that it does not matter how it was found.
7. atan(x) / x = 2 / (1 + sqrt(1 + x^2)) atan(y) / y with y = tan(turn / 4) < 1, whose series alternates and falls:
   ended after a positive term it bounds from above.
8. The curve is of the polygon's type if every corner is nearer to its arc than the thickness: the points of the
   corner's sides lie on radii of the arc, in normal discs of the tube, one in each, and move along these to the curve.

Lengths and distances are computed with intervals. Nothing here rests on edges of equal length.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.ideal.fourier_form import nearest_parts
from vkmcore.ideal.intervals import (
    Interval,
    dot,
    down,
    interval,
    joined,
    maximum,
    minimum,
    norm,
    running_sums,
    sqrt,
    up,
)

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    Array = NDArray[np.float64]
    Indices = NDArray[np.int64]

SHORT = 2.0**-16  # part of an edge: what is left straight of it is at most this where it is left out
HALVINGS = 5  # at most
TIGHT = 1e-8  # relative gap of the bound of the distance to the distance found that ends the halving
MOST_PAIRS = 4_000_000
BLOCK = 16384  # pairs at a time
LEAST_SCALE, LARGEST_SCALE = 1e-100, 1e100  # of coordinates: products neither overflow nor vanish


@dataclass(frozen=True)
class RopelengthBound:
    """Bounds of the smooth curve of a polygon, in the polygon's unit of length."""

    length: float  # it is not longer
    least_radius: float  # its radius of curvature is nowhere smaller
    thickness: float  # the radius of its tube is not smaller; 0 if it may cross itself
    ropelength: float  # its length over the radius of its tube is not larger; infinite for thickness 0
    same_type: bool  # whether it is proved to be of the polygon's knot or link type


def ropelength_bound(components: Sequence[ArrayLike]) -> RopelengthBound:
    """Bound the ropelength of the smooth curve that the polygon's corners are rounded to, as the module says.

    Args:
        components: closed polygons (N, 3) of at least six vertices, the first not repeated; any unit of length.

    Returns: RopelengthBound. The ropelength of a curve that crosses itself, or that is not proved not to, is infinite.
    Raises: ValueError for another shape, fewer vertices, coordinates that are not finite or all beyond 1e-100 to 1e100,
    edges of no length, and corners that turn back.
    """
    polygons = [_checked(points, number) for number, points in enumerate(components)]
    if not polygons:
        raise ValueError("a bound needs at least one closed polygon")
    rounded = [_rounded(points, number) for number, points in enumerate(polygons)]
    curvature = max(float(corners.curvature.max()) for corners in rounded)
    radius = float(down(1.0 / curvature))
    left_out = max(corners.left_out for corners in rounded)
    arc = float(down(down(math.pi * radius) - 2.0 * left_out))  # the double math.pi is below pi
    distance = _least_distance(_all_pieces(rounded), arc, 2.0 * radius)
    distance = max(0.0, float(down(distance - 2.0 * left_out)))
    thickness = min(radius, distance / 2.0)
    lengths = np.concatenate([corners.lengths for corners in rounded])
    length = float(running_sums(interval(lengths)).hi[-1])
    corner = max(float(corners.heights.max()) for corners in rounded)
    return RopelengthBound(
        length=length,
        least_radius=radius,
        thickness=thickness,
        ropelength=float(up(length / thickness)) if thickness > 0.0 else math.inf,
        same_type=corner < thickness,
    )


def _checked(points: ArrayLike, number: int) -> Array:
    array = np.asarray(points, dtype=np.float64)
    if array.ndim != 2 or array.shape[1] != 3 or len(array) < 6:
        raise ValueError(f"component {number}: expected at least six vertices, (N, 3), not {array.shape}")
    if not np.isfinite(array).all():
        raise ValueError(f"component {number}: coordinates must be finite")
    if not LEAST_SCALE <= np.abs(array).max() <= LARGEST_SCALE:
        raise ValueError(f"component {number}: the largest coordinate must be from {LEAST_SCALE} to {LARGEST_SCALE}")
    return array


# --- the curve ----------------------------------------------------------------------------------------------------


@dataclass(frozen=True)
class Pieces:
    """Arcs, and straight pieces as arcs of no turn."""

    begin: Interval  # (N, 3)
    corner: Interval  # where the tangents at the ends meet
    end: Interval
    tangent: Interval  # (N,): of half the turn
    length: Array  # at most
    place: Interval  # of the beginning: the sum of these lengths before it
    component: Indices
    total: Array  # of the lengths of its component, at most


@dataclass(frozen=True)
class Rounded:
    """A component with its corners rounded."""

    pieces: Pieces  # all that are not left out
    lengths: Array  # of all, at most
    curvature: Array  # of the arcs, at most
    heights: Array  # of the corners above their arcs, at most
    left_out: float  # length of the longest straight piece that is left out, at most


def half_angle(tangent: Interval) -> Interval:
    """tan(a / 2) of tan(a), a from 0 to below a right angle."""
    return tangent / (sqrt(tangent * tangent + 1.0) + 1.0)


def arc_ratio(tangent: Interval) -> Interval:
    """Bounds from above of atan(x) / x: the length of an arc over that of its two tangents."""
    y = half_angle(tangent)
    z = y * y
    series = interval(1.0) / 9.0
    for odd in (7.0, 5.0, 3.0, 1.0):
        series = interval(1.0) / odd - z * series
    return series * 2.0 / (sqrt(tangent * tangent + 1.0) + 1.0)


def _rounded(points: Array, component: int) -> Rounded:
    vertices = interval(points)
    edges = interval(np.roll(points, -1, axis=0)) - vertices  # edge k leaves vertex k
    sizes = norm(edges)
    if not np.all(sizes.lo > 0.0):
        raise ValueError(f"component {component}: edge {int(np.argmin(sizes.lo > 0.0))} has no length")
    after = edges / sizes[:, None]
    before = _shifted(after, 1)
    width, along = norm(after - before), norm(after + before)  # 2 sin and 2 cos of half the turn
    if not np.all(along.lo > 0.0):
        raise ValueError(f"component {component}: the curve turns back at vertex {int(np.argmin(along.lo > 0.0))}")
    tangent = width / along
    part = minimum(sizes, _shifted(sizes, 1)) * 0.5
    arc_begin, arc_end = vertices - before * part[:, None], vertices + after * part[:, None]
    line_end = _shifted(arc_begin, -1)
    straight = maximum(sizes - part - _shifted(part, -1), 0.0)
    none = interval(np.zeros(len(points)))
    lengths = _alternating(part * 2.0 * arc_ratio(tangent), straight).hi
    places = running_sums(interval(lengths))
    count = len(lengths)
    pieces = Pieces(
        begin=_alternating(arc_begin, arc_end),
        corner=_alternating(vertices, (arc_end + line_end) * 0.5),
        end=_alternating(arc_end, line_end),
        tangent=_alternating(tangent, none),
        length=lengths,
        place=places[:-1],
        component=np.full(count, component),
        total=np.full(count, places.hi[-1]),
    )
    short = straight.hi <= SHORT * sizes.lo
    kept = np.stack([np.full(len(points), True), ~short], axis=1).ravel()
    return Rounded(
        pieces=_selected(pieces, kept),
        lengths=lengths,
        curvature=(tangent / part).hi,
        heights=(part * half_angle(tangent)).hi,
        left_out=float(straight.hi[short].max(initial=0.0)),
    )


def _shifted(a: Interval, places: int) -> Interval:
    return Interval(np.roll(a.lo, places, axis=0), np.roll(a.hi, places, axis=0))


def _alternating(a: Interval, b: Interval) -> Interval:
    """a[0], b[0], a[1], b[1], ..."""
    shape = (2 * len(a.lo), *a.lo.shape[1:])
    return Interval(np.stack([a.lo, b.lo], axis=1).reshape(shape), np.stack([a.hi, b.hi], axis=1).reshape(shape))


def _selected(p: Pieces, kept: NDArray[np.bool_]) -> Pieces:
    return Pieces(**{name: value[kept] for name, value in vars(p).items()})


def _all_pieces(rounded: Sequence[Rounded]) -> Pieces:
    columns: dict[str, Any] = {}
    for name in vars(rounded[0].pieces):
        parts = [getattr(corners.pieces, name) for corners in rounded]
        columns[name] = joined(parts) if isinstance(parts[0], Interval) else np.concatenate(parts)
    return Pieces(**columns)


def halved(p: Pieces) -> Pieces:
    """Each piece in two of equal length: piece k becomes 2 k and 2 k + 1."""
    cosine = (interval(1.0) / sqrt(p.tangent * p.tangent + 1.0))[:, None]
    weighted, whole = p.corner * cosine, cosine + 1.0
    left, right = (p.begin + weighted) / whole, (p.end + weighted) / whole
    middle = (left + right) * 0.5
    length = p.length / 2.0
    tangent = half_angle(p.tangent)
    return Pieces(
        begin=_alternating(p.begin, middle),
        corner=_alternating(left, right),
        end=_alternating(middle, p.end),
        tangent=_alternating(tangent, tangent),
        length=np.repeat(length, 2),
        place=_alternating(p.place, p.place + length),
        component=np.repeat(p.component, 2),
        total=np.repeat(p.total, 2),
    )


# --- its least distance -------------------------------------------------------------------------------------------


@dataclass(frozen=True)
class Chords:
    """Chords of pieces between doubles, with all that separates them from the pieces."""

    begin: Array  # (N, 3)
    along: Interval  # end - begin
    error: Array  # (N,): every point of the piece is at most this far from the chord
    first: Array  # place of the beginning, at least
    last: Array  # place of the end, at most
    component: Indices
    total: Array


def _chords(p: Pieces) -> Chords:
    begin, end = p.begin.middle, p.end.middle
    error = norm(p.end - p.begin) * half_angle(p.tangent) * 0.5
    for exact, chosen in ((p.begin, begin), (p.end, end)):
        inexact = norm(exact - chosen)  # both ends' are added, where the larger would do
        error = error + Interval(np.zeros_like(inexact.hi), inexact.hi)
    along = interval(end) - begin
    last = (p.place + p.length).hi
    return Chords(begin, along, error.hi, p.place.lo, last, p.component, p.total)


def _least_distance(p: Pieces, arc: float, threshold: float) -> float:
    """Bound from below of the lesser of `threshold` and the least distance of points of different pieces that are on
    different components or at least `arc` apart both ways."""
    c = _chords(p)
    i, j, threshold = _coarse_pairs(c, arc, threshold)
    level = 0
    while True:
        apart, surely = _apart(c, i, j, arc)
        i, j, surely = i[apart], j[apart], surely[apart]
        if not len(i):
            return threshold
        least, found = _separations(c, i, j)
        threshold = min(threshold, float(found[surely].min(initial=math.inf)))
        near = least < threshold
        i, j, least = i[near], j[near], least[near]
        bound = float(least.min(initial=threshold))
        level += 1
        if level > HALVINGS or bound >= threshold * (1.0 - TIGHT) or 4 * len(i) > MOST_PAIRS:
            return bound
        p = halved(p)
        c = _chords(p)
        i = np.concatenate([2 * i, 2 * i, 2 * i + 1, 2 * i + 1])
        j = np.concatenate([2 * j, 2 * j + 1, 2 * j, 2 * j + 1])


def _apart(c: Chords, i: Indices, j: Indices, arc: float) -> tuple[NDArray[np.bool_], NDArray[np.bool_]]:
    """Of pairs i < j: whether some points of them are at least `arc` apart both ways, or on different components; and
    whether all are, but for rounding."""
    different = c.component[i] != c.component[j]
    onward = up(c.last[j] - c.first[i])
    back = up(up(c.total[j] - c.first[j]) + c.last[i])
    some = different | ((onward >= arc) & (back >= arc))
    least = np.minimum(c.first[j] - c.last[i], c.total[j] - c.last[j] + c.first[i])
    return some, different | (least >= arc)


def _coarse_pairs(c: Chords, arc: float, threshold: float) -> tuple[Indices, Indices, float]:
    """All pairs i < j of pieces that may be nearer than the threshold, and the threshold, lowered to a distance found.

    Squares of distances are computed in doubles with a relative error below 1e-14, all terms being positive.
    """
    middle = c.begin + c.along.middle / 2.0
    sizes = np.maximum(norm(interval(c.begin) - middle).hi, norm(interval(c.begin) + c.along - middle).hi) + c.error
    pairs: list[tuple[Indices, Indices, Array]] = []
    for begin in range(0, len(middle), 256):
        block = slice(begin, begin + 256)
        x, y, z = (middle[block, None, k] - middle[None, begin:, k] for k in range(3))
        squares = x * x + y * y + z * z
        reach = threshold + sizes[block, None] + sizes[None, begin:]
        i, j = np.nonzero(squares <= reach * reach * (1.0 + 1e-12))
        distances = np.sqrt(squares[i, j])
        i, j = i + begin, j + begin
        ordered = i < j
        i, j, distances = i[ordered], j[ordered], distances[ordered]
        apart, surely = _apart(c, i, j, arc)
        found = (distances + c.error[i] + c.error[j])[surely]  # middles of chords are off the curve
        threshold = min(threshold, float(found.min(initial=math.inf)))
        pairs.append((i[apart], j[apart], distances[apart]))
    i, j, distances = (np.concatenate(part) for part in zip(*pairs))
    near = distances <= (threshold + sizes[i] + sizes[j]) * (1.0 + 1e-12)
    return i[near], j[near], threshold


def _separations(c: Chords, i: Indices, j: Indices) -> tuple[Array, Array]:
    """Bounds from below of the distances of pieces, and about what they are at most."""
    least, found = np.empty(len(i)), np.empty(len(i))
    for begin in range(0, len(i), BLOCK):
        block = slice(begin, begin + BLOCK)
        least[block], found[block] = _separations_of_block(c, i[block], j[block])
    return least, found


def _separations_of_block(c: Chords, i: Indices, j: Indices) -> tuple[Array, Array]:
    u, v, gap = c.along[i], c.along[j], interval(c.begin[i]) - c.begin[j]
    s, t = nearest_parts(u.middle, v.middle, gap.middle)
    direction = interval(gap.middle + s[:, None] * u.middle - t[:, None] * v.middle)
    ends = dot(direction, gap) + minimum(dot(direction, u), 0.0) - maximum(dot(direction, v), 0.0)
    size = norm(direction)
    least = np.where(ends.lo > 0.0, down(ends.lo / size.hi), 0.0)
    error = up(c.error[i] + c.error[j])
    return down(least - error), size.hi + error
