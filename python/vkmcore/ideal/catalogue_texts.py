"""The texts of the catalogue, written from a campaign's results: ideal.txt, idealLinks.txt and their companions."""

from __future__ import annotations

import math
import re
from collections.abc import Iterable, Sequence
from pathlib import Path

from vkmcore.files import write_text
from vkmcore.ideal.campaign_store import Store
from vkmcore.ideal.fourier_form import FourierForm, fit, polish
from vkmcore.ideal.stored_form import at_unit_diameter, block_text, standardised
from vkmcore.reference.tables import TableEntry

# A dozen that users draw, teach and compare with: the first knots, one of each torus family, the most symmetric
# alternating knot, and the two of ten crossings that bound the ropelengths.
FAVORITES = (
    "3_1",
    "4_1",
    "5_1",
    "5_2",
    "6_1",
    "6_3",
    "7_1",
    "7_4",
    "8_18",
    "8_19",
    "10_123",
    "10_124",
)
SHORT_CROSSINGS = 8
SHORT_HARMONICS = 48


def block_id(name: str) -> str:
    """Id of a knot's AB block: "8_19" is "8:1:19"; a link keeps its name."""
    return name.replace("_", ":1:") if "_" in name else name


def conway_text(notation: str) -> str:
    """Conway's notation with the tangles apart: "2 1 1 2", "3,2 1,2"; tables run the digits together."""
    return re.sub(r"(?<=\d)(?=\d)", " ", notation.replace(";", ","))


def stored(form: FourierForm) -> FourierForm:
    """A form as a text of the catalogue holds it."""
    return at_unit_diameter(standardised(form))


def few_harmonics(form: FourierForm, harmonics: int) -> FourierForm:
    """The form made again in fewer harmonics."""
    points = form.evenly_spaced([8 * (len(c) - 1) for c in form.series])
    return polish(fit(points, harmonics))


def split_blocks(text: str) -> dict[str, str]:
    """The blocks of a text by id, in order."""
    return {
        match[1]: match[0] for match in re.finditer(r'<(?:AB|HT|TL) Id="([^"]*)".*?</(?:AB|HT|TL)>\n', text, flags=re.S)
    }


def database(blocks: Iterable[str]) -> str:
    return "<DATA>\n" + "".join(blocks) + "</DATA>\n"


def write_if_changed(path: Path, text: str) -> bool:
    path.parent.mkdir(parents=True, exist_ok=True)
    if path.exists() and path.read_text(encoding="utf-8") == text:
        return False
    write_text(path, text)
    return True


def ordered(ids: Iterable[str]) -> list[str]:
    """Ids in the order of the tables: by the numbers in them, the unknots first."""
    return sorted(ids, key=lambda name: ([int(number) for number in re.findall(r"\d+", name)], name))


def write_knots(store: Store, entries: Sequence[TableEntry], path: Path) -> int:
    """Replace the blocks of the campaign's knots in a text. A knot without a form, or whose block is as short, keeps its
    block. Returns how many blocks were replaced."""
    return _write(store, entries, path, "AB")


def write_links(store: Store, entries: Sequence[TableEntry], path: Path) -> int:
    """The same for links."""
    return _write(store, entries, path, "TL")


def _write(store: Store, entries: Sequence[TableEntry], path: Path, tag: str) -> int:
    blocks = split_blocks(path.read_text(encoding="utf-8")) if path.exists() else {}
    count = 0
    for entry in entries:
        reached = store.load(entry.name)
        name = block_id(entry.name)
        if reached.form is None or ropelength_stated(blocks.get(name, "")) <= reached.form.ropelength * (1.0 + 1e-6):
            continue
        blocks[name] = block_text(tag, name, conway_text(entry.conway), stored(reached.form.form))
        count += 1
    write_if_changed(path, database(blocks[name] for name in ordered(blocks)))
    return count


def ropelength_stated(block: str) -> float:
    """Length over tube radius by the L and D of a block's head; infinite where it has none."""
    head = re.search(r' L="([^"]*)" D="([^"]*)"', block)
    return 2.0 * float(head[1]) / float(head[2]) if head else math.inf
