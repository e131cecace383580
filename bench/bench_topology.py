"""Writhe, linking number and self-distance of sampled curves, lists of points at the border included."""

from __future__ import annotations

import math

import _native
import numpy as np
from harness import Case, plain


def trefoil(n: int) -> np.ndarray:
    s = 2 * np.pi * np.arange(n) / n
    return np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)


def numpy_writhe(X: np.ndarray) -> float:
    d = np.diff(X, axis=0)
    total = 0.0
    for i in range(len(d) - 1):
        R = X[i] - X[i + 1 : -1]
        r = np.sqrt((R * R).sum(axis=1))
        near = r < 1e-6
        r[near] = math.inf
        total += float((np.cross(d[i], d[i + 1 :]) * R).sum(axis=1) @ (1 / (r * r * r)))
    return total / (2 * math.pi)


def numpy_self_distance(X: np.ndarray, window: int) -> float:
    n = len(X)
    best = math.inf
    for i in range(n):
        j = np.arange(i + 1, n)
        gap = np.minimum(j - i, n - (j - i))
        d = np.linalg.norm(X[i] - X[i + 1 :], axis=1)[gap > window]
        best = min(best, float(d.min(initial=math.inf)))
    return best if best < math.inf else 0.0


def cases() -> list[Case]:
    knot = trefoil(4096)
    knot_list = knot.tolist()
    plain_writhe = plain("plain_writhe")
    assert plain_writhe(knot, len(knot)) == _native.compute_writhe(knot_list)
    result = [
        Case(
            "compute_writhe",
            "4096 points",
            lambda: _native.compute_writhe(knot_list),
            numpy=lambda: numpy_writhe(knot),
            plain=lambda: plain_writhe(knot, len(knot)),
            work=4096**2 / 2,
            target_plain=4,
        )
    ]
    plain_distance = plain("plain_min_self_distance")
    curves = {
        "trefoil": (trefoil(20000), 4),
        "random cloud": (np.random.default_rng(1).normal(size=(20000, 3)), 4),
        "trefoil, window 500": (trefoil(20000), 500),
    }
    for name, (points, window) in curves.items():
        points_list = points.tolist()
        assert plain_distance(points, len(points), window) == _native.min_self_distance_sampled(points_list, window)
        result.append(
            Case(
                "min_self_distance_sampled",
                f"20000 points, {name}",
                lambda points_list=points_list, window=window: _native.min_self_distance_sampled(points_list, window),
                numpy=lambda points=points, window=window: numpy_self_distance(points, window),
                plain=lambda points=points, window=window: plain_distance(points, len(points), window),
                work=len(points) ** 2 / 2,
                target_plain=10,
            )
        )
    return result
