"""Verification of what is embedded: every text is parsed, measured on a dense sampling, and its type certified."""

from __future__ import annotations

import math
import re
from dataclasses import dataclass, field

import numpy as np

from vkmcore import (
    get_embedded_ideal_files,
    get_embedded_knot_files,
    index_of_largest_block,
    parse_fseries_from_string,
    parse_ideal_halvard_from_string,
)
from vkmcore.ideal.fourier_form import FourierForm, Measures, Points, measure, measure_polygons
from vkmcore.ideal.stored_form import form_of_block, form_of_series
from vkmcore.reference.listing import table_name
from vkmcore.reference.tables import polygon_ropelengths

SMALL_EXAMPLES = ("0:1:1", "0:1:2")  # of the format, with lengths that are stated and not measured
TOLERANCE = 2e-4  # relative, of the stated length and diameter
VERTICES_A_RADIUS = 6.0  # of the polygon whose type is taken


@dataclass(frozen=True)
class Item:
    """One shape of the catalogue: a key of the knot table, or a block of an ideal text by id."""

    key: str
    source: str  # "knot table" or the text's name
    text: str


@dataclass
class Verdict:
    """What was found of an item."""

    key: str
    source: str
    expected: str  # the type's name
    harmonics: int = 0
    ropelength: float = math.nan  # length over tube radius
    published: float | None = None
    certificate: str = ""
    problems: list[str] = field(default_factory=list)

    @property
    def excess(self) -> float | None:
        return None if self.published is None else self.ropelength / self.published - 1.0


def items() -> list[Item]:
    """All shapes of the embedded tables."""
    found = [Item(key, "knot table", text) for key, text in get_embedded_knot_files().items()]
    for name, text in get_embedded_ideal_files().items():
        blocks = re.findall(r"<(AB|HT|TL)( [^>]*>.*?</\1>)", text, flags=re.S)
        for tag, rest in blocks:
            match = re.search(r'Id="([^"]+)"', rest)
            found.append(Item(match[1] if match else "", name, f"<{tag}{rest}"))
        if not blocks and re.fullmatch(r"(.*/)?12[an]\d+\.txt", name):
            found.append(Item(name.rsplit("/", 1)[-1].removesuffix(".txt"), name, text))
    return found


def verify(item: Item) -> Verdict:
    """Parse, measure and certify one item; what fails is listed, never raised."""
    verdict = Verdict(item.key, item.source, table_name(item.key))
    try:
        _examine(item, verdict)
    except Exception as error:
        verdict.problems.append(f"{type(error).__name__}: {error}")
    return verdict


def _examine(item: Item, verdict: Verdict) -> None:
    form: FourierForm | None
    stated: tuple[float, float] | None = None
    if item.text.startswith("<"):
        blocks = parse_ideal_halvard_from_string(item.text)
        if len(blocks) != 1 or blocks[0].id != item.key:
            raise ValueError("the block cannot be parsed")
        (block,) = blocks
        form = form_of_block(block)
        if block.n != len(form.series):
            verdict.problems.append(f'n="{block.n}" of {len(form.series)} components')
        if item.key not in SMALL_EXAMPLES:
            stated = block.L, block.D
    elif item.source == "knot table":
        series = parse_fseries_from_string(item.text)
        form = form_of_series(series[index_of_largest_block(series)])
    else:
        form = None
        points = np.array([line.split() for line in item.text.splitlines()], dtype=np.float64)
    if form is not None:
        verdict.harmonics = form.harmonics
        measures = measure(form)
        curves = form.points([_count(form, k, measures) for k in range(len(form.series))])
    else:
        measures = measure_polygons([points])
        curves = [points]
        listed = polygon_ropelengths().get(item.key, math.nan)
        if not abs(listed / measures.ropelength - 1.0) <= TOLERANCE:
            verdict.problems.append(f"ropelength {listed:.4f} in the list, measured {measures.ropelength:.4f}")
    verdict.ropelength = measures.ropelength
    if stated is not None:
        for name, value, found in zip("LD", stated, (measures.length, 2.0 * measures.thickness), strict=True):
            if not abs(value / found - 1.0) <= TOLERANCE:
                verdict.problems.append(f'{name}="{value:.6f}", measured {found:.6f}')
    certificate, published = certified(verdict.expected, curves)
    verdict.certificate, verdict.published = certificate, published


def _count(form: FourierForm, component: int, measures: Measures) -> int:
    harmonics = len(form.series[component]) - 1
    length = form.lengths()[component]
    return max(2 * harmonics + 1, 24, math.ceil(VERTICES_A_RADIUS * length / measures.thickness))


def certified(name: str, curves: list[Points]) -> tuple[str, float | None]:
    """The certificate of a type and the published ropelength of its table.

    Raises:
        CertificateError: the curves are of another type.
    """
    from vkmcore.reference.tables import find
    from vkmcore.topology.certificate import certify

    if name in ("0:1:2", "0_1", "0_2", "1_1"):
        t = np.arange(12) * (math.tau / 12)
        ring = np.stack([np.cos(t), np.sin(t), 0.1 * np.sin(3 * t)], axis=1)
        return str(certify(curves, [ring + [9.0 * k, 0.0, 0.0] for k in range(len(curves))])), None
    entry = find(name)
    return str(certify(curves, entry.name)), entry.ropelength
