"""Check that the compiled code runs on every x86-64 machine.

    python tools/check_instructions.py build/dev

Reads the object files of a build with objdump. Instructions beyond the baseline (SSE3 and later) may stand in clones
of a kernel and in the hand-written kernels' own files, in functions that are called only where the processor has them.
They must not stand anywhere else, least of all in an inline function: the linker keeps one copy of it for all callers.
"""

from __future__ import annotations

import re
import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path

# All mnemonics that begin with v are AVX's, but for two. `tzcnt` is how objdump shows a harmless `rep bsf`.
BASELINE_V = {"verr", "verw"}
EXTENSIONS = re.compile(
    r"popcnt|crc32\w*|lzcnt|andn|bextr|bls[irm]\w*|mulx|rorx|s[ah][lr]x|movbe|round[sp][sd]|pshufb|palignr|pblend\w+|"
    r"blendv?p[sd]|ptest|pmulld|pmuldq|p(?:min|max)(?:s[bd]|u[wd])|pmov[sz]x\w+|p(?:insr|extr)[bdq]|insertps|"
    r"extractps|dpp[sd]|h(?:add|sub)p[sd]|addsubp[sd]|mov(?:d|sh|sl)dup|lddqu|pabs[bwd]|phadd\w+|psign[bwd]|pcmpeqq|"
    r"pcmpgtq|packusdw|mpsadbw|movntdqa"
)
CLONE = re.compile(r"\.arch_x86_64_v[234]\b")
HAND_WRITTEN = re.compile(r"(_wide|/wide|/kernel)\.cpp\.o$")

FUNCTION = re.compile(r"^[0-9a-f]+ <(.+)>:$")
SECTION = re.compile(r"^Disassembly of section (.+):$")
INSTRUCTION = re.compile(r"^ +[0-9a-f]+:\t(?:(?:rep|repz|repnz|lock|bnd|notrack|data16|cs) )*([a-z]\w*)")


def beyond_baseline(mnemonic: str) -> bool:
    if mnemonic.startswith("v"):
        return mnemonic not in BASELINE_V
    return EXTENSIONS.fullmatch(mnemonic) is not None


def offenders(path: Path) -> Iterator[tuple[str, str]]:
    """The functions of an object file that need more than the baseline, each with its first such instruction."""
    command = ["objdump", "-d", "--no-show-raw-insn", str(path)]
    section = function = reported = ""
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as run:
        assert run.stdout is not None
        for line in run.stdout:
            if found := INSTRUCTION.match(line):
                if function == reported or not beyond_baseline(found[1]) or CLONE.search(function):
                    continue
                shared = section.startswith((".text._Z", ".text.unlikely._Z"))
                if shared or not HAND_WRITTEN.search(str(path)):
                    reported = function
                    yield function, found[1]
            elif found := FUNCTION.match(line):
                function = found[1]
            elif found := SECTION.match(line):
                section = found[1]
    if run.returncode:
        raise SystemExit(run.returncode)


def main(build: Path) -> int:
    objects = sorted(build.rglob("*.o"))
    if not objects:
        raise SystemExit(f"{build}: no object files")
    found = [(path, function, mnemonic) for path in objects for function, mnemonic in offenders(path)]
    for path, function, mnemonic in found:
        print(f"{path}: {function}: {mnemonic}", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    raise SystemExit(main(Path(sys.argv[1])))
