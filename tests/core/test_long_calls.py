"""Calls that a caller can make as long as a file or a number says: a signal ends each."""

import os
import subprocess
import sys

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal

RNG = np.random.default_rng(5)
T = np.linspace(0.0, 1.0, 400_000)
WIGGLY = RNG.standard_normal(T.size)
NODES = -1.0 - RNG.random(100_000)


def unending_matrix():
    entry = _native.SparseEntry()
    entry.row, entry.value = 2**28, 1.0
    column = _native.SparseRigidityColumn()
    column.entries = [entry]
    matrix = _native.SparseRigidityMatrix()
    matrix.row_count, matrix.column_count, matrix.columns = 2**28 + 1, 2, [column, column]
    return matrix


LONG = {
    "nearest eigenvalues": lambda: _native.TrefoilOperator.nearest_eigenvalues_to_targets(
        WIGGLY, np.linspace(-1, 1, 200_000)
    ),
    "penalty": lambda: _native.NodeAnalyzer.extra_minima_penalty(T, WIGGLY, NODES, 1e-9, 1.0),
    "excluded minima": lambda: _native.NodeAnalyzer.strongest_minima_t_with_neighborhood_exclusion(
        T, WIGGLY, NODES, 1e-9, True, 5
    ),
    "resampling": lambda: _native.resample_closed_curve(np.eye(3), 10**8),
    "circle": lambda: _native.sample_circle(10**8),
    "uniform grid": lambda: _native.TrefoilOperator.build_uniform_grid(0.0, 1.0, 3 * 10**8),
    "hash": lambda: _native.PipelineProvenanceAPI.fingerprint_hex("x" * 500_000_000),
    "hash of points": lambda: _native.GeometryCertificateAPI.sha256_hex_of_points(
        np.broadcast_to(np.zeros(3), (20_000_000, 3))
    ),
    "minima": lambda: _native.NodeAnalyzer.strongest_minima_values(np.zeros(60_000_000), 3),
    "logarithms": lambda: _native.TrefoilOperator.logdet_from_eigenvalues(
        np.broadcast_to(np.float64(2), (10**8,)), 1e-15
    ),
    "long lists in": lambda: [_native.enstrophy(many, many) for many in [[1.0] * 20_000_000] for _ in range(100)],
    "long lists out": lambda: _native.compute_velocity_magnitude(np.broadcast_to(np.zeros(3), (40_000_000, 3))),
    "series text": lambda: _native.parse_fseries_from_string("1 2 3 4 5 6\n" * 3_000_000),
    "ideal text": lambda: _native.parse_ideal_txt_from_string('<AB Id="3:1:1"><Coeff I="1"/></AB>\n' * 500_000),
    "least squares of many rows": lambda: _native.ContactStressMap.solve_nonnegative_least_squares_sparse(
        unending_matrix(), [1.0], 10**6, 1e-300
    ),
}


@pytest.mark.parametrize("name", LONG)
def test_signals_end_long_calls(name):
    with ended_by_a_signal():
        while True:  # on a fast machine once more
            LONG[name]()


READERS = {
    "parse_fseries_multi": _native.parse_fseries_multi,
    "parse_ideal_txt_multi": _native.parse_ideal_txt_multi,
    "loadBlocks": lambda path: _native.fourier_knot().loadBlocks(path),
    "sample_curve_centered": _native.sample_curve_centered,
    "canonicalize": _native.canonicalize_fseries_file_inplace,
    "load_all_knots": lambda path: _native.load_all_knots([path]),
    "build_invariants_from_fseries": _native.build_invariants_from_fseries,
    "write_vector_csv": lambda path: _native.ContactStressMap.write_vector_csv([1.0], path),
}


@pytest.mark.parametrize("name", READERS)
def test_a_pipe_that_nobody_serves_can_be_left(name, tmp_path):
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    with ended_by_a_signal():
        READERS[name](str(pipe))


@pytest.mark.parametrize("name", [name for name in READERS if name != "write_vector_csv"])
def test_a_file_without_an_end_can_be_left(name):
    with ended_by_a_signal():
        while True:
            try:
                READERS[name]("/dev/zero")
            except MemoryError:
                pass


def test_a_pipe_is_read(tmp_path):
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    # The lock is held while the extension waits: the writer must be another process.
    writing = f"open({str(pipe)!r}, 'w').write('1 2 3 4 5 6\\n' * 30000)"
    with subprocess.Popen([sys.executable, "-c", writing]):
        blocks = _native.parse_fseries_multi(str(pipe))
    assert [len(block.a_x) for block in blocks] == [30000]
