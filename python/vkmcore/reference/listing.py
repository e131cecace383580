"""What the catalogue holds and what the tables say of it: one record a shape, for lists and pages."""

from __future__ import annotations

import re
from dataclasses import dataclass

from vkmcore.curves.catalogue import FourierHead, IdealHead, fourier_heads, ideal_heads, knot_files, polygon_keys
from vkmcore.reference.tables import TableEntry, UnknownName, find, polygon_ropelengths


@dataclass(frozen=True)
class Listed:
    """A shape of the catalogue."""

    key: str  # what loads it: "3:1:1", "L5a1", "4_1d"
    name: str  # of the table: "3_1"
    aliases: tuple[str, ...]
    components: int
    crossings: int
    conway: str
    chirality: str  # "as in the table", "amphicheiral", or "" where it is not known
    symmetry: str  # of the type: "reversible", "fully amphicheiral", ...
    form: str  # what kind of shape: "ideal", or the words of its header
    ropelength: float | None  # length over tube radius, by its own L and D
    published: float | None  # the best published value
    difference: float | None  # (ropelength - published) / published
    harmonics: int
    source: str  # the text or file


def listed() -> list[Listed]:
    """The knot table, blocks and polygons of the ideal table, and the `.fseries` files on disk that no key hides."""
    entries = [_of_ideal(head) for head in ideal_heads()]
    entries += [
        _listed(key, table_name(key), "ideal polygon", polygon_ropelengths().get(key), 0, f"{key}.txt")
        for key in polygon_keys()
    ]
    entries += [_of_fourier(head) for head in fourier_heads()]
    keys = {entry.key for entry in entries}
    entries += [
        _listed(key, table_name(key), "on disk", None, 0, str(path)) for key, path in knot_files() if key not in keys
    ]
    return sorted(entries, key=lambda e: (e.components, e.crossings, _numbers(e.name), e.key))


def _numbers(name: str) -> list[int]:
    return [int(number) for number in re.findall(r"\d+", name)]


def table_name(key: str) -> str:
    """The table's name of what a key of the catalogue stands for; the key itself if it names no such thing."""
    if match := re.fullmatch(r"(\d+):1:(\d+)", key):
        return f"{match[1]}_{match[2]}"
    if match := re.fullmatch(r"(\d+[an]?_\d+)[a-z]?\d*", key):
        return match[1]
    if match := re.fullmatch(r"(knot|link|torus)_([\d.]+)", key):
        return _outside_name(match[1], [int(number) for number in match[2].split(".")])
    if match := re.fullmatch(r"(12[an]|K11[an])(\d+)", key):
        return f"{match[1].removeprefix('K')}_{match[2]}"
    return key


def _outside_name(kind: str, numbers: list[int]) -> str:
    if kind == "torus":
        return torus_name(*numbers)
    if kind == "link":
        return f"{numbers[0]}^{numbers[1]}_{numbers[2]}"
    return "_".join(map(str, numbers))


def torus_name(p: int, q: int) -> str:
    """The table's name of the torus knot or link T(p, q)."""
    p, q = sorted((p, q))
    names = {
        (2, 2): "L2a1",
        (2, 4): "L4a1",
        (2, 6): "L6a3",
        (2, 8): "L8a14",
        (3, 3): "L6n1",
        (3, 4): "8_19",
        (3, 5): "10_124",
    }
    return names.get((p, q), f"{q}_1" if p == 2 else f"T({p},{q})")


def _of_ideal(head: IdealHead) -> Listed:
    ropelength = 2.0 * head.length / head.diameter if head.length > 0.0 and head.diameter > 0.0 else None
    form = "outside tool's format" if head.source.startswith("knotplot/") else "ideal"
    return _listed(head.id, table_name(head.id), form, ropelength, head.harmonics, head.source, head.components)


def _of_fourier(head: FourierHead) -> Listed:
    match = re.search(r"ropelength ([\d.]+)", head.header)
    ropelength = float(match[1]) if match else None
    return _listed(head.key, table_name(head.key), head.header, ropelength, head.harmonics, "knot table")


def _listed(
    key: str, name: str, form: str, ropelength: float | None, harmonics: int, source: str, components: int = 1
) -> Listed:
    table: TableEntry | None
    try:
        table = find(name)
    except (UnknownName, ImportError):
        table = None
    published = table.ropelength if table else None
    numbers = _numbers(name)
    chirality = ""
    if table is not None and table.amphicheiral is not None:
        chirality = "amphicheiral" if table.amphicheiral else "as in the table"
    return Listed(
        key=key,
        name=table.name if table else name,
        aliases=table.aliases if table else (),
        components=table.components if table else components,
        crossings=table.crossings if table else (numbers[0] if numbers and numbers[0] > 2 else 0),
        conway=table.conway if table else "",
        chirality=chirality,
        symmetry=table.symmetry if table else "",
        form=form,
        ropelength=ropelength,
        published=published,
        difference=None if ropelength is None or published is None else ropelength / published - 1.0,
        harmonics=harmonics,
        source=source,
    )
