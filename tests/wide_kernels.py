"""A switch between the hand-written kernels and their plain twins, for tests that hold both against the formulas."""

import ctypes

import _native
import pytest


def _want_wide(wanted: bool) -> bool:
    want = ctypes.CDLL(_native.__file__).vkm_want_wide
    return bool(want(int(wanted)))


@pytest.fixture(params=["hand-written", "plain"])
def kernels(request):
    """Runs a test with the hand-written kernels, where the machine has them, and with the plain ones."""
    wanted = request.param == "hand-written"
    if _want_wide(wanted) != wanted:
        pytest.skip("no hand-written kernels on this machine")
    yield request.param
    _want_wide(True)
