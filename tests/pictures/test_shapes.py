"""Pictures of knots: every backend really draws, colours follow the numbers, pages turn without a network."""

import os
import re
import shutil
import subprocess

import numpy as np
import pytest
from click.testing import CliRunner
from vkmcore import Knot, Link
from vkmcore.cli import cli
from vkmcore.errors import PlotError
from vkmcore.knots.drawing import carried
from vkmcore.tube.contacts import contacts


def picture(figure, path):
    """The pixels (height, width, 3) of a matplotlib or pyvista figure."""
    image = pytest.importorskip("PIL.Image")
    (figure.screenshot if hasattr(figure, "screenshot") else figure.savefig)(str(path))
    return np.asarray(image.open(path).convert("RGB")).astype(int)


def colourful(pixels):
    """Number of pixels that are neither white nor grey."""
    return int((np.ptp(pixels, axis=2) > 40).sum())


@pytest.mark.parametrize("colour", ["curvature", "velocity", "pressure", "component"])
@pytest.mark.parametrize("backend", ["matplotlib", "pyvista"])
def test_a_picture_shows_the_knot(tmp_path, monkeypatch, backend, colour):
    library = pytest.importorskip(backend)
    if backend == "pyvista":
        monkeypatch.setattr(library, "OFF_SCREEN", True)
    pixels = picture(Knot("3:1:1").plot(backend, colour=colour, samples=90), tmp_path / "knot.png")
    assert colourful(pixels) > 0.05 * pixels[..., 0].size
    hues = {tuple(rgb) for rgb in (pixels[np.ptp(pixels, axis=2) > 40] // 48).tolist()}
    assert len(hues) > (8 if colour != "component" else 1)


def test_plotly_gets_the_tube_and_its_numbers():
    pytest.importorskip("plotly")
    knot = Knot("3:1:1")
    figure = knot.plot("plotly", samples=60, unit="fm")
    mesh = figure.data[0]
    surface = np.column_stack([mesh.x, mesh.y, mesh.z]).reshape(60, -1, 3)
    away = np.linalg.norm(surface - knot.points(60)[:, None], axis=2)
    assert away == pytest.approx(np.full(away.shape, knot.thickness))
    assert np.unique(mesh.intensity) == pytest.approx(np.unique(knot.curvature(60)))
    assert figure.layout.scene.xaxis.title.text == "x / fm"
    shown = knot.plot("plotly", samples=60, colour="pressure", struts=True).data
    assert [trace.type for trace in shown] == ["mesh3d", "scatter3d"] and shown[0].opacity < 1.0
    assert len(Link("Hopf").plot("plotly", samples=40).data) == 2


def test_contacts_hold_the_pull_of_a_tight_knot():
    """At rest the forces of the struts sum to the ropelength: scaling does no work beyond the length's."""
    knot = Knot("3:1:1")
    points = knot.points(100)
    for unit in (1.0, 1e-15):
        found = contacts(points * unit)
        assert found.residual < 0.05 and found.strut_forces.min() >= 0.0
        assert found.strut_forces.sum() == pytest.approx(knot.ropelength, rel=0.02)
        chords = np.linalg.norm(found.struts[:, 1] - found.struts[:, 0], axis=1)
        assert chords == pytest.approx(np.full(len(chords), 2.0 * knot.thickness * unit), rel=0.02)
        edges = np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1) * unit
        share = 0.5 * (edges + np.roll(edges, 1))
        assert (found.pressures[0] * share).sum() == pytest.approx(found.strut_forces.sum(), rel=0.01)


def test_contacts_of_a_link_are_those_of_all_its_components():
    link = Link("Borromean")
    found = contacts(link.points(70))
    assert found.strut_forces.sum() == pytest.approx(link.ropelength, rel=0.02) and found.residual < 0.1
    load = [pressure.mean() * knot.length for pressure, knot in zip(found.pressures, link)]
    assert load == pytest.approx([found.strut_forces.sum() / 3.0] * 3, rel=0.02)
    figure = pytest.importorskip("plotly") and link.plot("plotly", samples=60, colour="pressure", struts=True)
    assert [trace.type for trace in figure.data] == ["mesh3d"] * 3 + ["scatter3d"]


def test_numbers_of_an_uneven_polygon_stand_where_they_were_found():
    angle = 2.0 * np.pi * np.linspace(0.0, 1.0, 400, endpoint=False) ** 2
    ring = np.column_stack([np.cos(angle), np.sin(angle), 0.0 * angle])
    knot = Knot(ring)
    even = knot.points(90)
    np.testing.assert_allclose(carried(ring[:, 0], ring, even), even[:, 0], atol=2e-3)
    np.testing.assert_allclose(carried(even[:, 1], even, ring), ring[:, 1], atol=2e-3)


def test_a_circle_bent_to_its_radius_is_all_kinks():
    t = 2.0 * np.pi * np.arange(60) / 60
    found = contacts(np.column_stack([np.cos(t), np.sin(t), 0.0 * t]))
    assert len(found.struts) == 0 and len(found.kinks) == 60
    assert found.residual < 1e-6 and not found.pressures[0].any()


def test_what_cannot_be_drawn_is_told(monkeypatch):
    flat = Link([[(0, 0, 0), (4, 0, 0), (4, 4, 0), (0, 4, 0), (-1, 3, 0), (-1, 1, 0)], np.eye(3)[[0, 1, 2, 0, 1, 2]]])
    with pytest.raises(ValueError):
        flat.plot(struts=True)
    with pytest.raises(ValueError, match="colour is one of"):
        Knot("3_1").plot(colour="mood")
    with pytest.raises(ValueError, match="no backend"):
        Knot("3_1").plot("crayon")
    monkeypatch.setitem(__import__("sys").modules, "plotly", None)
    monkeypatch.setitem(__import__("sys").modules, "plotly.graph_objects", None)
    with pytest.raises(PlotError, match=r"vkmcore\[view\]"):
        Knot("3_1").plot("plotly")


def browser():
    found = next(filter(None, map(shutil.which, ("chromium", "chromium-browser", "google-chrome"))), None)
    if found is None:
        pytest.skip("no Chromium here to look at the page")
    return found


@pytest.mark.parametrize("source", ["trefoil", "L6a4"])
def test_a_page_turns_without_a_network(tmp_path, source):
    pytest.importorskip("plotly")
    image = pytest.importorskip("PIL.Image")
    page, shot, plot = tmp_path / "knot.html", tmp_path / "shot.png", tmp_path / "knot.png"
    result = CliRunner().invoke(cli, ["view", source, "--html", str(page), "--out", str(plot), "--samples", "120"])
    assert result.exit_code == 0, result.output
    text = page.read_text(encoding="utf-8")
    assert not re.search(r"<(script|link|img)[^>]*\b(src|href)=", text)  # the script stands in the page
    assert colourful(np.asarray(image.open(plot).convert("RGB")).astype(int)) > 5000
    program = browser()
    switches = ["--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--use-angle=swiftshader"]
    switches += ["--enable-unsafe-swiftshader", "--host-resolver-rules=MAP * ~NOTFOUND", "--window-size=900,700"]
    switches += [f"--user-data-dir={tmp_path / 'profile'}", "--virtual-time-budget=10000", f"--screenshot={shot}"]
    own = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}  # the sanitizers' is not for it
    subprocess.run([program, *switches, page.as_uri()], capture_output=True, timeout=300, check=True, env=own)
    pixels = np.asarray(image.open(shot).convert("RGB")).astype(int)
    assert colourful(pixels[100:600, 100:650]) > 15000
