"""Arguments, options and failures that several commands share."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import IO, Any, TypeVar

import click
from click.shell_completion import CompletionItem

Command = TypeVar("Command", bound=Callable[..., Any] | click.Command)

MOST = 2**31 - 1  # of what the library counts by
COUNT = click.IntRange(1, MOST)
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


def complete_key(context: click.Context, parameter: click.Parameter, begun: str) -> list[CompletionItem]:
    """Keys of the catalogue and files that begin so, for a shell's completion."""
    from vkmcore.curves.catalogue import fourier_heads, ideal_heads, polygon_keys

    keys = {head.key for head in fourier_heads()} | {head.id for head in ideal_heads()} | {*polygon_keys()}
    found = [CompletionItem(key) for key in sorted(keys) if key.startswith(begun)]
    return [*found, CompletionItem(begun, type="file")]


def complete_name(context: click.Context, parameter: click.Parameter, begun: str) -> list[CompletionItem]:
    """Names and aliases of the tables, keys and files that begin so."""
    from vkmcore.reference.tables import knots, links

    names = {name for entry in (*knots(), *links()) for name in (entry.name, *entry.aliases)}
    keys = complete_key(context, parameter, begun)
    new = sorted(name for name in names - {item.value for item in keys} if begun and name.startswith(begun))
    return [*keys[:-1], *map(CompletionItem, new), keys[-1]]


def readable_ranges(command: click.Command) -> None:
    """Let a command's help say "from 1 on" and "1 to 50" of numbers, where it would say "1<=x<=2147483647"."""
    for inner in command.commands.values() if isinstance(command, click.Group) else ():
        readable_ranges(inner)
    for parameter in command.params:
        kind = parameter.type
        if isinstance(kind, click.IntRange | click.FloatRange):
            text = range_text(kind.min, kind.max, kind.min_open)
            kind._describe_range = lambda text=text: text  # type: ignore[method-assign,misc]


def range_text(low: float | None, high: float | None, above: bool) -> str:
    """The range of a number in words; a bound of the machine's integers is none."""
    if high is not None and high >= MOST:
        high = None
    if low is not None and low <= -MOST - 1:
        low = None
    begin = "" if low is None else f"above {low:g}" if above else f"from {low:g}"
    if high is None:
        return "any" if low is None else begin if above else f"{begin} on"
    return f"up to {high:g}" if low is None else f"{begin} to {high:g}"


def file_option(*names: str, help: str, metavar: str = "FILE") -> Callable[[Command], Command]:
    """An option for a file to write, whose folder is looked for before the long work rather than after it."""
    kind = click.Path(dir_okay=False, path_type=Path)
    return click.option(*names, type=kind, metavar=metavar, callback=_with_folder, help=help)


def _with_folder(context: click.Context, parameter: click.Parameter, path: Path | None) -> Path | None:
    if path is not None and not path.absolute().parent.is_dir():
        raise Failure(f"vkmcore: {path}: the directory does not exist")
    return path


def record_options(json: str, csv: str) -> Callable[[Command], Command]:
    """The options --json and --csv, which exclude each other, as the parameters `as_json` and `as_csv`.

    Args:
        json: what --json prints, beside that it is in full precision.
        csv: what a line is of.
    """

    def decorate(command: Command) -> Command:
        for flag, text in (("csv", f"CSV in full precision, a line {csv}."), ("json", f"{json}, in full precision.")):
            command = click.option(f"--{flag}", f"as_{flag}", is_flag=True, callback=_alone, help=text)(command)
        return command

    return decorate


def _alone(context: click.Context, parameter: click.Parameter, wanted: bool) -> bool:
    if wanted and any(context.params.get(name) for name in ("as_json", "as_csv")):
        raise click.UsageError("--json and --csv exclude each other")
    return wanted


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
