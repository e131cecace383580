"""The public callables of the extension with the types of their arguments, read from the stubs of the package."""

from __future__ import annotations

import ast
from dataclasses import dataclass, field
from functools import lru_cache
from pathlib import Path

STUBS = Path(__file__).resolve().parents[2] / "python" / "vkmcore" / "_native.pyi"


@dataclass(frozen=True)
class Argument:
    name: str
    kind: ast.expr  # its annotation
    optional: bool


@dataclass(frozen=True)
class Callable:
    name: str
    owner: str | None  # its class
    arguments: tuple[Argument, ...]
    needs_object: bool  # a method: `self` is made first

    @property
    def full_name(self) -> str:
        return f"{self.owner}.{self.name}" if self.owner else self.name


@dataclass
class Class:
    name: str
    constructors: list[Callable] = field(default_factory=list)
    attributes: dict[str, ast.expr] = field(default_factory=dict)  # those that can be written


def _arguments(node: ast.FunctionDef, is_method: bool) -> tuple[Argument, ...]:
    given = [*node.args.posonlyargs, *node.args.args]
    first_default = len(given) - len(node.args.defaults)
    found = [
        Argument(argument.arg, argument.annotation, place >= first_default)
        for place, argument in enumerate(given)
        if argument.annotation is not None
    ]
    found += [
        Argument(argument.arg, argument.annotation, default is not None)
        for argument, default in zip(node.args.kwonlyargs, node.args.kw_defaults)
        if argument.annotation is not None
    ]
    return tuple(found)


def _decorators(node: ast.FunctionDef) -> set[str]:
    return {ast.unparse(decorator) for decorator in node.decorator_list}


@lru_cache(maxsize=1)
def read() -> tuple[tuple[Callable, ...], dict[str, Class]]:
    """All functions and methods, overloads each for itself, and all classes."""
    functions: list[Callable] = []
    classes: dict[str, Class] = {}
    for node in ast.parse(STUBS.read_text(encoding="utf-8")).body:
        if isinstance(node, ast.FunctionDef):
            functions.append(Callable(node.name, None, _arguments(node, False), False))
        if not isinstance(node, ast.ClassDef):
            continue
        known = classes.setdefault(node.name, Class(node.name))
        for member in node.body:
            if not isinstance(member, ast.FunctionDef):
                continue
            marks = _decorators(member)
            if f"{member.name}.setter" in marks:
                known.attributes[member.name] = _arguments(member, True)[-1].kind
            elif "property" in marks:
                continue
            elif member.name == "__init__":
                known.constructors.append(Callable("__init__", node.name, _arguments(member, True), False))
            elif not member.name.startswith("__"):
                static = "staticmethod" in marks
                functions.append(Callable(member.name, node.name, _arguments(member, not static), not static))
    usable = [known for known in functions if not known.needs_object or classes[known.owner or ""].constructors]
    return tuple(usable), classes
