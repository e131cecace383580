"""Spectral kernels: sector products with their derivative and truncation scans, and the Jacobi eigensolver."""

from __future__ import annotations

import _native
import numpy as np
from harness import Case, plain

SECTORS = (2, 3, 5)
THETAS = (0.3, 1.1, 2.5)
ELL = 0.11
TERMS = 50


def numpy_logz(t, truncation):
    s = 0.5 + 1j * t
    total = np.zeros_like(s)
    for nu, theta in zip(SECTORS, THETAS, strict=True):
        for m in range(1, truncation + 1):
            z = np.exp(-s * (nu * m * ELL))
            total -= np.log(1.0 - 2.0 * np.cos(m * theta) * z + z * z)
    return total


def numpy_dlogz_ds(t, truncation):
    s = 0.5 + 1j * t
    total = np.zeros_like(s)
    for nu, theta in zip(SECTORS, THETAS, strict=True):
        for m in range(1, truncation + 1):
            length = nu * m * ELL
            z = np.exp(-s * length)
            c = np.cos(m * theta)
            total -= (2.0 * c * length * z - 2.0 * length * z * z) / (1.0 - 2.0 * c * z + z * z)
    return total


def numpy_jacobi(matrix, rotations):
    a = matrix.copy()
    n = len(a)
    vectors = np.eye(n)
    upper = np.triu(np.ones((n, n), dtype=bool), 1)
    for _ in range(rotations):
        p, q = divmod(int(np.argmax(np.where(upper, np.abs(a), 0.0))), n)
        tau = (a[q, q] - a[p, p]) / (2.0 * a[p, q])
        t = (1.0 if tau >= 0 else -1.0) / (np.hypot(tau, 1.0) + abs(tau))
        c = 1.0 / np.sqrt(t * t + 1.0)
        turn = np.array([[c, c * t], [-c * t, c]])
        a[:, [p, q]] = a[:, [p, q]] @ turn
        a[[p, q], :] = turn.T @ a[[p, q], :]
        a[p, q] = a[q, p] = 0.0
        vectors[:, [p, q]] = vectors[:, [p, q]] @ turn
    return a, vectors


def cases() -> list[Case]:
    t = np.linspace(0.1, 60.0, 20000)
    nu, theta = np.array(SECTORS, dtype=float), np.array(THETAS)
    truncations = list(range(5, TERMS + 1, 5))
    out = np.empty(len(truncations) * len(t))
    sectors = (list(SECTORS), list(THETAS), None, ELL)
    work = float(len(t) * len(SECTORS) * TERMS)
    fitter, trace, operator = _native.MultisectorFitterV2, _native.TraceFormula, _native.TrefoilOperator
    size = f"{len(t)} t x {len(SECTORS)} x {TERMS}"

    n, rotations = 400, 20000  # a full solve takes some 300000
    x = np.random.default_rng(5).normal(size=(n, n))
    dense = x + x.T
    tridiagonal = operator.assemble_schrodinger_matrix(-1.0, 1.0, n, 0, True, np.linspace(-1.0, 1.0, n) ** 2)
    vectors = np.empty((n, n))
    result = [
        Case(
            "evaluate_multisector_abs",
            size,
            lambda: fitter.evaluate_multisector_abs(t, *sectors, TERMS),
            lambda: np.abs(np.exp(numpy_logz(t, TERMS))),
            lambda: plain("plain_multisector_abs")(t, len(t), nu, theta, len(nu), ELL, TERMS, out),
            work,
            target_numpy=4.0,
            note="G terms/s",
        ),
        Case(
            "evaluate_multisector_abs_batch_M",
            f"{size}, {len(truncations)} rows",
            lambda: fitter.evaluate_multisector_abs_batch_M(t, *sectors, truncations),
            lambda: np.array([np.abs(np.exp(numpy_logz(t, m))) for m in truncations]),
            lambda: plain("plain_multisector_abs_batch")(
                t, len(t), nu, theta, len(nu), ELL, np.array(truncations, dtype=float), len(truncations), out
            ),
            work,
            note="G distinct terms/s",
        ),
        Case(
            "evaluate_multisector_dlogz_ds",
            size,
            lambda: trace.evaluate_multisector_dlogz_ds(t, *sectors, TERMS),
            lambda: numpy_dlogz_ds(t, TERMS),
            lambda: plain("plain_multisector_dlogz_ds")(t, len(t), nu, theta, len(nu), ELL, TERMS, out),
            work,
            target_numpy=3.0,
            note="G terms/s",
        ),
    ]
    for name, matrix in (("dense", dense), ("tridiagonal", tridiagonal)):
        result.append(
            Case(
                "jacobi_eigensolve_symmetric",
                f"n = {n} {name}, {rotations} rotations",
                lambda matrix=matrix: operator.jacobi_eigensolve_symmetric(matrix, True, rotations),
                lambda matrix=matrix: numpy_jacobi(matrix, rotations),
                lambda matrix=matrix: plain("plain_jacobi")(matrix, n, rotations, 1e-12, vectors),
                target_plain=20.0,
            )
        )
    return result
