"""The watch over the processes that make random calls."""

import sys
import time

from fuzz.children import Variant, make_calls

# Between two calls when it is told to end, and its word that it has begun the next comes after that.
BEGINS_AS_IT_ENDS = """
import os, signal, time
def end(*_):
    os.write(1, b"8 ...\\n")
    signal.signal(signal.SIGTERM, signal.SIG_DFL)
    os.kill(os.getpid(), signal.SIGTERM)
signal.signal(signal.SIGTERM, end)
os.write(1, b"7 ...\\n")
time.sleep(0.1)
os.write(1, b"7 sum 0123 0.1\\n")
time.sleep(10)
"""
IN_A_CALL_WHEN_TIME_IS_OVER = """
import os, time
os.write(1, b"7 ...\\n")
time.sleep(0.1)
os.write(1, b"7 sum 0123 0.1\\n8 ...\\n")
time.sleep(3)
os.write(1, b"8 sum 4567 0.1\\n")
time.sleep(10)
"""
DIES_IN_A_CALL = "import os; os.write(1, b'7 ...\\n'); os.abort()"


def calls_of(script):
    child = Variant("child", None, prefix=(sys.executable, "-c", script))
    return make_calls(child, "1", 7, 3, 0.0, time.monotonic() + 1.0)


def test_what_was_told_to_end_is_no_finding():
    run = calls_of(BEGINS_AS_IT_ENDS)
    assert run.outcomes == {7: ("sum", "0123")} and run.findings == []


def test_a_call_is_waited_for_when_time_is_over():
    run = calls_of(IN_A_CALL_WHEN_TIME_IS_OVER)
    assert run.outcomes == {7: ("sum", "0123"), 8: ("sum", "4567")} and run.findings == []


def test_a_call_that_ends_its_process_is_a_finding():
    assert calls_of(DIES_IN_A_CALL).findings[0].startswith("child: call 7 of seed 1 ended the process (-6)")
