"""The workbench over .fseries files: repair, discrete measures, helicity, filament energy, comparison."""

import math

import _native
import numpy as np
import pytest
from _native import FilamentEnergyParams, ResolvedTubeGeometry

ZEROS = "    0.000000    0.000000    0.000000    0.000000    0.000000    0.000000\n"
TREFOIL = "% trefoil\n0.5 0 0 -0.5 0 0\n2 0 0 2 0 0\n0 0 0 0 0 1\n0 0 0 0 0 0\n0.5 0 0 0.5 0 0\n"
MEASURES = ("L", "kappa_max", "kappa_mean", "bend_energy", "min_non_neighbor_dist", "reach_proxy")


@pytest.fixture
def trefoil(tmp_path):
    path = tmp_path / "trefoil.fseries"
    path.write_text("% small\n3 0 0 3 0 0\n\n" + TREFOIL)
    return str(path)


def plain_samples(n, block=TREFOIL):
    rows = np.array([[float(word) for word in line.split()] for line in block.splitlines() if line[0] != "%"])
    s = np.outer(2.0 * np.pi * np.arange(n) / n, np.arange(1, len(rows) + 1))
    points = np.stack([np.cos(s) @ rows[:, 2 * k] + np.sin(s) @ rows[:, 2 * k + 1] for k in range(3)], axis=1)
    return points - points.mean(axis=0)


def plain_measures(p, skip):
    edges = np.roll(p, -1, axis=0) - p
    lengths = np.linalg.norm(edges, axis=1)
    units = edges / lengths[:, None]
    ds = 0.5 * (lengths + np.roll(lengths, 1))
    kappa = np.linalg.norm(units - np.roll(units, 1, axis=0), axis=1) / ds
    distance, gap = pair_tables(p)
    return {
        "L": lengths.sum(),
        "kappa_max": kappa.max(),
        "kappa_mean": kappa.mean(),
        "bend_energy": np.sum(kappa**2 * ds),
        "min_non_neighbor_dist": distance[gap > max(skip, 0)].min(),
        "reach_proxy": ResolvedTubeGeometry.analyze(p, max(skip, 1), 0.001, 1.0).thickness_rad,
    }


def pair_tables(p):
    distance = np.linalg.norm(p[:, None] - p[None], axis=2)
    along = np.abs(np.subtract.outer(np.arange(len(p)), np.arange(len(p))))
    return distance, np.minimum(along, len(p) - along)


# --- repair -------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize(
    ("text", "rows", "reason", "after"),
    [
        ("", 0, "no numeric rows found", None),
        ("% 1 2 3\n  % 4 5 6\nnot a row\n1 2\n", 0, "no numeric rows found", None),
        ("1 2 3\n", 1, "no second numeric row", None),
        ("1 2 3 4 5 6\n1 2 3\n", 2, "already has 6-column j=0 row", None),
        ("1 2 3 4 5 6 7\n1 2 3 4 5 6\n", 1, "already has 6-column j=0 row", None),
        ("1 2 3\n4 5 6\n1 2 3 4 5 6\n", 3, "file appears to be 3-column legacy throughout; not auto-converted", None),
        (
            "% head\r\n\r\n \t1 2 3\r\nwords\r\n1 2 3 4 5 6\r\n1 2 3",
            3,
            "upgraded leading 3-col zeros row to 6-col j=0 row",
            "% head\n\n" + ZEROS + "words\n1 2 3 4 5 6\n1 2 3\n",
        ),
        (
            "1 2 3 4 5 6 7\n0 0 0 but only three\n1e1 2 3 4 5 6\n",
            2,
            "upgraded leading 3-col zeros row to 6-col j=0 row",
            "1 2 3 4 5 6 7\n" + ZEROS + "1e1 2 3 4 5 6\n",
        ),
    ],
)
def test_canonicalize_writes_in_its_one_case_only(tmp_path, text, rows, reason, after):
    path = tmp_path / "old.fseries"
    path.write_bytes(text.encode())
    path.chmod(0o644 if after else 0o444)
    before = path.stat().st_mtime_ns, path.stat().st_ino
    result = _native.canonicalize_fseries_file_inplace(str(path))
    assert (result.path, result.found_numeric_rows) == (str(path), rows)
    assert (result.changed, result.reason) == (after is not None, reason)
    assert path.read_bytes().decode() == (text if after is None else after)
    if after is None:
        assert (path.stat().st_mtime_ns, path.stat().st_ino) == before
    else:
        again = _native.canonicalize_fseries_file_inplace(str(path))
        assert (again.changed, again.reason) == (False, "already has 6-column j=0 row")


def test_canonicalize_what_cannot_be_opened(tmp_path):
    for path in (tmp_path / "none.fseries", tmp_path):
        with pytest.raises(RuntimeError) as error:
            _native.canonicalize_fseries_file_inplace(str(path))
        assert str(error.value) == f"cannot open file: {path}"


# --- measures -----------------------------------------------------------------------------------------------------


