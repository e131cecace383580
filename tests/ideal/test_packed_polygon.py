"""Packed polygons: what rounding leaves, what does not fit, standard position, and that only shorter ones replace."""

import numpy as np
import pytest
from vkmcore.ideal.campaign_store import Entry, Shape, Store
from vkmcore.ideal.catalogue_texts import write_polygons
from vkmcore.ideal.fourier_form import measure_polygons
from vkmcore.ideal.packed_polygon import from_bytes, pack, to_bytes, unpack
from vkmcore.ideal.stored_form import standard_polygon
from vkmcore.reference.tables import find


def trefoil(count=200, wave=0.0):
    t = np.linspace(0.0, 2.0 * np.pi, count, endpoint=False)
    r = 2.0 + np.cos(3.0 * t) + wave * np.cos(t)
    return np.stack([r * np.cos(2.0 * t), r * np.sin(2.0 * t), np.sin(3.0 * t)], axis=1)


def test_rounding_stays_within_half_a_unit_at_every_point():
    rng = np.random.default_rng(3)
    for points in (trefoil(), rng.uniform(-49.0, 49.0, (50, 3)), np.zeros((3, 3))):
        packed = pack(points)
        assert packed.dtype == np.int32
        np.testing.assert_allclose(unpack(packed), points, rtol=0.0, atol=0.5000001e-7)
        assert all(float(f"{x:.7f}") == x for x in unpack(packed).flat)  # short in texts
    assert unpack(points) is points  # files of before hold plain numbers
    back = from_bytes(to_bytes(trefoil(400)))
    np.testing.assert_allclose(back, trefoil(400), rtol=0.0, atol=0.5000001e-6)
    assert to_bytes(back) == to_bytes(trefoil(400))


@pytest.mark.parametrize("value", [np.nan, np.inf, 51.0, -51.0])
def test_what_cannot_be_packed(value):
    points = trefoil()
    points[7, 1] = value
    with pytest.raises(ValueError, match="within 50"):
        pack(points)


def test_files_hold_small_polygons_of_short_edges():
    for points in (trefoil(20), trefoil(400) * 4.0):
        with pytest.raises(ValueError, match="too large or too coarse"):
            to_bytes(points)


def test_standard_position_is_the_same_from_any_place():
    rng = np.random.default_rng(5)
    points = trefoil(wave=0.3) * [1.0, 1.3, 1.1]
    points[:, 2] += 0.1 * points[:, 0] ** 2 + 0.05 * points[:, 1] * points[:, 0]  # no symmetry is left
    standard = standard_polygon(points)
    turn, upper = np.linalg.qr(rng.normal(size=(3, 3)))
    turn *= np.sign(np.diag(upper)) * np.sign(np.linalg.det(turn * np.sign(np.diag(upper))))
    for moved in (points[::-1], np.roll(points, 60, axis=0), points @ turn.T + [3.0, -2.0, 7.0]):
        np.testing.assert_allclose(standard_polygon(moved), standard, atol=1e-9)
    assert not np.allclose(standard_polygon(points * [1.0, 1.0, -1.0]), standard, atol=1e-3)  # chirality stays
    assert np.argmax(standard[:, 0]) == 0 and np.ptp(standard, axis=0).argmax() == 0


def test_only_shorter_polygons_replace(tmp_path):
    entry = find("12a_1202")
    store, folder, table = Store(tmp_path / "store"), tmp_path / "polygons", tmp_path / "polygons.csv"

    def offer(points, lost_by_packing=0.0):
        reached = Entry(entry.name)
        reached.offer(Shape((points,), measure_polygons([points]).ropelength * (1.0 - lost_by_packing), 0.15, 1))
        store.save(reached)
        return write_polygons(store, [entry, find("3_1")], folder, table)

    short, long = trefoil(1000), trefoil(1000, wave=0.5)
    assert [offer(long), offer(short), offer(long), offer(short)] == [1, 1, 0, 0]
    assert offer(short, lost_by_packing=1e-5) == 0  # the same file again
    found = measure_polygons([from_bytes((folder / "12a1202.polygon").read_bytes())])
    assert found.thickness == pytest.approx(0.5, abs=2e-6)  # unit diameter
    assert found.ropelength == pytest.approx(measure_polygons([short]).ropelength, rel=1e-4)
    assert table.read_text() == f"key,ropelength\n12a1202,{found.ropelength:.6f}\n"
    assert [path.name for path in folder.iterdir()] == ["12a1202.polygon"]
