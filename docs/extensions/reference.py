"""The reference, written anew at each build from the docstrings of the built module.

A page a room of src/, a section a `bind_*.cpp` file: a name stands under the file that registers it, so that names
added later find their place by themselves.
"""

from __future__ import annotations

import enum
import re
from collections import defaultdict
from collections.abc import Iterator, Sequence
from pathlib import Path

from signatures import Parameter, overloads

DOCS = Path(__file__).resolve().parents[1]
SOURCES = DOCS.parent / "src"
ROOMS = ("knot", "filament", "tube", "mass", "spectral", "evidence", "formulas", "module")
WORDS = {"biot": "Biot", "savart": "Savart", "fourier": "Fourier", "kelvin": "Kelvin", "magnus": "Magnus",
         "bernoulli": "Bernoulli", "maxwell": "Maxwell", "nnls": "NNLS", "vkm": "VKM", "qss": "QSS", "kam": "KAM",
         "nls": "NLS", "ab": "Ab", "frenet": "Frenet"}  # fmt: skip

ARRAY = r"typing\.Annotated\[numpy\.typing\.(?:ArrayLike|NDArray)(?:\[[\w.]+\])?, numpy\.\w+[^\]]*\]"
TYPES = [
    (r"typing\.SupportsFloat \| typing\.SupportsIndex", "float"),
    (r"typing\.SupportsInt \| typing\.SupportsIndex", "int"),
    (r"typing\.SupportsComplex(?: \| typing\.Supports(?:Float|Index))*", "complex"),
    (r"collections\.abc\.Sequence\[", "list["),
    (r"collections\.abc\.Mapping\[", "dict["),
    (ARRAY, "array"),
    (r"numpy\.typing\.NDArray\[[\w.]+\]", "array"),
    (r"numpy\.ndarray(?:\[[^\]]*\])?", "array"),
    (r'typing\.Annotated\[list\[float\], "FixedSize\(3\)"\]', "Vec3"),
    (r'typing\.Annotated\[(list\[\w+\]), "FixedSize\(\d+\)"\]', r"\1"),
    (r"<(?:_native\.)?(\w+) object at 0x[0-9a-f]+>", r"\1()"),
    (r"<(\w+\.\w+): -?\d+>", r"\1"),
    (r"\b(?:_native|typing|collections\.abc)\.", ""),
]


def plain_types(signature: str) -> str:
    """Python types as a reader would say them: float, list[Vec3], array."""
    previous = None
    while signature != previous:
        previous = signature
        for pattern, plain in TYPES:
            signature = re.sub(pattern, plain, signature)
    return signature


def spoken(parameters: Sequence[Parameter], name: str, text: str) -> str:
    """The parameters as a reader would say them: those without a name get the names that the text gives them, as in
    "name(a, b): ..." or "Of (a, b): ..."."""
    names = {p.name: p.name for p in parameters}
    places = [p.name for p in parameters if p.unnamed]
    for said in re.findall(rf"(?:(?<![\w.]){name}|\b[Oo]f )\(([\w, ]+)\)", text) if places else ():
        words = [word.strip().replace(" ", "_") for word in said.split(",")]
        if len(words) == len(places) == len(set(words)) and all(word.isidentifier() for word in words):
            names.update(zip(places, words, strict=True))
            break
    parts = []
    for p in parameters:
        kind = f": {plain_types(p.kind)}" if p.kind else ""
        default = f" = {plain_types(p.default)}" if p.default else ""
        parts.append(names[p.name] + kind + default)
    if places:
        parts.insert(parameters.index(next(p for p in parameters if p.name == places[-1])) + 1, "/")
    return f"({', '.join(parts)})"


def signatures_of(name: str, docstring: str) -> list[tuple[str, str]]:
    """(signature, text) of each overload; the signature is empty where the docstring has none."""
    found = []
    for overload in overloads(name, docstring):
        parameters = [p for p in overload.parameters if p.name != "self"]
        result = "" if overload.result in ("", "None") else f" -> {plain_types(overload.result)}"
        found.append((spoken(parameters, name, overload.text) + result, overload.text))
    return found or [("", docstring.strip())]


def text_lines(text: str) -> Iterator[str]:
    """A docstring's prose as reStructuredText: paragraphs, indented formulas as literal blocks."""
    for paragraph in re.split(r"\n\s*\n", text.strip("\n")):
        if not paragraph.strip():
            continue
        literal: list[str] = []
        for line in [*paragraph.split("\n"), ""]:
            if line.startswith("    ") and line.strip():
                literal.append(line)
                continue
            if literal:
                yield from ("", "::", "", *literal, "")
                literal = []
            marker = re.match(r"[-*] ", line)
            if marker:
                yield ""
            yield ("- " if marker else "") + inline(line[2:] if marker else line)
        yield ""


def inline(text: str) -> str:
    """Quoted names stay names; nothing else is markup."""
    parts = re.split(r"`+([^`]+)`+", text)
    return "".join(
        f"\\ ``{part}``\\ " if place % 2 else re.sub(r"([\\*|_`<>])", r"\\\1", part) for place, part in enumerate(parts)
    )


def indented(lines: Iterator[str] | list[str], by: int = 3) -> Iterator[str]:
    for line in lines:
        yield " " * by + line if line else ""


