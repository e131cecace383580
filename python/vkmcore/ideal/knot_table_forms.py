"""The forms of the knot table's keys: a knot's name, and a letter for the kind of curve.

| letter | form |
|---|---|
| none | the ideal shape |
| p | nearly planar: the ideal shape, seen with the fewest crossings and pressed along the view |
| t, u | torus curve: t runs round the axis the fewer times, u the more times |
| d | a two-fold axis x that meets the knot twice (strong inversion) |
| s | simple: the ideal shape in the fewest harmonics that keep its type |
| z | rotary reflection about z; a number behind it is its order, 4 without one (8 for 8_18) |
| r | ring: closed braid about the axis z |
| n | twist form: a twisted double strand on a ring, and its clasp |

Every form is scaled to tube diameter 1; its header says what it is and what ropelength it has.
"""

from __future__ import annotations

import math
import re
from collections.abc import Callable, Sequence
from fractions import Fraction

import numpy as np

from vkmcore.ideal.form_polish import fit, shorten
from vkmcore.ideal.fourier_form import FourierForm, Points, measure
from vkmcore.ideal.starts import braid_polygon, twist_polygon
from vkmcore.ideal.stored_form import at_unit_diameter, fseries_text, standardised
from vkmcore.ideal.symmetric_forms import (
    INVERSION,
    Symmetry,
    harvest,
    mirrored,
    nearest_symmetric,
    random_forms,
    rotary,
)
from vkmcore.reference.tables import find

GIVEN = ("1_1", "3_1")  # small examples that stand as they are

KEYS = tuple(
    """
    1_1 3_1 3_1p 3_1u 4_1 4_1d 4_1p 4_1z 5_1 5_1p 5_1u 5_2 5_2d 5_2r 6_1 6_2 6_2d 6_2p 6_3d 6_3z 7_1 7_1p 7_2 7_2d
    7_2r 7_3 7_3d 7_4 7_5 7_5d 7_6d 7_6s 7_7d 8_1 8_1d 8_2 8_2d 8_3 8_3d 8_3z 8_4 8_4d 8_5 8_6 8_6p 8_7d 8_7s 8_8d 8_9d
    8_10s 8_11 8_11d 8_12d 8_12z 8_13d 8_13p 8_14d 8_14r 8_15 8_15d 8_15p 8_16 8_17 8_18 8_18z 8_19t 8_19u 8_20r 8_21d
    8_21p 8_21r 9_2 9_2n 10_1 10_1n 12a_1202 12a_1202z6 15331
    """.split()
)
TORUS = {"3_1": (2, 3), "5_1": (2, 5), "8_19": (3, 4)}
PRESSED = 0.3  # extent of a planar form along the view, as a part of the ideal shape's


def parts(key: str) -> tuple[str, str]:
    """Name and form of a key: "12a_1202z6" is "12a_1202", "z6"."""
    match = re.fullmatch(r"(\d+[an]?_\d+)([a-z]?\d*)", key)
    return (match[1], match[2]) if match else (key, "")


def symmetry_of(key: str) -> Symmetry | None:
    """The symmetry that a form must have."""
    name, form = parts(key)
    if form == "d":
        return INVERSION
    if form.startswith("z"):
        order = int(form[1:] or (8 if name == "8_18" else 4))
        return rotary(order, 3) if order == 8 else rotary(order)
    return None


def planar(ideal: FourierForm) -> FourierForm:
    """The form seen along z with the fewest crossings, pressed along z."""
    from vkmcore.topology.projection import DegenerateProjection, crossings, view_directions

    (points,) = ideal.points([6 * ideal.harmonics])
    points = points / np.ptp(points, axis=0).max()
    best, view = math.inf, np.array([0.0, 0.0, 1.0])
    for direction in view_directions(400):
        try:
            count = len(crossings([points], direction).over)
        except DegenerateProjection:
            continue
        if count < best:
            best, view = count, direction
    side = np.cross(view, [0.0, 0.0, 1.0] if abs(view[2]) < 0.9 else [1.0, 0.0, 0.0])
    side /= np.linalg.norm(side)
    axes = np.stack([side, np.cross(view, side), view])
    return FourierForm(tuple((c @ axes.T) * np.array([1.0, 1.0, PRESSED]) for c in ideal.series))


