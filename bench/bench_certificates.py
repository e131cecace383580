"""Comparison of a polygon with a smooth curve. Our time is that of the whole certificate: hashes, the analysis of both
tubes and lists of points at the border included; the others are the two directed distances alone."""

from __future__ import annotations

import _native
import numpy as np
from harness import Case, plain


def trefoil(n: int, ripple: float = 0.0) -> np.ndarray:
    s = 2 * np.pi * np.arange(n) / n
    z = ripple * np.cos(7 * s) - np.sin(3 * s)
    return np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), z], axis=1)


def numpy_directed_hausdorff(a: np.ndarray, b: np.ndarray) -> float:
    edge = np.roll(b, -1, axis=0) - b
    squared = (edge * edge).sum(axis=1)
    largest = 0.0
    for p in a:
        t = np.clip(((p - b) * edge).sum(axis=1) / squared, 0.0, 1.0)
        largest = max(largest, float(np.linalg.norm(p - (b + t[:, None] * edge), axis=1).min()))
    return largest


def cases() -> list[Case]:
    directed = plain("plain_directed_hausdorff")
    rng = np.random.default_rng(1)
    result = []
    for name, a, b in (
        ("alike", trefoil(4000), trefoil(3500, 0.01)),
        ("unlike", trefoil(4000), rng.standard_normal((3500, 3))),
    ):

        def ours(a: np.ndarray = a, b: np.ndarray = b) -> float:
            return _native.PolygonalSmoothCertificateAPI.evaluate(a, b, 0.1, 1.0, 1.0, 1.0).hausdorff_bound

        def both(a: np.ndarray = a, b: np.ndarray = b) -> float:
            return max(directed(a, len(a), b, len(b)), directed(b, len(b), a, len(a)))

        def vectors(a: np.ndarray = a, b: np.ndarray = b) -> float:
            return max(numpy_directed_hausdorff(a, b), numpy_directed_hausdorff(b, a))

        assert ours() == both()
        pairs = 2.0 * len(a) * len(b)
        size = f"{len(a)} x {len(b)}"
        result.append(Case(f"polygon and smooth curve, {name}", size, ours, numpy=vectors, plain=both, work=pairs))
    return result
