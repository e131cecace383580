"""SHA-256, fingerprints and chains of custody."""

import hashlib
import itertools
import struct

import _native
import pytest
from _native import PipelineCertificationStatus as Status
from _native import PipelineStage as Stage
from _native import ProvenanceRecord

API = _native.PipelineProvenanceAPI
FIELDS = (
    "tool_name tool_version input_sha256 output_sha256 parameter_sha256 parent_record_sha256 "
    "coordinate_convention scale_convention timestamp_utc"
).split()


def sha(text):
    return hashlib.sha256(text.encode()).hexdigest()


@pytest.mark.parametrize(
    ("message", "digest"),
    [  # NIST's examples
        ("", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"),
        ("abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"),
        (
            "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1",
        ),
        ("a" * 1_000_000, "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"),
    ],
)
def test_published_vectors(message, digest):
    assert API.fingerprint_hex(message) == digest


def test_all_lengths_around_the_blocks():
    text = "".join(chr(33 + 7 * i % 90) for i in range(300))
    for length in range(300):
        assert API.fingerprint_hex(text[:length]) == sha(text[:length])
    assert API.fingerprint_hex("é\0🙂") == sha("é\0🙂")


def test_points_are_hashed_as_stored():
    points = [[0.1, -2.0, 3e300], [0.0, 5e-324, 1.0], [7.0, 8.0, float("inf")]]
    digest = hashlib.sha256(struct.pack("<9d", *itertools.chain(*points))).hexdigest()
    for function in (
        _native.GeometryCertificateAPI.sha256_hex_of_points,
        _native.PolygonalSmoothCertificateAPI.fingerprint_points,
    ):
        assert function(pts=points) == digest
        assert function([]) == sha("")
        assert function([[0.0, 0.0, 0.0]]) != function([[-0.0, 0.0, 0.0]])


def make(stage, parent=None, **changes):
    record = ProvenanceRecord()
    record.stage = stage
    for name in FIELDS:
        setattr(record, name, name)
    record.input_sha256 = parent.output_sha256 if parent else sha("input")
    record.output_sha256, record.parameter_sha256 = sha(f"output of {stage}"), sha("parameters")
    record.parent_record_sha256 = API.record_fingerprint(parent) if parent else ""
    record.timestamp_utc = "2024-01-01T00:00:00Z"
    for name, value in changes.items():
        setattr(record, name, value)
    return record


def chain(*stages, at=None, **changes):
    """Linked records, the one numbered `at` changed and all later ones linked to the changed one."""
    records = []
    for place, stage in enumerate(stages):
        records.append(make(stage, records[-1] if records else None, **(changes if place == at else {})))
    return records


FULL = (Stage.KnotPlot, Stage.Ridgerunner, Stage.Smoothing, Stage.VKMcore)


def test_names():
    for names, cls, name_of in (
        (["KnotPlot", "Ridgerunner", "Smoothing", "VKMcore", "EddyLab"], Stage, API.stage_name),
        (["Unknown", "Candidate", "Certified"], Status, API.certification_name),
    ):
        assert [name_of(cls(value)) for value in range(-1, len(names) + 1)] == ["Unknown", *names, "Unknown"]
        assert list(cls.__members__) == names
    with pytest.raises(TypeError):
        API.stage_name(stage=Stage.KnotPlot)


def test_fingerprint_takes_all_fields():
    record = make(Stage.Smoothing, certification=Status.Certified)
    parts = ["Smoothing", "Certified", *(getattr(record, name) for name in FIELDS)]
    assert API.record_fingerprint(record) == sha("|".join(parts))
    assert API.record_fingerprint(ProvenanceRecord()) == sha("KnotPlot|Unknown" + 9 * "|")


def test_whole_chains():
    assert API.evaluate_chain(chain(*FULL)) == Status.Certified
    assert API.evaluate_chain(chain(*FULL, Stage.EddyLab, Stage.EddyLab)) == Status.Certified
    assert API.evaluate_chain(chain(FULL[0], *FULL)) == Status.Certified
    # what the records claim of themselves is not consulted
    assert API.evaluate_chain(chain(*FULL, at=1, certification=Status.Unknown)) == Status.Certified
    assert API.evaluate_chain([]) == Status.Unknown


@pytest.mark.parametrize(
    "stages",
    [
        FULL[:1],
        FULL[:3],
        FULL[1:],
        FULL[:2] + FULL[3:],
        (*FULL[:2], Stage.Ridgerunner, Stage.KnotPlot, *FULL[1:]),
        (*FULL, Stage(5)),
        (Stage.VKMcore,),
    ],
)
def test_broken_orders_of_stages(stages):
    assert API.evaluate_chain(chain(*stages)) == Status.Candidate


@pytest.mark.parametrize("name", [name for name in FIELDS if name != "parent_record_sha256"])
def test_a_record_without_a_field_leaves_the_chain_unknown(name):
    records = chain(*FULL, at=3, **{name: ""})
    records[0].parameter_sha256 = "malformed"  # incompleteness goes before form
    assert API.record_complete(records[2]) and not API.record_complete(records[3])
    assert API.evaluate_chain(records) == Status.Unknown


@pytest.mark.parametrize(
    ("at", "changes"),
    [
        (0, {"parent_record_sha256": sha("parent")}),
        (1, {"parent_record_sha256": ""}),
        (2, {"parent_record_sha256": "0" * 64}),
        (2, {"input_sha256": sha("something else")}),
        (2, {"coordinate_convention": "other"}),
        (3, {"scale_convention": "other"}),
        (3, {"parameter_sha256": "0" * 63}),
        (3, {"output_sha256": "0" * 63 + "g"}),
        (3, {"output_sha256": "0" * 65}),
    ],
)
def test_broken_records(at, changes):
    assert API.evaluate_chain(chain(*FULL, at=at, **changes)) == Status.Candidate


def test_upper_case_is_well_formed_but_is_no_fingerprint():
    assert API.evaluate_chain(chain(*FULL, at=1, parameter_sha256=sha("parameters").upper())) == Status.Certified
    records = chain(*FULL)
    records[3].parent_record_sha256 = records[3].parent_record_sha256.upper()
    assert API.evaluate_chain(records) == Status.Candidate


@pytest.mark.parametrize(
    ("stamp", "fits"),
    [
        ("2024-01-01T00:00:00Z", True),
        ("2024-01-01T00:00:00.123Z", True),
        ("9999-99-99T99:99:99..1.Z", True),
        ("2024-01-01 00:00:00Z", False),
        ("2024-01-01T00:00:00", False),
        ("2024-01-01T00:00:0Z", False),
        ("2024-01-01T00:00.00Z", False),
        ("2024-01-01T00:00:00+00:00", False),
        ("2024-01-01T00:00:00.1aZ", False),
        ("2024/01/01T00:00:00Z", False),
    ],
)
def test_time_stamps(stamp, fits):
    expected = Status.Certified if fits else Status.Candidate
    assert API.evaluate_chain(chain(*FULL, at=0, timestamp_utc=stamp)) == expected
