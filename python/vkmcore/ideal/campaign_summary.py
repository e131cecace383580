"""What a campaign has reached, a row a knot: ropelengths by edge, at the limit of no edge, and against the table."""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass

import numpy as np

from vkmcore.ideal.campaign import COARSE, FINE
from vkmcore.ideal.campaign_store import Entry, Store
from vkmcore.reference.tables import TableEntry

EDGES = (COARSE, *FINE)


@dataclass(frozen=True)
class Summary:
    """Ropelengths are length over tube radius; None where there is none yet."""

    name: str
    crossings: int
    components: int
    published: float | None
    polygons: tuple[float | None, ...]  # at `EDGES`
    polygon: float  # the least of those kept
    limit: float | None  # extrapolated to no edge
    curve: float | None  # of the Fourier form
    harmonics: int | None
    seeds: int  # searches that ended
    cpu_s: float
    certificate: str


def extrapolated(entry: Entry) -> float | None:
    """The ropelength at the limit of no edge, by the two finest; None where they are not of one search, or the finer is
    no refinement of the other: it is the longer one.

    The excess of an equilateral polygon goes with the square of its edge.
    """
    values = entry.ropelengths()
    seeds = {entry.shapes[edge].seed for edge in FINE if edge in entry.shapes}
    if not values.keys() >= {*FINE} or len(seeds) > 1:
        return None
    (coarse, longer), (fine, shorter) = ((edge, values[edge]) for edge in FINE)
    return None if shorter > longer else (shorter * coarse**2 - longer * fine**2) / (coarse**2 - fine**2)


def summaries(store: Store, entries: Iterable[TableEntry]) -> list[Summary]:
    """Rows of those entries that the campaign has a polygon of."""
    rows = []
    for known in entries:
        entry = store.load(known.name)
        if entry.best is None:
            continue
        values = entry.ropelengths()
        rows.append(
            Summary(
                name=known.name,
                crossings=known.crossings,
                components=known.components,
                published=known.ropelength,
                polygons=tuple(values.get(edge) for edge in EDGES),
                polygon=entry.best.ropelength,
                limit=extrapolated(entry),
                curve=entry.form.ropelength if entry.form else None,
                harmonics=entry.form.form.harmonics if entry.form else None,
                seeds=len(entry.seeds()),
                cpu_s=sum(attempt["cpu"] for attempt in entry.attempts),
                certificate=entry.certificate.partition(": ")[2] or entry.certificate,
            )
        )
    return rows


def below_published(rows: Iterable[Summary], margin: float = 0.0) -> list[Summary]:
    """Rows whose best polygon is shorter than the published value, or above it by less than this part; the shortest in
    proportion first."""
    found = [
        (row.polygon / row.published, row)
        for row in rows
        if row.published and row.polygon < row.published * (1.0 + margin)
    ]
    return [row for _, row in sorted(found, key=lambda pair: pair[0])]


@dataclass(frozen=True)
class Group:
    """Excesses of the knots of one crossing number over the published values, as parts of them."""

    crossings: int
    count: int
    median: float
    ninetieth: float  # 90 % are not above it
    worst: float
    at_or_below: int


def groups(rows: Iterable[Summary], curves: bool) -> list[Group]:
    """By crossing number, those with a published value; of the Fourier forms, or of the polygons."""
    excesses: dict[int, list[float]] = {}
    for row in rows:
        value = row.curve if curves else row.polygon
        if value is not None and row.published is not None:
            excesses.setdefault(row.crossings, []).append(value / row.published - 1.0)
    return [
        Group(
            crossings,
            len(found),
            float(np.median(found)),
            float(np.quantile(found, 0.9)),
            max(found),
            sum(excess <= 0.0 for excess in found),
        )
        for crossings, found in sorted(excesses.items())
    ]
