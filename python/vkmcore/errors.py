"""Errors of the package itself; those of the library are ValueError, RuntimeError and their kin."""


class PlotError(Exception):
    """The picture cannot be drawn or written; the text says why."""
