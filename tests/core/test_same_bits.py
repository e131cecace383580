"""The same digits whatever variants of its functions the C library takes for this processor, and no call of them."""

import os
import platform
import re
import shutil
import subprocess
import sys

import _native
import check_elementary
import pytest
from vkmcore import _engine

DIGEST = """
import hashlib
import _native as n, numpy as np
rng = np.random.default_rng(1)
out = []
evaluator = n.ParticleEvaluator("3:1:1", 300)
evaluator.relax(50, 0.01)
metrics = evaluator.compute_relativistic_metrics()
out += [metrics.time_dilation_map, evaluator.get_dimless_ropelength()]
out.append(np.array(n.sample_circle(1000)))
block = n.FourierBlock()
for axis in ("a_x", "b_x", "a_y", "b_y", "a_z", "b_z"):
    setattr(block, axis, rng.normal(size=12).tolist())
s = np.linspace(0.0, 700.0, 3000)
points = np.array(n.evaluate_fourier_block(block, s))
out += [points, n.compute_polygonal_gauss(points[:200], points[200:400]), np.array(n.compute_swirl_field(200, 0.3))]
exact = [v.tobytes() if isinstance(v, np.ndarray) else v for v in out]
print(hashlib.sha256(repr(exact).encode()).hexdigest())
"""


def digest(tunables):
    environment = dict(os.environ)
    environment.pop("GLIBC_TUNABLES", None)
    if tunables:
        environment["GLIBC_TUNABLES"] = tunables
    done = subprocess.run([sys.executable, "-c", DIGEST], env=environment, capture_output=True, text=True, check=True)
    return done.stdout


@pytest.mark.skipif(platform.libc_ver()[0] != "glibc", reason="tunables are glibc's")
def test_the_variant_of_libm_makes_no_difference():
    plain = digest("")
    for names in ("-FMA,-AVX2,-FMA4", "-AVX2_Usable,-FMA_Usable,-FMA4_Usable"):
        assert digest(f"glibc.cpu.hwcaps={names}") == plain


@pytest.mark.skipif(shutil.which("nm") is None, reason="needs nm of the binutils")
@pytest.mark.parametrize("module", [_native, _engine], ids=["_native", "_engine"])
def test_no_transcendental_function_of_libm_is_linked(module):
    symbols = subprocess.run(
        ["nm", "-D", "--undefined-only", module.__file__], capture_output=True, text=True, check=True
    )
    names = {re.sub("@.*", "", line.split()[-1]) for line in symbols.stdout.splitlines()}
    assert not names & {name + kind for name in check_elementary.NAMES for kind in ("", "f", "l")}


@pytest.mark.parametrize(
    ("line", "found"),
    [
        ("double y = std::sin(x);", ["std::sin"]),
        ("double y = ::cos(x) + __builtin_exp(x);", ["::cos", "__builtin_exp"]),
        ("return pow(x, 2.0) + std::expf(x);", ["pow", "std::expf"]),
        ("auto r = std::abs(std::complex<double>(a, b));", ["std::abs(std::complex"]),
        ("return vkm::log(x) + lane::log(x) + row.log(x) + make_exp(x) + std::sqrt(x); // std::tan(x)", []),
    ],
)
def test_the_check_of_the_sources_finds_a_planted_call(line, found, tmp_path, capsys):
    (tmp_path / "planted.cpp").write_text(f"{line}\n")
    assert [name for _, name in check_elementary.calls(line)] == found
    assert check_elementary.main([str(tmp_path)]) == (1 if found else 0)
    assert capsys.readouterr().out.count("planted.cpp:1:") == len(found)
