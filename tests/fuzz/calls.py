"""One call of the extension by number: which callable, with which arguments, and what came of it as text."""

from __future__ import annotations

import hashlib
import signal
from collections.abc import Iterator
from contextlib import contextmanager
from functools import lru_cache
from pathlib import Path
from typing import Any

import _native
import numpy as np

from fuzz.interface import Callable, read
from fuzz.mutation import mutated_input
from fuzz.values import Values

# What a call may raise for what it cannot use.
EXPECTED = (TypeError, ValueError, RuntimeError, OverflowError, MemoryError, LookupError, OSError, ImportError)
ALLOWED_SECONDS = 0.4

# They do what a session should not: write to the terminal, or need a module of the user.
LEFT_OUT = {"print_canonical_derivation", "hyperbolic_volume_from_pd"}


class Stopped(Exception):
    """Raised by the alarm: the call was long, and could be ended."""


def _stop(*_: Any) -> None:
    raise Stopped


@contextmanager
def alarm(seconds: float) -> Iterator[None]:
    before = signal.signal(signal.SIGALRM, _stop)
    signal.setitimer(signal.ITIMER_REAL, seconds)
    try:
        yield
    finally:
        signal.setitimer(signal.ITIMER_REAL, 0.0)
        signal.signal(signal.SIGALRM, before)


@lru_cache(maxsize=1)
def _texts() -> dict[str, str]:
    knot = next(iter(_native.get_embedded_knot_files().values()))
    return {
        "knot.fseries": "\n".join(knot.splitlines()[:40]) + "\n",
        "legacy.fseries": "% legacy\n0 0 0\n1 0 0 1 0 0\n0 0.5 0 0.25 0 1\n",
        "ideal.txt": _native.find_ideal_ab_block_by_id("3:1:1") + "\n",
    }


def prepare(folder: Path) -> None:
    """The files that right arguments name."""
    for name, text in _texts().items():
        (folder / name).write_text(text)


def digest(value: Any) -> str:
    """The bits of a result as text: every float in full, every record by its attributes."""
    if isinstance(value, float):
        return value.hex() if value == value else "nan"
    if isinstance(value, complex):
        return f"({digest(value.real)},{digest(value.imag)})"
    if isinstance(value, np.ndarray):
        numbers = np.where(value != value, np.nan, value) if value.dtype.kind in "fc" else value
        return f"{value.dtype}{value.shape}{hashlib.sha256(np.ascontiguousarray(numbers).tobytes()).hexdigest()}"
    if isinstance(value, dict):
        return "{" + ",".join(f"{key}:{digest(item)}" for key, item in value.items()) + "}"
    if isinstance(value, list | tuple):
        return "[" + ",".join(digest(item) for item in value) + "]"
    if hasattr(type(value), "__members__"):
        return str(value)
    if type(value).__module__ == "_native":
        names = [name for name, kind in vars(type(value)).items() if isinstance(kind, property) and name != "__class__"]
        return type(value).__name__ + "{" + ",".join(f"{name}:{digest(getattr(value, name))}" for name in names) + "}"
    return repr(value)


def outcome(seed: str, number: int, folder: Path, hostility: float) -> tuple[str, str]:
    """The call's name, and its result or error as text. Raises what no call may raise."""
    functions, classes = read()
    values = Values(f"{seed}:{number}", folder, hostility)
    callables = [*functions, *(known for cls in classes.values() for known in cls.constructors)]
    chosen = values.random.choice([known for known in callables if known.name not in LEFT_OUT])
    if hostility > 0.0 and values.random.random() < 0.2:
        return mutated_input(values)
    try:
        with alarm(ALLOWED_SECONDS):
            return chosen.full_name, _called(chosen, values)
    except Stopped:
        return chosen.full_name, "stopped"
    except EXPECTED as error:
        kind = type(error).__name__
        return chosen.full_name, kind if isinstance(error, MemoryError) else f"{kind}: {str(error)[:60]}"


def _called(chosen: Callable, values: Values) -> str:
    positional: list[Any] = []
    named: dict[str, Any] = {}
    for argument in chosen.arguments:
        if argument.optional and values.random.random() < 0.5:
            continue
        value = values.of(argument.kind, argument.name)
        if argument.name.startswith("arg"):
            positional.append(value)
        else:
            named[argument.name] = value
    if chosen.owner is None:
        return digest(getattr(_native, chosen.name)(*positional, **named))
    owner = getattr(_native, chosen.owner)
    if chosen.name == "__init__":
        return digest(owner(*positional, **named))
    if not chosen.needs_object:
        return digest(getattr(owner, chosen.name)(*positional, **named))
    made = values.object(chosen.owner)
    result = digest(getattr(made, chosen.name)(*positional, **named))
    for reader in ("get_filaments", "get_positions", "get_tangents"):
        if hasattr(made, reader):
            result += digest(getattr(made, reader)())
    return result