def torus(p: int, q: int) -> FourierForm:
    """p times round the axis z and q times round a core circle: three harmonics, by the sum of angles. Right-handed."""
    c = np.zeros((p + q + 1, 3), dtype=np.complex128)
    major, minor = 1.0, 0.42 if p < q else 0.55
    for k, size in ((p, major), (p + q, minor / 2.0), (p - q, minor / 2.0)):
        c[abs(k), 0] += size
        c[abs(k), 1] += -1j * size * np.sign(k)
    c[q, 2] += 1j * minor  # -sin(q t)
    return FourierForm((c,))


def simplest_fit(points: Points, certified: Callable[[FourierForm], bool]) -> FourierForm:
    """The curve of a rough polygon in the fewest harmonics (from 6 on, by sixths) that keep its type.

    Raises:
        ValueError: 200 harmonics do not.
    """
    edges = np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1)
    arc = np.concatenate([[0.0], np.cumsum(edges)])
    at = np.arange(2048) * (arc[-1] / 2048)
    closed = np.vstack([points, points[:1]])
    even = np.stack([np.interp(at, arc, closed[:, axis]) for axis in range(3)], axis=1)
    harmonics = 6
    while harmonics < 200:
        form = fit([even], harmonics, taper=1.6)
        if certified(form):
            return fit([even], harmonics + harmonics // 3, taper=1.6)
        harmonics += 1 + harmonics // 6
    raise ValueError("no fit keeps the type")


def is_type(name: str) -> Callable[[FourierForm], bool]:
    """Whether a form has the Jones polynomial of a name: a quick test, before the certificate."""
    from vkmcore.topology.bracket import jones
    from vkmcore.topology.projection import diagram_of_curves

    wanted = find(name).jones

    def test(form: FourierForm) -> bool:
        try:
            diagram = diagram_of_curves(form.points([max(120, 8 * form.harmonics)]), directions=6, best=1)
        except ValueError:
            return False
        return len(diagram) < 60 and jones(diagram) == wanted

    return test


def made(
    key: str, ideal: Callable[[str], FourierForm], symmetric: Callable[[str], FourierForm]
) -> tuple[str, FourierForm]:
    """What a key's form is, and the form.

    Args:
        ideal: the ideal shape of a name.
        symmetric: the form of a key that has a symmetry.
    """
    name, form = parts(key)
    test = is_type(name) if form and form in "turn" else None
    if form == "":
        return "ideal shape", standardised(ideal(name))
    if form == "s":
        (points,) = ideal(name).evenly_spaced([1024])
        return "simple, the ideal shape in the fewest harmonics", simplest_fit(points, is_type(name))
    if form == "p":
        return "nearly planar, with the fewest crossings seen along z", planar(ideal(name))
    if form in ("t", "u"):
        p, q = TORUS[name] if form == "t" else TORUS[name][::-1]
        curve = torus(p, q)
        assert test is not None
        return f"torus curve, {p} times round the axis z", curve if test(curve) else mirrored(curve)
    if form == "r":
        assert test is not None
        return "ring, a closed braid about z", simplest_fit(braid_polygon(find(name).braid).components[0], test)
    if form == "n":
        assert test is not None
        start = twist_polygon(find(name).crossings - 2)
        start = start if test(fit(list(start.components), 200, taper=math.inf)) else start.mirrored()
        return "twist form, a twisted double strand on a ring", simplest_fit(start.components[0], test)
    symmetry = symmetry_of(key)
    assert symmetry is not None
    return symmetry.words, symmetric(key)


def key_text(key: str, words: str, form: FourierForm) -> str:
    """The `.fseries` text of a key."""
    name, letter = parts(key)
    form = at_unit_diameter(form)
    alias = next((alias for alias in find(name).aliases[2:]), "") if name[0].isdigit() and "_" in name else ""
    title = f"Knot {name}" + (f" ({alias})" if alias else "") + (f", form {letter}" if letter else "")
    ropelength = measure(form).ropelength
    legend = "harmonics 1, 2, ... in rows: a_x b_x a_y b_y a_z b_z; tube diameter 1"
    return fseries_text([legend, f"{title}: {words}; ropelength {ropelength:.4f} (length over tube radius)"], form)


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


def symmetric_plat(terms: Sequence[int], sign: int) -> Points:
    """The four-plat of an even continued fraction as a polygon, with the two-fold axis z.

    Strands stand at x = -3, -1, 1, 3. Odd terms twist the middle pair about z; even ones twist both outer pairs by half
    each, with the sign given, which the half turn about z exchanges. Above, caps join neighbours, below the
    middle pair and the outer pair, across the axis.
    """
    steps = 8
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
                for step in range(1, steps + 1):
                    angle = sense * math.pi * step / steps
                    for track, side in ((order[left], -1.0), (order[right], 1.0)):
                        x, y = middle + side * math.cos(angle), side * math.sin(angle)
                        tracks[track].append(np.array([x, y, height - 2.0 * step / steps]))
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
        bend = [math.pi * n / 8 for n in range(1, 8)]
        points += [np.array([-side * wide * math.cos(a), 0.0, height - wide * math.sin(a)]) for a in bend]
        points += tracks[track][::-1]
        start = tracks[track][0]
        track = partner[track]
        middle = (start[0] + tracks[track][0][0]) / 2.0
        out = start[0] - middle
        points += [np.array([middle + out * math.cos(a), 0.0, abs(out) * math.sin(a)]) for a in bend]
        if track == 0:
            return np.array(points)


def symmetric_start(name: str) -> FourierForm:
    """A form of a two-bridge knot with the symmetry `INVERSION`, in few harmonics.

    Raises:
        ValueError: the knot has no plat, or no fit keeps its type.
    """
    conway = find(name).conway
    if not conway.isdigit():
        raise ValueError(f"{name} is no two-bridge knot")
    test = is_type(name)
    for sign in (1, -1):
        points = symmetric_plat(even_fraction(conway), sign)
        for mirror in (1.0, -1.0):
            try:
                form = simplest_fit(points * [1.0, mirror, 1.0], lambda f: test(nearest_symmetric(f, INVERSION)))
            except ValueError:
                continue
            return nearest_symmetric(form, INVERSION)
    raise ValueError(f"no plat of {name} keeps its type")


# Harmonics and fall of the amplitudes of the random series, by symmetry: what the wanted types come from most often.
SERIES = {"d": (7, 1.0), "z": (9, 1.0), "z8": (21, 0.7), "z6": (15, 0.8)}


def symmetric_forms(keys: Sequence[str], tries: int, seed: int) -> dict[str, FourierForm]:
    """Forms of those of the keys that have a symmetry: harvested, given twice the harmonics, and shortened inside the
    symmetry. Keys whose type did not turn up in so many tries are not there."""
    groups: dict[Symmetry, list[str]] = {}
    for key in keys:
        symmetry = symmetry_of(key)
        if symmetry is not None:
            groups.setdefault(symmetry, []).append(key)
    forms = {}
    for symmetry, members in groups.items():
        letter = parts(members[0])[1][0] + (str(len(symmetry.elements)) if len(symmetry.elements) > 4 else "")
        names = {parts(key)[0]: key for key in members}
        found = harvest(random_forms(symmetry, *SERIES[letter][:1], seed, SERIES[letter][1]), names, tries)
        for name, form in found.items():
            (c,) = form.series
            wider = FourierForm((np.vstack([c, np.zeros((2 * len(c), 3))]),))
            forms[names[name]] = shorten(wider, is_type(name), symmetry.project)
    return forms
