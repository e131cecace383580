"""The flow around a knot on a regular grid, and its way to ParaView."""

from __future__ import annotations

import os
from collections.abc import Sequence
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING

import numpy as np

from vkmcore import biot_savart_velocity_grid

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True, repr=False)
class GridField:
    """Fields by name, each (nx, ny, nz) or (nx, ny, nz, 3), on a grid of unit steps `spacing` from `origin`."""

    fields: dict[str, Points]
    spacing: tuple[float, float, float]
    origin: tuple[float, float, float]

    @property
    def points(self) -> Points:
        """The places (nx, ny, nz, 3)."""
        shape = next(iter(self.fields.values())).shape[:3]
        steps = np.stack(np.meshgrid(*map(np.arange, shape), indexing="ij"), axis=-1)
        found: Points = steps * np.array(self.spacing) + np.array(self.origin)
        return found

    def __repr__(self) -> str:
        shape = " x ".join(map(str, next(iter(self.fields.values())).shape[:3]))
        return f"GridField({', '.join(self.fields)} on {shape} points)"

    def save(self, path: str | os.PathLike[str]) -> None:
        """Write the fields: .vti for ParaView, .npz with `points` for NumPy.

        Raises:
            ValueError: no such format.
            OSError: the file cannot be written.
        """
        kind = Path(path).suffix.lower()
        if kind == ".vti":
            from vkmcore.curves.vtk_files import write_grid

            write_grid(path, self.fields, self.spacing, self.origin)
        elif kind == ".npz":
            np.savez(path, points=self.points, **self.fields)  # type: ignore[arg-type]
        else:
            raise ValueError(f"{path}: no format of this name; known are .vti, .npz")


def velocity_field(
    polygons: Sequence[Points], shape: tuple[int, int, int], circulation: float, margin: float
) -> GridField:
    """Velocity and speed on a grid over the curves' box, `margin` of its greatest extent wider on all sides.

    Biot-Savart's law by `biot_savart_velocity_grid`, in units of the box: its cut-off is a length.
    """
    if len(shape) != 3 or min(shape) < 2:
        raise ValueError(f"a grid has at least two points along each axis, not {shape}")
    every = np.concatenate(polygons)
    low, high = every.min(axis=0), every.max(axis=0)
    width = float((high - low).max())
    low, high = low - margin * width, high + margin * width
    spacing = (high - low) / (np.array(shape) - 1)
    empty = GridField({"speed": np.zeros(shape)}, tuple(spacing.tolist()), tuple(low.tolist()))
    places = ((empty.points - low) / width).reshape(-1, 3)
    velocity = np.zeros_like(places)
    for points in polygons:
        velocity += biot_savart_velocity_grid((points - low) / width, places)
    velocity = (velocity * (circulation / width)).reshape(*shape, 3)
    return GridField({"velocity": velocity, "speed": np.linalg.norm(velocity, axis=-1)}, empty.spacing, empty.origin)
