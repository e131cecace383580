"""Records as rows of comma-separated values."""

from __future__ import annotations

import csv
import io
from collections.abc import Iterable, Mapping, Sequence
from typing import Any

Row = dict[str, Any]


def flat(value: Any) -> Row:
    """A record as columns: the items of a mapping, those of mappings inside as "a.b"; one column of anything else.

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


def csv_text(rows: Iterable[Mapping[str, Any]], columns: Sequence[str] | None = None) -> str:
    """A heading and a line a row, numbers in full precision, lines ending with a line feed; all columns of all rows if
    none are named."""
    rows = list(rows)
    if columns is None:
        columns = list(dict.fromkeys(name for row in rows for name in row))
    text = io.StringIO()
    writer = csv.writer(text, lineterminator="\n")
    writer.writerow(columns)
    writer.writerows([cell(row.get(name)) for name in columns] for row in rows)
    return text.getvalue()


def cell(value: Any) -> str:
    if value is None:
        return ""
    return repr(value) if isinstance(value, float) else str(value)
