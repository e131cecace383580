"""Filaments over time, as a run gives them and as a file holds them: how they show themselves, and their ways out."""

from __future__ import annotations

import os
from collections.abc import Sequence
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore.dynamics.invariants import Invariants
    from vkmcore.dynamics.trajectory import Frame
    from vkmcore.pictures.movie import Movie

    Points = NDArray[np.float64]

SAVED = (".pvd", ".npz", ".gif", ".mp4")


class Recorded:
    """Frames of several filaments, whose roles are in `filaments` and the run's settings in `settings`."""

    frames: list[Frame]
    filaments: list[dict[str, Any]]
    settings: dict[str, Any]

    @property
    def times(self) -> Points:
        """Times (F,) of the frames, in s."""
        return np.array([frame.time for frame in self.frames])

    def velocity(self, frame: int = -1) -> list[Points]:
        """Velocities (N, 3) in m/s of the vertices of each filament in a frame, by the run's own options, core and far
        field; zero for ghosts, which do not move."""
        from vkmcore.dynamics.core_model import filament_velocity
        from vkmcore.dynamics.velocity import Summation

        points = self.frames[frame].points
        placed = [{**filament, "points": at} for filament, at in zip(self.filaments, points, strict=True)]
        # The options of the settings have the constant of the core's model in them already.
        core = "raw" if self.settings.get("core", "raw") == "raw" else "constant"
        tolerance = self.settings.get("tolerance")
        summation = Summation() if tolerance is None else Summation("tree", tolerance)
        return filament_velocity(placed, self.settings.get("options"), core, summation)[0]

    def invariants(self) -> Invariants:
        """Impulse, angular impulse and energy in each frame, which the motion of thin filaments keeps: how far they
        stray is what a run's steps, edges and tolerance cost. One sum of velocities a frame; see
        `vkmcore.dynamics.invariants` for the formulas."""
        from vkmcore.dynamics.invariants import invariants

        positions = [frame.points for frame in self.frames]
        return invariants(self.times, positions, [self.velocity(k) for k in range(len(positions))], self.filaments)

    def curvature(self, frame: int = -1) -> list[Points]:
        """Curvatures (N,) in 1/m at the vertices of each filament in a frame, as `Knot.curvature` of a polygon."""
        from vkmcore.knots.strand import Strand

        return [
            Strand(vertices=points.copy()).curvature(None) if len(points) > 2 else np.zeros(len(points))
            for points in self.frames[frame].points
        ]

    def animate(
        self, path: str | os.PathLike[str] | None = None, *, kind: str = "", fps: int = 15, title: str = ""
    ) -> Movie:
        """A movie of all frames, which a notebook plays.

        Args:
            path: a .gif or .mp4 file to write it to.
            kind: "gif" or "mp4" where there is no path; GIF by default.
            fps: frames a second.
            title: above the picture, beside the time.

        Raises:
            PlotError: a library is missing (extras `plot`, and `movie` for MP4), or `path` is no such file.
            ValueError: another kind, or `fps` out of 1 to 50.
        """
        from vkmcore.pictures.movie import KINDS, check_movie_target, film_run

        if path is not None:
            kind = check_movie_target(Path(path))
        if (kind or "gif") not in KINDS:
            raise ValueError(f"movies are {' and '.join(KINDS)}, not {kind!r}")
        if not 1 <= fps <= 50:
            raise ValueError(f"expected 1 to 50 frames a second, not {fps}")
        film = film_run(self.frames, self._ghosts(), title, kind=kind or "gif", frames_per_second=fps)
        if path is not None:
            film.save(Path(path))
        return film

    def plot(self, backend: str = "matplotlib", *, frame: int = -1, colour: str = "velocity", **options: Any) -> Any:
        """One frame as tubes, a figure of `backend`: "matplotlib", "plotly" or "pyvista".

        Args:
            backend: the library, whose own figure is returned.
            frame: its number; the last by default.
            colour: "velocity" (speed), "curvature" or "component".
            options: of `vkmcore.pictures.shapes.plot_shape`: radius (by default one that shows over and under, no
                physical size), title, unit.

        Raises:
            PlotError: the library is not installed; the text names the extra.
            ValueError: no such colour or backend.
        """
        from vkmcore.pictures.shapes import plot_shape
        from vkmcore.pictures.simulation import TUBE

        shown = [number for number, points in enumerate(self.frames[frame].points) if len(points) > 2]
        polygons = [self.frames[frame].points[number] for number in shown]
        every = np.concatenate(polygons)
        options.setdefault("radius", TUBE * float(np.linalg.norm(np.ptp(every, axis=0))))
        options.setdefault("title", f"t = {self.frames[frame].time:.4g} s")
        options.setdefault("unit", "m")
        if colour == "velocity":
            options["label"] = "speed / (m/s)"
            values = [np.linalg.norm(velocity, axis=1) for velocity in self.velocity(frame)]
        elif colour == "curvature":
            values = self.curvature(frame)
        elif colour != "component":
            raise ValueError(f"colour is 'velocity', 'curvature' or 'component', not {colour!r}")
        chosen = None if colour == "component" else [values[number] for number in shown]
        return plot_shape(polygons, backend=backend, values=chosen, **options)

    def save(self, path: str | os.PathLike[str], **options: Any) -> None:
        """Write the run; the suffix of `path` gives the format.

        .pvd is a series for ParaView, with a .vtp file a frame in a folder of the same name beside it: polylines with
        velocity (m/s), curvature (1/m), filament and circulation at the vertices. .npz is a trajectory, as
        `load_trajectory` reads it. .gif and .mp4 are movies; `options` are then those of `animate`.

        Raises:
            ValueError: no such format.
            FileExistsError: there is such a .npz already.
            OSError: the file cannot be written.
        """
        path = Path(path)
        kind = path.suffix.lower()
        if kind not in SAVED:
            raise ValueError(f"{path}: no format of this name; known are {', '.join(SAVED)}")
        if kind == ".pvd":
            self._save_series(path)
        elif kind == ".npz":
            from vkmcore.dynamics.trajectory import TrajectoryWriter

            with TrajectoryWriter.create(path, self._described(), self.settings, self.frames[0]) as writer:
                for frame in self.frames[1:]:
                    writer.append(frame)
        else:
            self.animate(path, **options)

    def _save_series(self, path: Path) -> None:
        from vkmcore.curves.vtk_files import write_polylines, write_series

        folder = path.with_suffix("")
        folder.mkdir(exist_ok=True)
        files = []
        for number, frame in enumerate(self.frames):
            shown = [place for place, points in enumerate(frame.points) if len(points) > 2]
            velocity, curvature = self.velocity(number), self.curvature(number)
            values: dict[str, Sequence[Any]] = {
                "velocity": [velocity[place] for place in shown],
                "curvature": [curvature[place] for place in shown],
                "circulation": [
                    np.full(len(frame.points[place]), float(self.filaments[place].get("circulation", 1.0)))
                    for place in shown
                ],
            }
            name = f"frame_{number:06d}.vtp"
            write_polylines(folder / name, [frame.points[place] for place in shown], values)
            files.append((frame.time, f"{folder.name}/{name}"))
        write_series(path, files)

    def to_xarray(self) -> Any:
        """An `xarray.Dataset` of a run whose vertices stay what they are.

        Variables: position (time, vertex, axis) in m, velocity (time, vertex, axis) in m/s, curvature (time, vertex) in
        1/m, step (time); coordinates: time in s, axis "x", "y", "z", and filament (vertex), counted from 0.

        Raises:
            ValueError: the run lays vertices anew (`resample_ratio`), so that a number names no vertex.
            ImportError: xarray is not installed; the text names the extra.
        """
        try:
            import xarray
        except ImportError as error:
            raise ImportError(f'datasets need xarray: pip install "vkmcore[xarray]" ({error})') from error
        if self.settings.get("resample_ratio") is not None:
            raise ValueError("the run lays vertices anew (resample_ratio): a vertex is no point that moves")
        numbers = range(len(self.frames))
        position = np.stack([np.concatenate(frame.points) for frame in self.frames])
        data = {
            "position": (("time", "vertex", "axis"), position, {"units": "m"}),
            "velocity": (
                ("time", "vertex", "axis"),
                np.stack([np.concatenate(self.velocity(number)) for number in numbers]),
                {"units": "m/s"},
            ),
            "curvature": (
                ("time", "vertex"),
                np.stack([np.concatenate(self.curvature(number)) for number in numbers]),
                {"units": "1/m"},
            ),
            "step": (("time",), np.array([frame.step for frame in self.frames])),
        }
        sizes = [len(points) for points in self.frames[0].points]
        coordinates = {
            "time": ("time", self.times, {"units": "s"}),
            "axis": ["x", "y", "z"],
            "filament": ("vertex", np.repeat(np.arange(len(sizes)), sizes)),
        }
        circulation = [float(filament.get("circulation", 1.0)) for filament in self.filaments]
        return xarray.Dataset(data, coordinates, {"circulation": circulation, "message": self.frames[-1].message})

    def _ghosts(self) -> list[bool]:
        return [bool(filament.get("ghost", False)) for filament in self.filaments]

    def _described(self) -> list[dict[str, Any]]:
        """The filaments as a trajectory file records them."""
        from vkmcore.dynamics.trajectory import described

        return described(self.filaments, [len(points) for points in self.frames[0].points])

    def __repr__(self) -> str:
        from vkmcore.dynamics.summary import line

        return line(self)

    def _repr_html_(self) -> str:
        from vkmcore.dynamics.summary import html

        return html(self)
