"""The forms of the sums over pairs: the same bits whichever the machine takes."""

import json
import os
import subprocess
import sys

import pytest
from vkmcore import _engine

FORMS = ("plain", "divider", "mixed", "added")
DIGEST = """
import hashlib, json, sys
import numpy as np
from vkmcore import _engine, _native
rng = np.random.default_rng(1)
digests = {}
for scale in (1.0, 1e-15, 3e39, 1e-45, 1e120):
    curve = scale * rng.normal(size=(333, 3))
    points = scale * rng.normal(size=(1000, 3)) * 10.0 ** rng.uniform(-3, 3, size=(1000, 1))
    points[17] = 0.5 * (curve[3] + curve[4])  # in the place of a source
    parts = [curve, curve[:100] + scale, 0.5 * (curve[5] + curve[6]) + scale * np.eye(3), np.zeros((40, 3))]
    filaments = [{"points": part, "circulation": c} for part, c in zip(parts, (1.0, -0.3, 0.0, 1e-20))]
    filaments[2]["points"][0] -= scale * np.eye(3)[0]  # on the middle of an edge of the first
    out = [_native.biot_savart_velocity_grid(curve, points, 0.7)]
    for soft in (0.0, 0.1 * scale):
        out += _native.compute_filament_velocity(filaments, {"a_sim": soft})["velocity"]
    out += [np.array(_native.biot_savart_wire_grid(*points.T, curve))]
    mesh = np.meshgrid(*scale * rng.normal(size=(3, 11)), indexing="ij")
    mesh[2][..., 5] = curve[3, 2]
    mesh[1][:, 5] = curve[3, 1]
    mesh[0][5] = curve[3, 0]  # a point of the mesh in the place of a dipole
    out += [np.array(_native.biot_savart_wire_grid(*mesh, curve)), np.array(
        _native.dipole_ring_field_grid(*mesh, curve, curve[::-1]))]
    for soft in (0.0, 0.1 * scale):
        out += [np.array(_native.compute_gravitational_potential_direct(curve, curve[::-1], soft))]
        out += [np.array(_native.calculate_writhe(curve, soft))]
    out += [np.array([_native.calculate_neumann_self_energy(curve, 0.1 * scale), _native.compute_writhe(curve.tolist()),
                      *_native.compute_vkm_mass(curve.tolist(), 2.0)])]
    bits = [np.where(np.isnan(field), np.nan, field).tobytes() for field in out]
    digests[str(scale)] = [hashlib.sha256(field).hexdigest() for field in bits]
print(json.dumps([sorted(set(_engine.pair_forms().values())), digests]))
"""


def digest(form):
    environment = {**os.environ, "VKM_PAIR_FORM": form}
    done = subprocess.run([sys.executable, "-c", DIGEST], env=environment, capture_output=True, text=True, check=True)
    return json.loads(done.stdout)


def test_all_forms_have_the_same_bits():
    assert set(_engine.pair_forms().values()) <= set(FORMS)
    taken, plain = digest("plain")
    assert taken == ["plain"]
    for form in FORMS[1:]:
        taken, found = digest(form)
        if taken == ["plain"]:
            pytest.skip("no hand-written kernels on this machine")
        assert (taken, found) == ([form], plain)
