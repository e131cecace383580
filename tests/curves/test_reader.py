"""The one reader of curves: every format gives the same curve to every command, and bad files one clear line."""

import io
import json
import os
import zipfile

import numpy as np
import pytest
import vkmcore
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.curves import CurveError, read_curve, read_curves, reader, write_vect
from vkmcore.curves.catalogue import polygon_keys

ANGLE = 2.0 * np.pi * np.arange(40) / 40
TREFOIL = np.stack(
    [np.sin(ANGLE) + 2.0 * np.sin(2 * ANGLE), np.cos(ANGLE) - 2.0 * np.cos(2 * ANGLE), -np.sin(3 * ANGLE)], axis=1
)
RING = np.stack([np.cos(ANGLE[::4]) + 5.0, np.sin(ANGLE[::4]), 0.0 * ANGLE[::4]], axis=1)
LINK = [TREFOIL, RING]


def rows(points, between=" "):
    return "".join(between.join(map(repr, row)) + "\n" for row in points.tolist())


def as_bytes(save, *arrays, **named):
    file = io.BytesIO()
    save(file, *arrays, **named)
    return file.getvalue()


def vect(curves, folder):
    write_vect(folder / "written.vect", curves, "two\nlines")
    return (folder / "written.vect").read_bytes()


def grouped(heading, place):
    """A table with the component's name in the first or last column, and one column more."""
    lines = [heading]
    for group, points in zip(("one", ""), LINK, strict=True):
        for x, y, z in points.tolist():
            cells = [repr(z), "", repr(x), repr(y)]
            cells.insert(place, group)
            lines.append(",".join(cells))
    return "\r\n".join(lines)


# Content of a file with the trefoil, and of one with the link where the format holds links.
ONE = {
    "plain.txt": rows(TREFOIL),
    "comments.dat": "# a trefoil\n% of forty vertices\n\n" + rows(TREFOIL).replace("\n", "  # vertex\n", 3),
    "commas.txt": rows(TREFOIL, ", "),
    "bare.csv": rows(TREFOIL, ","),
    "heading.csv": '"x / m";"y / m";"z / m"\n' + rows(TREFOIL, ";"),
    "columns.csv": "i,Z,Y,X\n" + "".join(f"{i},{z!r},{y!r},{x!r}\n" for i, (x, y, z) in enumerate(TREFOIL.tolist())),
    "words.txt": "x y z\n" + rows(TREFOIL, "\t"),
    "closed.txt": rows(np.vstack([TREFOIL, TREFOIL[:1]])),
    "closed.npy": as_bytes(np.save, np.vstack([TREFOIL, TREFOIL[:1]])),
    "bom.csv": b"\xef\xbb\xbfx,y,z\r\n" + rows(TREFOIL, ",").replace("\n", "\r\n").encode(),
    "one.npy": as_bytes(np.save, TREFOIL),
    "stack.npy": as_bytes(np.save, TREFOIL[None]),
    "one.npz": as_bytes(np.savez_compressed, trefoil=TREFOIL),
    "list.json": json.dumps(TREFOIL.tolist()),
    "record.json": json.dumps({"name": "trefoil", "points": TREFOIL.tolist()}),
    "open.vect": "# ours\nVECT 1 41 1\n41\n1\n" + rows(np.vstack([TREFOIL, TREFOIL[:1]])) + "1 0 0 1\n",
}
MANY = {
    "parts.txt": "\n" + rows(TREFOIL) + "\n\n" + rows(RING) + "\n",
    "first.csv": grouped("component,z,note,x,y", 0),
    "last.csv": grouped("z,note,x,y,Filament", 4),
    "two.npz": as_bytes(np.savez, b=TREFOIL, a=RING),
    "two.json": json.dumps({"components": [{"points": points.tolist()} for points in LINK]}),
    "lists.json": json.dumps([points.tolist() for points in LINK]),
}


def write(folder, name, content):
    path = folder / name
    path.write_bytes(content if isinstance(content, bytes) else content.encode())
    return path


@pytest.mark.parametrize("name", ONE)
def test_every_format_gives_the_same_vertices(tmp_path, name):
    curve = read_curve(write(tmp_path, name, ONE[name]))
    assert curve.kind == "polygon" and curve.title == name.partition(".")[0]
    assert curve.vertices.dtype == np.float64 and curve.vertices.tolist() == TREFOIL.tolist()


@pytest.mark.parametrize("name", [*MANY, "written.vect"])
def test_links_keep_their_components(tmp_path, name):
    content = MANY[name] if name in MANY else vect(LINK, tmp_path)
    path = write(tmp_path, name, content)
    assert [curve.vertices.tolist() for curve in read_curves(path)] == [points.tolist() for points in LINK]
    with pytest.raises(CurveError, match="a link of 2 components; one closed curve is needed"):
        read_curve(path)
    assert [curve.vertices.tolist() for curve in read_curves(LINK)] == [points.tolist() for points in LINK]