def function_lines(name: str, docstring: str, kind: str, options: tuple[str, ...] = ()) -> Iterator[str]:
    """A directive with one signature an overload, then the texts."""
    found = signatures_of(name, docstring)
    signatures = [f"{name}{signature or '()'}" for signature, _ in found]
    yield f".. py:{kind}:: {signatures[0]}"
    yield from (" " * (9 + len(kind)) + signature for signature in signatures[1:])
    yield from indented([f":{option}:" for option in options])
    yield ""
    seen = set()
    for number, (_, text) in enumerate(found, start=1):
        if text.strip() in seen:
            continue
        seen.add(text.strip())
        lines = list(text_lines(text))
        if len(found) > 1 and lines:
            lines[0] = f"*Form {number}.* {lines[0]}"
        yield from indented(lines)


def enumeration_lines(name: str, kind: type) -> Iterator[str]:
    yield f".. py:class:: {name}"
    yield ""
    yield from indented(text_lines(re.split(r"\n\s*Members:", kind.__doc__ or "")[0]))
    for member, value in kind.__members__.items():  # type: ignore[attr-defined]
        yield f"   .. py:attribute:: {member}"
        yield f"      :value: {int(value)}"
        yield ""


def class_lines(name: str, kind: type) -> Iterator[str]:
    if hasattr(kind, "__members__") or issubclass(kind, enum.Enum):
        yield from enumeration_lines(name, kind)
        return
    members = dict(vars(kind))
    constructor = members.pop("__init__", None)
    docstring = getattr(constructor, "__doc__", "") or ""
    found = signatures_of("__init__", docstring) if "__init__(" in docstring else [("", "")]
    signatures = [name + (re.sub(r" -> .*", "", signature) if signature != "()" else "") for signature, _ in found]
    yield f".. py:class:: {signatures[0]}"
    yield from (" " * 14 + signature for signature in signatures[1:])
    yield ""
    yield from indented(text_lines(kind.__doc__ or ""))
    for number, (_, text) in enumerate(found, start=1):
        lines = list(text_lines(text))
        if len(found) > 1 and lines:
            lines[0] = f"*Constructor {number}.* {lines[0]}"
        yield from indented(lines)
    for member, value in members.items():
        if member.startswith("_"):
            continue
        if isinstance(value, property):
            yield from indented(property_lines(member, value))
        elif isinstance(value, staticmethod):
            yield from indented(list(function_lines(member, getattr(kind, member).__doc__ or "", "staticmethod")))
        elif callable(value):
            yield from indented(list(function_lines(member, value.__doc__ or "", "method")))


def property_lines(name: str, value: property) -> Iterator[str]:
    yield f".. py:attribute:: {name}"
    signature = re.search(r" -> (.+)$", (getattr(value.fget, "__doc__", "") or "").split("\n")[0])
    if signature:
        yield f"   :type: {plain_types(signature[1])}"
    yield ""
    text = value.__doc__ or ""
    text = text.partition("\n")[2] if re.match(r"^\(.*\) -> ", text) else text
    if value.fset is None:
        text = (text.rstrip() + " Read-only.").strip()
    yield from indented(text_lines(text))


def homes(names: list[str]) -> dict[tuple[str, str], list[str]]:
    """(room, binder file) -> names that it registers, both in the order of the folder."""
    found: dict[tuple[str, str], list[str]] = defaultdict(list)
    left = list(names)
    for room in ROOMS:
        for path in sorted((SOURCES / room).rglob("*.cpp")):
            if "bind" not in path.name:
                continue
            literals = set(re.findall(r'"(\w+)"', re.sub(r"py::arg\(\"\w+\"\)", "", path.read_text(encoding="utf-8"))))
            here = [name for name in left if name in literals]
            if here:
                found[room, path.stem.removeprefix("bind_")] = here
                left = [name for name in left if name not in here]
    if left:
        found["module", "others"] = found.get(("module", "others"), []) + left
    return found


def title(words: str) -> str:
    spoken = [WORDS.get(word, word) for word in words.split("_")]
    return " ".join([spoken[0][:1].upper() + spoken[0][1:], *spoken[1:]]).replace("Biot Savart", "Biot-Savart")


def write_pages(folder: Path) -> None:
    import _native

    table = _native.list_bindings()
    delattr(_native, "__all__")  # as it was before the call
    names = sorted([*table["functions"], *table["classes"], *table["attributes"], "list_bindings"], key=str.lower)
    pages: dict[str, list[str]] = {}
    for (room, binder), here in homes(names).items():
        lines = pages.setdefault(room, [f"{title(room)} reference", "=" * 60, "", ".. py:currentmodule:: vkmcore", ""])
        lines += [title(binder), "-" * 60, ""]
        for name in sorted(here, key=lambda name: (not isinstance(getattr(_native, name), type), name.lower())):
            value = getattr(_native, name)
            if isinstance(value, type):
                lines += [*class_lines(name, value), ""]
            else:
                lines += [*function_lines(name, value.__doc__ or "", "function"), ""]
    folder.mkdir(exist_ok=True)
    for path in folder.glob("*.rst"):
        if path.stem not in pages:
            path.unlink()
    for room, lines in pages.items():
        path, text = folder / f"{room}.rst", "\n".join(lines) + "\n"
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            path.write_text(text, encoding="utf-8")


def setup(app: object) -> dict[str, bool]:
    app.connect("builder-inited", lambda _: write_pages(DOCS / "reference"))  # type: ignore[attr-defined]
    return {"parallel_read_safe": True, "parallel_write_safe": True}
