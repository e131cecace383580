"""What the catalogue inside the extension holds, one record an entry, and how a key leads to a text or a file."""

from __future__ import annotations

import os
from pathlib import Path
from typing import TypedDict

from vkmcore import (
    find_ideal_block_by_id,
    get_embedded_ideal_files,
    get_embedded_knot_files,
    index_of_largest_block,
    parse_fseries_from_string,
    parse_ideal_halvard_from_string,
)


class FourierEntry(TypedDict):
    """A text of the knot table, by the block that a loader would take: its largest."""

    id: str
    header: str
    blocks: int
    harmonics: int


class IdealEntry(TypedDict):
    """A block of the ideal table."""

    id: str
    conway: str
    L: float  # as stated by the source, 0 where it states none
    D: float
    n: int  # components as stated by the source
    components: int  # components that are there
    harmonics: int  # of the longest component
    tag: str  # AB, HT or TL
    source: str  # name of the text


def fourier_entries() -> list[FourierEntry]:
    """The knot table, in key order."""
    entries: list[FourierEntry] = []
    for key, text in get_embedded_knot_files().items():
        blocks = parse_fseries_from_string(text)
        largest = index_of_largest_block(blocks)
        entries.append(
            {
                "id": key,
                "header": blocks[largest].header if largest >= 0 else "",
                "blocks": len(blocks),
                "harmonics": len(blocks[largest].a_x) if largest >= 0 else 0,
            }
        )
    return entries


def ideal_entries() -> list[IdealEntry]:
    """The blocks of the ideal table, text by text in key order. Texts without blocks (bare point lists) add none."""
    return [
        {
            "id": block.id,
            "conway": block.conway,
            "L": block.L,
            "D": block.D,
            "n": block.n,
            "components": len(block.components),
            "harmonics": max((len(component.fourier.a_x) for component in block.components), default=0),
            "tag": block.source_tag,
            "source": name,
        }
        for name, text in get_embedded_ideal_files().items()
        for block in parse_ideal_halvard_from_string(text)
    ]


def fourier_text(key: str) -> str:
    """The text of a key of the Fourier table, empty if there is none."""
    return get_embedded_knot_files().get(key, "")


def ideal_text(block_id: str) -> str:
    """The text of the ideal block of this id, in the catalogue or in the databases on disk; empty if there is none."""
    return find_ideal_block_by_id(block_id)


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
    folders = list(PLACES)
    if resources := os.environ.get("VKM_RESOURCE_DIR"):
        folders[:0] = [f"{resources}/resources/knot_fseries", f"{resources}/knot_fseries"]
    if knots := os.environ.get("VKM_KNOT_DATA_DIR"):
        folders.insert(0, knots)
    paths = (Path(folder) / f"knot.{key}.fseries" for folder in folders)
    return next((path for path in paths if path.is_file() and os.access(path, os.R_OK)), None)
