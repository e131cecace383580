"""Child processes that make calls, on one build each: started, watched, ended; their outcomes by number."""

from __future__ import annotations

import os
import select
import signal
import subprocess
import sys
import time
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SILENT_SECONDS = 300.0  # without a line: the call cannot be ended
LATE_SECONDS = 1.5  # of processor time: the alarm, and a second to answer it


@dataclass(frozen=True)
class Variant:
    """A build, and how its calls are made."""

    name: str
    build: Path | None = None  # folder with the extension; the installed one without
    flags: tuple[str, ...] = ()
    prefix: tuple[str, ...] = ()  # an emulator
    environment: dict[str, str] = field(default_factory=dict)

    def settings(self) -> dict[str, str]:
        paths = [str(ROOT / "tests")]
        if self.build is not None:
            paths = [str(self.build.resolve()), str(ROOT / "python"), *paths]
        settings = {**os.environ, "PYTHONPATH": os.pathsep.join(paths), "PYTHONHASHSEED": "0", **self.environment}
        if self.build is not None and is_sanitized(self.build):
            libraries = [printed("g++", f"-print-file-name=lib{name}.so") for name in ("asan", "ubsan")]
            settings.update(
                LD_PRELOAD=" ".join(libraries),
                ASAN_OPTIONS="detect_leaks=0:allocator_may_return_null=1",
                UBSAN_OPTIONS="print_stacktrace=1",
                PYTHONMALLOC="malloc",
            )
        return settings


@dataclass
class Run:
    """What the calls of a variant gave, and what went wrong."""

    outcomes: dict[int, tuple[str, str]] = field(default_factory=dict)  # number: name, digest
    findings: list[str] = field(default_factory=list)


def printed(*command: str) -> str:
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()


def is_sanitized(build: Path) -> bool:
    cache = build / "CMakeCache.txt"
    return cache.is_file() and "VKM_SANITIZE:BOOL=ON" in cache.read_text()


def make_calls(variant: Variant, seed: str, first: int, count: int, hostility: float, deadline: float) -> Run:
    """Calls first .. first + count - 1. A child that dies costs its call, and another goes on behind it."""
    run = Run()
    number = first
    while number < first + count and time.monotonic() < deadline:
        number = _one_child(run, variant, seed, number, first + count - number, hostility, deadline)
    return run


def _one_child(run: Run, variant: Variant, seed: str, first: int, count: int, hostility: float, deadline: float) -> int:
    arguments = (seed, str(first), str(count), str(hostility), *variant.flags)
    command = [*variant.prefix, sys.executable, "-X", "utf8", "-m", "fuzz.child", *arguments]
    child = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=variant.settings(), bufsize=0)
    assert child.stdout is not None and child.stderr is not None
    os.set_blocking(child.stderr.fileno(), False)
    begun: int | None = None
    told_to_end = False
    complaint = rest = b""
    heard = time.monotonic()
    while True:
        ready = select.select([child.stdout, child.stderr], [], [], 1.0)[0]
        if child.stderr in ready:
            complaint = (complaint + (child.stderr.read() or b""))[-6000:]
        if child.stdout in ready:
            chunk = child.stdout.read(1 << 16)
            if not chunk:
                break
            heard = time.monotonic()
            *lines, rest = (rest + chunk).split(b"\n")
            for line in lines:
                begun = _note(run, variant, line.decode())
        if time.monotonic() > deadline and begun is None:
            told_to_end = True  # by now it may have begun another call, whose line is still on its way
            child.terminate()
        if time.monotonic() - heard > SILENT_SECONDS:
            run.findings.append(f"{variant.name}: call {begun} of seed {seed} cannot be ended")
            child.kill()
            break
    code = child.wait()
    text = (complaint + (child.stderr.read() or b"")).decode(errors="replace")
    child.stdout.close()
    child.stderr.close()
    if told_to_end and code == -signal.SIGTERM:
        return max(run.outcomes, default=first - 1) + 1
    if begun is not None:
        run.findings.append(f"{variant.name}: call {begun} of seed {seed} ended the process ({code})\n{text}")
        return begun + 1
    if code != 0 and time.monotonic() < deadline:
        run.findings.append(f"{variant.name}: the process ended with {code}\n{text}")
        return first + count
    return max(run.outcomes, default=first - 1) + 1


def _note(run: Run, variant: Variant, line: str) -> int | None:
    """Takes down a line of a child; the number of the call that is under way, if one is."""
    words = line.split()
    if len(words) == 2:
        return int(words[0])
    number, name, digest, seconds = int(words[0]), words[1], words[2], float(words[3])
    run.outcomes[number] = (name, digest)
    if seconds > LATE_SECONDS and not variant.prefix and "--patient" not in variant.flags:
        run.findings.append(f"{variant.name}: call {number} ({name}) took {seconds} s of processor time")
    return None


def differences(runs: dict[str, Run]) -> list[str]:
    """The calls that were made to their end in all runs and did not give the same bits."""
    (first_name, first), *others = runs.items()
    found = []
    for name, run in others:
        for number in sorted(first.outcomes.keys() & run.outcomes.keys()):
            mine, theirs = first.outcomes[number], run.outcomes[number]
            if mine != theirs and "stopped" not in (mine[1], theirs[1]):
                found.append(f"call {number} ({mine[0]}): {first_name} and {name} differ")
    return found
