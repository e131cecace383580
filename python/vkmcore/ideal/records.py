"""Records: shapes of a campaign that are shorter than the published value, and what is proved of them."""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass
from decimal import ROUND_CEILING, ROUND_FLOOR, Decimal
from pathlib import Path
from typing import Any

from vkmcore.ideal.campaign_store import Shape, Store
from vkmcore.ideal.campaign_summary import EDGES, Summary, below_published, summaries
from vkmcore.ideal.rigorous_bound import RopelengthBound, ropelength_bound
from vkmcore.reference.tables import TableEntry

ROUNDING = 1e-3  # more than a polygon of edges of 0.15 radii, or finer, gains where its corners are rounded


@dataclass(frozen=True)
class Record:
    """A polygon and its proved bound; ropelengths are length over tube radius."""

    summary: Summary
    published: float
    shape: Shape  # the shortest polygon of all edges
    bound: RopelengthBound  # of the smooth curve of that polygon
    certificate: str  # of that polygon

    @property
    def proved(self) -> bool:
        """Whether a curve of this type is proved to be shorter than the published value."""
        return self.bound.same_type and self.bound.ropelength < self.published

    @property
    def below(self) -> bool:
        """Whether the polygon, or the curve with rounded corners, is shorter than the published value."""
        return self.proved or self.shape.ropelength < self.published

    def row(self) -> dict[str, Any]:
        """As a line of a table."""
        return {
            "name": self.summary.name,
            "published": self.published,
            **{f"edge_{edge:.2f}": value for edge, value in zip(EDGES, self.summary.polygons, strict=True)},
            "extrapolated": self.summary.limit,
            "polygon_edge": self.shape.edge,
            "vertices": sum(map(len, self.shape.components)),
            "length_at_most": self.bound.length,
            "thickness_at_least": self.bound.thickness,
            "ropelength_at_most": self.bound.ropelength,
            "proved_below_published": "yes" if self.proved else "no",
            "certificate": self.certificate,
        }


def candidates(folder: Path, entries: Iterable[TableEntry]) -> list[Summary]:
    """Knots and links of a campaign's folder whose shortest polygon is below the published value, or so little above it
    that rounding its corners may be enough; the shortest in proportion first."""
    return below_published(summaries(Store(folder), entries), ROUNDING)


def record(folder: Path, summary: Summary) -> Record:
    """The record of a candidate.

    Raises:
        CertificateError: the polygon is of another type. It is certified here if the folder's certificate is that of a
            finer polygon.
    """
    from vkmcore.topology.certificate import certify

    assert summary.published is not None
    entry = Store(folder).load(summary.name)
    shape = entry.best
    assert shape is not None
    certificate = summary.certificate
    if shape.edge != min(entry.shapes):
        certificate = str(certify(list(shape.components), summary.name)).partition(": ")[2]
    return Record(summary, summary.published, shape, ropelength_bound(shape.components), certificate)


def rounded_up(value: float, places: int = 4) -> str:
    """Digits of a number that is not smaller."""
    return str(Decimal(value).quantize(Decimal(1).scaleb(-places), ROUND_CEILING))


def rounded_down(value: float, places: int = 4) -> str:
    """Digits of a number that is not larger."""
    return str(Decimal(value).quantize(Decimal(1).scaleb(-places), ROUND_FLOOR))
