"""The texts of the catalogue, written from a campaign's results: the databases of ideal shapes and their companions."""

from __future__ import annotations

import csv
import math
import re
from collections.abc import Callable, Iterable, Iterator, Sequence
from dataclasses import dataclass
from pathlib import Path

from vkmcore import parse_ideal_halvard_from_string
from vkmcore.files import write_bytes, write_text
from vkmcore.ideal.campaign_store import Store
from vkmcore.ideal.form_polish import fit, polish
from vkmcore.ideal.fourier_form import FourierForm, Points, measure_polygons
from vkmcore.ideal.knot_table_forms import GIVEN, is_type, key_text, made, torus
from vkmcore.ideal.packed_polygon import from_bytes, to_bytes
from vkmcore.ideal.stored_form import at_unit_diameter, block_text, form_of_block, standard_polygon, standardised
from vkmcore.ideal.symmetric_forms import mirrored
from vkmcore.reference.listing import table_name
from vkmcore.reference.tables import TableEntry, find, knots

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


@dataclass(frozen=True)
class Text:
    """A database of blocks: which knots or links it holds, and under which tag."""

    file: str
    tag: str
    holds: Callable[[TableEntry], bool]


def _alternating(entry: TableEntry) -> bool:
    """Of eleven crossings or more, and of links, by the name: "11a_1", "L10n3"."""
    return "a" in entry.name


TEXTS = (
    Text("ideal.txt", "AB", lambda e: e.components == 1 and e.crossings <= 10),
    Text("idealLinks.txt", "TL", lambda e: e.components > 1 and e.crossings <= 9),
    Text("ideal_11a.txt", "HT", lambda e: e.components == 1 and e.crossings == 11 and _alternating(e)),
    Text("ideal_11n.txt", "HT", lambda e: e.components == 1 and e.crossings == 11 and not _alternating(e)),
    Text("idealLinks_10a.txt", "TL", lambda e: e.components > 1 and e.crossings == 10 and _alternating(e)),
    Text("idealLinks_10n.txt", "TL", lambda e: e.components > 1 and e.crossings == 10 and not _alternating(e)),
)
POLYGON_CROSSINGS = 12  # of the knots that the catalogue holds as polygons
POLYGON_FOLDER = "ideal/ideal_12_data"


def block_id(name: str) -> str:
    """Id of a knot's block: "8_19" is "8:1:19", "11a_1" is "K11a1"; a link keeps its name."""
    if "_" not in name:
        return name
    return "K" + name.replace("_", "") if re.search("[an]", name) else name.replace("_", ":1:")


def conway_text(notation: str) -> str:
    """Conway's notation with the tangles apart: "2 1 1 2", "3,2 1,2"; tables run the digits together."""
    return re.sub(r"(?<=\d)(?=\d)", " ", notation.replace(";", ","))


def stored(form: FourierForm) -> FourierForm:
    """A form as a text of the catalogue holds it."""
    return at_unit_diameter(standardised(form))


def few_harmonics(form: FourierForm, harmonics: int = SHORT_HARMONICS) -> FourierForm:
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
    """Ids in the order of the tables: by their numbers, the unknots first, alternating links before the others."""

    def place(name: str) -> list[tuple[int, str]]:
        return [(int(part), "") if part.isdigit() else (0, part) for part in re.findall(r"\d+|[an]", name)]

    return sorted(ids, key=lambda name: (place(name), name))


def write_blocks(store: Store, entries: Sequence[TableEntry], text: Text, path: Path) -> int:
    """Replace the blocks of those entries that a text holds. An entry without a form, or whose block is as short, keeps
    its block. Returns how many blocks were replaced."""
    blocks = split_blocks(path.read_text(encoding="utf-8")) if path.exists() else {}
    count = 0
    for entry in filter(text.holds, entries):
        reached = store.load(entry.name)
        name = block_id(entry.name)
        if reached.form is None or ropelength_stated(blocks.get(name, "")) <= reached.form.ropelength * (1.0 + 3e-6):
            continue
        block = block_text(text.tag, name, conway_text(entry.conway), stored(reached.form.form))
        if block == blocks.get(name):  # what it states is longer by rounding only
            continue
        blocks[name] = block
        count += 1
        if count % 20 == 0:
            write_if_changed(path, database(blocks[name] for name in ordered(blocks)))
    if blocks:
        write_if_changed(path, database(blocks[name] for name in ordered(blocks)))
    return count