# What each command says of a curve, the name and the samples of a series aside.
COMMANDS = {
    "pd": ["--samples", "100", "--json"],
    "describe": ["--samples", "100", "--json"],
    "tighten": ["--vertices", "24", "--steps", "1", "--contact-tol", "0.003", "--json"],
}


def said(command, source, text=None):
    result = CliRunner().invoke(cli, [command, str(source), *COMMANDS[command]], input=text)
    assert result.exit_code == 0, result.stderr
    record = json.loads(result.stdout)
    del record["name"]
    return record


@pytest.mark.parametrize("command", COMMANDS)
def test_every_command_reads_every_format_and_standard_input(tmp_path, command):
    expected = said(command, write(tmp_path, "plain.txt", ONE["plain.txt"]))
    written = write(tmp_path, "trefoil.vect", vect([TREFOIL], tmp_path))
    for name in ("commas.txt", "closed.npy", "one.npz", "record.json"):
        assert said(command, write(tmp_path, name, ONE[name])) == expected
    assert said(command, written) == expected
    assert said(command, "-", ONE["heading.csv"]) == said(command, "-", written.read_bytes()) == expected


@pytest.mark.parametrize("command", [*COMMANDS, "compare"])
def test_every_command_reads_series_under_every_name(tmp_path, monkeypatch, command):
    text = vkmcore.get_embedded_knot_files()["3_1"]
    write(tmp_path, "knot.9_99.fseries", text)
    monkeypatch.setenv("VKM_KNOT_DATA_DIR", str(tmp_path))
    monkeypatch.setattr(reader, "ALIASES", [lambda name: {"trefoil": "3_1"}.get(name)])
    ideal = write(tmp_path, "some.txt", vkmcore.load_embedded_ideal_text())
    if command == "compare":
        for name in ("9_99", "trefoil", str(tmp_path / "knot.9_99.fseries")):
            result = CliRunner().invoke(cli, ["compare", name, "3_1", "--samples", "50", "--json"])
            assert json.loads(result.stdout)["rms_point_delta"] == 0.0
        return
    records = [said(command, name) for name in ("3_1", "trefoil", "9_99", tmp_path / "knot.9_99.fseries")]
    for record in records:
        (record if command == "tighten" else record.get("curve", {})).pop("kind", None)
    assert records == [records[0]] * 4
    assert said(command, f"{ideal}#3:1:1") == said(command, "3:1:1")


