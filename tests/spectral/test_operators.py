"""Matrices on a uniform grid, potentials, and the products of matrices and vectors."""

import math

import _native
import numpy as np
import pytest

T = _native.TrefoilOperator


def test_records_have_their_defaults():
    grid = _native.Grid1D()
    assert (grid.u_min, grid.u_max, grid.n, grid.spacing) == (-1.0, 1.0, 201, 0.01)
    grid.n = 1
    assert grid.spacing == 0.0
    boundary, well, options = _native.BoundaryOptions(), _native.PotentialGaussianWell(), _native.PotentialOptions()
    assert (boundary.mode, boundary.force_center_dirichlet) == (0, True)
    assert (well.center, well.amplitude, well.sigma) == (0.0, -1.0, 0.1)
    assert (options.harmonic_coeff, options.quartic_coeff, options.constant_shift, options.gaussians) == (0, 0, 0, [])
    with pytest.raises(TypeError):
        T()


def test_grid_points_are_multiples_of_the_spacing():
    h = (0.7 + 0.3) / 6
    assert np.array_equal(T.build_uniform_grid(-0.3, 0.7, 7), [-0.3 + i * h for i in range(7)])
    assert np.array_equal(T.build_identity(3), np.eye(3))
    assert T.build_identity(0).shape == (0, 0)


@pytest.mark.parametrize(
    "mode, ends",
    [(0, ([1, 0, 0], [0, 0, 1])), (1, ([1, 0, 0], [0, 0, 1])), (2, ([-2 / 9, 2 / 9, 0], [0, 2 / 9, -2 / 9]))],
)
def test_second_difference_of_three_points(mode, ends):
    w = 1 / 9
    matrix = T.build_second_difference(0.5, 6.5, 3, mode)
    assert np.array_equal(matrix, [ends[0], [w, -2 * w, w], ends[1]])
    kinetic = T.build_laplacian_schrodinger_kinetic(0.5, 6.5, 3, mode, kinetic_prefactor=0.3)
    assert np.array_equal(kinetic, -0.3 * matrix)
    assert np.array_equal(
        T.assemble_schrodinger_matrix(0.5, 6.5, 3, mode, True, [1, 2, 3], 0.3), kinetic + np.diag([1.0, 2.0, 3.0])
    )


def test_centre_node_belongs_to_mode_1_and_to_a_point_within_half_a_step():
    for mode, forced in ((0, True), (1, False), (2, True)):
        assert T.build_second_difference(-1, 1, 5, mode, forced)[2, 2] == -8.0
    assert np.array_equal(T.build_second_difference(-1, 1, 5, 1)[2], [0, 0, 1, 0, 0])
    # an even number of points leaves zero at exactly half a step: no centre node
    assert np.array_equal(T.build_second_difference(-1.5, 1.5, 4, 1), T.build_second_difference(-1.5, 1.5, 4, 0))
    # a tie between two points cannot be within half a step; a shifted grid has its node off the middle
    assert np.array_equal(T.build_second_difference(-1, 3, 5, 1)[1], [0, 1, 0, 0, 0])


def test_potential_of_options_and_of_nodes():
    options = _native.PotentialOptions()
    options.harmonic_coeff, options.quartic_coeff, options.constant_shift = 2.0, 3.0, 0.25
    spike = _native.PotentialGaussianWell()
    spike.center, spike.amplitude, spike.sigma = 0.5, 7.0, 0.0  # narrower than any grid: one point
    well = _native.PotentialGaussianWell()
    well.center, well.amplitude, well.sigma = -0.25, -1.5, 0.4
    options.gaussians = [spike, well]
    u = T.build_uniform_grid(-1, 1, 9)
    expected = 0.25 + 2 * u**2 + 3 * u**4 + np.where(u == 0.5, 7.0, 0.0) - 1.5 * np.exp(-0.5 * ((u + 0.25) / 0.4) ** 2)
    np.testing.assert_allclose(T.build_potential_from_options(-1, 1, 9, options), expected, rtol=1e-14)

    one = _native.PotentialGaussianWell()
    one.center, one.amplitude, one.sigma = 0.1, -2.0, 0.3
    two = _native.PotentialGaussianWell()
    two.center, two.amplitude, two.sigma = -0.7, -2.0, 0.3
    options.gaussians = [one, two]
    assert np.array_equal(
        T.build_potential_from_nodes(-1, 1, 9, [0.1, -0.7], -2.0, 0.3, 2.0, 3.0, 0.25),
        T.build_potential_from_options(-1, 1, 9, options),
    )
    assert np.array_equal(T.build_potential_from_nodes(-1, 1, 3, [], -2.0, 0.3, 2.0), [2, 0, 2])


