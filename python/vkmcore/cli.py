"""The command line of the package: the table of its commands, and how they fail.

Results go to standard output, everything else to standard error. Failures end with a line on standard error and exit
code 1 (2 for wrong usage, 130 after Ctrl-C). A command's module is imported when the command is called or the help
lists it, and libraries that only one command needs are imported where it needs them.
"""

from __future__ import annotations

import importlib
import os
import sys
from typing import Any

import click

from vkmcore.commands.arguments import Failure, readable_ranges
from vkmcore.errors import PlotError

# A command NAME is the click command `NAME` of `vkmcore.commands.NAME`; and what the list of commands says of it.
COMMANDS = {
    "catalogue": "Make the catalogue of tight shapes again, and verify it.",
    "compare": "Two Fourier curves beside each other.",
    "describe": "Descriptors, thickness and contact stress of a curve.",
    "ideal": "Search the tight shape of a knot or link.",
    "info": "Version, compiler and vector width in use.",
    "knots": "What the catalogue holds, and files of knots on disk.",
    "mass": "Masses of knots, catalogued and relaxed, with a verdict.",
    "particle": "Every route from a knot to a mass.",
    "pd": "Planar-diagram code and crossing estimate of a curve.",
    "provenance": "Chains of custody of files on disk.",
    "report": "Check this installation, with an evidence report.",
    "simulate": "Evolve the vortex filaments of a scene.",
    "spectrum": "Levels of an operator anchored to nodes.",
    "study": "How a result depends on its numerical settings.",
    "sweep": "A command for many knots and settings at once.",
    "tighten": "Shorten a curve at a held tube radius.",
    "view": "A knot or link as a picture, or a page that turns.",
    "zoo": "Masses of the Master Dictionary.",
}


class Program(click.Group):
    """A group whose commands fail with a text and an exit code, never with a traceback."""

    def list_commands(self, ctx: click.Context) -> list[str]:
        return list(COMMANDS)

    def get_command(self, ctx: click.Context, cmd_name: str) -> click.Command | None:
        if cmd_name not in COMMANDS:
            return None
        command: click.Command = getattr(importlib.import_module(f"vkmcore.commands.{cmd_name}"), cmd_name)
        command.short_help = COMMANDS[cmd_name]
        readable_ranges(command)
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
    if "_VKMCORE_COMPLETE" in os.environ:
        import vkmcore.commands.completion  # noqa: F401  # as it is loaded it takes the place of click's own
    cli()