def write_polygons(store: Store, entries: Sequence[TableEntry], folder: Path, table: Path) -> int:
    """Replace the packed polygons of the campaign's knots of twelve crossings in a folder, by shorter ones only.

    Returns how many were replaced.

    Args:
        table: the file of their ropelengths, as measured on what is written.
    """
    measured: dict[str, str] = {}
    if table.exists():
        with table.open(newline="") as rows:
            measured = {row["key"]: row["ropelength"] for row in csv.DictReader(rows)}
    count = 0
    for entry in entries:
        best = store.load(entry.name).best if entry.crossings == POLYGON_CROSSINGS else None
        key = entry.name.replace("_", "")
        if best is None or float(measured.get(key, "inf")) <= best.ropelength * (1.0 + 3e-6):
            continue
        data, path = to_bytes(_polygon_at_unit_diameter(best.components[0])), folder / f"{key}.polygon"
        if path.exists() and path.read_bytes() == data:  # what is measured is longer by packing only
            continue
        folder.mkdir(parents=True, exist_ok=True)
        write_bytes(path, data)
        measured[key] = f"{measure_polygons([from_bytes(data)]).ropelength:.6f}"
        count += 1
    if count:
        write_text(table, "key,ropelength\n" + "".join(f"{key},{measured[key]}\n" for key in ordered(measured)))
    return count


def _polygon_at_unit_diameter(points: Points) -> Points:
    return standard_polygon(points) * (0.5 / measure_polygons([points]).thickness)


def write_table(store: Store, resources: Path, folder: Path, keys: Iterable[str]) -> Iterator[tuple[str, str]]:
    """Write the texts of the knot table's keys, from the ideal shapes of the databases or of the campaign.

    The two small examples stay as they are. Yields each key with its title, or with what went wrong.
    """

    def ideal(name: str) -> FourierForm:
        if (form := stored_form(resources, name)) is not None:
            return form
        if (reached := store.load(name).form) is not None:
            return reached.form
        raise ValueError(f"there is no ideal shape of {name}")

    for key in keys:
        if key in GIVEN:
            continue
        try:
            words, form = made(key, ideal)
        except ValueError as error:
            yield key, str(error)
            continue
        write_if_changed(folder / f"knot.{key}.fseries", key_text(key, words, form))
        yield key, words


def ropelength_stated(block: str) -> float:
    """Length over tube radius by the L and D of a block's head; infinite where it has none."""
    head = re.search(r' L="([^"]*)" D="([^"]*)"', block)
    return 2.0 * float(head[1]) / float(head[2]) if head else math.inf


# --- texts made from the two databases ----------------------------------------------------------------------------

OUTSIDE_LINKS = ("2.2.1", "4.2.1", "5.2.1", "6.2.1", "6.2.2", "6.2.3", "6.3.1", "6.3.2", "6.3.3")
OUTSIDE_TORI = ((2, 3), (2, 5), (2, 7), (3, 4))


def outside_stems() -> list[str]:
    """The 48 stems of the outside tool's family: knots to eight crossings, links to six, torus curves."""
    stems = [f"knot_{entry.name.replace('_', '.')}" for entry in knots() if entry.crossings <= SHORT_CROSSINGS]
    stems += [f"link_{name}" for name in OUTSIDE_LINKS]
    return stems + [f"torus_{p}.{q}" for p, q in OUTSIDE_TORI]


def stored_form(resources: Path, name: str) -> FourierForm | None:
    """The form of a knot or link in the written databases; None if they lack it."""
    file = "ideal.txt" if "_" in name else "idealLinks.txt"
    path = resources / "ideal" / file
    block = split_blocks(path.read_text(encoding="utf-8")).get(block_id(name)) if path.exists() else None
    return None if block is None else form_of_block(parse_ideal_halvard_from_string(block)[0])


def write_companions(resources: Path, short: Callable[[FourierForm], FourierForm]) -> list[str]:
    """ideal_short.txt, ideal_favorites.txt and the outside tool's family, from what the databases hold; blocks that are
    there and as short stay. Returns the names that were written.

    Args:
        short: makes a form again in few harmonics.
    """
    written = []
    path = resources / "ideal" / "ideal_short.txt"
    blocks = split_blocks(path.read_text(encoding="utf-8")) if path.exists() else {}
    favorites = {}
    for entry in knots():
        form = stored_form(resources, entry.name)
        if form is None:
            continue
        name = block_id(entry.name)
        if entry.name in FAVORITES:
            favorites[name] = block_text("AB", name, conway_text(entry.conway), stored(form))
        if entry.crossings <= SHORT_CROSSINGS and name not in blocks:
            blocks[name] = block_text("AB", name, conway_text(entry.conway), stored(short(form)))
            written.append(f"ideal_short.txt {name}")
    write_if_changed(path, database(blocks[name] for name in ordered(blocks)))
    write_if_changed(resources / "ideal" / "ideal_favorites.txt", database(favorites[n] for n in ordered(favorites)))
    for stem in outside_stems():
        path = resources / "knotplot" / stem / f"{stem}_ab.xml"
        if path.exists():
            continue
        if stem.startswith("torus_"):
            p, q = map(int, stem[6:].split("."))
            curve = torus(p, q)
            form = curve if is_type(table_name(stem))(curve) else mirrored(curve)
        else:
            found = stored_form(resources, find(table_name(stem)).name)
            if found is None:
                continue
            form = short(found)
        entry = find(table_name(stem))
        write_if_changed(path, database([block_text("AB", stem, conway_text(entry.conway), stored(form))]))
        written.append(stem)
    return written
