"""The embedded catalogue and the search for knots and ideal blocks, in the tables first and on disk second."""

import os
import re
from pathlib import Path

import _native
import numpy as np
import pytest
from vkmcore.ideal.packed_polygon import from_bytes

ROOT = Path(__file__).parents[2]
VARIABLES = ("VKM_RESOURCE_DIR", "VKM_KNOT_DATA_DIR", "VKM_IDEAL_DATABASE", "VKM_IDEAL_TXT")


@pytest.fixture
def place(tmp_path, monkeypatch):
    """An empty working directory three levels deep, with none of the variables set."""
    for variable in VARIABLES:
        monkeypatch.delenv(variable, raising=False)
    directory = tmp_path / "a" / "b" / "c"
    directory.mkdir(parents=True)
    monkeypatch.chdir(directory)
    return directory


def block(name, tag="AB", text=""):
    return f'<{tag} Id="{name}">{text}</{tag}>'


def write(path, text):
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


def test_tables_hold_the_files_of_the_source_tree():
    knots = {path.name[5:-8]: path.read_text() for path in (ROOT / "src/knot_fseries").glob("knot.*.fseries")}
    resources = ROOT / "resources"
    files = [path for path in resources.rglob("[!.]*") if path.is_file()]
    texts = {path.relative_to(resources).as_posix(): path.read_text() for path in files if path.suffix != ".polygon"}
    for path in resources.rglob("*.polygon"):
        lines = (" ".join(f"{x:.6e}" for x in point) + "\n" for point in from_bytes(path.read_bytes()))
        texts[path.relative_to(resources).with_suffix(".txt").as_posix()] = "".join(lines)
    assert _native.get_embedded_knot_files() == knots
    assert _native.get_embedded_ideal_files() == texts
    for table in (_native.get_embedded_knot_files(), _native.get_embedded_ideal_files()):
        assert list(table) == sorted(table, key=str.encode)
    assert {"1_1", "3_1"} <= set(knots) and "ideal/ideal.txt" in texts


def test_embedded_knots():
    assert len(_native.load_embedded_knot_block("1_1").a_x) == 1
    trefoil = _native.load_embedded_knot_block("3_1")
    assert (trefoil.header, trefoil.b_x) == ("Knot 3_1 (trefoil knot)", [0.224483, 0, 0, 0, 0.221238])
    for name in ("", "3_", "9_99", "é"):
        with pytest.raises(RuntimeError, match=rf"^Embedded knot id not found: {name}$"):
            _native.load_embedded_knot_block(name)


def test_embedded_ideal_texts():
    text = _native.load_embedded_ideal_text()
    assert text == _native.load_embedded_ideal_text("ideal/ideal.txt")
    assert text == _native.get_embedded_ideal_files()["ideal/ideal.txt"]
    blocks = _native.parse_embedded_ideal_txt()
    assert [b.id for b in blocks[:4]] == ["0:1:1", "0:1:2", "3:1:1", "4:1:1"]
    assert {b.source_tag for b in blocks} == {"AB"} and len(text.split("<AB ")) == len(blocks) + 1
    assert _native.parse_embedded_ideal_ab_by_id("0:1:2").n == 2
    with pytest.raises(RuntimeError, match=r"^Embedded ideal text not found: ideal$"):
        _native.parse_embedded_ideal_txt(name="ideal")
    with pytest.raises(RuntimeError, match=r"^parse_ideal_ab_by_id_from_string: AB Id not found: 0:1$"):
        _native.parse_embedded_ideal_ab_by_id("0:1")


def test_embedded_blocks_come_first(place):
    write(place / "resources/ideal.txt", block("0:1:1", text="other"))
    found = _native.find_ideal_ab_block_by_id("0:1:1")
    assert found == _native.find_ideal_block_by_id("0:1:1") and "other" not in found
    assert found.startswith('<AB Id="0:1:1"') and found.endswith("</AB>") and found.count("<") == 3
    assert _native.find_ideal_block_by_id("0:1:1", "HT") == ""


