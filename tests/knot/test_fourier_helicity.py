"""The road from a Fourier block to the helicity invariants, against the same road taken step by step."""

import math

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal

TWO_PI = 6.283185307179586
BLOCK = _native.parse_fseries_from_string("0 1 1 0 0 0\n0 2 -2 0 0 0\n0.1 0 0 0 0 -1\n")[0]


def step_by_step(block, G, h, margin, nsamples):
    points = _native.evaluate_fourier_block(block, [i * TWO_PI / (nsamples - 1) for i in range(nsamples)])
    mean = [0.0, 0.0, 0.0]
    for p in points:
        mean = [a + b for a, b in zip(mean, p, strict=True)]
    curve = [[a - m / nsamples for a, m in zip(p, mean, strict=True)] for p in points]
    c = G // 2
    cube = range(G)
    grid = [[(i - c) * h, (j - c) * h, (k - c) * h] for i in cube for j in cube for k in cube]
    v = _native.BiotSavart.compute_velocity(curve, grid)
    w = _native.BiotSavart.compute_vorticity(v, (G, G, G), h)
    m = margin - c
    inner = range(G - 2 * margin)
    r_sq = [((a + m) * h) ** 2 + ((b + m) * h) ** 2 + ((d + m) * h) ** 2 for a in inner for b in inner for d in inner]
    v, w = (_native.BiotSavart.extract_interior(f, (G, G, G), margin) for f in (v, w))
    return _native.BiotSavart.compute_invariants(v, w, r_sq)


@pytest.mark.parametrize(("G", "h", "margin", "nsamples"), [(10, 0.5, 2, 40), (7, 0.3, 0, 33), (9, 0.4, 3, 50)])
def test_invariants_of_a_block(G, h, margin, nsamples):
    got = _native.compute_helicity_from_fourier_block(
        block=BLOCK, grid_size=G, spacing=h, interior_margin=margin, nsamples=nsamples
    )
    assert got == step_by_step(BLOCK, G, h, margin, nsamples)
    assert got[1] > 0


def test_defaults():
    defaults = _native.compute_helicity_from_fourier_block(BLOCK)
    assert defaults == _native.compute_helicity_from_fourier_block(BLOCK, 32, 0.1, 8, 1000)
    assert defaults == step_by_step(BLOCK, 32, 0.1, 8, 1000)


def test_a_mirror_image_turns_the_sign_of_the_charge():
    mirror = _native.parse_fseries_from_string("0 1 1 0 0 0\n0 2 -2 0 0 0\n-0.1 0 0 0 0 1\n")[0]
    charge, mass, _ = _native.compute_helicity_from_fourier_block(BLOCK, 13, 0.2, 2, 200)
    mirrored_charge, mirrored_mass, _ = _native.compute_helicity_from_fourier_block(mirror, 13, 0.2, 2, 200)
    assert charge != 0
    assert mirrored_charge == pytest.approx(-charge, rel=1e-9)
    assert mirrored_mass == pytest.approx(mass, rel=1e-9)


@pytest.mark.parametrize(
    "arguments",
    [{"grid_size": 16}, {"grid_size": 0}, {"grid_size": -5}, {"nsamples": 0}, {"nsamples": 1}, {"nsamples": -4}],
)
def test_nothing_to_sum(arguments):
    charge, mass, a_mu = _native.compute_helicity_from_fourier_block(BLOCK, **arguments)
    assert charge == mass == 0 and math.isnan(a_mu)


def test_bad_sizes():
    with pytest.raises(ValueError, match="interior_margin"):
        _native.compute_helicity_from_fourier_block(BLOCK, interior_margin=-1)
    for absurd in ({"grid_size": 2**31 - 1}, {"nsamples": 2**31 - 1}):
        with pytest.raises(MemoryError):
            _native.compute_helicity_from_fourier_block(BLOCK, **absurd)


def test_a_signal_ends_the_call():
    with ended_by_a_signal(0.2):
        _native.compute_helicity_from_fourier_block(BLOCK, grid_size=150, nsamples=20000)
    assert np.isfinite(_native.compute_helicity_from_fourier_block(BLOCK, 8, 0.3, 1, 30)).all()
