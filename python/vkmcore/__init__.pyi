from vkmcore import _native as _native
from vkmcore._native import *
from vkmcore.dynamics.simulation import simulate as simulate
from vkmcore.dynamics.trajectory import load_trajectory as load_trajectory
from vkmcore.ideal.search import idealize as idealize
from vkmcore.ideal.shape import IdealShape as IdealShape
from vkmcore.knots import Knot as Knot
from vkmcore.knots import Link as Link

__version__: str
