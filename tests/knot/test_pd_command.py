"""The command `vkmcore pd`, its picture, and the example adapter for hyperbolic volumes."""

import json
import sys
from pathlib import Path

import numpy as np
import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.curves import read_curve
from vkmcore.curves.planar_diagram import DiagramSettings, planar_diagram
from vkmcore.pictures.diagram import passages, richest_projection, strands
from vkmcore.topology import complements, diagram_of_curves

ADAPTER = Path(__file__).parents[2] / "examples" / "hyperbolic_volume_adapter"


def run(*arguments):
    return CliRunner().invoke(cli, ["pd", *arguments])


def record(*arguments):
    result = run(*arguments, "--json")
    assert result.exit_code == 0, result.stderr
    return json.loads(result.stdout)


def test_record_is_the_library_s_result():
    found = record("3:1:1", "--samples", "150", "--tries", "7", "--seed", "-5", "--directions", "9")
    points = read_curve("3:1:1").sampled(150)
    assert found["pd"] == vkmcore.pd_from_curve(points, 7, -5)
    assert found["crossings"] == len(found["pd"])
    assert found["crossing_estimate"] == vkmcore.estimate_crossing_number(points.tolist(), 9, -5)
    assert (found["points"], found["settings"]["seed"]) == (150, -5)
    table = run("3:1:1", "--samples", "150", "--tries", "7", "--seed", "-5").stdout
    for row in found["pd"]:
        assert any(line.split()[1:] == [str(label) for label in row] for line in table.splitlines())


def test_failures(tmp_path):
    empty = tmp_path / "empty.fseries"
    empty.write_text("")
    for source, text in (
        ("9:99:9", "9:99:9: neither a file nor a key of the catalogue"),
        ("0:1:2", "0:1:2: a link of 2 components; one closed curve is needed"),
        ("0:1:1", "Failed to extract PD from any projection"),
        (str(empty), f"{empty}: no Fourier block in the file: expected rows of six numbers"),
    ):
        result = run(source)
        assert (result.exit_code, result.stdout, result.stderr.strip()) == (1, "", text)


@pytest.mark.parametrize(
    "source, settings", [("4:1:1", DiagramSettings(samples=150)), ("3_1", DiagramSettings(seed=-3))]
)
def test_picture_shows_the_code(source, settings):
    diagram = planar_diagram(source, read_curve(source).sampled(settings.samples), settings)
    projected = richest_projection(diagram, settings)
    over, under, sines = passages(projected, settings)
    # The drawn passages alternate between over and under as the code says.
    every = sorted([(position, True) for position in over] + [(position, False) for position in under])
    over_labels = {row[3] for row in diagram.code}
    assert [is_over for _, is_over in every] == [label in over_labels for label in range(1, len(every) + 1)]
    pieces = strands(projected, over, under, sines)
    assert len(pieces) == len(diagram.code)
    # No end of a piece lies on its crossing, and pieces with their gaps make the whole curve.
    edges = np.diff(np.vstack([projected, projected[:1]])[:, :2], axis=0)
    drawn = sum(np.linalg.norm(np.diff(piece, axis=0), axis=1).sum() for piece in pieces)
    assert 0.5 < drawn / np.linalg.norm(edges, axis=1).sum() < 1.0


def test_plot_is_written(tmp_path):
    target = tmp_path / "diagram.svg"
    result = run("4:1:1", "--samples", "150", "--plot", str(target))
    assert result.exit_code == 0 and result.stderr == f"wrote {target}\n"
    assert "<svg" in target.read_text()
    assert run("4:1:1", "--plot", str(tmp_path / "diagram.xyz")).exit_code == 1


def test_volume_without_a_solver(monkeypatch):
    monkeypatch.setitem(sys.modules, "vkm_hypvol_no_deps", None)
    monkeypatch.setattr("vkmcore.topology.complements.available", lambda: False)
    result = run("4:1:1", "--samples", "150", "--volume")
    assert result.exit_code == 1 and "vkmcore[snappy]" in result.stderr


@pytest.mark.parametrize("knot_id, volume", [("4:1:1", 2.0298832128), ("3:1:1", 0.0), ("0:1:1", 0.0)])
def test_volume_by_snappy_with_no_path_set(monkeypatch, knot_id, volume):
    pytest.importorskip("snappy")
    monkeypatch.setitem(sys.modules, "vkm_hypvol_no_deps", None)
    found = complements.volume(diagram_of_curves(read_curve(knot_id).sampled(150)))
    assert found == pytest.approx(volume, abs=1e-9)
    if volume:
        assert record(knot_id, "--samples", "150", "--volume")["hyperbolic_volume"] == pytest.approx(volume, abs=1e-9)


@pytest.fixture
def adapter(monkeypatch):
    monkeypatch.syspath_prepend(ADAPTER)
    monkeypatch.delitem(sys.modules, "vkm_hypvol_no_deps", raising=False)
    yield
    sys.modules.pop("vkm_hypvol_no_deps", None)


@pytest.mark.parametrize("knot_id, volume", [("4:1:1", 2.0298832128), ("3:1:1", 0.0)])
def test_volume_by_the_example_adapter(adapter, knot_id, volume):
    pytest.importorskip("snappy")
    assert record(knot_id, "--samples", "400", "--volume")["hyperbolic_volume"] == pytest.approx(volume, abs=1e-9)


def test_adapter_refuses_what_is_no_diagram(adapter):
    pytest.importorskip("snappy")
    assert vkmcore.hyperbolic_volume_from_pd([]) == 0.0
    for code in ([[1, 2, 3, 4]], [[4, 1, 1, 2], [2, 3, 3, 5]]):
        with pytest.raises(ValueError, match="each label from 1 on must stand in the code twice"):
            vkmcore.hyperbolic_volume_from_pd(code)
