"""The picture of a study of convergence: ropelengths, and what a doubling of the points changes. Needs matplotlib."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import numpy as np

from vkmcore.mass.convergence import MassStudy
from vkmcore.pictures.figure import PALETTE, check_plot_target, write_figure


def plot_study(path: Path, found: MassStudy) -> None:
    """Draw the ropelength, and its relative change for a doubling, against the points a filament.

    Raises:
        PlotError: matplotlib is missing, or the file cannot be written.
    """
    kind = check_plot_target(path)
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure
    from matplotlib.ticker import FixedLocator, FuncFormatter, LogLocator, NullLocator

    figure = Figure(figsize=(9.0, 4.2), dpi=150, facecolor="white", layout="constrained")
    FigureCanvasAgg(figure)
    left, right = figure.subplots(1, 2)
    points = np.array(found.resolutions, dtype=float)
    ticks: list[float] = []  # the resolutions, but those whose labels would touch
    for count in points:
        if not ticks or np.log(count / ticks[-1]) > 0.09 * np.log(points[-1] / points[0]):
            ticks.append(float(count))
    for number, way in enumerate(found.ways):
        values = np.array(way.ropelengths)
        style: dict[str, Any] = {"color": PALETTE[number % len(PALETTE)], "marker": "o", "markersize": 4}
        left.plot(points, values, label=f"{way.name}: {way.verdict}", **style)
        with np.errstate(all="ignore"):
            change = np.abs(np.diff(values)) / values[1:] / np.diff(np.log2(points))
        change[~(change > 0.0)] = np.nan
        right.plot(points[1:], change, **style)
    right.axhline(found.tolerance, color="#6b7079", linewidth=0.8, linestyle="--")
    right.annotate(
        f"tolerance {found.tolerance:g}",
        (1.0, found.tolerance),
        xycoords=("axes fraction", "data"),
        xytext=(-4, 3),
        textcoords="offset points",
        ha="right",
        fontsize=8,
        color="#6b7079",
    )
    for axes, label in ((left, "ropelength / radius of the body"), (right, "relative change for a doubling")):
        axes.set(xscale="log", yscale="log", xlabel="points a filament", ylabel=label)
        axes.xaxis.set_major_locator(FixedLocator(ticks))
        axes.xaxis.set_minor_locator(NullLocator())
        axes.xaxis.set_major_formatter(FuncFormatter(lambda value, _: f"{value:g}"))
        axes.grid(True, color="#e3e5ea", linewidth=0.6)
        axes.tick_params(labelsize=8)
    left.yaxis.set_major_locator(LogLocator(subs=(1.0, 2.0, 5.0)))
    left.yaxis.set_minor_locator(NullLocator())
    left.yaxis.set_major_formatter(FuncFormatter(lambda value, _: f"{value:g}"))
    left.legend(fontsize=8, frameon=False)
    figure.suptitle(f"{found.id}: ropelength against resolution", fontsize=11)
    write_figure(figure, path, kind)
