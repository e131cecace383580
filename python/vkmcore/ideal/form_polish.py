"""Fourier forms of a curve: the fit to its polygon, and descents that bring the ropelength down."""

from __future__ import annotations

import math
from collections.abc import Callable, Sequence

import numpy as np
from numpy.typing import NDArray

from vkmcore.ideal.fourier_form import FourierForm, Points, Series, derivative, evaluated, measure

TAPERS = (0.3, 0.4, 0.5, 0.65, 0.8, 1.2, 1.6, math.inf)
REACH = 2.15  # distance up to which strands are watched
PER_RADIUS = 12.0  # samples of the constraints to a tube radius
JUDGED_PER_RADIUS = 40.0  # where forms are compared: fewer pass between the spikes of the highest harmonics


def fit(components: Sequence[Points], harmonics: int, taper: float | None = None) -> FourierForm:
    """Series through closed polygons of nearly equal edges.

    The longest component gets `harmonics` harmonics, the others as many as their length asks for, but all of one curve
    the same cut in wave number. A taper c multiplies harmonic k by exp(-(k / c K)^2); None tries `TAPERS` and takes the
    one of least ropelength.
    """
    sizes = [float(np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1).sum()) for p in components]
    spectra = []
    for points, size in zip(components, sizes, strict=True):
        count = max(1, math.ceil(harmonics * size / max(sizes) - 1e-9))
        spectrum = np.fft.rfft(points, axis=0) * (2.0 / len(points))
        spectrum[0] /= 2.0
        if len(points) % 2 == 0:
            spectrum[-1] = 0.0  # its phase is unknown
        c = np.zeros((count + 1, 3), dtype=np.complex128)
        known = min(count + 1, len(spectrum))
        c[:known] = spectrum[:known]
        spectra.append(c)

    def tapered(c: Series, cut: float) -> Series:
        result: Series = c * np.exp(-((np.arange(len(c)) / (cut * (len(c) - 1))) ** 2))[:, None]
        return result

    forms = [FourierForm(tuple(tapered(c, cut) for c in spectra)) for cut in (TAPERS if taper is None else (taper,))]
    return forms[0] if len(forms) == 1 else min(forms, key=judged)


def judged(form: FourierForm) -> float:
    """The ropelength by which forms are compared."""
    return measure(form, JUDGED_PER_RADIUS).ropelength


def polish(
    form: FourierForm,
    rounds: int = 10,
    steps: int = 40,
    watch: Callable[[float], None] = lambda ropelength: None,
) -> FourierForm:
    """The series of least ropelength near a given one, with the same harmonics.

    Augmented Lagrangian over the coefficients: least length under curvature <= 1 at the samples and distance >= 2 from
    each sample to the strands that it touches. Every round is a descent by L-BFGS in coefficients scaled by the
    curvature of the function, followed by a new guess of the multipliers. The best series of all rounds is returned,
    which may be the given one.

    Args:
        form: the start, in any unit; the result has tube radius 1.
        rounds, steps: descents at most, and steps in each.
        watch: is told the ropelength after each round.
    """
    form = form.scaled(1.0 / measure(form).thickness)
    best, least = form, judged(form)
    problem = _Polish(form)
    stiffness, stalled = 2000.0, 0
    for _ in range(rounds):
        form = problem.descend(form, stiffness, steps)
        ropelength = judged(form)
        watch(ropelength)
        stalled = 0 if ropelength < least * (1.0 - 2e-5) else stalled + 1
        if ropelength < least:
            best, least = form.scaled(1.0 / measure(form).thickness), ropelength
        if stalled == 3:
            break
        problem.update(form, stiffness)
        stiffness = min(stiffness * 1.3, 8000.0)
    return best


