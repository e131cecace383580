"""The report of an installation and chains of custody, from Python and from the shell."""

import json
import math
import os

import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore import CheckKind, PipelineProvenanceAPI
from vkmcore.cli import cli
from vkmcore.evidence import provenance
from vkmcore.evidence.report import check, git_commit, self_checks


def run(*arguments):
    return CliRunner().invoke(cli, [str(argument) for argument in arguments])


# --- report -------------------------------------------------------------------------------------------------------


def test_report(tmp_path):
    out = tmp_path / "report.json"
    result = run("report", out)
    assert (result.exit_code, result.stderr) == (0, "")
    document = json.loads(out.read_text(), parse_constant=pytest.fail)
    assert document["vkmcore_version"] == vkmcore.__version__ and document["compiler"] and document["platform"]
    assert len(document["checks"]) > 15 and all(entry["name"] in result.stdout for entry in document["checks"])
    for entry in document["checks"]:
        assert entry["passed"] and abs(entry["residual"]) <= entry["tolerance"], entry
        assert not entry["supports_empirical_claim"]
    kinds = {entry["kind"] for entry in document["checks"]}
    assert {"ALGEBRAIC_IDENTITY", "CALIBRATED_CLOSURE", "NUMERICAL_CONVERGENCE"} <= kinds


def test_a_failed_check_fails_the_report(tmp_path, monkeypatch):
    monkeypatch.setattr(vkmcore, "length_exact", lambda *rest: 15.0)
    out = tmp_path / "report.json"
    result = run("report", out)
    failed = [entry["name"] for entry in json.loads(out.read_text())["checks"] if not entry["passed"]]
    assert failed == ["length of a sampled trefoil: its limit"]
    assert result.exit_code == 1 and result.stdout.count("FAILED") == 1 and str(out) in result.stderr


def test_a_report_that_cannot_be_written(tmp_path):
    for path in (tmp_path / "missing" / "report.json", tmp_path):
        result = run("report", path)
        assert (result.exit_code, result.stdout) == (1, "") and "cannot write" in result.stderr
    assert list(tmp_path.iterdir()) == []


def test_a_report_under_a_name_that_is_no_text(tmp_path):
    out = tmp_path / os.fsdecode(b"\xff.json")
    assert run("report", out).exit_code == 0 and json.loads(out.read_text())["checks"]


def test_checks_claim_no_more_than_they_may():
    assert check("x", -0.5, 0.5).passed and not check("x", -0.5, 0.4).passed
    assert not check("x", math.nan, math.inf).passed and check("x", 0.0, 0.0).kind == CheckKind.OpenResearchGate
    for kind in CheckKind.__members__.values():
        if kind == CheckKind.IndependentPrediction:
            assert check("x", 0.0, 0.0, kind, supports_empirical_claim=True).supports_empirical_claim
        else:
            with pytest.raises(ValueError, match="supports no empirical claim"):
                check("x", 0.0, 0.0, kind, supports_empirical_claim=True)
    names = [result.name for result in self_checks()]
    assert len(set(names)) == len(names)


def test_no_commit_of_somebody_else_s_repository(tmp_path):
    assert git_commit(tmp_path) == ""


# --- provenance ---------------------------------------------------------------------------------------------------

STAGES = ("KnotPlot", "Ridgerunner", "Smoothing", "VKMcore")


@pytest.fixture
def files(tmp_path):
    for place in range(len(STAGES) + 1):
        (tmp_path / f"{place}.txt").write_text(f"geometry {place}")
    (tmp_path / "parameters.txt").write_text("")
    return tmp_path


def new(files, place, stage=None, **changes):
    options = {
        "stage": stage or STAGES[place],
        "tool": "tool",
        "tool-version": "1",
        "input": files / f"{place}.txt",
        "output": files / f"{place + 1}.txt",
        "parameters": files / "parameters.txt",
        "coordinates": "right-handed",
        "scale": "é",
        **changes,
    }
    return run("provenance", "new", files / "chain.json", *(x for k, v in options.items() for x in (f"--{k}", v)))


def test_a_chain_is_built_and_certified(files):
    chain = files / "chain.json"
    for place in range(len(STAGES)):
        result = new(files, place)
        assert result.exit_code == 0, result.stderr
        assert result.stdout.endswith("certified\n") == (place == 3)
    result = run("provenance", "verify", chain, "--output", files / "4.txt")
    assert (result.exit_code, result.stdout, result.stderr) == (0, "Certified\n", "")
    result = run("provenance", "verify", chain, "--output", files / "3.txt")
    assert result.exit_code == 1 and "is not the output of the last record" in result.stderr
    records = provenance.read_chain(chain)
    assert records[0].input_sha256 == PipelineProvenanceAPI.fingerprint_hex("geometry 0")
    assert records[0].parameter_sha256 == PipelineProvenanceAPI.fingerprint_hex("")
    assert {path.name for path in files.iterdir()} == {*(f"{k}.txt" for k in range(5)), "parameters.txt", "chain.json"}


