"""The commands `vkmcore provenance new`, `verify` and `seal`."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import click

from vkmcore.commands.arguments import EXISTING_FILE, Failure, record_options
from vkmcore.commands.output import print_csv, print_json

STAGES = ("KnotPlot", "Ridgerunner", "Smoothing", "VKMcore", "EddyLab")


@click.group()
def provenance() -> None:
    """Chains of custody: where a geometry comes from, tool by tool."""


@provenance.command("new")
@click.argument("chain", type=click.Path(dir_okay=False, path_type=Path), metavar="CHAIN.json")
@click.option("--stage", type=click.Choice(STAGES), required=True, help="Stage of the pipeline.")
@click.option("--tool", "tool_name", required=True, help="Name of the tool.")
@click.option("--tool-version", required=True, help="Its version.")
@click.option("--input", "input_file", type=EXISTING_FILE, required=True, help="File that the tool read.")
@click.option("--output", "output_file", type=EXISTING_FILE, required=True, help="File that it wrote.")
@click.option("--parameters", "parameter_file", type=EXISTING_FILE, required=True, help="File with its parameters.")
@click.option("--coordinates", "coordinate_convention", required=True, help="Convention of the coordinates, any text.")
@click.option("--scale", "scale_convention", required=True, help="Convention of the scale, any text.")
@click.option("--certification", type=click.Choice(("Unknown", "Candidate", "Certified")), default="Unknown")
@click.option("--time", "timestamp_utc", help="UTC, as 2024-01-01T00:00:00Z; now by default.")
def provenance_new(chain: Path, stage: str, certification: str, **fields: Any) -> None:
    """Add a record of files on disk to the chain in CHAIN.json, or start one.

    A record that breaks the chain is refused.
    """
    from vkmcore import PipelineCertificationStatus, PipelineStage
    from vkmcore.evidence.provenance import (
        RecordFiles,
        first_break,
        first_fault,
        new_record,
        read_chain_and_files,
        write_chain,
    )

    records, files = read_chain_and_files(chain) if chain.exists() else ([], [])
    record = new_record(
        records[-1] if records else None,
        PipelineStage.__members__[stage],
        certification=PipelineCertificationStatus.__members__[certification],
        **fields,
    )
    records.append(record)
    if fault := first_break(records):
        raise Failure(f"vkmcore: {fault}; {chain} is left as it was")
    files.append(RecordFiles(*(_seen_from(chain, fields[f"{role}_file"]) for role in ("input", "output", "parameter"))))
    write_chain(chain, records, files)
    click.echo(f"{chain}: record {len(records)}, {'certified' if first_fault(records) is None else 'not yet complete'}")


def _seen_from(chain: Path, file: Path) -> str:
    return os.path.relpath(file.resolve(), chain.resolve().parent)


@provenance.command("seal")
@click.argument("chain", type=EXISTING_FILE, metavar="CHAIN.json")
@click.option("--output", type=click.Path(dir_okay=False, path_type=Path), help="CHAIN.json.seal by default.")
def provenance_seal(chain: Path, output: Path | None) -> None:
    """Write a detached digest of the chain: what verify --seal holds it against.

    Keep it where the chain is not. Without a seal a chain cannot show that its last record was changed.
    """
    from vkmcore.evidence.provenance import read_chain, seal
    from vkmcore.files import write_text

    read_chain(chain)
    target = output or chain.with_name(chain.name + ".seal")
    write_text(target, seal(chain))
    click.echo(f"{target}: seal of {chain}")


@provenance.command("verify")
@click.argument("chain", type=EXISTING_FILE, metavar="CHAIN.json")
@click.option(
    "--output", "output_file", type=EXISTING_FILE, help="Also hold this file against the last record's output."
)
@click.option("--seal", "seal_file", type=EXISTING_FILE, help="Also hold the chain against this seal of it.")
@record_options("A JSON object", "with the verdict")
def provenance_verify(
    chain: Path, output_file: Path | None, seal_file: Path | None, as_json: bool, as_csv: bool
) -> None:
    """Print the verdict on the chain in CHAIN.json, and the first rule that it fails.

    The files that the chain names are hashed anew where they are present. Exit code 1 unless the chain is certified,
    its files are as recorded, and its seal, where one is given, is its own.
    """
    from vkmcore import PipelineProvenanceAPI
    from vkmcore.evidence.provenance import (
        changed_files,
        file_sha256,
        first_fault,
        is_sealed,
        read_chain_and_files,
    )

    records, files = read_chain_and_files(chain)
    verdict = PipelineProvenanceAPI.evaluate_chain(records)
    fault = first_fault(records)
    name = PipelineProvenanceAPI.certification_name(verdict)
    wrong, absent = changed_files(chain.parent, records, files)
    facts = {"chain": str(chain), "records": len(records), "verdict": name, "fault": fault}
    if as_json:
        print_json({**facts, "changed": wrong, "absent": absent})
    elif as_csv:
        print_csv([{**facts, "changed": "; ".join(wrong), "absent": "; ".join(absent)}])
    else:
        click.echo(f"{name}{'' if fault is None else f': {fault}'}")
    if absent:
        click.echo(f"not present, and not hashed: {', '.join(absent)}", err=True)
    if wrong:
        raise Failure("vkmcore: " + "; ".join(wrong))
    if seal_file is not None and not is_sealed(chain, seal_file):
        raise Failure(f"vkmcore: {chain} is not the chain that {seal_file} seals")
    if output_file is not None and (not records or file_sha256(output_file) != records[-1].output_sha256.lower()):
        raise Failure(f"vkmcore: {output_file} is not the output of the last record")
    if fault is not None:
        raise click.exceptions.Exit(1)
