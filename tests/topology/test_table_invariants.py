"""Every knot to ten crossings and every link to nine: diagram, grid, braid and drawing agree, chirality included.

The normal run takes a sample; `-m long` the whole tables.
"""

import random

import pytest
from vkmcore.ideal.starts import braid_polygon, diagram_polygon, grid_polygon
from vkmcore.reference import knots, links
from vkmcore.topology import (
    alexander,
    coloured_jones,
    determinant,
    diagram_of_curves,
    jones,
    linking_form,
    signature,
    unoriented_jones,
)

EVERY = (*knots(), *links())
SAMPLE = random.Random(2024).sample(EVERY, 24)


@pytest.mark.parametrize("entry", knots(), ids=lambda entry: entry.name)
def test_published_invariants_of_knots(entry):
    diagram = entry.diagram
    assert jones(diagram) == entry.jones
    assert signature(diagram) == entry.signature
    published = entry.alexander_numbers[1:]
    own = alexander(diagram).coefficients[::2]
    assert own in (published, tuple(-c for c in published))
    assert sum(own) == 1
    assert determinant(diagram) == abs(sum(c * (-1) ** n for n, c in enumerate(published)))
    mirrored = diagram.mirrored()
    assert jones(mirrored) == jones(diagram).mirrored()
    form, other = linking_form(diagram), linking_form(mirrored)
    assert other == {p: value if p % 4 == 1 else -value for p, value in form.items()}
    if entry.amphicheiral:
        assert jones(diagram) == jones(mirrored)
        assert form == other


@pytest.mark.parametrize("entry", links(), ids=lambda entry: entry.name)
def test_published_invariants_of_links(entry):
    assert jones(entry.diagram) == entry.jones
    assert signature(entry.diagram) == entry.signature
    # |V(-1)| = |Alexander polynomial at -1|, and the powers of i are those of t^(1/2).
    at_minus_one = sum(c * 1j ** int(2 * power) for power, c in jones(entry.diagram).terms().items())
    assert round(abs(at_minus_one)) == determinant(entry.diagram)


def starts_agree(entry):
    for start in (grid_polygon(entry.grid), braid_polygon(entry.braid), diagram_polygon(entry.pd)):
        diagram = diagram_of_curves(start.components, directions=6, best=1, effort=0)
        assert unoriented_jones(diagram) == unoriented_jones(entry.diagram), (entry.name, start.source)
        assert start.gap > 0.65, (entry.name, start.source)


@pytest.mark.parametrize("entry", SAMPLE, ids=lambda entry: entry.name)
def test_starts_have_the_type_of_the_table(entry):
    starts_agree(entry)


@pytest.mark.long
@pytest.mark.parametrize("entry", EVERY, ids=lambda entry: entry.name)
def test_all_starts_have_the_type_of_the_table(entry):
    starts_agree(entry)


@pytest.mark.long
@pytest.mark.parametrize("entry", knots(), ids=lambda entry: entry.name)
def test_tight_diagrams_have_the_least_number_of_crossings(entry):
    assert len(diagram_of_curves(braid_polygon(entry.braid).components)) == entry.crossings


@pytest.mark.parametrize(("one", "other"), [("5_1", "10_132"), ("8_8", "10_129"), ("10_40", "10_103")])
def test_coloured_jones_tells_apart_what_jones_and_alexander_do_not(one, other):
    a, b = (next(entry.diagram for entry in knots() if entry.name == name) for name in (one, other))
    assert jones(a) in (jones(b), jones(b).mirrored())
    assert alexander(a) == alexander(b)
    assert coloured_jones(a) not in (coloured_jones(b), coloured_jones(b).mirrored())


def test_coloured_jones_of_known_knots():
    trefoil = next(entry.diagram for entry in knots() if entry.name == "3_1")
    # q^2 + q^5 - q^7 + q^8 - q^9 - q^10 + q^11 at q = A^-4 (Habiro's formula for the right-handed trefoil).
    powers = {2: 1, 5: 1, 7: -1, 8: 1, 9: -1, 10: -1, 11: 1}
    assert {int(power): c for power, c in coloured_jones(trefoil).terms().items()} == {
        -4 * power: c for power, c in powers.items()
    }
    unknot = diagram_of_curves([[0.0, 0, 0], [1, 0, 0], [0, 1, 0]])
    assert str(coloured_jones(unknot)) == "1"
