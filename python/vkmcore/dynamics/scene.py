"""Scenes: the filaments and settings of a simulation in a TOML file. docs/simulation.md describes the format."""

from __future__ import annotations

import math
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.dynamics.simulation import OPTIONS, Filaments

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

NUMBERS = ("t_end", "dt", "cfl", "frame_interval", "contact_threshold", "resample_ratio")
TOP = {*NUMBERS, "core", "options", "filament"}
FILAMENT = {
    "curve", "points", "radius", "centre", "normal", "circulation", "core", "id", "carrier", "source", "ghost",
}  # fmt: skip
POINTS = 100  # of a filament, unless it says how many
FINE = 16  # samples of a series a point, for points at equal steps of its length


@dataclass(frozen=True)
class Scene:
    """The arguments of `simulate`."""

    filaments: Filaments
    t_end: float
    options: dict[str, Any]
    settings: dict[str, Any]  # further keyword arguments


class SceneError(ValueError):
    """A scene that cannot be run; the text says what is wrong where."""


def load_scene(path: str | Path) -> Scene:
    """Read a scene; curves in files are found beside it.

    Raises:
        OSError: the file cannot be read.
        SceneError: it is no scene.
    """
    import tomli

    path = Path(path)
    try:
        table = tomli.loads(path.read_bytes().decode())
    except RecursionError:
        raise SceneError(f"{path}: nested too deeply") from None
    except ValueError as error:  # no TOML, no UTF-8, or an integer of thousands of digits
        raise SceneError(f"{path}: {error}") from None
    try:
        return _scene(table, path.parent)
    except SceneError as error:
        raise SceneError(f"{path}: {error}") from error.__cause__


def _scene(table: dict[str, Any], folder: Path) -> Scene:
    _refuse_unknown(table, TOP)
    settings: dict[str, Any] = {name: _number(table, name) for name in NUMBERS if name in table}
    if "core" in table:
        settings["core"] = _text(table, "core")
    if "t_end" not in settings:
        raise SceneError("t_end is missing")
    options = table.get("options", {})
    if not isinstance(options, dict):
        raise SceneError("options: expected a table")
    try:
        _refuse_unknown(options, set(OPTIONS))
        options = {name: _flag(options, name) if name == "lia_only" else _number(options, name) for name in options}
    except SceneError as error:
        raise SceneError(f"options: {error}") from None
    tables = table.get("filament", [])
    if not isinstance(tables, list) or not tables:
        raise SceneError("no [[filament]] in it")
    filaments: Filaments = []
    for number, entry in enumerate(tables, start=1):
        try:
            if not isinstance(entry, dict):
                raise SceneError("expected a table")
            filaments.append(_filament(entry, folder))
            if "core" in entry and options.setdefault("core_radius", _number(entry, "core")) != entry["core"]:
                raise SceneError(f"core: all filaments have one core radius, and it is {options['core_radius']} so far")
        except SceneError as error:
            raise SceneError(f"filament {number}: {error}") from error.__cause__
    return Scene(filaments, settings.pop("t_end"), options, settings)


def _filament(table: dict[str, Any], folder: Path) -> dict[str, Any]:
    _refuse_unknown(table, FILAMENT)
    filament: dict[str, Any] = {"points": _placed(_curve(table, folder), table)}
    if "core" in table and not _number(table, "core") > 0.0:
        raise SceneError("core: expected a positive number")
    if "circulation" in table:
        filament["circulation"] = _number(table, "circulation")
    for name in ("source", "ghost"):
        if name in table:
            filament[name] = _flag(table, name)
    for name in ("id", "carrier"):
        if name in table:
            filament[name] = _text(table, name)
    return filament


def _curve(table: dict[str, Any], folder: Path) -> Points:
    """The curve of a filament, ring or other, before it is placed."""
    from vkmcore import resample_closed_curve, sample_circle
    from vkmcore.curves.reader import read_curve

    if "curve" not in table:
        raise SceneError("curve is missing: 'ring', a key of the catalogue, or a file of points")
    curve = _text(table, "curve")
    count = table.get("points", POINTS)
    if not isinstance(count, int) or isinstance(count, bool) or not 3 <= count < 2**31 // FINE:
        raise SceneError("points: expected a whole number from 3 on")
    if curve == "ring":
        if "radius" not in table:
            raise SceneError("radius is missing")
        return sample_circle(count, 1.0, 0.0)
    try:
        beside = folder / curve
        found = read_curve(str(beside) if beside.is_file() else curve)
        points = found.sampled(FINE * count)
    except (ValueError, RuntimeError, OSError) as error:
        raise SceneError(f"curve: {error}") from error
    if len(points) < 3 or not np.isfinite(points).all():
        raise SceneError(f"curve: {curve} has fewer than three points, or some that are no finite numbers")
    if found.block is None and "points" not in table:
        return points
    return resample_closed_curve(points, count)


def _placed(points: Points, table: dict[str, Any]) -> Points:
    """Scaled about its centroid to `radius`, turned from the z axis onto `normal`, and moved to `centre`."""
    centroid = points.mean(axis=0)
    body = points - centroid
    if table["curve"] == "ring":
        centroid = np.zeros(3)
    if "radius" in table:
        radius = _number(table, "radius")
        extent = float(np.linalg.norm(body, axis=1).max())
        if not radius > 0.0:
            raise SceneError("radius: expected a positive number")
        if not extent > 0.0:
            raise SceneError("curve: all its points are one")
        body = body * (radius / extent)
    if "normal" in table:
        body = body @ _turn(_vector(table, "normal")).T
    placed: Points = body + (_vector(table, "centre") if "centre" in table else centroid)
    return placed


def _turn(normal: Points) -> Points:
    """A rotation (3, 3) that takes the z axis to `normal`; the identity for z."""
    length = float(np.linalg.norm(normal))
    if not length > 0.0:
        raise SceneError("normal: expected a direction")
    x, y, z = normal / length
    if z < 0.0:  # half a turn about the x axis first, and the least rotation from -z: no quotient is large
        q = 1.0 / (1.0 - z)
        return np.array([[1.0 - q * x * x, q * x * y, x], [-q * x * y, q * y * y - 1.0, y], [x, -y, z]])
    q = 1.0 / (1.0 + z)
    return np.array([[1.0 - q * x * x, -q * x * y, x], [-q * x * y, 1.0 - q * y * y, y], [-x, -y, z]])


# --- values ---------------------------------------------------------------------------------------------------------


def _refuse_unknown(table: dict[str, Any], known: set[str]) -> None:
    if unknown := sorted(set(table) - known):
        raise SceneError(f"unknown key {unknown[0]!r}; known are {', '.join(sorted(known))}")


def _number(table: dict[str, Any], name: str) -> float:
    value = table[name]
    if isinstance(value, bool) or not isinstance(value, int | float):
        raise SceneError(f"{name}: expected a number")
    try:
        number = float(value)
    except OverflowError:
        number = math.inf
    if not math.isfinite(number):
        raise SceneError(f"{name}: expected a number")
    return number


def _vector(table: dict[str, Any], name: str) -> Points:
    value = table[name]
    if not isinstance(value, list) or len(value) != 3:
        raise SceneError(f"{name}: expected three numbers")
    return np.array([_number({name: item}, name) for item in value])


def _flag(table: dict[str, Any], name: str) -> bool:
    if not isinstance(table[name], bool):
        raise SceneError(f"{name}: expected true or false")
    return bool(table[name])


def _text(table: dict[str, Any], name: str) -> str:
    if not isinstance(table[name], str):
        raise SceneError(f"{name}: expected a text")
    return str(table[name])
