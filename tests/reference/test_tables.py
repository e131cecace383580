"""The tables of knots and links: names, aliases, what is refused."""

from collections import Counter

import pytest
from vkmcore.reference import UnknownName, find, knots, links, tables


def test_the_tables_are_whole():
    # Prime knots and links by crossing number: OEIS A002863 and Thistlethwaite's table of links.
    assert [Counter(entry.crossings for entry in knots())[n] for n in range(3, 11)] == [1, 1, 2, 3, 7, 21, 49, 165]
    assert [Counter(entry.crossings for entry in links())[n] for n in range(2, 10)] == [1, 0, 1, 1, 6, 9, 29, 83]
    assert {entry.name for entry in knots() if entry.crossings == 10} == {f"10_{n}" for n in range(1, 166)}
    for entry in (*knots(), *links()):
        assert len(entry.pd) == entry.crossings
        assert len(entry.diagram.components) == entry.components
    assert sum(bool(entry.amphicheiral) for entry in knots()) == 20
    assert min(entry.ropelength for entry in knots()) == find("3_1").ropelength == 32.7436


@pytest.mark.parametrize(
    ("name", "found"),
    [
        ("3_1", "3_1"),
        ("3:1:1", "3_1"),
        ("Trefoil", "3_1"),
        ("the trefoil knot", "3_1"),
        ("K3a1", "3_1"),
        ("figure-eight", "4_1"),
        ("[2 2]", "4_1"),
        ("Conway [22]", "4_1"),
        ("DT: [4, 6, 2]", "3_1"),
        ("DT 4 6 8 2", "4_1"),
        ("10:1:165", "10_165"),
        ("whitehead link", "L5a1"),
        ("5^2_1", "L5a1"),
        ("l6A4", "L6a4"),
        ("Hopf", "L2a1"),
    ],
)
def test_names(name, found):
    assert find(name).name == found


@pytest.mark.parametrize(("name", "near"), [("trefol", "3_1"), ("8_22", "8_21"), ("L5a9", "L5a1"), ("", "")])
def test_unknown_names_get_near_ones(name, near):
    with pytest.raises(UnknownName, match="no knot or link") as error:
        find(name)
    assert near in str(error.value)


def test_larger_knots_are_read_from_their_package():
    pytest.importorskip("database_knotinfo")
    assert find("11a_367").geometry.startswith("torus knot")
    assert find("K12a1202").name == "12a_1202"
    assert find("L10a1").components > 1
    with pytest.raises(UnknownName):
        find("11a_9999")


def test_without_the_package_the_extra_is_named(monkeypatch):
    tables._large_index.cache_clear()
    tables._large_knots.cache_clear()
    monkeypatch.setitem(__import__("sys").modules, "database_knotinfo", None)
    with pytest.raises(ImportError, match=r"vkmcore\[catalogue\]"):
        find("11a_1")
