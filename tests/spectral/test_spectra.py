"""The Jacobi eigensolver, measures of spectra, and anchored operators."""

import math

import _native
import numpy as np
import pytest

T = _native.TrefoilOperator


def jacobi(a, rotations, tol=1e-12):
    """Rotations by the greatest element, found by a search through the whole triangle; the diagonal and the vectors."""
    a = np.array(a, dtype=float)
    n = len(a)
    vectors = np.eye(n)
    for _ in range(rotations):
        magnitudes = np.where(np.triu(np.ones((n, n)), 1) > 0, np.abs(a), 0.0)
        p, q = divmod(int(np.argmax(magnitudes)), n)
        if magnitudes[p, q] < tol:
            break
        app, aqq, apq = a[p, p], a[q, q], a[p, q]
        tau = (aqq - app) / (2.0 * apq)
        r = math.sqrt(tau * tau + 1.0)
        t = 1.0 / (r + tau) if tau >= 0.0 else -1.0 / (r - tau)
        c = 1.0 / math.sqrt(t * t + 1.0)
        s = c * t
        x, y = a[:, p].copy(), a[:, q].copy()
        a[:, p] = a[p, :] = x * c - y * s
        a[:, q] = a[q, :] = x * s + y * c
        m = 2.0 * s * c * apq
        a[p, p] = c * c * app - m + s * s * aqq
        a[q, q] = m + s * s * app + c * c * aqq
        a[p, q] = a[q, p] = 0.0
        x, y = vectors[:, p].copy(), vectors[:, q].copy()
        vectors[:, p], vectors[:, q] = x * c - y * s, x * s + y * c
    return np.diag(a), vectors


def matrices():
    rng = np.random.default_rng(11)
    for n in (2, 3, 7, 24):
        x = rng.normal(size=(n, n))
        yield f"dense {n}", x + x.T
        yield f"many ties {n}", np.sign(x + x.T)
        yield f"few values {n}", np.round(x + x.T)
        yield f"asymmetric {n}", np.round(2 * x)
    for mode in (0, 1, 2):
        potential = T.build_potential_from_nodes(-1, 1, 21, [-0.5, 0.4], -300.0, 0.1)
        yield f"operator, mode {mode}", T.assemble_schrodinger_matrix(-1, 1, 21, mode, True, potential)


@pytest.mark.parametrize("matrix", [pytest.param(matrix, id=name) for name, matrix in matrices()])
def test_jacobi_has_the_bits_of_the_plain_search(matrix):
    for rotations in (0, 1, 5, 60, 2000):
        diagonal, vectors = jacobi(matrix, rotations)
        solved = T.jacobi_eigensolve_symmetric(matrix, True, rotations, 1e-12, False)
        assert np.array_equal(solved["eigenvalues"], diagonal)
        assert np.array_equal(solved["eigenvectors"], vectors)
        assert solved["n"] == len(matrix)


def test_eigenpairs_of_a_dense_matrix():
    x = np.random.default_rng(2).normal(size=(40, 40))
    a = x + x.T
    solved = T.jacobi_eigensolve_symmetric(a, max_sweeps=100000)
    values, vectors = solved["eigenvalues"], solved["eigenvectors"]
    np.testing.assert_allclose(values, np.linalg.eigvalsh(a), atol=1e-12)
    np.testing.assert_allclose(a @ vectors, vectors * values, atol=1e-11)
    np.testing.assert_allclose(vectors.T @ vectors, np.eye(40), atol=1e-12)
    without = T.jacobi_eigensolve_symmetric(a, False, 100000)
    assert without["eigenvectors"] is None
    assert np.array_equal(without["eigenvalues"], values)
    assert np.array_equal(T.eigenvalues(a, 100000), values)


def test_the_limit_counts_rotations():
    a = np.diag(np.arange(30.0)) + 1.0
    assert np.array_equal(T.eigenvalues(a), T.eigenvalues(a, 100))
    assert not np.array_equal(T.eigenvalues(a), T.eigenvalues(a, 101))
    assert np.array_equal(T.eigenvalues(a, -1, sort_ascending=False), np.diag(a))


def test_diagonal_and_degenerate_matrices():
    solved = T.jacobi_eigensolve_symmetric(np.diag([3.0, -1.0, 2.0]))
    assert np.array_equal(solved["eigenvalues"], [-1, 2, 3])
    assert np.array_equal(solved["eigenvectors"], [[0, 0, 1], [1, 0, 0], [0, 1, 0]])
    assert np.array_equal(T.eigenvalues(np.diag([3.0, -1.0]), sort_ascending=False), [3, -1])
    for n in (0, 1):
        solved = T.jacobi_eigensolve_symmetric(np.full((n, n), 4.0))
        assert np.array_equal(solved["eigenvalues"], [4.0] * n) and solved["n"] == n
    assert T.jacobi_eigensolve_symmetric([[4.0]])["eigenvectors"] == [[1.0]]
    bad = np.ones((5, 5))
    bad[1, 3] = bad[3, 1] = bad[2, 2] = math.nan
    bad[0, 4] = bad[4, 0] = math.inf
    assert T.jacobi_eigensolve_symmetric(bad)["eigenvalues"].shape == (5,)  # sorts, and stays in bounds


