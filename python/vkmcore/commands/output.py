"""What commands print: tables, JSON, numbers."""

from __future__ import annotations

import json
import math
from collections.abc import Mapping
from typing import TYPE_CHECKING

import click

from vkmcore.rows import csv_text, flat

if TYPE_CHECKING:
    from collections.abc import Iterable, Iterator, Sequence

    from rich.console import Console
    from rich.table import Table


MANY_ROWS = 200  # from which on rich takes a second


def digits(value: float | None) -> str:
    """Ten significant digits, the last ones kept where they are zero."""
    if value is None:
        return "-"
    return f"{value:#.10g}" if 1e-3 <= abs(value) < 1e7 or value == 0.0 else f"{value:.9e}"


def shown(value: object) -> str:
    """A measure as a table shows it."""
    if isinstance(value, bool):
        return "yes" if value else "no"
    return digits(value) if isinstance(value, float) else str(value)


def print_json(value: object) -> None:
    """JSON on standard output, numbers in full precision; what is not a finite number is null."""
    click.echo(json.dumps(finite(value), indent=2, ensure_ascii=False, allow_nan=False))


def print_data(as_json: bool, as_csv: bool, found: Mapping[str, object] | Sequence[Mapping[str, object]]) -> bool:
    """A record, or several, as --json or --csv ask for; whether either did."""
    if as_json:
        print_json(found)
    elif as_csv:
        print_csv([found] if isinstance(found, Mapping) else found)
    return as_json or as_csv


def print_csv(records: Iterable[Mapping[str, object]]) -> None:
    """CSV on standard output, a line a record, those inside as "a.b", numbers in full precision."""
    click.echo(csv_text([flat(record) for record in records]), nl=False)


def finite(value: object) -> object:
    if isinstance(value, float) and not math.isfinite(value):
        return None
    if isinstance(value, dict):
        return {name: finite(item) for name, item in value.items()}
    if isinstance(value, list | tuple):
        return [finite(item) for item in value]
    return value


def plain_table(headings: Iterable[str] = (), texts: Iterable[str] = (), title: str | None = None) -> Table:
    """An empty table with these columns: those among `texts` flush left, numbers flush right."""
    from rich import box
    from rich.table import Table

    table = Table(title=title, box=box.SIMPLE_HEAD, title_justify="left", title_style="bold", header_style="bold")
    for heading in headings:
        table.add_column(heading, justify="left" if heading in texts else "right")
    return table


def console(width: int | None = None) -> Console:
    """A console that shows texts as they are: an id such as "3:100:1" holds the name of an emoji."""
    from rich.console import Console

    return Console(width=width, markup=False, emoji=False, highlight=False)


def natural_width(table: Table) -> int:
    return console(width=10**6).measure(table).maximum


def print_table(table: Table) -> None:
    """Print it at its natural width: a digit that is cut off is worse than a line that wraps."""
    if table.row_count > MANY_ROWS and table.title is None:
        click.echo("\n".join(lines_of(table)))
    else:
        console(width=natural_width(table)).print(table)


def lines_of(table: Table) -> Iterator[str]:
    """The lines of a `plain_table` without a title, as rich lays them out in 4 ms a row."""
    from rich.cells import cell_len

    columns = []
    for column in table.columns:
        texts = [str(column.header), *map(str, column.cells)]
        lengths = [cell_len(text) for text in texts]
        room = max(lengths)
        columns.append(
            [
                text + " " * (room - length) if column.justify == "left" else " " * (room - length) + text
                for text, length in zip(texts, lengths, strict=True)
            ]
        )
    head, *rows = (f"  {'   '.join(cells)}  " for cells in zip(*columns, strict=True))
    blank = " " * len(head)
    yield from (blank, click.style(head, bold=True), f" {'─' * (len(head) - 2)} ", *rows, blank)
