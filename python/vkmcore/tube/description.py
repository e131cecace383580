"""What can be said of one closed curve: its descriptors, its thickness as a tube, and the stress of its contacts."""

from __future__ import annotations

from collections.abc import Callable

import numpy as np

from vkmcore import (
    ContactStressDiagnostics,
    ContactStressMap,
    ResolvedTubeGeometry,
    ResolvedTubeMetrics,
    describe_fourier_block,
    min_self_distance_sampled,
)
from vkmcore.curves.closed_curve import ClosedCurve
from vkmcore.curves.neighbours import neighbours
from vkmcore.curves.resampling import evenly_spaced
from vkmcore.parallel import analyze_tube, writhe
from vkmcore.tube.contact_forces import Columns, fitted

TUBE_MEASURES = (
    "length",
    "thickness_rad",
    "ropelength_rad",
    "ropelength_diam",
    "minrad",
    "min_dcsd",
    "edge_length_mean",
    "edge_length_rel_std",
    "equilateral_ok",
    "lower_bound_ok",
)
STRESS_MEASURES = (
    "contact_residual",
    "contact_entropy",
    "strut_weight_sum",
    "kink_weight_sum",
    "rigidity_columns",
    "nnls_active_set_size",
    "nnls_iterations",
    "nnls_converged",
    "nnls_algorithm",
)

CONTACT_VERTICES = 512  # seconds of work for a tight curve: its contacts number thousands there
# More contacts than these are fitted by `contact_forces`: the library's active set takes a step a contact that carries
# force, each the cube of their number (0.02 s at 400 contacts, 5 s at 950, over 90 s at 5600).
MOST_FOR_ACTIVE_SET = 400
LEAST_MULTIPLIER = 1e-10  # that counts as active, as the library has it


def describe(
    source: ClosedCurve,
    samples: int,
    skip: int | None,
    contact_tol: float,
    contact_vertices: int = CONTACT_VERTICES,
    tell: Callable[[int], None] = lambda step: None,
) -> dict[str, dict[str, object]]:
    """Measures of a curve by section: "curve", "tube" and "contacts".

    Args:
        source: the curve. A series is sampled, a polygon is taken as it stands.
        samples: vertices of a series' polygon, at least 64.
        skip: vertices to either side that count as neighbours, at least 1; `neighbours` of the polygon if None.
        contact_tol: how far from the thickness an edge pair or a corner may be and still count as a contact.
        contact_vertices: most vertices of the polygon whose contacts are fitted. A finer one is sampled anew for that,
            for its contacts grow as the square of its vertices (some 20000 at 2048), and the time of their fit as the
            cube. "contacts" says how many it has.
        tell: called with the number of each step of a fit that takes long, some twenty.

    The residual of the contacts' forces is one number; the forces themselves need not be, where contacts outnumber what
    they hold. `nnls_algorithm` says which were taken: those of the library's "active_set", the fewest, up to 400
    contacts; those of "interior_point" beyond, which spread the load over contacts that are alike.

    Raises:
        ValueError: a polygon of fewer than three vertices, or a negative tolerance.
    """
    points = source.sampled(samples).tolist()
    own_skip = skip is None
    if skip is None:
        skip = neighbours(points)
    tube = analyze_tube(points, skip, contact_tol)
    coarse, held = points, tube
    if len(points) > contact_vertices:
        even = source.sampled(contact_vertices) if source.block is not None else evenly_spaced(points, contact_vertices)
        coarse = even.tolist()
        held = analyze_tube(
            coarse, neighbours(coarse) if own_skip else max(skip * len(coarse) // len(points), 1), contact_tol
        )
    curve: dict[str, object] = {"kind": source.kind}
    if source.block is not None:
        found = describe_fourier_block(source.block, samples, skip)
        curve["harmonics"] = len(source.block.a_x)
        curve["vertices"] = len(points)
        for name in ("length", "bending_energy", "min_self_distance", "writhe"):
            curve[name] = getattr(found, name)
    else:
        curve["vertices"] = len(points)
        curve["length"] = tube.length
        curve["min_self_distance"] = min_self_distance_sampled(points, skip)
        curve["writhe"] = writhe(points)
    tube_section: dict[str, object] = {name: getattr(tube, name) for name in TUBE_MEASURES}
    tube_section["skipped_neighbours"] = skip
    tube_section["struts"] = len(tube.struts)
    tube_section["kinks"] = len(tube.kinks)
    return {
        "curve": curve,
        "tube": tube_section,
        "contacts": {"vertices": len(coarse)} | _stress(coarse, held, tell),
    }


def _stress(points: list[list[float]], tube: ResolvedTubeMetrics, tell: Callable[[int], None]) -> dict[str, object]:
    if len(tube.struts) + len(tube.kinks) <= MOST_FOR_ACTIVE_SET:
        return _record(ContactStressMap.diagnose_length_criticality(points, tube))
    found = ContactStressMap.diagnose_length_criticality(points, tube, False)
    columns = ContactStressMap.build_sparse_rigidity_matrix(points, tube).columns
    rows, values = np.zeros((len(columns), 12), dtype=np.int64), np.zeros((len(columns), 12))
    for number, column in enumerate(columns):
        for place, entry in enumerate(column.entries):
            rows[number, place], values[number, place] = entry.row, entry.value
    gradient = np.array(ResolvedTubeGeometry.length_gradient_flat(points))
    fit = fitted(Columns(rows, values), gradient, tell)
    share = fit.forces[fit.forces > 0.0] / fit.forces.sum()
    is_strut = np.array([column.kind == "strut" for column in columns])
    return _record(found) | {
        "contact_residual": fit.residual,
        "contact_entropy": float(-(share * np.log(share)).sum()),
        "strut_weight_sum": float(fit.forces[is_strut].sum()),
        "kink_weight_sum": float(fit.forces[~is_strut].sum()),
        "nnls_active_set_size": int((fit.forces > LEAST_MULTIPLIER).sum()),
        "nnls_iterations": fit.steps,
        "nnls_converged": fit.converged,
        "nnls_algorithm": "interior_point",
    }


def _record(stress: ContactStressDiagnostics) -> dict[str, object]:
    return {name: getattr(stress, name) for name in STRESS_MEASURES}
