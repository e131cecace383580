"""The bar of a long run, on terminals of all kinds."""

import pytest
from vkmcore.progress import progress_bar


def draw(capsys, monkeypatch, term, visible=True, **options):
    """What standard error gets, on a terminal of that kind whatever this one is."""
    for name in ("NO_COLOR", "COLUMNS"):
        monkeypatch.delenv(name, raising=False)
    monkeypatch.setenv("TERM", term)
    monkeypatch.setenv("TTY_COMPATIBLE", "1")
    monkeypatch.setenv("FORCE_COLOR", "1")
    with progress_bar(4, visible, **options) as tell:
        tell(1, "ropelength 40.1234")
    return capsys.readouterr().err


@pytest.mark.parametrize(("counted", "expected"), [(True, "1/4"), (False, "-:--:--")])
def test_the_bar_moves(capsys, monkeypatch, counted, expected):
    shown = draw(capsys, monkeypatch, "xterm", counted=counted)
    assert "ropelength 40.1234" in shown and expected in shown


def test_nothing_is_drawn_where_it_cannot_move_or_nobody_looks(capsys, monkeypatch):
    assert "ropelength" not in draw(capsys, monkeypatch, "dumb")
    assert draw(capsys, monkeypatch, "xterm", visible=False) == ""
