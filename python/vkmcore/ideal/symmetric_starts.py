"""Start polygons with a symmetry that is there by construction.

A plat and a row of twisted columns turn into themselves by half a turn about an axis that meets the knot twice; a
tangle and its image turned by a right angle and reflected make a rotary reflection of order four.
"""

from __future__ import annotations

import math
from collections.abc import Iterator, Sequence
from fractions import Fraction
from itertools import product

import numpy as np

from vkmcore.ideal.fourier_form import Points

STEPS = 8  # of a half twist
BEND = [math.pi * n / 8 for n in range(1, 8)]


def even_fraction(conway: str) -> list[int]:
    """The continued fraction e1 + 1 / (e2 + 1 / ...) with even terms of a two-bridge knot, by the digits of its Conway
    notation. One of q and q - p is even where p is odd."""
    value = Fraction(0)
    for digit in reversed(conway.replace(" ", "")):
        value = Fraction(int(digit)) + (1 / value if value else 0)
    p, q = value.numerator, value.denominator
    rest = Fraction(p, q if q % 2 == 0 else q - p)
    terms = []
    while True:
        term = 2 * round(rest / 2)
        terms.append(term)
        if rest == term:
            return terms
        rest = 1 / (rest - term)


def plat(terms: Sequence[int], sign: int) -> Points:
    """The four-plat of an even continued fraction, with the two-fold axis z.

    Strands stand at x = -3, -1, 1, 3. Odd terms twist the middle pair about z; even ones twist both outer pairs by half
    each, with the sign given, which the half turn about z exchanges. Above, caps join neighbours, below the
    middle pair and the outer pair, across the axis.
    """
    tracks: list[list[Points]] = [[np.array([x, 0.0, 0.0])] for x in (-3.0, -1.0, 1.0, 3.0)]
    order = [0, 1, 2, 3]  # the track at each place
    height = 0.0
    for number, term in enumerate(terms):
        pairs = [(1, 2)] if number % 2 == 0 else [(0, 1), (2, 3)]
        turns = abs(term) if number % 2 == 0 else abs(term) // 2
        sense = math.copysign(1.0, term) * (1 if number % 2 == 0 else sign)
        for _ in range(turns):
            for left, right in pairs:
                middle = left + right - 3.0
                for step in range(1, STEPS + 1):
                    angle = sense * math.pi * step / STEPS
                    for track, side in ((order[left], -1.0), (order[right], 1.0)):
                        x, y = middle + side * math.cos(angle), side * math.sin(angle)
                        tracks[track].append(np.array([x, y, height - 2.0 * step / STEPS]))
                order[left], order[right] = order[right], order[left]
            twisted = {order[place] for pair in pairs for place in pair}
            height -= 2.0
            for slot, track in enumerate(order):
                if track not in twisted:
                    tracks[track].append(np.array([2.0 * slot - 3.0, 0.0, height]))
    partner = {0: 1, 1: 0, 2: 3, 3: 2}
    below = {order[1]: order[2], order[2]: order[1], order[0]: order[3], order[3]: order[0]}
    points: list[Points] = []
    track = 0
    while True:  # down a track, across below, up the next, across above
        points += tracks[track]
        wide = 3.0 if track in (order[0], order[3]) else 1.0
        track = below[track]
        end = tracks[track][-1]
        side = math.copysign(1.0, end[0])
        points += [np.array([-side * wide * math.cos(a), 0.0, height - wide * math.sin(a)]) for a in BEND]
        points += tracks[track][::-1]
        start = tracks[track][0]
        track = partner[track]
        middle = (start[0] + tracks[track][0][0]) / 2.0
        out = start[0] - middle
        points += [np.array([middle + out * math.cos(a), 0.0, abs(out) * math.sin(a)]) for a in BEND]
        if track == 0:
            return np.array(points)


def columns(half_twists: Sequence[int], rest: int) -> Points:
    """A Montesinos knot with tangles 1 / a, the columns of `half_twists`, and an integer, `rest` half twists of the two
    strands behind the last column. The two-fold axis is x, along the row.

    Raises:
        ValueError: it is a link.
    """
    high = 1.0 + max(map(abs, half_twists))
    arcs: list[Points] = []
    for number, count in enumerate(half_twists):
        z = np.linspace(high, -high, STEPS * abs(count) + 1)
        angle = math.pi / 2.0 * (count * z / high + (count % 2))
        strand = np.stack([np.cos(angle), np.sin(angle), z], axis=1)
        middle = np.array([4.0 * number, 0.0, 0.0])
        arcs += [strand + middle, strand * [-1.0, -1.0, 1.0] + middle]
    for number in range(len(half_twists) - 1):
        arch = np.array([[4.0 * number + 2.0 - math.cos(a), 0.0, high + math.sin(a)] for a in [0.0, *BEND, math.pi]])
        arcs += [arch, arch * [1.0, -1.0, -1.0]]
    first = 4.0 * len(half_twists) - 1.0
    last = first + 2.0 * max(1, abs(rest))
    x = np.linspace(first, last, STEPS * max(1, abs(rest)) + 1)
    angle = math.pi * rest * (x - first) / (last - first)
    twist = np.stack([x, np.sin(angle), np.cos(angle)], axis=1)
    leg = np.array([[first - 2.0, 0.0, high], [first - 1.0, 0.0, 1.5]])
    for side in (1.0, -1.0):
        turn = np.array([1.0, side, side])
        home = np.array([[last + 2.0, 0.0, 1.5], [last + 2.0, 0.0, high + 3.0], [-1.0, 0.0, high + 3.0]])
        home = np.vstack([home, [-1.0, 0.0, high]]) * [1.0, twist[-1, 2] * side, twist[-1, 2] * side]
        arcs.append(np.vstack([leg * turn, twist * turn, home]))
    return _joined(arcs)


