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
from collections.abc import Callable, Iterator

import numpy as np

from vkmcore.curves.resampling import evenly_spaced
from vkmcore.ideal.form_polish import fit
from vkmcore.ideal.fourier_form import FourierForm, Points, measure
from vkmcore.ideal.starts import braid_polygon, twist_polygon
from vkmcore.ideal.stored_form import at_unit_diameter, fseries_text, standardised
from vkmcore.ideal.symmetric_forms import INVERSION, Symmetry, mirrored, nearest_symmetric, rotary, tightened
from vkmcore.ideal.symmetric_starts import columns, even_fraction, octahedral_clasps, plat, small_tangles
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
SAMPLES = 2048  # of a rough polygon, for its series
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
    even = evenly_spaced(points, SAMPLES)
    harmonics = 6
    while harmonics < 200:
        form = fit([even], harmonics, taper=1.6)
        if certified(form):
            return fit([even], harmonics + harmonics // 3, taper=1.6)
        harmonics += 1 + harmonics // 6
    raise ValueError("no fit keeps the type")


def is_type(name: str) -> Callable[[FourierForm], bool]:
    """Whether a form has the Jones polynomial of a name: a quick test, before the certificate."""
    test = is_polygon_of(name)
    return lambda form: test(form.points([max(120, 8 * form.harmonics)])[0])


def is_polygon_of(name: str) -> Callable[[Points], bool]:
    """The same of a closed polygon."""
    from vkmcore.topology.bracket import jones
    from vkmcore.topology.projection import diagram_of_curves

    wanted = find(name).jones

    def test(points: Points) -> bool:
        try:
            diagram = diagram_of_curves([points], directions=6, best=1)
        except ValueError:
            return False
        return len(diagram) < 60 and jones(diagram) == wanted

    return test


def made(key: str, ideal: Callable[[str], FourierForm]) -> tuple[str, FourierForm]:
    """What a key's form is, and the form.

    Args:
        ideal: the ideal shape of a name.

    Raises:
        ValueError: no form of the key keeps its type.
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
    return symmetry.words, symmetric(name, symmetry, ideal)


def key_text(key: str, words: str, form: FourierForm) -> str:
    """The `.fseries` text of a key."""
    name, letter = parts(key)
    form = at_unit_diameter(form)
    alias = next((alias for alias in find(name).aliases[2:]), "") if name[0].isdigit() and "_" in name else ""
    title = f"Knot {name}" + (f" ({alias})" if alias else "") + (f", form {letter}" if letter else "")
    ropelength = measure(form).ropelength
    legend = "harmonics 1, 2, ... in rows: a_x b_x a_y b_y a_z b_z; tube diameter 1"
    return fseries_text([legend, f"{title}: {words}; ropelength {ropelength:.4f} (length over tube radius)"], form)


# Rows of columns, and half twists behind them, of the Montesinos knots whose ideal shape is far from having an axis.
COLUMNS = {"8_15": ((-3, -3, 2), 2)}


KEPT = 0.99  # part of the mean square of an ideal shape that an average keeps where the shape all but has the symmetry


def symmetric(name: str, symmetry: Symmetry, ideal: Callable[[str], FourierForm]) -> FourierForm:
    """A form with a symmetry, tight inside it.

    It comes from the series nearest to an ideal shape that all but has the symmetry, or else from a start that has it
    by construction.

    Raises:
        ValueError: no start keeps the type.
    """
    start = next(symmetric_starts(name, symmetry, ideal), None)
    if start is None:
        raise ValueError(f"{name}: no start with {symmetry.words} keeps the type")
    return tightened(start, symmetry, is_type(name))


def size(form: FourierForm) -> float:
    """Mean square of the distance from the centre."""
    return float(sum((np.abs(c[1:]) ** 2).sum() for c in form.series)) / 2.0


def symmetric_starts(name: str, symmetry: Symmetry, ideal: Callable[[str], FourierForm]) -> Iterator[FourierForm]:
    """Those that keep the type, the likeliest first."""
    conway = find(name).conway
    polygons: list[Points] = []
    if symmetry is INVERSION and conway.isdigit():
        polygons = [plat(even_fraction(conway), sign) for sign in (1, -1)]
    elif symmetry is INVERSION and name in COLUMNS:
        polygons = [columns(*COLUMNS[name])]
    elif name == "12a_1202":
        polygons = [octahedral_clasps(1.0)]
    elif len(symmetry.elements) == 4:
        polygons = list(small_tangles())
    (c,) = ideal(name).series
    rough = FourierForm((c[:41],))
    near = nearest_symmetric(rough, symmetry)
    test, right = is_type(name), is_polygon_of(name)
    if (not polygons or size(near) > KEPT * size(rough)) and test(near):
        yield near
    for polygon in polygons:
        for mirror in (1.0, -1.0):
            points = polygon * [1.0, mirror, 1.0]
            if right(points):
                even = evenly_spaced(points, SAMPLES)
                forms = [nearest_symmetric(fit([even], harmonics, 1.6), symmetry) for harmonics in (25, 50, 100)]
                yield from sorted(filter(test, forms), key=lambda form: measure(form, per_radius=8).ropelength)
