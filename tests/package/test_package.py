"""The package around the extension: its names, its types, and the texts that show how it is used."""

import re
import subprocess
import sys
from pathlib import Path

import _native
import numpy as np
import pytest
import vkmcore

PROJECT = Path(__file__).resolve().parents[2]


def run(*arguments, **options):
    return subprocess.run([sys.executable, *arguments], capture_output=True, text=True, **options)


def test_every_public_name_of_the_extension_is_the_package_s():
    names = [name for name in dir(_native) if not name.startswith("_")]
    assert sorted(vkmcore.__all__) == sorted(names)
    assert all(getattr(vkmcore, name) is getattr(_native, name) for name in names)
    stated = re.search(r"project\(vkmcore VERSION ([0-9.]+)", (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8"))
    assert vkmcore.__version__ == stated[1]
    with pytest.raises(AttributeError, match="no_such_name"):
        vkmcore.no_such_name  # noqa: B018


def test_a_filtered_listing_before_the_import_hides_no_name():
    program = (
        "import _native; assert not hasattr(_native, '__all__'); _native.list_bindings('fourier')\n"
        "kept = list(_native.__all__)\n"
        "import vkmcore; assert 'ParticleEvaluator' in vkmcore.__all__; assert _native.__all__ == kept\n"
    )
    assert run("-c", program).stderr == ""
    assert run("-c", "import vkmcore, _native; assert not hasattr(_native, '__all__')").stderr == ""


def test_the_command_line_starts_without_what_few_commands_need():
    program = "import sys, vkmcore.cli; print([m for m in ('rich', 'matplotlib', 'ctypes') if m in sys.modules])"
    assert run("-c", program).stdout == "[]\n"


def test_the_typed_stubs_are_those_of_the_built_module():
    pytest.importorskip("pybind11_stubgen")
    check = run(str(PROJECT / "tools" / "make_stubs.py"), "--check")
    assert check.returncode == 0, check.stdout + check.stderr


def test_the_package_is_consistently_typed():
    pytest.importorskip("mypy")
    if np.lib.NumpyVersion(np.__version__) >= "2.3.0":
        pytest.skip("the code is written for the types of NumPy 2.2, which newer ones change")
    check = run("-m", "mypy", "--cache-dir=/dev/null", cwd=PROJECT)
    assert check.returncode == 0, check.stdout + check.stderr


def test_the_readme_s_python_runs(capsys):
    snippets = re.findall(r"```python\n(.*?)```", (PROJECT / "README.md").read_text(encoding="utf-8"), re.DOTALL)
    assert snippets
    for snippet in snippets:
        exec(compile(snippet, "README.md", "exec"), {})
    shown = capsys.readouterr().out
    catalogued, relaxed, evaluated = map(float, re.findall(r"(\S+) MeV", shown))
    assert catalogued > 0.0 and abs(relaxed / catalogued - 1.0) < 0.1
    assert abs(evaluated / catalogued - 1.0) < 1e-2  # the same shape at more points
    assert abs(float(re.search(r"writhe (\S+)", shown)[1])) > 1.0 and "catalogued Pass" in shown


def test_the_example_runs():
    result = run(str(PROJECT / "examples" / "resolution_study.py"), "0:1:1", "60", "120")
    assert result.returncode == 0, result.stderr
    masses = [float(mass) for mass in re.findall(r"^ +\d+ +\S+ +(\S+)$", result.stdout, re.MULTILINE)]
    # A circle keeps its shape, so the inscribed polygons' lengths approach 2 pi from below.
    assert len(masses) == 4 and masses[0] < masses[1] and masses[2] < masses[3]
