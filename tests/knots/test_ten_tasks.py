"""Ten everyday tasks, each in at most three lines of what a user types, as they would be typed into a notebook."""

import importlib.util
import os

import numpy as np
import pytest

NEEDS = {"ParaView": "vtkmodules", "SnapPy and back": "snappy", "sweep": "pandas", "field": "vtkmodules"}

TASKS = {
    "plot a trefoil": """
from vkmcore import Knot
figure = Knot("trefoil").plot()
""",
    "writhe and ropelength": """
from vkmcore import Knot
knot = Knot("3_1")
print(knot.writhe, knot.ropelength)
""",
    "tighten": """
from vkmcore import Knot
tight = Knot("3_1").tighten(20, vertices=60)
""",
    "ParaView": """
from vkmcore import Knot
Knot("3_1").save("trefoil.vtp")
""",
    "SnapPy and back": """
from vkmcore import Knot
link = Knot("4_1").to_snappy()
back = Knot.from_pd_code(link.PD_code())
""",
    "sweep": """
from vkmcore import sweep
data = sweep("mass", ["3_1", "4_1"], {"resolution": [20, 40], "iterations": [1], "tail": [False]}, jobs=2)
""",
    "leapfrog movie": """
from vkmcore import Link, simulate, sample_circle
run = simulate([{"points": sample_circle(24, 1.0, z)} for z in (0.0, 0.6)], 0.5, {"core_radius": 0.05})
movie = run.animate("leapfrog.gif")
""",
    "VECT in": """
from vkmcore import Link
link = Link("hopf.vect")
print(link.linking_matrix, link.identify())
""",
    "KnotInfo to invariants": """
from vkmcore import Knot
facts = Knot.from_pd_code("[[4,2,5,1],[8,6,1,5],[6,3,7,4],[2,7,3,8]]").invariants()
""",
    "field": """
from vkmcore import Knot
grid = Knot("3_1").velocity_field(shape=(8, 9, 10))
grid.save("field.vti")
""",
}


@pytest.fixture(params=TASKS)
def done(request, tmp_path, monkeypatch):
    """Name of a task and what it left behind."""
    pytest.importorskip("matplotlib")
    name, code = request.param, TASKS[request.param].strip()
    if name in NEEDS and importlib.util.find_spec(NEEDS[name]) is None:
        pytest.skip(f"no {NEEDS[name]} here")
    assert len(code.splitlines()) <= 3
    monkeypatch.chdir(tmp_path)
    if name == "VECT in":
        from vkmcore import Link

        Link("L2a1").save("hopf.vect", samples=50)
    names = {}
    exec(code, names)
    return name, names


def test_ten_tasks_take_three_lines_each(done, capsys):
    name, names = done
    if name == "plot a trefoil":
        assert names["figure"].axes
    elif name == "writhe and ropelength":
        assert 3.2 < names["knot"].writhe < 3.6 and 32.7 < names["knot"].ropelength < 36.0
    elif name == "tighten":
        assert names["tight"].ropelength < 34.0 and names["tight"].identify().name == "3_1"
    elif name == "ParaView":
        assert names["Knot"]("trefoil.vtp").identify().name == "3_1"
    elif name == "SnapPy and back":
        assert names["back"].identify().name == "4_1"
    elif name == "sweep":
        data = names["data"]
        assert list(data.knot) == ["3_1", "3_1", "4_1", "4_1"] and (data["relaxed.weight.core_mass_MeV"] > 0).all()
    elif name == "leapfrog movie":
        assert os.path.getsize("leapfrog.gif") > 1000 and names["run"].time == 0.5
    elif name == "VECT in":
        assert abs(names["link"].linking_matrix[0, 1]) == 1 and names["link"].identify().name == "L2a1"
    elif name == "KnotInfo to invariants":
        facts = names["facts"]
        assert (facts["name"], facts["determinant"], facts["signature"]) == ("4_1", 5, 0)
    elif name == "field":
        grid = names["grid"]
        assert grid.fields["velocity"].shape == (8, 9, 10, 3) and np.isfinite(grid.fields["velocity"]).all()
        small = names["Knot"]("3_1").scaled(1e-15).velocity_field(shape=(8, 9, 10)).fields["velocity"]
        np.testing.assert_allclose(small * 1e-15, grid.fields["velocity"], rtol=1e-6)
        assert os.path.getsize("field.vti") > 8 * 9 * 10 * 3 * 8
