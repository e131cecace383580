"""What the catalogue inside the extension holds, one record an entry, and how a key leads to a text or a file."""

from __future__ import annotations

import os
import re
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

from vkmcore import (
    FourierBlock,
    find_ideal_block_by_id,
    get_embedded_ideal_files,
    get_embedded_knot_files,
    index_of_largest_block,
    load_embedded_ideal_text,
    load_embedded_knot_block,
    parse_fseries_from_string,
)


@dataclass(frozen=True)
class FourierHead:
    """A text of the knot table, by the block that a loader would take: its largest."""

    key: str
    header: str
    harmonics: int


@dataclass(frozen=True)
class IdealHead:
    """A block of the ideal table."""

    id: str
    conway: str
    length: float  # as stated by the source, 0 where it states none
    diameter: float
    components: int
    harmonics: int  # of the longest component
    tag: str  # AB, HT or TL
    source: str  # name of the text


def fourier_heads() -> list[FourierHead]:
    """The knot table, in key order."""
    heads = []
    for key, text in get_embedded_knot_files().items():
        blocks = parse_fseries_from_string(text)
        largest = index_of_largest_block(blocks)
        block = blocks[largest] if largest >= 0 else FourierBlock()
        heads.append(FourierHead(key, block.header, len(block.a_x)))
    return heads


def ideal_heads() -> list[IdealHead]:
    """The blocks of the ideal table, text by text in key order, from their heads and last rows alone."""
    return [
        _head(match, name)
        for name, text in get_embedded_ideal_files().items()
        if "<" in text[:200]
        for match in re.finditer(r"<(AB|HT|TL) ([^>]*)>(.*?)</\1>", text, flags=re.S)
    ]


def _head(match: re.Match[str], source: str) -> IdealHead:
    tag, attributes, body = match.groups()
    stated = dict(re.findall(r'(\w+)="([^"]*)"', attributes))
    components = body.split("<Component ")[1:] or [body]
    last_rows = [part[part.rfind("<Coeff ") :] for part in components]
    harmonics = [int(row[1]) for part in last_rows if (row := re.match(r'<Coeff I="\s*(\d+)"', part))]
    return IdealHead(
        stated["Id"],
        stated.get("Conway", ""),
        float(stated.get("L") or 0.0),
        float(stated.get("D") or 0.0),
        len(components),
        max(harmonics, default=0),
        tag,
        source,
    )


def polygon_keys() -> list[str]:
    """The knots of twelve crossings that the catalogue holds as lists of points, "12a1" and so on, in key order."""
    names = (re.fullmatch(r"ideal/ideal_12_data/(12[an]\d+)\.txt", name) for name in get_embedded_ideal_files())
    return [match[1] for match in names if match]


def fourier_block(key: str) -> FourierBlock | None:
    """The largest block of a key of the Fourier table; None if there is no such key."""
    try:
        return load_embedded_knot_block(key)
    except RuntimeError:
        return None


def ideal_text(block_id: str) -> str:
    """The text of the ideal block of this id, in the catalogue or in the databases on disk; empty if there is none."""
    return find_ideal_block_by_id(block_id)


def large_key(name: str) -> str | None:
    """What the catalogue calls a knot of eleven or twelve crossings: "K11a1" is an id of the ideal table, "12a1" a list
    of points. None for other names."""
    match = re.fullmatch(r"K?(1[12])([an])_?(\d+)", name)
    if match is None:
        return None
    return ("K" if match[1] == "11" else "") + "".join(match.groups())


def polygon_text(key: str) -> str:
    """The points of a knot of twelve crossings, "12a1", three numbers a line; empty if there is no such text."""
    try:
        return load_embedded_ideal_text(f"{key}.txt") if re.fullmatch(r"12[an]\d+", key) else ""
    except RuntimeError:
        return ""


# Where the library looks for `knot.KEY.fseries` behind the places that the environment names, from the working
# directory on.
PLACES = (
    "src/knot_fseries",
    "src/Knots_FourierSeries",
    "../src/knot_fseries",
    "../src/Knots_FourierSeries",
    "../../src/knot_fseries",
    "../../src/Knots_FourierSeries",
    "knot_fseries",
    "../knot_fseries",
    "share/vkmcore/knot_fseries",
    "../../share/vkmcore/knot_fseries",
    "share/thread_knot_core/knot_fseries",
    "../../share/thread_knot_core/knot_fseries",
)


def knot_file(key: str) -> Path | None:
    """The file of a key on disk, found as `VortexKnotSystem.initialize_knot_from_name` finds it.

    It is the first that can be read of `knot.KEY.fseries` in VKM_KNOT_DATA_DIR, in `resources/knot_fseries` and
    `knot_fseries` below VKM_RESOURCE_DIR, and in `PLACES`.
    """
    paths = (folder / f"knot.{key}.fseries" for folder in _folders())
    return next((path for path in paths if path.is_file() and os.access(path, os.R_OK)), None)


def knot_files() -> Iterator[tuple[str, Path]]:
    """Keys and files that `knot_file` would find."""
    seen = set()
    for folder in _folders():
        for path in sorted(folder.glob("knot.*.fseries")):
            key = path.name.removeprefix("knot.").removesuffix(".fseries")
            if key not in seen:
                seen.add(key)
                yield key, path


def _folders() -> list[Path]:
    folders = list(PLACES)
    if resources := os.environ.get("VKM_RESOURCE_DIR"):
        folders[:0] = [f"{resources}/resources/knot_fseries", f"{resources}/knot_fseries"]
    if knots := os.environ.get("VKM_KNOT_DATA_DIR"):
        folders.insert(0, knots)
    return [Path(folder) for folder in folders]
