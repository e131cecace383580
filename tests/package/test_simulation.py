"""The driver of filament dynamics, its trajectory files, its scenes and the command `vkmcore simulate`."""

import json
import math
import os
import re
import signal
import subprocess
import sys
import time
import zipfile
from pathlib import Path

import numpy as np
import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore import load_trajectory, simulate
from vkmcore.cli import cli
from vkmcore.dynamics import trajectory
from vkmcore.dynamics.scene import load_scene
from vkmcore.dynamics.summary import impulse

SCENES = Path(__file__).parents[2] / "examples" / "scenes"
OPTIONS = {"core_radius": 0.05, "lia_constant": -0.25, "a_sim": 0.05}


def ring(n, radius=1.0, z=0.0, **keys):
    return {"points": vkmcore.sample_circle(n, radius, z), **keys}


def rings(n=24):
    return [ring(n, 1.0, 0.0, id="rear"), ring(n, 1.0, 0.6, id="front", circulation=1.1)]


def same(a, b):
    """Bit by bit."""
    assert [(f.time, f.step, f.message) for f in a] == [(f.time, f.step, f.message) for f in b]
    for one, other in zip(a, b, strict=True):
        assert [p.tobytes() for p in one.points] == [p.tobytes() for p in other.points]


# --- steps


def test_raw_is_the_loop_over_the_library_s_functions():
    start = [*rings(), ring(9, 2.0, 3.0, source=False, tag="tracer"), ring(5, 3.0, -1.0, ghost=True)]
    kept = [f["points"].copy() for f in start]
    run = simulate(start, 0.3, OPTIONS, core="raw", dt=0.02, frame_interval=0.1)
    filaments = start
    for _ in range(15):
        moved = vkmcore.rk4_step(filaments, 0.02, OPTIONS)["filaments"]
        filaments = [{**f, "points": m["points"]} for f, m in zip(filaments, moved, strict=True)]
    assert run.steps == 15 and run.time == 0.3 and not run.contact and run.message == ""
    assert np.allclose(run.times, [0, 0.1, 0.2, 0.3], rtol=0, atol=1e-15)
    for f, g in zip(run.filaments, filaments, strict=True):
        assert np.allclose(f["points"], g["points"], rtol=0, atol=1e-14)
        assert {k: v for k, v in f.items() if k != "points"} == {k: v for k, v in g.items() if k != "points"}
    assert all(np.array_equal(f["points"], before) for f, before in zip(start, kept, strict=True))
    assert np.array_equal(run.filaments[3]["points"], kept[3])


@pytest.mark.parametrize("cfl", [0.5, 0.1])
def test_proposed_steps_keep_to_the_estimate(cfl):
    run = simulate(rings(), 1.0, OPTIONS, cfl=cfl, frame_interval=10.0)
    estimate = vkmcore.estimate_cfl_dt(rings(), OPTIONS, cfl)
    assert 1.0 / estimate <= run.steps < 8.0 / estimate
    assert run.times.tolist() == [0.0, 1.0]


def test_proposed_steps_carry_the_shortest_waves():
    """Noise of a fine ring grows without bound if steps only keep to the estimate by speed."""
    noisy = [{"points": vkmcore.sample_circle(150) + 1e-7 * np.random.default_rng(3).normal(size=(150, 3))}]
    options = {"core_radius": 0.01}

    def noise(**settings):
        points = simulate(noisy, 0.6, options, frame_interval=0.6, contact_threshold=0, **settings).frames[-1].points
        return np.ptp(points[0][:, 2])

    assert noise() < 2e-6
    assert noise(dt=vkmcore.estimate_cfl_dt(noisy, options)) > 1e-4


