"""The particle evaluator: relaxation and tail surrogate."""

import os

import _native
import numpy as np
from harness import Case, plain


def trefoil(points: int, length: float) -> np.ndarray:
    t = np.arange(points) * 2 * np.pi / points
    p = np.column_stack([np.sin(t) + 2 * np.sin(2 * t), np.cos(t) - 2 * np.cos(2 * t), -np.sin(3 * t)])
    return np.ascontiguousarray(p * (length / np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1).sum()))


def numpy_relax(p: np.ndarray, iterations: int, dt: float) -> np.ndarray:
    n = len(p)
    v = np.zeros_like(p)
    i = np.arange(n)
    for _ in range(iterations):
        force = (np.roll(p, -1, 0) - p + np.roll(p, 1, 0) - p) * 25.0 + (p.mean(0) - p) * 15.0
        for k in i:
            d = p[k] - p
            r2 = (d * d).sum(1)
            hit = (r2 > 1e-8) & (r2 < 0.04) & ((i - k + 1) % n > 2)
            force[k] += (d[hit] / np.sqrt(r2[hit])[:, None] * np.minimum(200.0, 0.5 / r2[hit] ** 2)[:, None]).sum(0)
        v = (dt * force + v) * 0.7
        p = dt * v + p
    return p


def numpy_tail(p: np.ndarray, shells: int, angles: int) -> float:
    core = 1.40897017e-15
    n = len(p)
    dl = np.roll(p, -1, 0) - p
    middle = p + dl / 2
    ds = np.linalg.norm(dl, axis=1)
    edges = np.linspace(1.25 * core, 8 * core, shells + 1)
    angle = (np.arange(angles) + 0.5) * 2 * np.pi / angles
    total = 0.0
    for j in range(n):
        t = p[(j + 1) % n] - p[j - 1]
        t /= np.linalg.norm(t)
        b = np.cross(t, np.cross([0, 0, 1] if abs(t[2]) < 0.9 else [0, 1, 0], t))
        b /= np.linalg.norm(b)
        around = np.outer(np.cos(angle), np.cross(b, t)) + np.outer(np.sin(angle), b)
        d = np.abs(np.arange(n) - j)
        far = np.minimum(n - d, d) > 3
        for i in range(shells):
            r = (p[j] + around * (edges[i] + edges[i + 1]) / 2)[:, None] - middle[far]
            u = (np.cross(dl[far], r) * (7.705979316274285e-10 / ((r * r).sum(2) + 1e-24) ** 1.5)[:, :, None]).sum(1)
            total += (u * u).sum(1).mean() * 3.5e-7 * np.pi * (edges[i + 1] ** 2 - edges[i] ** 2) * ds[j]
    return total


def evaluator(points: np.ndarray) -> _native.ParticleEvaluator:
    return _native.ParticleEvaluator([points])


def relax_case(name: str, points: int, iterations: int, dt: float, target: float | None, note: str) -> Case:
    start = trefoil(points, 16.0)
    out = np.empty_like(start)
    plain_relax = plain("plain_relax")

    relaxed: list[list[list[float]]] = []

    def ours() -> None:
        nonlocal relaxed
        e = evaluator(start)
        e.relax(iterations, dt)
        relaxed = e.get_filaments()

    def by_plain_loop() -> None:
        plain_relax(start, points, iterations, dt, out)
        if not np.array_equal(relaxed[0], out):
            raise AssertionError("relax and the plain loop differ")

    return Case(
        name=name,
        size=f"{points} points, {iterations} sweeps, step {dt:g}",
        ours=ours,
        plain=by_plain_loop,
        numpy=(lambda: numpy_relax(start, iterations, dt)) if iterations <= 20 else None,
        work=float(points) ** 2 * iterations,
        target_plain=target,
        note=note,
    )


def tail_case(points: int, shells: int, angles: int) -> Case:
    e = evaluator(trefoil(points, 16.0))
    e.relax(0)
    config = _native.TailApproxConfig()
    config.enabled = True
    config.radial_samples = shells
    config.azimuth_samples = angles
    e.set_tail_approx_config(config)
    body = np.array(e.get_filaments()[0])
    plain_tail = plain("plain_tail_surrogate")

    energy = e.compute_tail_energy_surrogate_J()

    def by_plain_loop() -> None:
        if plain_tail(body, points, shells, angles) != energy:
            raise AssertionError("the tail surrogate and the plain loop differ")

    return Case(
        name="tail surrogate",
        size=f"{points} points, {shells} x {angles} samples",
        ours=e.compute_tail_energy_surrogate_J,
        plain=by_plain_loop,
        numpy=lambda: numpy_tail(body, shells, angles),
        work=float(points) ** 2 * shells * angles,
        target_plain=4.0,
        note="plain loop's result compared bit for bit",
    )


def cases() -> list[Case]:
    compared = "plain loop's points compared bit for bit"
    full = bool(os.environ.get("BENCH_FULL"))
    result = [
        relax_case("relax", 4000, 20, 0.01, 15.0, f"{compared}; the curve bursts into a cloud here"),
        relax_case("relax", 4000, 100, 0.01, 15.0, compared),
        relax_case("relax, crowded", 4000, 20, 1e-6, 15.0, f"{compared}; a hundred partners a point"),
        tail_case(600, 8, 8),
    ]
    if full:
        result.insert(0, relax_case("relax", 4000, 1000, 0.01, 15.0, compared))
    return result
