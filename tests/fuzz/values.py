"""Values for arguments, by type and name: right ones, small enough for a call of milliseconds, and hostile ones."""

from __future__ import annotations

import ast
import math
import random
from pathlib import Path
from typing import Any

import _native
import numpy as np

from fuzz.interface import Class, read

# What counts samples, steps and cells; calls stay short with these. Other integers are small.
COUNTS = {
    "n": (3, 40),
    "n_bins": (1, 20),
    "nsamples": (32, 90),
    "resolution": (8, 60),
    "grid_size": (4, 9),
    "interior_margin": (0, 2),
    "iterations": (0, 6),
    "steps": (0, 4),
    "max_iterations": (1, 60),
    "max_sweeps": (1, 60),
    "max_iter": (1, 60),
    "max_steps": (0, 2),
    "tries": (1, 6),
    "directions": (1, 6),
    "truncation_M": (0, 12),
    "radial_samples": (1, 3),
    "azimuth_samples": (1, 5),
    "n_real": (1, 5),
    "n_imag": (1, 5),
}

FLOATS = (0.0, -0.0, 1.0, -1.0, 0.5, 2.0, 1e-3, 1e3, math.pi)
HOSTILE_FLOATS = (math.nan, math.inf, -math.inf, 1e308, -1e308, 5e-324, 1e-308, 1e-160, 1e160, 2.0**53, 1e16)
HOSTILE_INTEGERS = (
    -1,
    0,
    -(2**31),
    2**31 - 1,
    2**31,
    2**32,
    2**53,
    2**63 - 1,
    2**63,
    2**64 - 1,
    2**64,
    2**70,
    -(2**70),
)
HOSTILE_TEXTS = ("", "\0", "a\0b", "\ud800", "é" * 100, "../..", "/", "/dev/null", "/dev/full", "x" * 70000, "%s%n")


class Liar:
    """A sequence that raises, or lies about its length, as it is read."""

    def __init__(self, length: int, error: type[BaseException]) -> None:
        self.length, self.error = length, error

    def __len__(self) -> int:
        return self.length

    def __getitem__(self, place: int) -> Any:
        if place >= 3:
            raise self.error("hostile element")
        return float(place)

    def __float__(self) -> float:
        raise self.error("hostile number")

    __index__ = __float__


