"""Which entry of the ideal table, the only shapes that the evaluator takes, belongs to a name."""

from __future__ import annotations


def ideal_id(name: str) -> str:
    """The id, as "3:1:1", of a knot's or link's name or alias ("3_1", "trefoil"); what holds a colon stays as it is.

    Raises:
        ValueError: the tables know no such name, or no id for it.
    """
    from vkmcore.knots.sources import UNKNOTS
    from vkmcore.reference.tables import find

    if ":" in name:
        return name
    if name.lower() in UNKNOTS:
        return "0:1:1"
    ids = [alias for alias in find(name).aliases if ":" in alias]
    if not ids:
        raise ValueError(f"{name}: no shape of this knot in the ideal table, which alone the evaluator takes")
    return ids[0]
