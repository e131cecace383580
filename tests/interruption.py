"""Long calls that a signal ends."""

import signal
from contextlib import contextmanager

import pytest


class Stopped(Exception):
    """What the signal's handler raises."""


def stop(*_):
    raise Stopped


@contextmanager
def ended_by_a_signal(seconds=0.1):
    """The block must end by the exception of a signal's handler, which runs after so many seconds."""
    before = signal.signal(signal.SIGALRM, stop)
    signal.setitimer(signal.ITIMER_REAL, seconds)
    try:
        with pytest.raises(Stopped):
            yield
    finally:
        signal.setitimer(signal.ITIMER_REAL, 0.0)
        signal.signal(signal.SIGALRM, before)
