"""What every picture shares: its target, its colours, its writing. Needs matplotlib."""

from __future__ import annotations

import io
import logging
import sys
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path
from typing import TYPE_CHECKING, Any

from vkmcore.errors import PlotError

if TYPE_CHECKING:
    from matplotlib.figure import Figure

PALETTE = ("#3b6fb6", "#c8553d", "#4f9d69", "#8d6a9f", "#c9a227", "#4b9da9")


def check_plot_target(path: Path) -> str:
    """Find out before the work whether a picture can go to `path`; returns its format, as "png"."""
    try:
        with _silent():
            from matplotlib.backends.backend_agg import FigureCanvasAgg
    except ImportError as error:
        raise PlotError(f"plots need matplotlib: pip install vkmcore[plot] ({error})") from error
    kind = path.suffix[1:].lower() or "png"
    known = FigureCanvasAgg.get_supported_filetypes()
    if kind not in known:
        raise PlotError(f"cannot draw a .{kind} file; known are {', '.join(sorted(known))}")
    if path.is_dir():
        raise PlotError(f"{path}: is a directory")
    if not path.absolute().parent.is_dir():
        raise PlotError(f"{path}: the directory does not exist")
    return kind


def show_in_notebook() -> None:
    """Let a notebook draw figures that were made without pyplot, as those of this package are."""
    ipython: Any = sys.modules.get("IPython")
    shell = ipython.get_ipython() if ipython is not None else None
    if shell is None:
        return
    from IPython.core.pylabtools import select_figure_formats
    from matplotlib.figure import Figure

    try:
        shell.display_formatter.formatters["image/png"].lookup_by_type(Figure)
    except KeyError:  # the user has chosen none
        select_figure_formats(shell, {"png"})


@contextmanager
def _silent() -> Iterator[None]:
    """Without what matplotlib says, as it is loaded, of a home that it cannot write to: it does without."""
    logger = logging.getLogger("matplotlib")
    level = logger.level
    logger.setLevel(logging.ERROR)
    try:
        yield
    finally:
        logger.setLevel(level)


def write_figure(figure: Figure, path: Path, kind: str) -> None:
    """Draw the figure as a picture of that kind, then write it at once: one that cannot be drawn leaves no file.

    Raises:
        PlotError: the file cannot be written.
    """
    picture = io.BytesIO()
    figure.savefig(picture, format=kind)
    try:
        path.write_bytes(picture.getvalue())
    except OSError as error:
        raise PlotError(f"{path}: {error.strerror}") from error


def style_axes(axes: Any, unit: str) -> None:
    """Pale panes and small labels for axes of three dimensions; lengths in `unit`, "" for none."""
    for axis, name in zip((axes.xaxis, axes.yaxis, axes.zaxis), "xyz", strict=True):
        axis.set_pane_color((0.97, 0.97, 0.98, 1.0))
        axis.line.set_color("#b0b4bc")
        axis._axinfo["grid"].update(color="#e3e5ea", linewidth=0.6)
        axis.set_tick_params(labelsize=7, colors="#6b7079")
        axis.set_label_text(f"{name} / {unit}" if unit else name, fontsize=8, color="#6b7079")
