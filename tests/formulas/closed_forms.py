"""Holds a bound formula against its Python form: by position, by keyword, and with a NaN in every place."""

import inspect

import numpy as np


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def draw(kind, rng):
    """A value of a kind: a float between 0.1 and 0.9, an integer, or lists of these."""
    if kind == "int":
        return int(rng.integers(1, 5))
    shapes = {"float": (), "floats": (7,), "vec": (3,), "vecs": (7, 3), "matrix": (3, 3), "four": (4,)}
    return rng.uniform(0.1, 0.9, shapes[kind]).tolist()


def check(function, form, **kinds):
    """`kinds` names the arguments of the form that are no floats. The same bits are asked for: form and formula are
    evaluated in the same order."""
    rng = np.random.default_rng(len(form.__code__.co_code))
    names = list(inspect.signature(form).parameters)
    for _ in range(4):
        values = [draw(kinds.get(name, "float"), rng) for name in names]
        expected = form(*values)
        assert function(*values) == expected
        assert function(**dict(zip(names, values, strict=True))) == expected
    for at, name in enumerate(names):  # no guard stops a NaN
        if kinds.get(name, "float") == "float":
            function(*values[:at], float("nan"), *values[at + 1 :])
