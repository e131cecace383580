"""VTK's XML files: polylines (.vtp), grids (.vti), series in time (.pvd). Arrays are inline, base64, little-endian.

Format: VTK File Formats, XML. Written without VTK; `points_from_vtp` reads by it (extra `vtk`).
"""

from __future__ import annotations

import base64
import os
from collections.abc import Mapping, Sequence
from itertools import pairwise
from pathlib import Path
from typing import TYPE_CHECKING
from xml.sax.saxutils import quoteattr

import numpy as np

from vkmcore.errors import CurveError

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    Points = NDArray[np.float64]


def _array(name: str, values: NDArray[np.float64] | NDArray[np.int64], components: int = 1) -> str:
    kind, code = ("Int64", "<i8") if values.dtype.kind == "i" else ("Float64", "<f8")
    data = np.ascontiguousarray(values, dtype=code).tobytes()
    text = base64.b64encode(np.uint64(len(data)).tobytes() + data).decode()
    return (
        f'<DataArray type="{kind}" Name={quoteattr(name)} NumberOfComponents="{components}" format="binary">'
        f"{text}</DataArray>"
    )


def _file(kind: str, body: str) -> str:
    head = f'<VTKFile type="{kind}" version="1.0" byte_order="LittleEndian" header_type="UInt64">'
    return f'<?xml version="1.0"?>\n{head}\n{body}\n</VTKFile>\n'


def write_polylines(
    path: str | os.PathLike[str], polygons: Sequence[Points], values: Mapping[str, Sequence[ArrayLike]] | None = None
) -> None:
    """Closed polygons as a .vtp file.

    Args:
        path: the file.
        polygons: the components, each (N, 3); the closing edge is part of each line.
        values: by name for each component an array (N,) or (N, 3). The number of the component comes by itself.

    Raises:
        ValueError: an array has another number of rows than its component.
        OSError: the file cannot be written.
    """
    counts = [len(points) for points in polygons]
    starts = np.cumsum([0, *counts[:-1]])
    lines = [[*range(start, start + count), start] for start, count in zip(starts.tolist(), counts)]
    fields = {"component": [np.full(count, number, dtype=np.int64) for number, count in enumerate(counts, start=1)]}
    data = []
    for name, arrays in {**fields, **(values or {})}.items():
        if [len(np.asarray(rows)) for rows in arrays] != counts:
            raise ValueError(f"{path}: {name}: expected a value for each vertex")
        every = np.concatenate([np.asarray(rows) for rows in arrays])
        data.append(_array(name, every, 1 if every.ndim == 1 else every.shape[1]))
    body = (
        f'<PolyData><Piece NumberOfPoints="{sum(counts)}" NumberOfVerts="0" NumberOfLines="{len(counts)}" '
        'NumberOfStrips="0" NumberOfPolys="0">\n'
        f"<PointData>{''.join(data)}</PointData>\n<Points>{_array('points', np.concatenate(polygons), 3)}</Points>\n"
        f"<Lines>{_array('connectivity', np.concatenate(lines).astype(np.int64))}"
        f"{_array('offsets', np.cumsum([len(line) for line in lines]).astype(np.int64))}</Lines></Piece></PolyData>"
    )
    Path(path).write_text(_file("PolyData", body), encoding="utf-8")


def write_grid(
    path: str | os.PathLike[str],
    fields: Mapping[str, ArrayLike],
    spacing: tuple[float, float, float] = (1.0, 1.0, 1.0),
    origin: tuple[float, float, float] = (0.0, 0.0, 0.0),
) -> None:
    """Fields on a regular grid as a .vti file, for ParaView.

    Args:
        path: the file.
        fields: by name arrays (nx, ny, nz) or (nx, ny, nz, 3), all of one grid.
        spacing: of the grid along x, y and z.
        origin: the place of [0, 0, 0].

    Raises:
        ValueError: no field, or fields of several grids.
        OSError: the file cannot be written.
    """
    arrays = {name: np.asarray(field, dtype=np.float64) for name, field in fields.items()}
    shapes = {array.shape[:3] for array in arrays.values()}
    if len(shapes) != 1 or any(array.ndim not in (3, 4) for array in arrays.values()):
        raise ValueError(f"{path}: expected fields (nx, ny, nz) or (nx, ny, nz, components) of one grid")
    ((nx, ny, nz),) = shapes
    data = []
    for name, array in arrays.items():
        components = 1 if array.ndim == 3 else array.shape[3]
        walked = array.reshape(nx, ny, nz, components).transpose(2, 1, 0, 3)  # x runs fastest in the file
        data.append(_array(name, walked.reshape(-1), components))
    extent = f"0 {nx - 1} 0 {ny - 1} 0 {nz - 1}"
    place = f'Origin="{" ".join(map(repr, map(float, origin)))}" Spacing="{" ".join(map(repr, map(float, spacing)))}"'
    body = (
        f'<ImageData WholeExtent="{extent}" {place}><Piece Extent="{extent}">\n'
        f"<PointData>{''.join(data)}</PointData></Piece></ImageData>"
    )
    Path(path).write_text(_file("ImageData", body), encoding="utf-8")


def write_series(path: str | os.PathLike[str], files: Sequence[tuple[float, str]]) -> None:
    """A .pvd file: times, and the names of the files beside it that hold them."""
    rows = "\n".join(f'<DataSet timestep="{time!r}" part="0" file={quoteattr(name)}/>' for time, name in files)
    Path(path).write_text(_file("Collection", f"<Collection>\n{rows}\n</Collection>"), encoding="utf-8")


def points_from_vtp(data: bytes, name: str) -> list[Points]:
    """The closed lines (N, 3) in the bytes of a .vtp file; `name` stands in errors.

    Raises:
        CurveError: VTK is not installed (extra `vtk`), or the file holds no closed lines.
    """
    try:
        from vtkmodules.util.numpy_support import vtk_to_numpy
        from vtkmodules.vtkIOXML import vtkXMLPolyDataReader
    except ImportError:
        raise CurveError(f'{name}: .vtp is read by VTK: pip install "vkmcore[vtk]"') from None
    reader = vtkXMLPolyDataReader()
    reader.ReadFromInputStringOn()
    reader.SetInputString(data.decode("utf-8", "replace"))
    reader.Update()
    surface = reader.GetOutput()
    if not surface.GetNumberOfPoints() or not surface.GetNumberOfLines():
        raise CurveError(f"{name}: no lines in it")
    points = vtk_to_numpy(surface.GetPoints().GetData()).astype(np.float64)
    at = vtk_to_numpy(surface.GetLines().GetConnectivityArray())
    offsets = vtk_to_numpy(surface.GetLines().GetOffsetsArray())
    found = [points[at[begin:end]] for begin, end in pairwise(offsets.tolist())]
    for number, line in enumerate(found, start=1):
        if len(line) < 4 or not (line[0] == line[-1]).all():
            raise CurveError(f"{name}: line {number} of it is open: expected closed ones")
    return [line[:-1] for line in found]
