"""The guard of a step: contacts at its start, on its way and at its end."""

import math

import _native
import numpy as np
import pytest

KEYS = ["contact", "warn_only", "safe_dt_fraction", "clearance_before", "clearance_after", "message"]
TRANSIENT = "topology guard: transient contact within step; stopped on safe side"


def circle(height, n=24):
    return _native.sample_circle(n, 1.0, height)


def guard(before, after, threshold=0.1, displacement=10.0, **more):
    result = _native.guard_topology_step(before, after, threshold, displacement, **more)
    assert list(result) == KEYS and result["warn_only"] is False
    return result


def test_no_contact():
    curves = [circle(0.0), circle(0.5)]
    result = guard(curves, [c + np.array([0, 0, 0.1]) for c in curves])
    assert (result["contact"], result["safe_dt_fraction"], result["message"]) == (False, 1.0, "")
    clearance = _native.compute_topology_clearance(curves)["clearance"]
    assert result["clearance_before"] == clearance
    assert result["clearance_after"] == pytest.approx(clearance, rel=1e-12)


# The upper circle falls through the lower one: apart by |0.9 - 2 u| at the part u of the step.
@pytest.mark.parametrize("threshold", [0.11, 0.15, 0.2])
def test_contact_on_the_way_is_bracketed(threshold):
    before, after = [circle(0.0), circle(0.9)], [circle(0.0), circle(-1.1)]
    result = guard(before, after, threshold)
    assert result["contact"] is True
    boundary = (0.9 - threshold) / 2
    assert result["message"] == TRANSIENT
    assert boundary - 1.01e-6 <= result["safe_dt_fraction"] <= boundary


def test_contact_between_the_eighths_is_not_seen():  # nearest at u = 4/8, with 0.1
    result = guard([circle(0.0), circle(0.9)], [circle(0.0), circle(-1.1)], 0.09)
    assert result["contact"] is False and result["safe_dt_fraction"] == 1.0


def test_displacement_that_rules_a_contact_out_skips_the_scan():
    before, after = [circle(0.0), circle(0.9)], [circle(0.0), circle(-1.1)]
    near = 2.25 * 0.05 + 0.1  # below the clearances, which an edge of 0.26 sets
    assert near < guard(before, after)["clearance_before"]
    assert guard(before, after, 0.1, 0.05)["contact"] is False
    assert guard(before, after, 0.1, 0.08)["message"] == TRANSIENT


def test_the_order_of_the_messages():
    far, near = [circle(0.0), circle(0.9)], [circle(0.0), circle(0.05)]
    start = guard(near, far)
    assert (start["contact"], start["safe_dt_fraction"], start["message"]) == (True, 0.0, "contact at start of step")
    end = guard(far, near)  # the scan meets it first
    assert end["message"] == TRANSIENT and end["safe_dt_fraction"] == pytest.approx(0.8 / 0.85, abs=1e-6)
    # A clearance before that is infinite skips the scan, and leaves the end.
    single = [circle(0.0, 3)]
    end = guard(single, [circle(0.0, 3), circle(0.05, 3)])
    assert end["clearance_before"] == math.inf
    assert (end["contact"], end["safe_dt_fraction"], end["message"]) == (True, 0.0, "contact at end of step")
    assert guard([circle(0.0, 3), circle(0.05, 3)], single)["contact"] is False  # infinite after


def test_common_curves_and_points_count_in_between():
    before = [circle(0.0), circle(0.9), circle(0.4)[:7]]
    after = [circle(0.0), circle(-1.1)[:20]]
    result = guard(before, after, 0.1)
    assert result["clearance_before"] == _native.compute_topology_clearance(before)["clearance"]
    assert result["clearance_after"] == _native.compute_topology_clearance(after)["clearance"]
    assert result["message"] == TRANSIENT
    assert guard([], [])["clearance_before"] == math.inf


def test_core_radius_widens_the_neighbourhood():
    curve = circle(0.0, 60)
    edge = 2 * math.sin(math.pi / 60)
    plain = guard([curve], [curve], 1.5 * edge)
    assert plain["message"] == "contact at start of step"
    wide = guard([curve], [curve], 1.5 * edge, core_radius=0.9 * edge)
    assert wide["contact"] is False
    assert wide["clearance_before"] == _native.compute_topology_clearance([curve], 0.9 * edge)["self_min"]


@pytest.mark.parametrize("shape", [(3,), (4, 2), (2, 3, 3)])
def test_wrong_shapes(shape):
    good, bad = [circle(0.0)], [np.zeros(shape)]
    for before, after in ((good, bad), (bad, good)):
        with pytest.raises(ValueError, match=r"^Expected \(N,3\) array$"):
            _native.guard_topology_step(before, after, 0.1, 1.0)
