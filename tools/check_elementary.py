"""Find calls of the C library's transcendental functions in the C++ sources.

python tools/check_elementary.py [folder ...]

Their last digits depend on the processor and on the library's version. src calls those of core/elementary.hpp instead,
as vkm::sin and so on. Roots, remainders and roundings (sqrt, fma, fmod, floor, ldexp, ...) are exact everywhere and
may be called. Prints every other call with file and line, and fails if there is one.
"""

from __future__ import annotations

import re
import sys
from pathlib import Path

NAMES = (
    "sin cos tan sincos asin acos atan atan2 sinh cosh tanh asinh acosh atanh exp exp2 exp10 expm1 log log2 log10 "
    "log1p pow hypot cbrt erf erfc tgamma lgamma polar cexp clog cpow cabs carg"
).split()
# A call by the standard's or the compiler's name, or by the bare one; not vkm::sin, lane::log, x.log or make_exp.
CALL = re.compile(
    rf"(?<![\w.>:])(?P<scope>std\s*::\s*|::\s*|__builtin_|)(?P<name>{'|'.join(NAMES)})(?P<kind>[fl]?)\s*\("
)
TEXT = re.compile(r'R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|//[^\n]*|/\*(?:.|\n)*?\*/')
COMPLEX_ABS = re.compile(r"\bstd\s*::\s*(?:abs|arg|norm|polar|exp|log|pow)\s*\(\s*(?:std\s*::\s*)?[Cc]omplex\b")
# Where the functions themselves are declared and defined, bare names are theirs.
OWN = ("core/elementary.hpp", "core/elementary/", "spectral/lane_functions.hpp")


def without_text(source: str) -> str:
    """The source with comments and strings blanked, line by line as before."""
    return TEXT.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), source)


def calls(source: str, *, own: bool = False) -> list[tuple[int, str]]:
    """Line and text of each call in a source; of own ones, bare names are passed over."""
    found = []
    code = without_text(source)
    for match in CALL.finditer(code):
        scope = match.group("scope").strip()
        if own and not scope:
            continue
        found.append((code.count("\n", 0, match.start("name")) + 1, scope + match.group("name") + match.group("kind")))
    for match in COMPLEX_ABS.finditer(code):
        found.append((code.count("\n", 0, match.start()) + 1, match.group()))
    return sorted(found)


def main(folders: list[str]) -> int:
    count = 0
    for folder in folders:
        for path in sorted(p for p in Path(folder).rglob("*") if p.suffix in (".cpp", ".hpp")):
            own = any(part in path.as_posix() for part in OWN)
            for line, name in calls(path.read_text(encoding="utf-8"), own=own):
                print(f"{path}:{line}: {name}: call vkm::{name.split(':')[-1]} of core/elementary.hpp")
                count += 1
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:] or ["src"]))
