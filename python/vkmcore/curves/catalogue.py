"""What the catalogue inside the extension holds, one record an entry."""

from __future__ import annotations

from typing import TypedDict

from vkmcore import (
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
