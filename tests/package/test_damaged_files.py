"""Files of the package that were damaged, changed or cut: one error that says what is wrong, and nothing lost."""

import os
import random
import resource
import signal

import numpy as np
import pytest
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.dynamics import trajectory
from vkmcore.dynamics.scene import SceneError, load_scene
from vkmcore.dynamics.trajectory import Frame, TrajectoryError, TrajectoryWriter, load_trajectory
from vkmcore.files import write_text

FILAMENTS = [
    {"id": name, "carrier": "A", "circulation": 1.0, "source": True, "ghost": False, "size": size}
    for name, size in (("", 3), ("b", 2))
]


def frame(number):
    return Frame(0.5 * number, number, [np.full((3, 3), float(number)), np.full((2, 3), -float(number))])


def written(path, frames):
    with TrajectoryWriter.create(path, FILAMENTS, {"dt": None}, frame(0)) as writer:
        for number in range(1, frames):
            writer.append(frame(number))
    return path.read_bytes()


def readable(path):
    """The number of frames that NumPy reads, all of them whole."""
    with np.load(path) as stored:
        return sum(stored[name].dtype.names is not None for name in stored.files)


def test_numpy_reads_a_trajectory_at_any_time(tmp_path, monkeypatch):
    """Whatever the last write was, the file is whole up to some frame, and can be gone on with."""
    states = []
    for name in ("_write", "_cut"):
        original = getattr(TrajectoryWriter, name)

        def spy(self, *arguments, original=original):
            original(self, *arguments)
            states.append(self._path.read_bytes())

        monkeypatch.setattr(TrajectoryWriter, name, spy)
    path = tmp_path / "run.npz"
    with TrajectoryWriter.create(path, FILAMENTS, {}, frame(0)) as writer:
        states.clear()
        for number in range(1, 40):
            writer.append(frame(number))
            assert readable(path) == number + 1
    monkeypatch.undo()
    counts = []
    copy = tmp_path / "copy.npz"
    for state in states:
        copy.write_bytes(state)
        counts.append(readable(copy))
        found = len(load_trajectory(copy).frames)
        TrajectoryWriter.reopen(copy).close()
        assert readable(copy) == found >= counts[-1]
    assert counts == sorted(counts) and counts[-1] == 40


def test_a_trajectory_is_written_in_linear_time(tmp_path, monkeypatch):
    """The directory is made and written as a whole now and then, not with each frame."""
    handled = []
    write, closing = TrajectoryWriter._write, TrajectoryWriter._closing
    monkeypatch.setattr(TrajectoryWriter, "_write", lambda self, *a: handled.append(len(a[1])) or write(self, *a))
    monkeypatch.setattr(
        TrajectoryWriter, "_closing", lambda self, at: handled.append(len(made := closing(self, at))) or made
    )
    size = len(written(tmp_path / "run.npz", 800))
    assert sum(handled) < 8 * size


def test_a_closed_trajectory_is_that_of_one_go(tmp_path):
    whole = written(tmp_path / "whole.npz", 60)
    path = tmp_path / "parts.npz"
    written(path, 25)
    with TrajectoryWriter.reopen(path) as writer:
        for number in range(25, 60):
            writer.append(frame(number))
    assert path.read_bytes() == whole


@pytest.mark.parametrize("limit", range(3000, 9000, 331))
def test_a_full_disk_leaves_all_frames(tmp_path, limit):
    path = tmp_path / "run.npz"
    writer = TrajectoryWriter.create(path, FILAMENTS, {}, frame(0))
    before = resource.getrlimit(resource.RLIMIT_FSIZE)
    ignored = signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (limit, before[1]))
    frames = 1
    try:
        with pytest.raises(OSError, match=str(path)):
            while frames < 60:
                writer.append(frame(frames))
                frames += 1
        assert readable(path) == frames
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, before)
        signal.signal(signal.SIGXFSZ, ignored)
    writer.close()
    with TrajectoryWriter.reopen(path) as writer:
        writer.append(frame(frames))
    assert readable(path) == len(load_trajectory(path).frames) == frames + 1


def member(name, array, path, monkeypatch):
    """A trajectory file whose last member is this one."""
    written(path, 1)
    with TrajectoryWriter.reopen(path) as writer:
        writer._append(name, array)


def record(vertices=5, time=0.5, step=1, message=b""):
    made = np.zeros((), trajectory._record_type(vertices))
    made["time"], made["step"], made["message"] = time, step, message
    return made


@pytest.mark.parametrize(
    ("name", "array", "text"),
    [
        ("frame_000001.npy", record(vertices=4), "frame 1: an array of type"),
        ("frame_000001.npy", np.zeros(5), "frame 1: an array of type float64 and shape"),
        ("frame_000001.npy", np.array("text"), "frame 1: an array of type"),
        ("frame_000001.npy", record(time=np.nan), "frame 1: time nan s"),
        ("frame_000001.npy", record(time=-1.0), "frame 1: time -1.0 s"),
        ("frame_000001.npy", record(step=-1), "frame 1: time 0.5 s and step -1"),
        ("frame_000001.npy", record(message=b"\xff"), "frame 1: its message is no text"),
        ("frame_000007.npy", record(), "frame 1: a member frame_000001.npy is expected"),
        ("other", record(), "frame 1: a member frame_000001.npy is expected"),
    ],
)
def test_a_frame_that_is_none(tmp_path, monkeypatch, name, array, text):
    path = tmp_path / "run.npz"
    member(name, array, path, monkeypatch)
    with pytest.raises(TrajectoryError, match=text) as caught:
        load_trajectory(path)
    assert str(caught.value).startswith(f"{path}: ")


