"""Calls that poll run signal handlers: a handler that changes `self` and every argument changes nothing of the call."""

import ctypes
import signal
import warnings

import _native
import numpy as np
import pytest
from fuzz.calls import EXPECTED, LEFT_OUT, digest, prepare
from fuzz.interface import read
from fuzz.values import Values

TRIES = 4  # seeds a callable: not all of their arguments reach the loops


class Rehearsal:
    """While it is on, every poll finds a signal pending, whose handler calls `spoil` once."""

    def __init__(self, spoil):
        self.spoil, self.polled = spoil, False
        self.library = ctypes.PyDLL(_native.__file__)

    def handle(self, *_):
        self.library.vkm_rehearse_signal(0)  # what the handler calls polls, too
        self.polled = True
        self.spoil()

    def __enter__(self):
        self.before = signal.signal(signal.SIGUSR1, self.handle)
        self.library.vkm_rehearse_signal(signal.SIGUSR1)
        return self

    def __exit__(self, *_):
        self.library.vkm_rehearse_signal(0)
        signal.signal(signal.SIGUSR1, self.before)


def spoil(value):
    """Changes an object in every way that its face allows, and drops what it holds."""
    if isinstance(value, np.ndarray):
        if value.flags.owndata and value.flags.writeable:
            value.fill(np.nan if value.dtype.kind in "fc" else 0)
            value.resize((0,), refcheck=False)
    elif isinstance(value, list):
        for item in value:
            spoil(item)
        value.clear()
    elif isinstance(value, dict):
        for item in value.values():
            spoil(item)
        value.clear()
    elif type(value).__module__ == "_native" and not hasattr(type(value), "__members__"):
        spoil_object(value)


def spoil_object(value):
    for name, kind in vars(type(value)).items():
        if not isinstance(kind, property) or kind.fset is None or name == "__class__":
            continue
        held = getattr(value, name)
        if isinstance(held, list | str):
            try:
                setattr(value, name, type(held)())
            except TypeError:
                setattr(value, name, [0.0] * len(held))  # of a fixed length
        elif isinstance(held, bool | int | float) and not hasattr(type(held), "__members__"):
            setattr(value, name, type(held)(0))
        elif type(held).__module__ == "_native":
            spoil(held)
    changes = {
        "relax": (50, 0.01),
        "evolve": (0.1, 1),
        "initialize_trefoil_knot": (5,),
        "initialize_figure8_knot": (5,),
        "initialize_knot_from_name": ("3_1", 5),
        "set_tail_approx_config": (_native.TailApproxConfig(),),
        "reconstruct": (3,),
        "selectMaxHarmonics": (),
        "loadBlocks": ("/nothing",),
    }
    for name, arguments in changes.items():
        if hasattr(value, name):
            try:
                getattr(value, name)(*arguments)
            except RuntimeError:
                pass  # another call is changing it: the guard


def called(chosen, values, during=None):
    """The call's outcome, and whether it polled; `during` makes the handler's deed of `self` and the arguments."""
    named, positional = {}, []
    try:
        for argument in chosen.arguments:
            value = values.of(argument.kind, argument.name)
            if argument.name.startswith("arg"):
                positional.append(value)
            else:
                named[argument.name] = value
        made = values.object(chosen.owner) if chosen.needs_object else None
    except EXPECTED as error:  # of a constructor that refuses its random arguments
        return f"{type(error).__name__}: {error}", False
    holder = made if made is not None else getattr(_native, chosen.owner) if chosen.owner else _native
    function = holder if chosen.name == "__init__" else getattr(holder, chosen.name)

    def everything():
        for value in (*positional, *named.values(), made):
            spoil(value)

    with Rehearsal(everything if during else lambda: None) as rehearsal:
        try:
            result = digest(function(*positional, **named))
        except EXPECTED as error:
            result = f"{type(error).__name__}: {error}"
    for reader in ("get_filaments", "get_positions"):
        if hasattr(made, reader) and chosen.name in ("relax", "evolve"):
            result += digest(getattr(made, reader)())
    return result, rehearsal.polled


functions, classes = read()
CALLABLES = [
    known
    for known in (*functions, *(constructor for cls in classes.values() for constructor in cls.constructors))
    if (known.arguments and known.name not in LEFT_OUT) or known.needs_object
]


@pytest.fixture(scope="module")
def folder(tmp_path_factory):
    path = tmp_path_factory.mktemp("files")
    prepare(path)
    return path


def test_a_handler_that_changes_everything_changes_nothing(folder):
    polled, differing = set(), []
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        for chosen in CALLABLES:
            for seed in range(TRIES):
                prepare(folder)
                plain, polls = called(chosen, Values(f"{chosen.full_name}:{seed}", folder))
                if not polls:
                    continue
                polled.add(chosen.full_name)
                prepare(folder)
                spoiled, _ = called(chosen, Values(f"{chosen.full_name}:{seed}", folder), during=True)
                if spoiled != plain:
                    differing.append((chosen.full_name, seed))
    assert differing == []
    # Which calls poll depends on their random arguments; many do, and the evaluator and the integrators among them.
    assert len(polled) > 20 and {"ParticleEvaluator.relax", "TimeEvolution.evolve"} <= polled


def test_two_calls_that_change_one_object():
    evaluator = _native.ParticleEvaluator("3:1:1", 40)
    errors = []

    def relax_too():
        with pytest.raises(RuntimeError, match="another call is changing this object") as caught:
            evaluator.relax(1)
        errors.append(caught.value)

    with Rehearsal(relax_too):
        evaluator.relax(5)
    assert len(errors) == 1
    evaluator.relax(1)  # the guard is gone


def test_a_handler_that_drops_the_filaments():
    config = _native.TailApproxConfig()
    config.enabled = True
    for measure in (
        lambda evaluator: evaluator.compute_tail_energy_surrogate_J(),
        lambda evaluator: evaluator.get_mass_mev_ab_initio(True),
        lambda evaluator: digest(evaluator.compute_relativistic_metrics()),
    ):
        evaluator = _native.ParticleEvaluator("3:1:1", 60)
        evaluator.set_tail_approx_config(config)
        expected = measure(evaluator)
        before = evaluator.get_filaments()
        with Rehearsal(lambda made=evaluator: spoil(made)) as rehearsal:
            assert measure(evaluator) == expected
        assert rehearsal.polled and evaluator.get_filaments() != before
