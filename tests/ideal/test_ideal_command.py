"""`vkmcore ideal`: what it prints and writes, and how it ends and fails."""

import json

import numpy as np
import pytest
import vkmcore as vkm
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.commands.ideal import Teller


def run(*arguments):
    return CliRunner().invoke(cli, ["ideal", *map(str, arguments)])


def test_the_record_and_the_files_are_those_of_the_function(tmp_path):
    vect, kept, block, plot = (tmp_path / name for name in ("tight.vect", "tight.npz", "tight.txt", "tight.png"))
    result = run("trefoil", "--edge", 0.5, "--json", "--out", vect, "--fourier", block, "--excess", 2, "--plot", plot)
    assert result.exit_code == 0, result.stderr
    record = json.loads(result.stdout)
    shape = vkm.idealize("3_1", edge=0.5)
    assert record["points"] == [points.tolist() for points in shape.points]
    assert record["ropelength"] == shape.ropelength and record["name"] == "3_1"
    assert record["certificate"] == shape.certificate
    np.testing.assert_array_equal(vkm.Knot(vect).points(), shape.points[0])
    assert plot.read_bytes().startswith(b"\x89PNG")
    fourier = vkm.Knot(block)
    assert fourier.thickness == pytest.approx(0.5, rel=1e-3)
    assert fourier.ropelength <= shape.ropelength * 1.021
    assert run("Hopf", "--edge", 0.5, "--seed", 7, "--out", kept).exit_code == 0
    assert vkm.IdealShape.load(kept).seed == 7


def test_the_table_tells_both_conventions_and_the_published_value():
    result = run(vkm.__file__.replace("__init__.py", "no such"), "--edge", 0.5)
    assert result.exit_code == 1
    result = run("[1,1,1]", "--edge", 0.5, "--expect", "3_1")
    assert result.exit_code == 0, result.stderr
    for words in ("length / radius", "length / diameter", "best published", "32.74360000", "Type: braid: proved"):
        assert words in result.stdout


def test_ctrl_c_writes_the_best_so_far(tmp_path, monkeypatch):
    told = Teller.__call__

    def interrupt(teller, step, best):
        told(teller, step, best)
        if teller.done == 2:
            raise KeyboardInterrupt

    monkeypatch.setattr(Teller, "__call__", interrupt)
    result = run("4_1", "--out", tmp_path / "best.npz")
    assert result.exit_code == 130
    assert "stopped: the best so far, at edges of 0.9" in result.stderr and "wrote" in result.stderr
    shape = vkm.IdealShape.load(tmp_path / "best.npz")
    assert shape.interrupted and "4_1" in shape.certificate


@pytest.mark.parametrize(
    ("arguments", "text"),
    [
        (["no_knot"], "no such file; no knot or link"),
        (["[[1,5,2,4],[3,1,4,6],[5,3,6,7]]"], "names every arc twice"),
        (["3_1", "--expect", "4_1"], "not 4_1: the Jones polynomial"),
        (["3_1", "--edge", "1e-9"], "not enough memory"),
        (["3_1", "--out", "tight.foo"], "no format of this name"),
        (["3_1", "--out", "no/such/folder/tight.vect"], "directory does not exist"),
        (["3_1", "--plot", "no/such/folder/tight.png"], "directory does not exist"),
    ],
)
def test_failures_are_one_line(arguments, text):
    result = run(*arguments)
    assert result.exit_code == 1 and result.stdout == ""
    assert text in result.stderr and result.stderr.count("\n") == 1


def test_usage_errors_end_with_2():
    for arguments in (["3_1", "--edge", -1], ["3_1", "--seeds", 0], []):
        assert run(*arguments).exit_code == 2
