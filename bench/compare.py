"""Time two builds of the kernels side by side and print the ratio of their times.

python bench/compare.py OLD NEW [WORD ...]   OLD and NEW are folders that hold _native and vkmcore;
                                             only the cases whose file or name holds one of the words
    --core N       pin both to this core
    --seconds S    processor time to spend on a case (default 2)

Two processes run the same cases and take turns, so that what else the machine does hits both alike. Times are those
of the processor, and the ratio is that of the medians: above 1 the new build is slower. Cases that either build
cannot run are left out, with a word.
"""

from __future__ import annotations

import importlib
import json
import os
import statistics
import subprocess
import sys
import time
from pathlib import Path

import click

HERE = Path(__file__).resolve().parent
WARM = 0.02  # seconds that one turn takes at least


def serve(words: list[str]) -> None:
    """Lists the cases in one line of JSON; then answers requests, one a line: that a case's turn be timed."""
    sys.path.insert(0, str(HERE))
    cases = {}
    files = sorted(HERE.glob("bench_*.py"))
    for path in [f for f in files if any(word in f.stem for word in words)] or files:
        try:
            for case in importlib.import_module(path.stem).cases():
                cases[f"{path.stem[6:]}: {case.name} {case.size}"] = case.ours
        except (ImportError, AttributeError) as error:
            print(f"{path.stem}: {error}", file=sys.stderr)
    print(json.dumps(list(cases)), flush=True)
    for line in sys.stdin:
        name, calls = json.loads(line)
        call = cases[name]
        start = time.process_time()
        for _ in range(calls):
            call()
        print(json.dumps((time.process_time() - start) / calls), flush=True)


class Build:
    """A process with one build."""

    def __init__(self, folder: str, core: int | None, words: tuple[str, ...]) -> None:
        pinned = ["taskset", "-c", str(core)] if core is not None else []
        # The package's Python beside the extension, or that of this checkout.
        path = os.pathsep.join([str(Path(folder).resolve()), str(HERE.parent / "python")])
        self.process = subprocess.Popen(
            [*pinned, sys.executable, __file__, "--serve", *words],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
            env={**os.environ, "PYTHONPATH": path},
        )
        self.names: list[str] = self.answer()

    def answer(self):
        line = self.process.stdout.readline()
        if not line:
            raise click.ClickException("a build has ended: see its words above")
        return json.loads(line)

    def seconds(self, name: str, calls: int) -> float:
        self.process.stdin.write(json.dumps([name, calls]) + "\n")
        self.process.stdin.flush()
        return self.answer()


def ratio(old: Build, new: Build, name: str, budget: float) -> str:
    calls = max(1, round(WARM / max(old.seconds(name, 1), 1e-9)))
    calls = max(1, round(WARM / max(old.seconds(name, calls), 1e-9)))
    new.seconds(name, calls)
    times: tuple[list[float], list[float]] = ([], [])
    while (sum(map(sum, times)) * calls < budget and len(times[0]) < 41) or len(times[0]) < 3:
        for build, found in zip((old, new), times, strict=True):
            found.append(build.seconds(name, calls))
    before, after = map(statistics.median, times)
    spread = statistics.median(abs(t / before - 1) for t in times[0])
    return f"{after / before:6.3f}  +-{spread:5.3f}  {before:10.3e}  {after:10.3e}  {name}"


@click.command()
@click.argument("folders", nargs=2)
@click.argument("words", nargs=-1)
@click.option("--core", type=int)
@click.option("--seconds", default=2.0, show_default=True)
def main(folders: tuple[str, str], words: tuple[str, ...], core: int | None, seconds: float) -> None:
    """Time two builds side by side."""
    old, new = (Build(folder, core, words) for folder in folders)
    print("new/old  spread    old, s      new, s    case")
    for name in new.names:
        if words and not any(word in f"bench_{name}" for word in words):
            continue
        if name not in old.names:
            print(f"left out, not in the old build: {name}")
            continue
        print(ratio(old, new, name, seconds), flush=True)


if __name__ == "__main__":
    serve(sys.argv[2:]) if sys.argv[1:2] == ["--serve"] else main()
