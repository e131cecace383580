"""Knots whose tight shapes other starts rarely lead to: torus knots T(2, q) and twist knots.

Their basins are small. A family's starts are random members of a few parameters, contracted at a finer edge and with
little noise, and moved by small hops alone: large ones lead back to wider basins.
"""

from __future__ import annotations

import math
import re
from collections.abc import Callable
from dataclasses import dataclass, field
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.ideal.starts import Start, torus_polygon, twist_polygon

if TYPE_CHECKING:
    from vkmcore.reference.tables import TableEntry

EFFORT: dict[str, Any] = {
    "start_programs": 200,
    "coarse_edge": 0.5,
    "small_noise": 0.05,
    "large_noise": 0.05,
    "small_hops": True,
    "first_chains": 8,
    "first_hops": 30,
    "second_chains": 0,
    "refined": 4,
    "adaptive": False,
}
LEAST_TORUS = 7  # crossings from which on the tight T(2, q) has lobes
LEAST_TWIST = 6  # crossings from which on a twist knot's own starts are worth their time


@dataclass(frozen=True)
class Family:
    """Starts of a knot by its family."""

    kind: str  # "lobed torus", "twist"
    draw: Callable[[np.random.Generator], Start] = field(repr=False)
    count: int  # of starts to a search
    alone: bool  # whether other starts are known to lead to worse shapes only

    def starts(self, seed: int) -> list[Start]:
        """The family's starts, in the chirality of the table."""
        rng = np.random.default_rng(seed)
        starts: list[Start] = []
        while len(starts) < self.count:
            try:
                starts.append(self.draw(rng))
            except ValueError:  # these numbers make strands meet
                continue
        return starts


def family_of(entry: TableEntry) -> Family | None:
    """The family of a knot of the tables, if it has one and is large enough to need it."""
    if torus := re.fullmatch(r"torus knot T\(2, ?(\d+)\)", entry.geometry):
        q = int(torus[1])
        if q >= LEAST_TORUS:
            return Family("lobed torus", lambda rng: _lobed(q, rng), 24, True)
    if twist := re.fullmatch(r"(\d+) ?2", entry.conway):
        half_twists = int(twist[1])
        if half_twists + 2 == entry.crossings >= LEAST_TWIST:
            return Family("twist", lambda rng: _clasped(half_twists, rng), 40, False)
    return None


def _lobed(q: int, rng: np.random.Generator) -> Start:
    """A torus curve of random proportions with lobes of two or three crossings each, which the tight shape keeps. Their
    tops stand about where one strand lies outside the other."""
    lobes = {7: (3,), 9: (4,)}.get(q, (q // 2 - 1, q // 2))
    count = int(rng.choice(lobes))
    threes = q - 2 * count
    spans = rng.permutation([2] * (count - threes) + [3] * threes)
    return torus_polygon(
        2,
        q,
        rng.uniform(2.0, 3.6),
        rng.uniform(1.1, 1.5),
        [int(span) for span in spans],
        rng.uniform(0.65, 1.6),
        math.tau / q * rng.uniform(-0.35, 0.35),
        rng.uniform(0.0, 0.8) if rng.random() < 0.4 else 0.0,
    )


def _clasped(half_twists: int, rng: np.random.Generator) -> Start:
    """A clasped double helix on a modulated ring."""
    pitch = rng.uniform(1.4, 2.6)
    lobes = int(rng.integers(1, max(3, half_twists // 2 + 1)))
    return twist_polygon(
        half_twists,
        pitch=pitch,
        lobes=lobes,
        amplitude=rng.uniform(0.0, 1.0),
        phase=rng.uniform(0.0, math.tau),
    )
