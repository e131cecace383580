"""The one writer of closed polygons: the suffix of the file gives the format.

.vect, .csv, .txt, .json, .npy and .npz hold vertices, .vtp closed polylines with values at the vertices; .stl holds
the triangles of a tube, .obj both. `read_curves` reads them all but .stl, with the same bits.
"""

from __future__ import annotations

import json
import os
from collections.abc import Callable, Mapping, Sequence
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.vect import write_vect

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

FORMATS = (".vect", ".csv", ".txt", ".json", ".npy", ".npz", ".vtp", ".obj", ".stl")


def write_curves(
    path: str | os.PathLike[str],
    polygons: Sequence[Points],
    *,
    comment: str = "",
    radius: Callable[[], float] = lambda: 0.0,
    values: Callable[[], Mapping[str, Sequence[Points]]] = dict,
) -> None:
    """Write closed polygons, each (N, 3), in full precision.

    Args:
        path: the file; its suffix is one of `FORMATS`.
        polygons: the components, the first vertex not repeated.
        comment: what .vect, .txt and .obj say of themselves.
        radius: gives the tube's radius, asked for by .stl and .obj only.
        values: gives arrays (N,) a component by name, asked for by .vtp only.

    Raises:
        ValueError: no such format, or .npy is to hold components of several lengths.
        OSError: the file cannot be written.
    """
    path = Path(path)
    kind = path.suffix.lower()
    if kind == ".vect":
        write_vect(path, polygons, comment)
    elif kind in (".csv", ".txt"):
        path.write_text(_table(polygons, comment, kind), encoding="utf-8")
    elif kind == ".json":
        path.write_text(json.dumps({"components": [points.tolist() for points in polygons]}) + "\n", encoding="utf-8")
    elif kind == ".npy":
        if len({len(points) for points in polygons}) > 1:
            raise ValueError(f"{path}: .npy holds components of one length only; .npz holds any")
        np.save(path, polygons[0] if len(polygons) == 1 else np.stack(polygons))
    elif kind == ".npz":
        arrays: dict[str, Any] = {f"component_{number}": points for number, points in enumerate(polygons, start=1)}
        np.savez(path, **arrays)
    elif kind == ".vtp":
        from vkmcore.curves.vtk_files import write_polylines

        write_polylines(path, polygons, values())
    elif kind in (".obj", ".stl"):
        from vkmcore.curves.tube_surface import write_obj, write_stl

        (write_obj if kind == ".obj" else write_stl)(path, polygons, radius(), comment)
    else:
        raise ValueError(f"{path}: no format of this name; known are {', '.join(FORMATS)}")


def _table(polygons: Sequence[Points], comment: str, kind: str) -> str:
    rows = [(number, vertex) for number, points in enumerate(polygons, start=1) for vertex in points.tolist()]
    if kind == ".csv":
        lines = ["component,x,y,z", *(f"{number},{x!r},{y!r},{z!r}" for number, (x, y, z) in rows)]
    else:
        lines = [f"# {line}" for line in comment.splitlines()]
        last = 1
        for number, (x, y, z) in rows:
            lines += [""] * (number - last)
            lines.append(f"{x!r} {y!r} {z!r}")
            last = number
    return "\n".join(lines) + "\n"
