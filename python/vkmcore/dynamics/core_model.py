"""What the library's filament velocity lacks, and the step that adds it.

The velocity at a vertex is a local term for its two edges of lengths la and lb,

    Gamma / (4 pi) (log(2 sqrt(la lb) / a) + C) kappa b^,

and a sum over all other edges, each taken from its midpoint. With C of the core's model, the local term is
what the two edges of a smooth curve induce to leading order (C = -1/4 for a core in solid rotation, -1/2 for a hollow
one; Saffman, Vortex Dynamics, 1992, ch. 11). The sum is not what the rest induces, however fine the polygon is. Near
the vertex the curve is s T + kappa s^2 / 2 N, and its part ds induces Gamma / (4 pi) kappa b^ / 2 ds / s. An edge from
s to s + h has its midpoint at p = s + h / 2 along T and kappa / 2 (p^2 + h^2 / 4) along N, for it lies on the chord,
and gives

    h s (s + h) / p^3 = 2 q (1 - q^2),  q = h / (2 p),  in place of  log((s + h) / s) = 2 atanh q.

So the logarithm of the local term lacks, half for either side, the sum of 2 atanh q - 2 q (1 - q^2) over the edges of
that side behind the first. It is a pure number that depends on the ratios of nearby edges alone. For even edges
q = 1 / (2 j + 1), j = 1, 2, ..., and the sum is psi(3/2) + (7 zeta(3) - 8) / 4 = 0.14009 (psi is the digamma
function): Gamma / (4 pi R) times that is missing from the speed of a ring, at any resolution.

Here the nearest edges are summed as they are, and the rest as if it went on evenly.
"""

from __future__ import annotations

import math
from collections.abc import Mapping, Sequence
from functools import lru_cache
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np

from vkmcore.dynamics.velocity import Summation

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

CONSTANTS = {"hollow": -0.5, "solid": -0.25}  # C: a core without and with rotation
MODELS = ("hollow", "solid", "constant", "raw")
EVEN_DEFICIT = 2.0 - np.euler_gamma - 2.0 * math.log(2.0) + (7.0 * 1.2020569031595942 - 8.0) / 4.0
NEAREST = 8  # edges of a side that are summed; what is left out of the rest is below 1e-6
LEAST_LENGTH = 1e-30  # m, as in the library
NEXT, LAST = [1, 2, 0], [2, 0, 1]  # axes of a cross product


def core_options(core: str, options: Mapping[str, Any]) -> dict[str, Any]:
    """The library's options with the constant of the model: "hollow", "solid"; "constant" and "raw" leave them.

    Raises:
        ValueError: no such model, or it has a constant of its own and the options give another.
    """
    if core not in MODELS:
        raise ValueError(f"unknown core {core!r}; known are {', '.join(MODELS)}")
    if core not in CONSTANTS:
        return dict(options)
    if "lia_constant" in options:
        raise ValueError(f"core {core!r} has the constant {CONSTANTS[core]:g}; leave out lia_constant, or core")
    return {**options, "lia_constant": CONSTANTS[core]}


def sum_deficit(points: Points) -> Points:
    """What the logarithm lacks at each vertex of a closed polygon (N, 3): an array (N,)."""
    edges = _edges_of(points, _indices((len(points),)))
    return _deficit(edges[1], _indices((len(points),)))


class _Indices(NamedTuple):
    """Places in arrays that hold the vertices of several closed polygons one after the other."""

    after: NDArray[np.intp]  # (V,): the vertex behind each one
    before: NDArray[np.intp]
    sides: NDArray[np.intp]  # (NEAREST + 1, 2 V): the edges that leave each vertex, the nearest first; that arrive


@lru_cache(maxsize=8)
def _indices(sizes: tuple[int, ...]) -> _Indices:
    begins = np.repeat(np.cumsum((0, *sizes))[:-1], sizes)
    counts = np.repeat(sizes, sizes)
    vertex = np.arange(sum(sizes)) - begins
    place = np.arange(NEAREST + 1)[:, None]
    sides = np.concatenate([begins + (vertex + place) % counts, begins + (vertex - 1 - place) % counts], axis=1)
    return _Indices(begins + (vertex + 1) % counts, begins + (vertex - 1) % counts, sides)


def _edges_of(points: Points, at: _Indices) -> tuple[Points, Points]:
    """The edges that leave the vertices (3, V), and their lengths (V,)."""
    columns = np.ascontiguousarray(points.T)
    edges = columns[:, at.after] - columns
    return edges, np.maximum(np.sqrt((edges * edges).sum(axis=0)), LEAST_LENGTH)


def _deficit(lengths: Points, at: _Indices) -> Points:
    edges = lengths[at.sides]
    ends = np.cumsum(edges, axis=0)
    h, ahead, behind = edges[1:], ends[1:], ends[:-1]
    q = h / (ahead + behind)
    summed = (q * (1.0 - q * q)).sum(axis=0)
    # On even edges h the terms behind a distance s sum to h^2 / (6 s^2) - (37 / 960) (h / s)^4 (Euler and Maclaurin).
    far = (h * h * h).sum(axis=0) / (h.sum(axis=0) * ends[-1] ** 2)
    rest = far * (1.0 / 6.0 - (37.0 / 960.0) * far) - 2.0 * summed
    ratio = ends[-1] / ends[0]
    count = len(lengths)
    deficit: Points = 0.5 * (_log(ratio[:count] * ratio[count:]) + rest[:count] + rest[count:])
    return deficit


