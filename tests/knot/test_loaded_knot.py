"""Knots loaded from files: names, samples with both ends, centring."""

import math

import _native
import numpy as np
import pytest

ROWS = "1 0 0 1 0 0\n0 0 0.5 0 0 0.25\n"


def write(folder, name, text=ROWS):
    path = folder / name
    path.write_text(text, encoding="utf-8")
    return str(path)


@pytest.mark.parametrize(
    ("file", "name"),
    [
        ("knot.3_1.fseries", ".3_1"),
        ("Trefoil.fseries", "Trefoil"),
        ("MyKNOTknot.fseries", "Myknot"),
        ("unknotted", "unted"),
        ("a.knot", "a"),
        ("dir\\knot.4_1.fseries", ".4_1"),
        (".fseries", ""),
    ],
)
def test_names(tmp_path, file, name):
    (knot,) = _native.load_all_knots([write(tmp_path, file)], 5)
    assert knot.name == name


def test_largest_block_centred_with_both_ends(tmp_path):
    path = write(tmp_path, "k.fseries", "9 9 9 9 9 9\n\n" + ROWS + "\n" + "7 0 0 0 0 0\n" * 2)
    (knot,) = _native.load_all_knots(
        paths=[str(tmp_path / "missing"), path, write(tmp_path, "e.fseries", "% x\n")], nsamples=33
    )
    block = _native.parse_fseries_from_string(ROWS)[0]
    points = np.array(_native.evaluate_fourier_block(block, [k * 2 * math.pi / 32 for k in range(33)]))
    points -= points.mean(axis=0)
    assert np.allclose(knot.points, points, rtol=0, atol=1e-14)
    assert np.allclose(np.mean(knot.points, axis=0), 0, atol=1e-15)
    assert np.allclose(knot.points[0], knot.points[-1], atol=1e-14)
    assert np.array_equal(knot.get_points_array(), knot.points)
    assert np.array_equal(knot.get_curvature_array(), knot.curvature)
    assert np.array_equal(knot.curvature, _native.compute_curvature(np.array(knot.points), 1e-8))


def test_counts(tmp_path):
    path = write(tmp_path, "k.fseries")
    assert len(_native.load_all_knots([path])[0].points) == 1000
    assert _native.load_all_knots([]) == []
    for nsamples in (0, -3):
        (knot,) = _native.load_all_knots([path], nsamples)
        assert (
            knot.points == [] and knot.get_points_array().shape == (0, 3) and knot.get_curvature_array().shape == (0,)
        )
    (knot,) = _native.load_all_knots([path], 1)  # one sample has no step
    assert np.isnan(knot.get_points_array()).all() and knot.curvature == [0.0]
    with pytest.raises(MemoryError):
        _native.load_all_knots([path], 2**60)
