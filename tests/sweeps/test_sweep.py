"""Sweeps: every row once, whatever workers do; gone on with; by a cluster; from the shell."""

import csv
import importlib.util
import json
import os
import time

import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore import sweep
from vkmcore.cli import cli
from vkmcore.sweeps import workers
from vkmcore.sweeps.run import rows


def power(knot, base, exponent=1):
    return {"value": base**exponent, "of": {"knot": knot, "list": [1]}}


def test_a_sweep_has_a_row_for_every_knot_and_combination():
    pytest.importorskip("pandas")
    data = sweep(power, ["3_1", "4_1"], {"base": [2, 3], "exponent": [1, 2]}, jobs=3)
    assert list(data.columns) == ["knot", "base", "exponent", "value", "of.knot", "seconds", "error"]
    assert list(data.knot) == ["3_1"] * 4 + ["4_1"] * 4 and list(data.value) == [2, 4, 3, 9] * 2
    assert not data.error.any() and list(data["of.knot"]) == list(data.knot)


def test_functions_of_a_notebook_and_knots_as_objects_will_do():
    knots = [vkmcore.Knot("3_1"), vkmcore.Knot("4_1")]
    found = rows(lambda knot: knot.length, knots, {}, jobs=2)
    assert [(row["knot"], row["value"]) for row in found] == [(knot.name, knot.length) for knot in knots]
    assert [row["value"] for row in rows(lambda x: x + 1, [], {"x": [1, 2]}, jobs=1)] == [2, 3]


def test_an_error_is_its_row_s_alone_and_is_done_again(tmp_path):
    out = tmp_path / "out.csv"
    broken = tmp_path / "broken"
    broken.touch()

    def work(knot, n):
        with open(tmp_path / "calls", "a") as file:
            file.write(f"{knot} {n}\n")
        if n == 2 and broken.exists():
            raise RuntimeError("not, yet")
        return {"square": n * n / 4.0, "name": knot}

    grid = {"n": [1, 2, 3]}
    first = rows(work, ["3_1", "4_1"], grid, jobs=2, out=out)
    assert [row["error"] for row in first] == ["", "RuntimeError: not, yet", ""] * 2
    with open(out, newline="") as file:
        assert [row["error"] for row in csv.DictReader(file)] == [row["error"] for row in first]
    broken.unlink()
    again = rows(work, ["3_1", "4_1"], grid, jobs=2, out=out)
    assert [(r["knot"], r["n"], r["square"], r["name"]) for r in again] == [
        (knot, n, n * n / 4.0, knot) for knot in ("3_1", "4_1") for n in (1, 2, 3)
    ]
    assert len((tmp_path / "calls").read_text().splitlines()) == 6 + 2
    rows(work, ["3_1", "4_1"], grid, jobs=2, out=out)
    assert len((tmp_path / "calls").read_text().splitlines()) == 8
    with pytest.raises(ValueError, match="another sweep: no column m"):
        rows(work, ["3_1"], {"m": [1]}, out=out)


def test_a_worker_that_dies_loses_its_own_row_only_and_is_tried_again(tmp_path):
    def work(n, folder):
        marker = os.path.join(folder, str(n))
        if n == 3 or (n == 5 and not os.path.exists(marker)):
            open(marker, "w").close()
            time.sleep(0.05)
            os._exit(7)
        return n

    found = rows(work, [], {"n": range(8), "folder": [str(tmp_path)]}, jobs=3, retries=1)
    assert [row.get("value") for row in found] == [0, 1, 2, None, 4, 5, 6, 7]
    assert [row["error"] for row in found if row["n"] != 3] == [""] * 7
    assert found[3]["error"] == "the worker died 2 times, exit code 7"


def test_a_result_that_cannot_be_sent_is_told():
    [row] = rows(lambda n: {"f": lambda: n}, [], {"n": [1]}, jobs=1)
    assert "cannot be sent" in row["error"]


def test_a_cluster_does_the_same(tmp_path, monkeypatch):
    if importlib.util.find_spec("distributed") is None:
        pytest.skip("no Dask here")
    distributed = workers.distributed()
    if importlib.util.find_spec("snappy"):  # which Dask's own workers trip over
        (tmp_path / "snappy.py").write_text("raise ImportError")
        monkeypatch.syspath_prepend(tmp_path)

    def work(n, folder):
        if n == 2:
            os._exit(7)
        return {"square": n * n, "pid": os.getpid()}

    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        found = rows(work, [], {"n": [0, 1, 2, 3], "folder": [str(tmp_path)]}, scheduler=cluster.scheduler_address)
    assert [row.get("square") for row in found] == [0, 1, None, 9]
    assert os.getpid() not in {row.get("pid") for row in found}
    assert found[2]["error"].startswith("the worker died")


def command(*words):
    return CliRunner().invoke(cli, ["sweep", *map(str, words)])


def test_the_command_sweeps_a_command(tmp_path):
    out = tmp_path / "out.csv"
    words = ["describe", "3_1", "4_1", "--samples", "64,96", "--contact-vertices=64", "-j", "2"]
    result = command(*words, "--json", "-o", out)
    assert result.exit_code == 0, result.output
    found = json.loads(result.stdout)
    assert [(row["knot"], row["samples"]) for row in found] == [("3_1", 64), ("3_1", 96), ("4_1", 64), ("4_1", 96)]
    [single] = [
        json.loads(
            CliRunner().invoke(cli, ["describe", "3_1", "--samples", "96", "--contact-vertices", "64", "--json"]).stdout
        )
    ]
    assert found[1]["tube.length"] == single["tube"]["length"]
    text = command(*words, "--csv", "-o", out).stdout
    assert [row["tube.length"] for row in csv.DictReader(text.splitlines())] == [repr(r["tube.length"]) for r in found]
    assert command("mass", "3_1", "--resolution", "20", "--iterations", "1", "--no-tail", "--json").stdout.count(
        '"3:1:1"'
    )


@pytest.mark.parametrize(
    ("words", "told"),
    [
        (("info", "3_1"), "no command 'info' for a sweep; there are"),
        (("describe", "3_1", "--colour", "1"), "describe has no option --colour"),
        (("describe", "3_1", "--samples", "a"), "--samples: 'a' is not a valid"),
        (("describe", "--samples", "64"), "no knot"),
        (("describe", "3_1", "--samples"), "needs values"),
    ],
)
def test_wrong_words_are_told(words, told):
    result = command(*words)
    assert result.exit_code == 2 and told in result.stderr


def test_rows_with_errors_end_the_command_with_1():
    result = command("describe", "no_such_knot", "--json")
    assert result.exit_code == 1 and "1 of 1 rows" in result.stderr
    assert "neither a file nor a key" in json.loads(result.stdout)[0]["error"]
