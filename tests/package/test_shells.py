"""The program in shells of all kinds: what the environment says of terminal, language and home changes no output."""

import os
import subprocess
import sys

import pytest

SHELLS = {
    "bare": {},
    "dumb": {"TERM": "dumb", "LANG": "C", "HOME": "/"},
    "no such home": {"TERM": "xterm", "HOME": "/proc/none", "LC_ALL": "C"},
}


def said(arguments, **environment):
    """(stdout, stderr) of a command that nothing but these variables surrounds."""
    kept = {
        name: os.environ[name] for name in ("PATH", "PYTHONPATH", "LD_PRELOAD", "ASAN_OPTIONS") if name in os.environ
    }
    command = [sys.executable, "-m", "vkmcore", *arguments]
    result = subprocess.run(command, capture_output=True, env=kept | environment)
    assert result.returncode == 0, result.stderr
    return result.stdout, result.stderr


@pytest.mark.parametrize("shell", SHELLS)
def test_commands_say_the_same(tmp_path, shell):
    pytest.importorskip("matplotlib")
    name = str(tmp_path / "a ring\u00e9.png")
    output, remarks = said(["spectrum", "--points", "11", "--levels", "2", "--plot", name], **SHELLS[shell])
    assert remarks.decode() == f"wrote {name}\n" and os.path.getsize(name) > 1000
    assert output == said(["spectrum", "--points", "11", "--levels", "2"])[0] != b""
