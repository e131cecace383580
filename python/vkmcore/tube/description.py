"""What can be said of one closed curve: its descriptors, its thickness as a tube, and the stress of its contacts."""

from __future__ import annotations

from vkmcore import (
    ContactStressMap,
    describe_fourier_block,
    min_self_distance_sampled,
)
from vkmcore.curves.closed_curve import ClosedCurve
from vkmcore.curves.neighbours import neighbours
from vkmcore.curves.resampling import evenly_spaced
from vkmcore.parallel import analyze_tube, writhe

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
)


CONTACT_VERTICES = 512  # the contacts of so many are fitted within a second


def describe(
    source: ClosedCurve,
    samples: int,
    skip: int | None,
    contact_tol: float,
    contact_vertices: int = CONTACT_VERTICES,
) -> dict[str, dict[str, object]]:
    """Measures of a curve by section: "curve", "tube" and "contacts".

    Args:
        source: the curve. A series is sampled, a polygon is taken as it stands.
        samples: vertices of a series' polygon, at least 64.
        skip: vertices to either side that count as neighbours, at least 1; `neighbours` of the polygon if None.
        contact_tol: how far from the thickness an edge pair or a corner may be and still count as a contact.
        contact_vertices: most vertices of the polygon whose contacts are fitted. A finer one is sampled anew for that,
            for its contacts grow as the square of its vertices (some 20000 at 2048), and the time of their fit as a
            power of that. "contacts" says how many it has.

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
    stress = ContactStressMap.diagnose_length_criticality(coarse, held)
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
        "contacts": {"vertices": len(coarse)} | {name: getattr(stress, name) for name in STRESS_MEASURES},
    }
