"""Thickness analysis of closed polygons: the box tree against the loop over all pairs of edges.

The ratio to the plain loop grows with the number of vertices: n log n against n^2. The plain loop is left out where it
would hold more than a few gigabytes of pairs.
"""

from __future__ import annotations

import _native
import numpy as np
from harness import Case, plain


def trefoil(n: int) -> np.ndarray:
    """A (2, 3) torus knot of radii 2 and 1."""
    u = 2.0 * np.pi * np.arange(n) / n
    r = 2.0 + np.cos(3.0 * u)
    return np.stack([r * np.cos(2.0 * u), r * np.sin(2.0 * u), np.sin(3.0 * u)], axis=1)


def chords(n: int) -> np.ndarray:
    """Random chords of a cube: boxes overlap, so the tree helps little."""
    return np.random.default_rng(1).uniform(-1.0, 1.0, (n, 3))


def numpy_analyze(points: np.ndarray, skip: int, tol: float) -> int:
    """Thickness and number of struts by rows of all pairs, as a user would write it."""
    n = len(points)
    d = np.roll(points, -1, axis=0) - points
    length = np.linalg.norm(d, axis=1)
    u, w = np.roll(d, 1, axis=0), d
    lu, lw = np.roll(length, 1), length
    theta = np.arccos(np.clip(np.sum(u * w, axis=1) / (lu * lw), -1.0, 1.0))
    minrad = np.min(np.minimum(lu, lw) / (2.0 * np.tan(theta / 2.0)))
    e = length**2
    near = []
    for i in range(n - 1):
        j = np.arange(i + skip + 1, min(n, i + n - skip))
        if len(j) == 0:
            continue
        r = points[i] - points[j]
        a, c, b, f = e[i], r @ d[i], d[j] @ d[i], np.einsum("ij,ij->i", d[j], r)
        det = a * e[j] - b * b
        s = np.clip(np.where(det > 1e-14, (b * f - c * e[j]) / np.where(det > 1e-14, det, 1.0), 0.0), 0.0, 1.0)
        t = (b * s + f) / e[j]
        s = np.where(t < 0.0, np.clip(-c / a, 0.0, 1.0), np.where(t > 1.0, np.clip((b - c) / a, 0.0, 1.0), s))
        t = np.clip(t, 0.0, 1.0)
        near.append(np.linalg.norm(r + s[:, None] * d[i] - t[:, None] * d[j], axis=1))
    distance = np.concatenate(near)
    thickness = min(minrad, 0.5 * distance.min())
    return int(np.sum(0.5 * distance <= (1.0 + tol) * thickness + tol))


def cases() -> list[Case]:
    analyze = _native.ResolvedTubeGeometry.analyze
    candidates = _native.ResolvedTubeGeometry.dcsd_candidates
    plain_analyze = plain("plain_analyze_tube")
    plain_candidates = plain("plain_dcsd_candidates")
    limits = {200: 0.15e-3, 2048: 8e-3, 20000: 0.17, 100000: 1.7}
    found = []
    for n, seconds in limits.items():
        points = trefoil(n)
        small = n <= 2048
        found.append(
            Case(
                "tube_analyze",
                f"trefoil {n}",
                lambda p=points: analyze(p),
                numpy=(lambda p=points: numpy_analyze(p, 2, 1e-3)) if small else None,
                plain=(lambda p=points, n=n: plain_analyze(p, n, 2, 1e-3)) if small else None,
                work=n * (n - 1) / 2,
                target_plain=30 if n == 2048 else None,
                target_seconds=seconds,
                note="G/s: pairs settled",
            )
        )
    n = 2048
    shapes = [
        ("trefoil", trefoil(n), 2, 0.0),
        ("trefoil", trefoil(n), 100, 0.0),
        ("random chords", chords(n), 2, 0.0),
    ]
    for shape, points, skip, tol in shapes:
        found.append(
            Case(
                "tube_dcsd_candidates",
                f"{shape} {n}, skip {skip}",
                lambda p=points, k=skip, tol=tol: candidates(p, k, tol),
                plain=lambda p=points, k=skip, tol=tol: plain_candidates(p, n, k, tol),
                work=n * (n - 1) / 2,
                target_plain=30 if shape == "trefoil" else None,
                note="G/s: pairs settled",
            )
        )
    return found
