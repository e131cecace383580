"""Intervals hold what they should; the proved bound lies just above a dense measurement of the same curve."""

import csv
import itertools
import math
from fractions import Fraction
from pathlib import Path

import numpy as np
import pytest
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.ideal import rigorous_bound
from vkmcore.ideal.campaign_store import Entry, Shape, Store
from vkmcore.ideal.intervals import Interval, dot, interval, maximum, minimum, norm, running_sums, sqrt
from vkmcore.ideal.records import rounded_down, rounded_up
from vkmcore.ideal.rigorous_bound import arc_ratio, ropelength_bound

POLYGONS = Store(Path(__file__).parents[2] / "data" / "polygons")


# --- intervals ----------------------------------------------------------------------------------------------------


def operands():
    """Ends of intervals: of all sizes and signs, and those whose results are hard to round."""
    random = np.random.default_rng(5)
    ends = random.normal(size=400) * 10.0 ** random.integers(-60, 60, size=400)
    hard = [0.0, -0.0, 1.0, -1.0, 1.0 + 2.0**-52, 1.0 - 2.0**-53, 1.0 / 3.0, 0.1, 2.0**-537, 3.0 * 2.0**-540, 1e22]
    return np.concatenate([ends, hard, np.negative(hard)])


def pairs(count=3000):
    random = np.random.default_rng(6)
    a, b = (np.sort(random.choice(operands(), size=(count, 2)), axis=1) for _ in range(2))
    exact = random.random(count) < 0.5  # intervals of one number
    a[exact, 1], b[exact, 1] = a[exact, 0], b[exact, 0]
    return Interval(a[:, 0], a[:, 1]), Interval(b[:, 0], b[:, 1])


def exact(a, k):
    return Fraction(a.lo[k]), Fraction(a.hi[k])


def assert_holds(result, lows_and_highs):
    for k, values in enumerate(lows_and_highs):
        low, high = exact(result, k)
        assert low <= min(values) and max(values) <= high
        if min(values) == max(values) and abs(min(values)) > 1e-290:  # one ulp to either side, and no more
            assert high - low <= abs(min(values)) * Fraction(2.0**-51)


@pytest.mark.parametrize(
    "operation",
    [lambda a, b: a + b, lambda a, b: a - b, lambda a, b: a * b, lambda a, b: a / b],
    ids=["sum", "difference", "product", "quotient"],
)
def test_an_operation_holds_the_exact_results_and_little_more(operation):
    a, b = pairs()
    if operation(6, 3) == 2:
        positive = b.lo > 0.0
        a, b = a[positive], b[positive]
    found = operation(a, b)
    ends = ([operation(x, y) for x, y in itertools.product(exact(a, k), exact(b, k))] for k in range(len(a.lo)))
    assert_holds(found, ends)


def test_roots_sums_products_of_vectors_and_extremes_hold_the_exact_ones():
    a, b = pairs()
    positive = a.lo >= 0.0
    root = sqrt(a[positive])
    for k in range(len(root.lo)):
        (low, high), (least, greatest) = exact(a[positive], k), exact(root, k)
        assert least >= 0 and least**2 <= low and high <= greatest**2
    sums = running_sums(a[:100])
    for ends in ("lo", "hi"):
        total = Fraction(0)
        for k in range(100):
            total += Fraction(getattr(a, ends)[k])
            assert exact(sums, k + 1)[0] <= total <= exact(sums, k + 1)[1]
    vectors = np.random.default_rng(7).normal(size=(2, 200, 3))
    products = dot(interval(vectors[0]), interval(vectors[1]))
    lengths = norm(interval(vectors[0]))
    for k in range(200):
        p, q = ([Fraction(x) for x in v[k]] for v in vectors)
        assert exact(products, k)[0] <= sum(x * y for x, y in zip(p, q)) <= exact(products, k)[1]
        assert exact(lengths, k)[0] ** 2 <= sum(x * x for x in p) <= exact(lengths, k)[1] ** 2
    for function, plain in ((minimum, np.minimum), (maximum, np.maximum)):
        np.testing.assert_array_equal(function(a, b).lo, plain(a.lo, b.lo))
        np.testing.assert_array_equal(function(a, b).hi, plain(a.hi, b.hi))
    with pytest.raises(ZeroDivisionError):
        a / interval(np.zeros(len(a.lo)))


def test_the_series_of_an_arc_bounds_it_from_above():
    mpmath = pytest.importorskip("mpmath")
    for x in [1e-9, 0.01, 0.035, 0.3, 1.0, 7.0, 1e6]:
        true = mpmath.atan(mpmath.mpf(x)) / mpmath.mpf(x)
        found = float(arc_ratio(interval(np.array([x]))).hi[0])
        assert true <= found <= float(true) * (1.0 + 1e-15 + (x / (1.0 + math.hypot(1.0, x))) ** 10 / 8.0)


# --- the bound ----------------------------------------------------------------------------------------------------


