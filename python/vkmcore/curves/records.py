"""Vertices in arrays: NumPy's own files, JSON, and what a caller hands over.

One array (N, 3) is a curve; an array (C, N, 3), or a list of arrays (N, 3), is a link. In JSON an object may hold the
vertices as `points` or `vertices`, the components as `components`, `curves` or `filaments`.
"""

from __future__ import annotations

import io
import json
import zipfile
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.errors import CurveError

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

POINTS = ("points", "vertices")
COMPONENTS = ("components", "curves", "filaments")


def points_from_array(value: Any, name: str) -> list[Points]:
    """The components (N, 3) in an array or in nested lists; `name` stands in errors.

    Raises:
        CurveError: the shape is none of those above, or a number is not finite.
    """
    if isinstance(value, list | tuple) and value and np.ndim(_entry(value[0])) == 2:
        return [_checked(_entry(entry), f"{name}: component {number}") for number, entry in enumerate(value, start=1)]
    array = _entry(value)
    if array.ndim == 3 and len(array):
        return [_checked(points, f"{name}: component {number}") for number, points in enumerate(array, start=1)]
    return [_checked(array, name)]


def _entry(value: Any) -> NDArray[Any]:
    """As an array; one of no dimensions where it is none of numbers."""
    try:
        array = np.asarray(value)
    except ValueError:  # rows of several lengths
        return np.array(None)
    return array if array.dtype.kind in "fiu" or array.size == 0 else np.array(None)


def _checked(array: NDArray[Any], where: str) -> Points:
    if array.ndim != 2 or array.shape[1] != 3 or not len(array):
        found = f"shape {array.shape}" if array.ndim else "something else"
        raise CurveError(f"{where}: expected vertices of three numbers, shape (N, 3), found {found}")
    points = array.astype(np.float64)
    if not np.isfinite(points).all():
        number = int(np.flatnonzero(~np.isfinite(points).all(axis=1))[0])
        raise CurveError(f"{where}: vertex {number + 1}: not a finite number in {points[number].tolist()}")
    return points


def points_from_json(text: str, name: str) -> list[Points]:
    """The components in a JSON text. CurveError as of `points_from_array`, or with the line that is no JSON."""
    try:
        value = json.loads(text)
    except json.JSONDecodeError as error:
        raise CurveError(f"{name}: line {error.lineno}: no JSON: {error.msg}") from None
    except RecursionError:
        raise CurveError(f"{name}: no JSON: nested too deeply") from None
    return points_from_array(_plain(value, name), name)


def _plain(value: Any, name: str) -> Any:
    """The vertices of an object, or of each object in a list."""
    if isinstance(value, dict):
        for member in (*POINTS, *COMPONENTS):
            if member in value:
                return _plain(value[member], name)
        raise CurveError(f"{name}: expected a member {', '.join(POINTS + COMPONENTS[:-1])} or {COMPONENTS[-1]}")
    if isinstance(value, list) and any(isinstance(item, dict) for item in value):
        return [_plain(item, name) for item in value]
    return value


def points_from_npy(data: bytes, name: str) -> list[Points]:
    """The components in the bytes of a `.npy` file. CurveError as of `points_from_array`, or where it is damaged."""
    return points_from_array(_loaded(data, name), name)


def points_from_npz(data: bytes, name: str) -> list[Points]:
    """The components in the bytes of a `.npz` file: its members in order, each of them one or more."""
    try:
        with zipfile.ZipFile(io.BytesIO(data)) as archive:
            members = [(member, archive.read(member)) for member in archive.namelist()]
    except (zipfile.BadZipFile, OSError, ValueError, NotImplementedError) as error:
        raise CurveError(f"{name}: a damaged .npz file: {error}") from None
    if not members:
        raise CurveError(f"{name}: no arrays in it: expected vertices, shape (N, 3)")
    found: list[Points] = []
    for member, content in members:
        where = f"{name}: {member.removesuffix('.npy')}"
        found += points_from_array(_loaded(content, where), where)
    return found


def _loaded(data: bytes, name: str) -> NDArray[Any]:
    try:
        array: NDArray[Any] = np.load(io.BytesIO(data), allow_pickle=False)
    except (ValueError, OSError, EOFError, SyntaxError) as error:
        raise CurveError(f"{name}: a damaged .npy array: {error}") from None
    return array
