"""Chains of custody in files: one record for each tool that a geometry went through.

A chain file is JSON, `{"schema": "vkmcore-provenance-1", "records": [...]}`, each record with the fields of
`ProvenanceRecord` by name, stage and certification by their enumerators' names. Beside the records it may hold
`"files"`, one entry a record: the names of the files whose hashes it holds, seen from the chain's folder. What a chain
amounts to is the library's verdict (`PipelineProvenanceAPI.evaluate_chain`); here the rule that fails gets its name.

A chain binds each record to the one before. It proves nothing about its last record: whoever changes that record (its
tool, version or hashes) leaves a chain that is as good. What holds the last record is the file that it names, hashed
anew, or a seal: a digest of the whole chain file, kept where the chain is not.
"""

from __future__ import annotations

import hashlib
import itertools
import json
import re
from collections.abc import Sequence
from dataclasses import asdict, dataclass
from datetime import datetime, timezone
from pathlib import Path

from vkmcore import PipelineCertificationStatus, PipelineProvenanceAPI, PipelineStage, ProvenanceRecord
from vkmcore.files import write_text

SCHEMA = "vkmcore-provenance-1"
TEXT_FIELDS = (
    "tool_name",
    "tool_version",
    "input_sha256",
    "output_sha256",
    "parameter_sha256",
    "parent_record_sha256",
    "coordinate_convention",
    "scale_convention",
    "timestamp_utc",
)
FIELDS = ("stage", "certification", *TEXT_FIELDS)


def file_sha256(path: Path) -> str:
    """SHA-256 of a file's bytes, read in pieces. OSError if it cannot be read."""
    digest = hashlib.sha256()
    with path.open("rb") as file:
        while piece := file.read(1 << 20):
            digest.update(piece)
    return digest.hexdigest()


@dataclass(frozen=True)
class RecordFiles:
    """The files of a record, as names seen from the chain's folder; None where the chain has no name."""

    input: str | None = None
    output: str | None = None
    parameter: str | None = None


def changed_files(
    folder: Path, records: Sequence[ProvenanceRecord], files: Sequence[RecordFiles]
) -> tuple[list[str], list[str]]:
    """The files that a chain names in `folder`, hashed anew: what is wrong with those that differ, and the names of
    those that are not there."""
    wrong: list[str] = []
    absent: list[str] = []
    for place, (record, named) in enumerate(zip(records, files), 1):
        for role in ("input", "output", "parameter"):
            name = getattr(named, role)
            if name is None:
                continue
            path = folder / name
            if not path.is_file():
                absent.append(name)
            elif file_sha256(path) != getattr(record, f"{role}_sha256").lower():
                wrong.append(f"record {place}: {name} is not the {role} file that was recorded")
    return wrong, absent


def seal(chain: Path) -> str:
    """A detached digest of a chain file, one line in the form of sha256sum."""
    return f"{file_sha256(chain)}  {chain.name}\n"


def is_sealed(chain: Path, seal_file: Path) -> bool:
    """Whether the seal is that of the chain file as it is. ValueError if it is no seal."""
    match = re.fullmatch(r"([0-9a-fA-F]{64})(?:[ \t][^\n]*)?\n?", seal_file.read_bytes().decode("utf-8", "replace"))
    if match is None:
        raise ValueError(f"{seal_file}: not a seal: expected a digest of 64 hexadecimal digits")
    return match[1].lower() == file_sha256(chain)