class _Polish:
    """The penalised length of a series in unit tube radius, its gradient, and the multipliers of its constraints."""

    def __init__(self, form: FourierForm) -> None:
        lengths = form.lengths()
        self.total = sum(lengths)
        self.counts = [
            _smooth_count(max(PER_RADIUS * n, 4 * len(c), 48)) for n, c in zip(lengths, form.series, strict=True)
        ]
        self.waves = [np.arange(len(c)) * (math.tau / n) for n, c in zip(lengths, form.series, strict=True)]
        self.weight = np.concatenate([np.full(m, n / m) for n, m in zip(lengths, self.counts, strict=True)])
        self.pairs = self._find_pairs(form, lengths)
        self.kinks: Points = np.zeros(sum(self.counts))
        self.struts: Points = np.zeros(len(self.pairs[0]))

    def _find_pairs(self, form: FourierForm, lengths: list[float]) -> tuple[NDArray[np.int64], ...]:
        """Samples i with the three samples around each nearest point j of a strand within `REACH`."""
        points = form.points(self.counts)
        starts = np.cumsum([0, *self.counts])
        found: list[tuple[NDArray[np.int64], ...]] = []
        for a, p in enumerate(points):
            for b, q in enumerate(points):
                squares = (p**2).sum(axis=1)[:, None] + (q**2).sum(axis=1) - 2.0 * p @ q.T
                if a == b:
                    gap = np.abs(np.arange(len(p))[:, None] - np.arange(len(p)))
                    squares[np.minimum(gap, len(p) - gap) * (lengths[a] / len(p)) < 0.95 * math.pi] = np.inf
                after, before = np.roll(squares, -1, axis=1), np.roll(squares, 1, axis=1)
                least = (squares <= after) & (squares < before) & (squares < REACH**2)
                least &= np.isfinite(after) & np.isfinite(before)
                i, j = np.nonzero(least)
                n = len(q)
                found.append((i + starts[a], (j - 1) % n + starts[b], j + starts[b], (j + 1) % n + starts[b]))
        return tuple(np.concatenate(column) for column in zip(*found, strict=True))

    def _sampled(self, series: Sequence[Series]) -> tuple[Points, Points, Points]:
        parts = []
        for c, m in zip(series, self.counts, strict=True):
            d = derivative(c)
            parts.append((evaluated(c, m), evaluated(d, m), evaluated(derivative(d), m)))
        r, r1, r2 = (np.concatenate(part) for part in zip(*parts, strict=True))
        return r, r1, r2

    def _gaps(self, r: Points, r1: Points, r2: Points) -> tuple[Points, Points, tuple[Points, ...]]:
        """1 - curvature^2 at the samples, distance^2 / 4 - 1 of the pairs, and what their gradients need."""
        a, b, e = (r1 * r1).sum(axis=1), (r1 * r2).sum(axis=1), (r2 * r2).sum(axis=1)
        area = a * e - b * b
        i, jm, j0, jp = self.pairs
        to_before, to_middle, to_after = r[i] - r[jm], r[i] - r[j0], r[i] - r[jp]
        before, middle, after = ((x * x).sum(axis=1) for x in (to_before, to_middle, to_after))
        slope, bend = after - before, np.maximum(after + before - 2.0 * middle, 1e-12)
        along = np.clip(slope / bend, -2.0, 2.0)
        nearest = middle - along * slope / 4.0 + along * along * bend / 8.0
        return 1.0 - area / a**3, nearest / 4.0 - 1.0, (a, b, e, area, to_before, to_middle, to_after, along)

    def value(self, series: Sequence[Series], stiffness: float) -> tuple[float, list[Series]]:
        """Augmented Lagrangian and its gradient dA - i dB by coefficient."""
        r, r1, r2 = self._sampled(series)
        kink, strut, (a, b, e, area, to_before, to_middle, to_after, along) = self._gaps(r, r1, r2)
        i, jm, j0, jp = self.pairs
        strut_weight = self.weight[i] / 2.0  # every contact is met from both of its sides
        push_kink = np.maximum(0.0, self.kinks - stiffness * kink)
        push_strut = np.maximum(0.0, self.struts - stiffness * strut)
        value = float((self.weight * (push_kink**2 - self.kinks**2)).sum()) / (2.0 * stiffness)
        value += float((strut_weight * (push_strut**2 - self.struts**2)).sum()) / (2.0 * stiffness)

        pull = (self.weight * push_kink)[:, None]  # on the curvature squared
        a3 = (a**3)[:, None]
        g1 = pull * ((2.0 * e)[:, None] * r1 - (2.0 * b)[:, None] * r2 - (6.0 * area / a)[:, None] * r1) / a3
        g2 = pull * ((2.0 * a)[:, None] * r2 - (2.0 * b)[:, None] * r1) / a3

        half = along / 2.0
        share_middle = 1.0 - half * half
        force = (-(strut_weight * push_strut) / 4.0)[:, None] * 2.0
        f_middle = force * share_middle[:, None] * to_middle
        f_after = force * ((half * half - half) / 2.0)[:, None] * to_after
        f_before = force * ((half * half + half) / 2.0)[:, None] * to_before
        g0 = np.zeros_like(r)
        total = f_middle + f_after + f_before
        for axis in range(3):
            g0[:, axis] += np.bincount(i, total[:, axis], len(r))
            for j, part in ((j0, f_middle), (jp, f_after), (jm, f_before)):
                g0[:, axis] -= np.bincount(j, part[:, axis], len(r))

        gradient, start = [], 0
        for c, m in zip(series, self.counts, strict=True):
            k = np.arange(len(c))[:, None]
            energy = float((k * k * (c.real**2 + c.imag**2)).sum()) / 2.0
            length = math.tau * math.sqrt(energy)  # at least the true one, and equal to it at uniform speed
            value += length
            x0, x1, x2 = (np.fft.rfft(g[start : start + m], axis=0)[: len(c)] for g in (g0, g1, g2))
            gradient.append((math.pi / math.sqrt(energy)) * k * k * c + x0 - 1j * k * x1 - k * k * x2)
            start += m
        return value, gradient

    def descend(self, form: FourierForm, stiffness: float, steps: int) -> FourierForm:
        scales = []
        for w in self.waves:
            scales.append(np.repeat((1.0 / np.sqrt(0.05 + w**2 + stiffness * (0.5 * w**4 + 0.2)))[:, None], 3, axis=1))
        shapes = [c.shape for c in form.series]
        ends = np.cumsum([c.size for c in form.series])[:-1]

        def unpacked(y: Series) -> list[Series]:
            return [x.reshape(s) * w for x, s, w in zip(np.split(y, ends), shapes, scales, strict=True)]

        def value(y: Points) -> tuple[float, Points]:
            f, g = self.value(unpacked(y.view(np.complex128)), stiffness)
            return f, np.concatenate([(x * w).ravel() for x, w in zip(g, scales, strict=True)]).view(np.float64)

        start: Points = np.concatenate([(c / w).ravel() for c, w in zip(form.series, scales, strict=True)]).view(
            np.float64
        )
        return FourierForm(tuple(unpacked(_least(value, start, steps).view(np.complex128))))

    def update(self, form: FourierForm, stiffness: float) -> None:
        kink, strut, _ = self._gaps(*self._sampled(form.series))
        self.kinks = np.maximum(0.0, self.kinks - stiffness * kink)
        self.struts = np.maximum(0.0, self.struts - stiffness * strut)


