from vkmcore import _native as _native
from vkmcore._native import *

__version__: str
