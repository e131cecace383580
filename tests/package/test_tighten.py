"""`vkmcore tighten`: its numbers against one call of the library, what it writes, and how it ends and fails."""

import json
import math
from contextlib import contextmanager

import numpy as np
import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.curves import evenly_spaced, read_curve
from vkmcore.tube.tightening import Tightening, half_turn, start_polygon

SMALL = ["3_1", "--vertices", "36", "--contact-tol", "0.003"]


def run(*arguments):
    return CliRunner().invoke(cli, ["tighten", *map(str, arguments)])


def begun(skip=None):
    reached = Tightening(start_polygon(read_curve("3_1"), 36))
    reached.begin(0.003, skip)
    return reached


def one_call(steps, skip=None, **changes):
    """(start, result) of the library's tightener."""
    reached = begun(skip)
    options = vkmcore.TighteningOptions()
    defaults = {"max_step_size": 0.05, "use_active_set_solver": False, "nnls_max_iterations": 200}
    settings = {"max_steps": steps, "contact_tol": 0.003, "skip_neighbors": reached.skip} | defaults | changes
    for name, value in settings.items():
        setattr(options, name, value)
    return reached, vkmcore.ResolvedTubeTightener.tighten(reached.scaled, options)


@pytest.mark.parametrize(
    ("arguments", "changes"),
    [
        ([], {}),
        (["--no-preserve-initial-thickness", "--active-set-solver", "--nnls-max-iterations", "50"],
         {"preserve_initial_thickness": False, "use_active_set_solver": True, "nnls_max_iterations": 50}),
        (["--correction-strategy", "scale", "--max-step-size", "0.2", "--skip", "4"],
         {"correction_strategy": "scale", "max_step_size": 0.2, "skip": 4}),
    ],
)  # fmt: skip
def test_the_numbers_are_those_of_one_call_to_the_last_bit(arguments, changes):
    result = run(*SMALL, "--steps", 12, "--json", *arguments)
    assert result.exit_code == 0 and result.stderr == ""
    record = json.loads(result.stdout)
    start, expected = one_call(12, **changes)
    assert record["points"] == (np.array(expected.points) * start.unit).tolist()
    assert record["runs"] == [len(expected.steps)] and record["reason"] == expected.reason
    assert record["ropelength_after"] == expected.metrics.ropelength_rad < record["ropelength_before"]
    assert (record["struts"], record["kinks"]) == (len(expected.metrics.struts), len(expected.metrics.kinks))
    for step, other in zip(record["steps"], expected.steps, strict=True):
        assert step == {name: getattr(other, name) for name in step}


def test_runs_follow_one_another_and_the_table_shows_them():
    arguments = [*SMALL, "--contact-tol", "0.0003", "--steps", 7]
    record = json.loads(run(*arguments, "--json").stdout)
    assert record["runs"] == [7, 7]
    before, after = record["steps"][6], record["steps"][7]
    assert math.isclose(before["ropelength_after"], after["ropelength_before"], rel_tol=1e-12)
    assert after["strut_count"] < before["strut_count"]
    table = run(*arguments, "--rows", 2).stdout
    for step in (record["steps"][6], record["steps"][13]):
        assert f"{step['ropelength_after']:.6f}" in table
    assert table.count("\n    1 ") == 2 and f"{record['ropelength_after']:#.10g}" in table
    assert "max steps zero" in run(*SMALL, "--steps", 0).stdout


def test_what_is_written_can_be_read(tmp_path):
    output, folder, plot = tmp_path / "tight.txt", tmp_path / "matrices", tmp_path / "tight.png"
    result = run(*SMALL, "--steps", 5, "--output", output, "--matrix-market", folder, "--plot", plot)
    assert result.exit_code == 0 and result.stderr.split() == f"wrote {output} wrote {folder} wrote {plot}".split()
    start, expected = one_call(5)
    assert read_curve(output).vertices.tolist() == (np.array(expected.points) * start.unit).tolist()
    assert plot.read_bytes()[:8] == b"\x89PNG\r\n\x1a\n" and plot.stat().st_size > 20000

    matrix = vkmcore.ContactStressMap.build_sparse_rigidity_matrix(expected.points, expected.metrics)
    vkmcore.resolved_tube_write_matrix_market(matrix, str(tmp_path / "a.mtx"))
    gradient = vkmcore.resolved_tube_length_gradient_flat(expected.points)
    vkmcore.resolved_tube_write_vector_market(gradient, str(tmp_path / "b.mtx"))
    assert (folder / "rigidity.mtx").read_bytes() == (tmp_path / "a.mtx").read_bytes()
    assert (folder / "length_gradient.mtx").read_bytes() == (tmp_path / "b.mtx").read_bytes()

    # A polygon is taken as it stands, whatever its unit.
    small = tmp_path / "small.txt"
    np.savetxt(small, np.array(expected.points) * 1e-13, fmt="%.17g")
    again = json.loads(run(small, "--contact-tol", "0.003", "--steps", 1, "--json").stdout)
    assert again["kind"] == "polygon" and again["vertices"] == 36
    assert math.isclose(again["ropelength_before"], expected.metrics.ropelength_rad, rel_tol=1e-9)
    assert math.isclose(again["thickness_after"], 1e-13 * expected.metrics.thickness_rad, rel_tol=1e-9)


