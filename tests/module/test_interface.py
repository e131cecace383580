"""The whole interface: every public name of the extension held against the table in interface.txt."""

import ast
import re
from pathlib import Path

import _native
import pytest
import signatures

KINDS = ("record", "result", "class", "static", "enum")


class Entry:
    """A name of the table: its kind ("function" or one of KINDS), its members or its signature, its docstrings."""

    def __init__(self, kind, name, signature=None):
        self.kind, self.name, self.signature = kind, name, signature
        self.members, self.docs = [], []


def read_table():
    """{section: entries}; lines belong to what they are indented under."""
    sections = {}
    for line in (Path(__file__).parent / "interface.txt").read_text(encoding="utf-8").splitlines():
        text = line.strip()
        if not text or text.startswith("#"):
            continue
        if text.startswith("["):
            entries = sections.setdefault(text[1:-1], [])
        elif match := re.match(r'(\.\.\.)?(".*")$', text):
            holder = entries[-1].members[-1] if line.startswith("    ") else entries[-1]
            holder.docs.append((match[1] is None, ast.literal_eval(match[2])))
        elif line.startswith(" "):
            entries[-1].members.append(member(text))
        elif text.split()[0] in KINDS:
            entries.append(Entry(*text.split()))
        else:
            entries.append(member(text))
    return sections


def member(text):
    """A line of the table: an attribute with the expression of its value, or a function."""
    if match := re.match(r"(static )?(\w+)\((.*)\)$", text):
        return Entry("static" if match[1] else "function", match[2], normal(signatures.parameters(match[3])))
    match = re.match(r"(get )?(\w+)(?: = (.*))?$", text)
    return Entry("get" if match[1] or match[3] is None else "attribute", match[2], match[3])


def normal(parameters):
    """[(name, default)]: the name is None where it cannot be given, the default None where there is none."""
    return [(None if p.unnamed else p.name, normal_default(p.default)) for p in parameters]


def normal_default(default):
    """One spelling for a default: the value's own, `Enumeration.Member`, or the text as it stands."""
    if default is None:
        return None
    try:
        return repr(ast.literal_eval(default))
    except (ValueError, SyntaxError):
        return re.sub(r"<(\w+\.\w+): -?\d+>", r"\1", default)


def overloads(function, is_method=False):
    """[(parameters, docstring)] of a bound function, in the order in which they are tried."""
    found = signatures.overloads(function.__name__, function.__doc__)
    return [(normal(overload.parameters[is_method:]), overload.text) for overload in found]


TABLE = read_table()
ENTRIES = [(section, entry) for section, entries in TABLE.items() for entry in entries]
CLASSES = [pytest.param(entry, id=entry.name) for _, entry in ENTRIES if entry.kind in KINDS and entry.kind != "enum"]
ENUMS = [pytest.param(entry, id=entry.name) for _, entry in ENTRIES if entry.kind == "enum"]
FUNCTIONS = list(dict.fromkeys(entry.name for _, entry in ENTRIES if entry.kind == "function"))


def check_docs(entry, doc):
    for opens, text in entry.docs:
        assert doc.startswith(text) if opens else text in doc


def test_names_are_those_of_the_51_binders_and_no_others():
    names = {name for name in dir(_native) if not name.startswith("_")}
    assert len(TABLE) == 51 + 1 and list(TABLE)[-1] == "list_bindings"
    assert len(ENUMS) == 17
    assert sorted(names - {entry.name for _, entry in ENTRIES}) == []
    assert sorted({entry.name for _, entry in ENTRIES} - names) == []
    for _, entry in ENTRIES:
        assert isinstance(getattr(_native, entry.name), type) == (entry.kind in KINDS)


def test_binders_ran_in_their_order():
    places = {}
    for place, entries in enumerate(TABLE.values()):
        for entry in entries:
            places.setdefault(entry.name, place)
    order = [places[name] for name in vars(_native) if name in places]
    assert order == sorted(order)
    masses = [name for name in vars(_native) if re.match("build_inv|predict_|make_knot|evaluate_(single|knot)", name)]
    assert masses == [entry.name for entry in TABLE["knot"] if entry.name in masses]


@pytest.mark.parametrize("name", FUNCTIONS)
def test_functions(name):
    wanted = [entry for _, entry in ENTRIES if entry.name == name]
    found = overloads(getattr(_native, name))
    assert [signature for signature, _ in found] == [entry.signature for entry in wanted]
    for entry, (_, doc) in zip(wanted, found, strict=True):
        check_docs(entry, doc)


