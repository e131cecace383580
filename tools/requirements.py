"""Print the requirements of the project and of its extras, one a line, for pip.

    python tools/requirements.py dev docs | pip install -r /dev/stdin

Those of the build system and of the package itself come first. An extra may name others, as `vkmcore[plot]`.
"""

from __future__ import annotations

import re
import sys
from collections.abc import Iterator
from pathlib import Path
from typing import Any

if sys.version_info >= (3, 11):
    import tomllib
else:
    import tomli as tomllib

PYPROJECT = Path(__file__).resolve().parents[1] / "pyproject.toml"


def of_extra(project: dict[str, Any], extra: str) -> Iterator[str]:
    """The requirements of an extra and of those that it names."""
    for requirement in project["optional-dependencies"][extra]:
        if own := re.fullmatch(rf"{project['name']}\[([\w, -]+)\]", requirement):
            for other in own[1].split(","):
                yield from of_extra(project, other.strip())
        else:
            yield requirement


def main(extras: list[str]) -> None:
    table = tomllib.loads(PYPROJECT.read_text(encoding="utf-8"))
    found = [*table["build-system"]["requires"], *table["project"]["dependencies"]]
    for extra in extras:
        found += of_extra(table["project"], extra)
    print("\n".join(dict.fromkeys(found)))


if __name__ == "__main__":
    main(sys.argv[1:])
