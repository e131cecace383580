"""The rows of a sweep as a CSV file that a later run goes on with."""

from __future__ import annotations

import csv
import io
import os
from collections.abc import Iterable, Mapping, Sequence
from pathlib import Path
from typing import Any

from vkmcore.files import write_text

Row = dict[str, Any]

KNOT, ERROR, SECONDS = "knot", "error", "seconds"


def flat(value: Any) -> Row:
    """What a call gave as columns: the items of a mapping, those of mappings inside as "a.b"; one column otherwise.

    Sequences inside mappings are left out: they are no cells.
    """
    if hasattr(value, "item") and getattr(value, "ndim", 1) == 0:
        value = value.item()
    if not isinstance(value, Mapping):
        return {"value": value}
    row: Row = {}
    for name, item in value.items():
        if isinstance(item, Mapping):
            row |= {f"{name}.{inner}": cell for inner, cell in flat(item).items()}
        elif not isinstance(item, list | tuple) and getattr(item, "ndim", 0) == 0:
            row[str(name)] = item.item() if hasattr(item, "item") else item
    return row


def text_of(rows: Sequence[Row]) -> str:
    """CSV with all columns of all rows, numbers in full precision."""
    columns = list(dict.fromkeys(name for row in rows for name in row if name != ERROR)) + [ERROR]
    text = io.StringIO()
    writer = csv.writer(text, lineterminator="\n")
    writer.writerow(columns)
    writer.writerows([cell(row.get(name)) for name in columns] for row in rows)
    return text.getvalue()


def cell(value: Any) -> str:
    if value is None:
        return ""
    return repr(value) if isinstance(value, float) else str(value)


def read(path: str | os.PathLike[str], identity: Iterable[str]) -> dict[tuple[str, ...], Row]:
    """The finished rows of a file by the cells that name them; none if there is no file.

    Raises:
        ValueError: the file is of another sweep: a column that names rows is missing.
        OSError: the file cannot be read.
    """
    path = Path(path)
    if not path.exists():
        return {}
    with open(path, encoding="utf-8", newline="") as file:
        rows = list(csv.DictReader(file))
    names = list(identity)
    if rows and (missing := [name for name in (*names, ERROR) if name not in rows[0]]):
        raise ValueError(f"{path}: of another sweep: no column {missing[0]}")
    return {
        tuple(row[name] for name in names): {name: parsed(text) for name, text in row.items()}
        for row in rows
        if not row[ERROR]
    }


def parsed(text: str) -> Any:
    if text in ("", "True", "False"):
        return {"": None, "True": True, "False": False}[text]
    if "_" in text:  # which Python takes in numbers
        return text
    for kind in (int, float):
        try:
            return kind(text)
        except ValueError:
            continue
    return text


def write(path: str | os.PathLike[str], rows: Sequence[Row]) -> None:
    """Replace the file by these rows as a whole. OSError if it cannot be written."""
    write_text(path, text_of(rows))
