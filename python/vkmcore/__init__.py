"""VKMcore: elementary particles modelled as knotted vortex filaments.

Every public name of the extension module `_native` is a name of this package too::

    from vkmcore import ParticleEvaluator

    knot = ParticleEvaluator("3:1:1")
    knot.relax()
    print(knot.get_core_mass_mev_only(), "MeV")

The command line is `vkmcore` or `python -m vkmcore`.
"""

import _native

# Taken from the module's names and not from its `__all__`, which holds whatever the last `list_bindings` call found.
__all__ = [name for name in vars(_native) if not name.startswith("_")]
globals().update({name: getattr(_native, name) for name in __all__})


def __getattr__(name: str) -> object:
    if name == "simulate":
        from vkmcore.dynamics.simulation import simulate

        return simulate
    if name == "load_trajectory":
        from vkmcore.dynamics.trajectory import load_trajectory

        return load_trajectory
    if name == "__version__":
        from vkmcore.build import build_info

        return build_info().version
    raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
