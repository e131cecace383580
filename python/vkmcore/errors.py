"""Errors of the package itself; those of the library are ValueError, RuntimeError and their kin."""


class CurveError(RuntimeError):
    """A name leads to no curve, or a file cannot be read as one; the text says where and what was expected."""


class PlotError(Exception):
    """The picture cannot be drawn or written; the text says why."""
