"""The command `vkmcore simulate`."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import click
import numpy as np

from vkmcore.commands.arguments import (
    EXISTING_FILE,
    POSITIVE,
    file_option,
    plot_option,
    record_options,
    say_written,
)
from vkmcore.commands.output import plain_table, print_csv, print_json, print_table
from vkmcore.dynamics.core_model import MODELS
from vkmcore.progress import progress_bar, watched


@click.command()
@click.argument("scene_file", type=EXISTING_FILE, metavar="SCENE.toml")
@click.option("--t-end", type=click.FloatRange(0.0), help="End of the run in s, in place of the scene's.")
@click.option("--dt", type=POSITIVE, help="Longest step in s, in place of the scene's.")
@click.option("--core", type=click.Choice(MODELS), help="Model of the vortex core, in place of the scene's.")
@file_option("--trajectory", help="Write each frame here as it is reached.", metavar="FILE.npz")
@click.option("--resume", is_flag=True, help="Go on from the last frame in the trajectory, if there is one.")
@record_options("A JSON object", "a filament")
@plot_option("Draw start and end")
@file_option("--movie", help="Draw all frames (GIF, MP4).")
@click.option("--fps", type=click.IntRange(1, 50), default=15, show_default=True, help="Movie: frames a second.")
def simulate(
    scene_file: Path,
    t_end: float | None,
    dt: float | None,
    core: str | None,
    trajectory: Path | None,
    resume: bool,
    as_json: bool,
    as_csv: bool,
    plot: Path | None,
    movie: Path | None,
    fps: int,
) -> None:
    """Evolve the vortex filaments of a scene, up to its end or the safe side of a contact.

    docs/simulation.md describes scenes; examples/scenes holds two.
    """
    from vkmcore.dynamics.scene import load_scene
    from vkmcore.dynamics.simulation import simulate as evolve
    from vkmcore.dynamics.summary import record
    from vkmcore.pictures.movie import check_movie_target, film_run
    from vkmcore.pictures.simulation import plot_run

    if resume and trajectory is None:
        raise click.UsageError("--resume needs --trajectory")
    kind = "" if movie is None else check_movie_target(movie)
    scene = load_scene(scene_file)
    settings: dict[str, Any] = dict(scene.settings)
    if dt is not None:
        settings["dt"] = dt
    if core is not None:
        settings["core"] = core
    if t_end is None:
        t_end = scene.t_end
    elif scene.t_end > 0.0:
        settings.setdefault("frame_interval", scene.t_end / 100.0)  # as without the option, so that runs can go on

    try:
        run = evolve(
            scene.filaments,
            t_end,
            scene.options,
            **settings,
            trajectory=trajectory,
            resume=resume,
            progress=watched(),
        )
    except (KeyboardInterrupt, OSError):
        if trajectory is not None and trajectory.exists():
            click.echo(f"{trajectory} holds all frames so far; --resume goes on", err=True)
        raise
    facts = record(run)
    if as_json:
        print_json({"scene": str(scene_file), **facts})
    elif as_csv:
        whole = {name: value for name, value in facts.items() if name != "filaments"}
        print_csv({**by_axis(row), **whole} for row in facts["filaments"])
    else:
        print_facts(facts)
    if run.contact:
        click.echo(f"t = {run.time:.6g} s: {run.message}", err=True)

    ghosts = [bool(filament.get("ghost", False)) for filament in run.filaments]
    title = f"{scene_file.stem}   t = {run.time:.4g} s"
    if plot is not None:
        plot_run(plot, run.frames, ghosts, title)
        say_written(plot)
    if movie is not None:
        with progress_bar(len(run.frames), watched()) as tell:
            film = film_run(
                run.frames,
                ghosts,
                scene_file.stem,
                kind=kind,
                frames_per_second=fps,
                tell=lambda done: tell(done, "movie"),
            )
        film.save(movie)
        say_written(movie)


def by_axis(row: dict[str, Any]) -> dict[str, Any]:
    """With a column an axis for each vector."""
    return {
        name: dict(zip("xyz", value, strict=True)) if isinstance(value, list) else value for name, value in row.items()
    }


def print_facts(facts: dict[str, Any]) -> None:
    for name in ("time", "steps", "frames", "clearance"):
        value = facts[name]
        click.echo(f"{name:10} {f'{value:.10g}' if isinstance(value, float) else value}")
    headings = ("points", "circulation", "length, start", "end", "|impulse|, start", "end", "centroid, end")
    table = plain_table(("id", *headings), ("id",))
    for row in facts["filaments"]:
        sizes = (row["length_start"], row["length_end"], _size(row["impulse_start"]), _size(row["impulse_end"]))
        centroid = " ".join(f"{value:.6f}" for value in row["centroid_end"])
        table.add_row(
            row["id"], str(row["points"]), f"{row['circulation']:g}", *(f"{size:.8g}" for size in sizes), centroid
        )
    print_table(table)


def _size(vector: list[float]) -> float:
    return float(np.linalg.norm(vector))
