"""Knot invariants from curves, and the masses that the Xi models make of them."""

import math

import _native
import numpy as np
import pytest
from _native import (
    CanonicalConstants,
    ContactStressMap,
    FourierBlock,
    KnotDerived,
    KnotInvariants,
    KnotParticleModel,
    KnotParticleModelParams,
    KnotState,
    MassFunctional,
    ResolvedTubeGeometry,
    SectorGate,
    SimpleInvariantXiModel,
    SimpleInvariantXiModelParams,
    VKMCanonicalXiModel,
    VKMCanonicalXiModelParams,
)

PHI = (1.0 + math.sqrt(5.0)) / 2.0


def filled(cls, **fields):
    record = cls()
    for name, value in fields.items():
        setattr(record, name, value)
    return record


def knot(**fields):
    return filled(KnotInvariants, **fields)


def trefoil():
    block = FourierBlock()
    block.a_x, block.b_x = [0.0, 0.5, 0.0, 0.0, 0.0], [1.0, 0.0, 0.0, 0.0, 0.0]
    block.a_x, block.b_x = [0.5, 2.0, 0.0, 0.0, 0.5], [0.0] * 5
    block.a_y, block.b_y = [0.0] * 5, [-0.5, 2.0, 0.0, 0.0, 0.5]
    block.a_z, block.b_z = [0.0] * 5, [0.0, 0.0, 1.0, 0.0, 0.0]
    return block


def write_fseries(path, block):
    rows = zip(block.a_x, block.b_x, block.a_y, block.b_y, block.a_z, block.b_z, strict=True)
    path.write_text("% small\n1 0 0 1 0 0\n\n% large\n" + "".join(" ".join(map(repr, row)) + "\n" for row in rows))
    return str(path)


@pytest.mark.parametrize(("asked", "window", "n", "w"), [(300, 3, 300, 3), (10, 0, 64, 1), (128, -5, 128, 1)])
def test_invariants_gather_descriptors_tube_and_stress(asked, window, n, w):
    block = trefoil()
    found = _native.build_invariants_from_fourier_block(block, nsamples=asked, exclude_window=window)
    points = _native.evaluate_fourier_block(block, [i * (2.0 * math.pi) / n for i in range(n)])
    curve = _native.describe_fourier_block(block, n, w)
    tube = ResolvedTubeGeometry.analyze(points, w, 0.001, 0.01)
    stress = ContactStressMap.diagnose_length_criticality(points, tube, False)
    assert (found.writhe, found.min_self_distance, found.bending_energy) == (
        curve.writhe,
        curve.min_self_distance,
        curve.bending_energy,
    )
    assert (found.thickness_rad, found.ropelength_rad, found.ropelength_diam, found.minrad_min, found.dcsd_min) == (
        tube.thickness_rad,
        tube.ropelength_rad,
        tube.ropelength_diam,
        tube.minrad,
        tube.min_dcsd,
    )
    assert (found.strut_count, found.kink_count) == (len(tube.struts), len(tube.kinks))
    assert found.contact_residual == stress.contact_residual == 1.0
    assert found.ropelength == found.ropelength_like == tube.ropelength_diam > 16.0
    assert found.ropelength_lower_bound_ok is True


def test_ropelength_falls_back_to_self_distance_and_to_the_bare_length():
    fold = FourierBlock()  # to and fro on a line: no thickness, and it meets itself
    fold.a_x = [1.0]
    fold.b_x = fold.a_y = fold.b_y = fold.a_z = fold.b_z = [0.0]
    found = _native.build_invariants_from_fourier_block(fold, nsamples=65)
    assert (found.ropelength_diam, found.min_self_distance, found.thickness_rad) == (0.0, 0.0, 0.0)
    assert found.ropelength == found.ropelength_like == _native.describe_fourier_block(fold, 65).length
    fold.a_y, fold.b_x = [0.0], [1.0]  # still a fold, but along x alone and out of phase with the samples
    shifted = _native.build_invariants_from_fourier_block(fold, nsamples=65)
    assert shifted.ropelength_diam == 0.0 and shifted.min_self_distance > 1e-12
    length = _native.describe_fourier_block(fold, 65).length
    assert shifted.ropelength == length / shifted.min_self_distance
    empty = _native.build_invariants_from_fourier_block(FourierBlock())
    assert (empty.ropelength, empty.ropelength_like, empty.contact_residual) == (0.0, 0.0, 0.0)


