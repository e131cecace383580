"""Start polygons: their knot types with chirality, their components, their gaps."""

import numpy as np
import pytest
from vkmcore.ideal import starts
from vkmcore.ideal.arc_walks import arc_walk
from vkmcore.reference.tables import find
from vkmcore.topology.bracket import jones
from vkmcore.topology.certificate import certify
from vkmcore.topology.diagram import DiagramError
from vkmcore.topology.identification import identify
from vkmcore.topology.projection import diagram_of_curves

TREFOIL_GRID = [(1, 3), (2, 4), (3, 5), (1, 4), (2, 5)]
TREFOIL, FIGURE_EIGHT = "t + t^3 - t^4", "t^(-2) - t^(-1) + 1 - t + t^2"


def type_of(start):
    return str(jones(diagram_of_curves(start.components, directions=4)))


def sampled_gap(components, per_edge=6):
    """Least distance of sampled points at least pi d / 2 apart along their curve."""
    samples, along, owner, totals = [], [], [], []
    for number, points in enumerate(components):
        step = np.roll(points, -1, axis=0) - points
        t = np.arange(per_edge) / per_edge
        samples.append((points[:, None] + t[None, :, None] * step[:, None]).reshape(-1, 3))
        length = np.linalg.norm(step, axis=1)
        along.append((np.cumsum(length) - length)[:, None] + t * length[:, None])
        owner += [number] * samples[-1].shape[0]
        totals += [length.sum()] * samples[-1].shape[0]
    p, s, owner, totals = (
        np.concatenate(samples),
        np.concatenate([a.ravel() for a in along]),
        *map(np.array, (owner, totals)),
    )
    distance = np.linalg.norm(p[:, None] - p[None], axis=2)
    apart = np.abs(s[:, None] - s[None])
    apart = np.minimum(apart, totals[:, None] - apart)
    return distance[(owner[:, None] != owner) | (apart >= np.pi / 2 * distance + 1e-9)].min()


def test_lobes_span_their_shares_of_the_circle():
    (points,) = starts.torus_polygon(2, 7, 3.0, 1.2, (2, 2, 3), 1.0, vertices=700).components
    radius = np.linalg.norm(points[:350] + points[350:], axis=1) / 2  # of the middle between the strands
    assert radius.max() == pytest.approx(3.9) and radius.min() == pytest.approx(2.1)
    tops = (radius > np.roll(radius, 1)) & (radius > np.roll(radius, -1))
    assert np.flatnonzero(tops).tolist() == [0, 100, 200]


def test_every_torus_translation_of_a_grid_is_the_same_knot():
    every = list(starts.grid_polygons(TREFOIL_GRID))
    assert len(every) == 25
    assert {type_of(start) for start in every} == {TREFOIL}
    assert len({start.components[0].tobytes() for start in every}) >= 5  # this grid has symmetries


@pytest.mark.parametrize("name", ["3_1", "10_137", "L6a4"])
def test_walks_keep_the_type_and_differ(name):
    entry = find(name)
    ends = [arc_walk(entry.grid, np.random.default_rng(seed), seed % 4) for seed in range(12)]
    assert [len(grid) for grid in ends] == [len(entry.grid) + seed % 4 for seed in range(12)]
    for grid in ends:
        certify(starts.grid_polygon(grid).components, name)
    assert len({tuple(map(tuple, map(sorted, grid))) for grid in ends}) > 8


@pytest.mark.parametrize(
    ("start", "polynomial"),
    [
        (starts.braid_polygon([1, 1, 1]), TREFOIL),
        (starts.braid_polygon([-1, -1, -1]), "-t^(-4) + t^(-3) + t^(-1)"),
        (starts.braid_polygon([1, -2, 1, -2]), FIGURE_EIGHT),
        (starts.braid_polygon([1, 1]), "-t^(1/2) - t^(5/2)"),
        (starts.braid_polygon([], strands=2), "-t^(-1/2) - t^(1/2)"),
        (starts.torus_polygon(2, 3), TREFOIL),
        (starts.torus_polygon(3, 2), TREFOIL),
        (starts.torus_polygon(2, -3), "-t^(-4) + t^(-3) + t^(-1)"),
        (starts.torus_polygon(3, 4), "t^3 + t^5 - t^8"),
        (starts.torus_polygon(2, 3, lobes=(1, 1, 1), amplitude=0.8, phase=0.3, vertical=0.4), TREFOIL),
        (starts.torus_polygon(2, 2), "-t^(1/2) - t^(5/2)"),
        (starts.twist_polygon(1), TREFOIL),
        (starts.twist_polygon(2), FIGURE_EIGHT),
        (starts.twist_polygon(3), "t - t^2 + 2 t^3 - t^4 + t^5 - t^6"),
        (starts.twist_polygon(-3), "-t^(-6) + t^(-5) - t^(-4) + 2 t^(-3) - t^(-2) + t^(-1)"),
        (starts.twist_polygon(3, lobes=2, amplitude=0.5, phase=1.0), "t - t^2 + 2 t^3 - t^4 + t^5 - t^6"),
        (starts.diagram_polygon([[1, 5, 2, 4], [3, 1, 4, 6], [5, 3, 6, 2]]), TREFOIL),
        (starts.diagram_polygon([[4, 1, 3, 2], [2, 3, 1, 4]]), "-t^(-5/2) - t^(-1/2)"),
    ],
    ids=lambda value: value.source if isinstance(value, starts.Start) else "",
)
def test_type_and_gap(start, polynomial):
    assert type_of(start) == polynomial
    assert start.gap > 0.65
    assert 0.8 * sampled_gap(start.components) <= start.gap <= sampled_gap(start.components) + 1e-9


def test_mirror_image_of_a_start():
    start = starts.grid_polygon(TREFOIL_GRID).mirrored()
    assert type_of(start) == "-t^(-4) + t^(-3) + t^(-1)"


@pytest.mark.parametrize(
    ("make", "error"),
    [
        (lambda: starts.grid_polygon([(1, 2), (1, 3), (2, 2)]), ValueError),
        (lambda: starts.grid_polygon([(1, 1), (2, 2)]), ValueError),
        (lambda: starts.grid_polygon([(1, 2, 3)]), ValueError),
        (lambda: starts.braid_polygon([1, 0]), ValueError),
        (lambda: starts.braid_polygon([2], strands=2), ValueError),
        (lambda: starts.torus_polygon(2, 3, major=1.0, minor=1.2), ValueError),
        (lambda: starts.torus_polygon(0, 3), ValueError),
        (lambda: starts.twist_polygon(0), ValueError),
        (lambda: starts.diagram_polygon([[1, 2, 3, 4]]), DiagramError),
    ],
)
def test_refused(make, error):
    with pytest.raises(error):
        make()


@pytest.mark.parametrize(
    ("start", "name"),
    [
        *(
            (starts.twist_polygon(n), name)
            for n, name in enumerate(("3_1", "4_1", "5_2", "6_1", "7_2", "8_1", "9_2"), 1)
        ),
        (starts.torus_polygon(2, 7), "7_1"),
        (starts.torus_polygon(4, 3), "8_19"),
        (starts.torus_polygon(5, 3), "10_124"),
    ],
    ids=lambda value: value if isinstance(value, str) else "",
)
def test_families_in_the_chirality_of_the_table(start, name):
    found = identify(start.components, use_snappy=False)
    assert (found.name, found.decided) == (name, True)
    assert found.chirality in ("as in the table", "amphicheiral")