@pytest.mark.parametrize("strength, radius", [(0.0, 0), (-3, 0), (math.nan, 0), (0.2, 1), (2.5, 3), (1e300, 6)])
def test_sampled_potentials_smooth_over_cut_windows(strength, radius):
    density = np.array([1.0, -2.0, 0.5, 4.0, 3.25, 0.125])
    v = 2.0 * density + 0.5
    means = [v[max(i - radius, 0) : i + radius + 1].mean() for i in range(6)]
    np.testing.assert_allclose(T.build_potential_from_trace_density(density, 2.0, 0.5, strength), means, rtol=1e-15)
    # the other builder takes the strength before the shift
    assert np.array_equal(
        T.build_potential_from_phi_abs(density, 2.0, strength, 0.5),
        T.build_potential_from_trace_density(density, 2.0, 0.5, strength),
    )


@pytest.mark.parametrize("normalize", [True, False])
def test_transfer_kernel_and_generator(normalize):
    u = np.linspace(-1, 1, 5)
    v = np.array([0.1, 0.4, -0.3, 0.0, 2.0])
    expected = np.exp(-0.5 * (u[:, None] - u) ** 2 / 0.7**2 - 1.3 * v)
    if normalize:
        expected /= expected.sum(axis=1, keepdims=True)
    kernel = T.assemble_transfer_kernel(-1, 1, 5, v, 0.7, 1.3, normalize)
    np.testing.assert_allclose(kernel, expected, rtol=1e-14)
    assert np.array_equal(T.generator_from_transfer_kernel(kernel, 0.1), (kernel - np.eye(5)) / 0.1)
    assert np.array_equal(T.generator_from_transfer_kernel(kernel, 0.1, False), kernel / 0.1)
    # no width: each point keeps to itself; rows that underflow to zero stay as they are
    assert np.array_equal(T.assemble_transfer_kernel(-1, 1, 3, [0, 0, 0], -1.0, 1.0), np.eye(3))
    assert np.array_equal(T.assemble_transfer_kernel(-1, 1, 3, [1e9] * 3, 1.0, 1.0), np.zeros((3, 3)))


def test_products_of_matrix_and_vector():
    rng = np.random.default_rng(3)
    a, x = rng.normal(size=(6, 6)), rng.normal(size=6)
    np.testing.assert_allclose(T.matrix_vector_multiply(a.T, x), a.T @ x, rtol=1e-13)  # a strided view
    assert T.rayleigh_quotient(a, x) == pytest.approx(x @ a @ x / (x @ x), rel=1e-13)
    assert math.isnan(T.rayleigh_quotient(a, np.zeros(6)))
    assert T.residual_norm(a, x, 0.7) == pytest.approx(np.linalg.norm(a @ x - 0.7 * x), rel=1e-13)
    np.testing.assert_allclose(T.normalize_vector(x), x / np.linalg.norm(x), rtol=1e-15)
    assert np.array_equal(T.normalize_vector([0.0, 0.0]), [0, 0])
    assert np.array_equal(T.normalize_vector([math.nan, 1.0]), [math.nan, 1.0], equal_nan=True)
    assert T.trace_from_diagonal(a) == pytest.approx(np.trace(a), rel=1e-14)
    assert np.array_equal(T.apply_diagonal_shift(a, 2.5), a + 2.5 * np.eye(6))
    assert T.matrix_vector_multiply(np.zeros((0, 0)), []).shape == (0,)


