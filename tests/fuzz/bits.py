"""The same calls on emulated processors from the oldest x86-64 to the newest, and with the tunables of glibc that take
its variants away: all must give the same bits.

    python -m fuzz.bits [--calls 3000] [--build build/dev]

Emulation needs qemu-x86_64 (package qemu-user). Without it, and on other machines, that part is left out with a word.
"""

from __future__ import annotations

import argparse
import math
import platform
import shutil
import sys
from pathlib import Path

from fuzz.children import Run, Variant, differences, make_calls

# What the emulator has, by the level of the instruction set.
PROCESSORS = ("qemu64", "Conroe", "Nehalem", "SandyBridge", "Haswell", "Skylake-Client", "EPYC", "max")
TUNABLES = (
    "glibc.cpu.hwcaps=-FMA,-AVX2",
    "glibc.cpu.hwcaps=-AVX512F,-AVX512VL,-AVX512DQ",
    "glibc.cpu.hwcaps=-FMA,-FMA4,-AVX,-AVX2,-AVX512F,-SSE4_1",
)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--calls", type=int, default=3000)
    parser.add_argument("--emulated-calls", type=int, default=1000, help="of them on each emulated processor")
    parser.add_argument("--seed", default="bits")
    parser.add_argument("--build", type=Path)
    options = parser.parse_args()
    patient = ("--patient",)
    here = Variant("this processor", options.build, patient)
    variants = [Variant("plain kernels", options.build, (*patient, "--plain"))]
    variants += [Variant(text, options.build, patient, (), {"GLIBC_TUNABLES": text}) for text in TUNABLES]
    emulator = shutil.which("qemu-x86_64")
    if emulator is None or platform.machine() != "x86_64":
        print("no emulated processors: qemu-x86_64 is missing (package qemu-user), or this is no x86-64")
    else:
        variants += [Variant(cpu, options.build, patient, (emulator, "-cpu", cpu)) for cpu in PROCESSORS]
    runs: dict[str, Run] = {}
    findings: list[str] = []
    for variant in [here, *variants]:
        count = options.emulated_calls if variant.prefix else options.calls
        run = make_calls(variant, options.seed, 0, count, 0.0, math.inf)
        if variant.prefix and not run.outcomes and any("numpy" in text.lower() for text in run.findings):
            print(f"{variant.name}: left out, NumPy needs a newer processor")
            continue
        runs[variant.name] = run
        findings += run.findings
        print(f"{variant.name}: {len(run.outcomes)} calls, "
              f"{len(differences({here.name: runs[here.name], variant.name: run}))} differ")  # fmt: skip
    findings += differences(runs)
    for finding in findings[:40]:
        print(finding)
    print("the same bits everywhere" if not findings else f"{len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
