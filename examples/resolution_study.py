"""How the mass of a knot depends on the number of points along its filament: catalogued, and relaxed as `vkmcore mass`
relaxes it. `vkmcore study mass` judges the same.

python examples/resolution_study.py [KNOT] [POINTS ...]
"""

from __future__ import annotations

import sys

from vkmcore import study_mass


def main(knot: str = "3:1:1", *points: str) -> None:
    study = study_mass(knot, map(int, points or ("100", "200", "400", "800")), [1e-3])
    for way in study.ways:
        print(f"{way.name}\n{'points':>8}  {'ropelength':>18}  {'mass / MeV':>18}")
        for n, ropelength, mass in zip(study.resolutions, way.ropelengths, way.masses_MeV):
            print(f"{n:8d}  {ropelength:18.12f}  {mass:18.12f}")
        print(f"{way.verdict}: {way.reason}\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
