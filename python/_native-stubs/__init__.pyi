# Types of the extension module `_native`, which is a single file and cannot carry stubs of its own. They stand with
# the package, so that `_native.FourierBlock` and `vkmcore.FourierBlock` are one type.
from vkmcore._native import *