def utc_now() -> str:
    """Now, to the second, in the form of a record's time stamp."""
    return datetime.now(timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ")


def new_record(
    parent: ProvenanceRecord | None,
    stage: PipelineStage,
    tool_name: str,
    tool_version: str,
    input_file: Path,
    output_file: Path,
    parameter_file: Path,
    coordinate_convention: str,
    scale_convention: str,
    certification: PipelineCertificationStatus = PipelineCertificationStatus.Unknown,
    timestamp_utc: str | None = None,
) -> ProvenanceRecord:
    """A record of files on disk, bound to the record before it (None for the first of a chain).

    OSError if a file cannot be read, ValueError for a text that UTF-8 cannot hold.
    """
    record = ProvenanceRecord()
    record.stage = stage
    record.certification = certification
    record.tool_name = _text(tool_name, "tool_name")
    record.tool_version = _text(tool_version, "tool_version")
    record.input_sha256 = file_sha256(input_file)
    record.output_sha256 = file_sha256(output_file)
    record.parameter_sha256 = file_sha256(parameter_file)
    record.parent_record_sha256 = "" if parent is None else PipelineProvenanceAPI.record_fingerprint(parent)
    record.coordinate_convention = _text(coordinate_convention, "coordinate_convention")
    record.scale_convention = _text(scale_convention, "scale_convention")
    record.timestamp_utc = utc_now() if timestamp_utc is None else _text(timestamp_utc, "timestamp_utc")
    return record


def _text(value: object, name: str) -> str:
    """The value, if it is a text that UTF-8 can hold: lone surrogates (from undecodable bytes) have no fingerprint."""
    if not isinstance(value, str) or any("\ud800" <= c <= "\udfff" for c in value):
        raise ValueError(f"{name} must be a text")
    return value


def read_chain(path: Path) -> list[ProvenanceRecord]:
    """The records of a chain file. OSError if it cannot be read, ValueError if it is no chain."""
    return read_chain_and_files(path)[0]


def read_chain_and_files(path: Path) -> tuple[list[ProvenanceRecord], list[RecordFiles]]:
    """The same with the names of their files, as many as records. An older chain has none."""
    try:
        document = json.loads(path.read_text(encoding="utf-8"))
    except (ValueError, RecursionError) as error:
        raise ValueError(f"{path}: not a chain of records: {error}") from error
    if not isinstance(document, dict) or document.get("schema") != SCHEMA:
        raise ValueError(f'{path}: not a chain of records: the member "schema" must be "{SCHEMA}"')
    entries = document.get("records")
    if not isinstance(entries, list):
        raise ValueError(f'{path}: not a chain of records: the member "records" must be a list')
    records = [_record(entry, f"{path}: record {place}") for place, entry in enumerate(entries, 1)]
    names = document.get("files", [{}] * len(records))
    if not isinstance(names, list) or len(names) != len(records):
        raise ValueError(f'{path}: not a chain of records: the member "files" must be a list, one entry a record')
    return records, [_files(entry, f"{path}: files of record {place}") for place, entry in enumerate(names, 1)]


def _files(entry: object, where: str) -> RecordFiles:
    roles = ("input", "output", "parameter")
    if not isinstance(entry, dict) or not set(entry) <= set(roles):
        raise ValueError(f"{where}: its members must be among {', '.join(roles)}")
    names = {role: _text(name, f"{where}: {role}") for role, name in entry.items()}
    if any(not name or "\0" in name for name in names.values()):
        raise ValueError(f"{where}: a name must not be empty")
    return RecordFiles(**names)


def _record(entry: object, where: str) -> ProvenanceRecord:
    if not isinstance(entry, dict) or set(entry) != set(FIELDS):
        raise ValueError(f"{where}: its members must be {', '.join(FIELDS)}")
    texts = {name: _text(entry[name], f"{where}: {name}") for name in FIELDS}
    record = ProvenanceRecord()
    for name, enumeration in (("stage", PipelineStage), ("certification", PipelineCertificationStatus)):
        if texts[name] not in enumeration.__members__:
            raise ValueError(f"{where}: {name} must be one of {', '.join(enumeration.__members__)}")
        setattr(record, name, enumeration.__members__[texts[name]])
    for name in TEXT_FIELDS:
        setattr(record, name, texts[name])
    return record


def write_chain(path: Path, records: Sequence[ProvenanceRecord], files: Sequence[RecordFiles] = ()) -> None:
    """Write a chain file, replacing the old one as a whole or not at all. OSError if it cannot be written."""
    entries = [
        {
            "stage": PipelineProvenanceAPI.stage_name(record.stage),
            "certification": PipelineProvenanceAPI.certification_name(record.certification),
            **{name: getattr(record, name) for name in TEXT_FIELDS},
        }
        for record in records
    ]
    document: dict[str, object] = {"schema": SCHEMA, "records": entries}
    if any(named != RecordFiles() for named in files):
        document["files"] = [
            {role: name for role, name in asdict(named).items() if name is not None} for named in files
        ]
    try:
        write_text(path, json.dumps(document, indent=2, ensure_ascii=False) + "\n")
    except OSError as error:
        raise OSError(f"cannot write {path}: {error.strerror}") from error


def first_fault(records: Sequence[ProvenanceRecord]) -> str | None:
    """The first rule of certification that the chain fails, and where; None for a certified chain.

    The order is that of the library's evaluation: completeness of all records, their form, the first record, the links
    one by one, the last record.
    """
    fault = first_break(records)
    if fault is None and records[-1].stage not in (PipelineStage.VKMcore, PipelineStage.EddyLab):
        return f"record {len(records)}: a chain ends at VKMcore or EddyLab, not {_stage(records[-1])}"
    return fault


def first_break(records: Sequence[ProvenanceRecord]) -> str | None:
    """The first fault that no further record can mend; None for a chain that may yet be certified."""
    if not records:
        return "the chain is empty"
    numbered = list(enumerate(records, 1))
    for place, record in numbered:
        if not PipelineProvenanceAPI.record_complete(record):
            empty = [name for name in TEXT_FIELDS if name != "parent_record_sha256" and not getattr(record, name)]
            return f"record {place} is incomplete: no {', '.join(empty)}"
    for place, record in numbered:
        if name := _malformed_field(record):
            return f"record {place} is malformed: {name}"
    first = records[0]
    if first.stage != PipelineStage.KnotPlot:
        return f"record 1: a chain starts at KnotPlot, not {_stage(first)}"
    if first.parent_record_sha256:
        return "record 1: the first record has no parent"
    for (_, before), (place, record) in itertools.pairwise(numbered):
        if fault := _broken_link(before, record):
            return f"record {place}: {fault}"
    return None


def _malformed_field(record: ProvenanceRecord) -> str | None:
    digest = re.compile("[0-9a-fA-F]{64}")
    for name in ("input_sha256", "output_sha256", "parameter_sha256"):
        if not digest.fullmatch(getattr(record, name)):
            return name
    if record.parent_record_sha256 and not digest.fullmatch(record.parent_record_sha256):
        return "parent_record_sha256"
    stamp = "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}[0-9.]*Z"
    return None if re.fullmatch(stamp, record.timestamp_utc) else "timestamp_utc"


def _broken_link(before: ProvenanceRecord, record: ProvenanceRecord) -> str | None:
    if record.parent_record_sha256 != PipelineProvenanceAPI.record_fingerprint(before):
        return "parent_record_sha256 is not the fingerprint of the record before"
    if record.input_sha256 != before.output_sha256:
        return "input_sha256 is not the output_sha256 of the record before"
    if int(record.stage) - int(before.stage) not in (0, 1):
        return f"stage {_stage(record)} does not follow {_stage(before)}"
    for name in ("coordinate_convention", "scale_convention"):
        if getattr(record, name) != getattr(before, name):
            return f"{name} is not that of the record before"
    return None


def _stage(record: ProvenanceRecord) -> str:
    return PipelineProvenanceAPI.stage_name(record.stage)
