"""Studies of convergence: fitted orders, the rule of the verdicts, the evidence report, the command."""

import csv
import io
import json

import numpy as np
import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.commands.study import counts
from vkmcore.mass.convergence import judged

COUNTS = (100, 200, 400, 800)


@pytest.mark.parametrize(
    ("law", "tolerance", "verdict", "order"),
    [
        (lambda n: 10 + 300 * n**-2.0, 1e-3, "Pass", 2.0),
        (lambda n: 10 + 300 * n**-2.0, 1e-5, "Indeterminate", 2.0),  # shrinks, and is still too large
        (lambda n: 10 - 9 / n, 1e-2, "Pass", 1.0),
        (lambda n: 5 + 0.01 * np.log(n), 1e-2, "Indeterminate", None),  # small, and does not shrink
        (lambda n: 0.3 * n, 1e-3, "Fail", None),
        (lambda n: 2 * n**0.1, 1e-3, "Fail", None),
        (lambda n: np.nan if n > 400 else 10.0, 1e-3, "Fail", None),
    ],
)
def test_the_rule(law, tolerance, verdict, order):
    n = np.array(COUNTS, float)
    change, fitted, limit, growth, found, reason = judged(COUNTS, [float(law(x)) for x in n], tolerance)
    assert found == verdict, reason
    if order:
        assert fitted == pytest.approx(order, abs=0.02) and limit == pytest.approx(10.0, rel=2e-5)
        assert change == pytest.approx(abs(law(800.0) - law(400.0)) / law(800.0), rel=1e-12)
    else:
        assert limit is None
    if law(1000.0) > 100:
        assert growth == pytest.approx(1.0, abs=1e-12)
    assert judged(COUNTS[:2], [1.0, 1.0], tolerance)[4] == judged((9,), [1.0], tolerance)[4] == "Indeterminate"


def test_a_study_of_the_trefoil():
    found = vkmcore.study_mass("trefoil", (400, 100, 200), [1e-2], iterations=[100])
    assert (found.id, found.resolutions) == ("3:1:1", (100, 200, 400))
    catalogued, burst = found.ways
    assert (catalogued.verdict, burst.verdict) == ("Pass", "Fail")
    assert 1.0 < catalogued.order < 3.0 and 0.5 < burst.growth < 1.5
    knot = vkmcore.ParticleEvaluator("3:1:1", 200)
    knot.relax(100, 1e-2)
    assert burst.ropelengths[1] == knot.get_dimless_ropelength()
    assert burst.masses_MeV[1] == knot.get_core_mass_mev_only()
    report = json.loads(found.report_json())
    assert [check["kind"] for check in report["checks"]] == ["NUMERICAL_CONVERGENCE"] * 2
    assert [check["passed"] for check in report["checks"]] == [True, False]
    assert not any(check["supports_empirical_claim"] for check in report["checks"])
    rows = list(csv.DictReader(io.StringIO(found.csv_text())))
    assert len(rows) == 6 and [float(row["ropelength"]) for row in rows[3:]] == list(burst.ropelengths)


def test_the_step_may_follow_the_points():
    knot = vkmcore.ParticleEvaluator("5:1:1", 120)
    knot.relax(20, 1e-3 * (30 / 120) ** 0.5)
    (_, way) = vkmcore.study_mass("5_1", (30, 120), [1e-3], iterations=[20], step_exponent=0.5).ways
    assert way.ropelengths[1] == knot.get_dimless_ropelength()


def study(*arguments):
    return CliRunner().invoke(cli, ["study", "mass", *map(str, arguments)])


def test_the_command(tmp_path):
    report, picture = tmp_path / "report.json", tmp_path / "study.svg"
    small = ("3_1", "--resolution", "100..400", "--timestep", "1e-3", "--iterations", 20)
    result = study(*small, "--report", report, "--plot", picture)
    assert result.exit_code == 0, result.stderr
    assert "3:1:1" in result.stdout and "catalogued: Pass" in result.stdout
    checks = json.loads(report.read_text())["checks"]
    record = json.loads(study(*small, "--json").stdout)
    assert record["resolutions"] == [100, 200, 400] and record["ways"][0]["name"] == "catalogued"
    assert [check["message"] for check in checks] == [check["message"] for check in record["checks"]]
    assert "<svg" in picture.read_text() and study(*small, "--csv").stdout.count("\n") == 7


@pytest.mark.parametrize(
    ("arguments", "code", "words"),
    [
        (["nonsense"], 1, "nonsense"),
        (["3_1", "--resolution", "2"], 1, "from 3 on"),
        (["3_1", "--resolution", "9..3"], 2, "expected numbers"),
        (["3_1", "--timestep", "a"], 2, "expected numbers"),
        (["3_1", "--timestep", "0"], 1, "time step"),
        (["3_1", "--tolerance", "nan"], 1, "tolerance"),
        (["3_1", "--json", "--csv"], 2, "exclude"),
        (["K11a1", "--resolution", "9"], 1, "no shape of this knot in the ideal table"),
        (["3_1", "--report", "no/such/folder/a.json"], 1, "does not exist"),
    ],
)
def test_bad_input(arguments, code, words):
    if arguments[0] == "K11a1":
        pytest.importorskip("database_knotinfo")
    result = study(*arguments)
    assert (result.exit_code, result.stdout) == (code, "") and words in result.stderr


def test_counts_are_lists_and_doublings():
    assert counts(None, None, "100..4000") == (100, 200, 400, 800, 1600, 3200, 4000)
    assert counts(None, None, "7,10..10,30..120") == (7, 10, 30, 60, 120)
