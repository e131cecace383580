"""How the verdicts on relaxed knots depend on their thresholds: each halved and doubled, over 30 relaxations.

PYTHONPATH=build/dev:python python tools/study_verdicts.py      (about a minute)
"""

from __future__ import annotations

import itertools
from collections import Counter

from vkmcore.mass import assessment
from vkmcore.mass.assessment import assess, judge_motion
from vkmcore.mass.table import RelaxSettings

KNOTS = ("0:1:1", "3:1:1", "4:1:1", "5:1:1", "6:1:1")
SETTINGS = tuple(itertools.product((100, 200, 400), ((100, 1e-3), (100, 1e-2))))
THRESHOLDS = ("STEADY", "STEADY_PART", "BURST_SPREAD", "BURST_GROWTH", "CONVERGED")


def main() -> None:
    found = []
    for knot, (points, (sweeps, step)) in itertools.product(KNOTS, SETTINGS):
        a = assess(knot, RelaxSettings(points, sweeps, step))
        growth = a.relaxed.weight.ropelength / a.catalogued.weight.ropelength
        found.append((a.moved_last_tenth, a.moved, a.edge_spread, growth, a.relaxed.relative_change))
        print(f"{knot} {points:4} {sweeps:5} {step:g}: {a.motion:9} {a.knot_type:9}", *(f"{x:.2e}" for x in found[-1]))

    def verdicts() -> list[str]:
        return [judge_motion(*row[:4]) + ("" if row[4] <= assessment.CONVERGED else ", not converged") for row in found]

    usual = verdicts()
    print(Counter(usual))
    for name in THRESHOLDS:
        value = getattr(assessment, name)
        for factor in (0.5, 2.0):
            changed = 1.0 + (value - 1.0) * factor if name == "BURST_GROWTH" else value * factor
            setattr(assessment, name, changed)
            others = [f"{a} -> {b}" for a, b in zip(usual, verdicts(), strict=True) if a != b]
            setattr(assessment, name, value)
            print(f"{name} {value:g} -> {changed:g}: {len(others)} of {len(usual)} differ", dict(Counter(others)))


if __name__ == "__main__":
    main()
