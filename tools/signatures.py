"""Signatures of bound functions, as pybind11 writes them into docstrings.

They are read here for the stubs, for the reference and for the table of the interface.

    name(a: float, b: int = 3) -> list[float]

A function with overloads says `Overloaded function.` and numbers them. Arguments bound without a name are called arg0,
arg1, ... and come by position only.
"""

from __future__ import annotations

import re
from dataclasses import dataclass

HEAD = r"^(?:\d+\. )?{name}\((?!\*args)(?P<arguments>.*)\)(?: -> (?P<result>.+))?$"


@dataclass(frozen=True)
class Parameter:
    """An argument as it is written: each text None where nothing stands."""

    name: str
    kind: str | None = None
    default: str | None = None

    @property
    def unnamed(self) -> bool:
        """Whether it comes by position only."""
        return re.fullmatch(r"arg\d+", self.name) is not None


@dataclass(frozen=True)
class Overload:
    parameters: tuple[Parameter, ...]
    result: str
    text: str  # the docstring below the signature and an empty line


def split_arguments(text: str) -> list[str]:
    """What stands between the commas that are in no bracket."""
    parts: list[str] = []
    depth = begin = 0
    for place, letter in enumerate(text):
        depth += (letter in "[({") - (letter in "])}")
        if letter == "," and depth == 0:
            parts.append(text[begin:place])
            begin = place + 1
    parts.append(text[begin:])
    return [part.strip() for part in parts if part.strip()]


def parameters(text: str) -> tuple[Parameter, ...]:
    """The parameters between the brackets of a signature; those before a `/` get names as if bound without one."""
    found: list[Parameter] = []
    for part in split_arguments(text):
        if part == "/":
            found = [Parameter(f"arg{place}", known.kind, known.default) for place, known in enumerate(found)]
            continue
        match = re.match(r"(\*{0,2}\w*)(?:: ([^=]+?))?(?:\s*=\s*(.*))?$", part, re.DOTALL)
        assert match is not None, part
        found.append(Parameter(*match.groups()))
    return tuple(found)


def overloads(name: str, docstring: str | None) -> list[Overload]:
    """The overloads of a function in the order in which they are tried; none where the docstring has no signature."""
    text = docstring or ""
    heads = list(re.finditer(HEAD.format(name=re.escape(name)), text, re.MULTILINE))
    ends = [head.start() for head in heads[1:]] + [len(text)]
    return [
        Overload(parameters(head["arguments"]), head["result"] or "", text[head.end() : end].removeprefix("\n\n"))
        for head, end in zip(heads, ends, strict=True)
    ]
