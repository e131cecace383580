"""Measures on threads: the bits of the library for any number, and an end by a signal."""

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal
from vkmcore import parallel

THREADS = (1, 2, 3, 7)
RNG = np.random.default_rng(4)


def trefoil(count):
    t = np.arange(count) * 2 * np.pi / count
    r = np.cos(3 * t) + 2
    return np.stack([np.cos(2 * t) * r, np.sin(2 * t) * r, np.sin(3 * t)], axis=1)


CURVES = {
    "trefoil": trefoil(1300),
    "walk": np.cumsum(RNG.normal(size=(701, 3)), axis=0),  # its Gauss sums wander about zero
    "cloud": RNG.normal(size=(400, 3)),
    "square": np.array([[0.0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0.1]]),
    "integers": RNG.integers(-3, 4, size=(300, 3)).astype(float),  # coincident vertices, and terms between two places
    "large": 1e150 * trefoil(200),
    "not a number": np.where(np.arange(600).reshape(-1, 3) == 300, np.nan, trefoil(200)),
}


def in_order(terms):
    return float(np.cumsum(terms)[-1])  # one by one, unlike sum()


def neumann(points, rc):
    """The double loop: the pairs i < j by i, then j."""
    edges, i, j = np.roll(points, -1, axis=0) - points, *np.triu_indices(len(points), 1)
    e, f, r = edges[i], edges[j], points[j] - points[i]
    along = e[:, 0] * f[:, 0] + e[:, 1] * f[:, 1] + e[:, 2] * f[:, 2]
    r2 = r[:, 0] * r[:, 0] + r[:, 1] * r[:, 1] + r[:, 2] * r[:, 2] + rc * rc
    return in_order(2.0 * (along / np.sqrt(r2)))


def record(tube):
    def numbers(item):
        names = [name for name in dir(item) if not name.startswith("_")]
        return [value for name in names if not callable(value := getattr(item, name)) and not isinstance(value, list)]

    return [numbers(tube), [numbers(s) for s in tube.struts], [numbers(k) for k in tube.kinks]]


@pytest.mark.filterwarnings("ignore:overflow:RuntimeWarning", "ignore:invalid value:RuntimeWarning")
@pytest.mark.parametrize("name", CURVES)
def test_threads_have_the_bits_of_the_library(name):
    points = CURVES[name]
    rows = points.tolist()
    expected = [
        _native.calculate_neumann_self_energy(points, 0.1),
        _native.compute_vkm_mass(rows, 2.0),
        _native.compute_writhe(rows),
        list(_native.compute_polygonal_gauss(points).values()),
        list(_native.compute_polygonal_gauss(points, points[::-1] + 0.3, False).values()),
        record(_native.ResolvedTubeGeometry.analyze(rows, 3, 0.05)),
        _native.estimate_crossing_number(rows, 70),
    ]
    np.testing.assert_array_equal(expected[0], neumann(points, 0.1))
    for threads in THREADS:
        found = [
            parallel.neumann_self_energy(points, 0.1, threads=threads),
            parallel.vkm_mass(points, 2.0, threads=threads),
            parallel.writhe(points, threads=threads),
            list(parallel.polygonal_gauss(points, threads=threads).values()),
            list(parallel.polygonal_gauss(points, points[::-1] + 0.3, threads=threads).values()),
            record(parallel.analyze_tube(points, 3, 0.05, threads=threads)),
            parallel.estimate_crossing_number(points, 70, threads=threads),
        ]
        assert repr(found) == repr(expected)  # a NaN is itself


def test_diagrams_and_tails_on_threads():
    evaluator, tail = _native.ParticleEvaluator("4:1:1", 90), _native.TailApproxConfig()
    evaluator.relax(1)
    tail.enabled = True
    evaluator.set_tail_approx_config(tail)
    for threads in THREADS:
        energy = parallel.tail_energy(evaluator.get_filaments(), tail, threads=threads)
        assert energy == evaluator.compute_tail_energy_J(True) > 0.0
        for points in (CURVES["trefoil"], CURVES["walk"]):
            assert parallel.pd_from_curve(points, 70, threads=threads) == _native.pd_from_curve(points, 70)
        with pytest.raises(RuntimeError, match="Failed to extract PD"):
            parallel.pd_from_curve(CURVES["square"] * [1, 1, 0], threads=threads)


@pytest.mark.parametrize("name", ["trefoil", "walk", "square"])
def test_the_tree_keeps_the_bound_of_the_writhe(name):
    points = np.concatenate([CURVES[name], CURVES[name][:1]])
    exact = _native.compute_writhe(points.tolist())
    for tolerance in (1e-2, 1e-5, 1e-9):
        found = parallel.far_writhe(points, tolerance)
        assert found.far_field == ("direct" if len(points) < 512 else "tree")
        assert abs(found.writhe - exact) <= found.error_bound
        assert parallel.far_writhe(points, tolerance, threads=3) == found


LONG = np.cumsum(RNG.normal(size=(60_000, 3)), axis=0)


@pytest.mark.parametrize(
    "call",
    [
        lambda: parallel.neumann_self_energy(LONG, 0.1),
        lambda: parallel.vkm_mass(LONG, 2.0),
        lambda: parallel.writhe(LONG),
        lambda: parallel.polygonal_gauss(LONG),
        lambda: parallel.pd_from_curve(LONG, 1000),
        lambda: parallel.estimate_crossing_number(LONG, 1000),
        lambda: parallel.analyze_tube(RNG.normal(size=(60_000, 3))),
    ],
)
def test_a_signal_ends_them(call):
    with ended_by_a_signal():
        while True:
            call()


def test_numbers_of_threads():
    with pytest.raises(ValueError, match="threads"):
        parallel.writhe(CURVES["square"], threads=0)
