"""The rows of a sweep as a CSV file that a later run goes on with."""

from __future__ import annotations

import csv
import os
from collections.abc import Iterable, Sequence
from pathlib import Path
from typing import Any

from vkmcore.files import write_text
from vkmcore.rows import Row, csv_text

KNOT, ERROR, SECONDS = "knot", "error", "seconds"


def text_of(rows: Sequence[Row]) -> str:
    """CSV with all columns of all rows, that of errors last."""
    return csv_text(rows, [*dict.fromkeys(name for row in rows for name in row if name != ERROR), ERROR])


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