BAD_CALLS = [
    (lambda: T.build_uniform_grid(0, 1, 1), "spectral::build_uniform_grid: grid.n must be >= 2"),
    (
        lambda: T.build_potential_from_options(0, 1, 0, _native.PotentialOptions()),
        "spectral::build_uniform_grid: grid.n must be >= 2",
    ),
    (lambda: T.build_second_difference(0, 1, 2), "spectral::build_second_difference: grid.n must be >= 3"),
    (lambda: T.build_second_difference(0, 1, 3, -1), "spectral::build_second_difference: unsupported boundary mode"),
    (lambda: T.build_second_difference(0, 1, 3, 3), "spectral::build_second_difference: unsupported boundary mode"),
    (
        lambda: T.generator_from_transfer_kernel(np.eye(2), 0.0),
        "spectral::generator_from_transfer_kernel: dt must be nonzero",
    ),
    (
        lambda: T.generator_from_transfer_kernel(np.zeros((2, 3)), 0.0),
        "generator_from_transfer_kernel: kernel must be square (n,n)",
    ),
    (
        lambda: T.assemble_schrodinger_matrix(0, 1, 3, 0, True, [1, 2]),
        "assemble_schrodinger_matrix: potential length must equal n",
    ),
    (
        lambda: T.assemble_transfer_kernel(0, 1, 3, [1, 2], 1, 1),
        "assemble_transfer_kernel: potential length must equal n",
    ),
    (lambda: T.rayleigh_quotient(np.zeros((2, 3)), [1, 2]), "rayleigh_quotient: matrix must be square (n,n)"),
    (lambda: T.trace_from_diagonal([1, 2]), "trace_from_diagonal: matrix must be square (n,n)"),
    (lambda: T.apply_diagonal_shift(np.zeros((2, 2, 2)), 1), "apply_diagonal_shift: matrix must be square (n,n)"),
    (lambda: T.matrix_vector_multiply(np.eye(2), [1]), "matrix_vector_multiply: x length must equal matrix dimension"),
    (lambda: T.residual_norm(np.eye(2), [1, 2, 3], 1), "residual_norm: x length must equal matrix dimension"),
    (lambda: T.rayleigh_quotient(np.eye(2), np.eye(2)), "rayleigh_quotient(x): expected a 1D array"),
    (lambda: T.normalize_vector(1.0), "normalize_vector(x): expected a 1D array"),
    (
        lambda: T.build_potential_from_nodes(0, 1, 3, [[1]], 1, 1),
        "build_potential_from_nodes(target_nodes): expected a 1D array",
    ),
    (
        lambda: T.build_potential_from_trace_density([[1]], 1),
        "build_potential_from_trace_density(trace_density): expected a 1D array",
    ),
    (lambda: T.build_potential_from_phi_abs([[1]], 1), "build_potential_from_phi_abs(phi_abs): expected a 1D array"),
    (
        lambda: T.assemble_schrodinger_matrix(0, 1, 3, 0, True, [[1]]),
        "assemble_schrodinger_matrix(potential): expected a 1D array",
    ),
]


@pytest.mark.parametrize("call, text", BAD_CALLS)
def test_failures_have_their_texts(call, text):
    with pytest.raises(RuntimeError) as failure:
        call()
    assert str(failure.value) == text


def test_absurd_sizes_are_refused():
    for n in (10**12, 2**63):
        with pytest.raises(MemoryError):
            T.build_identity(n)
        with pytest.raises(MemoryError):
            T.build_second_difference(0, 1, n)
    with pytest.raises(TypeError):
        T.build_identity(-1)
