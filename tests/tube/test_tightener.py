"""The tightener: its loop against the same loop over the public operations, corrections, stop reasons, bad input."""

import math

import _native as vkm
import numpy as np
import pytest
from interruption import ended_by_a_signal
from vkmcore.tube.tightening import watched_tighten

Geometry = vkm.ResolvedTubeGeometry
Tightener = vkm.ResolvedTubeTightener
Map = vkm.ContactStressMap

OPTIONS = {
    "max_steps": 100,
    "line_search_trials": 24,
    "nnls_max_iterations": 2000,
    "skip_neighbors": 2,
    "contact_tol": 0.001,
    "equilateral_tol": 0.001,
    "target_kkt_residual": 0.0001,
    "nnls_tolerance": 1e-10,
    "max_step_size": 0.01,
    "min_step_size": 1e-8,
    "line_search_shrink": 0.5,
    "thickness_floor_fraction": 0.999,
    "ropelength_increase_tolerance": 1e-10,
    "newton_correction_damping": 1.0,
    "newton_ridge": 1e-10,
    "use_sparse_solver": True,
    "use_active_set_solver": True,
    "use_analytic_kink_gradient": True,
    "normalize_direction": True,
    "preserve_initial_thickness": True,
    "correction_strategy": "newton",
}


def options(**changes):
    made = vkm.TighteningOptions()
    for name, value in changes.items():
        setattr(made, name, value)
    return made


def trefoil(n=40):
    t = 2.0 * np.pi * np.arange(n) / n
    return np.column_stack(
        [np.sin(t) + 2.0 * np.sin(2.0 * t), np.cos(t) - 2.0 * np.cos(2.0 * t), -np.sin(3.0 * t)]
    ).tolist()


def circle(n, radius=1.0):
    t = 2.0 * np.pi * np.arange(n) / n
    return np.column_stack([radius * np.cos(t), radius * np.sin(t), 0.0 * t]).tolist()


def ordered_norm(values):
    total = 0.0
    for value in values:
        total += value * value
    return math.sqrt(total)


def analyze(points, o):
    return Geometry.analyze(points, o.skip_neighbors, o.contact_tol, o.equilateral_tol)


def plain_direction(points, tube, o):
    """(direction, residual over gradient norm, algorithm) from the public matrix and fit."""
    gradient = Geometry.length_gradient_flat(points)
    build = Map.build_sparse_rigidity_matrix if o.use_sparse_solver else Map.build_rigidity_matrix
    matrix = build(points, tube, True, True, 1e-6, o.use_analytic_kink_gradient)
    fit, algorithm = [0.0] * len(gradient), ""
    if matrix.column_count:
        form = "_sparse" if o.use_sparse_solver else ""
        limits = (o.nnls_max_iterations, o.nnls_tolerance)
        if o.use_active_set_solver:
            solve = getattr(Map, f"solve_nonnegative_least_squares{form}_active_set")
            result = solve(matrix, gradient, *limits, 1e-12)
        else:
            result = getattr(Map, f"solve_nonnegative_least_squares{form}")(matrix, gradient, *limits)
        algorithm = result.algorithm
        dense = Map.sparse_to_dense(matrix) if o.use_sparse_solver else matrix
        for column, x in zip(dense.columns, result.multipliers):
            if x != 0.0:
                fit = [f + value * x for f, value in zip(fit, column.values)]
    direction = [f - g for f, g in zip(fit, gradient)]
    return direction, ordered_norm(direction) / max(ordered_norm(gradient), 1e-14), algorithm


def plain_tighten(points, o):
    """The loop over the public operations; (points, rows of the history, reason)."""
    tube = analyze(points, o)
    first, history = tube.thickness_rad, []
    for step in range(o.max_steps):
        direction, kkt, algorithm = plain_direction(points, tube, o)
        if kkt <= o.target_kkt_residual:
            return points, history, "target_kkt_residual"
        norm = ordered_norm(direction)
        if o.normalize_direction:
            largest = max(ordered_norm(direction[k : k + 3]) for k in range(0, len(direction), 3))
            direction = [value / largest for value in direction]
        floor = max(o.thickness_floor_fraction, 0.0) * tube.thickness_rad
        hold = first if o.preserve_initial_thickness else floor
        alpha, accepted, corrected, trial = max(o.max_step_size, o.min_step_size), False, False, 0
        before, after, best = tube, tube, points
        while alpha >= o.min_step_size and trial < o.line_search_trials:
            candidate = [
                [x + alpha * direction[3 * v + axis] for axis, x in enumerate(p)] for v, p in enumerate(points)
            ]
            tried = analyze(candidate, o)
            corrected = tried.thickness_rad < floor or (o.preserve_initial_thickness and tried.thickness_rad < hold)
            if corrected:
                candidate = Tightener.correct_thickness(candidate, hold, o)
                tried = analyze(candidate, o)
            holds = not tried.thickness_rad + 1e-12 < floor
            if o.preserve_initial_thickness:
                holds = holds and not tried.thickness_rad + 1e-12 < hold * o.thickness_floor_fraction
            rise = max(before.ropelength_rad, 1.0) * max(o.ropelength_increase_tolerance, 0.0)
            shorter = tried.ropelength_rad <= before.ropelength_rad + rise or tried.length < before.length
            if holds and shorter and tried.thickness_rad > 0.0:
                accepted, after, best = True, tried, candidate
                break
            alpha *= min(max(o.line_search_shrink, 0.05), 0.95)
            trial += 1
        history.append(
            (step, before.ropelength_rad, after.ropelength_rad, before.thickness_rad, after.thickness_rad)
            + (before.length, after.length, kkt, norm, alpha, len(before.struts), len(before.kinks))
            + (accepted, accepted and corrected, o.correction_strategy, algorithm)
        )
        points, tube = best, after
        if not accepted:
            return points, history, "line_search_failed"
    return points, history, "max_steps"


