"""Non-negative least squares on rigidity matrices: both methods, dense and sparse."""

import math

import _native as vkm
import numpy as np
import pytest
from interruption import ended_by_a_signal

Map = vkm.ContactStressMap


def dense_matrix(a):
    """The RigidityMatrix of a 2-D array."""
    matrix = vkm.RigidityMatrix()
    columns = []
    for values in np.asarray(a, dtype=float).T:
        column = vkm.RigidityColumn()
        column.values = list(values)
        columns.append(column)
    matrix.row_count, matrix.column_count = np.shape(a)
    matrix.columns = columns
    return matrix


def sparse_matrix(a):
    """The SparseRigidityMatrix of the non-zero entries of a 2-D array."""
    matrix = vkm.SparseRigidityMatrix()
    columns = []
    for values in np.asarray(a, dtype=float).T:
        column = vkm.SparseRigidityColumn()
        entries = []
        for row in np.flatnonzero(values):
            entry = vkm.SparseEntry()
            entry.row, entry.value = int(row), float(values[row])
            entries.append(entry)
        column.entries = entries
        columns.append(column)
    matrix.row_count, matrix.column_count = np.shape(a)
    matrix.columns = columns
    return matrix


SOLVERS = {
    "coordinate_descent": lambda a, b, *rest: Map.solve_nonnegative_least_squares(dense_matrix(a), list(b), *rest),
    "coordinate_descent_sparse": lambda a, b, *rest: Map.solve_nonnegative_least_squares_sparse(
        sparse_matrix(a), list(b), *rest
    ),
    "active_set": lambda a, b, *rest: Map.solve_nonnegative_least_squares_active_set(dense_matrix(a), list(b), *rest),
    "active_set_of_sparse": lambda a, b, *rest: Map.solve_nonnegative_least_squares_sparse_active_set(
        sparse_matrix(a), list(b), *rest
    ),
}
COORDINATE_DESCENT = ("coordinate_descent", "coordinate_descent_sparse")
ACTIVE_SET = ("active_set", "active_set_of_sparse")


def ordered_dot(x, y):
    total = 0.0
    for p, q in zip(x, y):
        total += p * q
    return total


def gauss_jordan(m, rhs, ridge):
    """Partial pivoting, every other row eliminated at once; None if singular."""
    m = [list(row) + [r] for row, r in zip(m, rhs)]
    k = len(m)
    for i in range(k):
        m[i][i] += max(ridge, 0.0)
    for q in range(k):
        best = max(range(q, k), key=lambda i: abs(m[i][q]))
        if abs(m[best][q]) <= 1e-18:
            return None
        m[q], m[best] = m[best], m[q]
        pivot = m[q][q]
        m[q][q:] = [value / pivot for value in m[q][q:]]
        for i in range(k):
            factor = m[i][q]
            if i != q and factor != 0.0:
                m[i][q:] = [value - factor * p for value, p in zip(m[i][q:], m[q][q:])]
    return [row[k] for row in m]


def normal_equations(a, b):
    columns = [list(column) for column in a.T]
    return [[ordered_dot(p, q) for q in columns] for p in columns], [ordered_dot(p, b) for p in columns]


def plain_active_set(a, b, tolerance=1e-10, ridge=1e-12):
    """Lawson-Hanson, element by element, for problems where no subproblem fails."""
    gram, c = normal_equations(a, b)
    n = len(c)
    x, passive, iterations = [0.0] * n, set(), 0

    def subproblem():
        order = sorted(passive)
        z = [0.0] * n
        rho = ridge
        for _ in range(6):
            block = gauss_jordan([[gram[i][j] for j in order] for i in order], [c[i] for i in order], rho)
            if block is not None:
                break
            rho = 10.0 * rho if rho > 0.0 else 1e-14
        for i, value in zip(order, block):
            z[i] = value
        return z

    while True:
        iterations += 1
        gx = [0.0] * n
        for k in range(n):
            if x[k] != 0.0:
                gx = [g + x[k] * column for g, column in zip(gx, gram[k])]
        w = [p - q for p, q in zip(c, gx)]
        free = [i for i in range(n) if i not in passive and w[i] > tolerance]
        if not free:
            return x, iterations
        passive.add(max(free, key=lambda i: w[i]))
        z = subproblem()
        while any(z[i] <= tolerance for i in passive):
            ratios = [x[i] / (x[i] - z[i]) for i in passive if z[i] <= tolerance and x[i] - z[i] > 1e-14]
            alpha = min(max(min(ratios, default=1.0), 0.0), 1.0)
            x = [p + alpha * (q - p) for p, q in zip(x, z)]
            for i in sorted(passive):
                if x[i] <= (math.sqrt(ordered_dot(x, x)) + 1.0) * tolerance:
                    x[i] = 0.0
                    passive.discard(i)
            z = subproblem()
        x = z


