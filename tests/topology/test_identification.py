"""Names of knots and links, and certificates."""

import itertools
import random

import numpy as np
import pytest
from vkmcore import Link
from vkmcore.ideal.starts import braid_polygon, grid_polygon, torus_polygon
from vkmcore.reference import find, knots, links
from vkmcore.topology import (
    CertificateError,
    certify,
    complements,
    diagram_of_code,
    diagram_of_curves,
    identify,
    same_type,
)
from vkmcore.topology.bracket import unoriented_jones
from vkmcore.topology.identification import known_types
from vkmcore.topology.link_sums import composite_polynomials

needs_snappy = pytest.mark.skipif(not complements.available(), reason="SnapPy is not installed")


def test_invariants_tell_all_types_to_ten_crossings_apart():
    """What makes an identification a proof: no two known types agree in all invariants."""
    groups = {}
    for kind in known_types():
        groups.setdefault((kind.jones, kind.alexander, kind.signature), []).append(kind)
    assert len(known_types()) > 500
    for group in groups.values():
        for one, other in itertools.combinations(group, 2):
            forms = one.linking_form(), other.linking_form()
            apart_by_form = None not in forms and forms[0] != forms[1]
            assert apart_by_form or one.coloured_jones() != other.coloured_jones(), (one.name, other.name)


SAMPLE = [find(name) for name in ("3_1", "4_1", "5_1", "9_42", "10_71", "10_132", "10_165")]


def is_named(entry, mirrored):
    diagram = entry.diagram.mirrored() if mirrored else entry.diagram
    found = identify(diagram, use_snappy=False)
    expected = (
        "amphicheiral" if entry.amphicheiral else "mirror image of the table's" if mirrored else "as in the table"
    )
    assert (found.name, found.chirality, found.decided) == (entry.name, expected, True)


@pytest.mark.parametrize("mirrored", [False, True])
@pytest.mark.parametrize("entry", SAMPLE + random.Random(5).sample(knots(), 12), ids=lambda entry: entry.name)
def test_knots_are_named_by_polynomials(entry, mirrored):
    is_named(entry, mirrored)


@pytest.mark.long
@pytest.mark.parametrize("mirrored", [False, True])
@pytest.mark.parametrize("entry", knots(), ids=lambda entry: entry.name)
def test_all_knots_are_named_by_polynomials(entry, mirrored):
    is_named(entry, mirrored)


def test_the_unknot_unlinks_and_sums():
    circle = np.array([[0.0, 0, 0], [1, 0, 0], [0, 1, 0]])
    assert str(identify(circle)) == "0_1"
    assert identify([circle, circle + 5.0]).name == "unlink of 2 components"
    granny = identify(braid_polygon([1, 1, 1, 2, 2, 2]).components[0], use_snappy=False)
    square = identify(braid_polygon([1, 1, 1, -2, -2, -2]).components[0], use_snappy=False)
    assert (granny.name, granny.decided) == ("3_1 # 3_1", True)
    assert (square.name, square.decided) == ("3_1 # m3_1", True)
    # Shares Jones and Alexander polynomials and the signature with 9_12.
    assert identify(braid_polygon([1, -2, 1, -2, 3, 3, 3, 4, -3, 4]).components, use_snappy=False).name == "4_1 # 5_2"


def test_beyond_the_table_polynomials_only_propose():
    found = identify(torus_polygon(3, 7).components, use_snappy=False)
    assert not found.decided
    assert (found.name, found.candidates) == (None, ())


@needs_snappy
@pytest.mark.parametrize("name", ["11n_34", "11n_42", "11a_100", "12n_242"])
def test_larger_knots_by_their_complements(name):
    pytest.importorskip("database_knotinfo")
    found = identify(grid_polygon(find(name).grid).components)
    assert (found.name, found.chirality, found.decided) == (name, "as in the table", True)


@needs_snappy
@pytest.mark.parametrize("name", ["L5a1", "L6a4", "L7n2", "L9a40", "L9n28"])
def test_links_are_named_and_proved_by_complements(name):
    found = identify(grid_polygon(find(name).grid).components)
    assert (found.name, found.decided) == (name, True)
    assert found.chirality in ("as in the table", "amphicheiral")


