"""Two Fourier curves beside each other."""

from __future__ import annotations

import tempfile
from pathlib import Path

from vkmcore import FourierBlock, compare_fseries_files
from vkmcore.curves.reader import CurveSource, find_curve


def compare(a: str, b: str, samples: int, skip: int) -> dict[str, float]:
    """compare_fseries_files of two files or keys of the catalogue: measures, differences b - a, and the root mean
    square distance of samples with the same index.

    Raises:
        RuntimeError: there is no such curve, or it is a polygon.
    """
    with tempfile.TemporaryDirectory() as folder:
        path_a = _file_of(find_curve(a), Path(folder) / "a.fseries")
        path_b = _file_of(find_curve(b), Path(folder) / "b.fseries")
        return compare_fseries_files(path_a, path_b, samples, skip)


def _file_of(source: CurveSource, path: Path) -> str:
    """The source's own file, or one with its series written so that reading gives the same numbers."""
    if source.kind == "fseries":
        return source.name
    if source.block is None:
        raise RuntimeError(f"{source.name}: a polygon; a comparison needs Fourier series")
    path.write_text(_rows(source.block), encoding="utf-8")
    return str(path)


def _rows(block: FourierBlock) -> str:
    columns = (block.a_x, block.b_x, block.a_y, block.b_y, block.a_z, block.b_z)
    return "".join(" ".join(map(repr, row)) + "\n" for row in zip(*columns, strict=True))
