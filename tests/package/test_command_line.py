"""The command line: tables, JSON, plots, and how it fails."""

import csv
import io
import json
import os
import platform
import shutil
import signal
import struct
import subprocess
import sys
from pathlib import Path

import click
import pytest
import vkmcore
from click import shell_completion
from click.testing import CliRunner
from vkmcore import ParticleEvaluator, TailApproxConfig, get_embedded_knot_files, load_embedded_ideal_text
from vkmcore.cli import COMMANDS, cli
from vkmcore.commands.arguments import range_text
from vkmcore.commands.output import console, lines_of, natural_width, plain_table

SCENE = Path(__file__).resolve().parents[2] / "examples" / "scenes" / "leapfrogging_rings.toml"
QUICK = ["--library-defaults", "--resolution", "120", "--iterations", "20"]


def run(*arguments):
    return CliRunner().invoke(cli, list(arguments))


def spawn(*arguments, **options):
    command = [sys.executable, "-m", "vkmcore", *arguments]
    return subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, **options)


def weigh_by_hand(knot_id, tail=None):
    knot = ParticleEvaluator(knot_id, 120)
    knot.relax(20)
    if tail is not None:
        knot.set_tail_approx_config(tail)
    return knot


def test_mass_records_are_the_library_s_numbers_to_the_last_bit():
    result = run("mass", "3:1:1", "4:1:1", *QUICK, "--stretch", "2", "--azimuth-samples", "5", "--json")
    assert result.exit_code == 0, result.stderr
    records = json.loads(result.stdout)
    assert [record["id"] for record in records] == ["3:1:1", "4:1:1"]
    tail = TailApproxConfig()
    tail.enabled = True
    tail.azimuth_samples = 5
    for record in records:
        knot = weigh_by_hand(record["id"], tail)
        metrics = knot.compute_relativistic_metrics()
        filaments = knot.get_filaments()
        settings = record.pop("settings")
        assert record == {
            "id": record["id"],
            "filaments": len(filaments),
            "points": sum(map(len, filaments)),
            "ropelength": knot.get_dimless_ropelength(2.0),
            "length_m": knot.get_physical_length_m(),
            "core_energy_J": knot.compute_core_energy_J(),
            "tail_energy_J": knot.compute_tail_energy_J(True),
            "core_mass_MeV": knot.get_core_mass_mev_only(),
            "mass_with_tail_MeV": knot.get_mass_mev_ab_initio(True),
            "helicity_m_per_s2": metrics.helicity,
            "core_time_dilation": metrics.core_time_dilation,
        }
        assert record["tail_energy_J"] > 0.0
        assert record["core_mass_MeV"] == record["core_energy_J"] / 1.602176634e-13
        assert (settings["resolution"], settings["iterations"], settings["stretch"]) == (120, 20, 2.0)
        assert settings["tail"]["azimuth_samples"] == 5


def test_mass_without_tail():
    [record] = json.loads(run("mass", "3:1:1", *QUICK, "--no-tail", "--json").stdout)
    assert record["tail_energy_J"] is None and record["mass_with_tail_MeV"] is None
    assert record["settings"]["tail"] is None
    assert record["core_mass_MeV"] == weigh_by_hand("3:1:1").get_core_mass_mev_only()


@pytest.mark.parametrize("ids", [["3:1:1"], ["3:1:1"] * 7])
def test_mass_table_cuts_no_digit_off(ids):
    result = run("mass", *ids, *QUICK)
    assert result.exit_code == 0 and result.stderr == ""
    length = weigh_by_hand("3:1:1").get_physical_length_m()
    assert result.stdout.count(f"{length:.9e}") == len(ids)
    assert result.stdout.count("3:1:1") == len(ids)


def test_numbers_that_are_not_finite_are_null_in_json():
    result = run("mass", "3:1:1", *QUICK, "--timestep", "1e200", "--no-tail", "--json")
    [record] = json.loads(result.stdout, parse_constant=pytest.fail)
    assert record["core_mass_MeV"] is None
    assert "ran away" in result.stderr


@pytest.mark.parametrize("knot_id", ["3_0", "3:1:", "", "999:1:1"])
def test_a_wrong_id_gets_the_library_s_message(knot_id):
    with pytest.raises(RuntimeError) as library:
        ParticleEvaluator(knot_id)
    result = run("mass", "3:1:1", knot_id, "--json")
    assert (result.exit_code, result.stdout) == (1, "")
    assert result.stderr == f"{library.value}\n"


