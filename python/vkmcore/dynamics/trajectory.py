"""Trajectories of filaments on disk: a `.npz` that grows by a member a frame and outlives its program.

An `.npz` is a zip of `.npy` members with their directory at the end. Before a new frame is written over that directory,
a copy of it is placed behind the room that the frame takes; the frame's entry is added to that copy last. So the file
ends in a whole directory of whole frames at any time, and `numpy.load` reads it, whether the program is killed or the
disk is full. Closed, a file has no gaps. This module reads without the directory: it walks the members from the front,
each with its length and checksum, up to the first that is torn.

The members are `run`, a text in JSON (see `Trajectory`), and `frame_000000`, `frame_000001`, ..., each a record with
the fields `time` (s), `step`, `message` (why the run ended there, or empty) and `points` (V, 3), the vertices of all
filaments one after the other.
"""

from __future__ import annotations

import io
import json
import math
import os
import struct
import zlib
from collections.abc import Callable, Iterator, Mapping, Sequence
from dataclasses import dataclass
from pathlib import Path
from types import TracebackType
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.dynamics.recorded import Recorded

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

FORMAT = 1
RUN = "run.npy"
FILAMENT_FIELDS = {"id": str, "carrier": str, "circulation": float, "source": bool, "ghost": bool, "size": int}


@dataclass(frozen=True)
class Frame:
    """The positions of all filaments at one moment."""

    time: float  # s
    step: int  # steps taken so far
    points: list[Points]  # (N, 3) for each filament
    message: str = ""  # why the run ended here


@dataclass(frozen=True, repr=False)
class Trajectory(Recorded):
    """What a trajectory file holds. It shows itself and goes on to other formats as a `Simulation` does."""

    frames: list[Frame]
    filaments: list[dict[str, Any]]  # of the run: id, circulation, ..., and size, the number of vertices
    settings: dict[str, Any]  # of the run: options, dt, cfl, ...


def described(filaments: Sequence[Mapping[str, Any]], sizes: Sequence[int]) -> list[dict[str, Any]]:
    """Filaments of so many vertices without their points, for the member `run`."""
    return [
        {
            "id": str(filament.get("id", "")),
            "carrier": str(filament.get("carrier", "A")),
            "circulation": float(filament.get("circulation", 1.0)),
            "source": bool(filament.get("source", True)),
            "ghost": bool(filament.get("ghost", False)),
            "size": size,
        }
        for filament, size in zip(filaments, sizes, strict=True)
    ]


class TrajectoryError(ValueError):
    """A file that is no trajectory; the text names file, member and reason."""


def load_trajectory(path: str | os.PathLike[str]) -> Trajectory:
    """Read all finished frames of a trajectory file, also of one whose run was killed.

    Raises:
        OSError: the file cannot be read.
        TrajectoryError: it is no trajectory; the text names file, frame and reason. It is a ValueError.
    """
    run: dict[str, Any] | None = None
    frames: list[Frame] = []
    with open(path, "rb") as file:
        for place, (name, _, data) in enumerate(_members(file)):
            where = "run" if place == 0 else f"frame {place - 1}"
            try:
                if run is None:
                    run = _run_from(name, data)
                else:
                    frames.append(_frame_from(name, data, run, frames))
            except TrajectoryError as error:
                raise TrajectoryError(f"{path}: {where}: {error}") from error.__cause__
    if run is None or not frames:
        raise TrajectoryError(f"{path}: not a trajectory: no {'run' if run is None else 'frame'} in it")
    return Trajectory(frames, run["filaments"], run["settings"])


def _run_from(name: str, data: bytes) -> dict[str, Any]:
    """The member `run`, checked."""
    if name != RUN:
        raise TrajectoryError(f"a member {RUN} is expected, not {name!r}")
    text = _array_from(data, lambda dtype, shape: dtype.kind == "U" and shape == ())
    try:
        run = json.loads(str(text))
    except (ValueError, RecursionError) as error:
        raise TrajectoryError(f"no JSON: {error}") from error
    if not isinstance(run, dict) or run.get("format") != FORMAT:
        raise TrajectoryError(f"its format is not {FORMAT}")
    filaments, settings = run.get("filaments"), run.get("settings")
    if not isinstance(settings, dict) or not isinstance(filaments, list):
        raise TrajectoryError("its settings must be a table, its filaments a list")
    for number, filament in enumerate(filaments, start=1):
        if not isinstance(filament, dict) or not all(
            _is_a(filament.get(key), kind) for key, kind in FILAMENT_FIELDS.items()
        ):
            raise TrajectoryError(f"filament {number}: its members must be {', '.join(FILAMENT_FIELDS)}")
        if filament["size"] < 0:
            raise TrajectoryError(f"filament {number}: its size is negative")
    return run


def _is_a(value: Any, kind: type) -> bool:
    if kind is float:
        return isinstance(value, int | float) and not isinstance(value, bool)
    return isinstance(value, kind) and (kind is not int or not isinstance(value, bool))


def _frame_from(name: str, data: bytes, run: dict[str, Any], before: list[Frame]) -> Frame:
    """A frame, checked against the filaments of the run and the frames before it."""
    if name != (expected := f"frame_{len(before):06d}.npy"):
        raise TrajectoryError(f"a member {expected} is expected, not {name!r}")
    sizes = [filament["size"] for filament in run["filaments"]]
    wanted = _record_type(sum(sizes))
    record = _array_from(data, lambda dtype, shape: dtype == wanted and shape == ())
    time, step = float(record["time"]), int(record["step"])
    if not math.isfinite(time) or (before and not (time >= before[-1].time and step >= before[-1].step)):
        raise TrajectoryError(f"time {time} s and step {step} do not follow those before")
    try:
        message = record["message"].item().decode()
    except UnicodeDecodeError as error:
        raise TrajectoryError(f"its message is no text: {error}") from error
    points = np.split(record["points"], np.cumsum(sizes)[:-1]) if sizes else []
    return Frame(time, step, points, message)