def row(s):
    return (
        (s.step, s.ropelength_before, s.ropelength_after, s.thickness_before, s.thickness_after)
        + (s.length_before, s.length_after, s.kkt_residual_before, s.projected_gradient_norm, s.alpha)
        + (s.strut_count, s.kink_count, s.accepted, s.thickness_corrected, s.correction_strategy, s.solver_algorithm)
    )


@pytest.mark.parametrize(
    "changes",
    [
        {},
        {"use_sparse_solver": False, "use_active_set_solver": False, "nnls_max_iterations": 40},
        {"preserve_initial_thickness": False, "correction_strategy": "scale", "max_step_size": 0.05},
        {"correction_strategy": "none", "line_search_shrink": 0.99, "min_step_size": 1e-4},
        {"normalize_direction": False, "thickness_floor_fraction": -1.0, "newton_correction_damping": 0.5},
        {"contact_tol": 0.05, "newton_ridge": -1.0, "use_analytic_kink_gradient": False, "max_step_size": 0.1},
    ],
)
def test_run_is_the_plain_loop(changes):
    o = options(max_steps=12, **changes)
    result = Tightener.tighten(trefoil(), o)
    points, history, reason = plain_tighten(trefoil(), o)
    assert [row(s) for s in result.steps] == history
    assert (result.points, result.reason) == (points, reason)
    again = analyze(result.points, o)
    assert (result.metrics.length, result.metrics.thickness_rad) == (again.length, again.thickness_rad)
    assert len(result.metrics.struts) == len(again.struts)


def test_ropelength_falls_and_thickness_holds():
    # Seven edges skipped are about half a turn of the tube: nearer edges are the business of the curvature.
    o = options(max_steps=60, max_step_size=0.05, skip_neighbors=7)
    result = vkm.resolved_tube_tighten(trefoil(60), o)
    start = analyze(trefoil(60), o)
    assert start.ropelength_rad > 38.0
    assert 32.9 < result.metrics.ropelength_rad < 33.8
    assert result.metrics.thickness_rad >= 0.999 * start.thickness_rad
    assert all(s.accepted for s in result.steps[:-1])
    assert result.metrics.lower_bound_ok


def test_defaults():
    made = vkm.TighteningOptions()
    assert {name: getattr(made, name) for name in OPTIONS} == OPTIONS
    assert [name for name in vars(vkm.TighteningOptions) if not name.startswith("_")] == list(OPTIONS)
    empty = vkm.TighteningResult()
    assert (empty.points, empty.steps, empty.converged, empty.reason) == ([], [], False, "")


def test_a_regular_polygon_is_critical():
    result = Tightener.tighten(circle(12))
    assert (result.converged, result.reason, result.steps) == (True, "target_kkt_residual", [])
    assert result.points == circle(12)


def test_no_columns_leave_the_negative_length_gradient():
    tube = vkm.ResolvedTubeMetrics()
    points = trefoil(10)
    expected = [-value for value in Geometry.length_gradient_flat(points)]
    assert Tightener.projected_gradient_flat(points, tube) == expected
    assert vkm.resolved_tube_projected_gradient(points, tube, options(use_sparse_solver=False)) == expected
    assert Tightener.projected_gradient_flat([], tube) == []


def test_stop_reasons():
    idle = Tightener.tighten(trefoil(), options(max_steps=0))
    assert (idle.reason, idle.steps, idle.converged) == ("max_steps_zero", [], False)
    assert idle.metrics.thickness_rad == Geometry.analyze(trefoil()).thickness_rad

    collapsed = trefoil()
    collapsed[3] = collapsed[4]
    flat = Tightener.tighten(collapsed)
    assert (flat.reason, flat.steps, flat.points) == ("nonpositive_initial_thickness", [], collapsed)

    untried = Tightener.tighten(trefoil(), options(line_search_trials=0))
    assert (untried.reason, len(untried.steps)) == ("line_search_failed", 1)
    assert (untried.steps[0].accepted, untried.steps[0].alpha) == (False, 0.01)
    assert untried.steps[0].length_after == untried.steps[0].length_before

    # Only a growing thickness would pass: the one trial fails, and one shrink falls below the least step.
    strict = options(min_step_size=0.1, thickness_floor_fraction=1.5, correction_strategy="none")
    refused = Tightener.tighten(trefoil(), strict)
    assert (refused.reason, refused.steps[0].alpha) == ("line_search_failed", 0.05)
    assert refused.points == trefoil()


