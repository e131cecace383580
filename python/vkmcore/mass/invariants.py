"""A knot's `KnotInvariants` by its name: metadata from the tables, measures from its series.

`build_invariants_from_fourier_block` leaves out 4 samples to either side as neighbours, however fine the curve is
sampled: at its 2048 samples a trefoil's ropelength comes out as hundreds. Here the number follows from the spacing.
"""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore import KnotInvariants, build_invariants_from_fourier_block, evaluate_fourier_block
from vkmcore.curves.neighbours import neighbours
from vkmcore.errors import CurveError

if TYPE_CHECKING:
    from vkmcore.knots import Knot

SAMPLES = 512  # the ropelength of the trefoil to 4e-5


def knot_invariants(knot: str | Knot, samples: int = SAMPLES) -> tuple[KnotInvariants, int]:
    """The invariants of a knot of the catalogue, and how many samples to either side counted as neighbours.

    Crossing number, braid index (strands of the table's braid, which is a shortest one), genus (half the breadth of the
    Alexander polynomial: exact for prime knots to ten crossings and for alternating ones, a lower bound for others) and
    hyperbolic volume are the table's. The chirality is 0 for an amphicheiral knot, else the sign of the shape's writhe:
    the models do not say which hand is 1. Lengths are in the unit of the series.

    Args:
        knot: a name, an id or a knot that has a series.
        samples: of the series, at least 64.

    Raises:
        CurveError: no such knot, or it is a polygon or a link.
        UnknownName: the tables have no knot of this name; it is a ValueError.
    """
    from vkmcore.knots import Knot
    from vkmcore.knots.sources import UNKNOTS
    from vkmcore.reference.tables import find

    found = Knot(knot) if isinstance(knot, str) else knot
    block = found.fourier
    if block is None:
        raise CurveError(f"{found.name or found.source}: a polygon; the invariants need a Fourier series")
    name = found.name or str(knot)
    metadata: dict[str, Any] = {"knot_name": name}
    if name.lower() not in (*UNKNOTS, "0:1:1"):
        entry = find(name)
        breadth = len(entry.alexander_numbers) - 2 if entry.alexander_numbers else 0
        metadata.update(
            knot_name=entry.name,
            crossing_number=entry.crossings,
            braid_index=max(map(abs, entry.braid), default=0) + 1,
            seifert_genus=breadth // 2,
            chirality=0 if entry.amphicheiral else int(np.sign(found.writhe)),
            hyperbolic=entry.geometry == "hyperbolic",
            hyperbolic_volume=entry.volume or 0.0,
        )
    else:
        metadata.update(knot_name="0_1", braid_index=1)
    samples = max(samples, 64)
    skip = neighbours(evaluate_fourier_block(block, (2.0 * np.pi * np.arange(samples) / samples).tolist()))
    return build_invariants_from_fourier_block(block, nsamples=samples, exclude_window=skip, **metadata), skip