@pytest.mark.parametrize(("n", "skip"), [(200, 3), (65, 0), (64, -7)])
def test_measures_are_those_of_the_sampled_polygon(trefoil, n, skip):
    points = np.array(_native.sample_curve_centered(trefoil, n))
    assert points == pytest.approx(plain_samples(n), abs=1e-13)
    assert points.mean(axis=0) == pytest.approx(0.0, abs=1e-15)
    result = _native.compute_curve_metrics_from_fseries(trefoil, n, skip)
    expected = plain_measures(points, skip)
    assert {name: getattr(result, name) for name in MEASURES} == pytest.approx(expected, rel=1e-12)
    assert (result.path, result.nsamples, result.ds_avg) == (trefoil, n, result.L / n)
    assert (result.m_loc, result.E_total, result.Gamma) == (0, 0.0, 0.0)
    assert _native.curve_length_from_fseries(trefoil, n) == result.L
    assert _native.min_non_neighbor_distance_from_fseries(trefoil, n, skip) == result.min_non_neighbor_dist
    assert _native.reach_proxy_from_fseries(trefoil, n, skip) == result.reach_proxy
    tube = _native.resolved_tube_metrics_from_fseries(trefoil, n, skip)
    assert (tube.thickness_rad, tube.length, tube.equilateral_ok) == (result.reach_proxy, result.L, True)


def test_too_few_samples(trefoil):
    assert _native.sample_curve_centered(trefoil, 0) == _native.sample_curve_centered(trefoil, -3) == []
    for n in (0, 1, 2, 3):
        result = _native.compute_curve_metrics_from_fseries(trefoil, n)
        assert (result.min_non_neighbor_dist, result.reach_proxy) == (0.0, 0.0)
        assert (result.kappa_max > 0.0) == (n == 3) and (result.L > 0.0) == (n >= 2)
    assert _native.min_non_neighbor_distance_from_fseries(trefoil, 6, 3) == 1e300
    with pytest.raises(ValueError):
        _native.resolved_tube_metrics_from_fseries(trefoil, 2)
    with pytest.raises(MemoryError):
        _native.sample_curve_centered(trefoil, 2**31 - 1)


def test_collapsed_edges_count_in_the_mean_of_the_curvature_alone(tmp_path):
    path = tmp_path / "fold.fseries"
    path.write_text("1 0 0 0 0 0\n")  # to and fro on a line
    result = _native.compute_curve_metrics_from_fseries(str(path), 5)
    points = np.array(_native.sample_curve_centered(str(path), 5))
    lengths = np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1)
    assert result.L == pytest.approx(lengths.sum())
    path.write_text("0 0 0 0 0 0\n")
    assert [getattr(_native.compute_curve_metrics_from_fseries(str(path), 8), name) for name in MEASURES] == [0.0] * 6


@pytest.mark.parametrize(
    "call",
    [
        _native.sample_curve_centered,
        _native.compute_curve_metrics_from_fseries,
        _native.resolved_tube_metrics_from_fseries,
        _native.curve_length_from_fseries,
        _native.min_non_neighbor_distance_from_fseries,
        _native.reach_proxy_from_fseries,
        _native.compute_helicity_from_fseries,
        lambda path: _native.compute_filament_energy_from_fseries(path, FilamentEnergyParams()),
        lambda path: _native.compare_fseries_files(path, path),
    ],
)
def test_files_without_blocks(tmp_path, call):
    empty = tmp_path / "empty.fseries"
    empty.write_text("% nothing\n")
    for path in (empty, tmp_path / "none.fseries"):
        with pytest.raises(RuntimeError) as error:
            call(str(path))
        assert str(error.value) == f"no blocks parsed from: {path}"


# --- helicity and energy ------------------------------------------------------------------------------------------


def test_helicity_is_the_block_s_with_the_measures_of_the_samples(trefoil):
    result = _native.compute_helicity_from_fseries(trefoil, 12, 0.5, 2, 90)
    block = _native.parse_fseries_multi(trefoil)[1]
    charge, mass, a_mu = _native.compute_helicity_from_fourier_block(block, 12, 0.5, 2, 90)
    assert (result.Hc, result.Hm, result.a_mu, result.nsamples, result.path) == (charge, mass, a_mu, 90, trefoil)
    metrics = _native.compute_curve_metrics_from_fseries(trefoil, 90, 3)
    assert [getattr(result, name) for name in MEASURES] == [getattr(metrics, name) for name in MEASURES]


