"""The module frame: start-up, list_bindings, the conventions of types and arrays."""

import shutil
import subprocess
import sys

import _native
import numpy as np
import pytest


@pytest.fixture
def fresh():
    """Runs a program in a fresh interpreter, where list_bindings was never called, and returns what it prints."""

    def run(program: str) -> str:
        return subprocess.run(
            [sys.executable, "-c", program], check=True, capture_output=True, text=True
        ).stdout.strip()

    return run


def public_names():
    return [name for name in dir(_native) if not name.startswith("_") and name != "list_bindings"]


def test_import_registers_names_and_nothing_else(fresh):
    assert _native.__doc__ == "VKMcore Bindings"
    assert fresh("import _native; print(hasattr(_native, '__all__'))") == "False"
    for name in public_names():
        value = getattr(_native, name)
        assert isinstance(value, type) or callable(value), f"{name} is neither a class nor a function"


LOAD = """
import importlib.machinery, importlib.util, sys
print(sys.version)
loader = importlib.machinery.ExtensionFileLoader("_native", sys.argv[1])
try:
    importlib.util.module_from_spec(importlib.util.spec_from_loader("_native", loader))
except ImportError as error:
    print(error)
"""


def test_another_minor_version_is_refused():
    """Asked of the other interpreters of this machine."""
    own = "{}.{}".format(*sys.version_info)
    others = {f"python3.{minor}" for minor in range(10, 15)} - {f"python{own}"}
    refused = 0
    for name in filter(None, map(shutil.which, sorted(others))):
        answer = subprocess.run([name, "-c", LOAD, _native.__file__], capture_output=True, text=True)
        # a shim of a version that is not there; one that lacks a function that the module asks for
        if answer.returncode != 0 or "undefined symbol" in answer.stdout:
            continue
        *version, text = answer.stdout.splitlines()
        assert text == (
            f"Python version mismatch: module was compiled for Python {own}, "
            f"but the interpreter version is incompatible: {' '.join(version)}."
        )
        refused += 1
    if not refused:
        pytest.skip("no other Python to ask")


def test_list_bindings_sorts_names_into_lists_and_sets_all():
    found = _native.list_bindings()
    assert list(found) == ["functions", "classes", "attributes", "counts"]
    assert sorted(found["functions"] + found["classes"]) == sorted(public_names())
    assert all(isinstance(getattr(_native, name), type) for name in found["classes"])
    assert found["attributes"] == []
    assert found["counts"] == {key: len(found[key]) for key in ("functions", "classes", "attributes")}
    assert list(found["counts"]) == ["functions", "classes", "attributes"]
    assert _native.__all__ == found["functions"] + found["classes"]
    assert _native.list_bindings("") == found
    order = [name for name in _native.__dir__() if name in found["functions"]]
    assert found["functions"] == order


def test_list_bindings_filter_is_case_insensitive_and_stays_in_all():
    found = _native.list_bindings("FOURIER")
    names = found["functions"] + found["classes"]
    assert {"fourier_knot", "FourierBlock", "evaluate_fourier_block"} <= set(names)
    assert all("fourier" in name.lower() for name in names)
    assert _native.__all__ == names
    assert _native.list_bindings("no such name anywhere in the module")["counts"]["functions"] == 0
    assert _native.__all__ == []
    _native.list_bindings()


def test_list_bindings_private_names_are_attributes():
    found = _native.list_bindings(include_private=True)
    assert {"__doc__", "__name__"} <= set(found["attributes"])
    assert "list_bindings" not in found["functions"]
    # __dir__ itself is no entry of the module's own dictionary, so only classes and functions are public
    assert _native.list_bindings(pattern=None)["attributes"] == []
    assert _native.list_bindings.__doc__.rstrip().endswith(
        "Also sets module __all__ = functions + classes (public names)."
    )
    with pytest.raises(TypeError):
        _native.list_bindings(wrong=1)


def test_names_stand_in_their_order():
    """The order of `__dir__` is that of registration: records first, then what takes them."""
    tube = (
        "SegmentPair KinkRecord ResolvedTubeMetrics SparseEntry RigidityColumn RigidityMatrix SparseRigidityColumn "
        "SparseRigidityMatrix NNLSResult TighteningOptions TighteningStepRecord TighteningResult "
        "ContactStressDiagnostics ResolvedTubeGeometry ResolvedTubeTightener ContactStressMap"
    )
    flat = (
        "analyze length minrad lower_bound_rad length_gradient_flat build_rigidity_matrix build_sparse_rigidity_matrix "
        "write_matrix_market write_vector_market solve_active_set kkt_diagnostics tighten projected_gradient"
    )
    knots = (
        "build_invariants_from_fourier_block build_invariants_from_fseries predict_particle_from_fourier_block "
        "predict_particle_from_fseries make_knot_report_row evaluate_single_knot evaluate_single_knot_vkm_canonical "
        "evaluate_knot_dataset evaluate_knot_dataset_vkm_canonical"
    )
    place = {name: number for number, name in enumerate(_native.__dir__())}
    for names in (tube.split(), [f"resolved_tube_{name}" for name in flat.split()], knots.split()):
        assert sorted(names, key=place.__getitem__) == names


def test_result_arrays_are_fresh_and_own_their_memory():
    points, t, eye = np.random.default_rng(1).normal(size=(6, 3)), np.linspace(0.0, 1.0, 5), np.eye(3)
    series = [np.ones(2)] * 6
    operator, fitter = _native.TrefoilOperator, _native.MultisectorFitterV2
    for result in (
        _native.compute_curvature(points),
        *_native.fourier_knot_eval(*series, t),
        _native.biot_savart_velocity_grid(points, points),
        *_native.biot_savart_wire_grid(points, points, points, points),
        operator.build_uniform_grid(0.0, 1.0, 4),
        operator.build_identity(4),
        *(operator.jacobi_eigensolve_symmetric(eye, True)[key] for key in ("eigenvalues", "eigenvectors")),
        fitter.evaluate_multisector_abs_batch_M(t, [1], [0.1], ell_trefoil=1.0, truncation_values=[2, 3]),
    ):
        assert result.dtype == np.float64 and result.flags.owndata and result.flags.writeable
