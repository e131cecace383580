"""Elementary functions against mpmath: every result is the double nearest the true value."""

import math
import os

import mpmath
import numpy as np
import pytest
from mpmath import mp, mpf
from vkmcore import _engine

LANE_FORMS = ("sin", "cos", "tan", "asin", "acos", "exp", "log", "hypot")
FUNCTIONS = ("sin", "cos", "tan", "asin", "acos", "exp", "log", "log10", "atan2", "hypot", "pow")
TRUE = {name: getattr(mpmath, name) for name in FUNCTIONS if name != "pow"} | {"pow": mpmath.power}
INF, NAN = math.inf, math.nan


def nearest(value):
    """The double nearest a number of many digits, ties to even, with subnormals and overflow."""
    if value == 0:
        return 0.0
    _, exponent = mpmath.frexp(value)
    if exponent > 1024:
        return math.copysign(INF, value)
    last = max(exponent - 53, -1074)  # exponent of the last place
    whole = int(mpmath.nint(mpmath.ldexp(value, -last)))
    return math.copysign(INF, whole) if abs(whole) == 2**53 and last == 971 else math.ldexp(whole, last)


def expected(name, x, y=None):
    """True values, rounded; 300 bits, since mpmath itself reduces huge angles with as many as it takes."""
    with mp.workprec(300):
        if y is None:
            return np.array([nearest(TRUE[name](mpf(a))) for a in x.tolist()])
        return np.array([nearest(TRUE[name](mpf(a), mpf(b))) for a, b in zip(x.tolist(), y.tolist())])


def any_size(rng, n):
    """Numbers of every exponent, subnormal ones included, and both signs."""
    return np.ldexp(rng.uniform(0.5, 1.0, n), rng.integers(-1073, 1025, n)) * rng.choice([-1.0, 1.0], n)


def mixed(rng, first, second, share=0.5):
    return np.where(rng.random(len(first)) < share, first, second)


def arguments(name, rng, n):
    sizes = any_size(rng, n)
    if name in ("sin", "cos", "tan"):
        return mixed(rng, sizes, rng.uniform(-1, 1, n) * 10.0 ** rng.uniform(-4, 9, n), 0.3), None
    if name == "exp":
        return mixed(rng, sizes, mixed(rng, rng.uniform(-746, 710, n), rng.normal(size=n)), 0.1), None
    if name in ("log", "log10"):
        return np.abs(mixed(rng, sizes, 1 + rng.normal(size=n) * 10.0 ** rng.uniform(-16, -0.5, n))), None
    if name in ("asin", "acos"):
        edges = rng.choice([-1.0, 1.0], n) * (1 - 10.0 ** rng.uniform(-16, 0, n))
        return mixed(rng, rng.uniform(-1, 1, n), mixed(rng, np.clip(sizes, -1, 1), edges)), None
    if name == "pow":
        x = mixed(rng, 10.0 ** rng.uniform(-3, 3, n), np.abs(sizes))
        y = rng.uniform(-1, 1, n) * 745 / np.maximum(np.abs(np.log(x)), 1e-3)
        return x, mixed(rng, rng.choice([2.0, 3.0, 4.0, 5.0, 12.0, 1.5, 0.5, -1.0, -2.0, -3.5], n), y, 0.3)
    near = rng.random(n) < 0.7
    across = rng.normal(size=n) * 10.0 ** rng.uniform(-3, 3, n)
    return np.where(near, rng.normal(size=n), sizes), np.where(near, across, any_size(rng, n))


def hard_arguments(name, rng, n):
    """Arguments whose values lie within some 2^-20 of a last place of a tie, where the function's slope is small."""
    odd = 2 * rng.integers(2**52, 2**53, n) + 1  # of 54 bits: halfway between two doubles of 53
    small = rng.integers(15, 26, n)
    with mp.workprec(300):
        if name in ("sin", "cos"):
            middles = [1 - mpf(int(a)) / 2**54 / 2 ** int(b) for a, b in zip(odd, small)]
            middles = [mpmath.nint(m * 2**54 - mpf(0.5)) + mpf(0.5) for m in middles]
            inverse = mpmath.asin if name == "sin" else mpmath.acos
            return np.array([float(inverse(m / 2**54)) for m in middles]), None
        if name == "exp":
            return np.array(
                [float(mpmath.log(1 + mpf(int(a >> int(b)) | 1) / 2**53)) for a, b in zip(odd, small)]
            ), None
        if name == "atan2":
            y = [mpmath.tan(mpmath.nint((mpmath.pi / 2 - mpf(2) ** -int(b)) * 2**53 - 0.5) / 2**53 + mpf(2) ** -54)
                 for b in small]  # fmt: skip
            return np.array([float(v) for v in y]), np.ones(n)
        if name == "pow":
            y = np.ldexp(1.0, -small)
            x = [mpmath.power(1 + mpf(2 * int(a >> int(b)) | 1) / 2**53, 1 / mpf(c)) for a, b, c in zip(odd, small, y)]
            ties = 2.0 * rng.integers(2**26, 2**26 + 2**24, n) + 1  # squares of 54 bits
            half = rng.random(n) < 0.5
            return np.where(half, [float(v) for v in x], ties), np.where(half, y, 2.0)
    if name == "hypot":  # Pythagorean triples with odd hypotenuses of 54 bits
        u, v = rng.integers(80_000_000, 90_000_000, n) | 1, rng.integers(50_000_000, 60_000_000, n) & ~1
        x, y, z = u * u - v * v, 2 * u * v, u * u + v * v
        keep = (x < 2**53) & (y < 2**53) & (z > 2**53)
        assert keep.sum() > n / 4
        return x[keep].astype(float), y[keep].astype(float)
    return None