@pytest.mark.parametrize(
    ("changes", "text"),
    [
        ({"stage": "Smoothing"}, "record 2: stage Smoothing does not follow KnotPlot"),
        ({"place": 2}, "record 2: input_sha256 is not the output_sha256 of the record before"),
        ({"scale": "e"}, "record 2: scale_convention is not that of the record before"),
        ({"time": "yesterday"}, "record 2 is malformed: timestamp_utc"),
        ({"tool": ""}, "record 2 is incomplete: no tool_name"),
        ({"scale": "\udcff"}, "scale_convention must be a text"),
    ],
)
def test_a_record_that_breaks_the_chain_is_refused(files, changes, text):
    assert new(files, 0).exit_code == 0
    before = (files / "chain.json").read_bytes()
    result = new(files, **{"place": 1, "stage": "Ridgerunner", **changes})
    assert result.exit_code == 1 and text in result.stderr
    assert (files / "chain.json").read_bytes() == before


@pytest.mark.parametrize(
    ("place", "name", "value", "text"),
    [
        (2, "tool_name", "", "Unknown: record 3 is incomplete: no tool_name"),
        (1, "output_sha256", "0", "Candidate: record 2 is malformed: output_sha256"),
        (0, "parent_record_sha256", "x", "Candidate: record 1 is malformed: parent_record_sha256"),
        (0, "parent_record_sha256", "0" * 64, "Candidate: record 1: the first record has no parent"),
        (0, "timestamp_utc", "2024-01-01T00:00:00z", "Candidate: record 1 is malformed: timestamp_utc"),
        (0, "stage", "Ridgerunner", "Candidate: record 1: a chain starts at KnotPlot, not Ridgerunner"),
        (0, "certification", "Certified", "Candidate: record 2: parent_record_sha256 is not the fingerprint"),
        (3, "input_sha256", "0" * 64, "Candidate: record 4: input_sha256 is not"),
        (3, "stage", "Smoothing", "Candidate: record 4: a chain ends at VKMcore or EddyLab, not Smoothing"),
        (3, "stage", "Ridgerunner", "Candidate: record 4: stage Ridgerunner does not follow Smoothing"),
        (3, "coordinate_convention", "x", "Candidate: record 4: coordinate_convention is not"),
        (3, "timestamp_utc", "2024-01-01T00:00:00.5Z", "Certified"),
    ],
)
def test_the_first_rule_that_fails_is_named(files, place, name, value, text):
    for stage in range(len(STAGES)):
        new(files, stage)
    path = files / "chain.json"
    document = json.loads(path.read_text(encoding="utf-8"))
    document["records"][place][name] = value
    path.write_text(json.dumps(document))
    result = run("provenance", "verify", path)
    assert result.stdout.startswith(text) and (result.exit_code == 0) == (text == "Certified")


def test_a_chain_that_cannot_be_written(files):
    (files / "chain.json").mkdir()
    with pytest.raises(OSError, match=r"cannot write .*/chain.json: "):
        provenance.write_chain(files / "chain.json", [])
    assert not list(files.glob(".chain*"))


@pytest.mark.parametrize("name", provenance.FIELDS)
@pytest.mark.parametrize("value", ["\ud800", 1, None])
def test_fields_that_are_no_text(files, name, value):
    assert new(files, 0).exit_code == 0
    path = files / "chain.json"
    document = json.loads(path.read_text(encoding="utf-8"))
    document["records"][0][name] = value
    path.write_text(json.dumps(document))
    result = run("provenance", "verify", path)
    assert result.exit_code == 1 and result.stderr.endswith(f"record 1: {name} must be a text\n")


@pytest.mark.parametrize("text", ["", "[]", "{}", '{"schema": "vkmcore-provenance-1", "records": [{}]}', "\xff"])
def test_files_that_hold_no_chain(tmp_path, text):
    path = tmp_path / "chain.json"
    path.write_bytes(text.encode("latin-1"))
    result = run("provenance", "verify", path)
    assert (result.exit_code, result.stdout) == (1, "") and result.stderr.startswith(str(path))


def test_an_empty_chain(tmp_path):
    path = tmp_path / "chain.json"
    provenance.write_chain(path, [])
    result = run("provenance", "verify", path)
    assert (result.exit_code, result.stdout) == (1, "Unknown: the chain is empty\n")
