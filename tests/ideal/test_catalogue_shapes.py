"""Forms of the knot table, and the verification of what is embedded."""

import sys

import _native
import numpy as np
import pytest
from click.testing import CliRunner
from vkmcore.cli import cli
from vkmcore.curves.resampling import evenly_spaced
from vkmcore.ideal.campaign_store import Entry, Store, StoredForm
from vkmcore.ideal.catalogue_texts import TEXTS, conway_text, ordered, outside_stems, split_blocks, write_blocks
from vkmcore.ideal.catalogue_verification import Item, items, verify
from vkmcore.ideal.form_polish import fit
from vkmcore.ideal.fourier_form import FourierForm, measure
from vkmcore.ideal.knot_table_forms import KEYS, is_polygon_of, is_type, parts, planar, symmetric, symmetry_of, torus
from vkmcore.ideal.stored_form import form_of_series
from vkmcore.ideal.symmetric_forms import INVERSION, nearest_symmetric, rotary
from vkmcore.ideal.symmetric_starts import columns, even_fraction, octahedral_clasps, plat, tangles
from vkmcore.reference import tables
from vkmcore.reference.tables import find

TABLE = _native.get_embedded_knot_files()


@pytest.mark.parametrize("symmetry", [INVERSION, rotary(4), rotary(8, 3), rotary(6)])
def test_averages_have_the_symmetry(symmetry):
    rng = np.random.default_rng(3)
    c = symmetry.project(rng.normal(size=(12, 3)) + 1j * rng.normal(size=(12, 3)))
    assert np.abs(c).max() > 0.1
    np.testing.assert_allclose(symmetry.project(c), c, atol=1e-14)
    t = np.linspace(0.0, 6.0, 7)

    def at(s):
        return (np.exp(1j * np.outer(s, np.arange(12))) @ c).real

    for element in symmetry.elements:
        image = at(element.shift - t if element.reverses else element.shift + t) @ np.array(element.matrix).T
        np.testing.assert_allclose(image, at(t), atol=1e-12)


def test_the_keys():
    assert len(KEYS) == len(set(KEYS)) == 78 and set(TABLE) <= set(KEYS)
    assert (
        parts("12a_1202z6") == ("12a_1202", "z6") and parts("15331") == ("15331", "") and parts("4_1d") == ("4_1", "d")
    )
    assert len(outside_stems()) == len(set(outside_stems())) == 48


@pytest.mark.parametrize("key", sorted(TABLE))
def test_forms_of_the_table_have_their_symmetry_and_say_what_they_are(key):
    block = _native.load_embedded_knot_block(key)
    symmetry = symmetry_of(key)
    (c,) = form_of_series(block).series
    if symmetry is not None:
        np.testing.assert_allclose(symmetry.project(c), c, atol=2e-9)  # nine decimals
        assert symmetry.words in block.header
    if key not in ("1_1", "3_1"):
        stated = float(block.header.partition("ropelength ")[2].split()[0])
        assert measure(FourierForm((c,))).ropelength == pytest.approx(stated, rel=1e-5)


@pytest.mark.long
def test_torus_curves_and_planar_forms_keep_their_type():
    test = is_type("8_19")
    for p, q in ((3, 4), (4, 3)):
        curve = torus(p, q)
        mirror = FourierForm((curve.series[0] * [1, 1, -1],))
        assert test(curve) != test(mirror)
        right = curve if test(curve) else mirror
        assert test(planar(right))


@pytest.mark.parametrize(
    ("polygon", "symmetry", "name"),
    [
        (plat(even_fraction("22"), -1), INVERSION, "4_1"),
        (plat(even_fraction("2112"), -1), INVERSION, "6_3"),
        (columns((-3, -3, 2), 2), INVERSION, "8_15"),
        (tangles((0, 0, 1)), rotary(4), "4_1"),
        (tangles((2, 1, 1)), rotary(4), "8_3"),
        (octahedral_clasps(1.0), rotary(6), "12a_1202"),
    ],
)
def test_starts_have_their_type_and_their_symmetry(polygon, symmetry, name):
    assert any(is_polygon_of(name)(polygon * [1.0, mirror, 1.0]) for mirror in (1.0, -1.0))
    even = evenly_spaced(polygon, 4096)
    c = (np.fft.rfft(even, axis=0) / 2048)[:200]
    c[0] = 0.0
    averaged = nearest_symmetric(FourierForm((c,)), symmetry).series[0]
    assert (np.abs(averaged) ** 2).sum() > 0.999 * (np.abs(c) ** 2).sum()


