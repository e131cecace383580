#!/usr/bin/env python3
"""Makes the blocks "3:1:1" (trefoil) and "4:1:1" (figure-eight) of resources/ideal/ideal.txt.

Each knot is a member of a small family of closed curves with finite, exact Fourier series,

    x + i y = sum_k c_k exp(i k t),    z = sum_m d_m sin(m t),    0 <= t < 2 pi,

that keeps the symmetry of the knot's closed form. The trefoil starts from the (2, 3) torus knot

    (2 + cos 3t) exp(2 i t),  sin 3t        k = 2, -1, 5 (and -4, 8),  m = 3 (and 6),

the figure-eight from

    (2 + cos 2t) exp(3 i t),  sin 4t        k = 3, 1, 5 (and -3, -1, 7),  m = 4 (and 2, 6).

A pattern search over c and d minimises the ropelength L / D, where L is the length and D the thickness: the smaller of
twice the least radius of curvature and the least distance of points that are at least pi D / 2 apart along the curve.
(Under that curvature bound points nearer along the curve than that are no doubly-critical pair; points at that
distance are at least D apart.) The curve is scaled to D = 1. The L and D of the block are measured on the printed
coefficients with the library's own descriptors. They are what these curves have, not the least known for their knots.

Needs the built module `_native` on the path:

    python tools/make_ideal_blocks.py           prints both blocks
    python tools/make_ideal_blocks.py --write   replaces them in resources/ideal/ideal.txt
"""

from __future__ import annotations

import argparse
import re
from pathlib import Path

import _native
import numpy as np
from numpy.typing import NDArray

Array = NDArray[np.float64]
Rows = dict[int, tuple[Array, Array]]  # {harmonic: (A, B)}
Series = dict[int, float]  # {k: c_k} or {m: d_m}

KNOTS: dict[str, tuple[str, Series, Series]] = {
    # id: Conway notation, {k: c_k}, {m: d_m}
    "3:1:1": ("3", {2: 2.0, -1: 0.5, 5: 0.5, -4: 0.0, 8: 0.0}, {3: 1.0, 6: 0.0}),
    "4:1:1": ("2 2", {3: 2.0, 1: 0.5, 5: 0.5, -3: 0.0, -1: 0.0, 7: 0.0}, {4: 1.0, 2: 0.0, 6: 0.0}),
}
IDEAL_TXT = Path(__file__).resolve().parents[1] / "resources/ideal/ideal.txt"


def coefficients(plane: Series, height: Series) -> Rows:
    """Rows {harmonic: (A, B)} of r(t) = sum A cos(k t) + B sin(k t)."""
    rows: Rows = {}
    for k, c in plane.items():
        a, b = rows.setdefault(abs(k), (np.zeros(3), np.zeros(3)))
        a[0] += c
        b[1] += np.sign(k) * c
    for m, d in height.items():
        rows.setdefault(m, (np.zeros(3), np.zeros(3)))[1][2] += d
    return dict(sorted(rows.items()))


def derivatives(rows: Rows, t: Array) -> tuple[Array, Array, Array]:
    """r, r' and r'' at the parameters t, each of shape (N, 3)."""
    r, r1, r2 = np.zeros((3, len(t), 3))
    for k, (a, b) in rows.items():
        c, s = np.cos(k * t)[:, None], np.sin(k * t)[:, None]
        r += a * c + b * s
        r1 += k * (b * c - a * s)
        r2 -= k * k * (a * c + b * s)
    return r, r1, r2


def equal_steps(rows: Rows, samples: int) -> tuple[Array, float]:
    """Parameters of points at equal steps of arc length, and the length."""
    t = np.linspace(0, 2 * np.pi, 8 * samples + 1, dtype=np.float64)
    speed = np.linalg.norm(derivatives(rows, t)[1], axis=1)
    arc = np.concatenate([[0.0], np.cumsum((speed[1:] + speed[:-1]) / 2)])
    return np.interp(np.arange(samples) / samples * arc[-1], arc, t), float(speed[1:].mean()) * 2 * np.pi


