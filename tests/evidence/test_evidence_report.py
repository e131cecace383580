"""Kinds of checks and the report's document."""

import json
import math
import os

import _native
import pytest
from _native import CheckKind, CheckResult, EvidenceReportMeta

API = _native.EvidenceReportAPI

KINDS = {
    0: ("AlgebraicIdentity", "ALGEBRAIC_IDENTITY"),
    1: ("CalibratedClosure", "CALIBRATED_CLOSURE"),
    2: ("IndependentPrediction", "INDEPENDENT_PREDICTION"),
    3: ("NumericalConvergence", "NUMERICAL_CONVERGENCE"),
    4: ("ConditionalBridge", "CONDITIONAL_BRIDGE"),
    5: ("OpenResearchGate", "OPEN_RESEARCH_GATE"),
    6: ("SyntheticDiagnostic", "SYNTHETIC_DIAGNOSTIC"),
}


def record(cls, **fields):
    result = cls()
    for name, value in fields.items():
        setattr(result, name, value)
    return result


def test_kinds_and_their_texts():
    assert {int(kind): name for name, kind in CheckKind.__members__.items()} == {k: n for k, (n, _) in KINDS.items()}
    for value, (name, text) in KINDS.items():
        assert _native.check_kind_export_string(CheckKind(value)) == text
        assert _native.check_kind_from_export_string(text) == CheckKind(value)
        assert _native.check_kind_from_export_string(name) == CheckKind(value)
    for value in (9, -1, 7):
        assert _native.check_kind_export_string(CheckKind(value)) == "OPEN_RESEARCH_GATE"
    for text in ("open_research_gate", "calibrated_closure", "UNKNOWN", "", "CALIBRATED_CLOSURE ", "calibratedClosure"):
        assert _native.check_kind_from_export_string(text) == CheckKind.OpenResearchGate
    with pytest.raises(TypeError):
        _native.check_kind_export_string(kind=CheckKind(0))


def test_records_make_no_claim_by_default():
    check = CheckResult()
    assert (check.name, check.passed, check.kind, check.residual, check.tolerance) == (
        "", False, CheckKind.OpenResearchGate, 0.0, 0.0,
    )  # fmt: skip
    assert check.supports_empirical_claim is False and check.message == ""
    for name in ("vkmcore_version", "canon_version", "git_commit", "numeric_profile", "compiler", "platform"):
        assert getattr(EvidenceReportMeta(), name) == ""


def test_the_document_character_for_character():
    meta = record(EvidenceReportMeta, canon_version="x", git_commit="abc", compiler='"C"\\', platform="é\x1f")
    checks = [
        record(
            CheckResult, name="é", passed=True, kind=CheckKind(0), residual=0.1, tolerance=1e-12, message="a\nb\t\x01"
        ),
        record(CheckResult, name="n", residual=math.inf, tolerance=math.nan, supports_empirical_claim=True),
    ]
    expected = """{
  "schema_version": "1.0",
  "vkmcore_version": "0.8.36",
  "canon_version": "x",
  "git_commit": "abc",
  "numeric_profile": "",
  "compiler": "\\"C\\"\\\\",
  "platform": "é\\u001f",
  "checks": [
    {
      "kind": "ALGEBRAIC_IDENTITY",
      "message": "a\\nb\\t\\u0001",
      "name": "é",
      "passed": true,
      "residual": 0.10000000000000001,
      "supports_empirical_claim": false,
      "tolerance": 9.9999999999999998e-13
    },
    {
      "kind": "OPEN_RESEARCH_GATE",
      "message": "",
      "name": "n",
      "passed": false,
      "residual": null,
      "supports_empirical_claim": true,
      "tolerance": null
    }
  ]
}
"""
    assert API.build_report_json(meta=meta, checks=checks) == expected
    empty = API.build_report_json(EvidenceReportMeta(), [])
    assert empty.endswith('  "platform": "",\n  "checks": [\n  ]\n}\n') and empty.count('"0.8.36"') == 2


@pytest.mark.parametrize("value", [0.0, -0.0, 2.0, 0.1, 1e-12, 1e17, 123456.75, -1e300, 5e-324, 1.7976931348623157e308])
def test_numbers_are_those_of_printf(value):
    text = API.build_report_json(EvidenceReportMeta(), [record(CheckResult, residual=value)])
    assert f'"residual": {value:.17g},\n' in text
    assert json.loads(text)["checks"][0]["residual"] == value


def test_every_text_survives_a_parser():
    text = "".join(map(chr, range(1, 0x180))) + "\0 \u2028 🙂"
    parsed = json.loads(API.build_report_json(record(EvidenceReportMeta, git_commit=text), []))
    assert parsed["git_commit"] == text


def test_files(tmp_path):
    meta, checks = EvidenceReportMeta(), [record(CheckResult, message="line\nline")]
    path = tmp_path / "é.json"
    path.write_text("x" * 10_000)
    assert API.write_evidence_report(path=str(path), meta=meta, checks=checks) is True
    assert path.read_bytes() == API.build_report_json(meta, checks).encode()
    for unwritable in ("", str(tmp_path), str(tmp_path / "missing" / "report.json"), str(tmp_path / "a\0b")):
        assert API.write_evidence_report(unwritable, meta, checks) is False
    assert os.listdir(tmp_path) == [path.name]


@pytest.mark.parametrize("size", [600, 100_000])
def test_a_full_disk_leaves_no_partial_file(tmp_path, size):
    resource = pytest.importorskip("resource")
    path = tmp_path / "report.json"
    limits = resource.getrlimit(resource.RLIMIT_FSIZE)
    resource.setrlimit(resource.RLIMIT_FSIZE, (500, limits[1]))
    try:
        written = API.write_evidence_report(str(path), record(EvidenceReportMeta, git_commit="x" * size), [])
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, limits)
    assert (written, os.listdir(tmp_path)) == (False, [])
