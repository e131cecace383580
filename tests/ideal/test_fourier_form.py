"""Fourier forms: measures, fit, polish, and the texts that hold them."""

import _native
import numpy as np
import pytest
from vkmcore.ideal.form_polish import _Polish, fit, judged, polish
from vkmcore.ideal.fourier_form import FourierForm, measure, measure_polygons
from vkmcore.ideal.stored_form import (
    at_unit_diameter,
    block_text,
    form_of_block,
    form_of_series,
    fseries_text,
    standardised,
)


def ring(radius, centre=(0.0, 0.0, 0.0), normal=2):
    """The series of a round circle."""
    c = np.zeros((2, 3), dtype=complex)
    c[0] = centre
    c[1, (normal + 1) % 3], c[1, (normal + 2) % 3] = radius, -1j * radius
    return c


def trefoil(count):
    t = np.arange(count) * (2 * np.pi / count)
    return np.stack([(2 + np.cos(3 * t)) * np.cos(2 * t), (2 + np.cos(3 * t)) * np.sin(2 * t), np.sin(3 * t)], axis=1)


HOPF = FourierForm((ring(2.0), ring(2.0, (2.0, 0.0, 0.0), normal=1)))  # ropelength 8 pi


def test_measures_of_rings():
    one = measure(FourierForm((ring(3.0),)))
    assert one.least_radius == pytest.approx(3.0, rel=1e-3) and one.ropelength == pytest.approx(2 * np.pi, rel=1e-3)
    both = measure(HOPF)
    assert both.half_least_distance == pytest.approx(1.0, abs=1e-3)
    assert both.ropelength == pytest.approx(8 * np.pi, rel=1e-3)


def test_polygon_measures_agree_with_the_library():
    points = trefoil(150)
    lengths = np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1)
    at = np.interp(np.arange(90) / 90 * lengths.sum(), np.cumsum([0, *lengths]), np.arange(151))
    points = np.stack([np.interp(at, np.arange(151), [*column, column[0]]) for column in points.T], axis=1)
    measures = measure_polygons([points])
    skip = int(np.ceil(np.pi * measures.thickness / np.linalg.norm(points[1] - points[0])))
    tube = _native.ResolvedTubeGeometry.analyze(points.tolist(), skip, 0.0)
    assert measures.length == pytest.approx(tube.length, rel=1e-12)
    assert measures.least_radius == pytest.approx(tube.minrad, rel=1e-9)
    assert measures.half_least_distance == pytest.approx(tube.half_min_dcsd, rel=1e-9)


def test_more_harmonics_than_a_polygon_can_tell_do_no_harm():
    t = np.linspace(0.0, np.pi, 22, endpoint=False)
    arc = np.stack([2.0 + np.sin(t), np.cos(t), 0.0 * t], axis=1)
    side = np.stack([np.linspace(2.0, -2.0, 28, endpoint=False), np.full(28, -1.0), np.zeros(28)], axis=1)
    half = np.concatenate([arc, side])
    stadium = np.concatenate([half, -half])  # corners of edges of 0.14 at the curvature of the tube
    coarse, fine = (measure(fit([stadium], harmonics), 100).ropelength for harmonics in (24, 64))
    assert 2.0 * np.pi + 8.0 < fine < coarse


def test_fit_recovers_a_series_and_cuts_by_length():
    form = fit([trefoil(400)], 8, taper=np.inf)
    for n in (37, 400):
        np.testing.assert_allclose(form.points([n])[0], trefoil(n), atol=1e-12)
    links = fit([4 * trefoil(400), trefoil(400)], 40)
    assert [len(c) - 1 for c in links.series] == [40, 10] and links.harmonics == 40
    np.testing.assert_allclose(
        form.lengths(), [np.linalg.norm(np.diff(trefoil(4001), axis=0), axis=1).sum()], rtol=1e-3
    )


