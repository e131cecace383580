"""`vkmcore describe` and `vkmcore compare`: files, keys, and how they fail."""

import json
import math

import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.curves import evenly_spaced
from vkmcore.curves.reader import read_curve

TREFOIL = "0.5 0 0 -0.5 0 0\n2 0 0 2 0 0\n0 0 0 0 0 1\n0 0 0 0 0 0\n0.5 0 0 0.5 0 0\n"


def run(*arguments):
    return CliRunner().invoke(cli, list(arguments))


@pytest.fixture
def trefoil(tmp_path):
    path = tmp_path / "trefoil.fseries"
    path.write_text(TREFOIL)
    return str(path)


def samples_of(path, n):
    block = vkmcore.parse_fseries_multi(path)[0]
    return block, vkmcore.evaluate_fourier_block(block, [k * (2.0 * math.pi) / n for k in range(n)])


def test_describe_is_the_library_s_numbers_to_the_last_bit(trefoil):
    record = json.loads(run("describe", trefoil, "--samples", "150", "--skip", "3", "--json").stdout)
    block, points = samples_of(trefoil, 150)
    curve = vkmcore.describe_fourier_block(block, 150, 3)
    tube = vkmcore.resolved_tube_analyze(points, 3)
    stress = vkmcore.ContactStressMap.diagnose_length_criticality(points, tube)
    assert record["name"] == trefoil
    names = ("length", "bending_energy", "min_self_distance", "writhe")
    assert record["curve"] == {"kind": "fseries", "harmonics": 5, "vertices": 150} | {
        name: getattr(curve, name) for name in names
    }
    assert record["tube"]["thickness_rad"] == tube.thickness_rad > 0.0
    assert (record["tube"]["struts"], record["tube"]["kinks"]) == (len(tube.struts), len(tube.kinks))
    assert record["contacts"]["contact_residual"] == stress.contact_residual < 1.0
    assert record["settings"] == {"samples": 150, "skip": 3, "contact_tol": 0.001, "contact_vertices": 512}


def test_describe_takes_polygons_and_keys(trefoil, tmp_path):
    _, points = samples_of(trefoil, 100)
    polygon = tmp_path / "polygon.txt"
    polygon.write_text("# x, y, z\n" + "".join(f"{x!r}, {y!r}, {z!r}\n" for x, y, z in points))
    by_polygon = json.loads(run("describe", str(polygon), "--json").stdout)
    by_series = json.loads(run("describe", trefoil, "--samples", "100", "--json").stdout)
    assert by_polygon["curve"]["kind"] == "polygon" and by_polygon["curve"]["vertices"] == 100
    assert by_polygon["tube"] == by_series["tube"] and by_polygon["contacts"] == by_series["contacts"]
    for name in ("writhe", "min_self_distance"):
        assert by_polygon["curve"][name] == by_series["curve"][name]
    for key, kind in (("3_1", "catalogue"), ("3:1:1", "ideal")):
        record = json.loads(run("describe", key, "--samples", "100", "--json").stdout)
        assert record["curve"]["kind"] == kind
        # The tube of a smooth trefoil, not the nearness of neighbours: above the best ropelength known, and near it.
        assert 32.74 < record["tube"]["ropelength_rad"] < 50.0
        assert record["tube"]["struts"] > 0


def test_the_contacts_of_a_fine_curve_are_those_of_a_coarser_one(trefoil, tmp_path):
    fine = run("describe", trefoil, "--samples", "300", "--contact-vertices", "100", "--json")
    coarse = run("describe", trefoil, "--samples", "100", "--json")
    assert "contacts: fitted on a polygon of 100 vertices" in fine.stderr and coarse.stderr == ""
    fine, coarse = json.loads(fine.stdout), json.loads(coarse.stdout)
    assert fine["contacts"] == coarse["contacts"] and fine["contacts"]["vertices"] == 100
    assert fine["curve"]["vertices"] == 300 and fine["tube"]["struts"] > coarse["tube"]["struts"]

    polygon = tmp_path / "polygon.txt"
    polygon.write_text("".join(f"{x!r} {y!r} {z!r}\n" for x, y, z in samples_of(trefoil, 300)[1]))
    record = json.loads(run("describe", str(polygon), "--skip", "60", "--contact-vertices", "100", "--json").stdout)
    even = evenly_spaced(samples_of(trefoil, 300)[1], 100)
    stress = vkmcore.resolved_tube_kkt_diagnostics(even, vkmcore.resolved_tube_analyze(even, 20))
    assert record["contacts"]["contact_residual"] == stress.contact_residual
    assert record["contacts"]["rigidity_columns"] == stress.rigidity_columns > 0