def test_links_are_proved_by_polynomials_that_no_other_has():
    shared = "L6a2 L8a11 L8n6 L9a21 L9a24 L9a27 L9a30 L9n18 L9n19".split()  # with each other, sums and unions
    for entry in [*random.Random(3).sample(links(), 10), find("L6a2"), find("L9n19")]:
        found = identify(entry.diagram, use_snappy=False)
        assert entry.name in found.candidates and found.decided == (entry.name not in shared)
        assert found.name == entry.name or not found.decided
    assert str(identify(find("L2a1").diagram, use_snappy=False)) == "L2a1, amphicheiral"
    assert str(identify(find("L4a1").diagram.mirrored(), use_snappy=False)) == "L4a1, mirror image of the table's"


@pytest.mark.parametrize(
    ("word", "strands", "crossings"),
    [((1, 1, 2, 2), 3, 4), ((1, 1, 1), 3, 3), ((1, 1, -2, -2, -2), 3, 5), ((1, 1), 4, 2), ((), 3, 0)],
)
def test_sums_and_unions_have_the_polynomials_that_rule_them_out(word, strands, crossings):
    diagram = diagram_of_curves(Link.from_braid(word, strands=strands).points())
    polynomial, parts = unoriented_jones(diagram), len(diagram.components)
    assert polynomial in composite_polynomials(crossings, parts)
    assert crossings < 2 or polynomial not in composite_polynomials(crossings - 1, parts)
    found = identify(diagram, use_snappy=False)
    assert not found.decided or found.name.startswith("unlink")


@pytest.mark.parametrize("use", [False, pytest.param(True, marks=needs_snappy)])
@pytest.mark.parametrize("name", ["3_1", "8_18", "10_132", "L6a4"])
def test_certificate_of_a_start(name, use):
    entry = find(name)
    certificate = certify(grid_polygon(entry.grid, (1, 2)).components, name, complements=use)
    assert certificate.proved == (use or entry.components == 1)
    assert "Jones polynomial with chirality" in certificate.compared
    assert same_type(grid_polygon(entry.grid).components, braid_polygon(entry.braid).components, complements=use)


@pytest.mark.parametrize("use", [False, pytest.param(True, marks=needs_snappy)])
@pytest.mark.parametrize(
    ("shape", "expected"),
    [
        ("3_1", "4_1"),
        ("5_1", "10_132"),
        ("8_16", "10_156"),
        ("L2a1", "L4a1"),
        ("L5a1", "3_1"),
        ("m3_1", "3_1"),
        ("m9_42", "9_42"),
        ("m10_71", "10_71"),
        ("mL5a1", "L5a1"),
    ],
)
def test_certificate_refused(shape, expected, use):
    diagram = find(shape.removeprefix("m")).diagram
    with pytest.raises(CertificateError, match=f"not {expected}"):
        certify(diagram.mirrored() if shape.startswith("m") else diagram, expected, complements=use)


def test_directions_count_where_asked():
    link = find("L4a1").diagram
    turned = link.with_reversed(0)
    assert same_type(turned, link, complements=False)
    with pytest.raises(CertificateError, match="linking numbers"):
        same_type(turned, link, oriented=True, complements=False)


def test_a_passed_strand_is_noticed():
    points = torus_polygon(2, 3).components[0]
    broken = points.copy()
    middle = points[np.argsort(-points[:, 2])[:6]]  # push the highest strand through what lies below it
    broken[np.argsort(-points[:, 2])[:6]] = middle * [1.0, 1.0, -1.6]
    assert certify(points, "3_1")
    with pytest.raises(CertificateError):
        certify(broken, "3_1")


def test_without_snappy_the_extra_is_named(monkeypatch):
    monkeypatch.setattr(complements, "available", lambda: False)
    trefoil = find("3_1").diagram
    for call in (
        lambda: identify(trefoil, use_snappy=True),
        lambda: certify(trefoil, "3_1", complements=True),
        lambda: complements.to_snappy(trefoil),
    ):
        with pytest.raises(ImportError, match=r"vkmcore\[snappy\]"):
            call()
    assert identify(trefoil).decided
    assert certify(trefoil, "3_1").proved


@needs_snappy
def test_snappy_gets_the_diagram():
    diagram = find("4_1").diagram
    link = complements.to_snappy(diagram)
    assert abs(float(link.exterior().volume()) - find("4_1").volume) < 1e-6
    with pytest.raises(ValueError, match="without crossings"):
        complements.to_snappy(diagram_of_code([], loops=1))
