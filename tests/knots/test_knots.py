"""Knots and links as objects: what they are made from, what they measure, and their way through files."""

import pickle
import subprocess
import sys

import numpy as np
import pytest
import vkmcore
from vkmcore import Knot, Link
from vkmcore.errors import CurveError


def torus_knot(count=300, unit=1.0):
    """T(2, 3) with three right-handed crossings."""
    t = np.arange(count) * 2.0 * np.pi / count
    r = 2.0 + np.cos(3 * t)
    return unit * np.column_stack([r * np.cos(2 * t), r * np.sin(2 * t), -np.sin(3 * t)])


def test_a_circle_has_its_closed_forms_in_any_unit():
    circle = Knot("unknot")
    for factor in (1.0, 1e-15, 1e12):
        knot = circle.scaled(factor)
        assert knot.length == pytest.approx(2.0 * np.pi * factor, rel=1e-12)
        assert knot.curvature(7) * factor == pytest.approx(np.ones(7), rel=1e-6)
        assert knot.ropelength == pytest.approx(2.0 * np.pi, rel=1e-3)
        assert abs(knot.writhe) < 1e-5  # the sum of many solid angles of nearly parallel edges
    assert str(circle.identify()) == "0_1"


def test_pure_numbers_do_not_depend_on_the_unit_and_mirror_images_have_the_opposite_writhe():
    knot = Knot(torus_knot())
    assert knot.writhe > 3.0
    small = Knot(torus_knot(unit=1e-15))
    assert small.writhe == pytest.approx(knot.writhe, rel=1e-9)
    assert small.ropelength == pytest.approx(knot.ropelength, rel=1e-9)
    assert small.thickness == pytest.approx(1e-15 * knot.thickness, rel=1e-9)
    assert str(small.identify()) == "3_1, as in the table"
    assert knot.mirrored().writhe == pytest.approx(-knot.writhe)
    assert knot.reversed().writhe == pytest.approx(knot.writhe)
    assert (knot.reversed().points()[1] == knot.points()[-1]).all()


@pytest.mark.parametrize("change", ["mirrored", "reversed"])
def test_a_series_changes_as_its_points_do(change):
    series = Knot("3_1")
    polygon = Knot(series.points(200))
    np.testing.assert_allclose(getattr(series, change)().points(200), getattr(polygon, change)().points(), atol=1e-9)
    fine = polygon.resampled(2000)
    assert fine.length == pytest.approx(series.length, rel=1e-3)


def test_a_name_without_a_shape_gives_the_arc_presentation(monkeypatch):
    def no_shape(name):
        raise CurveError(f"{name}: no shape")

    monkeypatch.setattr("vkmcore.knots.sources.read_curves", no_shape)
    assert "arc presentation" in Knot("9_42").source and Knot("9_42").identify().name == "9_42"


def test_names_aliases_and_notations_lead_to_the_type_that_they_name():
    assert Knot("trefoil") == Knot("3:1:1")
    assert Knot("9_42").identify().name == "9_42"
    assert Link("Borromean").identify().name == "L6a4"
    assert Link("Hopf").linking_matrix.tolist() in ([[0, 1], [1, 0]], [[0, -1], [-1, 0]])
    assert Knot.from_braid([1, -2, 1, -2]).identify().name == "4_1"
    whitehead = Link("Whitehead")
    assert Link.from_pd_code(whitehead.pd_code()).identify().name == "L5a1"
    with pytest.raises(CurveError, match="did you mean"):
        Knot("trefoyl")
    with pytest.raises(CurveError, match="link of 3 components"):
        Knot("L6a4")


def test_knots_are_values():
    knot = Knot("3_1")
    again = pickle.loads(pickle.dumps(knot))
    assert again == knot and hash(again) == hash(knot) and repr(again) == repr(knot)
    assert knot != knot.mirrored() and knot != 3
    with pytest.raises(AttributeError, match="immutable"):
        knot.name = "4_1"
    with pytest.raises(ValueError, match="read-only"):
        knot._strands[0].numbers[0] = 0.0
    copy = knot.points()
    copy += 1.0
    assert (knot.points() != copy).all()
    assert "\n" not in repr(knot) and "3_1" in repr(knot)
    card = knot._repr_html_()
    assert "<svg" in card and "as in the table" in card and f"{knot.writhe:.4f}" in card


def test_diagrams_go_to_snappy_and_back():
    pytest.importorskip("snappy")
    knot = Knot("4_1")
    back = Knot.from_pd_code([list(crossing) for crossing in knot.to_snappy().PD_code(min_strand_index=1)])
    assert back.identify().name == "4_1"
    facts = knot.invariants()
    assert (facts["name"], facts["crossings"], facts["determinant"]) == ("4_1", 4, 5)