def test_many_contacts_are_fitted_as_the_library_would():
    """Beyond some hundred contacts by another method: the residual, and what the struts hold, are the same."""
    record = json.loads(run("describe", "3:1:1", "--samples", "140", "--contact-tol", "2e-3", "--json").stdout)
    points = read_curve("3:1:1").sampled(140).tolist()
    tube = vkmcore.resolved_tube_analyze(points, record["tube"]["skipped_neighbours"], 2e-3)
    found, stress = record["contacts"], vkmcore.ContactStressMap.diagnose_length_criticality(points, tube)
    assert found["rigidity_columns"] > 400 and found["nnls_algorithm"] == "interior_point" != stress.nnls_algorithm
    assert found["nnls_converged"] and found["contact_residual"] == pytest.approx(stress.contact_residual, rel=1e-4)
    assert found["strut_weight_sum"] == pytest.approx(stress.strut_weight_sum, rel=1e-4)
    assert found["contact_entropy"] > stress.contact_entropy  # spread over more of them


def test_tables_show_every_digit(trefoil):
    result = run("describe", trefoil, "--samples", "100")
    record = json.loads(run("describe", trefoil, "--samples", "100", "--json").stdout)
    assert result.exit_code == 0 and result.stderr == ""
    assert f"{record['tube']['ropelength_rad']:#.10g}" in result.stdout and "contact residual" in result.stdout
    result = run("compare", trefoil, "3_1", "--samples", "100")
    record = json.loads(run("compare", trefoil, "3_1", "--samples", "100", "--json").stdout)
    assert result.exit_code == 0 and result.stderr == ""
    for name in ("L_a", "dkappa_max", "rms_point_delta"):
        assert f"{record[name]:#.10g}" in result.stdout


def test_compare_reads_files_and_keys_alike(trefoil, tmp_path):
    embedded = tmp_path / "3_1.fseries"
    embedded.write_text(vkmcore.get_embedded_knot_files()["3_1"])
    record = json.loads(run("compare", trefoil, "3_1", "--samples", "90", "--skip", "2", "--json").stdout)
    assert (record.pop("a"), record.pop("b")) == (trefoil, "3_1")
    assert record.pop("settings") == {"samples": 90, "skip": 2}
    assert record == vkmcore.compare_fseries_files(trefoil, str(embedded), 90, 2)
    assert json.loads(run("compare", "3:1:1", "3:1:1", "--json").stdout)["rms_point_delta"] == 0.0


def test_neighbours_follow_the_spacing_and_are_told():
    """With a fixed number of them the reach falls as the spacing does."""
    reaches, ropelengths, few = [], [], ("--contact-vertices", "64")
    for samples in ("200", "800"):
        compared = json.loads(run("compare", "3:1:1", "4:1:1", "--samples", samples, "--json").stdout)
        described = json.loads(run("describe", "3:1:1", *few, "--samples", samples, "--json").stdout)["tube"]
        assert compared["settings"]["skip"] > 4 and described["skipped_neighbours"] > 4
        reaches.append(compared["reach_proxy_a"])
        ropelengths.append(described["ropelength_rad"])
    assert reaches[0] == pytest.approx(reaches[1], rel=0.02)
    assert ropelengths[0] == pytest.approx(ropelengths[1], rel=0.02)
    skipped = compared["settings"]["skip"]
    table = run("compare", "3:1:1", "4:1:1", "--samples", "800").stdout
    assert any("skipped neighbours" in line and str(skipped) in line for line in table.splitlines())


@pytest.mark.parametrize(
    ("text", "message"),
    [
        (None, "neither a file nor a key"),
        ("1 2 3\n4 5 6\n", "at least 3 points"),
    ],
)
def test_failures_are_one_line(tmp_path, text, message):
    path = tmp_path / "curve.txt"
    if text is not None:
        path.write_text(text)
    result = run("describe", str(path))
    assert result.exit_code == 1 and result.stdout == "" and message in result.stderr
    assert result.stderr.count("\n") == 1
    if text == "1 2 3\n4 5 6\n":
        assert "a polygon" in run("compare", "3_1", str(path)).stderr


def test_links_are_refused():
    links = [
        block.id
        for text in vkmcore.get_embedded_ideal_files().values()
        for block in vkmcore.parse_ideal_halvard_from_string(text)
        if len(block.components) > 1
    ]
    if not links:
        pytest.skip("the catalogue of this build holds no link")
    assert "one closed curve is needed" in run("describe", links[0]).stderr
