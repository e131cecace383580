"""Verdicts on relaxed knots: steady, drifting, burst, another knot, collapsed."""

import json

import numpy as np
import pytest
from click.testing import CliRunner
from vkmcore import ParticleEvaluator
from vkmcore.cli import cli
from vkmcore.mass.assessment import assess, compare_types, judge_motion, motion_between
from vkmcore.mass.table import RelaxSettings


def settings(points, sweeps, step):
    return RelaxSettings(points, sweeps, step)


@pytest.mark.parametrize(
    ("knot", "how", "motion", "knot_type", "words"),
    [
        ("0:1:1", (60, 100, 1e-3), "steady", "kept", "steady, converged, same knot"),
        ("3:1:1", (120, 1000, 1e-3), "drifting", "kept", "still moving"),
        ("3:1:1", (200, 1000, 1e-2), "burst", None, "burst"),
        ("4:1:1", (5, 0, 1e-3), None, "lost", "knot type lost"),  # five edges make no knot
    ],
)
def test_verdicts(knot, how, motion, knot_type, words):
    found = assess(knot, settings(*how))
    assert motion in (None, found.motion) and knot_type in (None, found.knot_type)
    assert words in found.verdict


def test_both_shapes_are_the_library_s_numbers():
    found = assess("3:1:1", settings(90, 30, 2e-3))
    for shape, sweeps in ((found.catalogued, 0), (found.relaxed, 30)):
        ropelengths = []
        for points in (90, 45):
            knot = ParticleEvaluator("3:1:1", points)
            knot.relax(sweeps, 2e-3)
            ropelengths.append(knot.get_dimless_ropelength())
        assert (shape.weight.ropelength, shape.half_ropelength) == tuple(ropelengths)
        assert shape.relative_change == abs(ropelengths[1] / ropelengths[0] - 1)


def test_a_mirror_image_is_another_knot():
    t = np.arange(90) * 2 * np.pi / 90
    knot = np.stack([np.sin(t) + 2 * np.sin(2 * t), np.cos(t) - 2 * np.cos(2 * t), -np.sin(3 * t)], axis=1)
    assert compare_types([knot * 1e-15], [knot])[0] == "kept"
    assert compare_types([knot * [1, 1, -1]], [knot])[0] == "lost"
    cloud = np.random.default_rng(1).normal(size=(200, 3))
    assert compare_types([cloud], [knot])[0] == "undecided"


def test_motion_is_in_radii_and_forgets_the_place():
    square = np.array([[1.0, 0, 0], [0, 1, 0], [-1, 0, 0], [0, -1, 0]])
    assert motion_between([square + 5.0], [square]) == pytest.approx(0.0, abs=1e-14)
    assert motion_between([3e-15 * square], [2e-15 * square]) == pytest.approx(0.5, rel=1e-12)
    assert judge_motion(float("nan"), 1.0, 0.1, 1.0) == "collapsed"
    assert judge_motion(5e-4, 5e-3, 0.1, 1.0) == "drifting"  # slow, but a tenth of the way in a tenth of the time


def test_a_runaway_ends_with_code_1_and_its_reason():
    result = CliRunner().invoke(cli, ["mass", "3:1:1", "--resolution", "60", "--timestep", "1e200", "--json"])
    assert result.exit_code == 1 and "ran away or collapsed" in result.stderr
    [record] = json.loads(result.stdout, parse_constant=pytest.fail)
    assert record["motion"] == "collapsed" and record["relaxed"]["weight"]["core_mass_MeV"] is None
    assert record["catalogued"]["weight"]["core_mass_MeV"] > 0
    assert {check["kind"] for check in record["checks"]} == {"NumericalConvergence", "SyntheticDiagnostic"}


def test_a_name_is_as_good_as_an_id():
    small = ("--resolution", "60", "--iterations", "3", "--no-tail", "--json")
    by_name, by_id = (CliRunner().invoke(cli, ["mass", knot, *small]).stdout for knot in ("trefoil", "3:1:1"))
    assert by_name == by_id and json.loads(by_name)[0]["id"] == "3:1:1"
