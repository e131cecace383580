"""The surface of a tube around closed polygons, as rings of vertices, and its files: STL and OBJ."""

from __future__ import annotations

import math
import os
from collections.abc import Sequence
from pathlib import Path
from typing import TYPE_CHECKING

import numpy as np

from vkmcore.errors import CurveError

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

SIDES = 32  # of a ring in files


def tube_rings(points: Points, radius: float, sides: int) -> tuple[Points, Points]:
    """Rings (N, sides, 3) of a tube around a closed polygon, and their outward normals of the same shape."""
    tangents = unit(np.roll(points, -1, axis=0) - np.roll(points, 1, axis=0))
    # Carry a normal along the curve without twisting it, then spread the angle by which it misses itself. In plain
    # numbers: an array of three costs ten times as much a step.
    carried = []
    nx, ny, nz = np.cross(tangents[0], np.eye(3)[np.argmin(np.abs(tangents[0]))]).tolist()
    for tx, ty, tz in [*tangents.tolist(), tangents[0].tolist()]:
        along = nx * tx + ny * ty + nz * tz
        nx, ny, nz = nx - along * tx, ny - along * ty, nz - along * tz
        size = math.sqrt(nx * nx + ny * ny + nz * nz) or 1.0
        nx, ny, nz = nx / size, ny / size, nz / size
        carried.append((nx, ny, nz))
    normals, normal = np.array(carried[:-1]), np.array(carried[-1])
    miss = math.atan2(float(np.cross(normals[0], normal) @ tangents[0]), float(normals[0] @ normal))
    turn = -miss * np.arange(len(points)) / len(points)
    angles = turn[:, None] + np.linspace(0.0, 2.0 * np.pi, sides, endpoint=False)
    across = np.cross(tangents, normals)
    outward: Points = np.cos(angles)[..., None] * normals[:, None] + np.sin(angles)[..., None] * across[:, None]
    return points[:, None] + radius * outward, outward


def ring_triangles(rings: int, sides: int) -> NDArray[np.int64]:
    """Corners (2 rings sides, 3) of the triangles between rings, counterclockwise from outside; vertex j of ring i is
    i sides + j."""
    i, j = np.meshgrid(np.arange(rings), np.arange(sides), indexing="ij")
    ahead, beside = (i + 1) % rings, (j + 1) % sides
    a, b, c, d = (i * sides + j, ahead * sides + j, ahead * sides + beside, i * sides + beside)
    triangles: NDArray[np.int64] = np.stack([a, c, b, a, d, c], axis=-1).reshape(-1, 3)
    return triangles


def write_stl(path: str | os.PathLike[str], polygons: Sequence[Points], radius: float, comment: str = "") -> None:
    """Binary STL of the tubes. A printer's unit is a millimetre: scale the knot first."""
    parts = []
    for points in polygons:
        vertices = tube_rings(points, radius, SIDES)[0].reshape(-1, 3).astype("<f4")
        parts.append(vertices[ring_triangles(len(points), SIDES)])
    corners = np.concatenate(parts)
    record = np.zeros(len(corners), dtype=[("normal", "<f4", 3), ("corners", "<f4", (3, 3)), ("attribute", "<u2")])
    record["corners"] = corners
    scaled = corners.astype(np.float64) / (radius or 1.0)
    record["normal"] = unit(np.cross(scaled[:, 1] - scaled[:, 0], scaled[:, 2] - scaled[:, 0]))
    head = b"tube".ljust(80)  # must not begin with "solid", which text files do
    Path(path).write_bytes(head + np.uint32(len(corners)).tobytes() + record.tobytes())


def write_obj(path: str | os.PathLike[str], polygons: Sequence[Points], radius: float, comment: str = "") -> None:
    """Wavefront OBJ: the centrelines as closed `l` elements, and the tubes as triangles."""
    lines = [f"# {line}" for line in comment.splitlines()]
    count = 0

    def add(vertices: Points) -> int:
        nonlocal count
        lines.extend(f"v {x!r} {y!r} {z!r}" for x, y, z in vertices.tolist())
        count += len(vertices)
        return count - len(vertices) + 1

    for number, points in enumerate(polygons, start=1):
        lines.append(f"o centreline_{number}")
        first = add(points)
        lines.append("l " + " ".join(str(first + k) for k in [*range(len(points)), 0]))
        lines.append(f"o tube_{number}")
        first = add(tube_rings(points, radius, SIDES)[0].reshape(-1, 3))
        lines += [f"f {a} {b} {c}" for a, b, c in (ring_triangles(len(points), SIDES) + first).tolist()]
    Path(path).write_text("\n".join(lines) + "\n", encoding="utf-8")


def points_from_obj(text: str, name: str) -> list[Points]:
    """The closed `l` elements of an OBJ text, (N, 3) each; `name` stands in errors.

    Raises:
        CurveError: no such element, an open one, or one of vertices that are not there; its line is named.
    """
    vertices: list[list[float]] = []
    found = []
    for number, line in enumerate(text.splitlines(), start=1):
        word, *rest = line.split("#", 1)[0].split() or [""]
        try:
            if word == "v":
                x, y, z = map(float, rest[:3])
                vertices.append([x, y, z])
            elif word == "l":
                at = [int(part.split("/")[0]) for part in rest]
                at = [k - 1 if k > 0 else len(vertices) + k for k in at]
                if len(at) < 4 or at[0] != at[-1] or min(at) < 0:
                    raise CurveError(f"{name}: line {number}: expected a closed line of at least three vertices")
                found.append(np.array([vertices[k] for k in at[:-1]]))
        except (ValueError, IndexError):
            raise CurveError(f"{name}: line {number}: no vertex or line element: {line[:40]!r}") from None
    if not found:
        raise CurveError(f"{name}: no line elements in it: a surface holds no curve")
    return found


def unit(vectors: Points) -> Points:
    """Vectors over their lengths; zero ones as they are."""
    lengths = np.linalg.norm(vectors, axis=-1, keepdims=True)
    scaled: Points = vectors / np.where(lengths > 0.0, lengths, 1.0)
    return scaled
