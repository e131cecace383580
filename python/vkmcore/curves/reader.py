"""One closed curve by the name that a user gives it: a file, or a key of the catalogue."""

from __future__ import annotations

import math
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING

import numpy as np

from vkmcore import (
    FourierBlock,
    evaluate_fourier_block,
    find_ideal_block_by_id,
    get_embedded_knot_files,
    index_of_largest_block,
    parse_fseries_from_string,
    parse_ideal_halvard_from_string,
)

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class CurveSource:
    """A Fourier series, or else the vertices of a polygon."""

    name: str  # as given
    kind: str  # "fseries", "catalogue", "ideal" or "polygon"
    block: FourierBlock | None
    vertices: list[list[float]] | None  # N points

    def sampled(self, samples: int) -> list[list[float]]:
        """The polygon itself, or `samples` points of the series at uniform parameters."""
        if self.block is None:
            assert self.vertices is not None
            return self.vertices
        # The product before the division, as the library takes it: the same points to the last bit.
        parameters = [k * (2.0 * math.pi) / samples for k in range(samples)]
        return evaluate_fourier_block(self.block, parameters)


def find_curve(name: str) -> CurveSource:
    """The curve of a `.fseries` file (its largest block), of a text file with a vertex x y z a line, of a key of the
    Fourier table (as 3_1), or of an id of the ideal catalogue (as 3:1:1).

    A file goes before a key. Raises RuntimeError when there is no such curve, or when it is a link.
    """
    path = Path(name)
    if path.is_file():
        return _from_file(name, path)
    text = get_embedded_knot_files().get(name)
    if text is not None:
        block = _largest(text)
        if block is not None:
            return CurveSource(name, "catalogue", block, None)
    ideal = parse_ideal_halvard_from_string(find_ideal_block_by_id(name))
    if not ideal:
        raise RuntimeError(f"{name}: neither a file nor a key of the catalogue")
    if len(ideal[0].components) != 1:
        raise RuntimeError(f"{name}: a link of {len(ideal[0].components)} components; one closed curve is needed")
    return CurveSource(name, "ideal", ideal[0].fourier, None)


def _from_file(name: str, path: Path) -> CurveSource:
    text = path.read_bytes().decode("utf-8", "replace")
    block = _largest(text)
    if block is not None:
        return CurveSource(name, "fseries", block, None)
    rows = [
        line.replace(",", " ").split() for line in text.splitlines() if line.strip() and line.strip()[0] not in "#%"
    ]
    try:
        vertices = [[float(word) for word in row] for row in rows]
    except ValueError:
        vertices = []
    if not vertices or any(len(vertex) != 3 for vertex in vertices):
        raise RuntimeError(f"{name}: neither Fourier rows of six numbers nor vertices of three")
    if not all(math.isfinite(coordinate) for vertex in vertices for coordinate in vertex):
        raise RuntimeError(f"{name}: a coordinate is not a finite number")
    return CurveSource(name, "polygon", None, vertices)


def _largest(text: str) -> FourierBlock | None:
    blocks = parse_fseries_from_string(text)
    return blocks[index_of_largest_block(blocks)] if blocks else None


def closed_curve(source: str, samples: int) -> tuple[str, Points]:
    """A closed curve by catalogue key ("3:1:1", "3_1") or file: `.fseries`, `.npy`, or text with three numbers a line.

    Raises:
        RuntimeError: there is no such key or file, or it holds no single closed curve.
        ValueError: the file's numbers are no list of points.
    """
    import vkmcore

    parameters = 2.0 * np.pi * np.arange(samples) / samples
    path = Path(source)
    if path.is_file():
        if path.suffix == ".fseries":
            blocks = vkmcore.parse_fseries_multi(source)
            if not blocks:
                raise RuntimeError(f"{source}: no Fourier block in the file")
            block = blocks[vkmcore.index_of_largest_block(blocks)]
            return block.header or path.stem, np.array(vkmcore.evaluate_fourier_block(block, parameters.tolist()))
        points = np.load(path) if path.suffix == ".npy" else np.loadtxt(path, ndmin=2)
        points = np.asarray(points, dtype=np.float64)
        if points.ndim != 2 or points.shape[1] != 3:
            raise ValueError(f"{source}: expected three numbers a point, found shape {points.shape}")
        if len(points) > 1 and (points[0] == points[-1]).all():
            points = points[:-1]
        return path.stem, points
    if source in vkmcore.get_embedded_knot_files():
        block = vkmcore.load_embedded_knot_block(source)
        return source, np.array(vkmcore.evaluate_fourier_block(block, parameters.tolist()))
    text = vkmcore.find_ideal_block_by_id(source)
    if not text:
        raise RuntimeError(f"{source}: neither a catalogue key nor a file")
    ideal = vkmcore.parse_ideal_halvard_from_string(text)[0]
    if len(ideal.components) != 1:
        raise RuntimeError(f"{source}: has {len(ideal.components)} components, a code is of one closed curve")
    return source, vkmcore.evaluate_ideal_component(ideal.components[0], parameters)
