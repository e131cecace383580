"""What a run is reported by: its record, a line in a shell, a card in a notebook."""

from __future__ import annotations

from html import escape
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.dynamics.invariants import impulse
from vkmcore.pictures.outline import outline

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore.dynamics.recorded import Recorded
    from vkmcore.dynamics.simulation import Simulation

    Points = NDArray[np.float64]


def record(run: Simulation) -> dict[str, Any]:
    """Time, steps, contact, clearance; and for each filament lengths and impulses at start and end."""
    from vkmcore import compute_topology_clearance

    solid = [filament["points"] for filament in run.filaments if not filament.get("ghost", False)]
    return {
        "time": run.time,
        "steps": run.steps,
        "frames": len(run.frames),
        "contact": run.contact,
        "message": run.message,
        "clearance": compute_topology_clearance(solid)["clearance"],
        "filaments": filament_records(run),
    }


def filament_records(run: Recorded) -> list[dict[str, Any]]:
    from vkmcore import calculate_length

    records = []
    first, last = run.frames[0].points, run.frames[-1].points
    for number, (filament, start, end) in enumerate(zip(run.filaments, first, last), start=1):
        circulation = float(filament.get("circulation", 1.0))
        records.append(
            {
                "id": filament.get("id") or str(number),
                "points": len(end),
                "circulation": circulation,
                "length_start": calculate_length(start),
                "length_end": calculate_length(end),
                "impulse_start": impulse(start, circulation).tolist(),
                "impulse_end": impulse(end, circulation).tolist(),
                "centroid_end": end.mean(axis=0).tolist() if len(end) else [0.0] * 3,
            }
        )
    return records


def line(run: Recorded) -> str:
    """Class, filaments, vertices, times, frames, and why the run ended where that was not its time."""
    last = run.frames[-1]
    count = len(run.filaments)
    parts = [
        f"{count} filament{'s' * (count != 1)}",
        f"{sum(map(len, last.points))} vertices",
        f"t = {run.frames[0].time:g} to {last.time:.6g} s",
        f"{last.step} steps",
        f"{len(run.frames)} frames",
    ]
    if message := getattr(run, "message", last.message):
        parts.append(message)
    return f"{type(run).__name__}({', '.join(parts)})"


def html(run: Recorded) -> str:
    """The line, the last positions as a drawing, and a row a filament."""
    columns = ("id", "vertices", "circulation", "length, start", "end", "|impulse|, start", "end")
    rows = [
        (
            row["id"],
            row["points"],
            f"{row['circulation']:g}",
            *(f"{row[name]:.6g}" for name in ("length_start", "length_end")),
            *(f"{np.linalg.norm(row[name]):.6g}" for name in ("impulse_start", "impulse_end")),
        )
        for row in filament_records(run)
    ]
    head = "".join(f"<th>{escape(name)}</th>" for name in columns)
    body = "".join(f"<tr>{''.join(f'<td>{escape(str(cell))}</td>' for cell in row)}</tr>" for row in rows)
    return (
        '<div style="display:flex;align-items:center;gap:1.5em">'
        f"{outline([points for points in run.frames[-1].points if len(points) > 2])}"
        f"<table><caption>{escape(line(run))}</caption><tr>{head}</tr>{body}</table></div>"
    )
