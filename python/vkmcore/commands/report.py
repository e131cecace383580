"""The command `vkmcore report`."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import click

from vkmcore.commands.arguments import Failure
from vkmcore.commands.output import plain_table, print_table


@click.command()
@click.argument("out", type=click.Path(path_type=Path), metavar="OUT.json")
def report(out: Path) -> None:
    """Check this installation and write the evidence report to OUT.json.

    Exit code 1 if a check fails.
    """
    from vkmcore import EvidenceReportAPI
    from vkmcore.evidence.report import report_meta, self_checks

    checks = self_checks()
    path: Any = os.fsencode(out)  # the bytes of the name, which need not be valid text
    if not EvidenceReportAPI.write_evidence_report(path, report_meta(), checks):
        raise Failure(f"vkmcore: cannot write {out}")
    table = plain_table(("check", "kind", "residual", "tolerance", ""), ("check", "kind", ""))
    for check in checks:
        passed = "passed" if check.passed else "FAILED"
        table.add_row(check.name, check.kind.name, f"{check.residual:.3e}", f"{check.tolerance:.3e}", passed)
    print_table(table)
    if failed := sum(not check.passed for check in checks):
        raise Failure(f"vkmcore: {failed} of {len(checks)} checks failed; see {out}")