@pytest.mark.parametrize(
    ("hyperbolic", "volume", "stored", "optional"),
    [(True, -2.0, 0.0, 0.0), (True, 2.03, 2.03, 2.03), (False, 9.0, 0.0, None)],
)
@pytest.mark.parametrize(("chirality", "clamped"), [(5, 1), (-7, -1), (0, 0)])
def test_metadata(hyperbolic, volume, stored, optional, chirality, clamped):
    found = _native.build_invariants_from_fourier_block(
        trefoil(), "name", 3, 2, 1, chirality, hyperbolic, volume, nsamples=64
    )
    assert (found.name, found.crossing_number, found.braid_index, found.seifert_genus) == ("name", 3, 2, 1)
    assert (found.chirality, found.hyperbolic) == (clamped, hyperbolic)
    assert (found.hyperbolic_volume, found.hyperbolic_volume_opt) == (stored, optional)


def test_files_give_their_largest_block_and_their_name(tmp_path):
    (tmp_path / "sub").mkdir()
    path = write_fseries(tmp_path / "sub" / "3_1.fseries", trefoil())
    found = _native.build_invariants_from_fseries(path, nsamples=100)
    assert found.name == "3_1.fseries"
    assert _native.build_invariants_from_fseries(path, "mine", nsamples=100).name == "mine"
    by_block = _native.build_invariants_from_fourier_block(trefoil(), nsamples=100)
    assert (found.writhe, found.ropelength) == (by_block.writhe, by_block.ropelength)
    params = filled(KnotParticleModelParams, a_L=0.01, a_k=0.1)
    expected = KnotParticleModel(params).predict(filled_like(found, crossing_number=3))
    for prediction in (
        _native.predict_particle_from_fseries(path, params, crossing_number=3, nsamples=100),
        _native.predict_particle_from_fourier_block(trefoil(), params, "x", 3, nsamples=100),
    ):
        assert (prediction.xi, prediction.mass_kg, prediction.note) == (expected.xi, expected.mass_kg, expected.note)
    missing = str(tmp_path / "none.fseries")
    for call in (_native.build_invariants_from_fseries, _native.predict_particle_from_fseries):
        with pytest.raises(RuntimeError) as error:
            call(missing)
        assert str(error.value) == "build_invariants_from_fseries: no Fourier block in file: " + missing


def filled_like(record, **fields):
    for name, value in fields.items():
        setattr(record, name, value)
    return record


def test_bad_blocks_and_absurd_sizes_raise():
    block = trefoil()
    with pytest.raises(MemoryError):
        _native.build_invariants_from_fourier_block(block, nsamples=10**15)
    block.b_z = [0.0]
    with pytest.raises(ValueError):
        _native.build_invariants_from_fourier_block(block)


def test_xi_models_follow_their_formulas_on_the_effective_values():
    K = knot(crossing_number=5, braid_index=2, seifert_genus=1, chirality=-1, writhe=3.4)
    K.hyperbolic_volume, K.ropelength_like = 100.0, 200.0
    simple = SimpleInvariantXiModel(
        filled(SimpleInvariantXiModelParams, a_k=0.1, a_b=0.2, a_g=0.3, a_vol=0.01, a_L=0.02, a_chi=0.5)
    )
    layered = filled(VKMCanonicalXiModelParams, alpha_C=0.1, beta_L=0.2, gamma_H=0.3, delta_V=0.4, golden_layer=3)
    for V, L in ((100.0, 200.0), (2.5, 30.0)):
        assert simple.compute_xi(K) == pytest.approx(math.exp(0.5 + 0.4 + 0.3 + 0.01 * V + 0.02 * L - 0.5), rel=1e-14)
        total = 0.1 * 5 + 0.2 * L + 0.3 * 3.4 + 0.4 * V
        assert VKMCanonicalXiModel(layered).compute_xi(K) == pytest.approx(PHI**-6 * total, rel=1e-14)
        K.hyperbolic_volume_opt, K.ropelength = 2.5, 30.0
    layered.use_crossing_number_as_C = layered.use_writhe_as_H = False
    layered.golden_layer = -1
    assert VKMCanonicalXiModel(layered).compute_xi(K) == pytest.approx(PHI**2 * (0.2 * 30.0 + 0.4 * 2.5), rel=1e-14)
    assert (SimpleInvariantXiModel().compute_xi(K), VKMCanonicalXiModel().compute_xi(K)) == (1.0, 0.0)