def test_knots_lists_both_tables():
    listed = json.loads(run("knots", "--json").stdout)
    keys = {entry["key"] for entry in listed}
    assert set(get_embedded_knot_files()) <= keys and {"0:1:1", "0:1:2", "3:1:1", "4:1:1"} <= keys
    assert [e["key"] for e in listed if e["source"] == "ideal/ideal.txt"].count("3:1:1") == 1
    assert sum(e["source"] == "ideal/ideal.txt" for e in listed) == load_embedded_ideal_text().count("<AB ")
    trefoil = next(entry for entry in listed if entry["key"] == "3:1:1")
    assert (trefoil["name"], trefoil["crossings"], trefoil["components"], trefoil["conway"]) == ("3_1", 3, 1, "3")
    assert "trefoil" in trefoil["aliases"] and trefoil["published"] == 32.7436
    head = load_embedded_ideal_text().partition('Id="3:1:1"')[2].partition(">")[0].split('"')
    assert trefoil["ropelength"] == pytest.approx(2 * float(head[3]) / float(head[5]), rel=1e-15)
    assert trefoil["difference"] == pytest.approx(trefoil["ropelength"] / 32.7436 - 1, rel=1e-12)
    table = run("knots").stdout
    assert all(key in table for key in keys)


def test_knots_by_name_by_number_and_as_csv():
    by_name = [json.loads(run("knots", name, "--json").stdout) for name in ("trefoil", "3_1", "[3]", "K3a1")]
    assert {entry["key"] for entry in by_name[0]} >= {"3_1", "3:1:1"} and by_name[2] == by_name[0] == by_name[3]
    assert [entry["key"] for entry in by_name[1]] == ["3_1"]  # a key stands for itself
    four = list(csv.DictReader(io.StringIO(run("knots", "--crossings", "4", "--csv").stdout)))
    assert "4:1:1" in {entry["key"] for entry in four} and {entry["crossings"] for entry in four} == {"4"}
    assert {int(e["components"]) for e in json.loads(run("knots", "--links", "--json").stdout)} >= {2}
    wrong = run("knots", "trefol")
    assert wrong.exit_code == 1 and "did you mean 3_1" in wrong.stderr


# A command's words, and where the lines of its --csv stand in its --json: the whole of it, or under a name.
AS_ROWS = {
    "compare 3_1 4_1 --samples 90": None,
    "describe 3_1 --samples 64": None,
    "info": None,
    "mass 3:1:1 4:1:1 --resolution 20 --iterations 1 --no-tail": None,
    "mass 3:1:1 --library-defaults --resolution 20 --iterations 1 --no-tail": None,
    "particle 3_1": "routes",
    "report report.json": None,
    "simulate SCENE --t-end 0": "filaments",
    "spectrum --points 11": "levels",
    "tighten 3_1 --vertices 30 --steps 2": "steps",
    "zoo": None,
}


