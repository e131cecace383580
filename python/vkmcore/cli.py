"""The command line of the package: the table of its commands, and how they fail.

Results go to standard output, everything else to standard error. Failures end with a line on standard error and exit
code 1 (2 for wrong usage, 130 after Ctrl-C). A command's module is imported when the command is called or the help
lists it, and libraries that only one command needs are imported where it needs them.
"""

from __future__ import annotations

import importlib
import sys
from typing import Any

import click

from vkmcore.commands.arguments import Failure
from vkmcore.errors import PlotError

# A command NAME is the click command `NAME` of `vkmcore.commands.NAME`.
COMMANDS = (
    "catalogue",
    "compare",
    "describe",
    "ideal",
    "info",
    "knots",
    "mass",
    "particle",
    "pd",
    "provenance",
    "report",
    "simulate",
    "spectrum",
    "study",
    "sweep",
    "tighten",
    "view",
    "zoo",
)


class Program(click.Group):
    """A group whose commands fail with a text and an exit code, never with a traceback."""

    def list_commands(self, ctx: click.Context) -> list[str]:
        return list(COMMANDS)

    def get_command(self, ctx: click.Context, cmd_name: str) -> click.Command | None:
        if cmd_name not in COMMANDS:
            return None
        command: click.Command = getattr(importlib.import_module(f"vkmcore.commands.{cmd_name}"), cmd_name)
        return command

    def invoke(self, ctx: click.Context) -> Any:
        try:
            result = super().invoke(ctx)
            if sys.stdout is not None:
                sys.stdout.flush()
            return result
        except (click.ClickException, click.exceptions.Exit, click.Abort, BrokenPipeError):
            raise  # click's own; a reader that has gone away ends the program quietly
        except KeyboardInterrupt:
            click.echo("Interrupted.", err=True)
            ctx.exit(130)
        except MemoryError:
            raise Failure("vkmcore: not enough memory for this size") from None
        except PlotError as error:
            raise Failure(f"vkmcore: {error}") from error
        except (RuntimeError, ValueError, OSError) as error:
            raise Failure(str(error)) from error


def show_version(context: click.Context, parameter: click.Parameter, wanted: bool) -> None:
    if wanted:
        import vkmcore

        click.echo(f"vkmcore {vkmcore.__version__}")
        context.exit()


@click.group(cls=Program, context_settings={"help_option_names": ["-h", "--help"]})
@click.option(
    "--version", is_flag=True, is_eager=True, expose_value=False, callback=show_version, help="Show the version."
)
def cli() -> None:
    """Masses of knotted vortex filaments, from the catalogue inside the library."""


def main() -> None:
    """Entry of the console script."""
    cli()
