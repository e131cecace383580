"""Potentials of filament samples, and a map and a field on long lists."""

from __future__ import annotations

import _native
import numpy as np
from harness import Case, plain


def numpy_direct(p: np.ndarray, w: np.ndarray, epsilon: float) -> np.ndarray:
    d = p[:, None] - p
    s = (d * d).sum(axis=2) + epsilon**2
    term = (d * w).sum(axis=2) / s**1.5
    np.fill_diagonal(term, 0.0)
    return -term.sum(axis=1) / (4 * np.pi)


def numpy_gaussian(p: np.ndarray, w: np.ndarray, epsilon: float) -> np.ndarray:
    d = p[:, None] - p
    g = np.exp(-(d * d).sum(axis=2) / (2 * epsilon**2))
    np.fill_diagonal(g, 0.0)
    a = g @ w
    return -0.5 * (a * a).sum(axis=1)


def cases() -> list[Case]:
    n = 2000
    s = 2 * np.pi * np.arange(n) / n
    p = np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)
    w = np.gradient(p, axis=0)
    out = np.empty(n)
    result = []
    for name, formula, ours, loop, epsilon in (
        ("direct", numpy_direct, _native.compute_gravitational_potential_direct, "plain_potential_direct", 0.1),
        ("gradient", numpy_gaussian, _native.compute_gravitational_potential_gradient, "plain_potential_gradient", 0.1),
    ):
        plain_loop = plain(loop)
        plain_loop(p, w, n, epsilon, out)
        assert np.allclose(ours(p, w, epsilon), out, rtol=1e-10, atol=1e-12)
        assert np.allclose(formula(p, w, epsilon), out, rtol=1e-10, atol=1e-12)
        result.append(
            Case(
                f"gravitational_potential_{name}",
                f"{n} points",
                lambda ours=ours, epsilon=epsilon: ours(p, w, epsilon),
                numpy=lambda formula=formula, epsilon=epsilon: formula(p, w, epsilon),
                plain=lambda plain_loop=plain_loop, epsilon=epsilon: plain_loop(p, w, n, epsilon, out),
                work=n * n,
            )
        )
    u = np.random.default_rng(0).normal(size=1000 * 1000).tolist()
    result.append(
        Case(
            "compute_vorticity, planar, lists",
            "1000 x 1000",
            lambda: _native.compute_vorticity(u, u, 1000, 1000, 0.1, 0.1),
            work=1e6,
        )
    )
    result.append(Case("compute_swirl_field", "500 x 500", lambda: _native.compute_swirl_field(500, 0.3), work=2.5e5))
    return result
