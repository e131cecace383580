"""The picture of a spectrum: a potential and its lowest levels. Needs matplotlib."""

from __future__ import annotations

from collections.abc import Sequence
from pathlib import Path
from typing import Any

import numpy as np

from vkmcore.pictures.figure import PALETTE, check_plot_target, write_figure
from vkmcore.spectral.anchored_spectrum import Spectrum


def plot_spectrum(path: Path, spectrum: Spectrum, levels: int) -> None:
    """Draw the potential with the lowest levels' vectors standing on their eigenvalues, and the targets."""
    kind = check_plot_target(path)
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure

    figure = Figure(figsize=(7.2, 4.8), dpi=150, facecolor="white", layout="constrained")
    FigureCanvasAgg(figure)
    axes: Any = figure.add_subplot()
    draw_levels(axes, spectrum, levels, PALETTE)
    write_figure(figure, path, kind)


def draw_levels(axes: Any, spectrum: Spectrum, levels: int, palette: Sequence[str]) -> None:
    """Fill matplotlib axes with the potential, the levels and the targets."""
    values = spectrum.eigenvalues[:levels]
    axes.plot(spectrum.u, spectrum.potential, color="#6b7079", linewidth=1.2, label="potential V(u)")
    reach = float(np.ptp(values)) if len(values) > 1 else 0.0
    height = 0.6 * (reach / max(len(values) - 1, 1) or 1.0)
    for level, value in enumerate(values):
        vector = spectrum.eigenvectors[:, level]
        scale = height / (np.abs(vector).max() or 1.0)
        colour = palette[level % len(palette)]
        axes.axhline(value, color=colour, linewidth=0.5, alpha=0.5)
        axes.plot(spectrum.u, value + scale * vector, color=colour, linewidth=1.1)
    for number, target in enumerate(spectrum.targets):
        axes.axhline(target, color="#202124", linewidth=0.8, linestyle=":", label="" if number else "targets")
    axes.set(xlabel="u", ylabel="eigenvalue, potential", xlim=(spectrum.u[0], spectrum.u[-1]))
    axes.legend(loc="upper right", fontsize=8, frameon=False)
