"""Random calls of the extension until the time is over; the findings on the standard output, and 1 for any.

    python -m fuzz.run --seconds 60 --seed 1 [--build build/dev] [--build build/asan]

Right arguments go to every build, with the hand-written kernels on and off, and must give the same bits; hostile
arguments and mutated files must end in a result or an exception that a caller can expect, within a second of an alarm,
and in one process. A finding names seed and number: `python -m fuzz.child SEED NUMBER 1 HOSTILITY` repeats it.
"""

from __future__ import annotations

import argparse
import sys
import time
from pathlib import Path

from fuzz.children import Variant, differences, make_calls

ROUND = 400  # calls of one child
HOSTILITY = 0.25


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seconds", type=float, default=60.0)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--build", type=Path, action="append", default=[], help="folder of an extension")
    parser.add_argument("--installed", action="store_true", help="the installed one; so too without --build")
    options = parser.parse_args()
    builds: list[Path | None] = [None] if options.installed or not options.build else []
    builds += options.build
    kernels = [
        Variant(f"{build or 'installed'}{flag}", build, (flag,) if flag else ())
        for build in builds
        for flag in ("", "--plain")
    ]
    end = time.monotonic() + options.seconds
    findings: list[str] = []
    made = {"right": 0, "hostile": 0}
    number = 0
    while time.monotonic() < end:
        runs = {kind.name: make_calls(kind, options.seed, number, ROUND, 0.0, end) for kind in kernels}
        findings += differences(runs)
        hostile = [
            make_calls(Variant(str(build or "installed"), build), options.seed, number, ROUND, HOSTILITY, end)
            for build in builds
        ]
        for run in [*runs.values(), *hostile]:
            findings += run.findings
        made["right"] += sum(len(run.outcomes) for run in runs.values())
        made["hostile"] += sum(len(run.outcomes) for run in hostile)
        number += ROUND
    for finding in findings:
        print(finding)
    names = ", ".join(str(build or "installed") for build in builds)
    print(f"{made['right']} calls with right and {made['hostile']} with hostile arguments on {names}: "
          f"{len(findings)} findings")  # fmt: skip
    return 1 if findings or not made["right"] else 0


if __name__ == "__main__":
    sys.exit(main())
