"""Planar diagrams: codes of the tables, their kin, what is refused, and drawing in space."""

import random

import pytest
from vkmcore.reference import find, knots, links
from vkmcore.topology import (
    DiagramError,
    alexander,
    diagram_of_code,
    diagram_of_curves,
    jones,
    lattice_polygons,
    signature,
    simplified,
    unoriented_jones,
)

HOPF = [[4, 1, 3, 2], [2, 3, 1, 4]]


def test_a_table_code_comes_back_unchanged():
    for entry in knots():
        assert diagram_of_code(entry.pd).pd_code() == [list(crossing) for crossing in entry.pd], entry.name


def test_trefoil_codes():
    trefoil = find("3_1").diagram
    assert trefoil.writhe == 3
    assert trefoil.gauss_code() == [[-1, 2, -3, 1, -2, 3]]
    assert trefoil.dt_code() == [[4, 6, 2]]
    assert trefoil.mirrored().writhe == -3
    assert diagram_of_code(trefoil.mirrored().code).signs == (-1, -1, -1)


def test_reversing_a_component_turns_its_linking_numbers():
    link = find("L4a1").diagram
    assert link.linking_matrix() == [[0, -2], [-2, 0]]
    turned = link.with_reversed(1)
    assert turned.linking_matrix() == [[0, 2], [2, 0]]
    assert str(jones(turned)) == "-t^(3/2) - t^(7/2) + t^(9/2) - t^(11/2)"
    assert unoriented_jones(turned) == unoriented_jones(link)
    assert jones(diagram_of_code(turned.code)) == jones(turned)


def test_linking_matrices_of_the_table():
    for entry in links():
        assert tuple(map(tuple, entry.diagram.linking_matrix())) == entry.linking, entry.name


@pytest.mark.parametrize(
    ("code", "text"),
    [
        ([[1, 2, 3]], "four arcs"),
        ([[1, 2, 3, 4]], "twice"),
        ([[3, 2, 4, 1], [4, 3, 1, 2]], "not planar"),
        ([[1, 5, 2, 4], [3, 1, 4, 6], [6, 2, 5, 3]], "against each other"),
    ],
)
def test_codes_refused(code, text):
    with pytest.raises(DiagramError, match=text):
        diagram_of_code(code)


def test_arcs_may_have_any_names():
    names = {n: 10 * n - 35 for n in range(1, 9)}
    code = [[names[arc] for arc in crossing] for crossing in find("4_1").pd]
    assert diagram_of_code(code) == find("4_1").diagram


def kinked(diagram, moves, rng):
    """The diagram with kinks put into arcs drawn at random."""
    for _ in range(moves):
        code = diagram.pd_code()
        a, loop, z = rng.randint(1, 2 * len(code)), 2 * len(code) + 1, 2 * len(code) + 2
        ends = [(n, 0 if diagram.code[n][0] == a else 3 if diagram.signs[n] > 0 else 1) for n in range(len(code))]
        (end,) = [(n, slot) for n, slot in ends if diagram.code[n][slot] == a]
        code[end[0]][end[1]] = z
        code.append(rng.choice([[a, z, loop, loop], [a, loop, loop, z], [loop, loop, z, a], [loop, a, z, loop]]))
        diagram = diagram_of_code(code)
    return diagram


@pytest.mark.parametrize("name", ["3_1", "4_1", "8_19", "L5a1"])
def test_kinks_change_no_invariant_and_are_taken_out(name):
    plain = find(name).diagram
    curly = kinked(plain, 6, random.Random(4))
    assert len(curly) == len(plain) + 6
    assert (jones(curly), alexander(curly), signature(curly)) == (jones(plain), alexander(plain), signature(plain))
    assert len(simplified(curly)) == len(plain)


def test_a_component_on_top_is_taken_apart():
    # The second component passes over the first twice: two rings apart, and nothing tells the upper one's direction.
    apart = simplified(diagram_of_code([[1, 3, 2, 4], [2, 3, 1, 4]]))
    assert len(apart) == 0
    assert apart.components == ((), ())
    assert str(jones(apart)) == "-t^(-1/2) - t^(1/2)"
    assert str(alexander(apart)) == "0"


@pytest.mark.parametrize("name", ["3_1", "6_2", "10_165", "L6a4", "L9n28"])
def test_lattice_polygons_project_to_the_diagram(name):
    diagram = find(name).diagram
    drawn = diagram_of_curves(lattice_polygons(diagram), directions=6)
    assert jones(drawn) == jones(diagram)
    assert drawn.linking_matrix() == diagram.linking_matrix()


def test_pieces_apart_are_drawn_side_by_side():
    two = diagram_of_code([*find("3_1").pd, *([arc + 6 for arc in crossing] for crossing in HOPF)], loops=1)
    polygons = lattice_polygons(two)
    assert len(polygons) == 4
    assert jones(diagram_of_curves(polygons, directions=6)) == jones(two)


def test_a_nugatory_crossing_is_not_drawn():
    with pytest.raises(DiagramError, match="simplify"):
        lattice_polygons(diagram_of_code([[1, 1, 2, 2]]))


def test_codes_for_snappy():
    snappy = pytest.importorskip("snappy")
    for entry in [*random.Random(7).sample(knots(), 25), *random.Random(7).sample(links(), 15)]:
        diagram = entry.diagram
        dt = "DT: " + str([tuple(row) for row in diagram.dt_code()])
        read = diagram_of_code(snappy.Link(dt).PD_code(min_strand_index=1))
        assert unoriented_jones(read) in (unoriented_jones(diagram), unoriented_jones(diagram).mirrored()), dt
        link = snappy.Link(diagram.pd_code())
        assert link.writhe() == diagram.writhe


def test_codes_of_the_table_of_links():
    snappy = pytest.importorskip("snappy")
    for entry in random.Random(9).sample(links(), 25):
        read = diagram_of_code(snappy.Link("DT: " + str(list(entry.dt))).PD_code(min_strand_index=1))
        polynomial = unoriented_jones(entry.diagram)
        assert unoriented_jones(read) in (polynomial, polynomial.mirrored()), entry.name