@pytest.mark.parametrize("crossings", [4, 5])
@pytest.mark.parametrize("hyperbolic", [False, True])
def test_sectors_of_the_xi_models(crossings, hyperbolic):
    K = knot(crossing_number=crossings, hyperbolic=hyperbolic)
    gates = [SectorGate.Shielded, SectorGate.Exposed]
    assert SimpleInvariantXiModel().assign_gate(K) == gates[crossings > 4]
    assert VKMCanonicalXiModel().assign_gate(K) == gates[crossings > 4 and hyperbolic]


def test_default_constants():
    k = CanonicalConstants()
    assert (k.r_c, k.m_e, k.rho_f, k.v_swirl, k.c) == (1.40897017e-15, 9.1093837015e-31, 7e-7, 1093845.63, 299792458.0)
    assert k.lambda_c == math.pi * 2.0 * 1.054571817e-34 / 2.7309245307378233e-22
    assert k.rho_m == 4.65949350504008e-12
    assert k.rho_horn == _native.VKMCanonicalConstants.core_density_closure(k.m_e, k.c, k.v_swirl, k.r_c)
    assert (SectorGate.Unknown.value, SectorGate(0), KnotDerived().gate) == (
        -1,
        SectorGate.Shielded,
        SectorGate.Unknown,
    )


@pytest.mark.parametrize("name", ["r_c", "lambda_c", "m_e", "rho_m", "c", "rho_f", "v_swirl", "rho_horn"])
def test_constants_that_are_not_positive(name):
    constants = filled(CanonicalConstants, **{name: 0.0})
    if name in ("rho_f", "v_swirl", "rho_horn"):
        MassFunctional(constants)
        return
    for call in (
        MassFunctional,
        lambda k: _native.evaluate_single_knot(knot(), constants=k),
        lambda k: _native.evaluate_knot_dataset([], constants=k),
        lambda k: _native.evaluate_knot_dataset_vkm_canonical([], constants=k),
    ):
        with pytest.raises(ValueError, match=r"^Canonical constants must be positive\.$"):
            call(constants)


def test_mass_functional():
    k = CanonicalConstants()
    functional = MassFunctional()
    gate = k.lambda_c / (k.r_c * math.pi)
    assert [functional.gate_factor(g) for g in (SectorGate.Exposed, SectorGate.Shielded, SectorGate.Unknown)] == [
        gate,
        1.0,
        1.0,
    ]
    assert functional.bare_master_mass_scale() == k.r_c * k.rho_m * k.r_c * k.r_c
    for density, mass in (
        (k.rho_m, functional.baseline_mass_from_ropelength(32.7)),
        (k.rho_horn, functional.baseline_mass_from_horn_ropelength(32.7)),
    ):
        assert mass == pytest.approx(2 * math.pi**3 * density * k.r_c**5 / k.lambda_c**2 * 32.7, rel=1e-14)
    with pytest.raises(ValueError, match="rho_horn must be non-negative"):
        MassFunctional(filled(CanonicalConstants, rho_horn=-1.0)).baseline_mass_from_horn_ropelength(1.0)

    K = knot(crossing_number=5, hyperbolic=True, writhe=2.0)
    simple = SimpleInvariantXiModel(filled(SimpleInvariantXiModelParams, a_k=0.2))
    layered = VKMCanonicalXiModel(filled(VKMCanonicalXiModelParams, alpha_C=0.2))
    for model, xi in ((simple, math.exp(1.0)), (layered, 1.0)):
        mass = functional.evaluate(K, model)
        clock2 = 1.0 - (k.v_swirl / k.c) ** 2
        assert mass.mass_kg == pytest.approx(k.rho_m * k.r_c**3 * gate * xi / clock2, rel=1e-13)
        assert mass.mass_ratio == mass.mass_kg / k.m_e
        assert (mass.gate, mass.gate_factor, mass.xi, mass.valid) == (SectorGate.Exposed, gate, xi, True)
        assert mass.note == "Canon v0.8.1 mass computed from rho_m*r_c^3 * gate * Xi * S_t^-2."
        legacy = functional.evaluate_electron_normalized(K, model)
        assert (legacy.mass_ratio, legacy.mass_kg, legacy.valid) == (xi * gate, xi * gate * k.m_e, True)
        assert legacy.note == "Legacy electron-normalized shortcut: M/m_e = gate * Xi."
    fast = MassFunctional(filled(CanonicalConstants, v_swirl=3e8))
    assert fast.evaluate(K, simple).mass_kg == math.inf