def window(thickness: float, length: float, samples: int) -> int:
    """Samples nearer along the curve than this many are no doubly-critical pair."""
    return max(1, int(np.pi / 2 * thickness / length * samples))


def measure(rows: Rows, samples: int = 240) -> tuple[float, float]:
    """Length and thickness of the curve, for the search: the thickness from samples alone."""
    t, length = equal_steps(rows, samples)
    points, r1, r2 = derivatives(rows, t)
    thickness = 2 / (np.linalg.norm(np.cross(r1, r2), axis=1) / np.linalg.norm(r1, axis=1) ** 3).max()
    gaps = range(window(thickness, length, samples), samples // 2 + 1)
    nearest = min(((points - np.roll(points, -gap, axis=0)) ** 2).sum(axis=1).min() for gap in gaps)
    return length, float(min(thickness, np.sqrt(nearest)))


def measure_with_library(rows: Rows, samples: int = 8192) -> tuple[float, float]:
    """Length and thickness of the curve by the library's descriptors."""
    block = _native.FourierBlock()
    table = np.zeros((max(rows), 6))
    for k, row in rows.items():
        table[k - 1] = np.concatenate(row)
    block.a_x, block.a_y, block.a_z, block.b_x, block.b_y, block.b_z = (list(column) for column in table.T)
    length = _native.length_exact(block, samples)
    t = list(equal_steps(rows, samples)[0])
    thickness = 2 / max(_native.curvature_exact(block, t))
    points = _native.evaluate_fourier_block(block, t)
    return length, min(thickness, _native.min_self_distance_sampled(points, window(thickness, length, samples) - 1))


def search(plane: Series, height: Series) -> list[Series]:
    """Pattern search: steps along each coefficient, halved when none helps. The first c sets the scale and stays."""
    names = [(0, k) for k in list(plane)[1:]] + [(1, m) for m in height]
    best = [dict(plane), dict(height)]

    def ropelength(shape: list[Series]) -> float:
        length, thickness = measure(coefficients(*shape))
        return length / thickness

    value = ropelength(best)
    rng = np.random.default_rng(7)
    step = 0.2
    while step > 1e-5:
        helped = False
        moves = [{name: sign} for name in names for sign in (1, -1)]
        moves += [dict(zip(names, rng.normal(size=len(names)), strict=True)) for _ in range(8 * len(names))]
        for move in moves:
            trial = [dict(part) for part in best]
            for (part, key), size in move.items():
                trial[part][key] += step * size
            trial_value = ropelength(trial)
            if trial_value < value:
                best, value, helped = trial, trial_value, True
        if not helped:
            step /= 2
    return best


def block_text(name: str, conway: str, plane: Series, height: Series) -> str:
    rows = coefficients(*search(plane, height))
    _, thickness = measure_with_library(rows)
    rows = {k: (np.round(a / thickness, 9), np.round(b / thickness, 9)) for k, (a, b) in rows.items()}
    length, thickness = measure_with_library(rows)
    lines = [f'<AB Id="{name}" Conway="{conway}" L="{length:.6f}" D="{thickness:.6f}">']
    for k, (a, b) in rows.items():
        cosines, sines = (", ".join(f"{x + 0.0:12.9f}" for x in triple) for triple in (a, b))
        lines.append(f'  <Coeff I="{k:3d}" A="{cosines}" B="{sines}" />')
    return "\n".join([*lines, "</AB>\n"])


def main() -> None:
    parser = argparse.ArgumentParser(description="Make the blocks of the trefoil and the figure-eight.")
    parser.add_argument("--write", action="store_true", help="replace the blocks in resources/ideal/ideal.txt")
    write = parser.parse_args().write
    text = IDEAL_TXT.read_text()
    for name, knot in KNOTS.items():
        block = block_text(name, *knot)
        print(block, end="", flush=True)
        text = re.sub(rf'<AB Id="{name}".*?</AB>\n', "", text, flags=re.S).replace("</DATA>", block + "</DATA>")
    if write:
        IDEAL_TXT.write_text(text)


if __name__ == "__main__":
    main()
