"""The command `vkmcore report`."""

from __future__ import annotations

import os
from pathlib import Path
from typing import TYPE_CHECKING, Any

import click

from vkmcore.commands.arguments import Failure, record_options
from vkmcore.commands.output import plain_table, print_data, print_table

if TYPE_CHECKING:
    from vkmcore import CheckResult


@click.command()
@click.argument("out", type=click.Path(path_type=Path), metavar="OUT.json")
@record_options("A JSON list with a record a check", "a check")
def report(out: Path, as_json: bool, as_csv: bool) -> None:
    """Check this installation and write the evidence report to OUT.json.

    Exit code 1 if a check fails.
    """
    from vkmcore import EvidenceReportAPI
    from vkmcore.evidence.report import check_record, report_meta, self_checks

    checks = self_checks()
    path: Any = os.fsencode(out)  # the bytes of the name, which need not be valid text
    if not EvidenceReportAPI.write_evidence_report(path, report_meta(), checks):
        raise Failure(f"vkmcore: cannot write {out}")
    records = [check_record(check) for check in checks]
    if not print_data(as_json, as_csv, records):
        show(checks)
    if failed := sum(not check.passed for check in checks):
        raise Failure(f"vkmcore: {failed} of {len(checks)} checks failed; see {out}")


def show(checks: list[CheckResult]) -> None:
    table = plain_table(("check", "kind", "residual", "tolerance", ""), ("check", "kind", ""))
    for check in checks:
        passed = "passed" if check.passed else "FAILED"
        table.add_row(check.name, check.kind.name, f"{check.residual:.3e}", f"{check.tolerance:.3e}", passed)
    print_table(table)