def tangles(half_twists: Sequence[int]) -> Points:
    """A tangle above the plane z = 0 and its image by a right angle about z and the reflection in the plane.

    Four strands p, q, -p, -q hang from two caps that join p to q and -p to -q. Terms 0, 2, ... twist p and -p about the
    axis; the others twist p and q, and with them -p and -q, about each other. Last, the strands go to the corners of a
    square, where the image meets them.

    Raises:
        ValueError: p and q stand on opposite sides of the axis and are to twist about each other.
    """
    places = [3.0 + 0.0j, 1.0 + 0.0j]  # q and p
    tracks: list[list[complex]] = [[place] for place in places]
    for number, count in enumerate(half_twists):
        for _ in range(STEPS * abs(count)):
            turn = complex(np.exp(1j * math.copysign(math.pi / STEPS, count)))
            inner = min((0, 1), key=lambda track: abs(abs(places[track]) - 1.0))
            if number % 2 == 0:
                places[inner] *= turn
            else:
                middle = (places[0] + places[1]) / 2.0
                places = [middle + turn * (place - middle) for place in places]
            for track, place in zip(tracks, places, strict=True):
                track.append(place)
        if number % 2 == 0 and (places[0] * places[1].conjugate()).real < 0.0 and number + 1 < len(half_twists):
            raise ValueError("p and q stand on opposite sides of the axis")
    inner = min((0, 1), key=lambda track: abs(abs(places[track]) - 1.0))
    for step in range(1, STEPS + 1):
        part = step / STEPS
        tracks[inner].append(places[inner] * (1.0 + 2.0 * part) * complex(np.exp(0.5j * math.pi * part)))
        tracks[1 - inner].append(places[1 - inner])
    heights = np.linspace(2.0 * (1 + sum(map(abs, half_twists))), 0.0, len(tracks[0]))
    q, p = (np.array([[place.real, place.imag, z] for place, z in zip(t, heights, strict=True)]) for t in tracks)
    cap = np.array([[2.0 + math.cos(a), 0.0, heights[0] + math.sin(a)] for a in BEND])
    upper = np.vstack([q[::-1], cap, p])
    turned = upper @ np.array([[0.0, 1.0, 0.0], [-1.0, 0.0, 0.0], [0.0, 0.0, -1.0]])
    return _joined([upper, upper * [-1.0, -1.0, 1.0], turned, turned * [-1.0, -1.0, 1.0]])


def small_tangles(most: int = 3) -> Iterator[Points]:
    """All that `tangles` makes of three terms up to a number, the quick ones first."""
    terms = sorted(product(range(-most, most + 1), repeat=3), key=lambda t: (sum(map(abs, t)), t))
    for chosen in terms:
        try:
            yield tangles(chosen)
        except ValueError:
            continue


def octahedral_clasps(over: float) -> Points:
    """Clasps at the six corners of an octahedron, joined along its twelve edges: 12a_1202.

    At the corner z one strand joins the edges to x and -y, the other those to -x and y. The rotary reflection of order
    6 is about the diagonal of x, y and z, which is then placed along z.

    Args:
        over: 1.0 or -1.0, the handedness of the clasp.
    """
    toward, across = np.array([1.0, -1.0, 0.0]) / math.sqrt(2.0), np.array([1.0, 1.0, 0.0]) / math.sqrt(2.0)
    hook = [(0.5, 0.15, over), (-0.3, 0.15, 0.5 * over), (-0.3, -0.15, -0.5 * over), (0.5, -0.15, -over)]
    loop = [(-0.3, 0.35, 0.0), (0.3, 0.35, 0.0), (0.3, -0.35, 0.0), (-0.3, -0.35, 0.0)]
    arcs = []
    for sign, bend in ((1.0, hook), (-1.0, loop)):
        inner = [0.5 * (d * toward + e * across) + [0.0, 0.0, 1.0 + 0.15 * h] for d, e, h in bend]
        ends = [np.array([0.5 * sign, 0.0, 0.5]), np.array([0.0, -0.5 * sign, 0.5])]
        if np.linalg.norm(ends[0] - inner[0]) > np.linalg.norm(ends[1] - inner[0]):
            ends.reverse()
        arcs.append(np.array([ends[0], *inner, ends[1]]))
    step = np.array([[0.0, -1.0, 0.0], [0.0, 0.0, -1.0], [-1.0, 0.0, 0.0]])  # x to -y, y to -z, z to -x
    turned = [arc @ np.linalg.matrix_power(step, n) for n in range(6) for arc in arcs]
    frame = np.array([[1.0, 1.0, -2.0], [-1.0, 1.0, 0.0], [1.0, 1.0, 1.0]])
    placed: Points = _joined(turned) @ (frame / np.linalg.norm(frame, axis=1)[:, None]).T
    return placed


def _joined(arcs: Sequence[Points]) -> Points:
    """Arcs that meet at their ends as one closed polygon.

    Raises:
        ValueError: they are more than one.
    """
    left = list(arcs[1:])
    points = list(arcs[0])
    while left:
        distances = [min(np.linalg.norm(arc[0] - points[-1]), np.linalg.norm(arc[-1] - points[-1])) for arc in left]
        arc = left.pop(int(np.argmin(distances)))
        if min(distances) > 1e-6:
            raise ValueError("this is a link")
        points += list(arc[1:] if np.linalg.norm(arc[0] - points[-1]) < 1e-6 else arc[-2::-1])
    return np.array(points[:-1])
