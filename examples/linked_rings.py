"""A closed chain of linked vortex rings, with velocities by the tree: 100 rings of 1000 vertices, 200 steps.

python examples/linked_rings.py [--rings 100] [--vertices 1000] [--steps 200] [--movie chain.gif]
"""

from __future__ import annotations

import argparse
import resource
import time

import numpy as np
import vkmcore
from vkmcore.dynamics.core_model import EVEN_DEFICIT
from vkmcore.dynamics.simulation import Simulation


def chain(rings: int, vertices: int) -> list[dict[str, object]]:
    """Rings of radius 1 m along a circle, every other one upright, each linked with its neighbours."""
    spacing = 1.2
    large = rings * spacing / (2 * np.pi)
    t = np.arange(vertices) * 2 * np.pi / vertices
    filaments: list[dict[str, object]] = []
    for number in range(rings):
        angle = 2 * np.pi * number / rings
        outwards = np.array([np.cos(angle), np.sin(angle), 0.0])
        along = np.array([-np.sin(angle), np.cos(angle), 0.0])
        across = np.array([0.0, 0.0, 1.0]) if number % 2 else outwards
        points = large * outwards + np.outer(np.cos(t), along) + np.outer(np.sin(t), across)
        filaments.append({"points": points, "circulation": 1.0})
    return filaments


def film(path: str, run: Simulation, every: int) -> None:
    """Draw each frame as lines into a .gif, from above and a little aside."""
    import matplotlib.pyplot as plt
    from matplotlib.animation import PillowWriter

    reach = max(np.abs(points).max() for points in run.frames[0].points)
    figure = plt.figure(figsize=(4.0, 4.0))
    axes = figure.add_axes((0.0, 0.0, 1.0, 1.0), projection="3d")
    colours = plt.cm.hsv(np.linspace(0.0, 1.0, len(run.frames[0].points)))
    writer = PillowWriter(fps=10)
    with writer.saving(figure, path, dpi=90):
        for frame in run.frames:
            axes.clear()
            axes.set_axis_off()
            axes.set_box_aspect((1.0, 1.0, 0.25), zoom=1.25)
            axes.set(xlim=(-reach, reach), ylim=(-reach, reach), zlim=(-reach / 4, reach / 4))
            axes.view_init(elev=45.0, azim=30.0)
            for points, colour in zip(frame.points, colours):
                line = np.concatenate([points[::every], points[:1]])
                axes.plot(*line.T, color=colour, linewidth=0.9)
            writer.grab_frame()


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--rings", type=int, default=100)
    parser.add_argument("--vertices", type=int, default=1000)
    parser.add_argument("--steps", type=int, default=200)
    parser.add_argument("--tolerance", type=float, default=1e-4)
    parser.add_argument("--movie", metavar="FILE.gif")
    arguments = parser.parse_args()

    filaments = chain(arguments.rings, arguments.vertices)
    # The core is half an edge wide. The longest step that keeps the shortest waves of the polygons, as `simulate` would
    # propose it.
    edge = 2 * np.pi / arguments.vertices
    core = 0.5 * edge
    dt = 0.5 * edge**2 * 4 * np.pi / (np.log(2 * edge / core) - 0.25 + EVEN_DEFICIT)
    t_end = arguments.steps * dt
    before, cpu = time.perf_counter(), time.process_time()
    run = vkmcore.simulate(
        filaments,
        t_end,
        {"core_radius": core},
        core="solid",
        dt=dt,
        frame_interval=t_end / 40,
        far_field="tree",
        tolerance=arguments.tolerance,
    )
    seconds, cpu = time.perf_counter() - before, time.process_time() - cpu
    kept = run.invariants()
    start, end = kept.impulse[0], kept.impulse[-1]
    print(f"{sum(map(len, run.frames[-1].points))} vertices, {run.steps} steps to t = {run.time:.3f} s")
    print(
        f"{seconds:.0f} s, {cpu:.0f} s of all cores; {resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1e3:.0f} MB"
    )
    print(f"velocities: {run.far_field}, error {run.sampled_error:.1e} of the largest; contact: {run.contact}")
    print(f"impulse: {np.linalg.norm(start):.8g} m^4/s, changed by {np.linalg.norm(end - start):.1e}")
    print(f"energy: {kept.energy[0]:.8g} m^5/s^2, changed by {np.abs(kept.energy - kept.energy[0]).max():.1e}")
    if arguments.movie:
        film(arguments.movie, run, max(1, arguments.vertices // 60))


if __name__ == "__main__":
    main()
