"""A command of the shell as the work of a sweep: its JSON is the row."""

from __future__ import annotations

import contextlib
import io
import json
from typing import Any

import click

from vkmcore.cli import COMMANDS, cli
from vkmcore.sweeps.table import ERROR


def command_of(name: str) -> click.Command:
    """The command of this name. ValueError if there is none, or none that takes a curve and gives JSON."""
    command = cli.get_command(click.Context(cli), name) if name in COMMANDS else None
    if command is None or "as_json" not in options(command) or not _takes_a_knot(command):
        able = [other for other in COMMANDS if other == name or _able(other)]
        raise ValueError(f"no command {name!r} for a sweep; there are {', '.join(o for o in able if o != name)}")
    return command


def check(name: str) -> None:
    command_of(name)


def _able(name: str) -> bool:
    command = cli.get_command(click.Context(cli), name)
    return command is not None and "as_json" in options(command) and _takes_a_knot(command)


def _takes_a_knot(command: click.Command) -> bool:
    return sum(isinstance(parameter, click.Argument) for parameter in command.params) == 1 and command.name != "knots"


def options(command: click.Command) -> dict[str | None, click.Option]:
    """The options by the name of their parameter."""
    return {option.name: option for option in command.params if isinstance(option, click.Option)}


def row_of(name: str, knot: str, **settings: Any) -> dict[str, Any]:
    """The record that the command prints of a knot; the message where it fails with one behind its record.

    Raises:
        click.ClickException: the command failed without a record.
    """
    command = command_of(name)
    known = options(command)
    words = [_id(command, knot)]
    for setting, value in settings.items():
        option = known[setting]
        if option.is_flag:
            words += [option.opts[0]] if value is True else list(option.secondary_opts[:1])
        else:
            words += [option.opts[0], str(value)]
    printed, error = io.StringIO(), ""
    with contextlib.redirect_stdout(printed), contextlib.redirect_stderr(io.StringIO()):
        try:
            command.main([*words, "--json"], prog_name=f"vkmcore {name}", standalone_mode=False)
        except click.ClickException as failure:
            if not printed.getvalue():
                raise
            error = failure.format_message()
    record = json.loads(printed.getvalue())
    row = dict(record[0] if isinstance(record, list) else record)
    row.pop("settings", None)
    return {**row, ERROR: error}


def _id(command: click.Command, knot: str) -> str:
    """The name as the command takes it: an id of the ideal table where it takes nothing else."""
    (argument,) = (parameter for parameter in command.params if isinstance(parameter, click.Argument))
    if not (argument.metavar or "").startswith("ID") or ":" in knot:
        return knot
    from vkmcore.reference.tables import UnknownName, find

    try:
        return next((alias for alias in find(knot).aliases if ":" in alias), knot)
    except UnknownName:
        return knot