class Values:
    """A source of values; the same seed gives the same ones, on every machine."""

    def __init__(self, seed: str, folder: Path, hostility: float = 0.0) -> None:
        self.random = random.Random(seed)
        self.folder = folder
        self.hostility = hostility
        self.classes: dict[str, Class] = read()[1]

    def of(self, kind: ast.expr, name: str) -> Any:
        """A value of an annotation, or a hostile one instead of it."""
        if self.random.random() < self.hostility:
            return self.hostile()
        return self._right(ast.unparse(kind), kind, name)

    # Right values.

    def _right(self, text: str, kind: ast.expr, name: str) -> Any:
        random = self.random
        if isinstance(kind, ast.BinOp) and isinstance(kind.op, ast.BitOr):
            if ast.unparse(kind.right) == "None":
                return None if random.random() < 0.5 else self._right(ast.unparse(kind.left), kind.left, name)
            if "SupportsInt" in text:
                return random.randint(*COUNTS.get(name, (0, 6)))
            if "complex" in text:
                return complex(self.number(), self.number())
            return self.number()
        if text == "bool":
            return random.random() < 0.5
        if text == "str":
            return self.text(name)
        if text == "typing.Any":
            return self.array_named(name)
        if text == "dict[typing.Any, typing.Any]":
            return self.options() if name == "options" else self.filament()
        if text.startswith("typing.Annotated[numpy.typing.ArrayLike"):
            return self.array_named(name, text)
        if text.startswith("typing.Annotated"):
            assert isinstance(kind, ast.Subscript) and isinstance(kind.slice, ast.Tuple)
            inner, size = kind.slice.elts
            assert isinstance(inner, ast.Subscript)
            count = int("".join(filter(str.isdigit, ast.unparse(size))))
            return [self._right(ast.unparse(inner.slice), inner.slice, name) for _ in range(count)]
        if text.startswith("collections.abc.Sequence"):
            assert isinstance(kind, ast.Subscript)
            return self.sequence(kind.slice, name)
        if text in self.classes:
            return self.object(text)
        raise AssertionError(f"no value for {text}")

    def number(self) -> float:
        return self.random.choice(FLOATS) if self.random.random() < 0.3 else self.random.uniform(-3.0, 3.0)

    def size(self) -> int:
        return self.random.choice((0, 1, 2, 3, 4, 8, 24, 40))

    def sequence(self, item: ast.expr, name: str) -> Any:
        text = ast.unparse(item)
        if text.startswith("collections.abc.Sequence") and "FixedSize(3)" in text:
            return [self.curve().tolist() for _ in range(self.random.randint(0, 2))]
        if "FixedSize(3)" in text and "SupportsFloat" in text:
            if text.startswith("collections.abc.Sequence"):
                return [self.curve().tolist() for _ in range(self.random.randint(0, 2))]
            return self.curve().tolist()
        if "ArrayLike" in text or text.startswith("dict"):
            return [self._right(text, item, "points") for _ in range(self.random.choice((0, 1, 2)))]
        if text.startswith("collections.abc.Sequence"):
            rows, columns = self.random.randint(0, 5), self.random.randint(0, 5)
            return [[self.number() for _ in range(columns)] for _ in range(rows)]
        count = self.size() if "Supports" in text else self.random.randint(0, 3)
        return [self._right(text, item, name) for _ in range(count)]

    def curve(self, size: int | None = None) -> np.ndarray:
        """A closed curve without symmetry, at times a degenerate one."""
        n = self.size() if size is None else size
        # By additions alone: what a curve is must not depend on the machine's sine.
        steps = np.array([[self.random.uniform(-1, 1) for _ in range(3)] for _ in range(n)]).reshape(n, 3)
        points = np.cumsum(steps, axis=0)
        if n > 2 and self.random.random() < 0.1:
            points[n // 2] = points[0]
        return points

    def array_named(self, name: str, text: str = "") -> np.ndarray:
        n = self.size()
        if "int32" in text or "int64" in text:
            return np.array([self.random.randint(0, 6) for _ in range(n)], dtype=np.int64)
        if "complex" in text:
            return np.array([complex(self.number(), self.number()) for _ in range(n)], dtype=complex)
        if name in ("X", "Y", "Z"):
            return np.array([self.number() for _ in range(12)]).reshape(3, 4)
        if name in ("matrix", "kernel", "K"):
            side = self.random.randint(0, 8)
            half = np.array([self.number() for _ in range(side * side)]).reshape(side, side)
            return half + half.T
        if name in ("vel", "velocity_field"):
            return np.array([self.number() for _ in range(3 * 4 * 5 * 3)]).reshape(3, 4, 5, 3)
        flat = ("thetas", "sectors", "weights", "values", "nodes", "density", "ds_arr", "targets", "abs", "potential")
        if len(name) == 1 or name.endswith(flat):
            return np.array([self.number() for _ in range(n)])
        if name[:2] in ("a_", "b_") and len(name) == 3:
            return np.array([self.number() for _ in range(4)])
        return self.curve()

    def filament(self) -> dict[str, Any]:
        return {"points": self.curve(), "circulation": self.number(), "id": "f", "ghost": self.random.random() < 0.2}

    def options(self) -> dict[str, Any]:
        return {"core_radius": 0.01 + self.random.random(), "lia_only": self.random.random() < 0.3}

    def text(self, name: str) -> str:
        random = self.random
        if name in ("path", "path_a", "path_b", "paths"):
            return str(self.folder / random.choice(("knot.fseries", "legacy.fseries", "missing.fseries", "ideal.txt")))
        if name == "root_dir":
            return str(self.folder)
        if name == "content":
            return (self.folder / random.choice(("knot.fseries", "ideal.txt"))).read_text()
        if name in ("knot_id", "identifier"):
            return random.choice(("3_1", "4_1", "5_2", "nothing"))
        if name in ("knot_ab_id", "ab_id", "id", "block_id"):
            return random.choice(("3:1:1", "4:1:1", "2:2:1", "0:1:1"))
        if name == "name":
            return random.choice(("ideal.txt", "trefoil"))
        return random.choice(("", "text", "é", "rho_f", "KnotPlot"))

    def object(self, name: str) -> Any:
        """An instance: made by one of its constructors with right arguments, its attributes set to right values."""
        cls = getattr(_native, name)
        if hasattr(cls, "__members__"):
            return self.random.choice(list(cls.__members__.values()))
        if name in ("ResolvedTubeMetrics", "RigidityMatrix", "SparseRigidityMatrix") and self.random.random() < 0.7:
            points = self.curve(24).tolist()
            tube = _native.ResolvedTubeGeometry.analyze(points)
            if name == "ResolvedTubeMetrics":
                return tube
            build = "build_rigidity_matrix" if name == "RigidityMatrix" else "build_sparse_rigidity_matrix"
            return getattr(_native.ContactStressMap, build)(points, tube)
        known = self.classes[name]
        made = None
        while made is None:
            constructor = self.random.choice(known.constructors)
            arguments = {
                argument.name: self._right(ast.unparse(argument.kind), argument.kind, argument.name)
                for argument in constructor.arguments
            }
            try:
                made = cls(**arguments)
            except (ValueError, RuntimeError):
                continue  # values that are right by type, and refused by what they mean
        for attribute, kind in sorted(known.attributes.items()):
            if self.random.random() < 0.5:
                setattr(made, attribute, self._right(ast.unparse(kind), kind, attribute))
        return made

    # Hostile values.

    def hostile(self) -> Any:
        random = self.random
        curve = self.curve(8)
        choices = (
            lambda: random.choice(HOSTILE_FLOATS),
            lambda: random.choice(HOSTILE_INTEGERS),
            lambda: random.choice(HOSTILE_TEXTS),
            lambda: random.choice((None, True, b"\xff\0", object(), {}, {1: 2}, set(), ..., float, len)),
            lambda: [],
            lambda: [[1.0, 2.0]],
            lambda: [[math.nan] * 3] * 5,
            lambda: [[random.choice(HOSTILE_FLOATS) for _ in range(3)] for _ in range(6)],
            lambda: [random.choice(HOSTILE_FLOATS) for _ in range(6)],
            lambda: curve.astype(np.float32),
            lambda: curve[::-2],
            lambda: np.asfortranarray(curve),
            lambda: curve.astype(">f8"),
            lambda: curve.astype(object),
            lambda: np.zeros((0, 3)),
            lambda: np.zeros((3, 0)),
            lambda: np.float64(3.0),
            lambda: np.zeros((2, 3, 3)),
            lambda: np.broadcast_to(np.zeros(3), (10**9, 3)),
            lambda: np.broadcast_to(np.float32(1), (10**10,)),
            lambda: (float(i) for i in range(4)),
            lambda: Liar(5, ValueError),
            lambda: Liar(2**62, KeyError),
            lambda: _native.FourierBlock.__new__(_native.FourierBlock),
            lambda: _native.ResolvedTubeMetrics.__new__(_native.ResolvedTubeMetrics),
        )
        return random.choice(choices)()