@pytest.mark.parametrize("words", AS_ROWS)
def test_csv_has_what_json_has(words, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    called = words.replace("SCENE", str(SCENE)).split()
    printed, found = run(*called, "--csv"), json.loads(run(*called, "--json").stdout)
    found = found[AS_ROWS[words]] if AS_ROWS[words] else found
    found = found if isinstance(found, list) else [found]
    rows = list(csv.DictReader(io.StringIO(printed.stdout)))
    assert len(rows) == len(found) > 0
    for row, record in zip(rows, found):
        numbers = {name: value for name, value in record.items() if isinstance(value, int | float)}
        assert {name: float({"True": 1, "False": 0}.get(row[name], row[name])) for name in numbers} == numbers
        assert all(row[name] == value for name, value in record.items() if isinstance(value, str))


def test_every_command_with_json_has_csv():
    for name in COMMANDS:
        named = cli.get_command(click.Context(cli), name)
        for command in getattr(named, "commands", {"": named}).values():
            flags = {flag for parameter in command.params for flag in parameter.opts}
            assert {"--json", "--csv"} & flags in (set(), {"--json", "--csv"}), command.name
    both = run("info", "--json", "--csv")
    assert both.exit_code == 2 and "exclude each other" in both.stderr


def test_knots_on_disk_are_listed(tmp_path, monkeypatch):
    monkeypatch.setenv("VKM_KNOT_DATA_DIR", str(tmp_path))
    (tmp_path / "knot.9_32q.fseries").write_text("1 0 0 1 0 0\n")
    (tmp_path / "knot.3_1.fseries").write_text("2 0 0 2 0 0\n")  # the embedded one comes first
    listed = json.loads(run("knots", "--json").stdout)
    (mine,) = [entry for entry in listed if entry["source"].startswith(str(tmp_path))]
    assert (mine["key"], mine["name"], mine["form"]) == ("9_32q", "9_32", "on disk")


def test_info_tells_versions():
    import numpy

    facts = json.loads(run("info", "--json").stdout)
    assert facts["version"] == vkmcore.__version__ and facts["numpy"] == numpy.__version__
    assert facts["python"] == platform.python_version() and facts["vector_bits"] in (64, 128, 256, 512)
    assert set(facts["pair_forms"].values()) <= {"plain", "divider", "mixed", "added"}
    assert facts["compiler"] in run("info").stdout
    assert run("--version").stdout == f"vkmcore {vkmcore.__version__}\n"


def test_plot_is_a_picture(tmp_path):
    pytest.importorskip("matplotlib")
    plain = tmp_path / "picture"
    result = run("mass", "3:1:1", "0:1:1", *QUICK, "--no-tail", "--plot", str(plain))
    assert result.exit_code == 0, result.stderr
    data = plain.read_bytes()
    assert data[:8] == b"\x89PNG\r\n\x1a\n" and len(data) > 20_000
    width, height = struct.unpack(">II", data[16:24])
    assert 1200 < width < 2400 and 600 < height < 1200
    vectors = tmp_path / "picture.svg"
    assert run("mass", "0:1:1", *QUICK, "--no-tail", "--plot", str(vectors)).exit_code == 0
    assert b"<svg" in vectors.read_bytes()


@pytest.mark.parametrize("target", ["missing/picture.png", ".", "picture.xyz"])
def test_a_plot_that_cannot_be_written_fails_before_the_work(tmp_path, target):
    pytest.importorskip("matplotlib")
    result = run("mass", "3:1:1", "--iterations", "2000000", "--plot", str(tmp_path / target))
    assert (result.exit_code, result.stdout) == (1, "")
    assert result.stderr.startswith("vkmcore: ") and result.stderr.count("\n") == 1


def test_a_plot_without_matplotlib_says_how_to_get_it(monkeypatch):
    monkeypatch.setitem(sys.modules, "matplotlib", None)
    for name in [name for name in sys.modules if name.startswith("matplotlib.")]:
        monkeypatch.delitem(sys.modules, name)
    result = run("mass", "3:1:1", "--plot", "picture.png")
    assert result.exit_code == 1 and "pip install vkmcore[plot]" in result.stderr


def test_the_program_writes_json_and_nothing_else():
    process = spawn("mass", "3:1:1", *QUICK, "--json")
    stdout, stderr = process.communicate()
    assert (process.returncode, stderr) == (0, "")
    assert json.loads(stdout)[0]["id"] == "3:1:1"


def test_ctrl_c_ends_with_130_and_no_traceback():
    # The library polls for signals while it relaxes; the message tells that the loop is entered. A background job's
    # children ignore Ctrl-C unless they ask for it.
    program = (
        "import signal\n"
        "signal.signal(signal.SIGINT, signal.default_int_handler)\n"
        "import vkmcore.mass.table as table, vkmcore.cli as cli, sys\n"
        "relax = table.ParticleEvaluator.relax\n"
        "def told(self, *rest):\n"
        "    print('relaxing', flush=True)\n"
        "    relax(self, *rest)\n"
        "table.ParticleEvaluator.relax = told\n"
        "cli.cli(['mass', '3:1:1', '--library-defaults', '--iterations', '2000000000'])\n"
    )
    process = subprocess.Popen(
        [sys.executable, "-c", program], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True
    )
    assert process.stdout.readline() == "relaxing\n"
    process.send_signal(signal.SIGINT)
    _, stderr = process.communicate(timeout=60)
    assert (process.returncode, stderr) == (130, "Interrupted.\n")


@pytest.mark.skipif(not hasattr(os, "mkfifo"), reason="pipes of POSIX")
def test_a_reader_that_goes_away_is_no_fault_to_speak_of():
    reader, writer = os.pipe()
    os.close(reader)
    for arguments in (["knots"], ["knots", "--json"], ["info"]):
        process = subprocess.run(
            [sys.executable, "-m", "vkmcore", *arguments], stdout=writer, stderr=subprocess.PIPE, text=True
        )
        assert (process.returncode, process.stderr) == (1, "")
    os.close(writer)


def test_a_crumpled_filament_is_drawn_through_all_its_points(tmp_path):
    pytest.importorskip("matplotlib")
    import numpy as np
    from vkmcore.pictures.filaments import plot_filaments

    angle = np.linspace(0.0, 2.0 * np.pi, 1200, endpoint=False)
    circle = 1e-15 * np.stack([np.cos(angle), np.sin(angle), 0.0 * angle], axis=1)
    crumpled = circle + 1e-15 * np.random.default_rng(1).uniform(-0.3, 0.3, circle.shape)
    paths = {}
    for name, filament in (("circle", circle), ("crumpled", crumpled)):
        file = tmp_path / f"{name}.svg"
        plot_filaments(file, [(name, [filament])])
        groups = file.read_text().split('<g id="')
        paths[name] = max(group.count("<path") for group in groups if "3DCollection" in group.split('"', 1)[0])
    assert paths == {"circle": 360 * 14, "crumpled": 1200}


def test_the_list_of_commands_says_each_whole_and_helps_give_ranges_in_words():
    listed = CliRunner().invoke(cli, ["--help"], terminal_width=80).stdout
    assert "..." not in listed.partition("Commands:")[2] and all(f"  {name} " in listed for name in COMMANDS)
    for name in COMMANDS:
        text = CliRunner().invoke(cli, [name, "--help"]).stdout
        assert "<=x" not in text and "x>=" not in text and "x>0" not in text and "214748" not in text, name


@pytest.mark.parametrize(
    ("words", "bounds"),
    [("from 1 on", (1, 2**31 - 1, False)), ("above 0", (0.0, None, True)), ("from 1 to 50", (1, 50, False)),
     ("up to 3", (-(2**31), 3, False)), ("any", (None, None, False))],
)  # fmt: skip
def test_ranges_in_words(words, bounds):
    assert range_text(*bounds) == words


def completed_by_bash(line, folder):
    """The line that Bash makes of what was typed and a tab, in a terminal."""
    import pty

    program = folder / "vkmcore"
    program.write_text(f"#!{sys.executable}\nfrom vkmcore.cli import main\n\nmain()\n")  # as pip installs it
    program.chmod(0o755)
    start = folder / "start"
    start.write_text('PS1=; eval "$(_VKMCORE_COMPLETE=bash_source vkmcore)"\n')
    ours, theirs = pty.openpty()
    environment = os.environ | {"PATH": f"{folder}:{os.environ['PATH']}", "TERM": "dumb", "HOME": str(folder)}
    command = ["bash", "--noprofile", "--rcfile", str(start), "-i"]
    with subprocess.Popen(
        command, stdin=theirs, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment, cwd=folder
    ) as shell:
        os.write(ours, f"{line}\t\x01printf '<%s>' \x05\nexit\n".encode())  # to the line's start and to its end
        words = shell.communicate(timeout=300)[0].decode()
    os.close(ours), os.close(theirs)
    return [word.partition("<")[2] for word in words.split(">")[:-1]]


@pytest.mark.skipif(shutil.which("bash") is None, reason="no Bash here")
def test_bash_completes_keys_with_colons(tmp_path):
    (tmp_path / "mine of 3.txt").touch()
    assert completed_by_bash("vkmcore describe 3:1:", tmp_path) == ["vkmcore", "describe", "3:1:1"]
    assert completed_by_bash("vkmcore compare 3:1:1 12a_1202z", tmp_path)[2:] == ["3:1:1", "12a_1202z6"]
    assert completed_by_bash("vkmcore ideal tref", tmp_path)[2:] == ["trefoil"]
    assert completed_by_bash("vkmcore describe min", tmp_path)[2:] == ["mine of 3.txt"]
    assert completed_by_bash("vkmcore view 3_1 --colour press", tmp_path)[3:] == ["--colour", "pressure"]


def test_shells_complete_keys_and_files():
    completion = shell_completion.ShellComplete(cli, {}, "vkmcore", "_VKMCORE_COMPLETE")
    found = completion.get_completions(["mass"], "3:1")
    assert {item.value for item in found if item.type == "plain"} >= {"3:1:1"}
    assert {item.value for item in completion.get_completions(["describe"], "3_")} >= {"3_1"}
    assert any(item.type == "file" for item in completion.get_completions(["view"], "some"))


def test_long_tables_are_laid_out_as_short_ones():
    table = plain_table(("key", "ü name", "v / %"), ("key",))
    for row in (("a", "bb", "1.0"), ("ccc", "结", "-"), ("", "x", "22.123")):
        table.add_row(*row)
    short = console(width=natural_width(table))
    with short.capture() as shown:
        short.print(table)
    assert [click.unstyle(line) for line in lines_of(table)] == shown.get().split("\n")[:-1]
