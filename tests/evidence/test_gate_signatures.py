"""The gates' interface: names, defaults and number of arguments, fields of results."""

import ast

import _native
import pytest

# An API's functions in order of registration, each with its arguments; a number counts arguments without names.
SIGNATURES = {
    "CoreTorsionAPI": """
        torsion_inertial_mass E0 I c_T
        torsion_inertial_mass_legacy_factor2 E0 I c_T
        anisotropy_residuals M_row_major E0 c_T""",
    "LinkFieldGateAPI": """
        failure_name 1
        evaluate rho_star Gamma_star r_star phase_residual tol=1e-6""",
    "MaxwellKineticAPI": """
        three_gate_condition 5
        collision_rate_inv 3
        evaluate 8""",
    "MechanicalFalsifierAPI": """
        delta_p_omega 2
        C_blind 3
        blind_scaling_gate 3
        evaluate 4""",
    "SwirlTonicAPI": """
        stokes_circulation 6
        material_holonomy 2
        material_tonic_not_a_eff 1
        evaluate 8""",
    "RotorParticipationAPI": """
        j_omega_rot 2
        phi_dyn_ref 2
        ell_rho_eq_ref 2
        c_omega_equals_v_swirl 1
        evaluate r_c=1.40897017e-15 rho_horn=3893435826691868672.0 rho_ref=7e-7 v_swirl=1093845.63
        classify_wave_mode 2""",
    "SpectroResponseAPI": """
        configuration_transition_energy 2
        transition_frequency 2
        linear_response_delta_nu 3
        rejects_double_count_with_xi_k 1
        evaluate 6""",
    "ActionPhaseAPI": """
        mass_shell_hamiltonian p E0 c
        velocity_from_mass_shell p E0 c
        gamma_from_mass_shell p E0 c
        proper_time_rate p E0 c
        internal_phase_rate_at_fixed_momentum p E0 c Omega0
        action_phase_residuals p E0 c Omega0 tol=1e-12
        delta_shape_separability p E0 dE0_dq c
        coupled_shape_residual p E0 dE0_dq c f_q df_dq eps
        fixed_v_phase_error_factor p E0 c""",
    "IdealKnotRegimeAPI": """
        epsilon_kappa 2
        epsilon_sep 2
        classify_regime eps_kappa eps_sep order_one=0.3
        moffatt_ricca_helicity 3
        evaluate a_core kappa_max d_sep gamma writhe twist kkt_residual=0.0
        regime_name 1""",
    "OperationalSpacetimeAPI": """
        radar_interval emission_time reception_time c=1.0
        lorentz_boost_x event velocity c=1.0
        lorentz_boost event velocity c=1.0
        minkowski_interval2 event_a event_b c=1.0""",
    "WorldsheetGuardsAPI": """
        form_degree_H 1
        two_form_degree_guard sphere_dimension=2 form_degree_H
        charge_differs_from_circulation q_B gamma_0 abs_tol=0.0
        b_field_not_identified_with_a_em 1
        material_velocity_not_a_eff 1
        evaluate form_degree_H q_B gamma_0 claimed_b_is_a_em claimed_v_is_a_eff
        ladder_stage_name 1""",
    "TransverseProjectorAPI": """
        high_res_ld 0
        halvard_ld 0
        projector_sphere_integral 0
        leading_response_R0 1
        rop_rad_from_ld 1
        R0_from_rop_rad 1
        delta_micro_plus 6
        R_VKM 2
        twist_energy_bound_rhs 3
        twist_bound_satisfied 4
        conventions_mixed 2
        evaluate L_over_D c_kappa I_kappa2 c_Omega I_Omega2 c_C C_contact SL Wr convention=Custom""",
    "KAMDiagnosticsAPI": """
        sector_name 1
        stage_name 1
        stage1 sector frequencies hessian_row_major diophantine_tau=1e-6
        golden_ratio_null_test value tol=1e-9""",
    "QSSSpectroscopyAPI": """
        eigen_2x2 matrix_row_major
        pseudospectrum_diag_2x2 a00 a11 real_min real_max n_real imag_min imag_max n_imag""",
}


