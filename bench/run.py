"""Time the kernels and print one table.

python bench/run.py [WORD ...]      only the cases whose file or name holds one of the words
    --json FILE                     the figures to a file too
    --markdown FILE                 the table to a file too, with machine, compiler and date
"""

from __future__ import annotations

import importlib
import json
import sys
from pathlib import Path

import click
from rich.console import Console
from rich.table import Table

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness import Case, best_time
from markdown_table import markdown


def show_seconds(seconds: float | None) -> str:
    if seconds is None:
        return "-"
    for unit, scale in (("s", 1.0), ("ms", 1e-3), ("us", 1e-6)):
        if seconds >= scale:
            return f"{seconds / scale:.3g} {unit}"
    return f"{seconds / 1e-9:.3g} ns"


def show_ratio(ratio: float | None, target: float | None) -> str:
    if ratio is None:
        return "-"
    text = f"{ratio:.1f}x"
    if target is None:
        return text
    return f"{text} (>= {target:g})" if ratio >= target else f"[red]{text} (>= {target:g})[/red]"


def measure(case: Case) -> dict[str, object]:
    case.ours()  # page in code and data
    ours = best_time(case.ours, least=3)
    simsopt = None
    if case.simsopt:  # by turns, so that what else the machine does meets both
        times = [(best_time(case.ours, budget=0.0), best_time(case.simsopt, budget=0.0)) for _ in range(20)]
        ours, simsopt = min(ours, min(t[0] for t in times)), min(t[1] for t in times)
    plain = best_time(case.plain) if case.plain else None
    numpy = best_time(case.numpy) if case.numpy else None
    return {
        "name": case.name,
        "size": case.size,
        "ours_s": ours,
        "throughput": case.work / ours if case.work else None,
        "numpy_s": numpy,
        "plain_s": plain,
        "numpy_over_ours": numpy / ours if numpy else None,
        "plain_over_ours": plain / ours if plain else None,
        "simsopt_over_ours": simsopt / ours if simsopt else None,
        "note": case.note() if callable(case.note) else case.note,
    }


@click.command()
@click.argument("words", nargs=-1)
@click.option("--json", "json_file", type=click.Path(dir_okay=False), help="Write the figures to this file too.")
@click.option("--markdown", "markdown_file", type=click.Path(dir_okay=False), help="Write the table to this file too.")
def main(words: tuple[str, ...], json_file: str | None, markdown_file: str | None) -> None:
    """Time the kernels against NumPy and the plain scalar loop."""
    table = Table(title="VKMcore kernels: best of several runs, one core")
    for heading in (
        "kernel",
        "size",
        "ours",
        "G/s",
        "NumPy",
        "plain loop",
        "NumPy/ours",
        "plain/ours",
        "simsopt/ours",
        "",
    ):
        table.add_column(heading, justify="left" if heading in ("kernel", "size", "") else "right")
    results = []
    console = Console(stderr=True)
    for path in sorted(Path(__file__).resolve().parent.glob("bench_*.py")):
        cases: list[Case] = importlib.import_module(path.stem).cases()
        for case in cases:
            if words and not any(word in path.stem or word in case.name for word in words):
                continue
            console.print(f"timing {case.name} {case.size} ...", style="dim")
            result = measure(case)
            results.append(result)
            seconds = show_seconds(result["ours_s"])
            if case.target_seconds is not None:
                seconds += f" (<= {show_seconds(case.target_seconds)})"
                if result["ours_s"] > case.target_seconds:
                    seconds = f"[red]{seconds}[/red]"
            rate = result["throughput"]
            table.add_row(
                case.name,
                case.size,
                seconds,
                f"{rate / 1e9:.2f}" if rate else "-",
                show_seconds(result["numpy_s"]),
                show_seconds(result["plain_s"]),
                show_ratio(result["numpy_over_ours"], case.target_numpy),
                show_ratio(result["plain_over_ours"], case.target_plain),
                show_ratio(result["simsopt_over_ours"], case.target_simsopt),
                str(result["note"]),
            )
    Console(width=max(160, Console().width)).print(table)
    if json_file:
        Path(json_file).write_text(json.dumps(results, indent=2) + "\n", encoding="utf-8")
    if markdown_file:
        Path(markdown_file).write_text(markdown(results, show_seconds), encoding="utf-8")


if __name__ == "__main__":
    main()