def test_uneven_edges_are_resampled():
    t = 2 * np.pi * np.arange(60) / 60
    t += 0.6 * np.sin(t)
    uneven = [{"points": np.stack([np.cos(t), np.sin(t), 0 * t], axis=1)}]

    def ratio(run):
        p = run.frames[-1].points[0]
        edges = np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1)
        return edges.max() / edges.min()

    kept = simulate(uneven, 0.05, OPTIONS)
    assert ratio(kept) > 2.0 > 1.2 > ratio(simulate(uneven, 0.05, OPTIONS, resample_ratio=1.2))
    same(kept.frames, simulate(uneven, 0.05, OPTIONS, resample_ratio=50.0).frames)


# --- contacts


def collision():
    """Two rings on one axis that fly at each other, the faster one into the slower one's hole."""
    return [ring(40, 1.0, 0.0), ring(40, 1.0, 0.5, circulation=-1.0)]


def test_a_contact_ends_the_run_on_its_safe_side():
    options = {"core_radius": 0.02}
    run = simulate(collision(), 20.0, options, dt=0.2, frame_interval=1.0)
    assert run.contact and run.time < 20.0
    assert run.message == "topology guard: transient contact within step; stopped on safe side"
    assert run.frames[-1].message == run.message and run.frames[-1].time == run.time
    clearance = vkmcore.compute_topology_clearance(run.frames[-1].points, 0.02)["clearance"]
    assert 0.04 <= clearance < 0.05
    assert simulate(collision(), 20.0, options, dt=0.2, contact_threshold=0.2).time < run.time
    assert not simulate(collision(), 2 * run.time, options, dt=0.2, contact_threshold=0.0).contact


def test_a_contact_at_the_start_is_no_step():
    run = simulate([ring(40), ring(40, 1.0, 0.01)], 1.0, OPTIONS)
    assert (run.contact, run.message, run.steps, run.time) == (True, "contact at start of step", 0, 0.0)
    assert len(run.frames) == 1
    ghost = simulate([ring(40), ring(40, 1.0, 0.01, ghost=True)], 0.1, OPTIONS)
    assert not ghost.contact and ghost.time == 0.1


# --- what is known of vortex rings


def test_a_ring_travels_at_the_speed_of_its_velocity():
    run = simulate([ring(200, 2.0, circulation=3.0)], 0.5, {"core_radius": 0.01}, core="solid", frame_interval=0.5)
    travelled = run.frames[-1].points[0] - run.frames[0].points[0]
    classical = 3.0 / (8 * math.pi) * (math.log(8 * 2.0 / 0.01) - 0.25)
    assert np.allclose(travelled[:, 2] / 0.5, classical, rtol=5e-5)
    assert np.allclose(travelled[:, :2], 0.0, atol=1e-9)


def pair_energy(points):
    """Kinetic energy over the density of thin coaxial rings of circulation 1, from their radii and heights."""
    (R1, z1), (R2, z2) = [(np.linalg.norm(p[0, :2]), p[0, 2]) for p in points]
    t = 2 * np.pi * (np.arange(256) + 0.5) / 256
    r = np.sqrt(R1**2 + R2**2 - 2 * R1 * R2 * np.cos(t) + (z1 - z2) ** 2 + OPTIONS["a_sim"] ** 2)
    core = math.log(8 / OPTIONS["core_radius"]) + OPTIONS["lia_constant"] - 1
    return sum(R / 2 * (math.log(R) + core) for R in (R1, R2)) + R1 * R2 / 2 * (np.cos(t) / r).mean() * 2 * np.pi


