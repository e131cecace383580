from vkmcore import _native as _native
from vkmcore._native import *
from vkmcore.dynamics.simulation import simulate as simulate
from vkmcore.dynamics.trajectory import load_trajectory as load_trajectory
from vkmcore.dynamics.velocity import curve_velocity as curve_velocity
from vkmcore.dynamics.velocity import velocity as velocity
from vkmcore.ideal.search import idealize as idealize
from vkmcore.ideal.shape import IdealShape as IdealShape
from vkmcore.knots import Knot as Knot
from vkmcore.knots import Link as Link
from vkmcore.mass.convergence import study_mass as study_mass
from vkmcore.mass.routes import mass_routes as mass_routes
from vkmcore.sweeps import sweep as sweep

__version__: str