def test_measures_of_a_spectrum():
    assert T.logdet_from_eigenvalues([-2.0, 0.5, 4.0], 0.0) == pytest.approx(math.log(4.0))
    assert T.logdet_from_eigenvalues([0.0]) == math.log(1e-15)
    counts = T.spectral_density_histogram([0.0, 0.99, 1.0, 1.5, 2.0, -1e-9, math.nan, math.inf], 0.0, 2.0, 2)
    assert np.array_equal(counts, [2, 2])
    assert np.array_equal(T.spectral_density_histogram([5.0], -math.inf, math.inf, 3), [1, 0, 0])
    assert np.array_equal(T.nearest_eigenvalues_to_targets([3.0, 1.0, 2.0], [1.5, 9.0, 1.6]), [1.0, 3.0, 2.0])
    assert T.nearest_eigenvalues_to_targets([], []).shape == (0,)
    with pytest.raises(ValueError, match="eigenvalues must not be empty"):
        T.nearest_eigenvalues_to_targets([], [1.0])


def test_a_deep_harmonic_well_has_equal_steps():
    # -u'' + k^2 u^2 has the levels k (2 j + 1)
    k = 100.0
    solved = T.build_and_solve_node_anchored_operator(
        -1, 1, 201, 0, True, [], 0.0, 0.1, harmonic_coeff=k * k, max_sweeps=300000, tol=1e-9
    )
    levels = solved["eigenvalues"][np.abs(solved["eigenvectors"][[0, -1]]).max(axis=0) < 1e-6][:4]
    np.testing.assert_allclose(levels, k * np.array([1, 3, 5, 7]), rtol=0.005)


def test_anchored_operators_are_their_parts():
    potential = T.build_potential_from_nodes(-1, 1, 15, [0.2], -3.0, 0.1, 0.5, 0.25, 0.125)
    matrix = T.assemble_schrodinger_matrix(-1, 1, 15, 1, False, potential, 0.7)
    expected = T.jacobi_eigensolve_symmetric(matrix, True, 50, 1e-6, False)
    solved = T.build_and_solve_node_anchored_operator(
        -1, 1, 15, 1, False, [0.2], -3.0, 0.1, 0.5, 0.25, 0.125, 0.7, 50, 1e-6, False
    )
    density = np.arange(15.0)
    traced = T.build_and_solve_trace_anchored_operator(-1, 1, 15, 2, True, density, 0.1, 2.0, 0.5, 0.7, 50, 1e-6, False)
    smooth = T.build_potential_from_trace_density(density, 0.1, 0.5, 2.0)
    expected_trace = T.jacobi_eigensolve_symmetric(
        T.assemble_schrodinger_matrix(-1, 1, 15, 2, True, smooth, 0.7), True, 50, 1e-6, False
    )
    for one, other in ((solved, expected), (traced, expected_trace)):
        assert list(one) == ["eigenvalues", "eigenvectors", "n"]
        assert np.array_equal(one["eigenvalues"], other["eigenvalues"])
        assert np.array_equal(one["eigenvectors"], other["eigenvectors"])


@pytest.mark.parametrize(
    "call, text",
    [
        (lambda: T.eigenvalues([[1, 2]]), "eigenvalues: matrix must be square (n,n)"),
        (lambda: T.jacobi_eigensolve_symmetric([1]), "jacobi_eigensolve_symmetric: matrix must be square (n,n)"),
        (lambda: T.logdet_from_eigenvalues([[1]]), "logdet_from_eigenvalues(eigenvalues): expected a 1D array"),
        (
            lambda: T.spectral_density_histogram([], 1, 1, 3),
            "spectral::spectral_density_histogram: invalid histogram range",
        ),
        (
            lambda: T.spectral_density_histogram([], 0, 1, 0),
            "spectral::spectral_density_histogram: invalid histogram range",
        ),
        (
            lambda: T.spectral_density_histogram(1.0, 0, 1, 1),
            "spectral_density_histogram(eigenvalues): expected a 1D array",
        ),
        (
            lambda: T.nearest_eigenvalues_to_targets([1], [[1]]),
            "nearest_eigenvalues_to_targets(targets): expected a 1D array",
        ),
        (
            lambda: T.build_and_solve_trace_anchored_operator(0, 1, 3, 0, True, [1, 2], 1),
            "TrefoilOperator::buildAndSolveTraceAnchoredOperator: n_trace must equal grid.n",
        ),
        (
            lambda: T.build_and_solve_node_anchored_operator(0, 1, 3, 7, True, [], 1, 1),
            "spectral::build_second_difference: unsupported boundary mode",
        ),
    ],
)
def test_failures_have_their_texts(call, text):
    with pytest.raises(RuntimeError) as failure:
        call()
    assert str(failure.value) == text
