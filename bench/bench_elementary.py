"""Kernels that spend their time in elementary functions: circles, transfer kernels, corners of polygons."""

from __future__ import annotations

import _native
import numpy as np
from harness import Case


def numpy_circle(n):
    t = np.arange(n) * (2.0 * np.pi / n)
    return np.stack([np.cos(t), np.sin(t), np.zeros(n)], axis=1)


def numpy_transfer_kernel(u, potential, width, scale):
    kernel = np.exp(-0.5 * ((u[:, None] - u) / width) ** 2 - scale * potential)
    return kernel / kernel.sum(axis=1, keepdims=True)


def numpy_least_radius(points):
    edges = np.roll(points, -1, axis=0) - points
    before = np.roll(edges, 1, axis=0)
    lengths, lengths_before = np.linalg.norm(edges, axis=1), np.linalg.norm(before, axis=1)
    cosines = np.einsum("ij,ij->i", before, edges) / (lengths * lengths_before)
    return np.min(np.minimum(lengths, lengths_before) / (2.0 * np.tan(np.arccos(np.clip(cosines, -1.0, 1.0)) / 2.0)))


def knot(n):
    t = np.linspace(0.0, 2.0 * np.pi, n, endpoint=False)
    r = 2.0 + np.cos(3.0 * t)
    return np.stack([r * np.cos(2.0 * t), r * np.sin(2.0 * t), np.sin(3.0 * t)], axis=1)


def cases() -> list[Case]:
    geometry, operator = _native.ResolvedTubeGeometry, _native.TrefoilOperator
    n = 400
    u = np.linspace(-8.0, 8.0, n)
    found = [
        Case(
            "sample_circle",
            f"{count} points",
            lambda count=count: _native.sample_circle(count),
            lambda count=count: numpy_circle(count),
        )
        for count in (1000, 100_000)
    ]
    for width in (0.05, 0.3, 3.0):
        found.append(
            Case(
                "assemble_transfer_kernel",
                f"{n} x {n}, width {width}",
                lambda width=width: operator.assemble_transfer_kernel(-8.0, 8.0, n, u * u, width, 0.05),
                lambda width=width: numpy_transfer_kernel(u, u * u, width, 0.05),
            )
        )
    for name, points in (("knot", knot(20_000)), ("regular polygon", numpy_circle(20_000))):
        found.append(
            Case(
                "global_minrad",
                f"{name}, {len(points)} vertices",
                lambda points=points: geometry.global_minrad(points),
                lambda points=points: numpy_least_radius(points),
            )
        )
    return found
