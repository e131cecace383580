"""Knots of ideal.txt are what they say: their types, lengths and thicknesses."""

import _native
import numpy as np
import pytest

KNOTS = [("3:1:1", "3", 3), ("4:1:1", "2 2", 5), ("6:1:2", "3 1 2", 11)]


def determinant(points):
    """|Alexander polynomial at -1| of a closed polygon: 1 for the unknot, 3 for the trefoil, 5 for the figure-eight.

    Each crossing of a projection gives the row 2 over - under_in - under_out in the arcs of the diagram.
    """
    turn, _ = np.linalg.qr(np.random.default_rng(1).normal(size=(3, 3)))
    start = points @ turn
    step = np.roll(start, -1, axis=0) - start
    crossings = []
    for i in range(len(points)):
        for j in range(i + 2, len(points) - (i == 0)):
            w, area = start[j] - start[i], step[i, 0] * step[j, 1] - step[i, 1] * step[j, 0]
            u = (w[0] * step[j, 1] - w[1] * step[j, 0]) / area
            v = (w[0] * step[i, 1] - w[1] * step[i, 0]) / area
            if 0 <= u < 1 and 0 <= v < 1:
                above = start[i, 2] + u * step[i, 2] > start[j, 2] + v * step[j, 2]
                crossings.append((i + u, j + v) if above else (j + v, i + u))
    unders = sorted(under for _, under in crossings)
    rows = np.zeros((len(crossings), len(crossings)))
    for row, (over, under) in zip(rows, crossings, strict=True):
        arc = unders.index(under)
        row[np.searchsorted(unders, over) % len(unders)] += 2
        row[arc] -= 1
        row[(arc + 1) % len(unders)] -= 1
    return round(abs(np.linalg.det(rows[1:, 1:])))


@pytest.mark.parametrize(("name", "conway", "det"), KNOTS)
def test_knot_type(name, conway, det):
    ab = _native.parse_embedded_ideal_ab_by_id(name)
    assert ab.conway == conway
    assert determinant(_native.evaluate_ideal_ab_components(ab, np.arange(120) * np.pi / 60)[0]) == det


@pytest.mark.parametrize(("name", "conway", "det"), KNOTS)
def test_length_and_thickness_are_the_curve_s(name, conway, det):
    ab = _native.parse_embedded_ideal_ab_by_id(name)
    assert ab.D == pytest.approx(1.0, abs=2e-6)
    assert _native.length_exact(ab.fourier) == pytest.approx(ab.L, abs=6e-7)
    # Points at equal steps of arc length; those nearer along the curve than pi / 2 cannot be a doubly-critical pair
    # of a curve whose curvature stays below 2.
    n = 6000
    t = np.linspace(0, 2 * np.pi, 8 * n + 1)
    points = np.array(_native.evaluate_fourier_block(ab.fourier, t))
    arc = np.concatenate([[0.0], np.cumsum(np.linalg.norm(np.diff(points, axis=0), axis=1))])
    steps = np.interp(np.arange(n) / n * arc[-1], arc, t)
    curvature = max(_native.curvature_exact(ab.fourier, list(steps)))
    distance = _native.min_self_distance_sampled(
        _native.evaluate_fourier_block(ab.fourier, steps), int(np.pi / 2 / ab.L * n)
    )
    assert min(2 / curvature, distance) == pytest.approx(ab.D, abs=3e-4)  # D is that of a polygon of steps of D / 40
