"""The command `vkmcore spectrum` and the worked example."""

import json
import runpy
from pathlib import Path

import _native
import numpy as np
import pytest
from click.testing import CliRunner
from vkmcore.commands.spectrum import spectrum
from vkmcore.spectral.anchored_spectrum import BOUNDARIES, OperatorSettings, anchored_spectrum

SETTINGS = ("--points", "41", "--well-amplitude", "-60", "--levels", "4")


def run(*arguments):
    return CliRunner().invoke(spectrum, [*SETTINGS, *arguments])


def solve(boundary, rotations=100000):
    return _native.TrefoilOperator.build_and_solve_node_anchored_operator(
        -1, 1, 41, BOUNDARIES[boundary], True, [-0.5, 0.25], -60.0, 0.1, max_sweeps=rotations, tol=1e-10
    )


@pytest.mark.parametrize("boundary", BOUNDARIES)
def test_as_built_levels_are_the_library_s_to_the_last_bit(boundary):
    result = run("-0.5", "0.25", "--target", "-20", "--boundary", boundary, "--as-built", "--json")
    assert result.exit_code == 0, result.output
    record = json.loads(result.stdout)
    values = solve(boundary)["eigenvalues"]
    assert [level["eigenvalue"] for level in record["levels"]] == values[:4].tolist()
    assert record["nodes"] == [-0.5, 0.25]
    nearest = values[np.abs(values + 20).argmin()]
    assert record["targets"] == [{"target": -20.0, "nearest_eigenvalue": nearest, "difference": nearest + 20.0}]
    assert record["settings"]["points"] == 41


@pytest.mark.parametrize("boundary", BOUNDARIES)
def test_reduced_levels_solve_the_operator(boundary):
    settings = OperatorSettings(points=41, well_amplitude=-60.0, boundary=boundary)
    solved = anchored_spectrum([-0.5, 0.25], settings)
    assert solved.residuals.max() < 1e-8
    pinned = {"dirichlet": [0, -1], "centre": [0, 20, -1], "reflecting": []}[boundary]
    assert len(solved.eigenvalues) == 41 - len(pinned)
    assert (solved.eigenvectors[pinned] == 0.0).all()


def test_reflecting_ends_have_the_levels_of_cosines():
    settings = OperatorSettings(points=41, boundary="reflecting")
    exact = 4 / 0.05**2 * np.sin(np.arange(41) * np.pi / 80) ** 2
    np.testing.assert_allclose(anchored_spectrum([], settings).eigenvalues, exact, atol=1e-9)


def test_table_plot_and_failures(tmp_path):
    plot = tmp_path / "levels.png"
    result = run("0.5", "--plot", str(plot))
    assert result.exit_code == 0, result.output
    assert "nearest eigenvalue" in result.stdout and plot.read_bytes().startswith(b"\x89PNG")
    assert "large residuals" not in result.stderr
    assert "large residuals" in run("0.5", "--rotations", "3").stderr
    assert run("0.5", "--points", "2").exit_code == 2
    assert run("0.5", "--nonsense").exit_code == 2
    assert run("0.5", "--plot", str(tmp_path / "none" / "levels.png")).exit_code == 1


def test_worked_example(tmp_path, capsys):
    pytest.importorskip("scipy")
    path = Path(__file__).resolve().parents[2] / "examples" / "anchored_spectrum.py"
    example = runpy.run_path(str(path))
    before, after = example["fit_background"](61)
    assert np.abs(example["misses"](61, before)).max() > 0.1
    assert np.abs(example["misses"](61, after)).max() < 1e-6
    plot = tmp_path / "example.png"
    example["main"](["--points", "61", "--samples", "300", "--iterations", "3", "--plot", str(plot)])
    assert "nearest levels" in capsys.readouterr().out
    assert plot.read_bytes().startswith(b"\x89PNG")
    t = np.linspace(0.5, 9.0, 300)
    start, fitted = example["START"], example["fit_phases"](t, 10)
    assert example["report"](t, fitted)[1]["total"] < 0.5 * example["report"](t, start)[1]["total"]
