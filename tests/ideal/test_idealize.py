"""From names, codes, points and files to certified tight shapes."""

import numpy as np
import pytest
import vkmcore as vkm
from vkmcore import _engine
from vkmcore.ideal import polygons
from vkmcore.ideal.families import EFFORT, family_of
from vkmcore.ideal.form_polish import fit, polish
from vkmcore.ideal.fourier_form import measure
from vkmcore.ideal.inputs import problem_of
from vkmcore.ideal.least_harmonics import least_form
from vkmcore.ideal.polygons import tighten_polygons
from vkmcore.ideal.search import batches_of, certified
from vkmcore.ideal.starts import braid_polygon
from vkmcore.reference.tables import find
from vkmcore.topology.bracket import jones
from vkmcore.topology.certificate import CertificateError
from vkmcore.topology.projection import diagram_of_curves

QUICK = {"edge": 0.75, "start_count": 2, "first_chains": 1, "first_hops": 1, "second_chains": 0}
TREFOIL_PD = [[1, 5, 2, 4], [3, 1, 4, 6], [5, 3, 6, 2]]
TREFOIL_GRID = [(1, 3), (2, 4), (3, 5), (1, 4), (2, 5)]


def circle(count, radius=1.0):
    angle = 2 * np.pi / count * np.arange(count)
    return radius * np.stack([np.cos(angle), np.sin(angle), 0 * angle], axis=1)


def figure_of_eight():
    t = np.linspace(0, 2 * np.pi, 24, endpoint=False)
    return np.stack([np.sin(t), np.sin(2 * t), 0 * t], axis=1)


@pytest.fixture(scope="module")
def trefoil():
    return vkm.idealize("trefoil", edge=0.15)


def test_a_name_leads_to_a_tight_and_certified_shape(trefoil):
    assert trefoil.name == "3_1" and trefoil.published == find("3_1").ropelength
    assert 0.0 < trefoil.excess < 7e-4
    assert trefoil.ropelength_diameter == trefoil.ropelength / 2
    assert trefoil.certificate.startswith("3_1: proved by Jones polynomial with chirality")
    again = vkm.idealize("3_1", edge=0.15, threads=1)
    np.testing.assert_array_equal(again.points[0], trefoil.points[0])


@pytest.mark.parametrize(
    ("curve", "name", "mirrored"),
    [
        (TREFOIL_PD, "3_1", False),
        ("PD[X[1,5,2,4], X[3,1,4,6], X[5,3,6,2]]", "3_1", False),
        (TREFOIL_GRID, "3_1", False),
        ([-1, -1, -1], "3_1", True),
        ("{1, -2, 1, -2}", "4_1", False),
        (vkm.Knot("3_1").mirrored(), "3_1", True),
        (vkm.Knot("5_2").points(200), "5_2", False),
        (vkm.Link("L5a1").points(200), "L5a1", False),
        ("Whitehead", "L5a1", False),
        (find("4_1").diagram, "4_1", False),
    ],
    ids=["PD", "PD text", "grid", "braid", "braid text", "Knot", "points", "components", "link", "diagram"],
)
def test_every_form_of_a_curve_keeps_its_type(curve, name, mirrored):
    if isinstance(curve, list) and len(curve) == 2 and isinstance(curve[0], np.ndarray):
        pytest.importorskip("snappy")  # a link's type is proved by complements alone
    problem = problem_of(curve)
    assert (problem.entry.name, problem.mirrored) == (name, mirrored)
    shape = vkm.idealize(curve, **QUICK)
    wanted = find(name).diagram
    found = diagram_of_curves(list(shape.points))
    assert jones(found) in [jones(d) for d in ([wanted.mirrored()] if mirrored else [wanted, wanted.with_reversed(0)])]
    assert shape.published == find(name).ropelength