def test_an_interrupted_run_writes_what_it_has(tmp_path, monkeypatch):
    @contextmanager
    def impatient(total, visible):
        def tell(done, words):
            if done == 3:
                raise KeyboardInterrupt

        yield tell

    monkeypatch.setattr("vkmcore.commands.tighten.progress_bar", impatient)
    output = tmp_path / "tight.txt"
    result = run(*SMALL, "--steps", 50, "--output", output)
    assert result.exit_code == 130 and "Interrupted." in result.stderr and "interrupted" in result.stdout
    start, expected = one_call(3)
    assert read_curve(output).vertices.tolist() == (np.array(expected.points) * start.unit).tolist()


@pytest.mark.parametrize(
    ("text", "arguments", "message"),
    [
        (None, [], "neither a file nor a key"),
        ("1 2 3\n4 5 6\n", [], "requires at least 3 points."),
        ("0 0 0\n0 0 0\n1 0 0\n0 1 0\n", [], "nonpositive_initial_thickness"),
        ("0 0 0\n1 0 0\n0 1 0\n", ["--contact-tol", "-1"], "contact_tol must be non-negative."),
        ("0 0 0\n1 0 0\n0 1 0\n", ["--output", "no/such/folder/file"], "the directory does not exist"),
        ("0 0 0\n1 0 0\n0 1 0\n", ["--matrix-market", "no/such/folder"], "No such file or directory"),
        ("0 0 0\n1 0 0\n0 1 0\n", ["--plot", "picture.nonsense"], "cannot draw a .nonsense file"),
    ],
)
def test_failures_are_one_line(tmp_path, text, arguments, message):
    path = tmp_path / "curve.txt"
    if text is not None:
        path.write_text(text)
    result = run(path, *arguments)
    assert result.exit_code == 1 and result.stdout == "" and message in result.stderr
    assert result.stderr.count("\n") == 1


def test_start_polygons():
    even = start_polygon(read_curve("3_1"), 50)
    edges = np.linalg.norm(np.roll(even, -1, axis=0) - even, axis=1)
    assert len(even) == 50 and np.ptp(edges) < 0.02 * edges.mean()
    square = [[0.0, 0.0, 0.0], [1.0, 0.0, 0.0], [1.0, 1.0, 0.0], [0.0, 1.0, 0.0]]
    assert evenly_spaced(square, 8)[1::2].tolist() == [[0.5, 0, 0], [1, 0.5, 0], [0.5, 1, 0], [0, 0.5, 0]]
    # Half a turn of a round curve, and less than the way between the strands of a trefoil that touch.
    angle = 2.0 * np.pi * np.arange(40) / 40
    assert half_turn(np.column_stack([np.cos(angle), np.sin(angle), 0.0 * angle])) in (19, 20)
    tube = begun().tube()
    assert min(min(pair.j - pair.i, 36 - (pair.j - pair.i)) for pair in tube.struts) > 36 * math.pi / 40.0


def test_a_run_ends_where_it_gains_little_and_where_neighbours_are_added():
    record = json.loads(run(*SMALL, "--steps", 200, "--least-gain", "1e-3", "--json").stdout)
    assert record["reason"] == "little_gain" and 20 <= record["runs"][-1] < 200
    values = [step["ropelength_before"] for step in record["steps"]] + [record["ropelength_after"]]
    gains = [1.0 - after / before for before, after in zip(values, values[20:], strict=False)]
    assert gains[-1] < 1e-3 <= min(gains[:-1])

    reached = Tightening(start_polygon(read_curve("3_1"), 36) * [1.0, 1.0, 4.0])  # a tall one has much to lose
    options = vkmcore.TighteningOptions()
    options.max_steps, options.max_step_size = 60, 0.05
    reached.tighten([0.003], options)
    assert len(reached.runs) > 1 and sum(reached.runs) == len(reached.steps) <= 60
    assert reached.skip == math.ceil(36 * math.pi / reached.tube().ropelength_rad)
    assert reached.overlap() < 1e-9


def test_an_overlap_among_neighbours_is_told(tmp_path):
    # A dumbbell, whose waist is narrower than its corners ask for: with all neighbours skipped nothing looks there.
    t = 2.0 * np.pi * np.arange(40) / 40
    points = np.column_stack([2.0 * np.cos(t), np.sin(t) * (0.1 + np.cos(t) ** 2), 0.0 * t])
    path = tmp_path / "dumbbell.txt"
    np.savetxt(path, points)
    told = run(path, "--steps", 0, "--skip", 20, "--json")
    radius = vkmcore.resolved_tube_minrad(points)
    waist = vkmcore.resolved_tube_analyze(points, 10).min_dcsd
    assert radius > 0.15 and waist < 0.201
    assert json.loads(told.stdout)["overlap"] == pytest.approx(1.0 - waist / (2.0 * radius), rel=1e-6)
    assert "strands overlap" in told.stderr
    assert "overlap" not in run(path, "--steps", 0, "--skip", 10).stderr
