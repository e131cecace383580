"""Non-negative forces x of contacts that come nearest to holding a target b: least |A x - b|, x >= 0.

A column of A is the gradient of a contact's radius. Minimal forces are not unique where contacts outnumber what they
hold, as where tubes touch along a line; the residual is. A primal-dual interior point method with a predictor and a
corrector (S. Mehrotra, SIAM J. Optim. 2 (1992) 575) takes some twenty steps whatever the number of contacts, each of
them the solution of a system in the rows of A, and ends amid the minimal forces: contacts that are alike carry alike.
"""

from __future__ import annotations

from collections.abc import Callable
from dataclasses import dataclass
from typing import TYPE_CHECKING

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

MOST_STEPS = 60
GAP = 1e-9  # between half the squared residual and its bound, over |b|^2, that ends the steps


@dataclass(frozen=True)
class Columns:
    """The columns of A, K of them: no more than P entries each, unused ones of value 0."""

    rows: NDArray[np.int64]  # (K, P)
    values: Points  # (K, P)

    def times(self, x: Points, count: int) -> Points:
        """A x, of `count` rows."""
        return _summed(self.rows.ravel(), self.values * x[:, None], count)

    def transposed_times(self, y: Points) -> Points:
        product: Points = (self.values * y[self.rows]).sum(axis=1)
        return product


@dataclass(frozen=True)
class Forces:
    """What the contacts hold of the target."""

    forces: Points  # (K,)
    residual: float  # |A x - b| over |b|
    steps: int
    converged: bool


def fitted(columns: Columns, target: Points, tell: Callable[[int], None] = lambda step: None) -> Forces:
    """The forces for a target of any number of rows; `tell` is called with the number of each step."""
    rows, values = columns.rows, columns.values
    size, count = float(np.linalg.norm(target)), len(target)
    if len(rows) == 0 or size == 0.0:
        return Forces(np.zeros(len(rows)), 1.0 if size else 0.0, 0, True)
    places = (rows[:, :, None] * count + rows[:, None, :]).ravel()  # of the entries of A diag(d) A^T
    products = (values[:, :, None] * values[:, None, :]).reshape(len(rows), -1)
    x: Points = np.full(len(rows), size / len(rows) ** 0.5)
    slack: Points = np.full(len(rows), size)
    step = 0
    while True:
        rest = target - columns.times(x, count)
        pull = columns.transposed_times(rest)  # slack = -pull at the minimum, and x slack = 0
        gap = float((x * slack).sum())
        converged = gap <= GAP * size**2 and float(np.abs(slack + pull).max()) <= GAP * size
        if converged or step == MOST_STEPS:
            return Forces(x, float(np.linalg.norm(rest)) / size, step, converged)
        step += 1
        tell(step)
        matrix = _summed(places, products * (x / slack)[:, None], count * count).reshape(count, count)
        matrix[np.diag_indices(count)] += 1.0
        dx, dslack = _moves(columns, matrix, x, slack, pull, 0.0)
        part = _part(x, dx, slack, dslack)
        centring = float(((x + part * dx) * (slack + part * dslack)).sum() / gap) ** 3
        dx, dslack = _moves(columns, matrix, x, slack, pull, centring * gap / len(x) - dx * dslack)
        part = _part(x, dx, slack, dslack)
        x, slack = x + part * dx, slack + part * dslack


def _moves(
    columns: Columns, matrix: Points, x: Points, slack: Points, pull: Points, goal: Points | float
) -> tuple[Points, Points]:
    """Newton's step towards products x slack of `goal`; `matrix` is 1 + A diag(x / slack) A^T."""
    wanted = pull + goal / x
    held = np.asarray(np.linalg.solve(matrix, columns.times(x / slack * wanted, len(matrix))), dtype=np.float64)
    dx = x / slack * (wanted - columns.transposed_times(held))
    return dx, (goal - slack * dx) / x - slack


def _summed(places: NDArray[np.int64], values: Points, count: int) -> Points:
    """The sums of the values that share a place, (count,)."""
    return np.asarray(np.bincount(places, values.ravel(), count), dtype=np.float64)


def _part(x: Points, dx: Points, slack: Points, dslack: Points) -> float:
    """The longest part of a step, at most all of it, that keeps both positive."""
    values, moves = np.concatenate([x, slack]), np.concatenate([dx, dslack])
    falling = moves < 0.0
    return min(1.0, 0.995 * float((-values[falling] / moves[falling]).min(initial=np.inf)))
