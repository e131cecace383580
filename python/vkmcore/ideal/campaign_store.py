"""What a campaign has reached, in a folder: one file a knot, replaced at once, never by anything worse.

A file `<name>.npz` holds the polygons at the edges that were reached (packed_polygon.py), the Fourier form, and a
record of all attempts. A program that is killed leaves each file as it was before or after a task.
"""

from __future__ import annotations

import json
import os
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass, field
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.ideal.fourier_form import FourierForm
from vkmcore.ideal.packed_polygon import pack, unpack

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class Shape:
    """A tight polygon: closed components (N, 3) in tube radii, and how it was found."""

    components: tuple[Points, ...]
    ropelength: float  # length over tube radius
    edge: float  # as asked for, in tube radii
    seed: int


@dataclass(frozen=True)
class StoredForm:
    """A Fourier form, its ropelength on a dense sampling, and the polygon that it was made from."""

    form: FourierForm
    ropelength: float
    source_ropelength: float
    source_edge: float


@dataclass
class Entry:
    """All that is known of one knot or link."""

    name: str
    shapes: dict[float, Shape] = field(default_factory=dict)  # the best by edge
    form: StoredForm | None = None
    attempts: list[dict[str, Any]] = field(default_factory=list)  # task, seed, edge, ropelength or error, CPU seconds
    certificate: str = ""  # of the best polygon

    @property
    def best(self) -> Shape | None:
        """The shortest: as a rule the finest, but a coarser one where later seeds led to a shape that was not refined
        or that its refinement lost."""
        return min(self.shapes.values(), key=lambda shape: (shape.ropelength, shape.edge), default=None)

    def ropelengths(self) -> dict[float, float]:
        """By edge: of the polygons, and of those made from them of which only the ropelength was kept."""
        found = {edge: shape.ropelength for edge, shape in self.shapes.items()}
        sources = set(found.values())
        for attempt in self.attempts:
            if attempt["task"] == "refine" and attempt.get("source") in sources and "ropelength" in attempt:
                found.setdefault(attempt["edge"], attempt["ropelength"])
        return found

    def seeds(self) -> set[int]:
        """Of the searches that have ended, also those that failed."""
        return {attempt["seed"] for attempt in self.attempts if attempt["task"] == "search"}

    def offer(self, shape: Shape) -> bool:
        """Take a polygon if it is the shortest at its edge; the finer ones stay, whatever they came from."""
        known = self.shapes.get(shape.edge)
        if known is not None and known.ropelength <= shape.ropelength:
            return False
        self.shapes[shape.edge] = shape
        return True

    def offer_form(self, stored: StoredForm) -> bool:
        """Take a Fourier form if it is the shortest of its harmonics, or shorter with fewer."""
        if self.form is not None and self.form.ropelength <= stored.ropelength:
            return False
        self.form = stored
        return True


class Store:
    """The files of a campaign."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder
        folder.mkdir(parents=True, exist_ok=True)

    def path(self, name: str) -> Path:
        return self.folder / f"{name}.npz"

    def names(self) -> list[str]:
        return sorted(path.stem for path in self.folder.glob("*.npz"))

    def load(self, name: str) -> Entry:
        """The entry of a name; an empty one if there is none.

        Raises:
            ValueError: the file is none of a campaign.
        """
        path = self.path(name)
        if not path.exists():
            return Entry(name)
        try:
            with np.load(path, allow_pickle=False) as file:
                record = json.loads(str(file["record"]))
                entry = Entry(name, attempts=record["attempts"], certificate=record["certificate"])
                for number, shape in enumerate(record["shapes"]):
                    parts = tuple(unpack(file[f"polygon_{number}_{part}"]) for part in range(shape["components"]))
                    entry.shapes[shape["edge"]] = Shape(parts, shape["ropelength"], shape["edge"], shape["seed"])
                if record["form"] is not None:
                    form = record["form"]
                    series = tuple(file[f"series_{part}"] for part in range(form["components"]))
                    entry.form = StoredForm(
                        FourierForm(series), form["ropelength"], form["source_ropelength"], form["source_edge"]
                    )
        except (OSError, KeyError, ValueError) as error:
            raise ValueError(f"{path} is no file of a campaign: {error}") from error
        return entry

    def save(self, entry: Entry) -> None:
        """Replace the file of an entry."""
        arrays: dict[str, Any] = {}
        shapes = []
        for number, shape in enumerate(entry.shapes.values()):
            shapes.append(
                {
                    "edge": shape.edge,
                    "seed": shape.seed,
                    "ropelength": shape.ropelength,
                    "components": len(shape.components),
                }
            )
            arrays |= {f"polygon_{number}_{part}": pack(points) for part, points in enumerate(shape.components)}
        form = None
        if entry.form is not None:
            form = {
                "ropelength": entry.form.ropelength,
                "source_ropelength": entry.form.source_ropelength,
                "source_edge": entry.form.source_edge,
                "components": len(entry.form.form.series),
            }
            arrays |= {f"series_{part}": c for part, c in enumerate(entry.form.form.series)}
        record = {"attempts": entry.attempts, "certificate": entry.certificate, "shapes": shapes, "form": form}
        beside = self.folder / f".{entry.name}.{os.getpid()}.tmp"
        with beside.open("wb") as file:
            np.savez_compressed(file, record=json.dumps(record), **arrays)
            file.flush()
            os.fsync(file.fileno())
        beside.replace(self.path(entry.name))

    @contextmanager
    def owned(self) -> Iterator[None]:
        """Hold the folder: only one campaign may write to it. The lock ends with the process, however that ends.

        Raises:
            RuntimeError: another process holds it.
        """
        import fcntl

        with (self.folder / ".lock").open("w") as lock:
            try:
                fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            except OSError:
                raise RuntimeError(f"{self.folder}: another campaign is at work there") from None
            for left in self.folder.glob(".*.tmp"):
                left.unlink()
            yield
