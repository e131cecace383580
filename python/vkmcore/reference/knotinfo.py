"""Rows of the package's tables from KnotInfo and LinkInfo, as the package `database_knotinfo` holds them.

KnotInfo: Table of Knot Invariants, C. Livingston and A. H. Moore. LinkInfo: Table of Link Invariants, C. Livingston and
A. H. Moore. Ropelengths of knots are KnotInfo's column, in the radius convention: length over the tube's radius.
"""

from __future__ import annotations

import re
from collections.abc import Iterable

COLUMNS = (
    "name",
    "aliases",  # separated by ;
    "components",
    "crossings",
    "conway",
    "dt",
    "pd",  # four arcs a crossing
    "grid",  # two rows a column
    "braid",
    "jones",  # lowest half power, coefficients
    "alexander",  # lowest power, coefficients
    "signature",
    "symmetry",
    "geometry",
    "volume",
    "ropelength",
    "ropelength_source",
    "linking",  # row by row, where there are several components
)

COMMON_NAMES = {
    "3_1": "trefoil",
    "4_1": "figure-eight;figure eight",
    "5_1": "cinquefoil;pentafoil;Solomon's seal",
    "5_2": "three-twist",
    "6_1": "stevedore",
    "6_2": "Miller Institute",
    "7_1": "septafoil",
    "7_4": "endless",
    "8_18": "carrick mat",
    "8_19": "true lover's",
    "L2a1": "Hopf;Hopf link",
    "L4a1": "Solomon;Solomon link",
    "L5a1": "Whitehead;Whitehead link",
    "L6a4": "Borromean;Borromean rings",
}

# Of links, which LinkInfo gives no ropelength for.
LINK_ROPELENGTHS = {
    "L2a1": ("25.132741", "8 pi, a theorem: Cantarella, Kusner, Sullivan, Invent. Math. 150 (2002) 257"),
    "L6a4": ("58.0060", "Cantarella, Fu, Kusner, Sullivan, Wrinkle, Geom. Topol. 10 (2006) 2055"),
}


def _numbers(nested: object) -> list[int]:
    """The whole numbers of nested lists, or of their text, in one list."""
    return [int(number) for number in re.findall(r"-?\d+", str(nested))]


def _flat(nested: object) -> str:
    return " ".join(map(str, _numbers(nested)))


def _tables(proper_links: bool) -> list[dict[str, str]]:
    try:
        from database_knotinfo import link_list
    except ImportError as error:
        raise ImportError('this table needs database_knotinfo: pip install "vkmcore[catalogue]"') from error
    rows: list[dict[str, str]] = link_list(proper_links=proper_links)
    return [row for row in rows if row["crossing_number"].isdigit()]


def _knot_row(row: dict[str, str]) -> dict[str, str]:
    name = row["name"]
    crossings = int(row["crossing_number"])
    aliases = ["K" + row["dt_name"].replace("_", "")]
    if crossings <= 10:
        aliases.append(name.replace("_", ":1:"))
    else:
        aliases += ["K" + name.replace("_", ""), name.replace("_", "")]
    aliases += COMMON_NAMES[name].split(";") if name in COMMON_NAMES else []
    corners = _numbers(row["grid_notation"])
    columns: dict[int, list[int]] = {}
    for column, grid_row in zip(corners[::2], corners[1::2]):
        columns.setdefault(column, []).append(grid_row)
    jones = _numbers(row["jones_polynomial_vector"])
    half_powers = [2 * jones[0]] + [c for coefficient in jones[2:] for c in (coefficient, 0)][:-1]
    alexander = _numbers(row["alexander_polynomial_vector"])
    published = row["ropelength"].strip()
    return {
        "name": name,
        "aliases": ";".join(dict.fromkeys(aliases)),
        "components": "1",
        "crossings": str(crossings),
        "conway": row["conway_notation"].strip().strip("[]").strip(),
        "dt": _flat(row["dt_notation"]),
        "pd": _flat(row["pd_notation"]),
        "grid": _flat([columns[column] for column in sorted(columns)]),
        "braid": _flat(row["braid_notation"].split("],")[0]),  # the first of two words that 10_136 has
        "jones": _flat(half_powers),
        "alexander": _flat([alexander[0], *alexander[2:]]),
        "signature": row["signature"],
        "symmetry": row["symmetry_type"].strip(),
        "geometry": row["geometric_type"].strip(),
        "volume": row["volume"],
        "ropelength": published if re.fullmatch(r"\d+(\.\d+)?", published) else "",
        "ropelength_source": "KnotInfo" if published else "",
        "linking": "",
    }


def _link_row(row: dict[str, str]) -> dict[str, str]:
    name = row["name_unoriented"]
    aliases = [row["name"]]
    aliases += [row["rolfsen_name"]] if row["rolfsen_name"].strip() else []
    aliases += COMMON_NAMES[name].split(";") if name in COMMON_NAMES else []
    jones = _numbers(row["jones_polynomial_vector"])
    # LinkInfo's columns pass over its rows, KnotInfo's under: in reverse order they mean the same.
    ends = _numbers(row["arc_notation"])
    columns = list(zip(ends[::2], ends[1::2]))[::-1]
    return {
        "name": name,
        "aliases": ";".join(aliases),
        "components": row["components"],
        "crossings": row["crossing_number"],
        "conway": "",
        "dt": ";".join(_flat(part) for part in row["dt_code"].split("{")[1:]),
        "pd": _flat(row["pd_notation_vector"]),
        "grid": _flat(columns),
        "braid": _flat(row["braid_notation"].split(",", 1)[1]),
        "jones": _flat([jones[0], *jones[2:]]),
        "alexander": "",
        "signature": row["signature"],
        "symmetry": "",
        "geometry": "",
        "volume": row["volume"],
        "ropelength": LINK_ROPELENGTHS.get(name, ("", ""))[0],
        "ropelength_source": LINK_ROPELENGTHS.get(name, ("", ""))[1],
        "linking": _flat(row["linking_matrix"]),
    }


def knot_rows(crossings: Iterable[int]) -> list[dict[str, str]]:
    """Rows of the prime knots of these crossing numbers, in the order of KnotInfo.

    Raises:
        ImportError: `database_knotinfo` is not installed.
    """
    numbers = {str(number) for number in crossings}
    return [_knot_row(row) for row in _tables(proper_links=False) if row["crossing_number"] in numbers]


def link_rows(crossings: Iterable[int]) -> list[dict[str, str]]:
    """Rows of the prime links of these crossing numbers, each with LinkInfo's first choice of directions.

    Raises:
        ImportError: `database_knotinfo` is not installed.
    """
    numbers = {str(number) for number in crossings}
    first: dict[str, dict[str, str]] = {}
    for row in _tables(proper_links=True):
        if row["crossing_number"] in numbers:
            first.setdefault(row["name_unoriented"], row)
    return [_link_row(row) for row in first.values()]