def test_leapfrogging_rings_keep_circulation_and_to_order_four_energy_and_impulse():
    start = [ring(24, 1.0, 0.0), ring(24, 1.0, 0.6)]

    def invariants(dt):
        run = simulate(start, 6.0, OPTIONS, dt=dt, frame_interval=0.2)
        assert run.steps == round(6.0 / dt)
        assert [f.get("circulation", 1.0) for f in run.filaments] == [1.0, 1.0]
        impulses = np.array([np.sum([impulse(p, 1.0) for p in frame.points], axis=0) for frame in run.frames])
        assert np.allclose(impulses[:, :2], 0.0, atol=1e-12)
        return np.array([impulses[:, 2], [pair_energy(frame.points) for frame in run.frames]])

    exact_in_time = invariants(0.005)
    # The polygons of 24 edges keep both to their own error, and the steps to order four.
    assert np.all(np.abs(exact_in_time / exact_in_time[:, :1] - 1.0) < 0.01)
    drifts = [np.sqrt(((invariants(dt) - exact_in_time) ** 2).mean(axis=1)) for dt in (0.1, 0.05, 0.025)]
    assert np.all(drifts[-1] < 1e-7)
    assert np.all(np.abs(np.log2(np.divide(drifts[:-1], drifts[1:])) - 4.0) < 0.2), drifts


# --- trajectory files

LONG = {"dt": 0.02, "frame_interval": 0.1, "resample_ratio": 1.5}


def test_a_trajectory_is_an_npz_of_all_frames(tmp_path):
    path = tmp_path / "run.npz"
    run = simulate([*rings(), {"points": np.zeros((0, 3)), "ghost": True}], 0.5, OPTIONS, trajectory=path, **LONG)
    stored = load_trajectory(path)
    same(stored.frames, run.frames)
    assert np.array_equal(stored.times, run.times)
    assert [f["circulation"] for f in stored.filaments] == [1.0, 1.1, 1.0]
    assert stored.settings["options"]["core_radius"] == 0.05 and stored.settings["dt"] == 0.02
    with np.load(path) as members:
        assert members.files == ["run", *(f"frame_{k:06d}" for k in range(6))]
        assert np.array_equal(members["frame_000005"]["points"], np.vstack(run.frames[-1].points))
        assert members["frame_000005"]["time"] == 0.5
    assert zipfile.ZipFile(path).testzip() is None
    with pytest.raises(FileExistsError, match="exists already"):
        simulate(rings(), 0.5, OPTIONS, trajectory=path, **LONG)


@pytest.mark.parametrize("cut", [0, 1, 30, 700])
def test_a_torn_file_loses_its_unfinished_frame_alone_and_goes_on(tmp_path, cut):
    path = tmp_path / "run.npz"
    whole = simulate(rings(), 0.6, OPTIONS, trajectory=tmp_path / "whole.npz", **LONG)
    simulate(rings(), 0.4, OPTIONS, trajectory=path, **LONG)
    content = path.read_bytes()
    directory = content.index(b"PK\1\2")
    path.write_bytes(content[: directory - cut] + b"PK\3\4torn" * (cut % 2))
    same(load_trajectory(path).frames, whole.frames[: 4 if cut else 5])
    resumed = simulate(rings(), 0.6, OPTIONS, trajectory=path, resume=True, **LONG)
    same(resumed.frames, whole.frames)
    assert path.read_bytes() == (tmp_path / "whole.npz").read_bytes()


def test_a_finished_run_is_extended_and_a_contact_stays_one(tmp_path):
    path = tmp_path / "run.npz"
    settings = {"dt": 0.2, "frame_interval": 1.0, "trajectory": path, "resume": True}
    options = {"core_radius": 0.02}
    whole = simulate(collision(), 20.0, options, dt=0.2, frame_interval=1.0)
    simulate(collision(), 1.0, options, **settings)
    same(simulate(collision(), 20.0, options, **settings).frames, whole.frames)
    before = path.read_bytes()
    again = simulate(collision(), 20.0, options, **settings)
    assert again.contact and again.message == whole.message and path.read_bytes() == before


