"""Velocities on threads and by the tree, against the one-thread library and a short form of the sum."""

import math

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal
from vkmcore import _engine, curve_velocity, simulate, velocity

OPTIONS = {"a_sim": 0.07, "core_radius": 0.02, "lia_constant": -0.3}
THREADS = (1, 2, 3, 7)


def ring(count, radius=1.0, centre=(0.0, 0.0, 0.0), normal=(0.0, 0.0, 1.0)):
    t = np.arange(count) * 2 * np.pi / count
    n = np.array(normal) / np.linalg.norm(normal)
    a = np.cross(n, [1.0, 0.3, -0.2])
    a /= np.linalg.norm(a)
    return radius * (np.outer(np.cos(t), a) + np.outer(np.sin(t), np.cross(n, a))) + centre


def torus_knot(count, p, q):
    t = np.arange(count) * 2 * np.pi / count
    r = 2 + np.cos(q * t)
    return np.stack([np.cos(p * t) * r, np.sin(p * t) * r, np.sin(q * t)], axis=1)


def tangle(count, rings=12):
    rng = np.random.default_rng(11)
    return [
        {"points": ring(count, *[rng.uniform(0.5, 1.5), rng.uniform(-1, 1, 3), rng.normal(size=3)])}
        for _ in range(rings)
    ]


def bundle():
    """Leapfrogging bundles: two stacks of parallel rings, close together."""
    return [{"points": ring(900, 1 + 0.04 * i, (0, 0, 0.05 * j)), "circulation": 0.5} for i in range(3) for j in (0, 1)]


# Ghosts, passive filaments, filaments of no and of few points, and one that leaves the others' scale.
MIXED = [
    {"points": torus_knot(1100, 2, 3), "circulation": 1.7},
    {"points": ring(700, 0.4, (0.5, 0.1, 1.4)), "circulation": -0.6, "source": False},
    {"points": ring(400, 3.0), "ghost": True},
    {"points": np.zeros((0, 3))},
    {"points": ring(1, 3.0), "circulation": 2.0},
    {"points": ring(33, 1e-3, (4.0, 4.0, 4.0))},
    {"points": np.random.default_rng(3).normal(size=(150, 3)) + 5.0, "circulation": 0.3},
]
SCENES = {
    "trefoil": [{"points": torus_knot(3000, 2, 3)}],
    "torus knot": [{"points": torus_knot(4000, 5, 7), "circulation": -2.0}],
    "tangle": tangle(300),
    "bundle": bundle(),
    "mixed": MIXED,
    "far from the origin, in femtometres": [{"points": 1e-15 * torus_knot(2500, 3, 4) + 1e-12}],
}


def miss(found, expected):
    """Largest difference of velocities, relative to the largest one."""
    difference = np.concatenate(found) - np.concatenate(expected)
    return np.abs(difference).max() / np.linalg.norm(np.concatenate(expected), axis=1).max()


def impulse(curves):
    return sum(np.cross(points, np.roll(points, -1, axis=0)).sum(axis=0) / 2 for points in curves)


@pytest.mark.parametrize("options", [{}, OPTIONS, {"lia_only": True}])
def test_threads_have_the_bits_of_the_library(options):
    expected = _native.compute_filament_velocity(MIXED, options)
    step = _native.rk4_step(MIXED, 1e-3, options)
    for threads in THREADS:
        found = velocity(MIXED, options, threads=threads)
        assert found.far_field == "direct"
        assert found.maximum_speed == expected["maximum_speed"]
        moved = _engine.rk4_step(MIXED, 1e-3, options, threads=threads)
        assert moved["maximum_stage_speed"] == step["maximum_stage_speed"]
        for f, (own, theirs) in enumerate(zip(found.velocity, expected["velocity"])):
            assert np.array_equal(own, theirs)
            assert np.array_equal(moved["filaments"][f]["points"], step["filaments"][f]["points"])
        assert _engine.estimate_cfl_dt(MIXED, options, 0.4, threads=threads) == _native.estimate_cfl_dt(
            MIXED, options, 0.4
        )


def test_fields_on_threads_have_the_bits_of_the_library():
    curve, points = torus_knot(500, 2, 3), np.random.default_rng(2).normal(size=(1001, 3))
    tangents = np.roll(curve, -1, axis=0) - curve
    expected = [_native.biot_savart_velocity(p, curve, tangents, 0.7) for p in points]
    for threads in THREADS:
        field = curve_velocity(curve, points, 0.7, threads=threads)
        assert np.array_equal(field, _native.biot_savart_velocity_grid(curve, points, 0.7))
        assert np.array_equal(_engine.point_velocities(points, curve, tangents, 0.7, threads=threads), expected)


@pytest.mark.parametrize("scene", SCENES)
@pytest.mark.parametrize("softened", [False, True])
def test_the_tree_keeps_its_tolerance(scene, softened):
    filaments = SCENES[scene]
    scale = np.ptp(filaments[0]["points"]) / 6
    options = {"a_sim": 0.07 * scale if softened else 0.0, "core_radius": 0.01 * scale}
    expected = _native.compute_filament_velocity(filaments, options)["velocity"]
    for tolerance in (1e-3, 1e-6, 1e-10):
        found = velocity(filaments, options, far_field="tree", tolerance=tolerance)
        assert found.far_field == "tree"
        assert found.sampled_error <= 0.3 * tolerance
        error = miss(found.velocity, expected)
        assert error <= tolerance
        assert tolerance < 1e-8 or error > 1e-13  # it is not the direct sum


