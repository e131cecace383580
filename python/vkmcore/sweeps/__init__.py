"""Parameter sweeps: one function or command over knots and a grid of settings, on many processes or a cluster."""

from vkmcore.sweeps.run import sweep

__all__ = ["sweep"]
