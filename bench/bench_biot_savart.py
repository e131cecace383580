"""Biot-Savart sums, field grids and the vortex system: 1000 sources, 32768 field points (a 32^3 grid)."""

from collections.abc import Callable

import _native
import numpy as np
from harness import Case, plain

INV_FOUR_PI = 0.07957747154594767


def trefoil(n: int) -> np.ndarray:
    t = np.arange(n) * 2 * np.pi / n
    r = np.cos(3 * t) + 2
    return np.ascontiguousarray(np.stack([np.cos(2 * t) * r, np.sin(2 * t) * r, np.sin(3 * t)], axis=1))


def numpy_sum(sources: np.ndarray, elements: np.ndarray, grid: np.ndarray, kernel) -> np.ndarray:
    """The NumPy form: one vectorised pass over the field points for each source, which keeps memory in the cache."""
    out = np.zeros_like(grid)
    for source, element in zip(sources, elements, strict=True):
        out += kernel(element, grid - source)
    return out


def velocity_kernel(dl: np.ndarray, R: np.ndarray) -> np.ndarray:
    return np.cross(dl, R) / (np.sum(R * R, axis=1) ** 1.5 + 1e-12)[:, None]


def wire_kernel(dl: np.ndarray, R: np.ndarray) -> np.ndarray:
    return np.cross(dl, R) * INV_FOUR_PI / (np.linalg.norm(R, axis=1) ** 3)[:, None]


def potential_kernel(dl: np.ndarray, R: np.ndarray) -> np.ndarray:
    return dl * INV_FOUR_PI / np.linalg.norm(R, axis=1)[:, None]


def dipole_kernel(m: np.ndarray, R: np.ndarray) -> np.ndarray:
    n = np.linalg.norm(R, axis=1)[:, None]
    return (3.0 * (R @ m)[:, None] / n**3 * R - m) * INV_FOUR_PI / n**3


def simsopt_velocity(mid: np.ndarray, dl: np.ndarray, grid: np.ndarray) -> Callable[[], object] | None:
    """The sum over segments by the compiled part of simsopt (PyPI), in its own units."""
    try:
        import simsoptpp
    except ImportError:
        return None
    return lambda: simsoptpp.biot_savart_B(grid, [mid], [dl], [1.0])


def numpy_evolve(positions: np.ndarray, steps: int, dt: float) -> np.ndarray:
    tangents = 0.5 * (np.roll(positions, -1, axis=0) - np.roll(positions, 1, axis=0))
    for _ in range(steps):
        R = positions[:, None, :] - positions[None, :, :]
        r = np.linalg.norm(R, axis=2)
        g = np.divide(1.0, r**3, out=np.zeros_like(r), where=r > 1e-6)
        positions = positions + dt * INV_FOUR_PI * np.sum(np.cross(tangents[None], R) * g[:, :, None], axis=1)
        tangents = 0.5 * (np.roll(positions, -1, axis=0) - np.roll(positions, 1, axis=0))
    return positions


