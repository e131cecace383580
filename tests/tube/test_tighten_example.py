"""The example that tightens the trefoil and the figure-eight runs, and tightens."""

import importlib.util
import re
from pathlib import Path

import _native as vkm
import numpy as np

PATH = Path(__file__).resolve().parents[2] / "examples" / "tighten_trefoil.py"


def example():
    module_spec = importlib.util.spec_from_file_location("tighten_trefoil", PATH)
    module = importlib.util.module_from_spec(module_spec)
    module_spec.loader.exec_module(module)
    return module


def test_both_knots_tighten(capsys):
    module = example()
    module.main(40, 60)
    printed = capsys.readouterr().out
    before = [float(x) for x in re.findall(r"before +([0-9.]+)", printed)]
    after = [float(x) for x in re.findall(r"after +([0-9.]+)", printed)]
    for name, first, last in zip(("trefoil", "figure-eight"), before, after, strict=True):
        published = module.PUBLISHED[name]
        assert f"{published:.4f}" in printed
        assert 0.99 * published < last < first
    assert after[0] < 1.03 * module.PUBLISHED["trefoil"]
    assert after[1] < 0.75 * before[1]


def test_sampling_is_even():
    module = example()
    points = module.equilateral(module.figure_eight, 300)
    assert vkm.ResolvedTubeGeometry.edge_length_max_relative_deviation(points) < 0.01
    assert np.isclose(vkm.ResolvedTubeGeometry.length(points), 2.0 * vkm.ResolvedTubeGeometry.length(points / 2.0))


def test_the_table_of_limits(capsys, monkeypatch):
    monkeypatch.syspath_prepend(str(PATH.parent))
    import tighten_limits

    tighten_limits.main(30)
    rows = [line.split() for line in capsys.readouterr().out.splitlines()[1:]]
    assert [row[:2] for row in rows] == [["trefoil", "30"], ["figure-eight", "30"]]
    for _, _, start, reached, published, above, steps, _ in rows:
        assert float(published) < float(reached) < float(start)
        assert abs(float(above[:-1]) - 100.0 * (float(reached) / float(published) - 1.0)) < 0.001
        assert float(above[:-1]) < 5.0 and int(steps) >= 90
