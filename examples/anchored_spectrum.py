"""Anchor a spectrum and a multisector product to target nodes.

Two fits with one drawing each:

1. An operator -k d^2/du^2 + V(u) gets a well at each target node. The coefficients of its background potential are
   then fitted, so that the level that sits in each well falls on that well's target.
2. The phases of three sectors are fitted so that the near-zeros of |Phi(t)| fall on prescribed nodes, with SciPy's
   differential evolution driving `objective_suppressed`.

Run: python examples/anchored_spectrum.py --plot anchored_spectrum.png    (needs scipy and matplotlib)
"""

from __future__ import annotations

import argparse
from pathlib import Path

import numpy as np
from _native import MultisectorFitterV2, NodeAnalyzer, TrefoilOperator
from scipy.optimize import differential_evolution, least_squares

TARGETS = np.array([2.0, 3.5, 6.0])
GRID = (0.0, 8.0)
DIRICHLET = 0
WELLS = {"well_amplitude": -3.0, "well_sigma": 0.25, "kinetic_prefactor": 0.02}

NODES = np.array([2.1, 4.6, 7.2])
SECTORS = [2, 3, 5]
START = np.array([0.3, 1.1, 2.5])
ELL = 0.35


def solve(points: int, background: np.ndarray) -> dict[str, object]:
    """Spectrum with wells at the targets over shift + harmonic u^2 + quartic u^4."""
    shift, harmonic, quartic = background
    return TrefoilOperator.build_and_solve_node_anchored_operator(
        *GRID,
        points,
        DIRICHLET,
        True,
        TARGETS,
        harmonic_coeff=harmonic,
        quartic_coeff=quartic,
        constant_shift=shift,
        max_sweeps=4 * points * points,
        tol=1e-9,
        **WELLS,
    )


def levels_in_wells(points: int, solved: dict[str, object]) -> list[int]:
    """For each target the level whose vector is greatest at the well."""
    wells = np.abs(TrefoilOperator.build_uniform_grid(*GRID, points)[:, None] - TARGETS).argmin(axis=0)
    return np.abs(solved["eigenvectors"][wells]).argmax(axis=1).tolist()


def misses(points: int, background: np.ndarray) -> np.ndarray:
    """Eigenvalues of the levels in the wells, less their targets."""
    solved = solve(points, background)
    return solved["eigenvalues"][levels_in_wells(points, solved)] - TARGETS


def fit_background(points: int) -> tuple[np.ndarray, np.ndarray]:
    """Background coefficients before and after the fit."""
    start = np.array([4.5, 0.1, 0.0])
    fit = least_squares(lambda x: misses(points, x), start, x_scale=[1.0, 0.1, 0.001], xtol=1e-10)
    return start, fit.x


def product(t: np.ndarray, thetas: np.ndarray) -> np.ndarray:
    return MultisectorFitterV2.evaluate_multisector_abs(t, SECTORS, thetas, ell_trefoil=ELL, truncation_M=12)


def fit_phases(t: np.ndarray, iterations: int) -> np.ndarray:
    """Phases whose deepest minima of |Phi| lie at the nodes, with few minima elsewhere."""

    def objective(thetas: np.ndarray) -> float:
        return MultisectorFitterV2.objective_suppressed(
            t, SECTORS, thetas, ell_trefoil=ELL, truncation_M=12, target_nodes=NODES
        )

    bounds = [(0.0, 2.0 * np.pi)] * 3
    return differential_evolution(objective, bounds, x0=START, maxiter=iterations, popsize=12, rng=1, polish=False).x


def report(t: np.ndarray, thetas: np.ndarray) -> tuple[np.ndarray, dict[str, float]]:
    parts = MultisectorFitterV2.objective_suppressed_breakdown(
        t, SECTORS, thetas, ell_trefoil=ELL, truncation_M=12, target_nodes=NODES
    )
    return NodeAnalyzer.strongest_minima_t(t, product(t, thetas), len(NODES)), parts


def draw(path: Path, points: int, background: np.ndarray, t: np.ndarray, fitted: np.ndarray) -> None:
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure

    figure = Figure(figsize=(11, 4.4), dpi=140, layout="constrained")
    FigureCanvasAgg(figure)
    left, right = figure.subplots(1, 2)
    shift, harmonic, quartic = background
    u = TrefoilOperator.build_uniform_grid(*GRID, points)
    potential = TrefoilOperator.build_potential_from_nodes(
        *GRID, points, TARGETS, WELLS["well_amplitude"], WELLS["well_sigma"], harmonic, quartic, shift
    )
    solved = solve(points, background)
    left.plot(u, potential, color="#6b7079", linewidth=1.0, label="potential V(u)")
    for number, (level, target) in enumerate(zip(levels_in_wells(points, solved), TARGETS, strict=True)):
        vector = solved["eigenvectors"][:, level]
        left.plot(u, solved["eigenvalues"][level] + 0.8 * vector / np.abs(vector).max(), linewidth=1.2)
        left.axhline(target, color="#202124", linewidth=0.7, linestyle=":", label="" if number else "targets")
    left.set(xlabel="u", ylabel="energy", title="Levels anchored to the target nodes", ylim=(-1.0, 9.0))
    left.legend(fontsize=8, frameon=False)
    right.semilogy(t, product(t, START), color="#9aa0a8", linewidth=1.0, label="before")
    right.semilogy(t, product(t, fitted), color="#3b6fb6", linewidth=1.3, label="after")
    for number, node in enumerate(NODES):
        right.axvline(node, color="#202124", linewidth=0.7, linestyle=":", label="" if number else "nodes")
    right.set(xlabel="t", ylabel="|Phi(1/2 + i t)|", title="Phases of three sectors fitted to nodes")
    right.legend(fontsize=8, frameon=False)
    figure.savefig(path)


def main(arguments: list[str] | None = None) -> None:
    parser = argparse.ArgumentParser(description="Anchor a spectrum and a multisector product to target nodes.")
    parser.add_argument("--points", type=int, default=121, help="grid points of the operator")
    parser.add_argument("--samples", type=int, default=1500, help="samples of |Phi|")
    parser.add_argument("--iterations", type=int, default=120, help="generations of the phase fit")
    parser.add_argument("--plot", type=Path, help="file for the drawing")
    options = parser.parse_args(arguments)

    before, after = fit_background(options.points)
    print("Operator: background shift, harmonic, quartic; eigenvalues less their targets")
    for name, background in (("before", before), ("after", after)):
        nearest = TrefoilOperator.nearest_eigenvalues_to_targets(
            solve(options.points, background)["eigenvalues"], TARGETS
        )
        print(f"  {name:6}", " ".join(f"{x: .6f}" for x in background))
        print("         levels in the wells:", " ".join(f"{x: .2e}" for x in misses(options.points, background)))
        print("         nearest levels:     ", " ".join(f"{x: .2e}" for x in nearest - TARGETS))

    t = np.linspace(0.5, 9.0, options.samples)
    fitted = fit_phases(t, options.iterations)
    print("Phases: deepest minima of |Phi| and the parts of the objective")
    for name, thetas in (("before", START), ("after", fitted)):
        minima, parts = report(t, thetas)
        print(f"  {name:6}", " ".join(f"{x:.6f}" for x in thetas), "|", " ".join(f"{x:.4f}" for x in minima))
        print("        ", ", ".join(f"{key} {value:.4g}" for key, value in parts.items()))
    if options.plot is not None:
        draw(options.plot, options.points, after, t, fitted)
        print(f"wrote {options.plot}")


if __name__ == "__main__":
    main()
