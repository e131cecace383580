"""Theory of thin vortex filaments, against which runs are held: speeds, waves, and the velocity of a smooth curve.

A thin filament of circulation Gamma and core radius a moves with Gamma / (4 pi) times

    kappa b^ (log(2 l / a) + C) + the Biot-Savart integral over all but the length l to either side,  l -> 0,

C being the constant of the core (`vkmcore.dynamics.core_model.CONSTANTS`); terms of order (a kappa)^2 are left out
(Saffman, Vortex Dynamics, 1992, ch. 11). All formulas here follow from this. On a smooth closed curve with a parameter
t of period 2 pi the integrand is m(t) / |2 sin(t / 2)| with a smooth m, so that with the Fourier coefficients m_k of m

    finite part = sum_k m_k (-4) (1 + 1/3 + ... + 1 / (2 |k| - 1)) + 2 m(0) log(4 / t_l),

t_l being the parameter at the length l: it converges faster than any power of the number of points.
"""

from __future__ import annotations

import math
from typing import TYPE_CHECKING

import numpy as np

from vkmcore.dynamics.core_model import CONSTANTS

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


def ring_speed(radius: float, core_radius: float, circulation: float = 1.0, core: str = "solid") -> float:
    """Gamma / (4 pi R) (log(8 R / a) + C), m/s: Kelvin's for C = -1/4, Hicks's for the hollow core's -1/2."""
    return circulation / (4.0 * math.pi * radius) * (math.log(8.0 * radius / core_radius) + CONSTANTS[core])


def kelvin_wave_frequency(
    mode: int, radius: float, core_radius: float, circulation: float = 1.0, core: str = "solid"
) -> float:
    """Angular frequency in rad/s of waves cos(mode theta) on a thin ring, mode at least 1 (0 for the tilt, mode 1).

    A displacement Z cos(n theta) along the axis moves the ring radially at P Z, one R cos(n theta) along the radius
    moves it axially at Q R, to first order, and the frequency is sqrt(-P Q).
    """
    if mode < 1:
        raise ValueError("kelvin_wave_frequency: mode must be at least 1")
    n = mode
    t = 2.0 * np.pi * np.arange(4 * n + 16) / (4 * n + 16)
    c, square = np.cos(n * t), 2.0 * (1.0 - np.cos(t))
    axial = np.cos(t) * (1.0 - c) - n * np.sin(n * t) * np.sin(t)
    radial = 2.0 * c - (1.0 + c) * np.cos(t) + n * np.sin(n * t) * np.sin(t) - 1.5 * (1.0 + c) * (1.0 - np.cos(t))
    square[0] = 1.0
    m_axial, m_radial = axial / square, radial / square
    m_axial[0], m_radial[0] = -0.5 * n * n, 0.5 * (n * n - 1.0)
    local = math.log(8.0 * radius / core_radius) + CONSTANTS[core]
    p = -n * n * local + float(finite_parts(m_axial))
    # The length l is reached at a smaller angle where the ring is wider: the last term.
    q = (n * n - 1.0) * local + float(finite_parts(m_radial)) + 1.0
    return circulation / (4.0 * math.pi * radius**2) * math.sqrt(max(-p * q, 0.0))


def finite_parts(m: Points) -> Points:
    """Finite part of the integral of m(t) / |2 sin(t / 2)| over a period, without the term of m(0).

    Args:
        m: values at 2 pi k / M along the first axis, M of them.
    """
    count = len(m)
    weights = np.concatenate([[0.0], np.cumsum(-4.0 / (2.0 * np.arange(1, count // 2 + 1) - 1.0))])
    orders = np.minimum(np.arange(count), count - np.arange(count))
    coefficients = np.fft.fft(m, axis=0).real / count
    return np.tensordot(weights[orders], coefficients, axes=(0, 0))


def thin_filament_velocity(points: Points, core_radius: float, circulation: float = 1.0, core: str = "solid") -> Points:
    """Velocity (M, 3) of a thin filament along a smooth curve, sampled at even steps of any smooth parameter, in m/s.

    Args:
        points: (M, 3) in m, M even; the curve is their trigonometric interpolant.
        core_radius: m.
        circulation: m^2/s.
        core: "solid" or "hollow".
    """
    count = len(points)
    order = np.fft.fftfreq(count, 1.0 / count)
    order[count // 2] = 0.0  # the middle frequency has no derivative
    spectrum = np.fft.fft(points, axis=0)
    first = np.fft.ifft(1j * order[:, None] * spectrum, axis=0).real
    second = np.fft.ifft(-(order[:, None] ** 2) * spectrum, axis=0).real
    speed = np.linalg.norm(first, axis=1)
    binormal = np.cross(first, second) / speed[:, None] ** 3  # curvature times binormal
    at = (np.arange(count)[:, None] + np.arange(count)) % count  # row: lag; column: field point
    r = points[None] - points[at]
    chord = np.abs(2.0 * np.sin(np.pi * np.arange(count) / count))[:, None]
    distance = np.linalg.norm(r, axis=2)
    distance[0] = 1.0
    m = np.cross(first[at], r) * (chord / distance**3)[:, :, None]
    m[0] = 0.5 * binormal
    # 2 m(0) log(4 / t_l) with t_l = l / |x'|, beside kappa b^ (log(2 l / a) + C).
    local = np.log(8.0 * speed / core_radius) + CONSTANTS[core]
    velocity: Points = circulation / (4.0 * math.pi) * (local[:, None] * binormal + finite_parts(m))
    return velocity
