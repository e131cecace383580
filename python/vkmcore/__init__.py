"""VKMcore: elementary particles modelled as knotted vortex filaments.

Every public name of the extension module `_native` is a name of this package too::

    from vkmcore import ParticleEvaluator

    knot = ParticleEvaluator("3:1:1", resolution=400)
    knot.relax(iterations=0)  # the catalogued shape; docs/mass.md says what sweeps do to it
    print(knot.get_core_mass_mev_only(), "MeV")

The command line is `vkmcore` or `python -m vkmcore`.
"""

import _native

# Taken from the module's names and not from its `__all__`, which holds whatever the last `list_bindings` call found.
__all__ = [name for name in vars(_native) if not name.startswith("_")]
globals().update({name: getattr(_native, name) for name in __all__})


# The package's own names and their modules, loaded when they are first used.
_MODULE_OF = {
    "Knot": "vkmcore.knots",
    "Link": "vkmcore.knots",
    "IdealShape": "vkmcore.ideal.shape",
    "idealize": "vkmcore.ideal.search",
    "load_trajectory": "vkmcore.dynamics.trajectory",
    "mass_routes": "vkmcore.mass.routes",
    "curve_velocity": "vkmcore.dynamics.velocity",
    "simulate": "vkmcore.dynamics.simulation",
    "velocity": "vkmcore.dynamics.velocity",
    "study_mass": "vkmcore.mass.convergence",
    "sweep": "vkmcore.sweeps",
}


def __getattr__(name: str) -> object:
    if name in _MODULE_OF:
        from importlib import import_module

        return getattr(import_module(_MODULE_OF[name]), name)
    if name == "__version__":
        from vkmcore.build import build_info

        return build_info().version
    raise AttributeError(f"module {__name__!r} has no attribute {name!r}")


def __dir__() -> list[str]:
    return sorted({*globals(), *_MODULE_OF, "__version__"})
