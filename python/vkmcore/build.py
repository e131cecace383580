"""Facts about the built extension: version, compiler, vector width.

The extension exports them as C symbols and not as attributes: its Python names are those of the numerical library.
"""

from __future__ import annotations

import ctypes
from dataclasses import dataclass

from vkmcore import _native


@dataclass(frozen=True)
class BuildInfo:
    """What the extension says about itself."""

    version: str
    compiler: str
    vector_bits: int  # width of the vectors that the kernels use on this machine
    path: str  # file of the extension


def build_info() -> BuildInfo:
    """Ask the loaded extension."""
    library = ctypes.CDLL(_native.__file__)
    library.vkm_version.restype = ctypes.c_char_p
    library.vkm_compiler.restype = ctypes.c_char_p
    library.vkm_vector_bits.restype = ctypes.c_int
    return BuildInfo(
        version=library.vkm_version().decode(),
        compiler=library.vkm_compiler().decode(),
        vector_bits=library.vkm_vector_bits(),
        path=_native.__file__,
    )