def measured(components, samples=9):
    """Length, least radius and half the least distance of the curve with rounded corners, from points on its pieces
    that centres and angles give; a distance found is not below the least one."""
    length, radius, curves = 0.0, math.inf, []
    for points in components:
        after = np.roll(points, -1, axis=0) - points
        sizes = np.linalg.norm(after, axis=1)
        after = after / sizes[:, None]
        before = np.roll(after, 1, axis=0)
        turn = np.arctan2(np.linalg.norm(np.cross(before, after), axis=1), (before * after).sum(axis=1))
        part = np.minimum(sizes, np.roll(sizes, 1)) / 2.0
        places, arcs, total = [], [], 0.0
        for k in range(len(points)):
            r = part[k] / math.tan(turn[k] / 2.0) if turn[k] > 0.0 else math.inf
            radius = min(radius, r)
            begin = points[k] - part[k] * before[k]
            if math.isinf(r):
                steps = np.linspace(0.0, 2.0 * part[k], samples)
                places.append(begin + steps[:, None] * before[k])
            else:
                inward = after[k] - before[k] * math.cos(turn[k])
                inward /= np.linalg.norm(inward)
                angles = np.linspace(0.0, turn[k], samples)[:, None]
                centre = begin + r * inward
                places.append(centre - r * np.cos(angles) * inward + r * np.sin(angles) * before[k])
                steps = r * angles[:, 0]
            arcs.append(total + steps)
            total += steps[-1]
            straight = sizes[k] - part[k] - part[(k + 1) % len(points)]
            count = max(2, int(samples * straight / part[k]))
            steps = np.linspace(0.0, straight, count)
            places.append(points[k] + (part[k] + steps)[:, None] * after[k])
            arcs.append(total + steps)
            total += straight
        length += total
        curves.append((np.concatenate(places), np.concatenate(arcs), total))
    least = math.inf
    for (p, at, total), (q, other, _) in itertools.combinations_with_replacement(curves, 2):
        for begin in range(0, len(p), 200):
            block = slice(begin, begin + 200)
            squares = ((p[block, None] - q[None]) ** 2).sum(axis=2)
            if p is q:
                apart = np.abs(at[block, None] - other[None])
                squares[np.minimum(apart, total - apart) < math.pi * radius] = math.inf
            least = min(least, math.sqrt(squares.min()))
    return length, radius, least / 2.0


def ring(count, radius=1.0, uneven=0.0, seed=3):
    angles = (np.arange(count) + uneven * np.random.default_rng(seed).random(count)) * (math.tau / count)
    return radius * np.stack([np.cos(angles), np.sin(angles), 0.0 * angles], axis=1)


def stadium():
    """Half circles, and sides of longer edges that do not turn."""
    half, side = ring(80)[:41] + [0.0, 1.5, 0.0], np.linspace(1.5, -1.5, 17)[1:-1, None] * [0.0, 1.0, 0.0]
    return np.concatenate([half, side - [1.0, 0.0, 0.0], -half, [1.0, 0.0, 0.0] - side])


def hopf(count=150):
    return [ring(count, 2.0), ring(count - 7, 2.0)[:, [0, 2, 1]] + [2.0, 0.0, 0.0]]


def rough():
    """A trefoil whose edges differ up to a third, so that straight pieces remain."""
    points = POLYGONS.load("3_1").shapes[0.15].components[0]
    edge = np.roll(points, -1, axis=0) - points
    return points + 0.25 * np.random.default_rng(4).random((len(points), 1)) * edge


CURVES = {
    "circle": ([ring(100)], math.tau),
    "uneven circle": ([ring(150, uneven=0.4)], math.tau),
    "stadium": ([stadium()], math.tau),
    "rings beside each other": ([ring(60), 3.0 * ring(50, uneven=0.2) + [4.3, 0.0, 0.1]], 2.0 * math.tau),
    "Hopf link": (hopf(), 8.0 * math.pi),
    "tight trefoil": (POLYGONS.load("3_1").shapes[0.15].components, 31.32),  # Denne, Diao, Sullivan (2006): 15.66
    "rough trefoil": ([rough()], 31.32),
    "tight link": (POLYGONS.load("L6a4").shapes[0.15].components, 8.0 * math.pi),
}


@pytest.mark.parametrize("name", CURVES)
def test_the_bound_is_just_above_the_measured_curve(name, monkeypatch):
    components, known = CURVES[name]
    found = ropelength_bound(components)
    length, radius, half = measured(components)
    thickness = min(radius, half)
    assert length <= found.length * (1.0 + 1e-12) <= length * (1.0 + 1e-8)
    assert found.least_radius <= radius * (1.0 + 1e-12) <= found.least_radius * (1.0 + 1e-9)
    assert found.thickness <= thickness * (1.0 + 1e-12)
    assert known <= found.ropelength and length / thickness * (1.0 - 1e-12) <= found.ropelength
    assert found.ropelength <= length / thickness * (1.0 + 1e-4)  # the points of the measurement miss the least one
    assert found.same_type
    monkeypatch.setattr(rigorous_bound, "HALVINGS", 0)  # chords of whole arcs: a bound as well
    assert ropelength_bound(components).thickness <= found.thickness


