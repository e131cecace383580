"""Rigidity matrices, their files, and the contact stress diagnosis."""

import math

import _native
import numpy as np
import pytest

Geometry = _native.ResolvedTubeGeometry
Map = _native.ContactStressMap


def loop(n=30, seed=1):
    rng = np.random.default_rng(seed)
    u = 2.0 * np.pi * np.arange(n) / n
    return np.stack([np.cos(u), 0.7 * np.sin(u), 0.3 * np.sin(2.0 * u)], axis=1) + rng.normal(scale=0.01, size=(n, 3))


def contacts(points, tol=0.3):
    tube = Geometry.analyze(points, 2, tol)
    assert len(tube.struts) > 5 and len(tube.kinks) > 5
    return tube


@pytest.mark.parametrize("analytic", [True, False])
def test_columns_are_the_gradients_of_the_contacts(analytic):
    points = loop()
    tube = contacts(points)
    matrix = Map.build_rigidity_matrix(points, tube, use_analytic_kink_gradient=analytic)
    expected = [("strut", k, 0, 0, Geometry.strut_gradient_flat(points, strut)) for k, strut in enumerate(tube.struts)]
    expected += [
        ("kink", 0, k, kink.vertex, Geometry.kink_minrad_gradient_flat(points, kink, analytic, 1e-6))
        for k, kink in enumerate(tube.kinks)
    ]
    found = [(c.kind, c.strut_index, c.kink_index, c.vertex, c.values) for c in matrix.columns]
    assert found == expected
    assert matrix.row_count == 90 and matrix.column_count == len(expected)
    for column in matrix.columns:
        assert column.norm == pytest.approx(np.linalg.norm(column.values), rel=1e-15)

    sparse = _native.resolved_tube_build_sparse_rigidity_matrix(
        points, tube, use_analytic_kink_gradient=analytic, include_kinks=True
    )
    for dense_column, column in zip(matrix.columns, sparse.columns, strict=True):
        assert [(e.row, e.value) for e in column.entries] == [
            (row, value) for row, value in enumerate(dense_column.values) if abs(value) > 1e-15
        ]
        assert column.norm == dense_column.norm
    assert sparse.nonzero_count == sum(len(column.entries) for column in sparse.columns)
    assert (sparse.row_count, sparse.column_count) == (90, len(sparse.columns))

    spread = Map.sparse_to_dense(sparse)
    heads = [(c.kind, c.strut_index, c.kink_index, c.vertex, c.norm) for c in spread.columns]
    assert heads == [(c.kind, c.strut_index, c.kink_index, c.vertex, c.norm) for c in matrix.columns]
    for a, b in zip(spread.columns, matrix.columns, strict=True):
        assert a.values == pytest.approx(b.values, abs=1e-15)


def test_choice_of_contacts_and_vanishing_gradients():
    points = loop()
    tube = contacts(points)
    build = Map.build_rigidity_matrix
    assert {c.kind for c in build(points, tube, include_struts=False).columns} == {"kink"}
    assert {c.kind for c in build(points, tube, True, False).columns} == {"strut"}
    assert build(points, tube, False, False).column_count == 0

    # A strut of no length has no gradient: it leaves no gap, and the others keep their places in the tube's list.
    struts = tube.struts
    crossing = _native.SegmentPair()
    crossing.i, crossing.j, crossing.s = 3, 4, 1.0
    tube.struts = [struts[0], crossing, struts[1]]
    for matrix in (build(points, tube), Map.build_sparse_rigidity_matrix(points, tube)):
        assert [c.strut_index for c in matrix.columns if c.kind == "strut"] == [0, 2]
        assert matrix.column_count == 2 + len(tube.kinks)


def test_tubes_of_other_points_and_empty_polygons():
    tube = contacts(loop())
    for points in (loop(7), loop(2), loop(1)):
        for build in (Map.build_rigidity_matrix, Map.build_sparse_rigidity_matrix):
            matrix = build(points, tube)
            assert matrix.row_count == 3 * len(points) and matrix.column_count == len(matrix.columns)
    assert Map.build_rigidity_matrix([], tube).column_count == 0
    assert Map.build_sparse_rigidity_matrix(np.full((30, 3), math.nan), tube).column_count == 0


def small_sparse():
    sparse = _native.SparseRigidityMatrix()
    sparse.row_count, sparse.column_count, sparse.nonzero_count = 6, 2, 3
    columns = []
    for kind, entries in (("strut", [(0, 0.1), (5, -2.0)]), ("kink", [(2, 1e-7)])):
        column = _native.SparseRigidityColumn()
        column.kind = kind
        column.entries = [_native.SparseEntry() for _ in entries]
        rows = column.entries
        for entry, (row, value) in zip(rows, entries, strict=True):
            entry.row, entry.value = row, value
        column.entries = rows
        columns.append(column)
    sparse.columns = columns
    return sparse


def test_matrix_market_files_byte_for_byte(tmp_path):
    path = tmp_path / "matrix.mtx"
    head = b"%%MatrixMarket matrix coordinate real general\n"
    head += b"% VKMcore resolved-tube sparse rigidity matrix A, rows=3N, columns=struts+kinks\n6 2 3\n"
    path.write_bytes(b"x" * 4096)
    Map.write_sparse_matrix_market(small_sparse(), str(path))
    body = b"1 1 0.10000000000000001\n6 1 -2\n3 2 9.9999999999999995e-08\n"
    assert path.read_bytes() == head + body
    _native.resolved_tube_write_matrix_market(small_sparse(), str(path), one_based_indices=False)
    body = b"0 0 0.10000000000000001\n5 0 -2\n2 1 9.9999999999999995e-08\n"
    assert path.read_bytes() == head + body


