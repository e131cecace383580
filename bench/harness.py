"""What a benchmark is, and how it is timed.

A file `bench_<family>.py` has a function `cases()` that returns a list of `Case`. `run.py` times all of them and prints
one table: our time, the NumPy form that a user would write instead, the plain scalar C++ loop of the same formula, and
both ratios, all from one run.

The plain loops live in `plain_<family>.cpp` as `extern "C"` functions; CMake builds them into one shared library
(`-DVKM_BENCH=ON`), which `plain()` loads with ctypes.
"""

from __future__ import annotations

import ctypes
import os
import time
from collections.abc import Callable
from dataclasses import dataclass
from pathlib import Path

import numpy as np


@dataclass
class Case:
    """One line of the table. `numpy` and `plain` may be missing; `work` counts the pairs of a call."""

    name: str
    size: str
    ours: Callable[[], object]
    numpy: Callable[[], object] | None = None
    plain: Callable[[], object] | None = None
    work: float = 0.0
    target_plain: float | None = None  # least ratio plain / ours that is aimed at
    target_numpy: float | None = None
    target_simsopt: float | None = None
    target_seconds: float | None = None
    simsopt: Callable[[], object] | None = None  # the same sum by simsopt's compiled part, where it is installed
    note: str | Callable[[], str] = ""  # or what finds it, where that takes long


def best_time(call: Callable[[], object], *, budget: float = 1.0, least: int = 1, most: int = 50) -> float:
    """Least wall time of a call over as many runs as fit in `budget` seconds, in seconds."""
    best = float("inf")
    spent = 0.0
    runs = 0
    while runs < least or (spent < budget and runs < most):
        start = time.perf_counter()
        call()
        seconds = time.perf_counter() - start
        best = min(best, seconds)
        spent += seconds
        runs += 1
    return best


_library: ctypes.CDLL | None = None


def plain(name: str) -> Callable[..., object]:
    """A function of the library of plain loops, taking float64 arrays (as pointers), ints (64-bit) and floats.

    A plain loop that returns a number is declared `double` in C++ and read by setting `restype` on the result.
    """
    global _library
    if _library is None:
        folder = Path(os.environ.get("VKM_BENCH_DIR", Path(__file__).resolve().parent.parent / "build" / "release"))
        _library = ctypes.CDLL(str(folder / "libvkm_plain_loops.so"))
    function = _library[name]  # indexing gives a fresh function object each time
    function.restype = ctypes.c_double

    def call(*arguments: object) -> object:
        return function(*(_to_c(argument) for argument in arguments))

    return call


def _to_c(argument: object) -> object:
    if isinstance(argument, np.ndarray):
        if argument.dtype != np.float64 or not argument.flags.c_contiguous:
            raise TypeError("plain loops take contiguous float64 arrays")
        return ctypes.c_void_p(argument.ctypes.data)
    if isinstance(argument, int | np.integer):
        return ctypes.c_int64(int(argument))
    return ctypes.c_double(float(argument))