def test_only_the_same_run_is_resumed(tmp_path):
    path = tmp_path / "run.npz"
    simulate(rings(), 0.2, OPTIONS, trajectory=path, **LONG)
    before = path.read_bytes()
    moved = rings()
    moved[0]["points"][3, 2] += 1e-16 + 1e-12
    for filaments, options, settings, text in [
        (rings(), OPTIONS, {**LONG, "dt": 0.01}, "dt = 0.02, not 0.01"),
        (rings(), {**OPTIONS, "a_sim": 0.0}, LONG, "options"),
        (moved, OPTIONS, LONG, "other filaments"),
        (rings()[:1], OPTIONS, LONG, "other filaments"),
        ([{**f, "source": False} for f in rings()], OPTIONS, LONG, "other filaments"),
    ]:
        with pytest.raises(ValueError, match=text):
            simulate(filaments, 0.4, options, trajectory=path, resume=True, **settings)
    np.savez(tmp_path / "other.npz", a=np.zeros(3))
    (tmp_path / "empty.npz").write_bytes(b"")
    for other in ("other.npz", "empty.npz"):
        with pytest.raises(ValueError, match="not a trajectory"):
            simulate(rings(), 0.4, OPTIONS, trajectory=tmp_path / other, resume=True, **LONG)
    assert path.read_bytes() == before


def test_large_files_have_a_directory_of_64_bits(tmp_path, monkeypatch):
    monkeypatch.setattr(trajectory, "MANY", 3)
    monkeypatch.setattr(trajectory, "LARGE", 5000)
    path = tmp_path / "run.npz"
    run = simulate(rings(), 0.6, OPTIONS, trajectory=path, **LONG)
    monkeypatch.undo()
    content = bytearray(path.read_bytes())
    # The marks for "see the 64-bit field" are made what a reader looks for.
    assert len(run.frames) == 7 and len(content) > 8000 and b"PK\6\6" in content and b"PK\6\7" in content
    place = content.index(b"PK\1\2")
    for _ in range(8):
        offset, name, extra = place + 42, *np.frombuffer(content[place + 28 : place + 32], "<u2").tolist()
        if extra:
            content[offset : offset + 4] = b"\xff" * 4
        place += 46 + name + extra
    end = content.rindex(b"PK\5\6")
    content[end + 8 : end + 20] = b"\xff" * 12
    path.write_bytes(content)
    with np.load(path) as members:
        assert np.array_equal(members["frame_000006"]["points"], np.vstack(run.frames[-1].points))


KILLED = """
import sys, vkmcore
rings = [{"points": vkmcore.sample_circle(60, 1.0, z)} for z in (0.0, 0.6)]
vkmcore.simulate(rings, float(sys.argv[2]), {"core_radius": 0.05, "a_sim": 0.05}, dt=0.002, frame_interval=0.01,
                 trajectory=sys.argv[1], resume=True)
"""


@pytest.mark.parametrize("ending", [signal.SIGKILL, signal.SIGINT])
def test_an_interrupted_run_goes_on_to_the_same_bits(tmp_path, ending):
    path, whole = tmp_path / "run.npz", tmp_path / "whole.npz"
    with subprocess.Popen(
        [sys.executable, "-c", KILLED, str(path), "1000"],
        stderr=subprocess.DEVNULL,
        preexec_fn=lambda: signal.signal(signal.SIGINT, signal.default_int_handler),
    ) as run:
        deadline = time.monotonic() + 60
        while not (path.exists() and path.stat().st_size > 20000) and time.monotonic() < deadline:
            time.sleep(0.01)
        os.kill(run.pid, ending)
        assert run.wait(timeout=30) != 0
    reached = len(load_trajectory(path).frames)
    assert reached >= 5
    end = (reached + 6) * 0.01
    for file in (path, whole):
        subprocess.run([sys.executable, "-c", KILLED, str(file), str(end)], check=True)
    assert path.read_bytes() == whole.read_bytes() and len(load_trajectory(path).frames) >= reached + 6


# --- bad input