def test_gradient_of_the_polish():
    form = fit([trefoil(300), trefoil(200) + [9.0, 0.0, 0.3]], 12, taper=np.inf)
    form = form.scaled(1.03 / measure(form).thickness)  # some constraints are violated, all have a multiplier
    problem = _Polish(form)
    assert len(problem.pairs[0])
    problem.kinks += 0.2
    problem.struts += 0.3
    _, gradient = problem.value(form.series, 50.0)
    rng = np.random.default_rng(1)
    move = [rng.normal(size=c.shape) + 1j * rng.normal(size=c.shape) for c in form.series]
    for d in move:
        d[0] = d[0].real
    ahead, behind = (
        problem.value([c + sign * 1e-6 * d for c, d in zip(form.series, move)], 50.0)[0] for sign in (1, -1)
    )
    slope = sum(float((g.conj() * d).sum().real) for g, d in zip(gradient, move))
    assert (ahead - behind) / 2e-6 == pytest.approx(slope, rel=1e-6)


def test_polish_shortens_and_never_lengthens():
    tight = _native.parse_embedded_ideal_ab_by_id("3:1:1").fourier
    start = fit([np.array(_native.evaluate_fourier_block(tight, 2 * np.pi * np.arange(400) / 400))], 24)
    seen = []
    polished = polish(start, watch=seen.append)
    assert measure(polished).thickness == pytest.approx(1.0, rel=1e-9)
    assert judged(polished) == pytest.approx(min(seen), rel=1e-9)
    assert measure(polished).ropelength < 32.82 < 32.88 < measure(start).ropelength
    assert judged(polish(polished, rounds=1, steps=1)) <= min(seen) * (1 + 1e-9)
    loose = FourierForm((ring(2.3), ring(2.2, (2.25, 0.1, 0.0), normal=1)))
    assert 8 * np.pi < judged(polish(loose)) <= judged(loose)


def test_standard_position():
    rng = np.random.default_rng(2)
    turn = np.linalg.qr(rng.normal(size=(3, 3)))[0]
    turn *= np.sign(np.linalg.det(turn))
    curve = trefoil(400) * [1.0, 0.7, 1.0]
    forms = [
        standardised(fit([points], 10, taper=np.inf))
        for points in (curve, np.roll(curve @ turn.T + [3.0, 2.0, 1.0], 71, axis=0), curve[::-1])
    ]
    for form in forms:
        (points,) = form.points([1000])
        np.testing.assert_allclose(points.mean(axis=0), 0.0, atol=1e-12)
        moments = points.T @ points
        np.testing.assert_allclose(moments, np.diag(np.diag(moments)), atol=1e-8)
        assert moments[0, 0] > moments[1, 1] > moments[2, 2]
        assert points[:, 0].argmax() in (0, 999, 1) and points[1, 1] > points[0, 1]
        writhe = _native.compute_writhe(points[::4].tolist())
        assert writhe == pytest.approx(_native.compute_writhe(curve[::2].tolist()), abs=0.02)
    np.testing.assert_allclose(forms[0].lengths(), forms[1].lengths(), rtol=1e-9)


@pytest.mark.parametrize("tag", ["AB", "HT", "TL"])
def test_blocks_are_read_back(tag):
    form = at_unit_diameter(standardised(fit([2 * trefoil(400), trefoil(400) + [40.0, 0.0, 0.0]], 12, taper=np.inf)))
    text = block_text(tag, "L0", "2 2", form)
    (block,) = _native.parse_ideal_halvard_from_string(text)
    assert (block.id, block.conway, block.n, block.source_tag) == ("L0", "2 2", 2, tag)
    back = form_of_block(block)
    for a, b in zip(back.series, form.series):
        np.testing.assert_array_equal(a, b)
    assert block.D == pytest.approx(1.0, abs=2e-6)
    assert block.L == pytest.approx(measure(back).length, abs=1e-6)


def test_series_files_are_read_back():
    form = at_unit_diameter(standardised(fit([trefoil(400)], 12, taper=np.inf)))
    text = fseries_text(["Knot 3_1", "ideal shape"], form)
    (block,) = _native.parse_fseries_from_string(text)
    assert block.header == "ideal shape" and len(block.a_x) == 12 and any(block.a_x[1:])
    np.testing.assert_array_equal(form_of_series(block).series[0][1:], form.series[0][1:])