def test_keys_on_disk_are_those_of_the_library_s_own_search(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    text = "% a curve\n{} 0 0 1 0 0\n0 0 0 0 0.5 0\n"
    places = ["knot_fseries", "away/knot_fseries", "away/resources/knot_fseries", "data"]
    for scale, place in enumerate(places, start=1):  # from the last that is looked at to the first
        (tmp_path / place).mkdir(parents=True)
        write(tmp_path / place, "knot.7_x.fseries", text.format(scale))
        if place.startswith("away"):
            monkeypatch.setenv("VKM_RESOURCE_DIR", str(tmp_path / "away"))
        elif place == "data":
            monkeypatch.setenv("VKM_KNOT_DATA_DIR", str(tmp_path / "data"))
        system = vkmcore.VortexKnotSystem()
        system.initialize_knot_from_name("7_x", 9)
        points = np.array(system.get_positions())[:-1]
        ours = read_curve("7_x")
        assert ours.block.a_x[0] == scale
        assert np.allclose(ours.sampled(8) - ours.sampled(8).mean(axis=0), points - points.mean(axis=0))
    with pytest.raises(CurveError, match="7_y: neither a file nor a key of the catalogue"):
        read_curve("7_y")


def test_components_of_an_ideal_link_stand_where_they_are():
    left, right = read_curves("0:1:2")
    block = vkmcore.parse_ideal_halvard_from_string(vkmcore.find_ideal_block_by_id("0:1:2"))[0]
    for curve, component in zip((left, right), block.components, strict=True):
        expected = vkmcore.evaluate_ideal_component(component, 2.0 * np.pi * np.arange(16) / 16)
        assert np.abs(curve.sampled(16) - expected).max() < 1e-15
    assert np.linalg.norm(left.sampled(16).mean(axis=0) - right.sampled(16).mean(axis=0)) > 2.0


@pytest.mark.skipif(not hasattr(os, "mkfifo"), reason="pipes of POSIX")
def test_knots_of_twelve_crossings_are_polygons_under_all_their_names():
    key = polygon_keys()[0]
    (curve,) = read_curves(key)
    assert curve.kind == "ideal" and curve.block is None
    lines = vkmcore.load_embedded_ideal_text(f"{key}.txt").splitlines()
    np.testing.assert_array_equal(curve.vertices, [[float(word) for word in line.split()] for line in lines])
    for name in (f"K{key}", f"{key[:3]}_{key[3:]}"):
        np.testing.assert_array_equal(read_curves(name)[0].vertices, curve.vertices)
    with pytest.raises(CurveError, match="12a9999: neither a file nor a key"):
        read_curves("12a9999")


def test_a_pipe_is_a_file():
    reader, writer = os.pipe()
    with open(writer, "w") as file:
        file.write("0 0 0\n1 0 0\n0 1 0\n")
    assert read_curve(f"/dev/fd/{reader}").vertices.tolist() == [[0, 0, 0], [1, 0, 0], [0, 1, 0]]
    os.close(reader)


NPZ = as_bytes(np.savez, points=TREFOIL)
FAULTS = {
    "a row too short": ("1 2 3\n4 5\n", "line 2: expected three numbers x y z, found '4 5'"),
    "a word": ("1 2 3\n\n4 5 x\n", "line 3: expected three numbers x y z, found '4 5 x'"),
    "an underscore": ("1 2 3\n4 5 1_0\n", "line 2: expected three numbers"),
    "two columns": ("1 2\n3 4\n", "line 1: expected three numbers x y z, found '1 2'"),
    "not finite": ("1 2 3\n4 5 6\n1 1 nan\n", "line 3: not a finite number in '1 1 nan'"),
    "a ragged table": ("x,y,z,w\n1,2,3,4\n1,2,3\n", "line 3: expected 4 columns as in the heading"),
    "an empty cell": ("x,y,z\n1,,3\n", "line 2: expected three numbers"),
    "nothing": ("", "no vertices: expected three numbers x y z a line, or Fourier rows of six"),
    "comments only": ("# 1 2 3\n", "no vertices"),
    "prose": ("once upon\na time\n", "line 1: expected three numbers x y z, found 'once upon'"),
    "bytes": (bytes(range(256)), "expected three numbers"),
    "JSON that ends early": ("[[1, 2, 3],\n [4, 5", "line 2: no JSON"),
    "JSON without points": ('{"name": 3}', "expected a member points, vertices"),
    "JSON of another shape": (
        "[[1, 2], [3, 4]]",
        "expected vertices of three numbers, shape (N, 3), found shape (2, 2)",
    ),
    "JSON of uneven rows": ("[[1, 2, 3], [3, 4]]", "expected vertices of three numbers"),
    "JSON of words": ('[["a", "b", "c"]]', "found something else"),
    "JSON with NaN": ("[[1, 2, 3], [NaN, 0, 0]]", "vertex 2: not a finite number"),
    "deep JSON": ("[" * 100_000, "no JSON"),
    "no NPY": (b"\x93NUMPY\x01\x00", "a damaged .npy array"),
    "an NPY of objects": (as_bytes(np.save, np.array([{}, {}])), "a damaged .npy array"),
    "an NPY of pairs": (as_bytes(np.save, np.zeros((4, 2))), "shape (N, 3), found shape (4, 2)"),
    "half an NPZ": (NPZ[: len(NPZ) // 2], "a damaged .npz file"),
    "a spoiled NPZ": (NPZ.replace(TREFOIL[3].tobytes(), TREFOIL[4].tobytes()), "a damaged .npz file"),
    "an NPZ of numbers": (as_bytes(np.savez, mass=np.array(1.5)), "mass: expected vertices of three numbers"),
    "an NPZ of nothing": (as_bytes(lambda file: zipfile.ZipFile(file, "w").close()), "expected three numbers"),
    "an open polyline": ("VECT\n1 3 0\n3\n0\n0 0 0\n1 0 0\n0 1 0\n", "polyline 1, from line 4 on, is open"),
    "a VECT that ends early": ("VECT\n1 3 0\n-3\n0\n0 0 0\n1 0\n", "line 6: expected a coordinate, found the end"),
    "a VECT with a word": ("VECT\n1 3 0\n-3\n0\n0 0 0\n1 0 up\n", "line 6: expected a coordinate, found 'up'"),
    "a VECT that miscounts": ("VECT\n2 9 0\n-3 -3\n0 0\n", "line 3: expected 9 vertices in all polylines, found 6"),
    "a binary VECT": ("VECT BINARY\n", "line 1: expected the number of polylines, found 'BINARY'"),
    "an ideal text of many": (vkmcore.load_embedded_ideal_text(), "FILE#ID"),
    "an ideal text of none": ('<AB Id="1:1:1">', "no ideal block"),
}


@pytest.mark.parametrize("fault", FAULTS)
def test_a_bad_file_gets_one_line_with_its_name_and_what_was_expected(tmp_path, fault):
    content, expected = FAULTS[fault]
    path = write(tmp_path, "curve.txt", content)
    for command in ("describe", "pd", "tighten"):
        result = CliRunner().invoke(cli, [command, str(path)])
        assert (result.exit_code, result.stdout, result.stderr.count("\n")) == (1, "", 1), result.stderr
        assert result.stderr.startswith(f"{path}: ") and expected in result.stderr


def test_arrays_that_are_no_curves():
    for value in ([], np.zeros(3), np.zeros((3, 2)), np.zeros((0, 4, 3)), [[1, 2, 3], [4, 5]], None):
        with pytest.raises(CurveError, match="points: expected vertices of three numbers"):
            read_curve(value)
    with pytest.raises(ValueError, match="at least one array of vertices"):
        write_vect("never.vect", [np.zeros((0, 3))])