@pytest.mark.parametrize("suffix", ["vect", "csv", "txt", "json", "npy", "npz", "vtp", "obj"])
def test_every_format_reads_back_the_same_bits(tmp_path, suffix):
    if suffix == "vtp":
        pytest.importorskip("vtkmodules")
    for shape in (Knot("3_1"), Link([torus_knot(40), torus_knot(40)[::-1] + 9.0])):
        path = tmp_path / f"shape.{suffix}"
        shape.save(path, samples=40)
        back = Link(str(path))
        assert back.components == shape.components
        polygons = shape.points(40) if isinstance(shape, Link) else [shape.points(40)]
        for mine, expected in zip(back.points(), polygons):
            assert (mine == expected).all()


def test_an_unknown_format_is_told(tmp_path):
    with pytest.raises(ValueError, match="known are"):
        Knot("3_1").save(tmp_path / "knot.xyz")


def test_the_tube_for_printing_is_closed_and_has_the_tube_s_volume(tmp_path):
    knot = Knot(torus_knot(200)).scaled(1e-3)
    knot.save(tmp_path / "knot.stl")
    data = (tmp_path / "knot.stl").read_bytes()
    count = int(np.frombuffer(data[80:84], "<u4")[0])
    record = np.frombuffer(data[84:], dtype=[("normal", "<f4", 3), ("corners", "<f4", (3, 3)), ("attribute", "<u2")])
    assert len(record) == count
    corners = record["corners"]
    edges = [
        (a.tobytes(), b.tobytes()) for triangle in corners for a, b in zip(triangle, np.roll(triangle, -1, axis=0))
    ]
    assert len(set(edges)) == len(edges) and {(b, a) for a, b in edges} == set(edges)
    wide = corners.astype(float)
    volume = np.einsum("ni,ni->", wide[:, 0], np.cross(wide[:, 1], wide[:, 2])) / 6.0
    assert volume == pytest.approx(np.pi * knot.thickness**2 * knot.length, rel=0.02)


def test_vtk_reads_curvature_grids_and_series(tmp_path):
    pyvista = pytest.importorskip("pyvista")
    from vkmcore.curves.vtk_files import write_grid, write_series

    knot = Knot("3_1")
    knot.save(tmp_path / "knot.vtp", samples=60)
    np.testing.assert_array_equal(pyvista.read(tmp_path / "knot.vtp")["curvature"], knot.curvature(60))

    field = np.arange(24.0).reshape(2, 3, 4)
    flow = np.stack([field, -field, 2.0 * field], axis=-1)
    write_grid(tmp_path / "field.vti", {"speed": field, "flow": flow}, (0.5, 1.0, 2.0), (1.0, 2.0, 3.0))
    grid = pyvista.read(tmp_path / "field.vti")
    assert grid.dimensions == (2, 3, 4) and grid.spacing == (0.5, 1.0, 2.0)
    index = grid.find_closest_point((1.5, 4.0, 7.0))
    assert grid["speed"][index] == field[1, 2, 2]
    assert grid["flow"][index].tolist() == flow[1, 2, 2].tolist()
    with pytest.raises(ValueError, match="one grid"):
        write_grid(tmp_path / "field.vti", {"a": field, "b": field[:1]})

    write_series(tmp_path / "run.pvd", [(0.0, "knot.vtp"), (0.5, "knot.vtp")])
    reader = pyvista.get_reader(tmp_path / "run.pvd")
    assert reader.time_values == [0.0, 0.5]
    assert reader.read()[0].n_points == 60


@pytest.mark.parametrize(
    ("text", "told"),
    [("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n", "no line"), ("v 0 0 0\nl 1 2 3 1\n", "line 2"), ("v 0 x 0\n", "line 1")],
)
def test_an_obj_without_closed_lines_is_told(tmp_path, text, told):
    path = tmp_path / "bad.obj"
    path.write_text(text)
    with pytest.raises(CurveError, match=told):
        Knot(path)


def test_a_knot_tightens_simulates_and_weighs():
    knot = Knot("3:1:1")
    tight = knot.tighten(10, vertices=60)
    assert tight.identify().name == "3_1" and tight.ropelength < knot.resampled(60).ropelength
    run = knot.simulate(1e-3, circulation=0.1, samples=32)
    assert run.frames[-1].points[0].shape == (32, 3)
    assert knot.mass(resolution=100, iterations=5).catalogued.weight.core_mass_MeV > 0.0
    with pytest.raises(ValueError, match="ideal table"):
        Knot(torus_knot()).mass()


def test_the_package_shows_its_objects_and_loads_them_when_asked():
    assert {"Knot", "Link", "simulate", "load_trajectory", "ParticleEvaluator"} <= set(dir(vkmcore))
    program = "import sys, vkmcore; print([m for m in sys.modules if m.startswith('vkmcore.')])"
    result = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
    assert result.stdout == "[]\n", result.stdout + result.stderr
