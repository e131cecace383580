"""The one reader of curves: what every command and function makes of a name that a user gives it.

A name is, in this order, `-` for standard input; a file; a key of the Fourier table (3_1); an id of the ideal table
(3:1:1, L2a1, K11a1); a knot of twelve crossings (12a1), which is a polygon; a key on disk, found as
`VortexKnotSystem.initialize_knot_from_name` finds it; and what `ALIASES` make of it. A file's content tells its format,
not its name:

- Fourier rows of six numbers, as in `.fseries` texts: the block with the most harmonics;
- ideal text, `<AB>`, `<HT>` or `<TL>` blocks: `FILE#ID` chooses where there are several;
- vertices as text or CSV (`curves.text`), VECT (`curves.vect`), JSON (`curves.records`), `.npy` and `.npz`, `.vtp`, and
  the lines of `.obj`.
"""

from __future__ import annotations

import os
import re
import sys
from collections.abc import Callable
from pathlib import Path
from typing import TYPE_CHECKING

from vkmcore import (
    FourierBlock,
    IdealABBlock,
    index_of_largest_block,
    parse_fseries_from_string,
    parse_ideal_halvard_from_string,
)
from vkmcore.curves.catalogue import fourier_block, ideal_text, knot_file, large_key, polygon_text
from vkmcore.curves.closed_curve import ClosedCurve
from vkmcore.curves.records import points_from_array, points_from_json, points_from_npy, points_from_npz
from vkmcore.curves.text import points_from_text
from vkmcore.curves.vect import is_vect, points_from_vect
from vkmcore.errors import CurveError

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import ArrayLike, NDArray

    Points = NDArray[np.float64]

# Further names of knots: each function turns a name into a key or an id of the catalogue, or None.
ALIASES: list[Callable[[str], str | None]] = []


def read_curve(source: str | os.PathLike[str] | ArrayLike) -> ClosedCurve:
    """The one closed curve of a name or of an array (N, 3).

    Raises:
        CurveError: there is no such curve, it cannot be read, or it is a link.
        OSError: a file that is there cannot be read.
    """
    curves = read_curves(source)
    if len(curves) != 1:
        raise CurveError(f"{curves[0].name}: a link of {len(curves)} components; one closed curve is needed")
    return curves[0]


def read_curves(source: str | os.PathLike[str] | ArrayLike) -> list[ClosedCurve]:
    """All components of a name, of an array (N, 3), or of a list of such arrays.

    A vertex that repeats the first one at the end of a component is dropped. Raises as `read_curve` does.
    """
    if not isinstance(source, str | os.PathLike):
        return _polygons("points", "points", points_from_array(source, "points"))
    name = os.fspath(source)
    if name == "-":
        if sys.stdin is None:
            raise CurveError("-: there is no standard input")
        return _from_bytes(name, "standard input", sys.stdin.buffer.read())
    if is_file(name):
        return _from_file(name, Path(name))
    path, _, chosen = name.rpartition("#")
    if path and is_file(path):
        return _from_file(name, Path(path), chosen)
    curves = _from_catalogue(name)
    for alias in ALIASES:
        key = None if curves else alias(name)
        curves = _from_catalogue(key) if key else curves
    if not curves:
        raise CurveError(f"{name}: neither a file nor a key of the catalogue")
    return curves


def is_file(name: str | os.PathLike[str]) -> bool:
    """Whether there is something to read under this name: a file, or a pipe as of `<(...)` in a shell."""
    path = Path(name)
    return path.is_file() or path.is_fifo()


def _from_catalogue(name: str) -> list[ClosedCurve]:
    block = fourier_block(name)
    if block is not None:
        return [ClosedCurve(name, name, "catalogue", block)]
    key = large_key(name) or name
    blocks = parse_ideal_halvard_from_string(ideal_text(key))
    if blocks:
        return _of_ideal(name, name, blocks[0])
    if text := polygon_text(key):
        (points,) = points_from_text(text, name)
        return [ClosedCurve(name, name, "ideal", vertices=points)]
    path = knot_file(name)
    return [] if path is None else _from_file(name, path)


def _from_file(name: str, path: Path, chosen: str = "") -> list[ClosedCurve]:
    return _from_bytes(name, path.stem, path.read_bytes(), chosen, path.suffix.lower())


def _from_bytes(name: str, title: str, data: bytes, chosen: str = "", suffix: str = "") -> list[ClosedCurve]:
    """The curves in a file's content. Its suffix tells only Fourier rows from a CSV of six columns."""
    if data.startswith(b"\x93NUMPY"):
        return _polygons(name, title, points_from_npy(data, name))
    if data.startswith(b"PK\x03\x04"):
        return _polygons(name, title, points_from_npz(data, name))
    text = data.decode("utf-8-sig", "replace")
    if text.lstrip()[:1] in ("[", "{"):
        return _polygons(name, title, points_from_json(text, name))
    if is_vect(text):
        return _polygons(name, title, points_from_vect(text, name))
    if re.search(r"<VTKFile\b", text[:1000]):
        from vkmcore.curves.vtk_files import points_from_vtp

        return _polygons(name, title, points_from_vtp(data, name))
    if suffix == ".obj":
        from vkmcore.curves.tube_surface import points_from_obj

        return _polygons(name, title, points_from_obj(text, name))
    if re.search(r"<(AB|HT|TL)\b", text):
        return _of_ideal(name, title, _chosen_block(name, text, chosen))
    if chosen:
        raise CurveError(f"{name}: no ideal text, which alone holds knots by id")
    block = None if suffix == ".csv" else _largest(text)
    if block is not None:
        return [ClosedCurve(name, block.header or title, "fseries", block)]
    if suffix == ".fseries":
        raise CurveError(f"{name}: no Fourier block in the file: expected rows of six numbers")
    return _polygons(name, title, points_from_text(text, name))


def _polygons(name: str, title: str, components: list[Points]) -> list[ClosedCurve]:
    return [ClosedCurve(name, title, "polygon", vertices=_opened(points)) for points in components]


def _opened(points: Points) -> Points:
    """Without a last vertex that repeats the first."""
    return points[:-1] if len(points) > 1 and (points[0] == points[-1]).all() else points


def _of_ideal(name: str, title: str, block: IdealABBlock) -> list[ClosedCurve]:
    curves = []
    for component in block.components:
        x, y, z = (a + b for a, b in zip(component.A0, component.B0, strict=True))
        curves.append(ClosedCurve(name, title, "ideal", component.fourier, (x, y, z)))
    if not curves:
        raise CurveError(f"{name}: the block {block.id} has no rows")
    return curves


def _chosen_block(name: str, text: str, chosen: str) -> IdealABBlock:
    blocks = [block for block in parse_ideal_halvard_from_string(text) if chosen in ("", block.id)]
    if len(blocks) == 1:
        return blocks[0]
    if not blocks:
        raise CurveError(f"{name}: no ideal block{' of this id' if chosen else ' that is whole'} in the file")
    some = ", ".join(block.id for block in blocks[:3])
    raise CurveError(f"{name}: holds {len(blocks)} knots ({some}, ...): expected one, or FILE#ID, as #{blocks[0].id}")


def _largest(text: str) -> FourierBlock | None:
    blocks = parse_fseries_from_string(text)
    return blocks[index_of_largest_block(blocks)] if blocks else None
