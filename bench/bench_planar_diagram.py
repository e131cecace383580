"""Planar diagrams: the code of a curve over many projections, and the crossing estimate."""

from __future__ import annotations

import _native
import numpy as np
from harness import Case, plain


def torus_knot(p: int, q: int, n: int) -> np.ndarray:
    s = 2 * np.pi * np.arange(n) / n
    r = 2 + np.cos(q * s)
    return np.stack([r * np.cos(p * s), r * np.sin(p * s), np.sin(q * s)], axis=1)


def numpy_count(points: np.ndarray, rng: np.random.Generator) -> int:
    """Crossings of one random projection, from dense arrays of all pairs of segments."""
    frame = np.linalg.qr(rng.normal(size=(3, 3)))[0]
    a = points @ frame[:, :2]
    e = a - np.roll(a, -1, axis=0)
    g = a[:, None] - a
    denom = np.outer(e[:, 0], e[:, 1]) - np.outer(e[:, 1], e[:, 0])
    with np.errstate(divide="ignore", invalid="ignore"):
        t = (e[:, 1] * g[..., 0] - e[:, 0] * g[..., 1]) / denom
        u = (g[..., 0] * e[:, None, 1] - g[..., 1] * e[:, None, 0]) / denom
    return int(((t > 0) & (t < 1) & (u > 0) & (u < 1)).sum()) // 2


def cases() -> list[Case]:
    plain_code = plain("plain_pd_from_curve")
    rows = np.zeros((100000, 4))
    curves = {
        "trefoil": torus_knot(2, 3, 1000),
        "torus knot (7, 12)": torus_knot(7, 12, 1000),
        "trefoil, 1000 times as large": 1000 * torus_knot(2, 3, 1000),
        "random walk": np.cumsum(np.random.default_rng(0).normal(size=(1000, 3)), axis=0),
    }
    result = []
    for name, points in curves.items():
        count = int(plain_code(points, 1000, 40, 12345, 1.0, 1e-6, rows, len(rows)))
        assert rows[:count].astype(int).tolist() == _native.pd_from_curve(points)
        result.append(
            Case(
                "pd_from_curve",
                f"1000 points, 40 tries, {name}",
                lambda points=points: _native.pd_from_curve(points),
                numpy=lambda points=points: [numpy_count(points, np.random.default_rng(k)) for k in range(40)],
                plain=lambda points=points: plain_code(points, 1000, 40, 12345, 1.0, 1e-6, rows, len(rows)),
                work=40 * 1000**2 / 2,
                target_plain=5,
                note="NumPy counts only",
            )
        )
    points_list = curves["trefoil"].tolist()
    result.append(
        Case(
            "estimate_crossing_number",
            "1000 points, 24 directions",
            lambda: _native.estimate_crossing_number(points_list),
            work=24 * 1000**2 / 2,
        )
    )
    return result