def value_of(thing):
    """A value as the table compares it: a record by its attributes, with the type of every number."""
    if type(thing).__module__ == "_native" and not hasattr(thing, "__members__"):
        names = [name for name, kind in vars(type(thing)).items() if isinstance(kind, property)]
        return type(thing).__name__, [value_of(getattr(thing, name)) for name in names]
    return repr(thing)


@pytest.mark.parametrize("entry", CLASSES)
def test_classes(entry):
    cls = getattr(_native, entry.name)
    found = []
    for name, value in vars(cls).items():
        if name in ("__class__", "__slotnames__"):  # guarded against assignment; left behind by copy.copy
            continue
        if isinstance(value, property):
            found.append(("attribute" if value.fset else "get", name, None))
        elif name == "__init__" and type(value).__name__ == "instancemethod":
            found += [("function", "new", signature) for signature, _ in overloads(getattr(cls, name), True)]
        elif name not in {"__init__", "__doc__", "__module__", "_pybind11_conduit_v1_"}:
            is_static = isinstance(value, staticmethod)
            kind = "static" if is_static and entry.kind != "static" else "function"
            found += [(kind, name, signature) for signature, _ in overloads(getattr(cls, name), not is_static)]
            assert is_static or entry.kind != "static"
    wanted = [Entry("function", "new", [])] if entry.kind == "record" else []
    wanted += entry.members
    attributes = ("attribute", "get")
    assert found == [(m.kind, m.name, None if m.kind in attributes else m.signature) for m in wanted]
    for m in entry.members:
        if m.docs:
            check_docs(m, overloads(getattr(cls, m.name))[0][1])
        if m.signature and m.kind in attributes:
            expected = eval(m.signature, vars(_native))
            assert value_of(getattr(cls(), m.name)) == value_of(expected), m.name
    if not any(kind == "function" and name == "new" for kind, name, _ in found):
        with pytest.raises(TypeError, match="No constructor defined!"):
            cls()


def test_lists_are_read_as_copies_and_records_as_references():
    for _, entry in ENTRIES:
        for m in entry.members if entry.kind == "record" else []:
            owner = getattr(_native, entry.name)()
            value = getattr(owner, m.name)
            if isinstance(value, list):
                value.append(0.0)
                assert len(getattr(owner, m.name)) == len(value) - 1
            elif m.signature.endswith("()"):
                names = [name for name in dir(value) if not name.startswith("_")]
                name, old = next((n, v) for n in names if isinstance(v := getattr(value, n), (float, str)))
                new = old + ("x" if isinstance(old, str) else 1.0)
                setattr(value, name, new)
                assert getattr(getattr(owner, m.name), name) == new


@pytest.mark.parametrize("entry", ENUMS)
def test_enumerations(entry):
    cls = getattr(_native, entry.name)
    members = {m.name: int(m.signature) for m in entry.members}
    assert {name: item.value for name, item in cls.__members__.items()} == members
    assert list(cls.__members__) == list(members)
    for name, value in members.items():
        item = getattr(cls, name)
        assert cls(value) == item and int(item) == value and item.name == name and str(item) == f"{entry.name}.{name}"
        assert item != value  # no number
    with pytest.raises(TypeError):
        item < item  # noqa: B015


def test_overloads_are_chosen_by_their_arguments():
    rows = [[0.0, 1.0, 2.0], [3.0, 4.0, 5.0], [6.0, 7.0, 9.0]]
    assert _native.compute_vorticity(rows) == [2.0, -4.0, 2.0] == _native.compute_vorticity(grad=rows)
    field = _native.compute_vorticity([0.0] * 9, [0.0, 0.0, 0.0, 1.0, 0.0, 4.0, 0.0, 0.0, 0.0], 3, 3, 0.5, 1.0)
    assert field == [0.0] * 4 + [3.0] + [0.0] * 4
    v, w = [[1.0, 0.0, 0.0], [0.0, 0.1, 0.0]], [[2.0, 0.0, 0.0], [0.0, 1.0, 0.0]]
    assert _native.compute_helicity(v, w, 0.5) == 1.05
    assert _native.compute_helicity(v, w) == 1.0499999523162842  # a mean, in single precision
    with pytest.raises(TypeError):
        _native.compute_helicity(velocity=v, vorticity=w)
