"""Runs and trajectories as objects: how they show themselves, movies, series for ParaView, datasets."""

import io

import numpy as np
import pytest
import vkmcore
from vkmcore import load_trajectory, simulate
from vkmcore.errors import PlotError

OPTIONS = {"core_radius": 0.05, "a_sim": 0.05, "lia_constant": -0.25}


@pytest.fixture(scope="module")
def run():
    rings = [
        {"points": vkmcore.sample_circle(n, 1.0, z), "id": name}
        for n, z, name in ((24, 0.0, "rear"), (30, 0.6, "front"))
    ]
    ghost = {"points": vkmcore.sample_circle(9, 2.0, 0.0), "ghost": True}
    return simulate([*rings, ghost], 0.4, OPTIONS, dt=0.02, frame_interval=0.1)


def test_a_run_shows_itself_in_a_line_and_a_card(run, tmp_path):
    assert repr(run) == "Simulation(3 filaments, 63 vertices, t = 0 to 0.4 s, 20 steps, 5 frames)"
    card = run._repr_html_()
    assert len(card) < 100_000 and "<svg" in card and "rear" in card and card.count("<tr>") == 4
    run.save(tmp_path / "run.npz")
    again = load_trajectory(tmp_path / "run.npz")
    assert repr(again) == repr(run).replace("Simulation", "Trajectory") and "<svg" in again._repr_html_()
    met = simulate([{"points": vkmcore.sample_circle(24, 1.0, z)} for z in (0.0, 0.01)], 1.0, OPTIONS)
    assert repr(met).endswith("contact at start of step)")


def test_velocity_and_curvature_are_those_of_the_frame(run):
    expected = vkmcore.compute_filament_velocity(run.filaments, OPTIONS)["velocity"]
    for mine, theirs in zip(run.velocity(), expected, strict=True):
        assert np.array_equal(mine, theirs)
    rear = run.frames[2].points[0]
    radius = np.hypot(rear[:, 0], rear[:, 1]).mean()
    assert run.curvature(2)[0] == pytest.approx(np.full(24, 1.0 / radius), rel=1e-2)


def test_a_trajectory_from_disk_is_the_run_again(run, tmp_path):
    run.save(tmp_path / "run.npz")
    again = load_trajectory(tmp_path / "run.npz")
    assert again.settings == run.settings
    for mine, theirs in zip(again.velocity(1), run.velocity(1), strict=True):
        assert np.array_equal(mine, theirs)
    with pytest.raises(FileExistsError):
        run.save(tmp_path / "run.npz")
    with pytest.raises(ValueError, match="known are"):
        run.save(tmp_path / "run.xyz")


def test_a_series_for_paraview_has_times_velocity_and_curvature(run, tmp_path):
    pyvista = pytest.importorskip("pyvista")
    run.save(tmp_path / "run.pvd")
    reader = pyvista.get_reader(tmp_path / "run.pvd")
    assert reader.time_values == run.times.tolist()
    reader.set_active_time_value(run.times[-1])
    block = reader.read()[0]
    assert np.array_equal(block.points, np.concatenate(run.frames[-1].points))
    assert np.array_equal(block["velocity"], np.concatenate(run.velocity()))
    assert np.array_equal(block["curvature"], np.concatenate(run.curvature()))
    assert block.n_lines == 3 and set(block["component"]) == {1, 2, 3}


@pytest.mark.parametrize("kind", ["gif", "mp4"])
def test_a_movie_has_every_frame_and_shows_what_moves(run, tmp_path, kind):
    pytest.importorskip("matplotlib")
    image = pytest.importorskip("PIL.Image")
    if kind == "mp4":
        ffmpeg = pytest.importorskip("imageio_ffmpeg")
    path = tmp_path / f"run.{kind}"
    movie = run.animate(path, title="rings")
    assert movie.frames == 5 and movie.data == path.read_bytes()
    assert f"data:{'image' if kind == 'gif' else 'video'}/{kind};base64," in movie._repr_html_()
    if kind == "gif":
        film = image.open(io.BytesIO(movie.data))
        pictures = []
        for number in range(film.n_frames):
            film.seek(number)
            pictures.append(np.asarray(film.convert("RGB")).astype(int))
    else:
        frames = ffmpeg.read_frames(str(path))
        width, height = next(frames)["size"]
        pictures = [np.frombuffer(data, np.uint8).reshape(height, width, 3).astype(int) for data in frames]
    assert len(pictures) == 5
    for picture in pictures:
        red, _, blue = picture[60:].transpose(2, 0, 1)
        assert (blue > red + 60).sum() > 300 and (red > blue + 60).sum() > 300  # both rings
        assert (picture.min(axis=2) > 230).mean() > 0.5  # on a pale ground
    blue_rows = [np.argwhere(p[60:, :, 2] > p[60:, :, 0] + 60)[:, 0].mean() for p in pictures]
    assert blue_rows[-1] < blue_rows[0] - 2  # the rear ring rises


def test_a_movie_that_cannot_be_is_told(run, tmp_path, monkeypatch):
    with pytest.raises(PlotError, match=r"\.gif and \.mp4"):
        run.animate(tmp_path / "run.avi")
    with pytest.raises(ValueError, match="gif and mp4"):
        run.animate(kind="avi")
    with pytest.raises(ValueError, match="frames a second"):
        run.animate(fps=0)
    monkeypatch.setitem(__import__("sys").modules, "imageio_ffmpeg", None)
    with pytest.raises(PlotError, match=r"vkmcore\[movie\]"):
        run.animate(tmp_path / "run.mp4")


def test_a_dataset_has_the_run_by_time_and_vertex(run):
    pytest.importorskip("xarray")
    data = run.to_xarray()
    assert dict(data.sizes) == {"time": 5, "vertex": 63, "axis": 3}
    front = data.position.sel(time=0.2, method="nearest").where(data.filament == 1, drop=True)
    assert np.array_equal(front, run.frames[2].points[1])
    assert np.array_equal(data.velocity[-1], np.concatenate(run.velocity()))
    moved = simulate([{"points": vkmcore.sample_circle(12)}], 0.01, OPTIONS, resample_ratio=2.0)
    with pytest.raises(ValueError, match="resample_ratio"):
        moved.to_xarray()