def plain_coordinate_descent(a, b, sweeps):
    gram, c = normal_equations(a, b)
    n = len(c)
    x = [0.0] * n
    for _ in range(sweeps):
        gx = [0.0] * n
        for k in range(n):
            if x[k] != 0.0:
                gx = [g + x[k] * column for g, column in zip(gx, gram[k])]
        for i in range(n):
            if gram[i][i] > 1e-14:
                z = max(x[i] - (gx[i] - c[i]) / gram[i][i], 0.0)
                delta = z - x[i]
                x[i] = z
                gx = [g + delta * column for g, column in zip(gx, gram[i])]
    return x


def problem(rows, columns, seed, filled=1.0):
    rng = np.random.default_rng(seed)
    a = rng.normal(size=(rows, columns)) * (rng.random((rows, columns)) < filled)
    return a, rng.normal(size=rows)


@pytest.mark.parametrize(("rows", "columns", "filled"), [(30, 1, 1.0), (24, 9, 1.0), (90, 23, 0.15), (60, 40, 0.1)])
def test_active_set_has_the_bits_of_the_plain_method(rows, columns, filled):
    a, b = problem(rows, columns, rows + columns, filled)
    x, iterations = plain_active_set(a, b)
    for name in ACTIVE_SET:
        result = SOLVERS[name](a, b)
        assert result.multipliers == x
        assert (result.iterations, result.converged, result.algorithm) == (iterations, True, "active_set")
        assert result.active_set_size == sum(value > 1e-10 for value in x)


def test_uncoupled_blocks_and_a_climbing_ridge_have_the_bits_of_the_plain_method():
    """Blocks of columns that share rows with each other alone; some hold a column twice, which needs the ridge."""
    rng = np.random.default_rng(4)
    a = np.zeros((48, 36))
    for block in range(12):
        a[4 * block : 4 * block + 4, block::12] = rng.normal(size=(4, 3))
    b = rng.normal(size=48)
    for ridge in (1e-12, 0.0):
        expected = plain_active_set(a, b, 1e-10, ridge)[0]
        assert SOLVERS["active_set_of_sparse"](a, b, 2000, 1e-10, ridge).multipliers == expected
    a[:, 24:28] = a[:, 0:4]
    for name in ACTIVE_SET:
        x, iterations = plain_active_set(a, b, 1e-10, 0.0)
        result = SOLVERS[name](a, b, 2000, 1e-10, 0.0)
        assert (result.multipliers, result.iterations) == (x, iterations)


@pytest.mark.parametrize("name", COORDINATE_DESCENT)
def test_coordinate_descent_has_the_bits_of_the_plain_method(name):
    a, b = problem(40, 13, 5, 0.4)
    result = SOLVERS[name](a, b, 7, 1e-30)
    assert result.multipliers == plain_coordinate_descent(a, b, 7)
    assert (result.iterations, result.converged, result.algorithm) == (7, False, name)


@pytest.mark.parametrize("name", SOLVERS)
def test_optimality_and_reported_numbers(name):
    a, b = problem(50, 20, 11)
    result = SOLVERS[name](a, b)
    x = np.array(result.multipliers)
    slope = a.T @ (b - a @ x)
    assert result.converged
    assert 0 < result.active_set_size < 20
    assert (x >= 0).all() and (slope <= 1e-7).all()
    assert abs(slope[x > 0]).max() < 1e-7
    assert result.residual_norm == pytest.approx(np.linalg.norm(a @ x - b), rel=1e-13)
    assert result.relative_residual == pytest.approx(result.residual_norm / np.linalg.norm(b), rel=1e-15)
    assert result.objective == 0.5 * result.residual_norm**2


@pytest.mark.parametrize("name", SOLVERS)
def test_no_columns(name):
    solve = SOLVERS[name]
    zero = solve(np.zeros((6, 0)), np.zeros(6), 5, 0.0)
    assert (zero.converged, zero.relative_residual, zero.iterations, zero.multipliers) == (True, 0.0, 0, [])
    assert not solve(np.zeros((2, 0)), [3.0, 4.0], 5, 4.9).converged
    some = solve(np.zeros((2, 0)), [3.0, 4.0], 5, 5.0)
    assert (some.residual_norm, some.relative_residual, some.objective, some.converged) == (5.0, 1.0, 12.5, True)


@pytest.mark.parametrize("name", SOLVERS)
def test_zero_iterations_count_as_one_and_a_bad_tolerance_as_its_default(name):
    a, b = problem(30, 8, 2)
    assert SOLVERS[name](a, b, 0).iterations == 1
    assert SOLVERS[name](a, b, 500, -1.0).multipliers == SOLVERS[name](a, b, 500, 1e-10).multipliers