@pytest.mark.parametrize(
    ("distance", "bending", "crossings", "gate"),
    [
        (0.0, 99.0, 9, "Unknown"),
        (math.nan, 0.0, 0, "Unknown"),
        (0.19, 0.0, 0, "Exposed"),
        (0.2, 20.0, 7, "Shielded"),
        (0.2, 20.1, 0, "Exposed"),
        (0.5, 0.0, 8, "Exposed"),
    ],
)
def test_particle_model_sectors(distance, bending, crossings, gate):
    K = knot(min_self_distance=distance, bending_energy=bending, crossing_number=crossings)
    prediction = KnotParticleModel().predict(K)
    factor = 2 * math.pi * 1.054571817e-34 / (9.1093837015e-31 * 299792458.0) / (math.pi * 1.40897017e-15)
    assert prediction.gate == getattr(SectorGate, gate)
    assert prediction.gate_factor == pytest.approx(factor if gate == "Exposed" else 1.0, rel=1e-14)
    if math.isnan(distance):
        assert math.isnan(prediction.xi) and math.isnan(prediction.mass_kg)
    else:
        assert (prediction.xi, prediction.mass_ratio) == (1.0, prediction.gate_factor)
        assert prediction.mass_kg == prediction.mass_ratio * 9.1093837015e-31
    assert prediction.note.startswith(gate.lower() + "-sector estimate")
    assert prediction.note.endswith("(insufficient geometric separation)") == (gate == "Unknown")


def test_particle_model_takes_the_plain_values_and_clamps():
    K = knot(crossing_number=3, braid_index=2, seifert_genus=1, writhe=3.0, min_self_distance=0.5)
    K.hyperbolic_volume, K.hyperbolic_volume_opt, K.ropelength_like, K.ropelength = 2.0, 50.0, 16.0, 70.0
    weights = {"a_k": 0.1, "a_b": 0.2, "a_g": 0.3, "a_vol": 0.4, "a_L": 0.05, "a_wr": 0.06, "a_sep": 0.7}
    model = KnotParticleModel(filled(KnotParticleModelParams, **weights))
    assert model.compute_xi(K) == pytest.approx(math.exp(0.3 + 0.4 + 0.3 + 0.8 + 0.8 + 0.18 + 1.4), rel=1e-14)
    for a_sep, xi in ((1e9, 1e12), (-1e9, 1e-12)):
        assert KnotParticleModel(filled(KnotParticleModelParams, a_sep=a_sep)).compute_xi(KnotInvariants()) == xi


def test_reports():
    states = []
    for crossings in (3, 9):
        state = KnotState()
        state.inv.name = f"k{crossings}"
        state.inv.crossing_number, state.inv.braid_index, state.inv.seifert_genus = crossings, 2, 1
        state.inv.hyperbolic, state.inv.hyperbolic_volume_opt, state.inv.ropelength_like = True, 2.5, 30.0
        state.contact_score = 0.5
        states.append(state)
    assert (states[0].energy_score, states[0].derived.valid) == (None, False)
    params = filled(SimpleInvariantXiModelParams, a_L=0.1)
    layered = filled(VKMCanonicalXiModelParams, beta_L=0.1)
    for rows, single in (
        (_native.evaluate_knot_dataset(states, params), lambda K: _native.evaluate_single_knot(K, params)),
        (
            _native.evaluate_knot_dataset_vkm_canonical(states, layered),
            lambda K: _native.evaluate_single_knot_vkm_canonical(K, layered),
        ),
    ):
        assert [row.name for row in rows] == ["k3", "k9"]
        for row, state in zip(rows, states, strict=True):
            derived = single(state.inv)
            assert (row.k, row.b, row.g, row.vol_h, row.L_tot) == (state.inv.crossing_number, 2, 1, 2.5, 30.0)
            assert (row.gate, row.xi, row.mass_ratio, row.mass_kg) == (
                derived.gate,
                derived.xi,
                derived.mass_ratio,
                derived.mass_kg,
            )
            assert not np.isnan(row.mass_kg)
    assert rows[0].gate == SectorGate.Shielded and rows[1].gate == SectorGate.Exposed
