"""Runs of the filament dynamics against theory: the figures of docs/validation.md and the numbers beside them.

PYTHONPATH=build/dev:python python tools/validate_dynamics.py [docs [svg]]      (a minute of work; scipy, matplotlib)
"""

from __future__ import annotations

import math
import sys
from collections.abc import Sequence
from pathlib import Path
from typing import Any

import numpy as np
from numpy.typing import NDArray
from scipy.integrate import solve_ivp
from scipy.special import ellipe, ellipk
from vkmcore import calculate_length, compute_polygonal_gauss, sample_circle
from vkmcore.dynamics.core_model import filament_velocity
from vkmcore.dynamics.invariants import impulse
from vkmcore.dynamics.simulation import simulate
from vkmcore.dynamics.thin_filament import kelvin_wave_frequency, ring_speed, thin_filament_velocity

Points = NDArray[np.float64]


def trefoil(count: int, thin: float = 0.2) -> Points:
    """A torus knot around a ring of radius 1, on a torus whose tube has the radius `thin`: (count, 3)."""
    t = 2.0 * np.pi * np.arange(count) / count
    across = 1.0 + thin * np.cos(3.0 * t)
    return np.stack([across * np.cos(2.0 * t), across * np.sin(2.0 * t), thin * np.sin(3.0 * t)], axis=1)