@pytest.mark.parametrize(("n", "s_cut", "delta", "base"), [(300, 1.3, 0.0, 1), (97, 0.0, 1.1, 5), (33, 0.0, 0.0, -2)])
def test_filament_energy(trefoil, n, s_cut, delta, base):
    params = FilamentEnergyParams()
    given = {
        "rho_outer": 2.0,
        "rho_local": 3.0,
        "Gamma": 0.5,
        "a_core": 0.1,
        "delta": delta,
        "s_cut_local": s_cut,
        "c_rankine_outer": 0.25,
        "nsamples": n,
    }
    for name, value in given.items():
        setattr(params, name, value)
    params.skip_neighbors_base = base
    result = _native.compute_filament_energy_from_fseries(trefoil, params)
    points = plain_samples(n)
    edges = np.roll(points, -1, axis=0) - points
    tangents = edges / np.linalg.norm(edges, axis=1)[:, None]
    L = np.linalg.norm(edges, axis=1).sum()
    m_loc = max(math.ceil(s_cut / (L / n)), base, 0)
    distance, gap = pair_tables(points)
    counted = (gap > m_loc) & (distance > delta)
    nonlocal_sum = np.sum((tangents @ tangents.T)[counted] / distance[counted]) * (L / n) ** 2
    assert result.m_loc == m_loc
    assert result.E_nonlocal == pytest.approx(0.25 * 2.0 / (8 * math.pi) * nonlocal_sum, rel=1e-11)
    match = (math.log(s_cut / 0.1) + 0.25) * 0.25 * 3.0 / (4 * math.pi) * L if s_cut > 0 else 0.0
    assert result.E_local_match == pytest.approx(match, rel=1e-13)
    assert result.E_core_int == pytest.approx(0.25 * 3.0 / (16 * math.pi) * L, rel=1e-13)
    assert result.E_total == result.E_nonlocal + result.E_local_match + result.E_core_int
    assert {name: getattr(result, name) for name in given} == given
    metrics = _native.compute_curve_metrics_from_fseries(trefoil, n, max(base, 1))
    assert [getattr(result, name) for name in MEASURES] == [getattr(metrics, name) for name in MEASURES]
    params.include_nonlocal = params.include_local_match = params.include_core_int = False
    assert _native.compute_filament_energy_from_fseries(trefoil, params).E_total == 0.0


def test_filament_energy_by_default(trefoil):
    result = _native.compute_filament_energy_from_fseries(trefoil, FilamentEnergyParams())
    assert (result.E_local_match, result.m_loc, result.nsamples) == (0.0, 1, 1024)
    huge = FilamentEnergyParams()
    huge.s_cut_local, huge.nsamples = 1e300, 64
    assert _native.compute_filament_energy_from_fseries(trefoil, huge).E_nonlocal == 0.0
    huge.nsamples = 0
    assert _native.compute_filament_energy_from_fseries(trefoil, huge).E_total == 0.0


# --- folders and pairs of files -----------------------------------------------------------------------------------


def test_batch_lists_by_path(tmp_path):
    deep = tmp_path / "a" / "deeper"
    deep.mkdir(parents=True)
    (tmp_path / "folder.fseries").mkdir()
    for place in (tmp_path / "b.fseries", tmp_path / "Z.fseries", deep / "c.fseries", tmp_path / "x.FSERIES"):
        place.write_text(TREFOIL)
    (tmp_path / "loop").symlink_to(tmp_path)
    options = {"grid_size": 6, "interior_margin": 1, "nsamples": 40}
    flat = [str(tmp_path / "Z.fseries"), str(tmp_path / "b.fseries")]
    for root in (str(tmp_path), str(tmp_path) + "/"):
        assert [r.path for r in _native.batch_helicity_from_dir(root, **options)] == flat
        found = _native.batch_helicity_from_dir(root, **options, recurse=True)
        assert [r.path for r in found] == [flat[0], str(deep / "c.fseries"), flat[1]]
    single = _native.compute_helicity_from_fseries(flat[1], **options)
    assert (found[2].Hc, found[2].L) == (single.Hc, single.L)
    for bad in (flat[0], str(tmp_path / "none"), ""):
        with pytest.raises(RuntimeError) as error:
            _native.batch_helicity_from_dir(bad)
        assert str(error.value) == "directory does not exist: " + bad
    (tmp_path / "bad.fseries").write_text("%\n")
    with pytest.raises(RuntimeError, match=r"no blocks parsed from: .*bad\.fseries"):
        _native.batch_helicity_from_dir(str(tmp_path), **options)


def test_comparison(tmp_path, trefoil):
    other = tmp_path / "other.fseries"
    other.write_text("3 0 0 2 0 0\n")
    found = _native.compare_fseries_files(trefoil, str(other), 120, 2)
    a, b = (_native.compute_curve_metrics_from_fseries(path, 120, 2) for path in (trefoil, str(other)))
    expected = {}
    for name in ("L", "kappa_max", "kappa_mean", "bend_energy", "reach_proxy"):
        expected |= {f"{name}_a": getattr(a, name), f"{name}_b": getattr(b, name)}
        expected[f"d{name}"] = getattr(b, name) - getattr(a, name)
    points = [np.array(_native.sample_curve_centered(path, 120)) for path in (trefoil, str(other))]
    rms = found.pop("rms_point_delta")
    assert rms == pytest.approx(np.sqrt(np.mean(np.sum((points[1] - points[0]) ** 2, axis=1))), rel=1e-13)
    assert found == expected
    same = _native.compare_fseries_files(trefoil, trefoil, 100)
    assert all(same[key] == 0.0 for key in same if key[0] == "d" or key == "rms_point_delta")
    assert _native.compare_fseries_files(trefoil, trefoil, 0)["rms_point_delta"] == 0.0
