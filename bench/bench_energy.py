"""Filament energies: the cutoff scan, the pair sums and the mass of a polyline."""

from __future__ import annotations

import _native
import numpy as np
from harness import Case, plain


def trefoil(n: int) -> np.ndarray:
    s = 2 * np.pi * np.arange(n) / n
    return np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)


def pair_distances(p: np.ndarray) -> np.ndarray:
    r = p[:, None] - p
    return np.sqrt((r * r).sum(axis=2))


def numpy_scan(p: np.ndarray, t: np.ndarray, ds: np.ndarray, a: np.ndarray) -> np.ndarray:
    """The one-pass form: a histogram of the pairs over the cutoffs, summed up from the far end."""
    d = pair_distances(p)
    np.fill_diagonal(d, np.inf)
    x = (t @ t.T) / d * ds[:, None] * ds
    np.fill_diagonal(d, 0.0)
    histogram = np.bincount(np.searchsorted(a, d.ravel()), weights=x.ravel(), minlength=len(a) + 1)
    return np.cumsum(histogram[::-1])[::-1][1:] / (8 * np.pi)


def numpy_neumann(p: np.ndarray, rc: float) -> float:
    d = np.roll(p, -1, axis=0) - p
    r = pair_distances(p)
    term = d @ d.T / np.sqrt(r * r + rc * rc)
    np.fill_diagonal(term, 0.0)
    return float(term.sum())


def numpy_repulsion(p: np.ndarray, rc: float) -> float:
    s = 2 * rc / np.maximum(pair_distances(p), 1e-30)
    s[s <= 0.1] = 0.0
    far = np.triu(s, 2)
    far[0, -1] = 0.0
    return float((far**12).sum())


def cases() -> list[Case]:
    p = trefoil(1000)
    d = np.roll(p, -1, axis=0) - np.roll(p, 1, axis=0)
    ds = np.linalg.norm(d, axis=1) / 2
    t = d / np.linalg.norm(d, axis=1)[:, None]
    plain_scan = plain("plain_cutoff_scan")
    energies = np.empty(100)
    result = []
    for name, a in {"even": np.linspace(0.05, 3.0, 100), "geometric": np.geomspace(1e-3, 5.0, 100)}.items():
        plain_scan(p, t, ds, 1000, a, 100, energies)
        ours = _native.calculate_bs_cutoff_energy_scan(p, t, ds, a)
        assert np.allclose(ours, energies, rtol=1e-11, atol=1e-12)
        assert np.allclose(numpy_scan(p, t, ds, a), energies, rtol=1e-11, atol=1e-12)
        result.append(
            Case(
                "calculate_bs_cutoff_energy_scan",
                f"1000 points x 100 {name} cutoffs",
                lambda a=a: _native.calculate_bs_cutoff_energy_scan(p, t, ds, a),
                numpy=lambda a=a: numpy_scan(p, t, ds, a),
                plain=lambda a=a: plain_scan(p, t, ds, 1000, a, 100, energies),
                work=1e6,
                target_numpy=10,
            )
        )
    curve = trefoil(2000)
    plain_neumann, plain_repulsion = plain("plain_neumann"), plain("plain_repulsion")
    assert plain_neumann(curve, 2000, 0.1) == _native.calculate_neumann_self_energy(curve, 0.1)
    assert plain_repulsion(curve, 2000, 0.01) == _native.calculate_core_repulsion(curve, 0.01)
    result.append(
        Case(
            "calculate_neumann_self_energy",
            "2000 points",
            lambda: _native.calculate_neumann_self_energy(curve, 0.1),
            numpy=lambda: numpy_neumann(curve, 0.1),
            plain=lambda: plain_neumann(curve, 2000, 0.1),
            work=2e6,
        )
    )
    result.append(
        Case(
            "calculate_core_repulsion",
            "2000 points",
            lambda: _native.calculate_core_repulsion(curve, 0.01),
            numpy=lambda: numpy_repulsion(curve, 0.01),
            plain=lambda: plain_repulsion(curve, 2000, 0.01),
            work=2e6,
        )
    )
    points = curve.tolist()
    plain_fluid = plain("plain_fluid_sum")
    result.append(
        Case(
            "compute_vkm_mass",
            "2000 points",
            lambda: _native.compute_vkm_mass(points, 2.0),
            plain=lambda: plain_fluid(curve, 2000),
            work=4e6,
        )
    )
    return result
