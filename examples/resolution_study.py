"""How the mass of a knot depends on the number of points along its filament.

python examples/resolution_study.py [ID] [POINTS ...]
"""

from __future__ import annotations

import sys

from vkmcore import ParticleEvaluator


def main(knot_id: str = "3:1:1", *points: str) -> None:
    print(f"{'points':>8}  {'ropelength':>18}  {'mass / MeV':>18}")
    for resolution in map(int, points or ("500", "1000", "2000", "4000")):
        knot = ParticleEvaluator(knot_id, resolution)
        knot.relax()
        print(f"{resolution:8d}  {knot.get_dimless_ropelength():18.12f}  {knot.get_core_mass_mev_only():18.12f}")


if __name__ == "__main__":
    main(*sys.argv[1:])