def cases() -> list[Case]:
    n, m = 1000, 32768
    curve = trefoil(n)
    axis = (np.arange(32) - 16) * 0.1
    X, Y, Z = (np.ascontiguousarray(c.ravel()) for c in np.meshgrid(axis, axis, axis, indexing="ij"))
    grid = np.stack([X, Y, Z], axis=1)
    scattered = [np.ascontiguousarray(c) for c in np.random.default_rng(0).permutation(grid).T]
    closed = np.roll(curve, -1, axis=0)
    mid, dl = 0.5 * (curve + closed), closed - curve
    curve_list, grid_list = curve.tolist(), grid.tolist()
    out = np.empty_like(grid)
    ox, oy, oz = np.empty(m), np.empty(m), np.empty(m)
    size = f"{n} x {m}"
    pairs = float(n * m)

    def velocity_numpy():
        return numpy_sum(mid, dl, grid, velocity_kernel)

    def velocity_plain():
        return plain("plain_closed_curve_velocity")(curve, n, grid, m, 1.0, out)

    system = _native.VortexKnotSystem()
    system.initialize_trefoil_knot(n)
    positions, tangents, velocity = curve.copy(), np.zeros_like(curve), np.empty_like(curve)
    tangents[:] = 0.5 * (closed - np.roll(curve, 1, axis=0))
    block = _native.load_embedded_knot_block("3_1")

    def helicity_numpy():
        s = np.arange(n) * 2 * np.pi / (n - 1)
        points = np.array(_native.evaluate_fourier_block(block, s.tolist()))
        points -= points.mean(axis=0)
        ends = np.roll(points, -1, axis=0)
        v = numpy_sum(0.5 * (points + ends), ends - points, grid, velocity_kernel).reshape(32, 32, 32, 3)
        return v / (4 * np.pi)

    return [
        Case(
            "BiotSavart.compute_velocity (lists)",
            size,
            lambda: _native.BiotSavart.compute_velocity(curve_list, grid_list),
            velocity_numpy,
            velocity_plain,
            pairs,
            target_plain=12,
            target_numpy=25,
        ),
        Case(
            "biot_savart_velocity_grid",
            size,
            lambda: _native.biot_savart_velocity_grid(curve, grid),
            velocity_numpy,
            velocity_plain,
            pairs,
            target_plain=12,
            target_numpy=25,
            simsopt=simsopt_velocity(mid, dl, grid),
            target_simsopt=1.6,
        ),
        Case(
            "biot_savart_wire_grid",
            size,
            lambda: _native.biot_savart_wire_grid(X, Y, Z, curve),
            lambda: numpy_sum(mid[:-1], dl[:-1], grid, wire_kernel),
            lambda: plain("plain_wire_field")(curve, n, X, Y, Z, m, 1.0, ox, oy, oz),
            pairs,
            target_plain=8,
        ),
        Case(
            "biot_savart_vector_potential_grid",
            size,
            lambda: _native.biot_savart_vector_potential_grid(curve, grid),
            lambda: numpy_sum(mid[:-1], dl[:-1], grid, potential_kernel),
            lambda: plain("plain_vector_potential")(curve, n, grid, m, 1.0, ox, oy, oz),
            pairs,
            target_plain=8,
        ),
        Case(
            "dipole_ring_field_grid",
            size,
            lambda: _native.dipole_ring_field_grid(X, Y, Z, curve, dl),
            lambda: numpy_sum(curve, dl, grid, dipole_kernel),
            lambda: plain("plain_dipole_field")(curve, dl, n, X, Y, Z, m, ox, oy, oz),
            pairs,
            target_plain=8,
        ),
        Case(
            "biot_savart_wire_grid",
            f"{size}, points in no order",
            lambda: _native.biot_savart_wire_grid(*scattered, curve),
            None,
            lambda: plain("plain_wire_field")(curve, n, *scattered, m, 1.0, ox, oy, oz),
            pairs,
        ),
        Case(
            "dipole_ring_field_grid",
            f"{size}, points in no order",
            lambda: _native.dipole_ring_field_grid(*scattered, curve, dl),
            None,
            lambda: plain("plain_dipole_field")(curve, dl, n, *scattered, m, ox, oy, oz),
            pairs,
        ),
        Case(
            "compute_helicity_from_fourier_block",
            "32^3 x 1000",
            lambda: _native.compute_helicity_from_fourier_block(block),
            helicity_numpy,
            None,
            pairs,
            target_seconds=0.1,
            note="NumPy: the velocity alone",
        ),
        Case(
            "VortexKnotSystem.evolve",
            "1000 points, 10 steps",
            lambda: system.evolve(1e-6, 10),
            lambda: numpy_evolve(curve, 10, 1e-6),
            lambda: plain("plain_evolve")(positions, tangents, n, 1.0, 1e-6, 10, velocity),
            1e7,
            target_plain=8,
        ),
    ]