@pytest.mark.parametrize(
    "filaments, settings, error, text",
    [
        ([], {}, ValueError, "no filament moves"),
        ([ring(5, ghost=True)], {}, ValueError, "no filament moves"),
        ([{"id": "a"}], {}, ValueError, "filament 1 has no points"),
        ([ring(5), {"points": np.zeros((4, 2))}], {}, ValueError, r"filament 2 has points of shape \(4, 2\)"),
        ([{"points": np.full((4, 3), math.nan)}], {}, ValueError, "filament 1 .* not finite"),
        ([ring(9)], {"options": {"core": 1}}, ValueError, "unknown option 'core'; known are lia_only"),
        ([ring(9)], {"t_end": math.inf}, ValueError, "t_end must be finite"),
        ([ring(9)], {"resume": True}, ValueError, "resume needs a trajectory"),
        ([ring(9)], {"t_end": -1.0}, ValueError, "t_end must be finite"),
        ([ring(9)], {"dt": 0.0}, ValueError, "dt must be"),
        ([ring(9)], {"cfl": math.nan}, ValueError, "cfl must be"),
        ([ring(9)], {"frame_interval": -1.0}, ValueError, "frame_interval must be"),
        ([ring(9)], {"contact_threshold": -1.0}, ValueError, "contact_threshold must be"),
        ([ring(9)], {"resample_ratio": 1.0}, ValueError, "resample_ratio must be above 1"),
        ([ring(9, 1e-15, circulation=1e-8)], {}, ValueError, "a step of 1e-6 s"),
        ([{"points": np.ones((5, 3))}], {}, ValueError, "their points repeat"),
        ([ring(9)], {"dt": 1e-30}, ValueError, "do not move the clock"),
        ([ring(9, circulation=1e200)], {"dt": 1e200, "t_end": 1e201}, RuntimeError, "positions run away after t = 0"),
    ],
)
def test_bad_input(tmp_path, filaments, settings, error, text):
    settings = {"t_end": 1.0, "contact_threshold": 0.0, **settings}
    if settings.get("dt") == 1e-30:
        settings["frame_interval"] = 0.5
    with pytest.raises(error, match=f"^simulate: .*{text}"):
        simulate(filaments, settings.pop("t_end"), settings.pop("options", None), **settings)


def test_no_time_is_the_start():
    run = simulate(rings(), 0.0)
    assert len(run.frames) == 1 and run.steps == 0 and not run.contact


# --- scenes and the command


def command(*arguments):
    return CliRunner().invoke(cli, ["simulate", *map(str, arguments)])


@pytest.mark.parametrize("name, filaments", [("leapfrogging_rings", 2), ("trefoil_vortex", 1)])
def test_the_example_scenes_run(tmp_path, name, filaments):
    scene = tmp_path / f"{name}.toml"
    text = (SCENES / f"{name}.toml").read_text()
    scene.write_text(re.sub(r"(?m)^points = \d+", "points = 48", text))
    files = [tmp_path / "run.npz", tmp_path / "end.svg", tmp_path / "run.gif"]
    options = [x for pair in zip(("--trajectory", "--plot", "--movie"), files, strict=True) for x in pair]
    result = command(scene, "--t-end", "0.3", "--json", *options)
    assert result.exit_code == 0, result.stderr
    record = json.loads(result.stdout)
    assert (record["time"], record["frames"], len(record["filaments"])) == (0.3, 4, filaments)
    stored = load_trajectory(files[0])
    assert record["filaments"][0]["centroid_end"] == stored.frames[-1].points[0].mean(axis=0).tolist()
    assert record["filaments"][0]["centroid_end"][2] > 0.05  # along the axis
    from PIL import Image

    assert Image.open(files[2]).n_frames == 4 and "<svg" in files[1].read_text()
    assert not list(tmp_path.glob("*.new*"))
    assert command(scene, "--t-end", "0.4", "--trajectory", files[0]).exit_code == 1
    resumed = command(scene, "--t-end", "0.4", "--trajectory", files[0], "--resume")
    assert resumed.exit_code == 0 and len(load_trajectory(files[0]).frames) == 5
    assert re.search(r"^frames +5$", resumed.stdout, re.MULTILINE)


