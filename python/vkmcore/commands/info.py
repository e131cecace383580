"""The command `vkmcore info`."""

from __future__ import annotations

import platform

import click

from vkmcore.commands.arguments import record_options
from vkmcore.commands.output import print_data


@click.command()
@record_options("A JSON object", "with all of it")
def info(as_json: bool, as_csv: bool) -> None:
    """Version, interpreter, compiler, vector width and forms of the pair sums in use."""
    from vkmcore import _engine
    from vkmcore.build import build_info

    build = build_info()
    facts: dict[str, object] = {
        "version": build.version,
        "python": platform.python_version(),
        "numpy": installed("numpy"),
        "matplotlib": installed("matplotlib"),
        "compiler": build.compiler,
        "vector_bits": build.vector_bits,
        "pair_forms": _engine.pair_forms(),
        "machine": platform.machine(),
        "extension": build.path,
    }
    if print_data(as_json, as_csv, facts):
        return
    width = max(map(len, facts))
    for name, value in facts.items():
        if isinstance(value, dict):
            value = ", ".join(f"{kernel} {form}" for kernel, form in value.items())
        click.echo(f"{name.replace('_', ' '):{width}}  {'not installed' if value is None else value}")


def installed(package: str) -> str | None:
    """Version of an installed package, without importing it."""
    from importlib.metadata import PackageNotFoundError, version

    try:
        return version(package)
    except PackageNotFoundError:
        return None
