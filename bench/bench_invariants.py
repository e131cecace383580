"""Invariants of a Fourier curve, and the double sum of the filament energy, against the plain loop over all pairs."""

from __future__ import annotations

import atexit
import tempfile
from pathlib import Path

import _native
import numpy as np
from harness import Case, plain


def numpy_sum(points: np.ndarray, tangents: np.ndarray, neighbours: int) -> float:
    n = len(points)
    along = np.abs(np.subtract.outer(np.arange(n), np.arange(n)))
    counted = np.minimum(along, n - along) > neighbours
    distance = np.linalg.norm(points[:, None] - points[None], axis=2)
    return float(np.sum((tangents @ tangents.T)[counted] / distance[counted]))


def cases() -> list[Case]:
    blocks = {
        f"trefoil {len(block.a_x)} harmonics": block
        for block in (
            _native.load_embedded_knot_block("3_1"),
            _native.parse_embedded_ideal_ab_by_id("3:1:1", "ideal.txt").fourier,
        )
    }
    found = [
        Case(
            "build_invariants",
            f"{name}, 2048",
            lambda block=block: _native.build_invariants_from_fourier_block(block),
            target_seconds=60e-3,
        )
        for name, block in blocks.items()
    ]
    folder = tempfile.TemporaryDirectory()
    atexit.register(folder.cleanup)
    path = Path(folder.name) / "3_1.fseries"
    path.write_text(_native.get_embedded_knot_files()["3_1"], encoding="utf-8")
    plain_sum = plain("plain_nonlocal_sum")
    for n in (1024, 4096):
        params = _native.FilamentEnergyParams()
        params.nsamples = n
        points = np.array(_native.sample_curve_centered(str(path), n))
        edges = np.roll(points, -1, axis=0) - points
        tangents = edges / np.linalg.norm(edges, axis=1)[:, None]
        found.append(
            Case(
                "filament_energy",
                f"{n} samples",
                lambda params=params: _native.compute_filament_energy_from_fseries(str(path), params),
                numpy=lambda p=points, t=tangents: numpy_sum(p, t, 1),
                plain=lambda p=points, t=tangents, n=n: plain_sum(p, t, n, 1),
                work=n * n,
                note="ours with reading, sampling, tube analysis; the others the sum alone",
            )
        )
    return found
