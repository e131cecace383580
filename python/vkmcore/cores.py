"""How many threads a computation takes by default."""

from __future__ import annotations

import os


def usable_cores() -> int:
    """Cores that this process may use: those of its affinity where the system tells, else all."""
    if hasattr(os, "sched_getaffinity"):
        return len(os.sched_getaffinity(0))
    return os.cpu_count() or 1


def thread_count(threads: int | None) -> int:
    """The number asked for, or all usable cores.

    Raises:
        ValueError: below 1.
    """
    if threads is None:
        return usable_cores()
    if threads < 1:
        raise ValueError("threads must be at least 1")
    return threads
