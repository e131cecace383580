"""The tables of prime knots and links: looked up by name, alias or crossing number.

Knots to ten crossings and links to nine belong to the package; knots of eleven and twelve crossings, links of ten and
eleven are read from `database_knotinfo` (extra `catalogue`) where it is installed. Names: "3_1", "3:1:1", "K3a1",
"trefoil", "11a_367", "K11a367", "L5a1", "5^2_1", "Whitehead"; upper and lower case are the same.
"""

from __future__ import annotations

import csv
import difflib
import re
from collections.abc import Iterable
from dataclasses import dataclass
from functools import lru_cache
from pathlib import Path
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from vkmcore.topology.diagram import PlanarDiagram
    from vkmcore.topology.laurent import Laurent


class UnknownName(ValueError):
    """No knot or link of the tables has this name."""


@dataclass(frozen=True)
class TableEntry:
    """A prime knot or link as its table has it, chirality included."""

    name: str
    aliases: tuple[str, ...]
    components: int
    crossings: int
    conway: str  # Conway's notation; "" where the table gives none
    dt: tuple[tuple[int, ...], ...]  # Dowker-Thistlethwaite code, a row a component
    pd: tuple[tuple[int, int, int, int], ...]  # standard planar-diagram code
    grid: tuple[tuple[int, int], ...]  # arc presentation: for each column the rows of its ends; see `ideal.starts`
    braid: tuple[int, ...]
    jones_numbers: tuple[int, ...]  # lowest half power, coefficients of half powers
    alexander_numbers: tuple[int, ...]  # of knots: lowest power, coefficients
    signature: int | None
    symmetry: str  # "reversible", "chiral", "fully amphicheiral", "negative amphicheiral", ...; "" for links
    geometry: str  # "hyperbolic", "torus knot T(2,3)", "satellite ..."
    volume: float | None  # of the complement, hyperbolic; 0 where it is not hyperbolic
    ropelength: float | None  # best published, length over radius
    ropelength_source: str
    linking: tuple[tuple[int, ...], ...]  # linking numbers of the components of a link

    @property
    def diagram(self) -> PlanarDiagram:
        """The table's diagram."""
        from vkmcore.topology.diagram import diagram_of_code

        return diagram_of_code(self.pd)

    @property
    def jones(self) -> Laurent:
        """The published Jones polynomial; of K15a331, that of its diagram."""
        from vkmcore.topology.laurent import laurent

        lowest, *coefficients = self.jones_numbers
        return laurent(dict(enumerate(coefficients, lowest)), "t", 2)

    @property
    def amphicheiral(self) -> bool | None:
        """Whether the knot is its own mirror image; None where the table does not say."""
        return "amphicheiral" in self.symmetry if self.symmetry else None


def _numbers(text: str) -> list[int]:
    return [int(word) for word in text.split()]


def entry_of_row(row: dict[str, str]) -> TableEntry:
    """The entry of a row of text as the tables hold it."""
    pd, grid, linking = _numbers(row["pd"]), _numbers(row["grid"]), _numbers(row["linking"])
    components = int(row["components"])
    volume = row["volume"].strip()
    return TableEntry(
        name=row["name"],
        aliases=tuple(row["aliases"].split(";")),
        components=components,
        crossings=int(row["crossings"]),
        conway=row["conway"],
        dt=tuple(tuple(_numbers(part)) for part in row["dt"].split(";")),
        pd=tuple((pd[k], pd[k + 1], pd[k + 2], pd[k + 3]) for k in range(0, len(pd), 4)),
        grid=tuple(zip(grid[::2], grid[1::2])),
        braid=tuple(_numbers(row["braid"])),
        jones_numbers=tuple(_numbers(row["jones"])),
        alexander_numbers=tuple(_numbers(row["alexander"])),
        signature=int(row["signature"]) if row["signature"].strip("-").isdigit() else None,
        symmetry=row["symmetry"],
        geometry=row["geometry"],
        volume=float(volume) if volume and volume[0].isdigit() else None,
        ropelength=float(row["ropelength"]) if row["ropelength"] else None,
        ropelength_source=row["ropelength_source"],
        linking=tuple(tuple(linking[k : k + components]) for k in range(0, len(linking), components)),
    )


@lru_cache(maxsize=3)
def _entries(file: str) -> tuple[TableEntry, ...]:
    with Path(__file__).with_name(file).open(newline="") as rows:
        return tuple(entry_of_row(row) for row in csv.DictReader(rows))


