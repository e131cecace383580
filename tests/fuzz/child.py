"""Calls one after the other, each named on the standard output before it is made and with its outcome after it.

    python -m fuzz.child SEED FIRST COUNT HOSTILITY [--plain] [--patient]

With --plain the hand-written kernels are off; with --patient a call may take minutes.
"""

from __future__ import annotations

import ctypes
import faulthandler
import hashlib
import os
import resource
import sys
import tempfile
import time
import warnings
from pathlib import Path

import _native

from fuzz import calls


def main() -> None:
    seed, first, count, hostility = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), float(sys.argv[4])
    faulthandler.enable()
    warnings.simplefilter("ignore")
    if "--patient" in sys.argv:
        calls.ALLOWED_SECONDS = 120.0  # emulated processors are slow
    if "--plain" in sys.argv:
        ctypes.CDLL(_native.__file__).vkm_want_wide(0)
    if hostility > 0.0 and "ASAN_OPTIONS" not in os.environ:
        resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
    out = os.fdopen(os.dup(1), "w", buffering=1)
    os.dup2(os.open(os.devnull, os.O_WRONLY), 1)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        os.chdir(folder)
        for number in range(first, first + count):
            calls.prepare(folder)
            out.write(f"{number} ...\n")
            begin = time.process_time()
            what, text = calls.outcome(seed, number, folder, hostility)
            seconds = time.process_time() - begin
            text = text.replace(str(folder), "")
            short = text if text == "stopped" else hashlib.sha256(text.encode("utf-8", "replace")).hexdigest()[:16]
            out.write(f"{number} {what} {short} {seconds:.3f}\n")


if __name__ == "__main__":
    main()