def test_files_are_read_and_written(trefoil, tmp_path):
    for suffix in (".vect", ".csv"):
        file = tmp_path / f"tight{suffix}"
        trefoil.save(file)
        np.testing.assert_array_equal(vkm.Knot(file).points(), trefoil.points[0])
        assert problem_of(file).entry.name == "3_1"
    trefoil.save(tmp_path / "tight.npz")
    assert vkm.IdealShape.load(tmp_path / "tight.npz").record() == trefoil.record()


def test_what_the_tables_do_not_know_is_searched_from_itself():
    granny = [1, 1, 1, 2, 2, 2]  # 3_1 # 3_1
    shape = vkm.idealize(granny, **QUICK)
    assert {step.starts for step in shape.history} == {"own"} and shape.published is None


def test_knots_and_links_become_tight():
    knot = vkm.Knot("3_1").idealize(**QUICK)
    assert isinstance(knot, vkm.Knot) and 32.7 < knot.ropelength < 36
    assert len(vkm.Link("Hopf").idealize(**QUICK)) == 2


def test_the_unknot_becomes_a_circle():
    shape = vkm.idealize(circle(30, 5.0) * [1.0, 0.4, 1.0], edge=0.2)
    assert shape.ropelength == pytest.approx(2 * np.pi, rel=4e-3)
    assert vkm.idealize("unknot", edge=0.1).ropelength == pytest.approx(2 * np.pi, rel=1e-3)


@pytest.mark.parametrize("name", ["7_1", "9_1", "6_1", "8_1", "10_1"])
def test_families_have_the_type_and_chirality_of_their_knot(name):
    entry = find(name)
    start, *_ = family_of(entry).starts(3)
    assert jones(diagram_of_curves(list(start.components))) == entry.jones
    mirror_image = problem_of([point * [1.0, 1.0, -1.0] for point in start.components])
    *_, batch = batches_of(mirror_image, {})
    assert jones(diagram_of_curves(list(batch.starts(3)[0]))) == entry.jones.mirrored()


def test_torus_knots_begin_with_lobes():
    assert [batch.kind for batch in batches_of(problem_of("7_1"), {})] == ["lobed torus"]
    starts = [start.components for start in family_of(find("7_1")).starts(1)[:4]]
    effort = {**EFFORT, "start_count": 4, "first_chains": 1, "first_hops": 4}
    assert tighten_polygons(starts, edge=0.5, **effort).ropelength < 63


# --- the certificate --------------------------------------------------------------------------------------------------


def with_a_strand_passed(shape):
    """The points, a strand of them pushed through the one that it touches hardest."""
    points = shape.points[0].copy()
    i, s, j, t = shape.struts[np.argmax(shape.struts[:, 5]), :4]
    ahead = np.roll(points, -1, axis=0)
    i, j = int(i), int(j)
    across = (1 - t) * points[j] + t * ahead[j] - (1 - s) * points[i] - s * ahead[i]
    apart = np.abs(np.arange(len(points)) - i)
    along = np.minimum(apart, len(points) - apart) * shape.edge
    return points + 1.3 * np.exp(-((along / 0.8) ** 2))[:, None] * across


def test_a_passed_strand_is_found(trefoil):
    problem = problem_of("3_1")
    assert certified(trefoil.points, problem).proved
    with pytest.raises(CertificateError, match="not 3_1"):
        certified([with_a_strand_passed(trefoil)], problem)


def test_a_result_of_another_type_is_never_returned(monkeypatch):
    tighten = _engine.tighten

    def mirrored(*args, **options):
        found = tighten(*args, **options)
        return {**found, "points": [points * [1.0, 1.0, -1.0] for points in found["points"]]}

    monkeypatch.setattr(polygons._engine, "tighten", mirrored)
    with pytest.raises(CertificateError, match="mirror image"):
        vkm.idealize("3_1", **QUICK)


# --- stopping ---------------------------------------------------------------------------------------------------------


