"""Two Fourier curves beside each other."""

from __future__ import annotations

import tempfile
from pathlib import Path

from vkmcore import FourierBlock, compare_fseries_files
from vkmcore.curves.neighbours import neighbours
from vkmcore.curves.reader import read_curve
from vkmcore.errors import CurveError
from vkmcore.results import CurveComparison


def compare(a: str, b: str, samples: int, skip: int | None = None) -> tuple[CurveComparison, int]:
    """compare_fseries_files of two files or keys of the catalogue: measures, differences b - a, and the root mean
    square distance of samples with the same index. Beside it how many samples to either side counted as neighbours:
    `skip`, or by the spacing the more of what the two curves ask for.

    Raises:
        CurveError: there is no such curve, or it is a polygon.
    """
    with tempfile.TemporaryDirectory() as folder:
        paths = [Path(folder) / name for name in ("a.fseries", "b.fseries")]
        found = 1
        for name, path in zip((a, b), paths, strict=True):
            curve = read_curve(name)
            _write(curve.block, name, path)
            found = max(found, neighbours(curve.sampled(samples).tolist())) if skip is None else skip
        return compare_fseries_files(str(paths[0]), str(paths[1]), samples, found), found


def _write(block: FourierBlock | None, name: str, path: Path) -> None:
    """A series as a text from which reading gives the same numbers."""
    if block is None:
        raise CurveError(f"{name}: a polygon; a comparison needs Fourier series")
    columns = (block.a_x, block.b_x, block.a_y, block.b_y, block.a_z, block.b_z)
    rows = (" ".join(map(repr, row)) + "\n" for row in zip(*columns, strict=True))
    path.write_text("".join(rows), encoding="utf-8")
