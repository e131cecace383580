"""Golden masses of the Master Dictionary, and the command `vkmcore zoo`."""

import csv
import io
import math

import _native
import pytest
from click.testing import CliRunner
from vkmcore.cli import cli

MASSES = {result.identifier: result for result in _native.ZooEvaluator.evaluate_all_golden_nls()}
C_SQUARED = 89875517873681760.0
PHI = 1.618033988749895


def test_masses_are_the_closed_form_in_bridge_number_and_genus():
    assert len(MASSES) == 32
    for name, result in MASSES.items():
        expected = ((result.bridge_b * 1.0290437436843307e-54) * PHI ** (-2 * result.genus_g)) * C_SQUARED
        assert result.mass_mev == expected / 1.602176634e-13
        assert _native.ZooEvaluator.get_entry_mass(name) == result.mass_mev
    assert _native.ZooEvaluator.get_entry_mass("Knot 3_1 (Trefoil)") == 4.409806810907181e-25
    assert _native.ZooEvaluator.get_entry_mass(identifier="Unknot") == 5.772512057387891e-25


def test_entries_stand_in_the_order_of_their_bytes():
    names = list(MASSES)
    assert names == sorted(names, key=str.encode)
    assert names[:3] == ["Knot 10_1 (Twist)", "Knot 11_1 (Torus)", "Knot 12a1202"]
    assert names[-2:] == ["Unknot", "Unlink"]


@pytest.mark.parametrize(
    ("name", "bridge", "genus"),
    [
        ("Link 2^2_1 (Hopf Link)", 2.0, 0),
        ("Link 4^2_1 (Solomon's)", 2.0, 1),
        ("Link 6^3_1", 3.0, 0),
        ("Knot 8_19 (T_3,4)", 3.0, 3),
        ("Knot 9_1 (Torus)", 2.0, 4),
        ("Knot 9_2 (Twist)", 2.0, 1),
        ("Knot 11_1 (Torus)", 2.0, 5),
        ("Knot 15a331", 3.0, 4),
    ],
)
def test_entries(name, bridge, genus):
    assert (MASSES[name].bridge_b, MASSES[name].genus_g) == (bridge, genus)


def test_sums_over_all_entries():
    assert sum(result.bridge_b for result in MASSES.values()) == 84.0
    assert sum(result.genus_g for result in MASSES.values()) == 49


@pytest.mark.parametrize("name", ["", "Knot 3_1", "knot 3_1 (trefoil)", "Unknot ", "Unknot\0"])
def test_unknown_entries_weigh_minus_one(name):
    assert _native.ZooEvaluator.get_entry_mass(name) == -1.0


def test_records_are_the_caller_s_own():
    result = _native.ZooResult()
    assert (result.identifier, result.mass_mev, result.bridge_b, result.genus_g) == ("", 0.0, 0.0, 0)
    result.identifier, result.genus_g = "mine", -3
    assert (result.identifier, result.genus_g) == ("mine", -3)
    _native.ZooEvaluator.evaluate_all_golden_nls()[0].mass_mev = math.nan
    assert MASSES["Unknot"].mass_mev == _native.ZooEvaluator.get_entry_mass("Unknot")


def test_command_lists_what_the_library_gives():
    result = CliRunner().invoke(cli, ["zoo", "--csv"])
    assert result.exit_code == 0, result.stderr
    rows = list(csv.DictReader(io.StringIO(result.stdout)))
    assert "\r" not in result.stdout and '"Knot 8_19 (T_3,4)",3.0,3,' in result.stdout
    assert [row["identifier"] for row in rows] == list(MASSES)
    for row in rows:
        entry = MASSES[row["identifier"]]
        values = (float(row["bridge_b"]), int(row["genus_g"]), float(row["mass_mev"]))
        assert values == (entry.bridge_b, entry.genus_g, entry.mass_mev)

    table = CliRunner().invoke(cli, ["zoo"])
    assert table.exit_code == 0 and table.stderr == ""
    lines = table.stdout.splitlines()
    places = [next(i for i, line in enumerate(lines) if line.strip().startswith(name + "  ")) for name in MASSES]
    assert places == sorted(places)
    assert any("Knot 3_1 (Trefoil)" in line and "4.409806811e-25" in line for line in lines)