def arguments_of(function):
    """Name and text of the default (or None), from the docstring's first line; a default may hold no comma."""
    head = function.__doc__.splitlines()[0]
    inside = head[head.index("(") + 1 : head.rindex(") ->")]
    depth, parts = 0, [""]
    for c in inside:
        depth += (c in "([") - (c in ")]")
        if c == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += c
    named = [part.strip().partition(":") for part in parts if part.strip()]
    return [(name, rest.rpartition(" = ")[2] if " = " in rest else None) for name, _, rest in named]


@pytest.mark.parametrize("api", SIGNATURES)
def test_signatures(api):
    cls = getattr(_native, api)
    table = [line.split() for line in SIGNATURES[api].split("\n")[1:]]
    assert [name for name in vars(cls) if not name.startswith("_")] == [name for name, *_ in table]
    for function, *expected in table:
        found = arguments_of(getattr(cls, function))
        if len(expected) == 1 and expected[0].isdigit():
            names = [f"arg{place}" for place in range(int(expected[0]))]
            assert [name for name, _ in found] == names, function
            continue
        assert [name for name, _ in found] == [argument.partition("=")[0] for argument in expected], function
        for (name, default), argument in zip(found, expected, strict=True):
            wanted = argument.partition("=")[2]
            if wanted == "Custom":
                assert default == "<RopelengthConvention.Custom: 2>"
            else:
                assert (default and ast.literal_eval(default)) == (ast.literal_eval(wanted) if wanted else None), name


# Fields in order. Results cannot be made or changed from Python.
FIELDS = {
    "TorsionMassResult": "mass dimensional_residual convention ok",
    "AnisotropyResiduals": "chi_hat delta_aniso normalization ok epistemic_status",
    "LinkFieldGateResult": "passed failure rho_star Gamma_star r_star phase_residual epistemic_status",
    "MaxwellKineticResult": "coupling_nonzero drive_above_gap lifetime_observable three_gate_ok tau_inv message",
    "MechanicalFalsifierResult": "delta_p_omega C_blind scaling_ok message",
    "SwirlTonicResult": "circulation holonomy material_not_a_eff passed message",
    "RotorParticipationResult": "j_omega_rot phi_dyn_ref ell_rho_eq_ref c_omega",
    "SpectroResponseResult": "delta_E nu delta_nu double_count_with_xi_k passed message",
    "ActionPhaseResiduals": "hamiltonian_consistency velocity_consistency gamma_consistency proper_time_consistency "
    "phase_rate_consistency delta_shape_separability finite within_tolerance ok",
    "IdealKnotRegimeResult": "epsilon_kappa epsilon_sep regime helicity_moffatt_ricca kkt_residual lia_kam_excluded "
    "message",
    "RadarInterval": "emission_time reception_time radar_time radar_distance causal",
    "LorentzMapResult": "transformed_event gamma invariant_residual",
    "WorldsheetGuardResult": "form_degree_ok charge_not_gamma0 b_not_a_em material_v_not_a_eff passed message",
    "TransverseProjectorResult": "projector_sphere_integral R0 rop_rad delta_micro R_VKM twist_bound_rhs "
    "twist_bound_ok convention_mixed message",
    "KAMStage1Result": "sector achieved_stage frequencies hessian hessian_determinant minimum_detuning "
    "diophantine_margin status",
    "QSSSpectrumResult": "eigenvalues eigen_residual eigenvalue_magnitude_ratio conditioning epistemic_status",
    "QSSPseudospectrumSample": "real_z imag_z resolvent_norm",
    "QSSPseudospectrumResult": "samples max_resolvent_norm epistemic_status",
}


@pytest.mark.parametrize("record", FIELDS)
def test_results(record):
    cls = getattr(_native, record)
    properties = {name: value for name, value in vars(cls).items() if isinstance(value, property)}
    assert list(properties) == FIELDS[record].split()
    assert all(value.fset is None for value in properties.values())
    with pytest.raises(TypeError, match="No constructor defined"):
        cls()