def test_ctrl_c_keeps_the_best_so_far_with_its_certificate():
    def interrupt(step, best):
        if step.seed == 2:
            raise KeyboardInterrupt

    shape = vkm.idealize("4_1", seeds=5, progress=interrupt, **QUICK)
    assert shape.interrupted and "4_1" in shape.certificate
    assert {step.seed for step in shape.history} == {1, 2}
    knot = vkm.Knot("4_1").idealize(seeds=5, progress=interrupt, **QUICK)
    assert knot.source == "idealized, stopped early, from knot table, 4_1" and knot.ropelength < 50.0


def test_no_more_is_searched_once_it_is_enough():
    shape = vkm.idealize("3_1", seeds=9, enough=40.0, **QUICK)
    assert {step.seed for step in shape.history} == {1} and not shape.interrupted
    shape = vkm.idealize("3_1", seeds=9, enough="published", edge=0.25)
    assert {step.seed for step in shape.history} == {1}


# --- Fourier forms ----------------------------------------------------------------------------------------------------


def test_the_least_form_keeps_to_its_excess(trefoil):
    forms = {excess: trefoil.fourier(excess) for excess in (0.005, 0.001)}
    for excess, form in forms.items():
        assert measure(form).ropelength <= trefoil.ropelength * (1 + excess)
    assert forms[0.005].harmonics < forms[0.001].harmonics
    polished = trefoil.fourier(0.005, polished=True)
    assert measure(polished).ropelength <= trefoil.ropelength * 1.005
    assert polished.harmonics < forms[0.005].harmonics
    with pytest.raises(ValueError, match="all that the vertices determine"):
        least_form([circle(9)], 6.0, 1e-9)
    with pytest.raises(ValueError, match="positive"):
        trefoil.fourier(0.0)


@pytest.mark.parametrize("curve", [braid_polygon([1, 1, 1]).components[0], vkm.Knot("4_1").points(100)])
def test_polishing_is_never_worse_than_the_fit(curve):
    form = fit([curve], 12)
    assert measure(polish(form, rounds=3, steps=10)).ropelength <= measure(form).ropelength * (1 + 1e-12)


# --- bad input --------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize(
    ("curve", "text"),
    [
        ("no such knot", "no such file; no knot or link"),
        ("8_99", "did you mean"),
        (figure_of_eight(), "meets itself"),
        (circle(5), "at least six vertices, found 5"),
        (np.where(np.arange(12)[:, None] == 3, np.nan, circle(12)), "finite"),
        (circle(12)[:, :2], r"shape \(N, 3\)"),
        (np.zeros((8, 3)), "all points of the curve are one"),
        ([[1, 5, 2, 4], [3, 1, 4, 6], [5, 3, 6, 7]], "names every arc twice"),
        ([[1, 2, 3, 4], [1, 3, 2, 4]], "not planar"),
        ([(1, 3), (2, 4), (3, 5), (1, 4), (2, 6)], "arc presentation"),
        ([1, 0, 1], "letters of a braid"),
        (None, "vertices"),
        ([circle(12), "x"], "component 2"),
    ],
)
def test_bad_curves_are_refused_in_a_line(curve, text):
    with pytest.raises(ValueError, match=text) as told:
        vkm.idealize(curve, **QUICK)
    assert "\n" not in str(told.value)


def test_a_curve_of_another_type_than_expected_is_refused():
    with pytest.raises(ValueError, match="not 3_1: the Jones polynomial is"):
        vkm.idealize([-1, -1, -1], expected="3_1", **QUICK)
    with pytest.raises(ValueError, match="enough"):
        vkm.idealize("3_1", enough="sometime", **QUICK)
    with pytest.raises(ValueError, match="positive"):
        vkm.idealize("3_1", edge=-1.0)
    with pytest.raises(MemoryError):
        vkm.idealize("3_1", edge=1e-9)


def test_a_missing_table_names_its_extra(monkeypatch):
    import sys

    from vkmcore.reference import tables

    monkeypatch.setitem(sys.modules, "database_knotinfo", None)
    for cached in (tables._large_index, tables._large_knots):
        cached.cache_clear()
    with pytest.raises(ImportError, match=r"vkmcore\[catalogue\]"):
        vkm.idealize("12a_100")