def _log(x: Points) -> Points:
    """Natural logarithm of positive numbers by arithmetic alone: NumPy's differs between processors in the last bit."""
    mantissa, exponent = np.frexp(x)
    root = np.sqrt(np.sqrt(mantissa))  # 0.84 .. 1
    t = (root - 0.9170040432046712) / (root + 0.9170040432046712)  # about 2^(-1/8)
    square = t * t
    series = np.full_like(t, 1.0 / 13.0)
    for k in (11, 9, 7, 5, 3, 1):  # |t| < 0.044: what follows t^13 is below 1e-20
        series = series * square + 1.0 / k
    logarithm: Points = 8.0 * t * series + (exponent - 0.5) * math.log(2.0)
    return logarithm


def _lacking(points: Sequence[Points], strengths: Sequence[float]) -> list[Points]:
    """What the velocities (N, 3) of polygons lack: Gamma / (4 pi), the strength, times the deficit times kappa b^."""
    sizes = tuple(map(len, points))
    at = _indices(sizes)
    b, lb = _edges_of(np.concatenate(points), at)
    a, la = b[:, at.before], lb[at.before]
    cross = a[NEXT] * b[LAST] - a[LAST] * b[NEXT]  # with the factor, kappa b^ as the library's local term has it
    factor = np.repeat(strengths, sizes) * _deficit(lb, at) * 2.0 / (la * lb * (la + lb))
    return np.split((cross * factor).T, np.cumsum(sizes)[:-1])


def filament_velocity(
    filaments: Sequence[Mapping[str, Any]],
    options: Mapping[str, Any] | None = None,
    core: str = "constant",
    summation: Summation | None = None,
) -> tuple[list[Points], float]:
    """Velocities (N, 3) of the filaments in m/s, with what the sum lacks, and the largest speed.

    Args:
        filaments, options: as of `compute_filament_velocity`.
        core: the model of the core: "hollow", "solid", "constant" (the options' lia_constant), or "raw": the library's
            velocity as it is.
        summation: how it is summed; directly on all usable cores by default.

    Raises:
        ValueError: no such model, or the options have a lia_constant beside its own.
    """
    options = core_options(core, options or {})
    summation = summation or Summation()
    if core == "raw":
        found = summation.velocity(filaments, options)
        return found["velocity"], float(found["maximum_speed"])
    return _whole_velocity(filaments, options, summation)


def _whole_velocity(
    filaments: Sequence[Mapping[str, Any]], options: dict[str, Any], summation: Summation
) -> tuple[list[Points], float]:
    """The library's velocity and what its sum lacks."""
    found = summation.velocity(filaments, options)
    velocities: list[Points] = found["velocity"]
    if options.get("lia_only", False):
        return velocities, float(found["maximum_speed"])
    # The sum that lacks something is the filament's own, which only a source has.
    own = [
        number
        for number, filament in enumerate(filaments)
        if filament.get("source", True) and not filament.get("ghost", False) and len(filament["points"])
    ]
    if not own:
        return velocities, float(found["maximum_speed"])
    strengths = [filaments[number].get("circulation", 1.0) / (4.0 * math.pi) for number in own]
    for number, lacking in zip(own, _lacking([filaments[number]["points"] for number in own], strengths)):
        velocities[number] = velocities[number] + lacking
    largest = max(float(np.einsum("ij,ij->i", v, v).max()) for v in velocities if len(v))
    return velocities, math.sqrt(largest)


def rk4_step(
    filaments: Sequence[Mapping[str, Any]], dt: float, options: Mapping[str, Any], core: str, summation: Summation
) -> tuple[list[Points], float]:
    """One classical Runge-Kutta step of dt seconds: positions, and the largest speed of the four stages in m/s.

    The options are those of `core_options`. What runs away comes out as infinity or NaN, without a warning.
    """
    if core == "raw":
        step = summation.rk4_step(filaments, dt, options)
        return [moved["points"] for moved in step["filaments"]], float(step["maximum_stage_speed"])
    total = [0.0 * filament["points"] for filament in filaments]
    speed: list[Points] = []
    largest = 0.0
    with np.errstate(all="ignore"):
        for part, weight in ((0.0, 1.0), (0.5, 2.0), (0.5, 2.0), (1.0, 1.0)):
            stage = [dict(filament) for filament in filaments]
            for filament, v in zip(stage, speed):
                filament["points"] = filament["points"] + (part * dt) * v
            speed, fastest = _whole_velocity(stage, dict(options), summation)
            largest = max(largest, fastest)
            total = [t + weight * v for t, v in zip(total, speed)]
        return [f["points"] + (dt / 6.0) * t for f, t in zip(filaments, total)], largest
