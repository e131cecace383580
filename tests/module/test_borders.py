"""What stands at the border of the extension: errors that pass, memory that is asked for, objects that are refused."""

import copy
import os
import subprocess
import sys

import _native
import numpy as np
import pytest


class Raising:
    """A number, by name, whose conversion raises."""

    def __init__(self, error):
        self.error = error

    def __float__(self):
        raise self.error("from the user's object")

    def __index__(self):
        raise self.error("from the user's object")


class RaisingList:
    def __init__(self, error):
        self.error = error

    def __len__(self):
        return 3

    def __getitem__(self, place):
        raise self.error("from the user's object")


BLOCK = _native.load_embedded_knot_block("3_1")


@pytest.mark.parametrize("error", [KeyboardInterrupt, MemoryError, ZeroDivisionError, SystemExit])
@pytest.mark.parametrize(
    "call",
    [
        lambda bad: _native.cylinder_mass(bad, 1.0, 1.0),
        lambda bad: _native.length_exact(BLOCK, bad),
        lambda bad: _native.enstrophy([1.0, bad], [1.0, 2.0]),
        lambda bad: _native.compute_writhe([[0.0, 0.0, bad]] * 4),
        lambda bad: _native.NodeAnalyzer.local_minima_indices([1.0, bad, 2.0]),
        lambda bad: _native.compute_filament_velocity([{"points": np.zeros((4, 3)), "circulation": bad}], {}),
        lambda bad: _native.biot_savart_wire_grid([1.0, bad], [0.0, 0.0], [0.0, 0.0], [[0.0, 0.0, 0.0]]),
        lambda bad: setattr(_native.TailApproxConfig(), "r_max_factor", bad),
        lambda bad: setattr(_native.TailApproxConfig(), "radial_samples", bad),
    ],
)
def test_exceptions_of_a_users_object_pass(call, error):
    with pytest.raises(error, match="from the user's object"):
        call(Raising(error))


@pytest.mark.parametrize("error", [KeyboardInterrupt, MemoryError])
def test_exceptions_of_a_users_list_pass(error):
    with pytest.raises(error, match="from the user's object"):
        _native.enstrophy(RaisingList(error), [1.0])


@pytest.mark.parametrize("value", ["text", None, object(), 1j, [1.0], Raising(TypeError), Raising(ValueError)])
def test_what_is_no_number_is_a_type_error(value):
    with pytest.raises(TypeError, match="incompatible function arguments"):
        _native.cylinder_mass(value, 1.0, 1.0)


@pytest.mark.parametrize("value", [2**31, -(2**31) - 1, 2**70, 1.0, "1"])
def test_what_is_no_32_bit_integer_is_a_type_error(value):
    with pytest.raises(TypeError):
        _native.VortexKnotSystem().initialize_trefoil_knot(value)


def wide(kind=np.float64, shape=(1 << 36,)):
    """A view of one number: as long as one likes, in no memory."""
    return np.broadcast_to(kind(0), shape)


@pytest.mark.parametrize(
    "call",
    [
        lambda: _native.compute_writhe(wide(shape=(1 << 36, 3))),
        lambda: _native.compute_writhe(wide(np.float32, (1 << 36, 3))),
        lambda: _native.enstrophy(wide(), wide()),
        lambda: _native.enstrophy(wide(np.int8), wide(np.int8)),
        lambda: _native.ParticleEvaluator(wide(shape=(1 << 18, 1 << 18, 3))),
        lambda: _native.NodeAnalyzer.local_minima_indices(wide()),
        lambda: _native.NodeAnalyzer.local_minima_indices(wide(np.float32)),
        lambda: _native.MultisectorFitter.evaluate_sector(wide(), 1, 0.0, 1.0, 1),
        lambda: _native.calculate_length(wide(shape=(1 << 36, 3))),
        lambda: _native.calculate_length(wide(np.float32, (1 << 36, 3))),
        lambda: _native.biot_savart_velocity_grid(np.zeros((4, 3)), wide(shape=(1 << 36, 3))),
        lambda: _native.compute_topology_clearance(wide(shape=(1 << 18, 1 << 18, 3))),
        lambda: _native.TrefoilOperator.build_uniform_grid(0.0, 1.0, 1 << 40),
        lambda: _native.TrefoilOperator.build_identity(1 << 20),
        lambda: _native.resample_closed_curve(np.eye(3), 2**32 - 1),
        lambda: _native.sample_circle(2**32 - 1),
    ],
)
def test_absurd_memory_is_a_memory_error(call):
    with pytest.raises(MemoryError):
        call()


