"""Principal frames of points, and velocity fields split into translation, rotation and deformation."""

import math

import _native
import numpy as np
import pytest

RNG = np.random.default_rng(8)


def rotation():
    q, _ = np.linalg.qr(RNG.normal(size=(3, 3)))
    return q if np.linalg.det(q) > 0 else -q


@pytest.mark.parametrize("weighted", [False, True])
@pytest.mark.parametrize("n", [3, 4, 50])
def test_frame_agrees_with_the_eigenvectors_of_the_covariance(n, weighted):
    points = RNG.normal(size=(n, 3)) * [3, 2, 0.5] @ rotation() + 7
    w = RNG.uniform(0.1, 2, size=n) if weighted else np.ones(n)
    frame = _native.compute_intrinsic_frame(points, w.tolist() if weighted else None)
    assert list(frame) == ["centroid", "axis_x", "axis_y", "axis_z", "eigenvalues"]
    centroid = w @ points / w.sum()
    r = points - centroid
    values, vectors = np.linalg.eigh((w[:, None] * r).T @ r / w.sum())
    assert np.allclose(frame["centroid"], centroid, atol=1e-12)
    assert np.allclose(frame["eigenvalues"], values, atol=1e-12)
    x, y, z = (np.array(frame[f"axis_{a}"]) for a in "xyz")
    assert abs(z @ vectors[:, 0]) == pytest.approx(1, abs=1e-9) and z[np.argmax(abs(z))] > 0
    assert abs(x @ vectors[:, 2]) == pytest.approx(1, abs=1e-9)
    assert np.allclose(np.cross(x, y), z, atol=1e-12) and isinstance(frame["axis_x"], list)


def test_frames_of_few_and_of_equal_points():
    empty = _native.compute_intrinsic_frame(np.zeros((0, 3)))
    assert empty == {
        "centroid": [0, 0, 0],
        "axis_x": [1, 0, 0],
        "axis_y": [0, 1, 0],
        "axis_z": [0, 0, 1],
        "eigenvalues": [0, 0, 0],
    }
    point = _native.compute_intrinsic_frame([[1.0, 2, 3]] * 5)
    assert point["centroid"] == [1, 2, 3] and point["eigenvalues"] == [0, 0, 0]
    assert point["axis_z"] == [1, 0, 0] and point["axis_x"] == [0, 0, 1]  # stable order of equal eigenvalues
    spoilt = _native.compute_intrinsic_frame([[0, 0, math.nan], [1, 2, 3]])
    assert np.allclose(np.linalg.norm(spoilt["axis_z"]), 1)


def test_weights_of_another_length_are_ignored_by_the_frame():
    points = RNG.normal(size=(6, 3))
    assert _native.compute_intrinsic_frame(points, [1.0, 2.0]) == _native.compute_intrinsic_frame(points)
    zero = _native.compute_intrinsic_frame(points, [0.0] * 6)
    assert zero["centroid"] == [0, 0, 0] and zero["eigenvalues"] == [0, 0, 0]


@pytest.mark.parametrize("weights", [None, [1.0, 2, 0.5, 3, 1, 1, 0.25, 2]])
def test_rigid_motion_is_found_without_deformation(weights):
    points = RNG.normal(size=(8, 3))
    omega = np.array([0.3, -1.1, 0.7])
    w = np.ones(8) if weights is None else np.array(weights)
    centroid = w @ points / w.sum()
    velocity = np.array([1.0, 2, 3]) + np.cross(omega, points - centroid)
    motion = _native.compute_rigid_motion(points, velocity, weights)
    assert list(motion) == [
        "centroid",
        "translation",
        "omega",
        "translation_field",
        "rotation_field",
        "deformation_field",
        "reconstruction_relative_error",
        "deformation_relative_norm",
    ]
    assert np.allclose(motion["translation"], [1, 2, 3]) and np.allclose(motion["omega"], omega)
    assert np.allclose(motion["rotation_field"], np.cross(omega, points - centroid))
    assert np.allclose(motion["deformation_field"], 0, atol=1e-12)
    assert np.array_equal(motion["translation_field"], np.tile(motion["translation"], (8, 1)))
    assert motion["reconstruction_relative_error"] < 1e-12
    # What is left of the norm is the translation.
    share = 14 * w.sum() / (w @ (velocity**2).sum(axis=1))
    assert motion["deformation_relative_norm"] == pytest.approx(math.sqrt(share))


def test_deformation_is_what_the_rigid_motion_leaves():
    points, velocity = RNG.normal(size=(20, 3)), RNG.normal(size=(20, 3))
    motion = _native.compute_rigid_motion(points, velocity)
    rest = motion["deformation_field"]
    assert np.allclose(motion["translation_field"] + motion["rotation_field"] + rest, velocity)
    assert np.allclose(rest.sum(axis=0), 0) and np.allclose(np.cross(points, rest).sum(axis=0), 0)


def test_the_two_rules_for_weights_differ():
    points, velocity = RNG.normal(size=(5, 3)), RNG.normal(size=(3, 3))
    w = [1.0, 2.0, 3.0, 4.0]  # enough for the three common rows, not one for each of the five points
    motion = _native.compute_rigid_motion(points, velocity, w)
    assert np.allclose(motion["centroid"], points.mean(axis=0))
    assert np.allclose(motion["translation"], np.average(velocity, axis=0, weights=w[:3]))
    assert motion["rotation_field"].shape == (3, 3)
    few = _native.compute_rigid_motion(points, velocity, w[:2])
    assert np.allclose(few["translation"], velocity.mean(axis=0))
    all_five = _native.compute_rigid_motion(points, velocity, [*w, 5.0])
    assert np.allclose(all_five["centroid"], np.average(points, axis=0, weights=[*w, 5.0]))


def test_singular_and_empty_motions():
    line = _native.compute_rigid_motion([[0.0, 0, 0], [1, 0, 0], [2, 0, 0]], [[0.0, 0, 0], [0, 1, 0], [0, 2, 0]])
    assert line["omega"] == [0, 0, 0] and np.allclose(line["translation"], [0, 1, 0])
    for rows in (0, 4):
        nothing = _native.compute_rigid_motion(np.ones((rows, 3)), np.zeros((0, 3)))
        assert nothing["centroid"] == nothing["translation"] == nothing["omega"] == [0, 0, 0]
        assert nothing["deformation_field"].shape == (0, 3) and nothing["deformation_relative_norm"] == 0


def test_bad_input():
    points = np.zeros((4, 3))
    for bad in (np.zeros(3), np.zeros((4, 2)), np.zeros((1, 4, 3))):
        for arguments in ((bad, points), (points, bad)):
            with pytest.raises(ValueError, match=r"^Expected \(N,3\) array$"):
                _native.compute_rigid_motion(*arguments)
        with pytest.raises(ValueError, match=r"^Expected \(N,3\) array$"):
            _native.compute_intrinsic_frame(bad)
    with pytest.raises(RuntimeError, match="cast"):
        _native.compute_intrinsic_frame(points, "weights")