def test_curves_of_a_scene_are_placed(tmp_path):
    file = tmp_path / "square.txt"
    file.write_text("0 0 0\n4 0 0\n4 4 0\n0 4 0\n0 0 0\n")
    scene = tmp_path / "scene.toml"
    scene.write_text(
        """t_end = 1
        [[filament]]
        curve = "ring"
        radius = 2
        centre = [1, 2, 3]
        normal = [0, -3, -4]
        points = 50
        core = 0.03
        circulation = -2
        [[filament]]
        curve = "square.txt"
        radius = 1.0
        id = "square"
        source = false
        [[filament]]
        curve = "3:1:1"
        ghost = true
        core = 0.03
        [[filament]]
        curve = "square.txt"
        points = 16
        normal = [0, 0, -1]
        """
    )
    loaded = load_scene(scene)
    assert (loaded.t_end, loaded.options, loaded.settings) == (1.0, {"core_radius": 0.03}, {})
    tilted, square, knot, turned = loaded.filaments
    offset = tilted["points"] - [1, 2, 3]
    normal = np.array([0, -0.6, -0.8])
    assert np.allclose(np.linalg.norm(offset, axis=1), 2.0) and np.allclose(offset @ normal, 0.0)
    # Counterclockwise about the normal: the ring travels along it when its circulation is positive.
    assert np.allclose(np.cross(offset, np.roll(offset, -1, axis=0)) @ normal, 4 * math.sin(2 * math.pi / 50))
    assert tilted["circulation"] == -2.0
    assert np.allclose(
        square["points"], np.array([[-1, -1, 0], [1, -1, 0], [1, 1, 0], [-1, 1, 0]]) / 2**0.5 + [2, 2, 0]
    )
    assert (square["id"], square["source"], knot["ghost"]) == ("square", False, True)
    edges = np.linalg.norm(np.roll(knot["points"], -1, axis=0) - knot["points"], axis=1)
    assert len(knot["points"]) == 100 and np.ptp(edges) < 5e-3 * edges.mean()
    assert len(turned["points"]) == 16 and np.cross(*turned["points"][[0, 4]] - [2, 2, 0])[2] < 0
    assert turned["points"].min() == 0.0 and turned["points"].max() == 4.0


RING = '[[filament]]\ncurve = "ring"\nradius = 1.0\n'


@pytest.mark.parametrize(
    "text, error",
    [
        ("t_end = ", "Invalid value (at end of document)"),
        (RING, "t_end is missing"),
        ("t_end = 1.0", "no [[filament]] in it"),
        ("t_end = 1.0\nfilament = 3", "no [[filament]] in it"),
        (f"t_end = 'soon'\n{RING}", "t_end: expected a number"),
        (f"t_end = 1\ncore = 3\n{RING}", "core: expected a text"),
        (f"t_end = 1\ntend = 2\n{RING}", "unknown key 'tend'; known are"),
        (f"t_end = 1\n[options]\ncore = 2\n{RING}", "options: unknown key 'core'; known are"),
        (f"t_end = 1\n[options]\nlia_only = 1\n{RING}", "options: lia_only: expected true or false"),
        (f"t_end = 1\n{RING}cirulation = 1", "filament 1: unknown key 'cirulation'"),
        (f"t_end = 1\n{RING}centre = [0, 1]", "filament 1: centre: expected three numbers"),
        (f"t_end = 1\n{RING}normal = [0, 0, 0]", "filament 1: normal: expected a direction"),
        (f"t_end = 1\n{RING}points = 2", "filament 1: points: expected a whole number from 3 on"),
        (f"t_end = 1\n{RING}core = -1", "filament 1: core: expected a positive number"),
        (f"t_end = 1\n{RING}core = 1.0\n{RING}core = 2.0", "filament 2: core: all filaments have one core radius"),
        ('t_end = 1\n[[filament]]\ncurve = "ring"', "filament 1: radius is missing"),
        ("t_end = 1\n[[filament]]\nradius = 1", "filament 1: curve is missing"),
        (
            't_end = 1\n[[filament]]\ncurve = "9:99:9"',
            "filament 1: curve: 9:99:9: neither a file nor a key of the catalogue",
        ),
        ('t_end = 1\n[[filament]]\ncurve = "words.txt"', "filament 1: curve: "),
    ],
)
def test_errors_of_a_scene_are_one_line(tmp_path, text, error):
    (tmp_path / "words.txt").write_text("no points at all\n")
    scene = tmp_path / "scene.toml"
    scene.write_text(text)
    result = command(scene)
    assert (result.exit_code, result.stdout) == (1, "")
    assert result.stderr.startswith(f"{scene}: {error}") and result.stderr.count("\n") == 1