@pytest.mark.parametrize(
    ("filaments", "text"),
    [
        ([{}], "run: filament 1: its members must be"),
        ([{**FILAMENTS[0], "size": -3}], "run: filament 1: its size is negative"),
        ([{**FILAMENTS[0], "size": 2.0}], "run: filament 1: its members"),
        ("none", "run: its settings must be a table"),
    ],
)
def test_a_run_that_is_none(tmp_path, monkeypatch, filaments, text):
    path = tmp_path / "run.npz"
    with pytest.raises(TrajectoryError, match=text):
        TrajectoryWriter.create(path, filaments, {}, Frame(0.0, 0, [])).close()
        load_trajectory(path)


def test_damaged_trajectories_raise_one_error(tmp_path):
    data = written(tmp_path / "whole.npz", 6)
    source = random.Random(3)
    path = tmp_path / "damaged.npz"
    for _ in range(3000):
        damaged = bytearray(data)
        for _ in range(source.choice((1, 3, 9))):
            damaged[source.randrange(len(damaged))] = source.randrange(256)
        path.write_bytes(damaged[: source.choice((len(damaged), source.randrange(len(damaged))))])
        try:
            assert len(load_trajectory(path).frames) <= 6
        except TrajectoryError as error:
            assert str(error).startswith(str(path))


@pytest.mark.parametrize(
    "text",
    [
        "t_end = " + "[" * 100_000,
        "t_end = " + "1" * 5000,
        "t_end = 1" + "0" * 400,
        't_end = 1.0\n[[filament]]\ncurve = "a\\u0000b"',
        't_end = 1.0\n[[filament]]\ncurve = "' + "x" * 5000 + '"',
        't_end = 1.0\n[[filament]]\ncurve = "ring"\nradius = 1.0\ncore = "thick"',
        "t_end = \ud800",
    ],
)
def test_scenes_that_cannot_be_read(tmp_path, text):
    path = tmp_path / "scene.toml"
    path.write_bytes(text.encode("utf-8", "surrogatepass"))
    with pytest.raises(SceneError) as caught:
        load_scene(str(path))
    assert str(caught.value).startswith(f"{path}: ")


# --- provenance


@pytest.fixture
def chain(tmp_path):
    """The command, and a certified chain of two records with its files."""
    for name in ("drawn.txt", "tight.txt", "settings.txt", "result.txt"):
        (tmp_path / name).write_text(name)

    def run(*words):
        return CliRunner().invoke(cli, ["provenance", *map(str, words)])

    path = tmp_path / "chain.json"
    common = ("--tool-version", "1", "--parameters", tmp_path / "settings.txt", "--coordinates", "xyz", "--scale", "1")
    steps = (("KnotPlot", "drawn.txt", "tight.txt"), ("Ridgerunner", "tight.txt", "tight.txt"),
             ("Smoothing", "tight.txt", "tight.txt"), ("VKMcore", "tight.txt", "result.txt"))  # fmt: skip
    for stage, source, target in steps:
        done = run(
            "new", path, "--stage", stage, "--tool", stage, "--input", tmp_path / source,
            "--output", tmp_path / target, *common,
        )  # fmt: skip
        assert done.exit_code == 0, done.output
    return run, path


def test_a_chain_hashes_its_files_anew(chain, tmp_path):
    run, path = chain
    assert run("verify", path).exit_code == 0
    (tmp_path / "result.txt").write_text("changed")
    done = run("verify", path)
    assert done.exit_code == 1 and "record 4: result.txt is not the output file that was recorded" in done.output
    (tmp_path / "result.txt").unlink()
    done = run("verify", path)
    assert done.exit_code == 0 and "not present, and not hashed: result.txt" in done.output


def test_a_seal_shows_any_change(chain, tmp_path):
    run, path = chain
    assert run("seal", path).exit_code == 0
    seal = tmp_path / "chain.json.seal"
    assert run("verify", path, "--seal", seal).exit_code == 0
    data = path.read_text()
    # What a chain alone cannot show: the tool of its last record.
    path.write_text(data.replace('"tool_name": "VKMcore"', '"tool_name": "another"'))
    assert run("verify", path).exit_code == 0
    done = run("verify", path, "--seal", seal)
    assert done.exit_code == 1 and "is not the chain that" in done.output
    source = random.Random(1)
    for _ in range(40):
        changed = bytearray(data.encode())
        changed[source.randrange(len(changed))] ^= 1 << source.randrange(8)
        path.write_bytes(changed)
        assert run("verify", path, "--seal", seal).exit_code != 0
    seal.write_text("no digest")
    path.write_text(data)
    assert "not a seal" in run("verify", path, "--seal", seal).output


# --- files that are replaced as a whole


def test_a_text_is_written_as_a_whole(tmp_path):
    target = tmp_path / "target"
    target.write_text("old")
    target.chmod(0o640)
    link = tmp_path / "link"
    link.symlink_to("target")
    write_text(link, "new")
    assert link.is_symlink() and target.read_text() == "new" and target.stat().st_mode & 0o777 == 0o640
    with pytest.raises(OSError, match="/dev/full"):
        write_text("/dev/full", "new")
    before = resource.getrlimit(resource.RLIMIT_FSIZE)
    ignored = signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (100, before[1]))
    try:
        with pytest.raises(OSError, match="target"):
            write_text(target, "x" * 1000)
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, before)
        signal.signal(signal.SIGXFSZ, ignored)
    assert target.read_text() == "new" and sorted(os.listdir(tmp_path)) == ["link", "target"]