def _array_from(data: bytes, fits: Callable[[np.dtype[Any], tuple[int, ...]], bool]) -> NDArray[Any]:
    """The array of a member, if its type and shape are those that it must have: told from its header alone."""
    text = io.BytesIO(data)
    try:
        header: Any = np.lib.format  # which NumPy leaves without types
        version = header.read_magic(text)
        read = header.read_array_header_1_0 if version == (1, 0) else header.read_array_header_2_0
        shape, fortran, dtype = read(text)
    except Exception as error:  # NumPy reads headers by Python's own parser, and that may raise anything
        raise TrajectoryError(f"no array: {error}") from error
    if fortran or dtype.hasobject or not fits(dtype, shape):
        raise TrajectoryError(f"an array of type {dtype} and shape {shape}, which is not what the run has")
    body = data[text.tell() :]
    if len(body) != dtype.itemsize:
        raise TrajectoryError(f"{len(body)} bytes of {dtype.itemsize}")
    array: NDArray[Any] = np.frombuffer(body, dtype).reshape(()).copy()
    return array


def _record_type(vertices: int) -> np.dtype[Any]:
    return np.dtype([("time", "<f8"), ("step", "<i8"), ("message", "S96"), ("points", "<f8", (vertices, 3))])


class TrajectoryWriter:
    """Appends frames to a trajectory file. `create` and `reopen` make one; leaving a `with` block closes it."""

    def __init__(self, path: Path) -> None:
        self._path = path
        self._file = open(path, "r+b", buffering=0)
        self._entries = bytearray()  # of the directory
        self._members = 0
        self._end = 0  # of the members
        for name, start, data in _members(self._file):
            self._enter(name, data, start)
        self._size = self._file.seek(0, os.SEEK_END)
        self._tail = self._end  # no directory begins before it, and the file ends in one that begins there or behind

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
        writer._tidy()
        return writer

    def append(self, frame: Frame) -> None:
        """Write one frame; once this returns, the frame survives the program."""
        points = np.concatenate([np.zeros((0, 3)), *frame.points])
        record = np.zeros((), _record_type(len(points)))
        record["time"], record["step"], record["message"] = frame.time, frame.step, frame.message.encode()
        record["points"] = points
        # The member `run` is the first, so frames count from 0.
        self._append(f"frame_{self._members - 1:06d}.npy", record)

    def close(self) -> None:
        """End the file: its directory moves up to its frames."""
        try:
            if not self._file.closed and self._tail != self._end:
                self._tidy()
        finally:
            self._file.close()

    def __enter__(self) -> TrajectoryWriter:
        return self

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None, at: TracebackType | None) -> None:
        self.close()

    def _append(self, name: str, array: NDArray[Any]) -> None:
        text = io.BytesIO()
        np.save(text, array, allow_pickle=False)
        data = text.getvalue()
        member = _local_header(name, data) + data
        room = self._end + len(member)
        if self._tail < room:
            self._move_directory(room)
        self._write(self._end, member)
        # Now the directory learns of it, by the one write that counts.
        known, members, end = len(self._entries), self._members, self._end
        self._enter(name, data, end)
        try:
            self._write(self._tail + known, bytes(self._entries[known:]) + self._last_part(self._tail))
        except BaseException:
            del self._entries[known:]
            self._members, self._end = members, end
            self._write(self._tail + known, self._last_part(self._tail))
            raise

    def _move_directory(self, at: int) -> None:
        """Place the directory at `at` or behind it, the file being whole all the while.

        Behind itself it leaves a gap of its own length, so that it moves only when frames have filled that: a run is
        written in linear time.
        """
        length = len(self._closing(at))
        if at + length > self._tail:
            at = max(at, self._size)
        self._write(at, self._closing(at))
        self._tail = at
        self._cut(at + length)

    def _tidy(self) -> None:
        """Place the directory right behind the members."""
        if self._end + len(self._closing(self._end)) > self._tail:
            self._move_directory(max(self._size, self._end + 2 * len(self._closing(self._size))))
        self._move_directory(self._end)

    def _write(self, at: int, data: bytes) -> None:
        """Write bytes. What a failure leaves behind the end of the file is cut off, so that it still ends in its
        directory."""
        rest = memoryview(data)
        try:
            while rest:
                self._file.seek(at)
                written = self._file.write(rest)
                rest, at = rest[written:], at + written
        except OSError as error:
            self._file.truncate(self._size)
            raise type(error)(error.errno, error.strerror, str(self._path)) from error
        self._size = max(self._size, at)

    def _cut(self, size: int) -> None:
        self._file.truncate(size)
        self._size = size

    def _enter(self, name: str, data: bytes, start: int) -> None:
        self._entries += _directory_entry(name, data, start)
        self._members += 1
        self._end = start + len(_local_header(name, data)) + len(data)

    def _closing(self, at: int) -> bytes:
        """The directory, for a place in the file."""
        return bytes(self._entries) + self._last_part(at)

    def _last_part(self, at: int) -> bytes:
        """What follows the entries of a directory at that place."""
        return _directory_end(self._members, len(self._entries), at)


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
