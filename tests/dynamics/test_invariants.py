"""Impulse, angular impulse and energy of filaments: against the formulas of rings, and along runs."""

import numpy as np
import pytest
import vkmcore
from vkmcore import simulate
from vkmcore.dynamics.invariants import angular_impulse, impulse


def ring(vertices, radius, centre=(0.0, 0.0, 0.0), axis=2):
    points = np.roll(np.asarray(vkmcore.sample_circle(vertices, radius, 0.0)), axis - 2, axis=1)
    return points + np.asarray(centre)


def rings_that_leapfrog(vertices):
    return [{"points": ring(vertices, 1.0, (0.0, 0.0, z)), "circulation": 1.5} for z in (0.0, 0.5)]


def test_the_energy_of_a_thin_ring():
    radius, core, circulation = 1.7, 0.01, 2.5
    errors = []
    for vertices in (50, 100, 200):
        filament = {"points": ring(vertices, radius, (3.0, -1.0, 2.0)), "circulation": circulation}
        kept = simulate([filament], 0.0, {"core_radius": core}, core="solid").invariants()
        thin = 0.5 * circulation**2 * radius * (np.log(8.0 * radius / core) - 0.25 - 1.0)
        errors.append(abs(kept.energy[0] / thin - 1.0))
        assert kept.length[0] == pytest.approx(2.0 * vertices * radius * np.sin(np.pi / vertices))
    assert errors[2] < 2e-4 and errors[0] > 3.0 * errors[1] > 9.0 * errors[2]


def test_impulses_are_those_of_the_integral():
    """Of a polygon of a hundred random vertices, its edges cut finely; and of a displaced ring."""
    points = np.random.default_rng(1).normal(size=(100, 3))
    part = (np.arange(2000) + 0.5) / 2000
    ahead = np.roll(points, -1, axis=0)
    x = (points[:, None] + part[:, None] * (ahead - points)[:, None]).reshape(-1, 3)
    dx = np.repeat((ahead - points) / 2000, 2000, axis=0)
    assert impulse(points, 0.7) == pytest.approx(0.35 * np.cross(x, dx).sum(axis=0), rel=1e-9)
    moment = 0.7 / 3.0 * np.cross(x, np.cross(x, dx)).sum(axis=0)
    assert angular_impulse(points, 0.7) == pytest.approx(moment, rel=1e-5)
    far = ring(400, 1.0, (5.0, 0.0, 0.0))
    assert angular_impulse(far, 1.0) == pytest.approx(np.cross([5.0, 0.0, 0.0], impulse(far, 1.0)), abs=1e-9)


def scene(vertices):
    return [*rings_that_leapfrog(vertices), {"points": ring(3 * vertices // 2, 0.7, (1.6, 0.3, 1.2), axis=0)}]


def changes_of(run):
    kept = run.invariants()
    every = (kept.energy, kept.impulse, kept.angular_impulse)
    return np.array([np.abs(values - values[0]).max() / np.abs(values).max() for values in every])


def test_a_run_keeps_them_to_second_order():
    coarse, fine = (simulate(scene(n), 0.5, {"core_radius": 0.005}, frame_interval=0.1) for n in (40, 80))
    assert np.ptp(fine.invariants().length) > 3e-3 * fine.invariants().length[0]  # what is no invariant
    assert (changes_of(fine) < [2e-3, 7e-4, 3e-4]).all() and (changes_of(fine) < 0.3 * changes_of(coarse)).all()


def test_a_run_by_the_tree_keeps_them_as_well():
    options = {"dt": 1e-5, "frame_interval": 1e-5, "tolerance": 1e-8}
    direct, tree = (
        simulate(scene(2000), 3e-5, {"core_radius": 0.005}, far_field=way, **options) for way in ("direct", "tree")
    )
    assert (direct.far_field, tree.far_field) == ("direct", "tree")
    assert tree.invariants().energy == pytest.approx(direct.invariants().energy, rel=1e-7)
    assert changes_of(tree) == pytest.approx(changes_of(direct), abs=1e-9)


def test_only_sources_count():
    rings = rings_that_leapfrog(40)
    others = [
        {"points": ring(30, 0.4), "source": False, "circulation": 9.0},
        {"points": ring(30, 3.0), "ghost": True, "circulation": 9.0},
    ]
    options = {"core_radius": 0.05}
    alone = simulate(rings, 0.0, options, core="solid").invariants()
    beside = simulate([*rings, *others], 0.0, options, core="solid").invariants()
    for name in ("impulse", "angular_impulse", "energy", "length"):
        assert np.array_equal(getattr(alone, name), getattr(beside, name))
    still = simulate(others[:1], 0.0, options, core="solid").invariants()
    assert still.energy.tolist() == [0.0] and still.impulse.tolist() == [[0.0] * 3]
