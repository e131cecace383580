"""Plain forms of the tube geometry: loops over all corners and all pairs, in the order of the formulas."""

from __future__ import annotations

import math

EPS = 1e-14


def sub(a, b):
    return [a[0] - b[0], a[1] - b[1], a[2] - b[2]]


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def norm(a):
    return math.sqrt(dot(a, a)) if dot(a, a) >= 0.0 else math.nan


def along(p, k, d):
    return [p[0] + k * d[0], p[1] + k * d[1], p[2] + k * d[2]]


def unit(x):
    return 0.0 if x < 0.0 else 1.0 if x > 1.0 else x


def ratio(x, y):
    return x / y if y != 0.0 else math.nan


def segment_distance(p0, p1, q0, q1):
    d1, d2, r = sub(p1, p0), sub(q1, q0), sub(p0, q0)
    a, e, f = dot(d1, d1), dot(d2, d2), dot(d2, r)
    if a <= EPS and e <= EPS:
        return norm(r), 0.0, 0.0
    if a <= EPS:
        t = unit(f / e)
        return norm(sub(p0, along(q0, t, d2))), 0.0, t
    c = dot(d1, r)
    if e <= EPS:
        s = unit(-c / a)
        return norm(sub(along(p0, s, d1), q0)), s, 0.0
    b = dot(d1, d2)
    det = a * e - b * b
    if det < EPS:
        s_n, s_d, t_n, t_d = 0.0, 1.0, f, e
    else:
        s_n, s_d = b * f - c * e, det
        if s_n < 0.0:
            s_n, t_n, t_d = 0.0, f, e
        elif s_n > det:
            s_n, t_n, t_d = det, f + b, e
        else:
            t_n, t_d = a * f - b * c, det
    if t_n < 0.0 or t_n > t_d:
        m = -c if t_n < 0.0 else b - c
        t_n = 0.0 if t_n < 0.0 else t_d
        if m < 0.0:
            s_n = 0.0
        elif m > a:
            s_n = s_d
        else:
            s_n, s_d = m, a
    s = unit(0.0 if abs(s_n) < EPS else ratio(s_n, s_d))
    t = unit(0.0 if abs(t_n) < EPS else ratio(t_n, t_d))
    return norm(sub(along(p0, s, d1), along(q0, t, d2))), s, t


def candidates(points, skip=2, tol=0.0):
    """Tuples (i, j, s, t, distance, arc i, arc j) of the near pairs, and the least distance."""
    n = len(points)
    edge = [norm(sub(points[k], points[(k + 1) % n])) for k in range(n)]
    arc = [0.0]
    for length in edge:
        arc.append(arc[-1] + length)
    found, least = [], math.inf
    if n > 3:
        for i in range(n - 1):
            for j in range(i + 1, n):
                if min(j - i, n - (j - i)) > max(skip, 0):
                    d, s, t = segment_distance(points[i], points[(i + 1) % n], points[j], points[(j + 1) % n])
                    found.append((i, j, s, t, d, arc[i] + edge[i] * s, arc[j] + edge[j] * t))
                    least = min(least, d) if d == d else least
    tol = max(tol, 0.0)
    limit = least + 1e-12 if tol == 0.0 else (tol + 1.0) * least + tol
    return [pair for pair in found if pair[4] <= limit], least


def corner(points, i):
    """Lengths of the edges at vertex i and its turning angle."""
    n = len(points)
    u, w = sub(points[i % n], points[(i - 1) % n]), sub(points[(i + 1) % n], points[i % n])
    lu, lw = norm(u), norm(w)
    if lu <= EPS or lw <= EPS:
        return lu, lw, 0.0
    quotient = dot(u, w) / (lu * lw)
    return lu, lw, math.acos(max(-1.0, min(1.0, quotient))) if quotient == quotient else math.nan


def kink(points, i):
    """(vertex, minus, plus, minrad, angle) of the corner at vertex i."""
    lu, lw, angle = corner(points, i)
    if angle <= EPS:
        return i % len(points), math.inf, math.inf, math.inf, angle
    d = 2.0 * math.tan(angle / 2.0)
    minus = 0.0 if lu <= EPS or abs(d) <= EPS else lu / d
    plus = 0.0 if lw <= EPS or abs(d) <= EPS else lw / d
    return i % len(points), minus, plus, plus if minus > plus else minus, angle


def minrad(points):
    least = math.inf
    for i in range(len(points)):
        lu, lw, angle = corner(points, i)
        if lu <= EPS or lw <= EPS:
            return 0.0
        if angle > EPS:
            least = min(least, min(lu, lw) / (2.0 * math.tan(angle / 2.0)))
    return least


def analyze(points, skip=2, tol=1e-3):
    """(minrad, least distance, thickness, struts, kinks)."""
    radius = minrad(points)
    near, least = candidates(points, skip, tol)
    thickness = 0.5 * least if 0.5 * least < radius else radius
    if not (0.0 < thickness < math.inf):
        return radius, least, thickness, [], []
    contact = (tol + 1.0) * thickness + tol
    kinks = [kink(points, v) for v in range(len(points))]
    return (
        radius,
        least,
        thickness,
        [pair for pair in near if 0.5 * pair[4] <= contact],
        [k for k in kinks if k[3] <= contact],
    )