def test_starts_that_cannot_be():
    with pytest.raises(ValueError, match="link"):
        columns((2, 2), 0)
    with pytest.raises(ValueError, match="opposite sides"):
        tangles((1, 1, 0))


def test_forms_are_tight_inside_their_symmetry():
    form = symmetric("4_1", INVERSION, lambda name: form_of_series(_native.load_embedded_knot_block(name)))
    assert is_type("4_1")(form)
    np.testing.assert_allclose(INVERSION.project(form.series[0]), form.series[0], atol=1e-9)
    assert 42.0887 < measure(form).ropelength < 46.0  # the best published value, and 9 % more


def test_verification_finds_what_is_wrong():
    (trefoil,) = (item for item in items() if (item.key, item.source) == ("3:1:1", "ideal/ideal.txt"))
    good = verify(trefoil)
    assert good.problems == [] and good.ropelength < 33.2 and "3_1" in good.certificate and good.published == 32.7436
    block = _native.parse_ideal_txt_from_string(trefoil.text)[0]

    def changed(old, new):
        assert old in trefoil.text
        return verify(Item(trefoil.key, trefoil.source, trefoil.text.replace(old, new))).problems

    assert any(p.startswith('L="') for p in changed(f'L="{block.L:.6f}"', f'L="{block.L + 0.01:.6f}"'))
    assert any(p.startswith('D="') for p in changed(f'D="{block.D:.6f}"', 'D="1.010000"'))
    mirrored = trefoil.text.replace(' L="', ' l="').replace(' D="', ' d="')
    (wrong,) = verify(Item("4:1:1", trefoil.source, mirrored.replace("3:1:1", "4:1:1"))).problems[-1:]
    assert "not 4_1" in wrong
    assert verify(Item("3:1:1", "ideal/ideal.txt", '<AB Id="3:1:1">')).problems
    assert verify(Item("99:1:1", "ideal/ideal.txt", trefoil.text.replace("3:1:1", "99:1:1"))).problems


def test_the_command_ends_with_1_where_anything_fails():
    result = CliRunner().invoke(cli, ["catalogue", "verify", "0:1:1", "1_1", "--jobs", "1"])
    assert result.exit_code == 0 and "0:1:1" in result.stdout and "shapes verified" in result.stderr
    result = CliRunner().invoke(cli, ["catalogue", "verify", "nothing"])
    assert result.exit_code == 1 and "nothing in the catalogue matches 'nothing'" in result.stderr


def test_verification_asks_for_the_tables_that_it_needs(monkeypatch):
    tables._large_knots.cache_clear()
    tables._large_index.cache_clear()
    monkeypatch.setitem(sys.modules, "database_knotinfo", None)
    result = CliRunner().invoke(cli, ["catalogue", "verify", "12a1"])
    assert result.exit_code == 1 and '12a_1: this table needs database_knotinfo: pip install "vkmcore' in result.stderr
    assert CliRunner().invoke(cli, ["catalogue", "verify", "1_1", "--jobs", "1"]).exit_code == 0


def test_texts_are_ordered_and_spaced_as_tables_are():
    text = '<DATA>\n<AB Id="10:1:2" D="1">\n</AB>\n<TL Id="a">\n</TL>\n</DATA>\n'
    assert list(split_blocks(text)) == ["10:1:2", "a"]
    assert ordered(["10:1:2", "3:1:1", "9:1:10", "9:1:9"]) == ["3:1:1", "9:1:9", "9:1:10", "10:1:2"]
    assert ordered(["L6n1", "L6a2", "L10a1", "L6a1"]) == ["L6a1", "L6a2", "L6n1", "L10a1"]
    assert (conway_text("2112"), conway_text("3;21;2-"), conway_text("8*")) == ("2 1 1 2", "3,2 1,2-", "8*")


def test_texts_take_shorter_shapes_once(tmp_path):
    store, path = Store(tmp_path / "campaign"), tmp_path / "ideal.txt"
    text = next(text for text in TEXTS if text.holds(find("3_1")))
    t = np.linspace(0.0, 2.0 * np.pi, 200, endpoint=False)
    radius = 2.0 + np.cos(3.0 * t)
    form = fit([np.stack([radius * np.cos(2.0 * t), radius * np.sin(2.0 * t), np.sin(3.0 * t)], axis=1)], 8)
    reached = measure(form).ropelength

    def written(stated):
        entry = Entry("3_1")
        assert entry.offer_form(StoredForm(form, stated, stated, 0.15))
        store.save(entry)
        return write_blocks(store, [find("3_1")], text, path)

    assert written(reached) == 1
    before = path.read_text()
    assert written(reached * 1.01) == 0 and written(reached * 0.999) == 0  # longer; the same text again
    assert path.read_text() == before