def test_failures_of_the_command(tmp_path):
    scene = tmp_path / "scene.toml"
    scene.write_text(f"t_end = 1\n{RING}")
    assert command(tmp_path / "none.toml").exit_code == 2
    assert command(scene, "--resume").exit_code == 2
    for option, file in [
        ("--movie", "a.avi"),
        ("--plot", "a.xyz"),
        ("--movie", "no/a.gif"),
        ("--trajectory", "no/a.npz"),
    ]:
        result = command(scene, option, tmp_path / file)
        assert (result.exit_code, result.stdout) == (1, "") and result.stderr.count("\n") == 1


def test_the_option_s_core_is_taken_for_the_scene_s(tmp_path):
    scene, path = tmp_path / "scene.toml", tmp_path / "run.npz"
    scene.write_text(f't_end = 0.1\ncore = "solid"\n{RING}points = 12')
    for options, core in ((), "solid"), (("--core", "hollow"), "hollow"):
        path.unlink(missing_ok=True)
        assert command(scene, "--trajectory", path, *options).exit_code == 0
        assert load_trajectory(path).settings["core"] == core
    assert command(scene, "--core", "soft").exit_code == 2
    scene.write_text(f't_end = 0.1\ncore = "soft"\n{RING}')
    result = command(scene)
    assert result.exit_code == 1 and "unknown core 'soft'; known are hollow" in result.stderr


def test_a_contact_is_told(tmp_path):
    scene = tmp_path / "scene.toml"
    scene.write_text(f"t_end = 1\n{RING}{RING}centre = [0, 0, 0.001]\n")
    result = command(scene)
    assert result.exit_code == 0 and result.stderr == "t = 0 s: contact at start of step\n"


def test_the_examples_of_the_docs_run(tmp_path, capsys):
    text = (SCENES.parents[1] / "docs" / "simulation.md").read_text(encoding="utf-8")
    [snippet] = re.findall(r"```python\n(.*?)```", text, re.DOTALL)
    exec(compile(snippet.replace("80", "24"), "simulation.md", "exec"), {})
    assert capsys.readouterr().out.startswith("4.0 ")
    scene = tmp_path / "scene.toml"
    scene.write_text(
        re.sub(r"(?m)^    ", "", text[text.index("    t_end = 12.0") : text.index("Lengths are in metres")])
    )
    result = command(scene, "--t-end", "0.1")
    assert result.exit_code == 0, result.stderr


def test_an_interrupted_command_says_what_is_kept(tmp_path, monkeypatch):
    scene, path = tmp_path / "scene.toml", tmp_path / "run.npz"
    scene.write_text(f"t_end = 1\n{RING}")
    append, frames = trajectory.TrajectoryWriter.append, []

    def interrupted(self, frame):
        if len(frames) == 4:
            raise KeyboardInterrupt
        frames.append(frame)
        append(self, frame)

    monkeypatch.setattr(trajectory.TrajectoryWriter, "append", interrupted)
    result = command(scene, "--trajectory", path)
    assert (result.exit_code, result.stdout) == (130, "")
    assert result.stderr == f"{path} holds all frames so far; --resume goes on\nInterrupted.\n"
    same(load_trajectory(path).frames, frames)
