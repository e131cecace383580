"""Trajectories of filaments on disk: a `.npz` that grows by a member a frame and outlives its program.

An `.npz` is a zip of `.npy` members with their directory at the end. A new frame is written over that directory, and a
new directory behind it, in one piece. Between two frames the file is whole, and `numpy.load` reads it; a program that
is killed while it writes leaves a file without directory, whose members still stand one after the other, each with its
length and checksum. That is how this module reads: it walks the members from the front up to the first that is torn.

The members are `run`, a text in JSON (see `Trajectory`), and `frame_000000`, `frame_000001`, ..., each a record with
the fields `time` (s), `step`, `message` (why the run ended there, or empty) and `points` (V, 3), the vertices of all
filaments one after the other.
"""

from __future__ import annotations

import io
import json
import os
import struct
import zlib
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path
from types import TracebackType
from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

FORMAT = 1
RUN = "run.npy"


@dataclass(frozen=True)
class Frame:
    """The positions of all filaments at one moment."""

    time: float  # s
    step: int  # steps taken so far
    points: list[Points]  # (N, 3) for each filament
    message: str = ""  # why the run ended here


@dataclass(frozen=True)
class Trajectory:
    """What a trajectory file holds."""

    frames: list[Frame]
    filaments: list[dict[str, Any]]  # of the run: id, circulation, ..., and size, the number of vertices
    settings: dict[str, Any]  # of the run: options, dt, cfl, ...

    @property
    def times(self) -> Points:
        """Times (F,) of the frames, in s."""
        return np.array([frame.time for frame in self.frames])


def load_trajectory(path: str | os.PathLike[str]) -> Trajectory:
    """Read all finished frames of a trajectory file, also of one whose run was killed.

    Raises:
        OSError: the file cannot be read.
        ValueError: it is no trajectory.
    """
    path = Path(path)
    run: dict[str, Any] | None = None
    frames = []
    with open(path, "rb") as file:
        for name, _, data in _members(file):
            array = np.load(io.BytesIO(data), allow_pickle=False)
            if name == RUN:
                run = json.loads(str(array))
            elif run is not None:
                ends = np.cumsum([filament["size"] for filament in run["filaments"]])[:-1]
                points = np.split(array["points"], ends)
                message = array["message"].item().decode()
                frames.append(Frame(float(array["time"]), int(array["step"]), points, message))
    if run is None or run.get("format") != FORMAT or not frames:
        raise ValueError(f"{path}: not a trajectory")
    return Trajectory(frames, run["filaments"], run["settings"])


class TrajectoryWriter:
    """Appends frames to a trajectory file. `create` and `reopen` make one; leaving a `with` block closes it."""

    def __init__(self, path: Path) -> None:
        self._file = open(path, "r+b")
        self._directory = bytearray()
        self._members = 0
        self._end = 0  # of the members; the directory follows
        for name, start, data in _members(self._file):
            self._enter(name, data, start)

    @classmethod
    def create(
        cls, path: Path, filaments: list[dict[str, Any]], settings: dict[str, Any], first: Frame
    ) -> TrajectoryWriter:
        """A new file with its first frame, which appears whole. FileExistsError where there is one already."""
        if path.exists():
            raise FileExistsError(f"{path}: exists already; resume it, or remove it first")
        run = {"format": FORMAT, "filaments": filaments, "settings": settings}
        draft = path.with_name(path.name + ".new")
        draft.write_bytes(b"")
        try:
            with cls(draft) as writer:
                writer._append(RUN, np.array(json.dumps(run)))
                writer.append(first)
            os.replace(draft, path)
        except BaseException:
            draft.unlink(missing_ok=True)
            raise
        return cls(path)

    @classmethod
    def reopen(cls, path: Path) -> TrajectoryWriter:
        """A file to go on with. What a killed run left of an unfinished frame is dropped, and the directory mended."""
        writer = cls(path)
        writer._file.seek(writer._end)
        writer._file.write(writer._closing())
        writer._file.truncate()
        writer._file.flush()
        return writer

    def append(self, frame: Frame) -> None:
        """Write one frame; once this returns, the frame survives the program."""
        points = np.concatenate([np.zeros((0, 3)), *frame.points])
        record = np.zeros((), [("time", "<f8"), ("step", "<i8"), ("message", "S96"), ("points", "<f8", points.shape)])
        record["time"], record["step"], record["message"] = frame.time, frame.step, frame.message.encode()
        record["points"] = points
        # The member `run` is the first, so frames count from 0.
        self._append(f"frame_{self._members - 1:06d}.npy", record)

    def close(self) -> None:
        self._file.close()

    def __enter__(self) -> TrajectoryWriter:
        return self

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None, at: TracebackType | None) -> None:
        self.close()

    def _append(self, name: str, array: NDArray[Any]) -> None:
        text = io.BytesIO()
        np.save(text, array, allow_pickle=False)
        data = text.getvalue()
        start = self._end
        self._enter(name, data, start)
        self._file.seek(start)
        self._file.write(_local_header(name, data) + data + self._closing())
        self._file.flush()

    def _enter(self, name: str, data: bytes, start: int) -> None:
        self._directory += _directory_entry(name, data, start)
        self._members += 1
        self._end = start + len(_local_header(name, data)) + len(data)

    def _closing(self) -> bytes:
        return bytes(self._directory) + _directory_end(self._members, len(self._directory), self._end)


