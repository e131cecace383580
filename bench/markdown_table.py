"""The measured table as a Markdown page: what was measured, on what, when."""

from __future__ import annotations

import datetime
import os
import platform
import re
from collections.abc import Callable, Mapping, Sequence
from pathlib import Path

import numpy as np

HEADINGS = ("kernel", "size", "ours", "G/s", "NumPy", "plain loop", "NumPy / ours", "plain / ours", "simsopt / ours")


def processor() -> str:
    """The processor's own name where the system tells it."""
    try:
        found = re.search(r"^model name\s*: (.+)$", Path("/proc/cpuinfo").read_text(encoding="utf-8"), re.MULTILINE)
    except OSError:
        found = None
    return found[1].strip() if found else platform.processor() or platform.machine()


def conditions() -> list[tuple[str, str]]:
    from vkmcore import _engine
    from vkmcore.build import build_info

    build = build_info()
    forms = ", ".join(f"{kernel} {form}" for kernel, form in _engine.pair_forms().items())
    return [
        ("date", datetime.date.today().isoformat()),
        ("processor", f"{processor()}, {os.cpu_count()} logical processors"),
        ("vectors", f"{build.vector_bits} bits"),
        ("forms of pair sums", forms),
        ("compiler", build.compiler),
        ("VKMcore", build.version),
        ("Python, NumPy", f"{platform.python_version()}, {np.__version__}"),
    ]


def row(cells: Sequence[str]) -> str:
    return "| " + " | ".join(cell.replace("|", "\\|") for cell in cells) + " |"


def markdown(results: Sequence[Mapping[str, object]], seconds: Callable[[object], str]) -> str:
    """A table of conditions and one of results, as `measure` of run.py returns them."""

    def time(value: object) -> str:
        return seconds(value).replace(" ", "\u00a0")

    def ratio(value: object) -> str:
        return f"{value:.1f}" if isinstance(value, float) else "-"

    lines = ["| measured | |", "| --- | --- |"]
    lines += [row(entry) for entry in conditions()]
    lines += ["", row(HEADINGS), row(["---", "---", *["---:"] * 7])]
    for result in results:
        rate = result["throughput"]
        lines.append(
            row(
                [
                    str(result["name"]),
                    str(result["size"]),
                    time(result["ours_s"]),
                    f"{rate / 1e9:.2f}" if isinstance(rate, float) else "-",
                    time(result["numpy_s"]),
                    time(result["plain_s"]),
                    ratio(result["numpy_over_ours"]),
                    ratio(result["plain_over_ours"]),
                    ratio(result["simsopt_over_ours"]),
                ]
            )
        )
    notes = {f"{result['name']}, {result['size']}: {result['note']}" for result in results if result["note"]}
    lines += ["", *(f"- {note}" for note in sorted(notes))] if notes else []
    return "\n".join(lines) + "\n"
