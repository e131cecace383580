"""The bar on standard error that shows how far a long run is."""

from __future__ import annotations

import sys
import time
from collections.abc import Callable, Iterator
from contextlib import contextmanager

LEAST_PAUSE = 0.1  # s between two drawings


def watched() -> bool:
    """Whether standard error is a terminal, where somebody may look at a bar."""
    return sys.stderr is not None and sys.stderr.isatty()


@contextmanager
def progress_bar(total: float, visible: bool, *, counted: bool = True) -> Iterator[Callable[[float, str], None]]:
    """A bar that is told how much is done and what to say of it, and disappears at the end; nothing unless `visible`.

    It is drawn only when it is told something, at most every `LEAST_PAUSE` seconds: the interpreter has no moment to
    turn a spinner while the library computes.

    Args:
        total: what makes the whole.
        visible: whether to draw it; `watched()` as a rule.
        counted: show the numbers done and in all, for steps; the time left otherwise.
    """
    if not visible:
        yield lambda done, words: None
        return
    from rich.console import Console
    from rich.progress import BarColumn, MofNCompleteColumn, Progress, TextColumn, TimeRemainingColumn

    columns = (
        TextColumn("{task.description}", markup=False),
        BarColumn(bar_width=24),
        MofNCompleteColumn() if counted else TimeRemainingColumn(),
    )
    with Progress(*columns, console=Console(stderr=True), transient=True, auto_refresh=False) as bar:
        task = bar.add_task("", total=total)
        drawn = float("-inf")

        def tell(done: float, words: str) -> None:
            nonlocal drawn
            now = time.monotonic()
            due = now - drawn >= LEAST_PAUSE
            drawn = now if due else drawn
            bar.update(task, completed=done, description=words, refresh=due)

        yield tell