@pytest.mark.parametrize("name", SOLVERS)
def test_target_in_the_negative_cone(name):
    a = np.abs(problem(20, 4, 3)[0])
    b = -a @ np.ones(4)
    result = SOLVERS[name](a, b)
    assert (result.multipliers, result.iterations, result.converged) == ([0.0] * 4, 1, True)
    assert result.relative_residual == 1.0


@pytest.mark.parametrize("name", ACTIVE_SET)
def test_duplicate_columns_need_the_ridge(name):
    a = np.array([[1.0, 1.0], [2.0, 2.0], [0.0, 0.0]])
    result = SOLVERS[name](a, [1.0, 2.0, 0.5], 2000, 1e-10, 0.0)
    assert result.converged
    assert sum(result.multipliers) == pytest.approx(1.0, abs=1e-8)


@pytest.mark.parametrize("name", ACTIVE_SET)
def test_a_failed_subproblem_goes_on_to_the_limit(name):
    # The diagonal 1e-30 stays below the least pivot, the ridge included: 1e-29 .. 1e-24.
    a, b = np.array([[1e-15]]), [1e6]
    result = SOLVERS[name](a, b, 2000, 1e-12, 1e-29)
    assert (result.iterations, result.multipliers) == (2000, [0.0])
    assert result.converged  # the dual slope 1e-9 is within the square root of the tolerance
    assert not SOLVERS[name](a, b, 10**18, 1e-20, 1e-29).converged


@pytest.mark.parametrize("name", COORDINATE_DESCENT)
def test_a_column_without_length_is_never_touched(name):
    result = SOLVERS[name](np.array([[1e-8, 1.0], [0.0, 1.0]]), [2.0, 2.0])
    assert result.multipliers == [0.0, 2.0]


@pytest.mark.parametrize("name", SOLVERS)
@pytest.mark.parametrize("bad", [math.nan, math.inf, 1e200])
def test_numbers_out_of_range_end(name, bad):
    a, b = problem(12, 5, 7)
    a[3, 2] = bad
    b[4] = -bad
    result = SOLVERS[name](a, b, 50)
    assert len(result.multipliers) == 5
    assert result.iterations <= 50
    SOLVERS[name](a, np.zeros(12), 50)


@pytest.mark.parametrize("name", SOLVERS)
def test_lengths_that_differ(name):
    a, b = problem(12, 3, 8)
    short = SOLVERS[name](a, b[:7])
    assert short.multipliers == SOLVERS[name](a, np.r_[b[:7], np.zeros(5)]).multipliers
    longer = SOLVERS[name](a, np.r_[b, 5.0])
    assert longer.multipliers == SOLVERS[name](a, b).multipliers
    empty = SOLVERS[name](a, [])
    assert (empty.multipliers, empty.relative_residual) == ([0.0] * 3, 0.0)


def test_entries_outside_the_matrix_and_ragged_columns():
    matrix = sparse_matrix(np.eye(3))
    column = vkm.SparseRigidityColumn()
    entry = vkm.SparseEntry()
    entry.row, entry.value = 2**62, 1.0
    column.entries = [entry]
    matrix.columns = matrix.columns + [column]
    result = Map.solve_nonnegative_least_squares_sparse_active_set(matrix, [1.0, 2.0, 3.0])
    assert result.multipliers == pytest.approx([1.0, 2.0, 3.0, 0.0])
    ragged = dense_matrix(np.eye(3))
    shorter = vkm.RigidityColumn()
    shorter.values = [1.0]
    ragged.columns = [shorter] + ragged.columns[1:]
    assert Map.solve_nonnegative_least_squares(ragged, [1.0, 2.0, 3.0]).multipliers == pytest.approx([1.0, 2.0, 3.0])


def test_the_flat_function_is_the_sparse_form():
    a, b = problem(20, 6, 9)
    flat = vkm.resolved_tube_solve_active_set(sparse_matrix(a), list(b))
    assert flat.multipliers == SOLVERS["active_set_of_sparse"](a, b).multipliers
    with pytest.raises(TypeError):
        vkm.resolved_tube_solve_active_set(dense_matrix(a), list(b))


@pytest.mark.parametrize("name", COORDINATE_DESCENT)
def test_interrupt_ends_a_fit(name):
    a, b = problem(4, 3, 1)
    a[:, 1] = math.nan
    a[:, 2] = a[:, 0] * 1e-3
    b[0] = math.nan  # no sweep ever meets a test

    with ended_by_a_signal(0.05):
        SOLVERS[name](a, b, 2**62)