def thin_filament_run(points: Points, t_end: float, steps: int, core_radius: float) -> list[Points]:
    """A thin filament of circulation 1 and a core in solid rotation, by the spectral velocity of its curve and the
    classical Runge-Kutta scheme: the points at the start and after each step. Waves that `points` do not resolve are
    taken away at each step."""
    frames, h = [points], t_end / steps
    for _ in range(steps):
        now = frames[-1]
        k1 = thin_filament_velocity(now, core_radius)
        k2 = thin_filament_velocity(now + 0.5 * h * k1, core_radius)
        k3 = thin_filament_velocity(now + 0.5 * h * k2, core_radius)
        k4 = thin_filament_velocity(now + h * k3, core_radius)
        moved = np.fft.rfft(now + h / 6.0 * (k1 + 2.0 * k2 + 2.0 * k3 + k4), axis=0)
        moved[len(points) // 3 :] = 0.0
        frames.append(np.fft.irfft(moved, len(points), axis=0))
    return frames


def leapfrog_quarter(radius: float, distance: float, core_radius: float, core: str = "solid") -> float:
    """Time in s until of two equal thin coaxial rings of circulation 1 the rear one passes the front one: a quarter of
    the leapfrogging's period. Each ring has its own speed and that of the other's field (elliptic integrals)."""

    def others(r: float, z: float, other: float) -> tuple[float, float]:
        """Velocity (along r, along z) at (r, z) of a ring of radius `other` at height 0; Lamb, Hydrodynamics, 161."""
        square, near = (other + r) ** 2 + z * z, (other - r) ** 2 + z * z
        k2 = 4.0 * r * other / square
        K, E, scale = ellipk(k2), ellipe(k2), 1.0 / (2.0 * math.pi * math.sqrt(square))
        along = scale * (K + (other**2 - r * r - z * z) / near * E)
        out = scale * z / r * (-K + (other**2 + r * r + z * z) / near * E)
        return out, along

    def rates(_: float, y: Points) -> list[float]:
        r1, z1, r2, z2 = y
        (out1, up1), (out2, up2) = others(r1, z1 - z2, r2), others(r2, z2 - z1, r1)
        return [
            out1,
            up1 + ring_speed(r1, core_radius, 1.0, core),
            out2,
            up2 + ring_speed(r2, core_radius, 1.0, core),
        ]

    def passing(_: float, y: Points) -> float:
        return float(y[1] - y[3])

    passing.terminal = True  # type: ignore[attr-defined]
    start = [radius, 0.0, radius, distance]
    found = solve_ivp(rates, (0.0, 1e3), start, method="DOP853", rtol=1e-12, atol=1e-13, events=passing)
    return float(found.t_events[0][0])


def leapfrogging_pair(count: int, distance: float, core_radius: float, **settings: Any) -> tuple[float, Any]:
    """The same time in a run of two polygons of `count` edges, and the run."""
    end = 1.1 * leapfrog_quarter(1.0, distance, core_radius)
    rings = [{"points": sample_circle(count, 1.0, z)} for z in (0.0, distance)]
    settings = {"core": "solid", "contact_threshold": 0.0, "frame_interval": end / 40.0, **settings}
    run = simulate(rings, end, {"core_radius": core_radius}, **settings)
    ahead = np.array([frame.points[0][:, 2].mean() - frame.points[1][:, 2].mean() for frame in run.frames])
    last = int(np.argmax(ahead > 0.0))
    near = slice(max(last - 3, 0), last + 3)  # five frames around the passing, the time as a polynomial of the lead
    return float(np.polynomial.Polynomial.fit(ahead[near], run.times[near], 4)(0.0)), run


# --- the page -------------------------------------------------------------------------------------------------------

CORE = 1e-3
OPTIONS = {"core_radius": CORE}
BLUE, RED, GREEN, GREY = "#3b6fb6", "#c8553d", "#4f9d69", "#6b7079"


def polygon(count: int, crowding: float = 0.0) -> Points:
    """A regular polygon on the unit circle, or one whose edges vary smoothly."""
    t = 2.0 * np.pi * np.arange(count) / count
    t = t + crowding * np.sin(t)
    return np.stack([np.cos(t), np.sin(t), 0.0 * t], axis=1)


def fitted(counts: Sequence[int], errors: Sequence[float]) -> float:
    """Order of convergence by least squares."""
    return -float(np.polyfit(np.log(counts), np.log(np.abs(errors)), 1)[0])


def errors_axes(axes: Any, counts: Sequence[int], lines: Sequence[tuple[str, str, Sequence[float]]]) -> None:
    """Relative errors against the number of edges, with the slope of order two."""
    for name, colour, errors in lines:
        axes.loglog(counts, np.abs(errors), "o-", color=colour, markersize=3.5, label=name)
    first = np.abs(lines[0][2])[0]
    axes.loglog(counts, first * (counts[0] / np.array(counts)) ** 2.0, ":", color=GREY, label="order 2")
    axes.set_xticks(counts, [str(n) for n in counts])
    axes.set_xticks([], minor=True)
    axes.set(xlabel="edges", ylabel="relative error")
    axes.legend(fontsize=7, frameon=False)


def ring(figure: Any) -> list[str]:
    counts, theory = (25, 50, 100, 200, 400), ring_speed(1.0, CORE)
    found: dict[str, list[float]] = {"even edges": [], "edges from 1 to 4": [], "raw, even edges": []}
    for n in counts:
        for name, crowding, core in (("even edges", 0.0, "solid"), ("edges from 1 to 4", 0.6, "solid")):
            [velocity], _ = filament_velocity([{"points": polygon(n, crowding)}], OPTIONS, core)
            found[name].append(float(np.abs(velocity[:, 2] / theory - 1.0).max()))
        raw = {**OPTIONS, "lia_constant": -0.25}
        [velocity], _ = filament_velocity([{"points": polygon(n)}], raw, "raw")
        found["raw, even edges"].append(float(np.abs(velocity[:, 2] / theory - 1.0).max()))
    colours = (BLUE, GREEN, RED)
    errors_axes(figure.subplots(), counts, [(name, c, found[name]) for name, c in zip(found, colours, strict=True)])
    lines = [f"theory {theory:.6f} m/s"]
    for name, errors in found.items():
        lines.append(f"{name}: " + ", ".join(f"{e:.1e}" for e in errors) + f"; order {fitted(counts, errors):.2f}")
    return lines


def wave_frequency(mode: int, count: int) -> float:
    """Frequency of a standing wave, from what is left of its height after a quarter of the period of theory."""
    t, expected = 2.0 * np.pi * np.arange(count) / count, kelvin_wave_frequency(mode, 1.0, CORE)
    quarter, height = 0.5 * math.pi / expected, 1e-4
    points = polygon(count) + height * np.outer(np.cos(mode * t), [0.0, 0.0, 1.0])
    run = simulate([{"points": points}], quarter, OPTIONS, core="solid", frame_interval=quarter)
    left = 2.0 * float((run.frames[-1].points[0][:, 2] * np.cos(mode * t)).mean()) / height
    return math.acos(left) / quarter


def waves(figure: Any) -> list[str]:
    modes, counts = range(2, 11), (64, 128, 256)
    theory = np.array([kelvin_wave_frequency(n, 1.0, CORE) for n in modes])
    found = {count: np.array([wave_frequency(n, count) for n in modes]) for count in counts}
    left, right = figure.subplots(1, 2)
    left.plot(modes, theory, "-", color=GREY, label="theory")
    left.plot(modes, found[counts[0]], "o", color=RED, markersize=4, label=f"{counts[0]} edges")
    left.plot(modes, found[counts[-1]], ".", color=BLUE, markersize=5, label=f"{counts[-1]} edges")
    left.set(xlabel="mode", ylabel="frequency / (rad/s)")
    left.legend(fontsize=7, frameon=False)
    shown = (3, 6, 10)
    rows = [[float(found[count][n - 2] / theory[n - 2] - 1.0) for count in counts] for n in shown]
    errors_axes(
        right, counts, [(f"mode {n}", c, row) for n, c, row in zip(shown, (BLUE, GREEN, RED), rows, strict=True)]
    )
    return [
        f"mode {n}: theory {theory[n - 2]:.5f} rad/s, errors " + ", ".join(f"{e:+.1e}" for e in row)
        + f"; order {fitted(counts, row):.2f}"
        for n, row in zip(shown, rows, strict=True)
    ]  # fmt: skip


def leapfrog(figure: Any) -> list[str]:
    counts, theory = (24, 48, 96, 192), leapfrog_quarter(1.0, 0.6, CORE)
    runs = {n: leapfrogging_pair(n, 0.6, CORE) for n in counts}
    errors = [runs[n][0] / theory - 1.0 for n in counts]
    left, right = figure.subplots(1, 2)
    long = simulate(
        [{"points": sample_circle(96, 1.0, z)} for z in (0.0, 0.6)],
        8.0 * theory,
        OPTIONS,
        core="solid",
        contact_threshold=0.0,
        frame_interval=theory / 10.0,
    )
    for number, colour in enumerate((BLUE, RED)):
        radii = [float(np.linalg.norm(frame.points[number][:, :2], axis=1).mean()) for frame in long.frames]
        left.plot(long.times, radii, color=colour, linewidth=1.2)
    for k in range(1, 8, 2):
        left.axvline(k * theory, color=GREY, linewidth=0.8, linestyle=":")
    left.set(xlabel="time / s", ylabel="radius / m")
    errors_axes(right, counts, [("time of the first passing", BLUE, errors)])
    impulses = np.array([sum(impulse(points, 1.0)[2] for points in frame.points) for frame in long.frames])
    return [
        f"96 edges, {long.time:.2f} s, {long.steps} steps: largest change of the impulse "
        f"{np.abs(impulses / impulses[0] - 1.0).max():.1e}",
        f"a quarter of the period by theory {theory:.6f} s, errors "
        + ", ".join(f"{e:+.1e}" for e in errors)
        + f"; order {fitted(counts, errors):.2f}",
    ]


def knot(figure: Any) -> list[str]:
    counts, t_end = (48, 96, 192, 384), 0.5
    theory = thin_filament_run(trefoil(192), t_end, 200, CORE)
    errors, advances = [], []
    for n in counts:
        run = simulate([{"points": trefoil(n)}], t_end, OPTIONS, core="solid", frame_interval=t_end / 20.0)
        common = math.gcd(n, 192)
        found = run.frames[-1].points[0][:: n // common]
        advances.append([float(frame.points[0][:, 2].mean()) for frame in run.frames])
        errors.append(float(np.abs(found - theory[-1][:: 192 // common]).max()))
    left, right = figure.subplots(1, 2)
    times = np.linspace(0.0, t_end, 21)
    left.plot(times, [float(p[:, 2].mean()) for p in theory[::10]], "-", color=GREY, label="theory")
    left.plot(times, advances[0], "o", color=RED, markersize=3, label=f"{counts[0]} edges")
    left.plot(times, advances[1], ".", color=BLUE, markersize=4, label=f"{counts[1]} edges")
    left.set(xlabel="time / s", ylabel="height / m")
    left.legend(fontsize=7, frameon=False)
    errors_axes(right, counts, [("farthest point / radius", BLUE, errors)])
    speeds = ", ".join(f"{row[-1] / t_end:.6f}" for row in advances)
    exact = float(theory[-1][:, 2].mean()) / t_end
    return [
        f"mean speed over {t_end} s: theory {exact:.6f} m/s, runs {speeds}",
        "farthest point from theory / m: "
        + ", ".join(f"{e:.1e}" for e in errors)
        + f"; order {fitted(counts, errors):.2f}",
    ]


def kept(figure: Any) -> list[str]:
    lines, axes = [], figure.subplots(1, 3)
    for n, colour in ((64, RED), (128, GREEN), (256, BLUE)):
        run = simulate([{"points": trefoil(n, 0.1)}], 12.0, OPTIONS, core="solid", frame_interval=0.2)
        curves = [frame.points[0] for frame in run.frames]
        rows = {
            "impulse": [float(np.linalg.norm(impulse(points, 1.0))) for points in curves],
            "length": [float(calculate_length(points)) for points in curves],
            "writhe": [float(compute_polygonal_gauss(points)["signed_integral"]) for points in curves],
        }
        way = float(curves[-1][:, 2].mean())
        told = []
        for place, (name, values) in enumerate(rows.items()):
            axes[place].plot(run.times, np.array(values) / values[0] - 1.0, color=colour, linewidth=1.0, label=f"{n}")
            axes[place].set(xlabel="time / s", title=name)
            told.append(
                f"{name} {values[0]:.5f}, largest change {np.abs(np.array(values) / values[0] - 1.0).max():.1e}"
            )
        lines.append(f"{n} edges, {run.time:g} s, {run.steps} steps, {way:.2f} m: " + "; ".join(told))
    axes[0].set_ylabel("relative change")
    axes[0].legend(fontsize=7, frameon=False, title="edges", title_fontsize=7)
    return lines


def main(folder: Path, kind: str) -> None:
    import matplotlib

    matplotlib.use("agg")
    from matplotlib import pyplot

    pyplot.rcParams.update({"font.size": 8, "svg.fonttype": "none", "svg.hashsalt": "vkmcore", "axes.titlesize": 8})
    for draw in (ring, waves, leapfrog, knot, kept):
        figure = pyplot.figure(figsize=(4.0 if draw is ring else 7.2, 2.8), layout="constrained")
        print(f"{draw.__name__}:")
        for line in draw(figure):
            print(f"    {line}", flush=True)
        path = folder / f"validation_{draw.__name__}.{kind}"
        figure.savefig(path, dpi=150, metadata={"Date": None} if kind == "svg" else None)
        pyplot.close(figure)


if __name__ == "__main__":
    where, how = [*sys.argv[1:], *("docs", "svg")[len(sys.argv) - 1 :]]
    main(Path(where), how)