def test_the_tree_has_the_same_bits_for_any_number_of_threads():
    options = {"a_sim": 0.05}
    one = velocity(SCENES["tangle"], options, far_field="tree", threads=1)
    for threads in THREADS[1:]:
        other = velocity(SCENES["tangle"], options, far_field="tree", threads=threads)
        assert all(map(np.array_equal, one.velocity, other.velocity))
        assert one.sampled_error == other.sampled_error


@pytest.mark.parametrize("soft", [0.0, 0.3])
def test_the_tree_at_points_off_the_curve(soft):
    curve = torus_knot(2000, 3, 5)
    points = np.random.default_rng(4).normal(scale=2.0, size=(1500, 3))
    mid, dl = 0.5 * (curve + np.roll(curve, -1, axis=0)), np.roll(curve, -1, axis=0) - curve
    R = points[:, None] - mid[None]
    d = np.sqrt((R * R).sum(axis=2) + soft**2)
    expected = (np.cross(dl[None], R) / d[..., None] ** 3).sum(axis=1) * 1.3 / (4 * math.pi)
    for tolerance in (1e-4, 1e-8):
        found = curve_velocity(curve, points, 1.3, far_field="tree", tolerance=tolerance, soft=soft)
        assert miss([found], [expected]) <= tolerance


def test_points_in_one_place_and_on_a_line():
    """Cells without extent, and curves that induce nothing along themselves."""
    heap = np.concatenate([np.ones((700, 3)), ring(700)])
    expected = curve_velocity(heap, ring(600, 2.0, (0, 0, 1)))
    assert miss([curve_velocity(heap, ring(600, 2.0, (0, 0, 1)), far_field="tree")], [expected]) <= 1e-6
    line = np.outer(np.concatenate([np.arange(1000.0), np.arange(999.0, 0.0, -1.0)]), [1.0, 0.0, 0.0])
    assert np.abs(velocity([{"points": line}], far_field="tree").velocity[0]).max() < 1e-10


def test_what_the_tree_refuses_and_leaves_to_the_direct_sum():
    few = [{"points": ring(50)}]
    assert velocity(few, far_field="tree").far_field == "direct"
    assert miss(velocity(few, far_field="tree").velocity, velocity(few).velocity) < 1e-14
    holed = [{"points": np.where(np.arange(2400).reshape(-1, 3) == 100, np.nan, 1.0)}]
    assert velocity(holed, far_field="tree").far_field == "direct"
    for wrong in ({"far_field": "trees"}, {"tolerance": 0.0}, {"tolerance": math.nan}, {"threads": 0}):
        with pytest.raises(ValueError, match="far_field|tolerance|threads"):
            velocity(few, **wrong)
    with pytest.raises(ValueError, match="finite"):
        curve_velocity(holed[0]["points"], ring(600), far_field="tree")
    with pytest.raises(ValueError, match="soft"):
        curve_velocity(ring(9), ring(9), soft=0.1)


@pytest.mark.parametrize("far_field", ["direct", "tree"])
@pytest.mark.parametrize("threads", [1, 3])
def test_signals_end_velocities(far_field, threads):
    filaments = [{"points": torus_knot(150_000, 5, 7)}]
    with ended_by_a_signal():
        while True:
            velocity(filaments, far_field=far_field, tolerance=1e-9, threads=threads)


def test_runs_by_the_tree_keep_what_is_kept():
    """Two linked rings: impulse and length go as they do by the direct sum, and the result says what was used."""
    filaments = [{"points": ring(600)}, {"points": ring(600, 1.0, (1, 0, 0), (0, 1, 0))}]
    settings = {"t_end": 2e-3, "dt": 2e-4, "options": {"a_sim": 0.05}}
    direct = simulate(filaments, **settings, threads=2)
    tree = simulate(filaments, **settings, far_field="tree", tolerance=1e-7)
    assert (direct.far_field, direct.sampled_error) == ("direct", 0.0)
    assert tree.far_field == "tree" and 0.0 < tree.sampled_error <= 3e-8
    for run in (direct, tree):
        before, after = (impulse(run.frames[k].points) for k in (0, -1))
        assert np.allclose(before, after, rtol=0, atol=1e-5 * np.linalg.norm(before))
    fastest = velocity(filaments, settings["options"]).maximum_speed
    difference = np.abs(np.subtract(tree.frames[-1].points, direct.frames[-1].points)).max()
    assert 0.0 < difference <= 1e-7 * fastest * 2e-3


def test_trajectories_tell_their_far_field(tmp_path):
    filaments = [{"points": ring(600)}]
    settings = {"dt": 1e-4, "frame_interval": 1e-4, "trajectory": tmp_path / "run.npz"}
    whole = simulate(filaments, 3e-4, dt=1e-4, frame_interval=1e-4, far_field="tree")
    simulate(filaments, 2e-4, **settings, far_field="tree")
    with pytest.raises(ValueError, match="far_field"):
        simulate(filaments, 3e-4, **settings, resume=True)
    resumed = simulate(filaments, 3e-4, **settings, resume=True, far_field="tree")
    assert np.array_equal(resumed.frames[-1].points[0], whole.frames[-1].points[0])
