"""Spectra of operators anchored to target nodes."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import asdict, dataclass
from typing import TYPE_CHECKING

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Vector = NDArray[np.float64]
    Matrix = NDArray[np.float64]

BOUNDARIES = {"dirichlet": 0, "centre": 1, "reflecting": 2}


@dataclass(frozen=True)
class OperatorSettings:
    """An operator -kinetic d^2/du^2 + V(u) on a grid, with an equal Gaussian well at each target node."""

    u_min: float = -1.0
    u_max: float = 1.0
    points: int = 201
    boundary: str = "dirichlet"
    well_amplitude: float = -400.0
    well_sigma: float = 0.1
    harmonic: float = 0.0
    quartic: float = 0.0
    shift: float = 0.0
    kinetic: float = 1.0
    as_built: bool = False  # solve the operator with its boundary rows, not the reduced one of `reduce_boundaries`
    rotations: int | None = None  # most Jacobi rotations; four times the square of the points if None
    tolerance: float = 1e-10


@dataclass(frozen=True)
class Spectrum:
    """Levels in ascending order, with their vectors as columns."""

    u: Vector
    potential: Vector
    eigenvalues: Vector
    eigenvectors: Vector
    residuals: Vector  # |A x - e x|
    peaks: Vector  # u at which a level's density is greatest
    targets: Vector
    nearest: Vector  # for each target the nearest eigenvalue


def anchored_spectrum(
    nodes: Sequence[float], settings: OperatorSettings, targets: Sequence[float] | None = None
) -> Spectrum:
    """Anchor an operator to `nodes`, solve it, and find the eigenvalues nearest to `targets` (the nodes if None).

    The spectrum is that of the boundary value problem; with `as_built` it is the one that
    `TrefoilOperator.build_and_solve_node_anchored_operator` gives, boundary rows included.

    Raises:
        RuntimeError: fewer than 3 points.
        KeyError: a boundary other than "dirichlet", "centre" and "reflecting".
    """
    from vkmcore import TrefoilOperator as operator

    s = settings
    grid = (s.u_min, s.u_max, s.points)
    mode = BOUNDARIES[s.boundary]
    potential = operator.build_potential_from_nodes(
        *grid, nodes, s.well_amplitude, s.well_sigma, s.harmonic, s.quartic, s.shift
    )
    matrix = operator.assemble_schrodinger_matrix(*grid, mode, True, potential, s.kinetic)
    rotations = 4 * s.points**2 if s.rotations is None else s.rotations
    if s.as_built:
        reduced, lift = matrix, np.eye(s.points)
    else:
        pinned = np.diag(operator.build_second_difference(*grid, mode, True)) == 1.0
        reduced, lift = reduce_boundaries(matrix, pinned)
    solved = operator.jacobi_eigensolve_symmetric(reduced, True, rotations, s.tolerance)
    assert solved["eigenvectors"] is not None
    values, vectors = solved["eigenvalues"], lift @ solved["eigenvectors"]
    vectors /= np.linalg.norm(vectors, axis=0)
    u = operator.build_uniform_grid(*grid)
    aims = np.asarray(nodes if targets is None else targets, dtype=np.float64)
    return Spectrum(
        u=u,
        potential=potential,
        eigenvalues=values,
        eigenvectors=vectors,
        residuals=np.linalg.norm(matrix @ vectors - vectors * values, axis=0),
        peaks=u[np.argmax(np.abs(vectors), axis=0)],
        targets=aims,
        nearest=operator.nearest_eigenvalues_to_targets(values, aims),
    )


def reduce_boundaries(matrix: Matrix, pinned: NDArray[np.bool_]) -> tuple[Matrix, Matrix]:
    """A symmetric matrix with the spectrum of the boundary value problem, and the map of its vectors to the grid.

    The operator's boundary rows make it slightly asymmetric, which the Jacobi solver takes no account of. Points that
    an identity row pins to zero are dropped; reflecting ends, whose rows couple twice as strongly as their columns, are
    balanced by scaling them with the square root of 2.
    """
    scale = np.ones(len(matrix))
    for end, neighbour in ((0, 1), (-1, -2)):
        if not pinned[end] and matrix[neighbour, end] != 0.0:
            scale[end] = np.sqrt(matrix[end, neighbour] / matrix[neighbour, end])
    lift = np.diag(scale)[:, ~pinned]
    reduced = (matrix * scale / scale[:, None])[np.ix_(~pinned, ~pinned)]
    return (reduced + reduced.T) / 2.0, lift


def record(spectrum: Spectrum, settings: OperatorSettings, nodes: Sequence[float], levels: int) -> dict[str, object]:
    """The lowest levels and the targets as plain values, in full precision."""
    columns = (spectrum.eigenvalues, spectrum.residuals, spectrum.peaks)
    lowest = zip(*(column[:levels].tolist() for column in columns), strict=True)
    aims = zip(spectrum.targets.tolist(), spectrum.nearest.tolist(), strict=True)
    return {
        "nodes": [float(node) for node in nodes],
        "levels": [
            {"level": level, "eigenvalue": value, "residual": residual, "peak_u": peak}
            for level, (value, residual, peak) in enumerate(lowest)
        ],
        "targets": [
            {"target": target, "nearest_eigenvalue": value, "difference": value - target} for target, value in aims
        ],
        "settings": asdict(settings),
    }