def check(name, x, y=None):
    want = expected(name, x, y)
    got = _engine.elementary(name, x, y)
    wrong = np.flatnonzero(got != want)
    assert not len(wrong), [(x[i].hex(), got[i].hex(), want[i].hex()) for i in wrong[:3]]
    if name in LANE_FORMS:
        assert np.array_equal(_engine.elementary(name, x, y, lanes=True), want)


@pytest.mark.parametrize("name", FUNCTIONS)
def test_results_are_the_nearest_doubles(name):
    check(name, *arguments(name, np.random.default_rng(5), 10_000))


@pytest.mark.parametrize("name", ["sin", "cos", "exp", "atan2", "pow", "hypot"])
def test_values_next_to_ties(name):
    check(name, *hard_arguments(name, np.random.default_rng(6), 500))


@pytest.mark.long
@pytest.mark.parametrize("name", FUNCTIONS)
def test_a_million_results(name):
    rng = np.random.default_rng(int(os.environ.get("VKM_SEED", "7")))
    for _ in range(20):
        check(name, *arguments(name, rng, 50_000))


@pytest.mark.parametrize("name", ["sin", "cos", "tan"])
def test_every_power_of_two_and_the_neighbours_of_multiples_of_half_pi(name):
    powers = np.ldexp(1.0, np.arange(-1074, 1024))
    with mp.workprec(1200):
        multiples = np.array([float(mpmath.pi / 2 * k) for k in [*range(1, 200), 10**9 + 7, 2**53 + 1, 10**300]])
    # 6381956970095103 2^797 comes nearer a multiple of pi / 2 than any other double
    check(name, np.concatenate([powers, -powers, multiples, [math.ldexp(6381956970095103, 797)]]))


def same(got, want):
    return [(v, math.copysign(1.0, v)) if v == v else "nan" for v in got] == [
        (v, math.copysign(1.0, v)) if v == v else "nan" for v in want
    ]


@pytest.mark.parametrize(
    ("name", "x", "want"),
    [
        ("sin", [0.0, -0.0, 5e-324, INF, -INF, NAN], [0.0, -0.0, 5e-324, NAN, NAN, NAN]),
        ("tan", [0.0, -0.0, -5e-324, INF, NAN], [0.0, -0.0, -5e-324, NAN, NAN]),
        ("cos", [0.0, -0.0, 5e-324, INF, -INF, NAN], [1.0, 1.0, 1.0, NAN, NAN, NAN]),
        ("asin", [0.0, -0.0, 5e-324, 1.0, -1.0, 1.0000000000000002, INF, NAN],
         [0.0, -0.0, 5e-324, math.pi / 2, -math.pi / 2, NAN, NAN, NAN]),
        ("acos", [1.0, -1.0, 0.0, -0.0, 5e-324, -1.0000000000000002, NAN],
         [0.0, math.pi, math.pi / 2, math.pi / 2, math.pi / 2, NAN, NAN]),
        ("exp", [0.0, -0.0, 5e-324, INF, -INF, 709.782712893384, 709.7827128933841, -745.1332191019411,
                 -745.1332191019412, NAN],
         [1.0, 1.0, 1.0, INF, 0.0, 1.7976931348622732e308, INF, 5e-324, 0.0, NAN]),
        ("log", [0.0, -0.0, 1.0, INF, -1.0, -INF, 5e-324, NAN],
         [-INF, -INF, 0.0, INF, NAN, NAN, -744.4400719213812, NAN]),
        ("log10", [0.0, -0.0, 1.0, 1e15, 1e22, INF, -1.0, NAN], [-INF, -INF, 0.0, 15.0, 22.0, INF, NAN, NAN]),
    ],
)  # fmt: skip
def test_special_values(name, x, want):
    assert same(_engine.elementary(name, x), want)
    if name in LANE_FORMS:
        assert same(_engine.elementary(name, x * 3, lanes=True), want * 3)


@pytest.mark.parametrize("name", ["atan2", "pow", "hypot"])
def test_special_values_of_two_arguments(name):
    """Of Annex F of the C standard, which Python's math module follows where it raises no error."""
    values = [0.0, -0.0, 1.0, -1.0, 0.5, -0.5, 2.0, -2.0, 3.0, -3.0, 1e300, -1e300, 5e-324, -5e-324, INF, -INF, NAN]
    x, y = (np.array(a) for a in zip(*[(a, b) for a in values for b in values]))

    def annex_f(a, b):
        try:
            return getattr(math, name)(a, b)
        except OverflowError:
            return -INF if a < 0 and b % 2 == 1 else INF
        except ValueError:  # of pow: 0 to a negative power, or a root of a negative number
            return NAN if a != 0 else math.copysign(INF, a) if b % 2 == 1 else INF

    assert same(_engine.elementary(name, x, y), [annex_f(a, b) for a, b in zip(x.tolist(), y.tolist())])
    if name in LANE_FORMS:
        assert same(_engine.elementary(name, x, y, lanes=True), _engine.elementary(name, x, y))


def test_results_may_take_the_place_of_many_arguments():
    for count in (*range(1, 18), 512, 1537):  # less than a vector, blocks of lanes, and a rest
        x = np.random.default_rng(count).uniform(-1, 1, count)
        for name in ("sin", "cos", "exp", "acos"):
            assert np.array_equal(_engine.elementary(name, x, lanes=True), _engine.elementary(name, x))


def test_an_unknown_function_is_refused():
    with pytest.raises(ValueError, match="gamma"):
        _engine.elementary("gamma", [1.0])
    with pytest.raises(ValueError, match="same size"):
        _engine.elementary("pow", [1.0, 2.0], [1.0])