def knots() -> tuple[TableEntry, ...]:
    """The 249 prime knots of 3 to 10 crossings, in the table's order."""
    return _entries("knots.csv")


def links() -> tuple[TableEntry, ...]:
    """The 130 prime links of two and more components to 9 crossings, in the table's order."""
    return _entries("links.csv")


def others() -> tuple[TableEntry, ...]:
    """The larger knots that the catalogue's knot table holds: 12a_1202, and K15a331 by its diagram alone."""
    return _entries("others.csv")


@lru_cache(maxsize=1)
def polygon_ropelengths() -> dict[str, float]:
    """Length over tube radius of the catalogue's polygons, the knots of twelve crossings, by their keys as "12a1"."""
    with Path(__file__).with_name("polygons.csv").open(newline="") as rows:
        return {row["key"]: float(row["ropelength"]) for row in csv.DictReader(rows)}


@lru_cache(maxsize=1)
def _large_knots() -> tuple[TableEntry, ...]:
    from vkmcore.reference.knotinfo import knot_rows

    return tuple(entry_of_row(row) for row in knot_rows((11, 12)))


@lru_cache(maxsize=1)
def _large_links() -> tuple[TableEntry, ...]:
    from vkmcore.reference.knotinfo import link_rows

    return tuple(entry_of_row(row) for row in link_rows((10, 11)))


def large_knots(crossings: int) -> tuple[TableEntry, ...]:
    """The prime knots of 11 or 12 crossings, from `database_knotinfo`.

    Raises:
        ImportError: it is not installed (extra `catalogue`).
    """
    return tuple(entry for entry in _large_knots() if entry.crossings == crossings)


def large_links(crossings: int) -> tuple[TableEntry, ...]:
    """The prime links of 10 or 11 crossings, from `database_knotinfo`.

    Raises:
        ImportError: it is not installed (extra `catalogue`).
    """
    return tuple(entry for entry in _large_links() if entry.crossings == crossings)


def _key(name: str) -> str:
    """What two spellings of a name have in common."""
    key = " ".join(name.lower().replace("\u2019", "'").split())
    for ending in (" knot", " link"):
        key = key.removesuffix(ending)
    return key.removeprefix("the ")


def _index(entries: Iterable[TableEntry]) -> dict[str, TableEntry]:
    index: dict[str, TableEntry] = {}
    for entry in entries:
        for name in (entry.name, *entry.aliases):
            index.setdefault(_key(name), entry)
    return index


@lru_cache(maxsize=1)
def _small_index() -> dict[str, TableEntry]:
    index = _index((*knots(), *links(), *others()))
    for entry in knots():  # by notation
        index.setdefault("[" + entry.conway.replace(" ", "") + "]", entry)
        index.setdefault("dt [" + ", ".join(map(str, entry.dt[0])) + "]", entry)
    return index


@lru_cache(maxsize=4)
def _large_index(kind: str, crossings: int) -> dict[str, TableEntry]:
    return _index(large_links(crossings) if kind == "l" else large_knots(crossings))


def find(name: str) -> TableEntry:
    """The entry of this name or alias, of Conway's notation as "[2 2]", or of the table's code as "DT [4, 6, 2]".

    Raises:
        UnknownName: there is none; the text suggests near ones.
        ImportError: it is one of the larger tables' and `database_knotinfo` is not installed.
    """
    key = _key(name)
    if (entry := _small_index().get(key)) is not None:
        return entry
    if conway := re.fullmatch(r"(conway:? ?)?(\[.*\])", key):
        if (entry := _small_index().get(conway[2].replace(" ", ""))) is not None:
            return entry
    if numbers := re.fullmatch(r"dt:? ?[\[(]*([-\d, ]+)[\])]*", key):
        code = ", ".join(re.findall(r"-?\d+", numbers[1]))
        if (entry := _small_index().get(f"dt [{code}]")) is not None:
            return entry
    if larger := re.fullmatch(r"([kl]?)(1[0-2])[an]_?\d+(\{[\d,]+\})?", key):
        kind, crossings = larger[1] or "k", int(larger[2])
        if (kind == "l" and crossings in (10, 11)) or (kind == "k" and crossings in (11, 12)):
            if (entry := _large_index(kind, crossings).get(key)) is not None:
                return entry
    near = difflib.get_close_matches(key, _small_index(), n=3, cutoff=0.5)
    names = list(dict.fromkeys(_small_index()[close].name for close in near))
    hint = f"; did you mean {', '.join(names)}?" if names else ""
    raise UnknownName(f"no knot or link of the tables is named {name!r}{hint}")