# --- the zip format: stored members, APPNOTE.TXT of PKWARE, 4.3 ----------------------------------------------------

LOCAL = struct.Struct("<4s5H3I2H")
CENTRAL = struct.Struct("<4s6H3I5H2I")
END = struct.Struct("<4s4H2IH")
END_64 = struct.Struct("<4sQ2H2I4Q")
LOCATOR_64 = struct.Struct("<4sIQI")
LARGE = 0xFFFFFFFF  # offsets from here on, and member counts from MANY on, need the 64-bit records
MANY = 0xFFFF
DATE = 0x21  # 1980-01-01: the same run writes the same bytes


def _local_header(name: str, data: bytes) -> bytes:
    size = len(data)
    return LOCAL.pack(b"PK\3\4", 20, 0, 0, 0, DATE, zlib.crc32(data), size, size, len(name), 0) + name.encode()


def _directory_entry(name: str, data: bytes, start: int) -> bytes:
    size = len(data)
    far = start >= LARGE
    extra = struct.pack("<2HQ", 1, 8, start) if far else b""
    version = 45 if far else 20
    sizes = (zlib.crc32(data), size, size, len(name), len(extra), 0, 0, 0, 0, LARGE if far else start)
    return CENTRAL.pack(b"PK\1\2", version, version, 0, 0, 0, DATE, *sizes) + name.encode() + extra


def _directory_end(members: int, size: int, start: int) -> bytes:
    if members < MANY and start + size < LARGE:
        return END.pack(b"PK\5\6", 0, 0, members, members, size, start, 0)
    end = END_64.pack(b"PK\6\6", END_64.size - 12, 45, 45, 0, 0, members, members, size, start)
    locator = LOCATOR_64.pack(b"PK\6\7", 0, start + size, 1)
    return end + locator + END.pack(b"PK\5\6", 0, 0, MANY, MANY, LARGE, LARGE, 0)


def _members(file: Any) -> Iterator[tuple[str, int, bytes]]:
    """Name, place and content of each whole member, from the front up to the first that is none."""
    start = 0
    file.seek(0)
    while len(header := file.read(LOCAL.size)) == LOCAL.size:
        magic, _, flags, method, _, _, crc, size, _, name_size, extra_size = LOCAL.unpack(header)
        if magic != b"PK\3\4" or flags or method or extra_size:
            return
        name = file.read(name_size)
        data = file.read(size)
        if len(data) != size or zlib.crc32(data) != crc:
            return
        yield name.decode("ascii", "replace"), start, data
        start = file.tell()