@pytest.mark.skipif("ASAN_OPTIONS" in os.environ, reason="a sanitizer's own map takes more than the limit")
def test_memory_is_measured_against_the_limits_of_the_process(tmp_path):
    """Half of what the process may have is the limit, not half of the machine."""
    code = """
import resource, _native
resource.setrlimit(resource.RLIMIT_AS, (1 << 30, 1 << 30))
try:
    _native.TrefoilOperator.build_uniform_grid(0.0, 1.0, 80_000_000)
except MemoryError:
    print("refused")
"""
    run = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, cwd=tmp_path)
    assert run.stdout == "refused\n", run.stderr


ALL_CLASSES = [kind for kind in vars(_native).values() if isinstance(kind, type)]


@pytest.mark.parametrize("kind", ALL_CLASSES, ids=lambda kind: kind.__name__)
def test_objects_without_init_are_refused(kind):
    empty = kind.__new__(kind)
    readable = [name for name, value in vars(kind).items() if isinstance(value, property) and not name.startswith("__")]
    for name in readable:
        with pytest.raises(TypeError, match="made without __init__"):
            getattr(empty, name)
    del empty


@pytest.mark.parametrize(
    "use",
    [
        lambda: _native.length_exact(_native.FourierBlock.__new__(_native.FourierBlock)),
        lambda: _native.ParticleEvaluator.__new__(_native.ParticleEvaluator).get_filaments(),
        lambda: _native.index_of_largest_block([_native.FourierBlock.__new__(_native.FourierBlock)]),
        lambda: copy.copy(_native.FourierBlock()).a_x,
        lambda: _native.VortexKnotSystem.__new__(_native.VortexKnotSystem).get_positions(),
    ],
)
def test_use_of_objects_without_init_is_a_type_error(use):
    with pytest.raises(TypeError):
        use()


@pytest.mark.parametrize("kind", ALL_CLASSES, ids=lambda kind: kind.__name__)
def test_class_assignment_is_refused(kind):
    other = _native.FourierBlock if kind is not _native.FourierBlock else _native.Grid1D
    made = kind.__new__(kind)
    assert made.__class__ is kind
    with pytest.raises(TypeError, match="__class__ cannot be assigned"):
        made.__class__ = other


@pytest.mark.parametrize("value", [2**40, 2**31, -(2**31) - 1])
@pytest.mark.parametrize("array", [np.array, list, lambda items: np.array(items, dtype=float)])
def test_sectors_out_of_range_are_refused(value, array):
    with pytest.raises(ValueError, match=r"must lie within -2147483648 \.\. 2147483647"):
        _native.MultisectorFitter.evaluate_multisector(
            np.zeros(2), array([value]), np.zeros(1), ell_trefoil=1.0, truncation_M=1
        )


def test_sectors_of_other_types_are_taken_as_before():
    expected = _native.MultisectorFitter.evaluate_multisector_abs(
        [1.0], np.array([2, 3], np.int32), [0.1, 0.2], ell_trefoil=1.0, truncation_M=3
    )
    for kind in (np.int8, np.uint16, np.int64, np.uint64, float, object):
        found = _native.MultisectorFitter.evaluate_multisector_abs(
            [1.0], np.array([2, 3], kind), [0.1, 0.2], ell_trefoil=1.0, truncation_M=3
        )
        assert np.array_equal(found, expected), kind


@pytest.mark.parametrize(
    ("key", "value", "text"),
    [
        ("circulation", "strong", "key 'circulation': expected a float, not str"),
        ("id", 3, "key 'id': expected a str, not int"),
        ("ghost", "no", "key 'ghost': expected a bool, not str"),
        ("points", "here", "key 'points': expected an array of points"),
    ],
)
def test_a_wrong_type_in_a_filament_names_its_key(key, value, text):
    with pytest.raises((RuntimeError, ValueError), match=text):
        _native.compute_filament_velocity([{"points": np.zeros((4, 3)), key: value}], {})


@pytest.mark.parametrize(("kind", "name"), [("CheckResult", "message"), ("EvidenceReportMeta", "git_commit")])
def test_report_texts_are_str(kind, name):
    made = getattr(_native, kind)()
    with pytest.raises(TypeError):
        setattr(made, name, b"\xff")
    setattr(made, name, "é")
    assert getattr(made, name) == "é"
