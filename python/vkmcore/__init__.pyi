from vkmcore import _native as _native
from vkmcore._native import *
from vkmcore.dynamics.simulation import simulate as simulate
from vkmcore.dynamics.trajectory import load_trajectory as load_trajectory
from vkmcore.knots import Knot as Knot
from vkmcore.knots import Link as Link
from vkmcore.sweeps import sweep as sweep

__version__: str
