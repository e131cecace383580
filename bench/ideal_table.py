"""How near the search for tight shapes comes to the best published ropelengths, and in how much time.

    taskset -c 1 python bench/ideal_table.py results.jsonl [--table page.md] [--only 3_1,4_1]

Each search runs on one thread, and its processor time is that of this process, certificate included; names are looked
up before. A line of the results is written after each search, and what stands there already is not run again.
`--table` runs nothing more and writes what there is as a table.
"""

from __future__ import annotations

import argparse
import json
import statistics
import time
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

import numpy as np
from vkmcore.ideal.inputs import Problem, problem_of
from vkmcore.ideal.search import DISCRETISATION, idealize
from vkmcore.reference.tables import knots

RANDOM_SEED = 20250101
RANDOM_KNOTS = 30
OWN_VALUES = {"L5a1": 49.791}  # where nothing is published: an earlier search's own, at edges of 0.15


@dataclass(frozen=True)
class Row:
    """A line of the table: knots, the finest edge, and how they are searched."""

    title: str
    names: tuple[str, ...]
    edge: float
    goal: str
    seeds: int = 3
    until: bool = False  # each knot until it is at the published value, with so many seeds at most
    within: float | None = None  # excess that counts as a success, where successes are counted


def random_knots() -> tuple[str, ...]:
    """Knots of eight to ten crossings, drawn with the stated seed."""
    names = [entry.name for entry in knots() if entry.crossings >= 8]
    drawn = np.random.default_rng(RANDOM_SEED).choice(len(names), RANDOM_KNOTS, replace=False)
    return tuple(names[k] for k in sorted(drawn))


def rows() -> list[Row]:
    return [
        Row("3_1, 4_1", ("3_1", "4_1"), 0.15, "0.06 %, 0.5 s"),
        Row("3_1, 4_1", ("3_1", "4_1"), 0.07, "0.012 %, 2 s"),
        Row("Hopf link", ("L2a1",), 0.15, "0.06 %, 2 s"),
        Row("Whitehead link", ("L5a1",), 0.15, "at or below 49.791, 2 s"),
        Row("Borromean rings", ("L6a4",), 0.15, "at or below 58.037 (0.0534 %), 2 s"),
        Row("5_1, 5_2, 7_7, 8_18, 8_19", ("5_1", "5_2", "7_7", "8_18", "8_19"), 0.15, "0.06 %, 5 s"),
        Row("12a_100", ("12a_100",), 0.15, "-3.0 %, 15 s"),
        Row("12a_500", ("12a_500",), 0.15, "-5.9 %, 15 s"),
        Row("12n_100", ("12n_100",), 0.15, "-2.4 %, 15 s"),
        Row("12n_300", ("12n_300",), 0.15, "-1.8 %, 15 s"),
        Row("9_40, 10_124, 10_165", ("9_40", "10_124", "10_165"), 0.07, "0 %, 20 s"),
        Row(
            f"knots of 8 to 10 crossings, {RANDOM_KNOTS} drawn at random, up to 3 seeds each",
            random_knots(),
            0.15,
            "median 0.05 %, worst 0.5 %, 15 s",
            until=True,
        ),
        Row("7_1", ("7_1",), 0.15, "0.05 %, 60 s a success", seeds=4, within=6e-4),
        Row("9_1", ("9_1",), 0.15, "0 %, 60 s a success", seeds=4, within=0.0),
        Row("11a_367", ("11a_367",), 0.15, "0 %, 60 s a success", seeds=3, within=0.0),
        Row("8_1", ("8_1",), 0.15, "0.06 %"),
        Row("10_1", ("10_1",), 0.15, "0.06 %"),
    ]


@dataclass(frozen=True)
class Run:
    """A search that has ended."""

    name: str
    edge: float
    seed: int
    ropelength: float
    excess: float | None
    cpu: float  # s


def known(file: Path) -> dict[tuple[str, float, int], Run]:
    if not file.exists():
        return {}
    runs = [Run(**json.loads(line)) for line in file.read_text().splitlines()]
    return {(run.name, run.edge, run.seed): run for run in runs}


def searched(problem: Problem, row: Row, seed: int) -> Run:
    start = time.process_time()
    shape = idealize(problem, edge=row.edge, seeds=[seed], threads=1)
    cpu = time.process_time() - start
    name = problem.title
    value = shape.published or OWN_VALUES.get(name)
    return Run(name, row.edge, seed, shape.ropelength, None if value is None else shape.ropelength / value - 1.0, cpu)


def measure(file: Path, only: set[str]) -> None:
    done = known(file)
    idealize(problem_of("3_1"), edge=0.5, threads=1)  # imports
    for row in rows():
        for name in row.names:
            if only and name not in only:
                continue
            problem = problem_of(name)
            for seed in range(1, row.seeds + 1):
                run = done.get((name, row.edge, seed))
                if run is None:
                    run = searched(problem, row, seed)
                    with file.open("a") as out:
                        out.write(json.dumps(vars(run)) + "\n")
                    print(run, flush=True)
                if row.until and run.excess is not None and run.excess <= DISCRETISATION * row.edge**2:
                    break


def lines(file: Path) -> Iterator[str]:
    done = known(file)
    yield "| knots | edge | runs | excess: median, worst / % | CPU: median, worst / s | asked for |"
    yield "|---|---|---|---|---|---|"
    for row in rows():
        by_knot = [
            [done[key] for seed in range(1, row.seeds + 1) if (key := (name, row.edge, seed)) in done]
            for name in row.names
        ]
        by_knot = [runs for runs in by_knot if runs]
        if not by_knot:
            continue
        if row.until:  # the best of a knot's seeds, and the time of all
            excess = [min(run.excess or 0.0 for run in runs) for runs in by_knot]
            cpu = [sum(run.cpu for run in runs) for runs in by_knot]
        else:
            excess = [run.excess or 0.0 for runs in by_knot for run in runs]
            cpu = [run.cpu for runs in by_knot for run in runs]
        count = (
            f"{len(by_knot)} of {len(row.names)} knots, {sum(map(len, by_knot))}"
            if len(row.names) > 1
            else str(len(excess))
        )
        text = f"{100 * statistics.median(excess):+.3f}, {100 * max(excess):+.3f}"
        times = f"{statistics.median(cpu):.1f}, {max(cpu):.1f}"
        if row.within is not None:
            successes = sum(value <= row.within for value in excess)
            text += f"; best {100 * min(excess):+.3f}"
            times += f"; {successes} of {len(excess)}" + (
                f", {sum(cpu) / successes:.0f} a success" if successes else ""
            )
        yield f"| {row.title} | {row.edge:g} | {count} | {text} | {times} | {row.goal} |"


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("results", type=Path)
    parser.add_argument("--table", type=Path)
    parser.add_argument("--only", default="")
    arguments = parser.parse_args()
    if arguments.table is None:
        measure(arguments.results, set(filter(None, arguments.only.split(","))))
    else:
        arguments.table.write_text("\n".join(lines(arguments.results)) + "\n")


if __name__ == "__main__":
    main()
