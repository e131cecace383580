"""Regularised filament velocity, steps, clearance of polygons and reach of their splines."""

from __future__ import annotations

import _native
import numpy as np
from harness import Case, plain


def trefoil(n: int) -> np.ndarray:
    s = 2 * np.pi * np.arange(n) / n
    return np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)


def numpy_velocity(curves: list[np.ndarray], core: float, constant: float, softening: float) -> list[np.ndarray]:
    edges = [np.roll(p, -1, axis=0) - p for p in curves]
    mids = [0.5 * (np.roll(p, -1, axis=0) + p) for p in curves]
    velocity = []
    for f, p in enumerate(curves):
        n = len(p)
        a, b = np.roll(edges[f], 1, axis=0), edges[f]
        la, lb = np.linalg.norm(a, axis=1), np.linalg.norm(b, axis=1)
        c = (np.log(2 * np.sqrt(la * lb) / core) + constant) / (4 * np.pi)
        v = np.cross(a, b) * (2 * c / (la * lb * (la + lb)))[:, None]
        for s in range(len(curves)):
            R = p[:, None, :] - mids[s][None]
            r2 = (R * R).sum(axis=2) + (0 if s == f else softening**2)
            g = 1 / (4 * np.pi) / (np.sqrt(r2) * r2)
            if s == f:
                i = np.arange(n)
                g[i, i] = g[i, i - 1] = 0
            v += (np.cross(edges[s][None], R) * g[:, :, None]).sum(axis=1)
        velocity.append(v)
    return velocity


def cases() -> list[Case]:
    n = 500
    rng = np.random.default_rng(2)
    curves = [trefoil(n) + rng.normal(scale=2, size=3) for _ in range(4)]
    filaments = [{"points": p} for p in curves]
    options = {"a_sim": 0.05, "core_radius": 0.01}
    stacked = np.vstack(curves)
    out = np.empty_like(stacked)
    plain_velocity = plain("plain_filament_velocity")

    def run_plain():
        return plain_velocity(stacked, 4, n, 0.01, 0.25, 0.05, out)

    ours = _native.compute_filament_velocity(filaments, options)
    assert run_plain() == ours["maximum_speed"]
    assert np.array_equal(out, np.vstack(ours["velocity"]))
    result = [
        Case(
            "compute_filament_velocity",
            "4 filaments x 500 vertices",
            lambda: _native.compute_filament_velocity(filaments, options),
            numpy=lambda: numpy_velocity(curves, 0.01, 0.25, 0.05),
            plain=run_plain,
            work=(4 * n) ** 2,
            target_plain=8,
        ),
        Case(
            "rk4_step",
            "4 filaments x 500 vertices",
            lambda: _native.rk4_step(filaments, 1e-4, options),
            plain=lambda: [run_plain() for _ in range(4)],
            work=4 * (4 * n) ** 2,
            target_plain=8,
            note="plain: four velocities",
        ),
    ]

    plain_self, plain_pair = plain("plain_self_clearance"), plain("plain_pair_clearance")
    knot = trefoil(5000)
    s = 2 * np.pi * np.arange(5000) / 5000
    circle = np.stack([np.cos(s), np.sin(s), 0 * s], axis=1)
    pairs = {
        "trefoils side by side": (knot, knot + np.array([0.3, 0.4, 1.1])),
        "coaxial circles": (circle, circle + np.array([0, 0, 0.1])),
        "Hopf link": (circle, np.stack([1 + np.cos(s), 0 * s, np.sin(s)], axis=1)),
    }

    def plain_clearance(a: np.ndarray, b: np.ndarray) -> tuple[float, float]:
        own = min(plain_self(a, len(a), 2), plain_self(b, len(b), 2))
        return own, plain_pair(a, len(a), b, len(b))

    for name, (a, b) in pairs.items():
        clearance = _native.compute_topology_clearance([a, b])
        assert plain_clearance(a, b) == (clearance["self_min"], clearance["inter_min"])
        result.append(
            Case(
                "compute_topology_clearance",
                f"2 x 5000 vertices, {name}",
                lambda a=a, b=b: _native.compute_topology_clearance([a, b]),
                plain=lambda a=a, b=b: plain_clearance(a, b),
                work=2 * 5000**2,
                target_plain=20,
            )
        )
    for size in (200, 1000):
        points = trefoil(size)
        result.append(
            Case(
                "compute_continuous_reach",
                f"trefoil, {size} points",
                lambda points=points: _native.compute_continuous_reach([points]),
            )
        )
    return result
