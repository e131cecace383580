"""Files that are written as a whole or not at all.

The bytes go to a temporary file beside the target, which replaces it once they are on the disk: a full disk, a crash or
an error leaves what stood there before. Mode and, where allowed, owner are kept, and symbolic links are followed.
Written in place are devices and pipes, files with several names, and files in folders that take no new ones.
"""

from __future__ import annotations

import io
import os
import stat
from collections.abc import Iterator
from contextlib import contextmanager, suppress
from pathlib import Path
from typing import BinaryIO


@contextmanager
def replacing(path: str | os.PathLike[str]) -> Iterator[BinaryIO]:
    """A buffer that replaces the file at `path` when the block ends without an error.

    OSError, with the path, if the file cannot be written.
    """
    buffer = io.BytesIO()
    yield buffer
    write_bytes(path, buffer.getvalue())


def write_text(path: str | os.PathLike[str], text: str) -> None:
    """Replace a file by a text in UTF-8. OSError, with the path, if it cannot be written."""
    write_bytes(path, text.encode("utf-8"))


def write_bytes(path: str | os.PathLike[str], data: bytes) -> None:
    """Replace a file by these bytes. OSError, with the path, if it cannot be written."""
    try:
        _write(os.path.realpath(path), data)
    except OSError as error:
        raise type(error)(error.errno, error.strerror, str(path)) from error


def _write(target: str, data: bytes) -> None:
    old = os.stat(target) if os.path.exists(target) else None
    if old is not None and stat.S_ISREG(old.st_mode) and not os.access(target, os.W_OK):
        raise PermissionError(13, "Permission denied", target)
    if old is None or (stat.S_ISREG(old.st_mode) and old.st_nlink == 1):
        beside = os.path.join(os.path.dirname(target), f".vkmcore-{os.getpid()}-{os.urandom(4).hex()}.tmp")
        try:
            descriptor = os.open(beside, os.O_WRONLY | os.O_CREAT | os.O_EXCL | os.O_CLOEXEC, 0o666)
        except PermissionError:
            if old is None:
                raise
        else:
            _replace(target, descriptor, beside, data, old)
            return
    with open(target, "r+b" if old is not None and stat.S_ISREG(old.st_mode) else "wb", buffering=0) as file:
        if old is not None and stat.S_ISREG(old.st_mode):
            _reserve(file.fileno(), old.st_size, len(data))
        _write_all(file.fileno(), data)


def _replace(target: str, descriptor: int, beside: str, data: bytes, old: os.stat_result | None) -> None:
    try:
        try:
            if old is not None:
                with suppress(OSError):  # only root may give files away
                    os.fchown(descriptor, old.st_uid, old.st_gid)
                os.fchmod(descriptor, stat.S_IMODE(old.st_mode))
            _write_all(descriptor, data)
            os.fsync(descriptor)
        finally:
            os.close(descriptor)
        os.replace(beside, target)
    except BaseException:
        Path(beside).unlink(missing_ok=True)
        raise


def _reserve(descriptor: int, before: int, size: int) -> None:
    """Space for all of the new content before any of the old is overwritten."""
    if size > before and hasattr(os, "posix_fallocate"):
        try:
            os.posix_fallocate(descriptor, before, size - before)
        except OSError:
            os.ftruncate(descriptor, before)
            raise
    os.ftruncate(descriptor, size)


def _write_all(descriptor: int, data: bytes) -> None:
    rest = memoryview(data)
    while rest:
        rest = rest[os.write(descriptor, rest) :]