@pytest.mark.parametrize("strategy", ["newton", "any other word"])
def test_newton_correction_reaches_the_target(strategy):
    points = trefoil(60)
    thickness = Geometry.analyze(points).thickness_rad
    o = options(correction_strategy=strategy)
    fixed = Tightener.correct_thickness(points, 1.02 * thickness, o)
    assert Geometry.analyze(fixed).thickness_rad >= 1.02 * thickness
    scaled = Tightener.correct_thickness(points, 1.02 * thickness, options(correction_strategy="scale"))
    assert scaled == Tightener.rescale_to_thickness(points, 1.02 * thickness)
    # Newton moves the contacts alone and so costs less length than a scaling of everything.
    assert Geometry.length(fixed) < Geometry.length(scaled)
    for choice in (o, options(correction_strategy="none")):
        assert Tightener.correct_thickness(points, thickness if choice is o else 1.02 * thickness, choice) == points


def test_newton_step_is_the_least_move_of_the_linearised_contacts():
    points = trefoil(60)
    tube = Geometry.analyze(points)
    dense = Map.build_rigidity_matrix(points, tube)
    a = np.array([column.values for column in dense.columns]).T
    radii = [
        0.5 * tube.struts[c.strut_index].distance if c.kind == "strut" else tube.kinks[c.kink_index].minrad
        for c in dense.columns
    ]
    target = tube.thickness_rad + 1e-9
    deficit = np.maximum(target - np.array(radii), 0.0)
    move = a @ np.linalg.solve(a.T @ a + 1e-10 * np.eye(len(radii)), deficit)
    fixed = np.array(Tightener.correct_thickness(points, target)) - points
    # What the linearisation misses is made up by a scaling of order 1e-12.
    assert np.abs(move).max() > 1e-10
    assert np.allclose(fixed.ravel(), move, atol=5e-12)


def test_rescaling():
    points = [[x + 3.0, y, z] for x, y, z in trefoil(30)]
    thickness = Geometry.analyze(points).thickness_rad
    scaled = np.array(Tightener.rescale_to_thickness(points, 2.0 * thickness))
    centroid = np.mean(points, axis=0)
    assert np.allclose(scaled, centroid + 2.000000000002 * (np.array(points) - centroid), rtol=0, atol=1e-13)
    assert Geometry.analyze(scaled).thickness_rad > 2.0 * thickness
    for target in (thickness, 0.5 * thickness, 0.0, -1.0, math.inf, math.nan):
        assert Tightener.rescale_to_thickness(points, target) == points
        assert Tightener.correct_thickness(points, target) == points
    assert Tightener.rescale_to_thickness([], 1.0) == []
    assert Tightener.correct_thickness([], 1.0) == []


def test_bad_input():
    with pytest.raises(ValueError, match=r"^tighten requires at least 3 points\.$"):
        Tightener.tighten(trefoil()[:2])
    with pytest.raises(ValueError, match=r"^contact_tol must be non-negative\.$"):
        Tightener.tighten(trefoil(), options(contact_tol=-1.0))
    with pytest.raises(ValueError, match=r"^analyze requires at least 3 points\.$"):
        Tightener.rescale_to_thickness(trefoil()[:2], 1.0)
    bad = trefoil()
    bad[7] = [math.nan, 0.0, 0.0]
    assert Tightener.tighten(bad).reason == "line_search_failed"  # the length, and with it every trial, is a NaN
    assert len(Tightener.correct_thickness(bad, 10.0)) == len(bad)
    for changes in ({"newton_ridge": math.nan}, {"nnls_tolerance": math.nan}, {"line_search_shrink": math.nan}):
        assert len(Tightener.tighten(trefoil(), options(max_steps=2, **changes)).steps) <= 2
    # A tube of other points: its contacts are taken modulo the vertices.
    other = Geometry.analyze(trefoil(60), 2, 0.05)
    assert len(Tightener.projected_gradient_flat(trefoil(20), other)) == 60


def test_interrupt_ends_a_run():
    with ended_by_a_signal(0.05):
        # No step is ever small enough for the targets, and every one is accepted.
        o = options(max_steps=2**62, target_kkt_residual=-1.0, min_step_size=0.0, line_search_trials=2**62)
        o.ropelength_increase_tolerance = math.inf
        Tightener.tighten(trefoil(60), o)


def test_a_watch_sees_every_step_and_changes_nothing():
    seen = []
    o = options(max_steps=6, skip_neighbors=4)
    result = watched_tighten(trefoil(), o, lambda step, points: seen.append((step, points)))
    plain = Tightener.tighten(trefoil(), o)
    assert result.points == plain.points == seen[-1][1] and result.reason == plain.reason
    assert [step.ropelength_after for step, _ in seen] == [step.ropelength_after for step in plain.steps]
    assert [analyze(points, o).ropelength_rad for _, points in seen] == [step.ropelength_after for step, _ in seen]

    def stop(step, points):
        raise KeyError(step.step)

    with pytest.raises(KeyError, match="0"):
        watched_tighten(trefoil(), o, stop)