@pytest.mark.parametrize(
    ("values", "texts"),
    [
        ([], []),
        ([1.0, -0.0, 1e300, math.inf, math.nan], ["1", "-0", "1.0000000000000001e+300", "inf", "nan"]),
        ([1 / 3, 123456789012345678.0, 12345.0], ["0.33333333333333331", "1.2345678901234568e+17", "12345"]),
    ],
)
def test_vector_files_byte_for_byte(tmp_path, values, texts):
    path = str(tmp_path / "vector")
    for write in (Map.write_vector_market, _native.resolved_tube_write_vector_market):
        write(values, path)
        expected = "%%MatrixMarket matrix array real general\n% VKMcore resolved-tube dense vector\n"
        expected += f"{len(values)} 1\n" + "".join(text + "\n" for text in texts)
        assert open(path, "rb").read() == expected.encode()
    Map.write_vector_csv(values, path)
    rows = "".join(f"{row},{text}\n" for row, text in enumerate(texts))
    assert open(path, "rb").read() == ("row,value\n" + rows).encode()


def test_long_vectors_round_trip(tmp_path):
    values = np.random.default_rng(3).normal(size=9000) * 10.0 ** np.random.default_rng(4).integers(-300, 300, 9000)
    path = tmp_path / "long.csv"
    Map.write_vector_csv(values.tolist(), str(path))
    read = np.loadtxt(path, delimiter=",", skiprows=1)
    assert np.array_equal(read[:, 0], np.arange(9000)) and np.array_equal(read[:, 1], values)


def test_files_that_cannot_be_opened(tmp_path):
    path = str(tmp_path / "no folder" / "file")
    for write, text in (
        (lambda: Map.write_sparse_matrix_market(small_sparse(), path), "could not open Matrix Market output path: "),
        (lambda: Map.write_vector_market([], path), "could not open vector Matrix Market output path: "),
        (lambda: Map.write_vector_csv([1.0], path), "could not open vector CSV output path: "),
    ):
        with pytest.raises(RuntimeError) as failure:
            write()
        assert str(failure.value) == text + path


def test_entries_outside_the_rows_and_absurd_sizes():
    sparse = small_sparse()
    sparse.row_count = 5
    dense = Map.sparse_to_dense(sparse)
    assert [column.values for column in dense.columns] == [[0.1, 0, 0, 0, 0], [0, 0, 1e-7, 0, 0]]
    sparse.row_count = 2**62
    with pytest.raises(MemoryError):
        Map.sparse_to_dense(sparse)


def test_diagnosis_without_a_fit():
    points = loop()
    tube = contacts(points)
    gradient = np.array(Geometry.length_gradient_flat(points))
    for sparse in (True, False):
        found = Map.diagnose_length_criticality(points, tube, solve_nnls=False, use_sparse_solver=sparse)
        assert found.gradient_norm == found.residual_norm == pytest.approx(np.linalg.norm(gradient), rel=1e-15)
        assert (found.contact_residual, found.solved_nnls, found.nnls_converged) == (1.0, False, False)
        assert (found.strut_count, found.kink_count) == (len(tube.struts), len(tube.kinks))
        assert (found.rigidity_rows, found.rigidity_columns) == (90, len(tube.struts) + len(tube.kinks))
        bare = _native.resolved_tube_kkt_diagnostics(points, _native.ResolvedTubeMetrics(), use_sparse_solver=sparse)
        assert (bare.contact_residual, bare.solved_nnls, bare.rigidity_columns) == (1.0, False, 0)

    coincident = Map.diagnose_length_criticality(np.zeros((4, 3)), tube)
    assert (coincident.contact_residual, coincident.residual_norm, coincident.gradient_norm) == (0.0, 0.0, 0.0)
    assert coincident.nnls_converged and not coincident.solved_nnls and coincident.rigidity_columns == 0
    assert coincident.strut_count == len(tube.struts)


@pytest.mark.parametrize("active_set", [True, False])
@pytest.mark.parametrize("sparse", [True, False])
def test_diagnosis_of_a_balanced_polygon(sparse, active_set):
    # Two straight strands cannot be balanced at their ends, a regular polygon is: by its kinks alone.
    u = 2.0 * np.pi * np.arange(12) / 12
    circle = np.stack([np.cos(u), np.sin(u), 0.0 * u], axis=1)
    tube = Geometry.analyze(circle, 6)
    assert len(tube.kinks) == 12 and tube.struts == []
    found = Map.diagnose_length_criticality(circle, tube, use_sparse_solver=sparse, use_active_set_solver=active_set)
    assert found.solved_nnls and found.nnls_converged
    assert found.contact_residual == found.residual_norm / found.gradient_norm
    assert len(found.multipliers) == found.rigidity_columns == 12
    positive = [x for x in found.multipliers if x > 0.0]
    total = sum(positive)
    assert (found.kink_weight_sum, found.strut_weight_sum) == (pytest.approx(total, rel=1e-14), 0.0)
    entropy = -sum(x / total * math.log(x / total) for x in positive)
    assert found.contact_entropy == pytest.approx(entropy, rel=1e-12)