def _least(function: Callable[[Points], tuple[float, Points]], x: Points, steps: int, memory: int = 12) -> Points:
    """Limited-memory BFGS (Nocedal and Wright, Numerical Optimization, algorithm 7.5) with halved steps."""
    value, gradient = function(x)
    history: list[tuple[Points, Points, float]] = []
    for _ in range(steps):
        direction = -gradient
        factors = []
        for s, y, rho in reversed(history):
            factors.append(rho * float(s @ direction))
            direction = direction - factors[-1] * y
        if history:
            s, y, rho = history[-1]
            direction = direction / (rho * float(y @ y))
        else:
            direction = direction * (0.01 / max(1e-300, float(np.linalg.norm(gradient))))
        for (s, y, rho), factor in zip(history, reversed(factors), strict=True):
            direction = direction + (factor - rho * float(y @ direction)) * s
        slope = float(gradient @ direction)
        if not slope < 0.0:
            break
        size = 1.0
        while size > 1e-6:
            trial = x + size * direction
            trial_value, trial_gradient = function(trial)
            if trial_value <= value + 1e-4 * size * slope:
                break
            size *= 0.5
        else:
            break
        s, y = trial - x, trial_gradient - gradient
        if float(s @ y) > 1e-12 * float(np.linalg.norm(s) * np.linalg.norm(y)):
            history = [*history, (s, y, 1.0 / float(s @ y))][-memory:]
        x, value, gradient = trial, trial_value, trial_gradient
    return x


def _smooth_count(least: float) -> int:
    """The least count of at least this many that is quick to transform."""
    count = math.ceil(least)
    while True:
        rest = count
        for prime in (2, 3, 5):
            while rest % prime == 0:
                rest //= prime
        if rest == 1:
            return count
        count += 1