STANDARD = ("ideal", "ideal_short", "ideal_11a", "ideal_11n", "idealLinks", "idealLinks_10a", "idealLinks_10n")


def plain_walk(text, name, tag):
    """The element whose head holds Id="name", found with nothing but a walk over the text."""
    at = 0
    while (at := text.find(f"<{tag}", at)) >= 0 and (end := text.find(">", at)) >= 0:
        if f'Id="{name}"' in text[at : end + 1]:
            close = text.find(f"</{tag}>", end)
            return text[at : close + len(tag) + 3] if close >= 0 else ""
        at = end + 1
    return ""


def test_lookup_by_index_is_the_plain_walk(place):
    texts = _native.get_embedded_ideal_files()
    ids = {name for text in texts.values() for name in re.findall(r'Id="([^"]+)"', text)}
    assert len(ids) > 3
    some = sorted(ids)[:: max(1, len(ids) // 40)]
    for name in [*some, "0:1", "0:1:1 ", '3:1:1" Conway="3', 'x" y="']:
        for tags in (("AB", "HT", "TL"), ("AB",), ("TL",), ("A",), ("DATA",)):
            found = (
                plain_walk(texts[f"ideal/{file}.txt"], name, tag)
                for file in STANDARD
                if f"ideal/{file}.txt" in texts
                for tag in tags
            )
            expected = next(filter(None, found), "")
            assert _native.find_ideal_block_by_id(name, tags[0] if len(tags) == 1 else "") == expected, (name, tags)
        if (text := plain_walk(texts["ideal/ideal.txt"], name, "AB")) and '"' not in name:
            block = _native.parse_embedded_ideal_ab_by_id(name)
            assert block.id == name and block.fourier.a_x == _native.parse_ideal_txt_from_string(text)[0].fourier.a_x


# Where a file is looked for, from the first to the last; "/" begins at the working directory's great-grandparent.
DIRECTORIES = [
    "/res",
    "/res/resources",
    "/knots/..",
    "resources",
    "../resources",
    "share/vkmcore/resources",
    "share/thread_knot_core/resources",
]
DATABASES = [f"{d}{sub}/ideal.txt" for d in DIRECTORIES for sub in ("/ideal", "")]
LEGACY = [
    "/legacy",
    "ideal_database.txt",
    *(f"{up}Front-End/knot_fseries/ideal_database.txt" for up in ("", "../", "../../")),
]
FSERIES = [
    "/knots",
    "/res/resources/knot_fseries",
    "/res/knot_fseries",
    *(f"{up}src/{d}" for up in ("", "../", "../../") for d in ("knot_fseries", "Knots_FourierSeries")),
    "knot_fseries",
    "../knot_fseries",
    *(f"{up}share/{d}/knot_fseries" for d in ("vkmcore", "thread_knot_core") for up in ("", "../../")),
]


@pytest.fixture
def everywhere(place, monkeypatch):
    """Makes a path of the lists above, and sets the variables to their directories."""
    root = place.parents[2]
    monkeypatch.setenv("VKM_RESOURCE_DIR", str(root / "res"))
    monkeypatch.setenv("VKM_KNOT_DATA_DIR", str(root / "knots"))
    monkeypatch.setenv("VKM_IDEAL_DATABASE", str(root / "legacy"))
    monkeypatch.setenv("VKM_IDEAL_TXT", str(root / "last"))
    (root / "knots").mkdir()
    return lambda path: (root / path[1:]) if path.startswith("/") else (place / path)


def test_order_of_the_search_for_an_ab_block(everywhere):
    # From the last source to the first: each new one hides the earlier.
    paths = [*DATABASES, "resources/ideal/ideal_11n.txt", "resources/idealLinks_10n.txt", *LEGACY, "/last"]
    short = {"/last", *LEGACY}
    for i, path in reversed(list(enumerate(paths))):
        write(everywhere(path), block("9:9:9", text=str(i)) + block("K9", "HT", str(i)))
        assert _native.find_ideal_ab_block_by_id("9:9:9") == block("9:9:9", text=str(i)), path
        found = _native.find_ideal_block_by_id("K9")
        last = path in short
        assert found == block("K9", "HT", str(len(paths) - 1 if last else i)), path
    assert _native.find_ideal_block_by_id("K9", tag="AB") == ""
    assert _native.find_ideal_ab_block_by_id("K9") == ""


def test_tags_are_tried_at_each_source_before_the_next(everywhere):
    write(everywhere("/res/ideal.txt"), block("x", "TL"))
    write(everywhere("/res/ideal_short.txt"), block("x", "AB"))
    assert _native.find_ideal_block_by_id("x") == block("x", "TL")
    write(everywhere("/res/ideal.txt"), block("x", "TL") + block("x", "HT"))
    assert _native.find_ideal_block_by_id("x") == block("x", "HT")


def test_a_source_without_the_block_lets_the_search_go_on(everywhere):
    write(everywhere("/res/ideal.txt"), '<AB Id="x"> without an end')
    everywhere("/res/ideal/ideal.txt").mkdir(parents=True)  # a directory is no file
    write(everywhere("/last"), block("x"))
    assert _native.find_ideal_ab_block_by_id("x") == block("x")
    for missing in ("", "y"):
        assert _native.find_ideal_ab_block_by_id(missing) == ""
        assert _native.find_ideal_block_by_id(missing) == ""


def test_variables_are_read_at_every_call(place, monkeypatch):
    write(place / "mine", block("x"))
    assert _native.find_ideal_ab_block_by_id("x") == ""
    monkeypatch.setenv("VKM_IDEAL_TXT", "mine")
    assert _native.find_ideal_ab_block_by_id("x") == block("x")
    monkeypatch.delenv("VKM_IDEAL_TXT")
    assert _native.find_ideal_ab_block_by_id("x") == ""
    monkeypatch.setenv("VKM_IDEAL_DATABASE", "mine")
    (place / "mine").write_bytes(block("x").replace("><", ">\xff<").encode("latin-1"))
    with pytest.raises(UnicodeDecodeError):
        _native.find_ideal_ab_block_by_id("x")


needs_system = pytest.mark.skipif(not hasattr(_native, "VortexKnotSystem"), reason="needs VortexKnotSystem")


def named(name, resolution=9):
    system = _native.VortexKnotSystem()
    system.initialize_knot_from_name(name, resolution)
    return np.array(system.get_positions())


@needs_system
def test_order_of_the_search_for_a_knot(everywhere):
    with pytest.raises(RuntimeError, match=r"^Could not find \.fseries file for knot: 9_99$"):
        named("9_99")
    for i, directory in reversed(list(enumerate(FSERIES, 1))):
        write(everywhere(f"{directory}/knot.9_99.fseries"), f"{i} 0 0 {i} 0 0\n")
        assert named("9_99")[0, 0] == pytest.approx(i * 8 / 9, rel=1e-12), directory  # the mean is i / 9
    path = everywhere("/knots/knot.9_98.fseries")
    write(path, "% nothing\n")
    with pytest.raises(RuntimeError) as failure:
        named("9_98")
    assert str(failure.value) == f"Failed to load knot 9_98 from {path}"


@needs_system
def test_named_knot_is_sampled_at_both_ends_and_centred():
    n = 50
    s = [i * (2 * np.pi) / (n - 1) for i in range(n)]
    points = np.array(_native.evaluate_fourier_block(_native.load_embedded_knot_block("3_1"), s))
    np.testing.assert_allclose(named("3_1", n), points - points.mean(axis=0), atol=1e-14)
    assert named("3_1", 1).size == 3  # 0 / 0
    assert named("3_1", 0).size == named("3_1", -5).size == 0
    if os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") < 2**36:  # else it would be granted
        with pytest.raises(MemoryError):
            named("3_1", 2**31 - 1)
