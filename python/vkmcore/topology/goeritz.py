"""Signature and linking form of the double branched cover, from a checkerboard colouring (Gordon and Litherland).

With the faces coloured white and black, G has a row for each white face but one; white faces that meet at a crossing of
type e = +-1 have the entry e there, and rows of the full matrix add up to 0. The signature of the link is that of G
corrected by the crossings where the black surface does not follow the orientation; G^-1 mod 1 is the linking form
(Invent. Math. 47 (1978) 53). Both tell some knots from their mirror images that no usual polynomial does.
"""

from __future__ import annotations

import numpy as np

from vkmcore.topology.diagram import PlanarDiagram, faces, pieces
from vkmcore.topology.fox_calculus import determinant_of_matrix


def _goeritz(diagram: PlanarDiagram) -> tuple[list[list[int]], int]:
    """The matrix, one white face of each piece left out, and the correction of the signature."""
    darts = diagram.darts()
    face = faces(darts)
    white: dict[int, bool] = {}
    neighbours: dict[int, set[int]] = {}
    for dart, number in enumerate(face):
        neighbours.setdefault(number, set()).add(face[darts[dart]])
    for first in sorted(neighbours):
        white.setdefault(first, True)
        stack = [first]
        while stack:
            number = stack.pop()
            fresh = neighbours[number] - white.keys()
            white.update(dict.fromkeys(fresh, not white[number]))
            stack.extend(fresh)
    numbers = [number for number in sorted(set(face)) if white[number]]
    index = {number: n for n, number in enumerate(numbers)}
    matrix = [[0] * len(numbers) for _ in numbers]
    correction = 0
    for crossing, sign in enumerate(diagram.signs):
        even = white[face[4 * crossing]]  # the white faces are those at corners 0 and 2
        kind = -1 if even else 1
        a, b = (index[face[4 * crossing + corner]] for corner in ((0, 2) if even else (1, 3)))
        matrix[a][b] += kind
        matrix[b][a] += kind
        matrix[a][a] -= kind
        matrix[b][b] -= kind
        if (sign > 0) == even:
            correction += kind
    left_out: dict[int, int] = {}  # of each piece one white face
    for crossing, piece in enumerate(pieces(darts)):
        left_out.setdefault(piece, index[face[4 * crossing + (0 if white[face[4 * crossing]] else 1)]])
    kept = [n for n in range(len(numbers)) if n not in left_out.values()]
    return [[matrix[i][j] for j in kept] for i in kept], correction


def signature(diagram: PlanarDiagram) -> int:
    """Signature of the oriented link; -2 for the right-handed trefoil, as in KnotInfo."""
    if not diagram.code:
        return 0
    matrix, correction = _goeritz(diagram)
    if not matrix:
        return correction
    eigenvalues = np.linalg.eigvalsh(np.array(matrix, dtype=np.float64))
    small = 1e-9 * max(1.0, float(np.abs(eigenvalues).max()))
    return int((eigenvalues > small).sum()) - int((eigenvalues < -small).sum()) + correction


def linking_form(diagram: PlanarDiagram) -> dict[int, int]:
    """Odd prime p -> whether a generator of a cyclic p-part of the form is a square (1) or not (-1), in units of 1/p^k.

    A mirror image has the negative form, so that p = 3 mod 4 changes the entry: such a knot is not amphicheiral.
    Primes whose part is not cyclic are left out.
    """
    if not diagram.code:
        return {}
    matrix, _ = _goeritz(diagram)
    whole = determinant_of_matrix(matrix)
    form: dict[int, int] = {}
    rest, p = abs(whole), 2
    while rest > 1:
        if rest % p:
            p += 1 if p * p <= rest else rest - p
            continue
        other = whole
        while rest % p == 0:
            rest //= p
            other //= p
        if p == 2:
            continue
        for left_out in range(len(matrix)):
            kept = [n for n in range(len(matrix)) if n != left_out]
            minor = determinant_of_matrix([[matrix[i][j] for j in kept] for i in kept])
            if minor % p:
                form[p] = 1 if pow(minor * pow(other, -1, p) % p, (p - 1) // 2, p) == 1 else -1
                break
    return form
