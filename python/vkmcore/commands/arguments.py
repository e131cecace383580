"""Arguments, options and failures that several commands share."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import IO, Any, TypeVar

import click

Command = TypeVar("Command", bound=Callable[..., Any] | click.Command)

COUNT = click.IntRange(1, 2**31 - 1)
POSITIVE = click.FloatRange(0.0, min_open=True)
EXISTING_FILE = click.Path(exists=True, dir_okay=False, path_type=Path)


class Failure(click.ClickException):
    """A failure whose text stands for itself on standard error."""

    def show(self, file: IO[Any] | None = None) -> None:
        click.echo(self.message, err=True, file=file)


def check_ids(context: click.Context, parameter: click.Parameter, ids: tuple[str, ...]) -> tuple[str, ...]:
    """Refuse what is no text; every other id is the library's to judge."""
    for knot_id in ids:
        check_name(context, parameter, knot_id)
    return ids


def check_name(context: click.Context, parameter: click.Parameter, name: str) -> str:
    """Refuse what is no text."""
    try:
        name.encode()
    except UnicodeEncodeError:
        raise click.BadParameter(f"{name!a} is not valid text") from None
    return name


def check_folder(path: Path | None) -> None:
    """Fail before the long work where a file that is to be written has no folder to stand in."""
    if path is not None and not path.absolute().parent.is_dir():
        raise Failure(f"vkmcore: {path}: the directory does not exist")


def json_option(text: str) -> Callable[[Command], Command]:
    """The option --json, as the parameter `as_json`."""
    return click.option("--json", "as_json", is_flag=True, help=text)


def skip_option(default: str) -> Callable[[Command], Command]:
    """The option --skip, None unless it is given: the command then finds the number itself, as `default` says."""
    return click.option("--skip", type=COUNT, help=f"Neighbours that are no contacts.  [default: {default}]")


def plot_option(text: str) -> Callable[[Command], Command]:
    """The option --plot FILE, whose file is looked at before the long work rather than after it."""
    return click.option(
        "--plot",
        type=click.Path(path_type=Path),
        metavar="FILE",
        callback=_checked_plot,
        help=f"{text} (PNG, PDF, SVG).",
    )


def _checked_plot(context: click.Context, parameter: click.Parameter, path: Path | None) -> Path | None:
    if path is not None:
        from vkmcore.pictures.figure import check_plot_target

        check_plot_target(path)
    return path


def say_written(*paths: Path | None) -> None:
    """Tell on standard error which files there are now."""
    for path in paths:
        if path is not None:
            click.echo(f"wrote {path}", err=True)