def test_tight_shapes_lose_little():
    assert ropelength_bound([ring(100)]).ropelength < math.tau * (1.0 + 1e-5)
    assert ropelength_bound(hopf()).ropelength < 8.0 * math.pi * (1.0 + 1e-3)
    for name in ("3_1", "L2a1"):
        shape = POLYGONS.load(name).shapes[0.07]
        assert ropelength_bound(shape.components).ropelength < shape.ropelength * (1.0 + 5e-5)


def test_the_unit_of_length_the_start_and_the_direction_do_not_matter():
    points = rough()
    found = ropelength_bound([points])
    for factor in (2.0**40, 2.0**-300):
        assert ropelength_bound([points * factor]).ropelength == found.ropelength
    for other in (points * 3.7, points + 5.0, np.roll(points, 40, axis=0), points[::-1], points[:, [1, 2, 0]]):
        assert ropelength_bound([other]).ropelength == pytest.approx(found.ropelength, rel=1e-9)


def test_what_crosses_itself_has_no_bound_and_what_is_coarse_may_be_of_another_type():
    t = np.arange(64) * (math.tau / 64)
    eight = np.stack([np.sin(t), np.sin(2.0 * t), 0.0 * t], axis=1)
    assert ropelength_bound([eight]).ropelength == math.inf
    assert ropelength_bound([ring(40), ring(40) + [1.0, 0.0, 0.0]]).thickness == 0.0
    coarse = ropelength_bound([np.random.default_rng(1).normal(size=(8, 3))])
    assert math.isfinite(coarse.ropelength) and not coarse.same_type


@pytest.mark.parametrize(
    ("change", "message"),
    [
        (lambda p: p[:5], "component 0: expected at least six vertices"),
        (lambda p: p[:, :2], "component 0: expected at least six vertices"),
        (lambda p: np.where(p == p[3, 1], np.nan, p), "component 0: coordinates must be finite"),
        (lambda p: p * 1e200, "component 0: the largest coordinate must be from 1e-100 to 1e\\+100"),
        (lambda p: np.insert(p, 4, p[4], axis=0), "component 0: edge 4 has no length"),
        (lambda p: np.insert(p, 5, p[3], axis=0), "component 0: the curve turns back at vertex 4"),
    ],
    ids=["few", "flat", "nan", "huge", "repeated", "cusp"],
)
def test_bad_polygons_are_refused(change, message):
    with pytest.raises(ValueError, match=message):
        ropelength_bound([change(ring(20))])
    with pytest.raises(ValueError, match="at least one closed polygon"):
        ropelength_bound([])


# --- records ------------------------------------------------------------------------------------------------------


def test_digits_are_rounded_to_the_safe_side():
    assert (rounded_up(1.00001), rounded_up(2.5), rounded_down(0.99999)) == ("1.0001", "2.5000", "0.9999")


def test_the_records_of_a_campaign(tmp_path):
    store = Store(tmp_path / "results")
    trefoil, short = POLYGONS.load("3_1"), POLYGONS.load("10_83")
    finer = trefoil.shapes[0.1]
    shapes = {0.15: Shape(trefoil.shapes[0.15].components, 32.74, 0.15, 1), 0.1: Shape(finer.components, 32.75, 0.1, 1)}
    store.save(Entry("3_1", shapes, certificate="3_1: proved by a finer polygon"))
    store.save(Entry("10_83", {0.15: short.shapes[0.15]}, certificate=short.certificate))
    between = POLYGONS.load("4_1").shapes[0.15].components  # said to be a little above the published 42.0887
    store.save(Entry("4_1", {0.15: Shape(between, 42.1, 0.15, 1)}))  # and so is its bound
    store.save(Entry("10_23", {0.15: Shape(POLYGONS.load("10_23").shapes[0.15].components, 88.7, 0.15, 1)}))
    out = tmp_path / "records.csv"
    arguments = ["catalogue", "records", "--folder", str(store.folder), "--jobs", "1", "--out", str(out)]
    result = CliRunner().invoke(cli, arguments)
    assert result.exit_code == 0 and "3 below the published value, 2 of them proved" in result.stderr
    proved, rounded, other = csv.DictReader(out.read_text().splitlines())
    assert (proved["name"], proved["proved_below_published"]) == ("10_83", "yes")
    assert float(proved["ropelength_at_most"]) == ropelength_bound(store.load("10_83").best.components).ropelength
    assert float(proved["ropelength_at_most"]) < float(proved["published"])
    assert proved["certificate"].startswith("proved by Jones") and proved["edge_0.07"] == proved["extrapolated"] == ""
    assert (other["name"], other["proved_below_published"], other["polygon_edge"]) == ("3_1", "no", "0.15")
    assert float(other["ropelength_at_most"]) > float(other["published"])  # whatever its ropelength was said to be
    assert other["certificate"].startswith("proved by Jones")  # of the shortest polygon, made anew
    assert (rounded["name"], rounded["proved_below_published"]) == ("10_23", "yes")  # said to be above 88.6901
    missing = CliRunner().invoke(cli, ["catalogue", "records", "--folder", str(tmp_path / "none")])
    assert missing.exit_code == 1 and "there is no such folder" in missing.stderr
