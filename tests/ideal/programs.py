"""The quadratic programs of the engine in plain matrices."""

import itertools

import numpy as np


def next_vertices(sizes):
    begins = np.cumsum([0, *sizes])
    return np.concatenate([np.roll(np.arange(a, b), -1) for a, b in itertools.pairwise(begins)])


def components_of(sizes):
    return np.repeat(np.arange(len(sizes)), sizes)


def matrices(program):
    """P, c, A, b, G, g of: minimise x P x / 2 + c x, with A x = b and G x >= g; x holds the moves and the h."""
    sizes, edges, kinks, struts = (program[key] for key in ("sizes", "edges", "kinks", "struts"))
    n, m = sum(sizes), len(sizes)
    after, part = next_vertices(sizes), components_of(sizes)
    before = np.argsort(after)
    P = np.zeros((3 * n + m, 3 * n + m))
    P[: 3 * n, : 3 * n] = program["rho"] * np.eye(3 * n)
    c = np.concatenate([np.zeros(3 * n), sizes])
    A, b = np.zeros((n, 3 * n + m)), -edges[:, 3]

    def at(k):
        return slice(3 * k, 3 * k + 3)

    for k in range(n):
        u, length = edges[k, :3], edges[k, 3]
        across = (np.eye(3) - np.outer(u, u)) / length
        for row, s in ((k, -1), (after[k], 1)):
            A[k, at(row)] = s * u
            for column, t in ((k, -1), (after[k], 1)):
                P[at(row), at(column)] += s * t * across
        A[k, 3 * n + part[k]] = -1
        bend = ((before[k], 1), (k, -2), (after[k], 1))
        for (row, s), (column, t) in itertools.product(bend, bend):
            P[at(row), at(column)] += s * t * program["stiffness"] / length**3 * np.eye(3)
    G, g = np.zeros((len(kinks) + len(struts), 3 * n + m)), np.concatenate([kinks[:, 6], struts[:, 8]])
    for r, row in enumerate(kinks):
        k = int(row[0])
        G[r, at(after[k])], G[r, at(k)], G[r, at(before[k])] = row[1:4], -2 * row[1:4], row[1:4]
        G[r, 3 * n + part[k]] = -row[4]
    for r, row in enumerate(struts, len(kinks)):
        i, j, s, t, w = int(row[0]), int(row[1]), row[2], row[3], row[4:7]
        for vertex, factor in ((i, 1 - s), (after[i], s), (j, t - 1), (after[j], -t)):
            G[r, at(vertex)] += factor * w
    return P, c, A, b, G, g


def least_distance(points, gap):
    """Of edges of one polygon with more than `gap` of the curve between them, by brute force on fine points."""
    n = len(points)
    u = np.linspace(0.0, 1.0, 9)
    fine = (points[:, None] * (1 - u)[:, None] + np.roll(points, -1, 0)[:, None] * u[:, None]).reshape(-1, 3)
    edge = np.repeat(np.arange(n), len(u))
    length = np.linalg.norm(np.roll(points, -1, 0) - points, axis=1)
    arc = np.concatenate([[0], np.cumsum(length)])
    forwards = arc[edge][None, :] - arc[edge + 1][:, None]
    backwards = arc[-1] - arc[edge + 1][None, :] + arc[edge][:, None]
    apart = (edge[None, :] > edge[:, None]) & (forwards > gap) & (backwards > gap)
    distance = np.linalg.norm(fine[:, None] - fine[None], axis=2)
    return distance[apart].min()


def linking_number(a, b):
    """Half the sum of the signs of crossings, seen along a general direction."""
    turn = np.linalg.qr(np.random.default_rng(3).normal(size=(3, 3)))[0]
    a, b = a @ turn, b @ turn
    total = 0
    for p, q in zip(a, np.roll(a, -1, 0)):
        for r, s in zip(b, np.roll(b, -1, 0)):
            m = np.array([(q - p)[:2], (r - s)[:2]]).T
            x, y = np.linalg.solve(m, (r - p)[:2])
            if 0 <= x < 1 and 0 <= y < 1:
                over = np.sign((p + x * (q - p))[2] - (r + y * (s - r))[2])
                total += over * np.sign(np.linalg.det(m))
    return abs(total) / 2
