# Types of the extension module. Made by tools/make_stubs.py from the built module; do not edit.
"""
VKMcore Bindings
"""
from __future__ import annotations
import collections.abc
import numpy
import numpy.typing
import typing
from vkmcore import results
__all__: list[str] = ['ActionPhaseAPI', 'ActionPhaseResiduals', 'AnisotropyResiduals', 'AtomicBridgeModel', 'BiotSavart', 'BiotSavartGateAPI', 'BiotSavartGateResult', 'BoundaryOptions', 'CanonicalConstants', 'CanonicalValue', 'CanonicalizeResult', 'CertificateStatus', 'CheckKind', 'CheckResult', 'ChronosFirstHittingResult', 'ChronosKelvinTransport', 'ClockFieldEFT', 'ClockSectorConstraints', 'ContactSaturationResult', 'ContactStressDiagnostics', 'ContactStressMap', 'CoreTorsionAPI', 'DelayModeResult', 'DelayModeSelector', 'DensityOntologyAPI', 'DensityRegime', 'DensitySymbol', 'DimensionalCheckResult', 'EnergyDensityForm', 'EvidenceReportAPI', 'EvidenceReportMeta', 'FilamentEnergyParams', 'FilamentEnergyResult', 'FourierBlock', 'FourierResult', 'GeometricDescriptors', 'GeometryCertificate', 'GeometryCertificateAPI', 'GoldenNLSClosure', 'Grid1D', 'HelicityResult', 'IdealABBlock', 'IdealABComponent', 'IdealKnotRegimeAPI', 'IdealKnotRegimeResult', 'KAMDiagnosticsAPI', 'KAMSector', 'KAMStage', 'KAMStage1Result', 'KinkRecord', 'KnotDerived', 'KnotInvariants', 'KnotParticleModel', 'KnotParticleModelParams', 'KnotPrediction', 'KnotRegime', 'KnotReportRow', 'KnotState', 'LinkFieldGateAPI', 'LinkFieldGateResult', 'LinkGateFailure', 'LoadedKnot', 'LorentzMapResult', 'MagnusBernoulliIntegrator', 'MassFunctional', 'MaxwellKineticAPI', 'MaxwellKineticResult', 'MechanicalFalsifierAPI', 'MechanicalFalsifierResult', 'MultisectorFitter', 'MultisectorFitterV2', 'NNLSResult', 'NodeAnalyzer', 'OperationalSpacetimeAPI', 'ParticleEvaluator', 'PipelineCertificationStatus', 'PipelineProvenanceAPI', 'PipelineStage', 'PolygonalSmoothCertificate', 'PolygonalSmoothCertificateAPI', 'PotentialGaussianWell', 'PotentialOptions', 'PrimitiveSet', 'PrimitiveSetMembership', 'ProvenanceRecord', 'QSSPseudospectrumResult', 'QSSPseudospectrumSample', 'QSSSpectroscopyAPI', 'QSSSpectrumResult', 'RadarInterval', 'Rank9ChannelDiagnostics', 'RelativisticMetrics', 'ResolvedTubeGeometry', 'ResolvedTubeMetrics', 'ResolvedTubeTightener', 'RigidityColumn', 'RigidityMatrix', 'RopelengthConvention', 'RotorParticipationAPI', 'RotorParticipationResult', 'ScalingAuditAPI', 'ScalingClass', 'SectorGate', 'SegmentPair', 'SimpleInvariantXiModel', 'SimpleInvariantXiModelParams', 'SnapshotCompareResult', 'SparseEntry', 'SparseRigidityColumn', 'SparseRigidityMatrix', 'SpectroResponseAPI', 'SpectroResponseResult', 'SpectroscopicGap', 'SwirlTonicAPI', 'SwirlTonicResult', 'TailApproxConfig', 'TighteningOptions', 'TighteningResult', 'TighteningStepRecord', 'TimeEvolution', 'TorsionMassResult', 'TraceFormula', 'TransverseProjectorAPI', 'TransverseProjectorResult', 'TrefoilOperator', 'VKMCanonicalConstants', 'VKMCanonicalValues', 'VKMCanonicalXiModel', 'VKMCanonicalXiModelParams', 'VKMGravity', 'VKMMasterEquation', 'VKMMasterEquationInput', 'VKMMasterEquationOutput', 'VKMTensionScales', 'VKMTopologyKernelInput', 'ValueOrigin', 'ValueOriginAPI', 'VortexKnotSystem', 'WaveModeClass', 'WorldsheetGuardResult', 'WorldsheetGuardsAPI', 'ZooEvaluator', 'ZooResult', 'analyze_resolved_tube_clearance', 'analyze_smooth_resolved_tube', 'baroclinic_term', 'batch_helicity_from_dir', 'bending_energy_exact', 'bernoulli_pressure_potential', 'biot_savart_vector_potential_grid', 'biot_savart_velocity', 'biot_savart_velocity_grid', 'biot_savart_wire_grid', 'build_invariants_from_fourier_block', 'build_invariants_from_fseries', 'calculate_bs_cutoff_energy', 'calculate_bs_cutoff_energy_scan', 'calculate_core_repulsion', 'calculate_curvature_penalty', 'calculate_length', 'calculate_neumann_self_energy', 'calculate_writhe', 'canonicalize_fseries_file_inplace', 'check_kind_export_string', 'check_kind_from_export_string', 'circulation_surface_integral', 'compare_fseries_files', 'compute_bernoulli_pressure', 'compute_biot_savart_velocity_grid', 'compute_centerline_helicity', 'compute_continuous_reach', 'compute_curvature', 'compute_curvature_torsion', 'compute_curve_metrics_from_fseries', 'compute_filament_energy_from_fseries', 'compute_filament_velocity', 'compute_frenet_frames', 'compute_gravitational_potential', 'compute_gravitational_potential_direct', 'compute_gravitational_potential_gradient', 'compute_helicity', 'compute_helicity_from_fourier_block', 'compute_helicity_from_fseries', 'compute_helicity_invariants', 'compute_intrinsic_frame', 'compute_kinetic_energy', 'compute_linking_number', 'compute_polygonal_gauss', 'compute_pressure_field', 'compute_regularized_mutual_velocity', 'compute_rigid_motion', 'compute_swirl_field', 'compute_time_dilation_map', 'compute_time_dilation_map_linear', 'compute_time_dilation_map_sqrt', 'compute_topology_clearance', 'compute_twist', 'compute_velocity_magnitude', 'compute_vkm_mass', 'compute_vorticity', 'compute_vorticity_grid', 'compute_vorticity_rhs', 'compute_writhe', 'couette_vorticity', 'crocco_gradient', 'crocco_relation', 'curl3d_central', 'curvature_exact', 'curve_length_from_fseries', 'cylinder_inertia', 'cylinder_mass', 'describe_fourier_block', 'detect_reconnection_candidates', 'dipole_field_at_point', 'dipole_ring_field_grid', 'ekman_number', 'enstrophy', 'enthalpy', 'entropy_from_pv', 'entropy_from_theta', 'estimate_cfl_dt', 'estimate_crossing_number', 'evaluate_fourier_block', 'evaluate_fourier_series', 'evaluate_ideal_ab_components', 'evaluate_ideal_component', 'evaluate_knot_dataset', 'evaluate_knot_dataset_vkm_canonical', 'evaluate_single_knot', 'evaluate_single_knot_vkm_canonical', 'evaluate_with_derivatives', 'evolve_positions_euler', 'evolve_vortex_knot', 'extract_interior_field', 'find_ideal_ab_block_by_id', 'find_ideal_block_by_id', 'format_ideal_ab_header', 'fourier_knot', 'fourier_knot_eval', 'get_embedded_ideal_files', 'get_embedded_knot_files', 'grad_phi', 'guard_topology_step', 'hill_circulation', 'hill_streamfunction', 'hill_velocity', 'hill_vorticity', 'hyperbolic_volume_from_pd', 'index_of_ideal_id', 'index_of_largest_block', 'is_incompressible', 'kairos_energy_trigger', 'lamb_oseen_velocity', 'lamb_oseen_vorticity', 'laplacian_phi', 'length_exact', 'list_bindings', 'load_all_knots', 'load_embedded_ideal_text', 'load_embedded_knot_block', 'local_circulation_density', 'local_rotation_rate', 'make_knot_report_row', 'min_non_neighbor_distance_from_fseries', 'min_self_distance_exactish', 'min_self_distance_sampled', 'mode_energies', 'parse_embedded_ideal_ab_by_id', 'parse_embedded_ideal_txt', 'parse_fseries_from_string', 'parse_fseries_multi', 'parse_ideal_ab_by_id_from_string', 'parse_ideal_halvard_from_string', 'parse_ideal_txt_from_string', 'parse_ideal_txt_multi', 'pd_from_curve', 'potential_temperature', 'potential_vorticity', 'predict_particle_from_fourier_block', 'predict_particle_from_fseries', 'pressure_gradient', 'radiation_force', 'reach_proxy_from_fseries', 'resample_closed_curve', 'resolved_tube_analyze', 'resolved_tube_build_rigidity_matrix', 'resolved_tube_build_sparse_rigidity_matrix', 'resolved_tube_kkt_diagnostics', 'resolved_tube_length', 'resolved_tube_length_gradient_flat', 'resolved_tube_lower_bound_rad', 'resolved_tube_metrics_from_fseries', 'resolved_tube_minrad', 'resolved_tube_projected_gradient', 'resolved_tube_solve_active_set', 'resolved_tube_tighten', 'resolved_tube_write_matrix_market', 'resolved_tube_write_vector_market', 'rk4_integrate', 'rk4_step', 'rossby_number', 'rotating_frame_rhs', 'sample_circle', 'sample_curve', 'sample_curve_centered', 'solid_body_rotation_vorticity', 'swirl_clock_factor_from_speed', 'swirl_clock_rate', 'swirl_energy', 'swirl_energy_density_from_speed', 'swirl_tension_energy_density', 'torque', 'van_der_pol_dx', 'van_der_pol_dy', 'vortex_pressure_drop', 'vortex_transverse_pressure_diff', 'vorticity_from_curvature', 'vorticity_z_2D', 'writhe_gauss_curve']

class TailApproxConfig:
    """
    How the energy of the flow outside the core is estimated.
    """

    def __init__(self) -> None:
        ...

    @property
    def azimuth_samples(self) -> int:
        """
        Samples on a shell; at least 1 is taken.
        """

    @azimuth_samples.setter
    def azimuth_samples(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def enabled(self) -> bool:
        """
        Unless true the tail is 0.
        """

    @enabled.setter
    def enabled(self, arg0: bool, /) -> None:
        ...

    @property
    def exclusion_ds_factor(self) -> float:
        """
        Length left out on either side of a vertex, in mean segment lengths.
        """

    @exclusion_ds_factor.setter
    def exclusion_ds_factor(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def r_max_factor(self) -> float:
        """
        Outer radius in core radii; at least 1.1 inner radii are taken.
        """

    @r_max_factor.setter
    def r_max_factor(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def r_min_factor(self) -> float:
        """
        Inner radius in core radii; at least 1.01 is taken.
        """

    @r_min_factor.setter
    def r_min_factor(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def radial_samples(self) -> int:
        """
        Shells around a vertex; at least 1 is taken.
        """

    @radial_samples.setter
    def radial_samples(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def use_log_shell_weight(self) -> bool:
        """
        Carried along without effect: shells are always weighted by their area.
        """

    @use_log_shell_weight.setter
    def use_log_shell_weight(self, arg0: bool, /) -> None:
        ...

class RelativisticMetrics:
    """
    Helicity and clock rates of a filament in its own flow.
    """

    def __init__(self) -> None:
        ...

    @property
    def core_time_dilation(self) -> float:
        """
        Mean of the clock rates.
        """

    @core_time_dilation.setter
    def core_time_dilation(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def helicity(self) -> float:
        """
        Mean of velocity . vorticity, m/s^2.
        """

    @helicity.setter
    def helicity(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def time_dilation_map(self) -> list[float]:
        """
        Clock rate at each point.
        """

    @time_dilation_map.setter
    def time_dilation_map(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

class ParticleEvaluator:
    """
    From a catalogue knot to a mass in MeV without a fitted parameter.

    Holds closed filaments. relax() gives them the size of the electron; lengths are in metres from then on.
    """

    @staticmethod
    def print_canonical_derivation() -> None:
        """
        Prints the dynamic fluid derivation of the core density.
        """

    @typing.overload
    def __init__(self, knot_ab_id: str, resolution: typing.SupportsInt | typing.SupportsIndex=4000, allow_non_canonical_geometry_for_research_only: bool=False) -> None:
        """
        The filaments of an ideal block 'n:m:k' of the catalogue, one a component, each of `resolution` points.

        RuntimeError if the id has another form (unless allowed for research) or is not found; MemoryError for an absurd resolution.
        """

    @typing.overload
    def __init__(self, input_filaments: collections.abc.Sequence[collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]]) -> None:
        """
        A copy of closed filaments, each a list of points of three floats. Any geometry is accepted.
        """

    def compute_core_energy_J(self) -> float:
        """
        Core energy, J: length times the line tension 14.5267535 J/m.
        """

    def compute_relativistic_metrics(self, circulation: typing.SupportsFloat | typing.SupportsIndex=9.683619203e-09) -> RelativisticMetrics:
        """
        RelativisticMetrics of the first filament for a circulation in m^2/s.

        Sources within 1e-6 of a point are left out, in the unit of the points: in a relaxed body all are, and the velocities vanish.
        """

    def compute_tail_energy_J(self, include_tail: bool=False) -> float:
        """
        Energy of the flow outside the core, J: the surrogate if include_tail, else 0.
        """

    def compute_tail_energy_surrogate_J(self) -> float:
        """
        Energy of the flow in shells around the filaments, J: the Biot-Savart field of all filaments sampled at equal angles on shells around every vertex, squared, times half the density 7e-7 kg/m^3 and the volume of the shell along the vertex's segment. 0 unless enabled in the configuration.
        """

    def get_core_mass_mev_only(self) -> float:
        """
        Mass of the core energy alone, MeV.
        """

    def get_dimless_ropelength(self, stretch_lambda: typing.SupportsFloat | typing.SupportsIndex=1.0) -> float:
        """
        Length of all filaments, closing segments included, in electron radii, over stretch_lambda squared.
        """

    def get_filaments(self) -> list[list[typing.Annotated[list[float], 'FixedSize(3)']]]:
        """
        Export the 3D coordinates of all present vortex rings.
        """

    def get_mass_mev_ab_initio(self, include_tail: bool=False) -> float:
        """
        Mass, MeV: core energy, and the tail's if include_tail and it is enabled.
        """

    def get_physical_length_m(self) -> float:
        """
        Length of all filaments, m.
        """

    def get_tail_approx_config(self) -> TailApproxConfig:
        """
        A copy of the tail's configuration.
        """

    def relax(self, iterations: typing.SupportsInt | typing.SupportsIndex=1000, timestep: typing.SupportsFloat | typing.SupportsIndex=0.01) -> None:
        """
        Relax the filaments by damped dynamics and scale them about their mean to the electron radius, 2.81794034e-15 m.

        With P the points, C their mean and d = P[i] - P[j], each sweep sums
            F = ((P[next] - P) + (P[prev] - P)) 25 + (C - P) 15 + sum of (d / |d|) min(200, 0.5 / |d|^4)
        over the partners with 1e-8 < |d|^2 < 0.04, and steps V = (timestep F + V) 0.7, P = timestep V + P. The same input gives the same bits on every machine. Ctrl-C leaves the filaments as they were. RuntimeError from within another relax of the same evaluator (in a signal's handler, or another thread).
        """

    def set_tail_approx_config(self, config: TailApproxConfig) -> None:
        """
        Copy in a TailApproxConfig for the tail surrogate.
        """

class ZooResult:
    """
    The golden mass of an entry of the Master Dictionary.
    """

    def __init__(self) -> None:
        ...

    @property
    def bridge_b(self) -> float:
        """
        Bridge number.
        """

    @bridge_b.setter
    def bridge_b(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def genus_g(self) -> int:
        """
        Genus.
        """

    @genus_g.setter
    def genus_g(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def identifier(self) -> str:
        """
        The entry's name.
        """

    @identifier.setter
    def identifier(self, arg0: str, /) -> None:
        ...

    @property
    def mass_mev(self) -> float:
        """
        Mass, MeV.
        """

    @mass_mev.setter
    def mass_mev(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class ZooEvaluator:
    """
    Masses of the Master Dictionary of knots and links: bridge_b m_0 phi^(-2 genus_g) with m_0 = 1.0290437436843307e-54 kg and the golden ratio phi.

    Static functions.
    """

    @staticmethod
    def evaluate_all_golden_nls() -> list[ZooResult]:
        """
        Run ab initio Golden NLS mass evaluation for the entire VKM Master Dictionary.

        A list of ZooResult, in the order of the identifiers' bytes.
        """

    @staticmethod
    def get_entry_mass(identifier: str) -> float:
        """
        Get the mass of a specific knot by its dictionary ID.

        In MeV; -1.0 for an identifier that the dictionary does not hold.
        """

class VKMCanonicalValues:
    """
    Canonical constants and what follows from them, SI units.
    """

    def __init__(self) -> None:
        ...

    @property
    def F_swirl_max(self) -> float:
        """
        Maximal swirl force, N.
        """

    @F_swirl_max.setter
    def F_swirl_max(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def R_infty_vkm(self) -> float:
        """
        Rydberg-like wavenumber, 1/m.
        """

    @R_infty_vkm.setter
    def R_infty_vkm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def alpha(self) -> float:
        """
        Fine-structure constant.
        """

    @alpha.setter
    def alpha(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def c(self) -> float:
        """
        Speed of light, m/s.
        """

    @c.setter
    def c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def e_charge(self) -> float:
        """
        Elementary charge, C.
        """

    @e_charge.setter
    def e_charge(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def eta_0(self) -> float:
        """
        Speed ratio v_swirl / c.
        """

    @eta_0.setter
    def eta_0(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gamma_0(self) -> float:
        """
        Circulation quantum, m^2/s.
        """

    @gamma_0.setter
    def gamma_0(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def geometric_gate(self) -> float:
        """
        Gate ratio lambda_c / (pi r_c).
        """

    @geometric_gate.setter
    def geometric_gate(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def hbar(self) -> float:
        """
        Reduced Planck constant, J s.
        """

    @hbar.setter
    def hbar(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def lambda_bar_c(self) -> float:
        """
        Reduced Compton wavelength, m.
        """

    @lambda_bar_c.setter
    def lambda_bar_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def lambda_c(self) -> float:
        """
        Full Compton wavelength, m.
        """

    @lambda_c.setter
    def lambda_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def m_e(self) -> float:
        """
        Electron mass, kg.
        """

    @m_e.setter
    def m_e(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def omega_c(self) -> float:
        """
        Compton angular frequency, 1/s.
        """

    @omega_c.setter
    def omega_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def r_c(self) -> float:
        """
        Core radius, m.
        """

    @r_c.setter
    def r_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_E(self) -> float:
        """
        Swirl energy density, J/m^3.
        """

    @rho_E.setter
    def rho_E(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_core(self) -> float:
        """
        Core density closure, kg/m^3.
        """

    @rho_core.setter
    def rho_core(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_f(self) -> float:
        """
        Fluid density as given, kg/m^3.
        """

    @rho_f.setter
    def rho_f(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_horn(self) -> float:
        """
        Horn envelope density, kg/m^3.
        """

    @rho_horn.setter
    def rho_horn(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_m(self) -> float:
        """
        Mass-equivalent density, kg/m^3.
        """

    @rho_m.setter
    def rho_m(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def swirl_clock(self) -> float:
        """
        Clock factor.
        """

    @swirl_clock.setter
    def swirl_clock(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def v_swirl(self) -> float:
        """
        Swirl speed as given, m/s.
        """

    @v_swirl.setter
    def v_swirl(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class VKMCanonicalConstants:
    """
    Constants of the theory (CODATA 2018 where physical) and the closed-form relations between them.

    Static functions in SI units. A NaN argument is not rejected and gives NaN.
    """

    @staticmethod
    def alpha() -> float:
        """
        Fine-structure constant.
        """

    @staticmethod
    def bare_master_mass_scale(rho_m: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Bare mass scale rho_m r_c^3, kg. ValueError if rho_m is negative or r_c not positive.
        """

    @staticmethod
    def circulation_quantum(r_c: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Circulation 2 pi r_c v_swirl around the core, m^2/s. ValueError unless both are positive.
        """

    @staticmethod
    def circulation_quantum_from_v_omega(v_swirl: typing.SupportsFloat | typing.SupportsIndex, omega_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Circulation 2 pi v_swirl^2 / omega_c, m^2/s. Raises nothing: omega_c = 0 gives an infinity or NaN.
        """

    @staticmethod
    def compton_angular_frequency(m_e: typing.SupportsFloat | typing.SupportsIndex=9.1093837015e-31, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0, hbar: typing.SupportsFloat | typing.SupportsIndex=1.054571817e-34) -> float:
        """
        Compton angular frequency m_e c^2 / hbar, 1/s. ValueError unless all are positive.
        """

    @staticmethod
    def core_density_closure(m_e: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Core density m_e c^2 / (2 pi v_swirl^2 r_c^3), kg/m^3, that closes the electron's rest energy on the core. ValueError unless all are positive.
        """

    @staticmethod
    def core_radius_from_compton_anchor(v_swirl: typing.SupportsFloat | typing.SupportsIndex, omega_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Core radius v_swirl / omega_c, m: the swirl speed anchored to the Compton frequency. ValueError unless both are positive.
        """

    @staticmethod
    def electron_mass() -> float:
        """
        Electron mass, kg.
        """

    @staticmethod
    def elementary_charge() -> float:
        """
        Elementary charge, C.
        """

    @staticmethod
    def epsilon_0() -> float:
        """
        Vacuum permittivity, F/m.
        """

    @staticmethod
    def eta0(v_swirl: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        Speed ratio v_swirl / c. ValueError unless c is positive.
        """

    @staticmethod
    def f_swirl_max(hbar: typing.SupportsFloat | typing.SupportsIndex, omega_c: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Maximal swirl force hbar omega_c / (2 r_c), N. ValueError unless all are positive.
        """

    @staticmethod
    def full_compton_wavelength(hbar: typing.SupportsFloat | typing.SupportsIndex=1.054571817e-34, m_e: typing.SupportsFloat | typing.SupportsIndex=9.1093837015e-31, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        Compton wavelength 2 pi hbar / (m_e c), m. ValueError unless all are positive.
        """

    @staticmethod
    def geometric_gate(lambda_c: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Gate ratio lambda_c / (pi r_c). ValueError unless both are positive.
        """

    @staticmethod
    def hbar() -> float:
        """
        Reduced Planck constant, J s.
        """

    @staticmethod
    def horn_envelope_density(m_e: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Horn envelope density m_e c^2 / (2 pi v_swirl^2 r_c^3), kg/m^3: the expression of core_density_closure for a distinct density. ValueError unless all are positive.
        """

    @staticmethod
    def mass_equivalent_density(rho_E: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        Mass density rho_E / c^2 of an energy density, kg/m^3. ValueError unless c is positive.
        """

    @staticmethod
    def phi() -> float:
        """
        Golden ratio (1 + sqrt(5)) / 2.
        """

    @staticmethod
    def reduced_compton_wavelength(hbar: typing.SupportsFloat | typing.SupportsIndex=1.054571817e-34, m_e: typing.SupportsFloat | typing.SupportsIndex=9.1093837015e-31, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        Reduced Compton wavelength hbar / (m_e c), m. ValueError unless all are positive.
        """

    @staticmethod
    def rydberg_vkm(v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        Rydberg-like wavenumber v_swirl^3 / (pi r_c c^3), 1/m. ValueError unless all are positive.
        """

    @staticmethod
    def speed_of_light() -> float:
        """
        Speed of light, 299792458 m/s.
        """

    @staticmethod
    def swirl_clock(v_norm: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        Clock factor sqrt(max(1 - v_norm^2 / c^2, 0)) of special relativity; exactly 0 at and above c. ValueError unless c is positive.
        """

    @staticmethod
    def swirl_energy_density(rho_f: typing.SupportsFloat | typing.SupportsIndex, v_norm: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Kinetic energy density 0.5 rho_f v_norm^2, J/m^3. ValueError if rho_f is negative.
        """

    @staticmethod
    def values(rho_f: typing.SupportsFloat | typing.SupportsIndex=7e-07, v_swirl: typing.SupportsFloat | typing.SupportsIndex=1093845.63) -> VKMCanonicalValues:
        """
        All constants, and all that follows from rho_f (kg/m^3) and v_swirl (m/s). ValueError unless v_swirl and the core radius it gives are positive and rho_f is not negative.
        """

class VKMTopologyKernelInput:
    """
    Weights and measures of the topological kernel; all dimensionless.
    """

    def __init__(self) -> None:
        ...

    @property
    def alpha_C(self) -> float:
        """
        Weight of the crossing term.
        """

    @alpha_C.setter
    def alpha_C(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def beta_L(self) -> float:
        """
        Weight of the ropelength term.
        """

    @beta_L.setter
    def beta_L(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def crossing(self) -> float:
        """
        Crossing measure.
        """

    @crossing.setter
    def crossing(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gamma_H(self) -> float:
        """
        Weight of the helicity term.
        """

    @gamma_H.setter
    def gamma_H(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def golden_layer(self) -> int:
        """
        Layer k of the golden suppression phi^(-2k).
        """

    @golden_layer.setter
    def golden_layer(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def helicity(self) -> float:
        """
        Helicity measure.
        """

    @helicity.setter
    def helicity(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def phi(self) -> float:
        """
        Base of the suppression.
        """

    @phi.setter
    def phi(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ropelength(self) -> float:
        """
        Ropelength measure.
        """

    @ropelength.setter
    def ropelength(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class VKMMasterEquationInput:
    """
    Input of VKMMasterEquation.evaluate, SI units.
    """

    def __init__(self) -> None:
        ...

    @property
    def c(self) -> float:
        """
        Speed of light, m/s.
        """

    @c.setter
    def c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def explicit_swirl_clock(self) -> float:
        """
        A positive value replaces the computed clock.
        """

    @explicit_swirl_clock.setter
    def explicit_swirl_clock(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gate(self) -> int:
        """
        Gate exponent n.
        """

    @gate.setter
    def gate(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def lambda_c(self) -> float:
        """
        Compton wavelength, m; unless greater than 0 the electron's is taken.
        """

    @lambda_c.setter
    def lambda_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def r_c(self) -> float:
        """
        Core radius, m.
        """

    @r_c.setter
    def r_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_f(self) -> float:
        """
        Fluid density, kg/m^3.
        """

    @rho_f.setter
    def rho_f(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def topology(self) -> VKMTopologyKernelInput:
        """
        Input of the topological kernel.
        """

    @topology.setter
    def topology(self, arg0: VKMTopologyKernelInput, /) -> None:
        ...

    @property
    def v_norm(self) -> float:
        """
        Swirl speed, m/s.
        """

    @v_norm.setter
    def v_norm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class VKMMasterEquationOutput:
    """
    Every factor of the master equation, SI units.
    """

    def __init__(self) -> None:
        ...

    @property
    def bare_mass_scale_kg(self) -> float:
        """
        rho_m r_c^3, kg.
        """

    @bare_mass_scale_kg.setter
    def bare_mass_scale_kg(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def clock_impedance(self) -> float:
        """
        1 / swirl_clock^2.
        """

    @clock_impedance.setter
    def clock_impedance(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def geometric_gate(self) -> float:
        """
        The gate factor.
        """

    @geometric_gate.setter
    def geometric_gate(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def mass_kg(self) -> float:
        """
        The mass, kg.
        """

    @mass_kg.setter
    def mass_kg(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_E(self) -> float:
        """
        Swirl energy density, J/m^3.
        """

    @rho_E.setter
    def rho_E(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_m(self) -> float:
        """
        Mass-equivalent density, kg/m^3.
        """

    @rho_m.setter
    def rho_m(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def swirl_clock(self) -> float:
        """
        The clock factor used.
        """

    @swirl_clock.setter
    def swirl_clock(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def topological_kernel(self) -> float:
        """
        The topological kernel.
        """

    @topological_kernel.setter
    def topological_kernel(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class VKMMasterEquation:
    """
    The master mass equation M = (1/2 rho_f v^2 / c^2) r_c^3 (lambda_c / (pi r_c))^n phi^(-2k) (alpha_C C + beta_L L + gamma_H H) / S^2.

    Static functions in SI units. NaN is not rejected.
    """

    @staticmethod
    def clock_impedance(swirl_clock: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        1 / swirl_clock^2. ValueError unless the clock is positive.
        """

    @staticmethod
    def evaluate(input: VKMMasterEquationInput) -> VKMMasterEquationOutput:
        """
        The mass and every factor that leads to it. ValueError, in this order, if rho_f is negative or r_c or c not positive, the clock is not positive, gate is negative, or phi is not positive.
        """

    @staticmethod
    def geometric_baseline_mass(rho_m: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, lambda_c: typing.SupportsFloat | typing.SupportsIndex, L_tot: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Mass 2 pi^3 rho_m r_c^5 L_tot / lambda_c^2 of a tube of dimensionless length L_tot, kg. ValueError if rho_m is negative, or r_c or lambda_c not positive.
        """

    @staticmethod
    def geometric_baseline_mass_from_rho_m(rho_m: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, lambda_c: typing.SupportsFloat | typing.SupportsIndex, L_tot: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Second name of geometric_baseline_mass.
        """

    @staticmethod
    def geometric_gate_factor(lambda_c: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, gate: typing.SupportsInt | typing.SupportsIndex) -> float:
        """
        (lambda_c / (pi r_c))^gate. ValueError unless lambda_c and r_c are positive and gate is not negative.
        """

    @staticmethod
    def geometric_horn_baseline_mass(rho_horn: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, lambda_c: typing.SupportsFloat | typing.SupportsIndex, L_tot: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        The expression of geometric_baseline_mass on the horn envelope density, kg. ValueError if rho_horn is negative, or r_c or lambda_c not positive.
        """

    @staticmethod
    def topological_kernel(input: VKMTopologyKernelInput) -> float:
        """
        phi^(-2k) (alpha_C crossing + beta_L ropelength + gamma_H helicity) with k the golden layer. ValueError unless phi is positive.
        """

    @staticmethod
    def weak_swirl_clock_impedance(v_norm: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        1 + v_norm^2 / c^2, the first order of the clock impedance. ValueError unless c is positive.
        """

class ChronosKelvinTransport:
    """
    Transport of the swirl clock along the Kelvin invariant R^2 omega of an inviscid fluid.

    Static functions; R and r_c in m, rates in 1/s, c in m/s. ValueError unless R, r_c and c are
    positive. NaN is not rejected.
    """

    @staticmethod
    def chronos_kelvin_invariant(R: typing.SupportsFloat | typing.SupportsIndex, S_t: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        vorticity_from_swirl_clock(S_t, r_c, c) R^2, m^2/s.
        """

    @staticmethod
    def clock_radius_derivative(S_t: typing.SupportsFloat | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex, dR_dt: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        dS/dt = 2 (1 - S_t^2) / S_t (dR/dt) / R, 1/s, at a constant invariant. ValueError unless S_t and R
        are positive.
        """

    @staticmethod
    def kelvin_invariant(R: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        R^2 omega, m^2/s.
        """

    @staticmethod
    def omega_from_invariant(invariant: typing.SupportsFloat | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        invariant / R^2, rad/s.
        """

    @staticmethod
    def omega_from_swirl_clock(S_t: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        sqrt(1 - S_t^2) c / r_c, rad/s: the rate at which a core's clock runs at S_t. ValueError unless
        0 <= S_t <= 1.
        """

    @staticmethod
    def radius_from_clock_invariant(invariant: typing.SupportsFloat | typing.SupportsIndex, S_t: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        sqrt(invariant / vorticity_from_swirl_clock(S_t, r_c, c)), m; NaN for a negative invariant.
        ValueError at S_t = 1, where the vorticity is zero.
        """

    @staticmethod
    def swirl_clock_from_omega(omega: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        sqrt(max(1 - (omega r_c)^2 / (4 c^2), 0)), where omega is a vorticity in 1/s: the inverse of
        vorticity_from_swirl_clock. 0 beyond the light limit.
        """

    @staticmethod
    def vorticity_from_swirl_clock(S_t: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        Twice omega_from_swirl_clock, 1/s.
        """

class VKMTensionScales:
    """
    Closed-form force, coupling and spring scales on the canonical constants.

    Static functions in SI units. NaN is not rejected.
    """

    @staticmethod
    def F_gr_max(c: typing.SupportsFloat | typing.SupportsIndex, G: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Maximal force c^4 / (4 G) of general relativity, N. ValueError unless both are positive.
        """

    @staticmethod
    def F_swirl_max(hbar: typing.SupportsFloat | typing.SupportsIndex, omega_c: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Maximal swirl force hbar omega_c / (2 r_c), N. ValueError unless all are positive.
        """

    @staticmethod
    def coulomb_force_at_core(e_charge: typing.SupportsFloat | typing.SupportsIndex, epsilon_0: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Coulomb force e_charge^2 / (4 pi epsilon_0 r_c^2) of two charges at r_c, N. ValueError unless epsilon_0 and r_c are positive.
        """

    @staticmethod
    def dimensionless_stiffness_ratio(P_K: typing.SupportsFloat | typing.SupportsIndex, V_K: typing.SupportsFloat | typing.SupportsIndex, hbar: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Energy ratio P_K V_K / (hbar omega). ValueError if V_K is negative, or hbar or omega not positive.
        """

    @staticmethod
    def electron_spring_constant(F_swirl_max: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsFloat | typing.SupportsIndex=2.0) -> float:
        """
        Spring constant F_swirl_max / (n r_c), N/m. ValueError unless all are positive.
        """

    @staticmethod
    def electron_spring_energy(F_swirl_max: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsFloat | typing.SupportsIndex=2.0) -> float:
        """
        Energy k r_c^2 / 2 of the spring drawn out to r_c, J. ValueError unless all are positive.
        """

    @staticmethod
    def electron_spring_frequency(F_swirl_max: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, m_e: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsFloat | typing.SupportsIndex=2.0) -> float:
        """
        Angular frequency sqrt(k / m_e) of the electron on its spring, 1/s. ValueError unless all are positive; m_e is tested first.
        """

    @staticmethod
    def gravitational_fine_structure(G: typing.SupportsFloat | typing.SupportsIndex, m_e: typing.SupportsFloat | typing.SupportsIndex, hbar: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Gravitational coupling G m_e^2 / (hbar c). ValueError unless all are positive.
        """

    @staticmethod
    def rydberg_from_vkm(v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Rydberg-like wavenumber v_swirl^3 / (pi r_c c^3), 1/m. ValueError unless all are positive.
        """

    @staticmethod
    def swirl_impedance(P_K: typing.SupportsFloat | typing.SupportsIndex, v_K: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Impedance P_K / v_K of a pressure in Pa and a speed in m/s. ValueError unless v_K is positive.
        """

    @staticmethod
    def tension_ratio_from_couplings(alpha_g: typing.SupportsFloat | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Ratio 4 alpha_g / alpha of the swirl to the gravitational force scale. ValueError unless alpha is positive.
        """

class DelayModeResult:
    """
    How DelayModeSelector.solve_phase_locked_frequency ended.
    """

    def __init__(self) -> None:
        ...

    @property
    def converged(self) -> bool:
        """
        Whether the last step met the tolerance.
        """

    @converged.setter
    def converged(self, arg0: bool, /) -> None:
        ...

    @property
    def iterations(self) -> int:
        """
        Newton steps taken.
        """

    @iterations.setter
    def iterations(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def omega(self) -> float:
        """
        Frequency at which the iteration ended, rad/s.
        """

    @omega.setter
    def omega(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def residual(self) -> float:
        """
        Phase-lock residual at that frequency, rad/s.
        """

    @residual.setter
    def residual(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def tau(self) -> float:
        """
        The delay that was passed in, s.
        """

    @tau.setter
    def tau(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class DelayModeSelector:
    """
    Frequencies that a delayed feedback selects: the roots of Omega - omega0 + kappa sin(Omega tau).

    Static functions; frequencies and kappa in rad/s, tau in s, lengths in m, speeds in m/s. NaN is not
    rejected.
    """

    @staticmethod
    def circulation_delay(length: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        length / v_swirl, s. ValueError if length is negative or v_swirl not positive.
        """

    @staticmethod
    def core_turnover_delay(r_c: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        2 pi r_c / v_swirl, s. ValueError unless both are positive.
        """

    @staticmethod
    def discrete_mode_frequency(n: typing.SupportsInt | typing.SupportsIndex, tau: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        2 pi n / tau, rad/s, n an integer. ValueError unless tau is positive.
        """

    @staticmethod
    def phase_lock_residual(Omega: typing.SupportsFloat | typing.SupportsIndex, omega0: typing.SupportsFloat | typing.SupportsIndex, kappa: typing.SupportsFloat | typing.SupportsIndex, tau: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Omega - omega0 + kappa sin(Omega tau), rad/s.
        """

    @staticmethod
    def phase_lock_stability_slope(Omega: typing.SupportsFloat | typing.SupportsIndex, kappa: typing.SupportsFloat | typing.SupportsIndex, tau: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        kappa tau cos(Omega tau): the residual's derivative, less one.
        """

    @staticmethod
    def solve_phase_locked_frequency(omega0: typing.SupportsFloat | typing.SupportsIndex, kappa: typing.SupportsFloat | typing.SupportsIndex, tau: typing.SupportsFloat | typing.SupportsIndex, initial_guess: typing.SupportsFloat | typing.SupportsIndex=0.0, max_iter: typing.SupportsInt | typing.SupportsIndex=64, tol: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> DelayModeResult:
        """
        A root of phase_lock_residual by Newton's iteration, as a DelayModeResult.

        It starts at initial_guess, or at omega0 if that is exactly 0, and converges when a step is at most tol
        max(|omega|, 1). It ends unconverged after max_iter steps or where the derivative vanishes; neither
        raises. ValueError unless tau, max_iter and tol are positive.
        """

class AtomicBridgeModel:
    """
    From the scales of the swirling medium to those of the atom.

    Static functions in SI units: lengths in m, speeds in m/s, energies in J, circulations in m^2/s.
    NaN is not rejected.
    """

    @staticmethod
    def bohr_radius_vkm(r_c: typing.SupportsFloat | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        2 r_c / alpha^2, m. ValueError unless both are positive.
        """

    @staticmethod
    def clock_branch_factor(sigma: typing.SupportsFloat | typing.SupportsIndex, eta0: typing.SupportsFloat | typing.SupportsIndex, gamma: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        1 + sigma eta0 gamma.
        """

    @staticmethod
    def eta0(v_swirl: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        v_swirl / c. ValueError unless c is positive.
        """

    @staticmethod
    def frozen_linear_interaction(sigma: typing.SupportsFloat | typing.SupportsIndex, E_R: typing.SupportsFloat | typing.SupportsIndex, eta0: typing.SupportsFloat | typing.SupportsIndex, gamma: typing.SupportsFloat | typing.SupportsIndex, anticommutator_value: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        scalar_clock_potential_linear plus orbit_coupling_energy, J.
        """

    @staticmethod
    def gamma_from_uniform_vorticity(r: typing.SupportsFloat | typing.SupportsIndex, omega_z: typing.SupportsFloat | typing.SupportsIndex, Gamma0: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        pi r^2 omega_z / Gamma0: circulation in quanta. ValueError unless Gamma0 is positive.
        """

    @staticmethod
    def helical_packet_gamma(r: typing.SupportsFloat | typing.SupportsIndex, phi: typing.SupportsFloat | typing.SupportsIndex, z: typing.SupportsFloat | typing.SupportsIndex, t: typing.SupportsFloat | typing.SupportsIndex, A_gamma: typing.SupportsFloat | typing.SupportsIndex, w_r: typing.SupportsFloat | typing.SupportsIndex, w_z: typing.SupportsFloat | typing.SupportsIndex, v: typing.SupportsFloat | typing.SupportsIndex, m: typing.SupportsInt | typing.SupportsIndex, k: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        A_gamma exp(-r^2 / (2 w_r^2)) exp(-(z - v t)^2 / (2 w_z^2)) cos(m phi + k z - omega t), m an
        integer: a Gaussian packet with a helical phase. ValueError unless w_r and w_z are positive.
        """

    @staticmethod
    def lambda_vkm(rho_core: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        4 pi rho_core v_swirl^2 r_c^4, J m. ValueError unless all are positive.
        """

    @staticmethod
    def omega_z_from_displacement_gradient(Omega: typing.SupportsFloat | typing.SupportsIndex, dxi_dz: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        2 Omega dxi_dz, 1/s.
        """

    @staticmethod
    def orbit_coupling_energy(sigma: typing.SupportsFloat | typing.SupportsIndex, E_R: typing.SupportsFloat | typing.SupportsIndex, eta0: typing.SupportsFloat | typing.SupportsIndex, anticommutator_value: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        E_R eta0 sigma anticommutator_value / 2, J.
        """

    @staticmethod
    def pauli_barrier_scale(rho_f: typing.SupportsFloat | typing.SupportsIndex, Gamma0: typing.SupportsFloat | typing.SupportsIndex, L: typing.SupportsFloat | typing.SupportsIndex, a_cut: typing.SupportsFloat | typing.SupportsIndex, shape_factor: typing.SupportsFloat | typing.SupportsIndex=1.0) -> float:
        """
        rho_f Gamma0^2 / (4 pi) (L / a_cut) shape_factor. ValueError if rho_f or shape_factor is negative,
        or one of the others not positive.
        """

    @staticmethod
    def rydberg_energy(hbar: typing.SupportsFloat | typing.SupportsIndex, reduced_mass: typing.SupportsFloat | typing.SupportsIndex, a0: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        hbar^2 / (2 reduced_mass a0^2), J. ValueError unless all are positive.
        """

    @staticmethod
    def scalar_clock_potential_linear(sigma: typing.SupportsFloat | typing.SupportsIndex, E_R: typing.SupportsFloat | typing.SupportsIndex, eta0: typing.SupportsFloat | typing.SupportsIndex, gamma: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        -2 sigma E_R eta0 gamma, J.
        """

    @staticmethod
    def soft_core_force(r: typing.SupportsFloat | typing.SupportsIndex, Lambda: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        -Lambda r / (r^2 + r_c^2)^(3/2), N, odd in r. ValueError unless r_c is positive.
        """

    @staticmethod
    def soft_core_potential(r: typing.SupportsFloat | typing.SupportsIndex, Lambda: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        -Lambda / sqrt(r^2 + r_c^2), J: Plummer's softening of the Coulomb potential. ValueError unless
        r_c is positive.
        """

    @staticmethod
    def u_theta_uniform_vorticity(r: typing.SupportsFloat | typing.SupportsIndex, omega_z: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        r omega_z / 2, m/s: solid-body rotation.
        """

class SpectroscopicGap:
    """
    The energy gap of Kelvin waves on a core, beside atomic transitions and temperatures.

    Static functions; the electronvolt is 1.602176634e-19 J. NaN is not rejected.
    """

    @staticmethod
    def boltzmann_suppression(gap_joule: typing.SupportsFloat | typing.SupportsIndex, temperature_K: typing.SupportsFloat | typing.SupportsIndex, k_B: typing.SupportsFloat | typing.SupportsIndex=1.380649e-23) -> float:
        """
        exp(-gap_joule / (k_B temperature_K)). ValueError unless temperature_K and k_B are positive.
        """

    @staticmethod
    def ev_to_joule(E_ev: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Electronvolt to joule.
        """

    @staticmethod
    def gap_ratio(transition_ev: typing.SupportsFloat | typing.SupportsIndex, gap_ev: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        gap_ev / transition_ev. ValueError if transition_ev is zero.
        """

    @staticmethod
    def is_decoupled_from_atomic_transition(transition_ev: typing.SupportsFloat | typing.SupportsIndex, gap_ev: typing.SupportsFloat | typing.SupportsIndex, safety_factor: typing.SupportsFloat | typing.SupportsIndex=10.0) -> bool:
        """
        Whether gap_ev >= transition_ev safety_factor. ValueError if an energy is negative or the factor
        not positive.
        """

    @staticmethod
    def joule_to_ev(E_joule: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Joule to electronvolt.
        """

    @staticmethod
    def kelvin_gap_ev(hbar: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, multiplier: typing.SupportsFloat | typing.SupportsIndex=1.0) -> float:
        """
        kelvin_gap_joule in eV.
        """

    @staticmethod
    def kelvin_gap_joule(hbar: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, multiplier: typing.SupportsFloat | typing.SupportsIndex=1.0) -> float:
        """
        multiplier hbar v_swirl / r_c, J, for hbar in J s, v_swirl in m/s, r_c in m. ValueError unless all
        four are positive.
        """

class ClockSectorConstraints:
    """
    What the couplings c1 and c3 say about tensor waves.
    """

    def __init__(self) -> None:
        ...

    @property
    def c13(self) -> float:
        """
        c1 + c3.
        """

    @c13.setter
    def c13(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gw170817_ok(self) -> bool:
        """
        Whether the offset lies inside the tolerance.
        """

    @gw170817_ok.setter
    def gw170817_ok(self, arg0: bool, /) -> None:
        ...

    @property
    def tensor_speed(self) -> float:
        """
        Tensor speed in units of the speed of light.
        """

    @tensor_speed.setter
    def tensor_speed(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def tensor_speed_fractional_offset(self) -> float:
        """
        Tensor speed over the speed of light, less one.
        """

    @tensor_speed_fractional_offset.setter
    def tensor_speed_fractional_offset(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class ClockFieldEFT:
    """
    Effective field theory of a unit timelike clock field (Einstein-aether theory).

    Static functions. NaN is not rejected.
    """

    @staticmethod
    def c13(c1: typing.SupportsFloat | typing.SupportsIndex, c3: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        c1 + c3.
        """

    @staticmethod
    def constraints(c1: typing.SupportsFloat | typing.SupportsIndex, c3: typing.SupportsFloat | typing.SupportsIndex, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-15) -> ClockSectorConstraints:
        """
        ClockSectorConstraints of the couplings; its tensor_speed is dimensionless. ValueError unless
        1 - c13 is positive and tolerance not negative.
        """

    @staticmethod
    def effective_gravity_from_potential_gradient(grad_chi: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        -grad_chi, one component.
        """

    @staticmethod
    def poisson_source(rho_matter: typing.SupportsFloat | typing.SupportsIndex, G_eff: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        4 pi G_eff rho_matter, 1/s^2 for kg/m^3 and m^3/(kg s^2). ValueError if G_eff is negative.
        """

    @staticmethod
    def satisfies_gw170817(c13: typing.SupportsFloat | typing.SupportsIndex, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-15) -> bool:
        """
        Whether |tensor_speed_fractional_offset(c13)| <= tolerance (bound of the merger GW170817).
        ValueError if tolerance is negative or 1 - c13 not positive.
        """

    @staticmethod
    def tensor_speed(c13: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        c / sqrt(1 - c13), in the unit of c (m/s). ValueError unless c and 1 - c13 are positive.
        """

    @staticmethod
    def tensor_speed_fractional_offset(c13: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        1 / sqrt(1 - c13) - 1. ValueError unless 1 - c13 is positive.
        """

    @staticmethod
    def unit_timelike_from_gradient_minkowski(grad_chi: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(4)']) -> typing.Annotated[list[float], 'FixedSize(4)']:
        """
        grad_chi / sqrt(g0^2 - g1^2 - g2^2 - g3^2), a list of four. ValueError unless the gradient is
        timelike.
        """

class BiotSavart:
    """
    Biot-Savart sums over closed polylines and the helicity pipeline on grids.
    """

    @staticmethod
    def compute_invariants(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg2: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> tuple[float, float, float]:
        """
        compute_invariants(velocity, vorticity, r_sq): (H_charge, H_mass, a_mu).

        H_charge = sum v.w, H_mass = sum |w|^2 r_sq, a_mu = (H_charge / H_mass - 1) / 2. ValueError if the vorticity is shorter
        than the velocity, or r_sq shorter than the vorticity.
        """

    @staticmethod
    def compute_velocity(curve: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], grid_points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], circulation: typing.SupportsFloat | typing.SupportsIndex=1.0) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Velocity of a closed vortex polyline at grid points.

        Backward compatible with the historical 2-argument call; circulation defaults to 1.0.

        u(x) = circulation / (4 pi) sum dl x R / (|R|^3 + 1e-12), R from the midpoint of each of the N segments (Biot-Savart
        law). `curve` is a list of N points in m, closed by its last segment; `grid_points` a list of M points; `circulation` in
        m^2/s. Returns a list of M velocities in m/s; zeros for fewer than two curve points.
        """

    @staticmethod
    def compute_vorticity(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: typing.Annotated[collections.abc.Sequence[typing.SupportsInt | typing.SupportsIndex], 'FixedSize(3)'], arg2: typing.SupportsFloat | typing.SupportsIndex, /) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        compute_vorticity(velocity, shape, spacing): central differences on a periodic grid.

        The result is minus the textbook curl; the helicity invariants rest on this sign. `velocity` holds nx*ny*nz vectors,
        cell (i, j, k) at (i*ny + j)*nz + k; `shape` is (nx, ny, nz). ValueError if the list is too short.
        """

    @staticmethod
    def extract_interior(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: typing.Annotated[collections.abc.Sequence[typing.SupportsInt | typing.SupportsIndex], 'FixedSize(3)'], arg2: typing.SupportsInt | typing.SupportsIndex, /) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        extract_interior(field, shape, margin): cells at least `margin` cells away from every face.

        Empty if the margin is half an extent or more. ValueError for a negative margin or a list that is too short.
        """

class FourierBlock:
    """
    A closed curve as a truncated Fourier series.

    x(s) = sum_i a_x[i] cos((i + 1) s) + b_x[i] sin((i + 1) s), the same for y and z; s in radians, period 2 pi. Row i is
    harmonic i + 1; there is no constant term.
    """

    def __init__(self) -> None:
        ...

    @property
    def a_x(self) -> list[float]:
        """
        Cosine coefficients of x.
        """

    @a_x.setter
    def a_x(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def a_y(self) -> list[float]:
        """
        Cosine coefficients of y.
        """

    @a_y.setter
    def a_y(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def a_z(self) -> list[float]:
        """
        Cosine coefficients of z.
        """

    @a_z.setter
    def a_z(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def b_x(self) -> list[float]:
        """
        Sine coefficients of x.
        """

    @b_x.setter
    def b_x(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def b_y(self) -> list[float]:
        """
        Sine coefficients of y.
        """

    @b_y.setter
    def b_y(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def b_z(self) -> list[float]:
        """
        Sine coefficients of z.
        """

    @b_z.setter
    def b_z(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def header(self) -> str:
        """
        Text of the block's last % line.
        """

    @header.setter
    def header(self, arg0: str, /) -> None:
        ...

class fourier_knot:
    """
    A knot from a .fseries file: loadBlocks, selectMaxHarmonics, reconstruct.
    """

    def __init__(self) -> None:
        ...

    def loadBlocks(self, arg0: str, /) -> None:
        """
        Replace `blocks` by the blocks of the .fseries file at a path.

        A row counts only if it has exactly six numbers; headers are not kept. `activeBlock` and `points` stay as they are.

        Raises RuntimeError if the file cannot be opened; `blocks` is empty then.
        """

    def reconstruct(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        """
        Fill `points` with the given number of points at s = k 2 pi / N, the end point not repeated.

        Raises RuntimeError if `activeBlock` has no rows, ValueError if one of its vectors is shorter than a_x.
        """

    def selectMaxHarmonics(self) -> None:
        """
        Copy the first block with the most rows into `activeBlock`.

        Raises RuntimeError if there are no blocks.
        """

    @property
    def activeBlock(self) -> FourierBlock:
        """
        The block that reconstruct evaluates.
        """

    @activeBlock.setter
    def activeBlock(self, arg0: FourierBlock, /) -> None:
        ...

    @property
    def blocks(self) -> list[FourierBlock]:
        """
        Blocks of the last loadBlocks.
        """

    @blocks.setter
    def blocks(self, arg1: collections.abc.Sequence[FourierBlock], /) -> None:
        ...

    @property
    def points(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Points of the last reconstruct.
        """

    @points.setter
    def points(self, arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> None:
        ...

class SectorGate:
    """
    Whether the gate lambda_c / (pi r_c) multiplies a knot's mass.

    Members:

      Shielded

      Exposed

      Unknown
    """
    Exposed: typing.ClassVar[SectorGate]
    Shielded: typing.ClassVar[SectorGate]
    Unknown: typing.ClassVar[SectorGate]
    __members__: typing.ClassVar[dict[str, SectorGate]]

    @typing.overload
    def __eq__(self, other: SectorGate) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: SectorGate) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class KnotInvariants:
    """
    Catalogue metadata, curve descriptors and tube measures of a knot.
    """

    def __init__(self) -> None:
        ...

    @property
    def bending_energy(self) -> float:
        """
        Integral of curvature squared, 1 / length.
        """

    @bending_energy.setter
    def bending_energy(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def braid_index(self) -> int:
        """
        Braid index b.
        """

    @braid_index.setter
    def braid_index(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def chirality(self) -> int:
        """
        -1, 0 or 1.
        """

    @chirality.setter
    def chirality(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def contact_entropy(self) -> float:
        """
        Entropy of the contact multipliers, nats.
        """

    @contact_entropy.setter
    def contact_entropy(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def contact_residual(self) -> float:
        """
        Relative residual of the contact stress.
        """

    @contact_residual.setter
    def contact_residual(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def crossing_number(self) -> int:
        """
        Crossing number k.
        """

    @crossing_number.setter
    def crossing_number(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def dcsd_min(self) -> float:
        """
        Least doubly critical self-distance.
        """

    @dcsd_min.setter
    def dcsd_min(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def hyperbolic(self) -> bool:
        """
        Whether the knot is hyperbolic.
        """

    @hyperbolic.setter
    def hyperbolic(self, arg0: bool, /) -> None:
        ...

    @property
    def hyperbolic_volume(self) -> float:
        """
        Volume, 0 when not hyperbolic.
        """

    @hyperbolic_volume.setter
    def hyperbolic_volume(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def hyperbolic_volume_opt(self) -> float | None:
        """
        Set for a hyperbolic knot only; goes before hyperbolic_volume.
        """

    @hyperbolic_volume_opt.setter
    def hyperbolic_volume_opt(self, arg0: typing.SupportsFloat | typing.SupportsIndex | None, /) -> None:
        ...

    @property
    def kink_count(self) -> int:
        """
        Active curvature contacts.
        """

    @kink_count.setter
    def kink_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def min_self_distance(self) -> float:
        """
        Least distance of vertices that are not neighbours.
        """

    @min_self_distance.setter
    def min_self_distance(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def minrad_min(self) -> float:
        """
        Least discrete curvature radius.
        """

    @minrad_min.setter
    def minrad_min(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def name(self) -> str:
        """
        Knot name.
        """

    @name.setter
    def name(self, arg0: str, /) -> None:
        ...

    @property
    def ropelength(self) -> float | None:
        """
        Goes before ropelength_like where it is set.
        """

    @ropelength.setter
    def ropelength(self, arg0: typing.SupportsFloat | typing.SupportsIndex | None, /) -> None:
        ...

    @property
    def ropelength_diam(self) -> float:
        """
        Length over tube diameter.
        """

    @ropelength_diam.setter
    def ropelength_diam(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ropelength_like(self) -> float:
        """
        The ropelength measure that is always there.
        """

    @ropelength_like.setter
    def ropelength_like(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ropelength_lower_bound_ok(self) -> bool:
        """
        Whether the ropelength is one that a non-trivial knot can have.
        """

    @ropelength_lower_bound_ok.setter
    def ropelength_lower_bound_ok(self, arg0: bool, /) -> None:
        ...

    @property
    def ropelength_rad(self) -> float:
        """
        Length over tube radius.
        """

    @ropelength_rad.setter
    def ropelength_rad(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def seifert_genus(self) -> int:
        """
        Seifert genus g.
        """

    @seifert_genus.setter
    def seifert_genus(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def strut_count(self) -> int:
        """
        Active edge contacts.
        """

    @strut_count.setter
    def strut_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def thickness_rad(self) -> float:
        """
        Tube radius.
        """

    @thickness_rad.setter
    def thickness_rad(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def writhe(self) -> float:
        """
        Writhe of the curve.
        """

    @writhe.setter
    def writhe(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class CanonicalConstants:
    """
    Constants of the knot models, SI units. Independent numbers: a change of one changes no other.
    """

    def __init__(self) -> None:
        ...

    @property
    def c(self) -> float:
        """
        Speed of light, m/s.
        """

    @c.setter
    def c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def lambda_c(self) -> float:
        """
        Compton wavelength, m.
        """

    @lambda_c.setter
    def lambda_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def m_e(self) -> float:
        """
        Electron mass, kg.
        """

    @m_e.setter
    def m_e(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def r_c(self) -> float:
        """
        Core radius, m.
        """

    @r_c.setter
    def r_c(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_f(self) -> float:
        """
        Fluid density, kg/m^3.
        """

    @rho_f.setter
    def rho_f(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_horn(self) -> float:
        """
        Horn envelope density, kg/m^3.
        """

    @rho_horn.setter
    def rho_horn(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_m(self) -> float:
        """
        Mass-equivalent density, kg/m^3.
        """

    @rho_m.setter
    def rho_m(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def v_swirl(self) -> float:
        """
        Swirl speed, m/s.
        """

    @v_swirl.setter
    def v_swirl(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class KnotDerived:
    """
    The mass of a knot, and how it came about.
    """

    def __init__(self) -> None:
        ...

    @property
    def gate(self) -> SectorGate:
        """
        Sector.
        """

    @gate.setter
    def gate(self, arg0: SectorGate, /) -> None:
        ...

    @property
    def gate_factor(self) -> float:
        """
        Factor of the sector.
        """

    @gate_factor.setter
    def gate_factor(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def mass_kg(self) -> float:
        """
        Mass, kg.
        """

    @mass_kg.setter
    def mass_kg(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def mass_ratio(self) -> float:
        """
        Mass over the electron's mass.
        """

    @mass_ratio.setter
    def mass_ratio(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def note(self) -> str:
        """
        The formula used.
        """

    @note.setter
    def note(self, arg0: str, /) -> None:
        ...

    @property
    def valid(self) -> bool:
        """
        True once evaluated.
        """

    @valid.setter
    def valid(self, arg0: bool, /) -> None:
        ...

    @property
    def xi(self) -> float:
        """
        Topological factor.
        """

    @xi.setter
    def xi(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class SimpleInvariantXiModelParams:
    """
    Weights of SimpleInvariantXiModel, all 0 by default.
    """

    def __init__(self) -> None:
        ...

    @property
    def a_L(self) -> float:
        """
        Of the effective ropelength.
        """

    @a_L.setter
    def a_L(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_b(self) -> float:
        """
        Of the braid index.
        """

    @a_b.setter
    def a_b(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_chi(self) -> float:
        """
        Of the chirality.
        """

    @a_chi.setter
    def a_chi(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_g(self) -> float:
        """
        Of the genus.
        """

    @a_g.setter
    def a_g(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_k(self) -> float:
        """
        Of the crossing number.
        """

    @a_k.setter
    def a_k(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_vol(self) -> float:
        """
        Of the effective volume.
        """

    @a_vol.setter
    def a_vol(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class SimpleInvariantXiModel:
    """
    Xi as the exponential of a weighted sum.
    """

    def __init__(self, params: SimpleInvariantXiModelParams=...) -> None:
        ...

    def assign_gate(self, K: KnotInvariants) -> SectorGate:
        """
        Exposed above four crossings, else Shielded.
        """

    def compute_xi(self, K: KnotInvariants) -> float:
        """
        exp(a_vol V + a_b b + a_k k + a_g g + a_L L + a_chi chi), V and L the effective volume and ropelength.
        """

class VKMCanonicalXiModelParams:
    """
    Weights of VKMCanonicalXiModel, all 0 by default.
    """

    def __init__(self) -> None:
        ...

    @property
    def alpha_C(self) -> float:
        """
        Of C.
        """

    @alpha_C.setter
    def alpha_C(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def beta_L(self) -> float:
        """
        Of the effective ropelength.
        """

    @beta_L.setter
    def beta_L(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def delta_V(self) -> float:
        """
        Of the effective volume.
        """

    @delta_V.setter
    def delta_V(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gamma_H(self) -> float:
        """
        Of H.
        """

    @gamma_H.setter
    def gamma_H(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def golden_layer(self) -> int:
        """
        Powers of phi^-2.
        """

    @golden_layer.setter
    def golden_layer(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def use_crossing_number_as_C(self) -> bool:
        """
        C is the crossing number, else 0.
        """

    @use_crossing_number_as_C.setter
    def use_crossing_number_as_C(self, arg0: bool, /) -> None:
        ...

    @property
    def use_writhe_as_H(self) -> bool:
        """
        H is the writhe, else 0.
        """

    @use_writhe_as_H.setter
    def use_writhe_as_H(self, arg0: bool, /) -> None:
        ...

class VKMCanonicalXiModel:
    """
    Xi as a weighted sum on a golden layer.
    """

    def __init__(self, params: VKMCanonicalXiModelParams=...) -> None:
        ...

    def assign_gate(self, K: KnotInvariants) -> SectorGate:
        """
        Exposed for a hyperbolic knot above four crossings, else Shielded.
        """

    def compute_xi(self, K: KnotInvariants) -> float:
        """
        phi^(-2 golden_layer) (alpha_C C + beta_L L + gamma_H H + delta_V V), phi the golden ratio.
        """

class MassFunctional:
    """
    Masses from invariants. Raises ValueError unless r_c, lambda_c, m_e, rho_m and c are positive.
    """

    def __init__(self, constants: CanonicalConstants=...) -> None:
        ...

    def bare_master_mass_scale(self) -> float:
        """
        rho_m r_c^3, kg.
        """

    def baseline_mass_from_horn_ropelength(self, L_tot: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        The same with rho_horn. Raises ValueError for a negative rho_horn.
        """

    def baseline_mass_from_ropelength(self, L_tot: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        2 pi^3 rho_m r_c^5 L_tot / lambda_c^2, kg.
        """

    @typing.overload
    def evaluate(self, K: KnotInvariants, model: SimpleInvariantXiModel) -> KnotDerived:
        """
        KnotDerived by rho_m r_c^3 gate Xi / S^2, S = sqrt(1 - v_swirl^2 / c^2).
        """

    @typing.overload
    def evaluate(self, K: KnotInvariants, model: VKMCanonicalXiModel) -> KnotDerived:
        """
        KnotDerived by rho_m r_c^3 gate Xi / S^2, S = sqrt(1 - v_swirl^2 / c^2).
        """

    @typing.overload
    def evaluate_electron_normalized(self, K: KnotInvariants, model: SimpleInvariantXiModel) -> KnotDerived:
        """
        KnotDerived by the older form m_e gate Xi.
        """

    @typing.overload
    def evaluate_electron_normalized(self, K: KnotInvariants, model: VKMCanonicalXiModel) -> KnotDerived:
        """
        KnotDerived by the older form m_e gate Xi.
        """

    def gate_factor(self, G: SectorGate) -> float:
        """
        lambda_c / (pi r_c) for an exposed sector, else 1.
        """

class KnotState:
    """
    An entry of a data set. Only `inv` enters an evaluation.
    """

    def __init__(self) -> None:
        ...

    @property
    def contact_score(self) -> float | None:
        """
        The caller's, or None.
        """

    @contact_score.setter
    def contact_score(self, arg0: typing.SupportsFloat | typing.SupportsIndex | None, /) -> None:
        ...

    @property
    def derived(self) -> KnotDerived:
        """
        The caller's KnotDerived; the evaluators do not write it.
        """

    @derived.setter
    def derived(self, arg0: KnotDerived, /) -> None:
        ...

    @property
    def energy_score(self) -> float | None:
        """
        The caller's, or None.
        """

    @energy_score.setter
    def energy_score(self, arg0: typing.SupportsFloat | typing.SupportsIndex | None, /) -> None:
        ...

    @property
    def hopf_like_score(self) -> float | None:
        """
        The caller's, or None.
        """

    @hopf_like_score.setter
    def hopf_like_score(self, arg0: typing.SupportsFloat | typing.SupportsIndex | None, /) -> None:
        ...

    @property
    def inv(self) -> KnotInvariants:
        """
        KnotInvariants.
        """

    @inv.setter
    def inv(self, arg0: KnotInvariants, /) -> None:
        ...

class KnotReportRow:
    """
    A knot and its mass in a row.
    """

    def __init__(self) -> None:
        ...

    @property
    def L_tot(self) -> float:
        """
        Effective ropelength.
        """

    @L_tot.setter
    def L_tot(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def b(self) -> int:
        """
        Braid index.
        """

    @b.setter
    def b(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def g(self) -> int:
        """
        Seifert genus.
        """

    @g.setter
    def g(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gate(self) -> SectorGate:
        """
        Sector.
        """

    @gate.setter
    def gate(self, arg0: SectorGate, /) -> None:
        ...

    @property
    def k(self) -> int:
        """
        Crossing number.
        """

    @k.setter
    def k(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def mass_kg(self) -> float:
        """
        Mass, kg.
        """

    @mass_kg.setter
    def mass_kg(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def mass_ratio(self) -> float:
        """
        Mass over the electron's mass.
        """

    @mass_ratio.setter
    def mass_ratio(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def name(self) -> str:
        """
        Knot name.
        """

    @name.setter
    def name(self, arg0: str, /) -> None:
        ...

    @property
    def vol_h(self) -> float:
        """
        Effective volume.
        """

    @vol_h.setter
    def vol_h(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def xi(self) -> float:
        """
        Topological factor.
        """

    @xi.setter
    def xi(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class KnotPrediction:
    """
    The estimate of KnotParticleModel.
    """

    def __init__(self) -> None:
        ...

    @property
    def gate(self) -> SectorGate:
        """
        Sector.
        """

    @gate.setter
    def gate(self, arg0: SectorGate, /) -> None:
        ...

    @property
    def gate_factor(self) -> float:
        """
        Factor of the sector.
        """

    @gate_factor.setter
    def gate_factor(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def mass_kg(self) -> float:
        """
        Mass, kg.
        """

    @mass_kg.setter
    def mass_kg(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def mass_ratio(self) -> float:
        """
        Mass over the electron's mass.
        """

    @mass_ratio.setter
    def mass_ratio(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def note(self) -> str:
        """
        What the estimate rests on.
        """

    @note.setter
    def note(self, arg0: str, /) -> None:
        ...

    @property
    def xi(self) -> float:
        """
        Topological factor.
        """

    @xi.setter
    def xi(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class KnotParticleModelParams:
    """
    Weights of KnotParticleModel, all 0 by default.
    """

    def __init__(self) -> None:
        ...

    @property
    def a_L(self) -> float:
        """
        Of ropelength_like.
        """

    @a_L.setter
    def a_L(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_b(self) -> float:
        """
        Of the braid index.
        """

    @a_b.setter
    def a_b(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_g(self) -> float:
        """
        Of the genus.
        """

    @a_g.setter
    def a_g(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_k(self) -> float:
        """
        Of the crossing number.
        """

    @a_k.setter
    def a_k(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_sep(self) -> float:
        """
        Of 1 / min_self_distance, a length.
        """

    @a_sep.setter
    def a_sep(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_vol(self) -> float:
        """
        Of hyperbolic_volume.
        """

    @a_vol.setter
    def a_vol(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_wr(self) -> float:
        """
        Of the writhe.
        """

    @a_wr.setter
    def a_wr(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class KnotParticleModel:
    """
    A mass estimate with constants of its own.
    """

    def __init__(self, params: KnotParticleModelParams=...) -> None:
        ...

    def assign_gate(self, K: KnotInvariants) -> SectorGate:
        """
        Unknown unless min_self_distance is positive; Exposed if it is below 0.2, the bending energy above 20 or
        the crossing number 8 or more; else Shielded.
        """

    def compute_xi(self, K: KnotInvariants) -> float:
        """
        exp(a_L L + a_b b + a_k k + a_g g + a_vol V + a_wr writhe + a_sep / max(min_self_distance, 1e-9)), within
        1e-12 .. 1e12; L is ropelength_like and V is hyperbolic_volume.
        """

    def predict(self, K: KnotInvariants) -> KnotPrediction:
        """
        KnotPrediction: the electron's mass times gate factor and Xi.
        """

class IdealABComponent:
    """
    One component of an ideal knot or link.

    r(s) = A0 + B0 + the series `fourier`; s in radians.
    """

    def __init__(self) -> None:
        ...

    @property
    def A0(self) -> typing.Annotated[list[float], 'FixedSize(3)']:
        """
        The A triple of row 0.
        """

    @A0.setter
    def A0(self, arg0: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], /) -> None:
        ...

    @property
    def B0(self) -> typing.Annotated[list[float], 'FixedSize(3)']:
        """
        The B triple of row 0.
        """

    @B0.setter
    def B0(self, arg0: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], /) -> None:
        ...

    @property
    def component_index(self) -> int:
        """
        Attribute I of the opening tag.
        """

    @component_index.setter
    def component_index(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def fourier(self) -> FourierBlock:
        """
        The rows from harmonic 1 on.
        """

    @fourier.setter
    def fourier(self, arg0: FourierBlock, /) -> None:
        ...

class IdealABBlock:
    """
    One knot or link of the ideal database.
    """

    def __init__(self) -> None:
        ...

    @property
    def D(self) -> float:
        """
        Tube diameter.
        """

    @D.setter
    def D(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def L(self) -> float:
        """
        Length.
        """

    @L.setter
    def L(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def components(self) -> list[IdealABComponent]:
        """
        The components, in file order.
        """

    @components.setter
    def components(self, arg1: collections.abc.Sequence[IdealABComponent], /) -> None:
        ...

    @property
    def conway(self) -> str:
        """
        Conway notation.
        """

    @conway.setter
    def conway(self, arg0: str, /) -> None:
        ...

    @property
    def fourier(self) -> FourierBlock:
        """
        A copy of the first component's series.
        """

    @fourier.setter
    def fourier(self, arg0: FourierBlock, /) -> None:
        ...

    @property
    def id(self) -> str:
        """
        Attribute Id, as "3:1:1".
        """

    @id.setter
    def id(self, arg0: str, /) -> None:
        ...

    @property
    def n(self) -> int:
        """
        Number of components that the file states.
        """

    @n.setter
    def n(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def source_tag(self) -> str:
        """
        "AB", "HT" or "TL".
        """

    @source_tag.setter
    def source_tag(self, arg0: str, /) -> None:
        ...

class GeometricDescriptors:
    """
    Geometry of a Fourier curve: the result of describe_fourier_block.
    """

    @property
    def bending_energy(self) -> float:
        """
        Integral of curvature squared over arc length, 1 / length.
        """

    @property
    def length(self) -> float:
        """
        Curve length, in the units of the coefficients.
        """

    @property
    def min_self_distance(self) -> float:
        """
        Least distance between samples that are not neighbours.
        """

    @property
    def mode_energy(self) -> list[float]:
        """
        mode_energies of the block.
        """

    @property
    def writhe(self) -> float:
        """
        compute_writhe of the samples, dimensionless.
        """

class FourierResult:
    """
    Points and tangents: the result of evaluate_fourier_series.
    """

    @property
    def positions(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Points, one a parameter.
        """

    @property
    def tangents(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Derivatives by the parameter, not normalised.
        """

class LoadedKnot:
    """
    A sampled, centred knot: an entry of the result of load_all_knots.
    """

    def get_curvature_array(self) -> numpy.typing.NDArray[numpy.float64]:
        """
        Get curvature as NumPy array (N,)
        """

    def get_points_array(self) -> numpy.typing.NDArray[numpy.float64]:
        """
        Get points as NumPy array (N,3)
        """

    @property
    def curvature(self) -> list[float]:
        """
        compute_curvature of the samples.
        """

    @property
    def name(self) -> str:
        """
        Name derived from the path.
        """

    @property
    def points(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Centred samples; the first point is repeated as the last.
        """

class VortexKnotSystem:
    """
    A closed vortex filament evolved by explicit Euler under the Biot-Savart law.
    """

    def __init__(self, circulation: typing.SupportsFloat | typing.SupportsIndex=1.0) -> None:
        """
        An empty system with a circulation in m^2/s.
        """

    def evolve(self, dt: typing.SupportsFloat | typing.SupportsIndex, steps: typing.SupportsInt | typing.SupportsIndex) -> None:
        """
        Take `steps` Euler steps of `dt` seconds under the filament's own Biot-Savart velocity.

        An interrupted call leaves the state as it was. RuntimeError from within another call that changes the same system (in a
        signal's handler, or another thread).
        """

    def get_positions(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Positions in m, a new list.
        """

    def get_tangents(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Element vectors in m: half of the difference of the neighbours. A new list.
        """

    def initialize_figure8_knot(self, resolution: typing.SupportsInt | typing.SupportsIndex=400) -> None:
        """
        Put the filament on the figure-eight knot (cos 3t (cos 2t + 2), sin 3t (cos 2t + 2), sin 4t).
        """

    def initialize_knot_from_name(self, knot_id: str, resolution: typing.SupportsInt | typing.SupportsIndex=1000) -> None:
        """
        Put the filament on a knot of the catalogue, as "3_1", or of a .fseries file found on disk.

        The curve is centred and sampled at both ends of its period: the last point repeats the first. RuntimeError if the knot
        cannot be found or read; the system then keeps its state.
        """

    def initialize_trefoil_knot(self, resolution: typing.SupportsInt | typing.SupportsIndex=400) -> None:
        """
        Put the filament on the torus-knot trefoil (cos 2t (cos 3t + 2), sin 2t (cos 3t + 2), sin 3t).
        """

class MagnusBernoulliIntegrator:
    """
    Forces of a swirling medium on a vortex segment; SI units.
    """

    def __init__(self, rho_f: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, Gamma: typing.SupportsFloat | typing.SupportsIndex) -> None:
        """
        From the density (kg/m^3), swirl speed (m/s), core radius (m) and circulation (m^2/s). Nothing is checked.
        """

    def compute_magnus_force(self, tangent: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], normal: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], curvature_radius: typing.SupportsFloat | typing.SupportsIndex, v_knot: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], v_bg: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> typing.Annotated[list[float], 'FixedSize(3)']:
        """
        rho_f Gamma (tangent x (v_knot - v_bg) + normal / curvature_radius): the Magnus force a length, and a
        term of curvature that carries no velocity. A radius of at most 1e-30 m drops that term.
        """

    def compute_swirl_coulomb_accel(self, eval_pos: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], source_pos: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> typing.Annotated[list[float], 'FixedSize(3)']:
        """
        -(v_swirl^2 / r) exp(-2 r / r_c) along R / r with R = eval_pos - source_pos, m/s^2: a short-range pull
        toward the source. Zero for r < 1e-30 and where -2 r / r_c < -700.
        """

class MultisectorFitter:
    """
    Multisector primitive-cycle products and an objective for fitting them.
    """

    @typing.overload
    @staticmethod
    def evaluate_multisector(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.complex128]:
        """
        Evaluate the full multisector primitive-cycle product Phi_pc(t).
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.complex128]:
        """
        Evaluate the full multisector primitive-cycle product Phi_pc(t).
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_abs(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        Evaluate |Phi_pc(t)| for the full multisector primitive-cycle product.
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_abs(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        Evaluate |Phi_pc(t)| for the full multisector primitive-cycle product.
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @staticmethod
    def evaluate_sector(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], nu: typing.SupportsInt | typing.SupportsIndex, theta_nu: typing.SupportsFloat | typing.SupportsIndex, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.complex128]:
        """
        Evaluate one sector zeta Z_nu(1/2 + i t).
        The product over m <= truncation_M of 1 / (1 - 2 cos(m theta) z + z^2), z = exp(-s nu m ell_trefoil),
        s = 1/2 + i t, at each of t_values (n,). RuntimeError for t_values that are not 1-D.
        """

    @typing.overload
    @staticmethod
    def objective_near_nodes(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex, beta: typing.SupportsFloat | typing.SupportsIndex, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None) -> float:
        """
        Objective function for fitting multisector phases against near-node targets.
        The weighted sum of squared distances between the deepest minima of |Phi_pc|, in ascending t, and
        target_nodes, which are paired by position; 1e300 for fewer minima than targets. RuntimeError as in
        evaluate_multisector.
        """

    @typing.overload
    @staticmethod
    def objective_near_nodes(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None) -> float:
        """
        Objective function for fitting multisector phases against near-node targets.
        The weighted sum of squared distances between the deepest minima of |Phi_pc|, in ascending t, and
        target_nodes, which are paired by position; 1e300 for fewer minima than targets. RuntimeError as in
        evaluate_multisector.
        """

class NodeAnalyzer:
    """
    Local minima of a sampled curve, ranked by depth.
    """

    @staticmethod
    def extra_minima_penalty(t: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], target_halfwidth: typing.SupportsFloat | typing.SupportsIndex, sigma_extra: typing.SupportsFloat | typing.SupportsIndex, penalize_all_extra_minima: bool=True) -> float:
        """
        The sum of exp(-y / sigma_extra) over the local minima outside all target windows, or its first term alone
        unless penalize_all_extra_minima.
        """

    @staticmethod
    def local_maxima_indices(y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> numpy.typing.NDArray[numpy.int64]:
        """
        Indices 1 .. n - 2 with y(i) at least both neighbours. Inclusive.
        """

    @staticmethod
    def local_minima_indices(y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> numpy.typing.NDArray[numpy.int64]:
        """
        Indices 1 .. n - 2 with both neighbours at least y(i). Inclusive: every inner point of a flat stretch counts.
        """

    @staticmethod
    def strongest_minima_t(t: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], keep_count: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
        """
        The t of the keep_count deepest local minima of y, ascending. t and y have the same shape (n,).
        """

    @staticmethod
    def strongest_minima_t_with_neighborhood_exclusion(t: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], target_halfwidth: typing.SupportsFloat | typing.SupportsIndex, keep_only_outside: bool, keep_count: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
        """
        strongest_minima_t of the minima outside all windows [target - target_halfwidth, target + target_halfwidth],
        bounds included, or inside any of them unless keep_only_outside.
        """

    @staticmethod
    def strongest_minima_values(y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], keep_count: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
        """
        The keep_count least values at local minima of y, ascending.
        """

class TraceFormula:
    """
    Logarithm of the multisector product, its derivative, and phase densities.
    """

    @typing.overload
    @staticmethod
    def evaluate_multisector_dlogz_ds(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.complex128]:
        """
        d ln Phi_pc / ds at s = 1/2 + i t for each of t_values (n,), without the completion factor. NaN where a factor
        is not finite; not finite where a factor vanishes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_dlogz_ds(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.complex128]:
        """
        d ln Phi_pc / ds at s = 1/2 + i t for each of t_values (n,), without the completion factor. NaN where a factor
        is not finite; not finite where a factor vanishes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_logz(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.complex128]:
        """
        ln Phi_pc without the completion factor at each of t_values (n,): -sum of w (ln|D| + i arg D) over sectors and
        m <= truncation_M, D = 1 - 2 cos(m theta) z + z^2. The imaginary part is a sum of principal values, not reduced.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_logz(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.complex128]:
        """
        ln Phi_pc without the completion factor at each of t_values (n,): -sum of w (ln|D| + i arg D) over sectors and
        m <= truncation_M, D = 1 - 2 cos(m theta) z + z^2. The imaginary part is a sum of principal values, not reduced.
        """

    @staticmethod
    def phase_derivative_from_xi(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], xi_values: typing.Annotated[numpy.typing.ArrayLike, numpy.complex128]) -> numpy.typing.NDArray[numpy.float64]:
        """
        -d arg(xi) / dt by central differences of the unwrapped phase, shape (n,); the ends copy their neighbours.
        Zero where both neighbours have the same t, and all zeros for n < 3.
        """

class MultisectorFitterV2:
    """
    Multisector primitive-cycle products, truncation scans, and objectives that suppress extra minima.
    """

    @staticmethod
    def completion_factor(s: complex | typing.SupportsComplex | typing.SupportsFloat | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> complex:
        """
        1 (mode 0) or exp(alpha s + beta) (mode 1); RuntimeError for another mode.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.complex128]:
        """
        Evaluate the full multisector primitive-cycle product Phi_pc(t).
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.complex128]:
        """
        Evaluate the full multisector primitive-cycle product Phi_pc(t).
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_abs(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        Evaluate |Phi_pc(t)| for the full multisector primitive-cycle product.
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_abs(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        Evaluate |Phi_pc(t)| for the full multisector primitive-cycle product.
        t_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes
        prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the
        completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,
        lengths that differ and other modes.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_abs_batch_M(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_values: typing.Annotated[numpy.typing.ArrayLike, numpy.int64], completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        evaluate_multisector_abs for each of truncation_values (r,), shape (r, n). Each row has the bits of an
        evaluation of its own, but each term is computed once for all rows. ValueError for a negative truncation.
        """

    @typing.overload
    @staticmethod
    def evaluate_multisector_abs_batch_M(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_values: typing.Annotated[numpy.typing.ArrayLike, numpy.int64], completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        evaluate_multisector_abs for each of truncation_values (r,), shape (r, n). Each row has the bits of an
        evaluation of its own, but each term is computed once for all rows. ValueError for a negative truncation.
        """

    @staticmethod
    def evaluate_sector(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], nu: typing.SupportsInt | typing.SupportsIndex, theta_nu: typing.SupportsFloat | typing.SupportsIndex, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.complex128]:
        """
        One sector zeta at each of t_values (n,). The completion arguments are accepted and have no effect: a single
        sector is never multiplied by the completion factor.
        """

    @staticmethod
    def evaluate_sector_abs(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], nu: typing.SupportsInt | typing.SupportsIndex, theta_nu: typing.SupportsFloat | typing.SupportsIndex, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        Magnitude of evaluate_sector. The completion arguments are accepted and have no effect.
        """

    @typing.overload
    @staticmethod
    def objective_near_nodes(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex, beta: typing.SupportsFloat | typing.SupportsIndex, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None) -> float:
        """
        Objective function for fitting multisector phases against near-node targets.
        The weighted sum of squared distances between the deepest minima of |Phi_pc|, in ascending t, and
        target_nodes, which are paired by position; 1e300 for fewer minima than targets. RuntimeError as in
        evaluate_multisector.
        """

    @typing.overload
    @staticmethod
    def objective_near_nodes(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None) -> float:
        """
        Objective function for fitting multisector phases against near-node targets.
        The weighted sum of squared distances between the deepest minima of |Phi_pc|, in ascending t, and
        target_nodes, which are paired by position; 1e300 for fewer minima than targets. RuntimeError as in
        evaluate_multisector.
        """

    @typing.overload
    @staticmethod
    def objective_suppressed(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex, beta: typing.SupportsFloat | typing.SupportsIndex, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, lambda_extra: typing.SupportsFloat | typing.SupportsIndex=0.5, sigma_extra: typing.SupportsFloat | typing.SupportsIndex=0.05, lambda_reg: typing.SupportsFloat | typing.SupportsIndex=0.01, target_halfwidth: typing.SupportsFloat | typing.SupportsIndex=0.35, penalize_all_extra_minima: bool=True) -> float:
        """
        objective_near_nodes + lambda_extra times a penalty for minima outside the target windows
        + lambda_reg times the sum of (w - 1)^2; the "total" of objective_suppressed_breakdown.
        """

    @typing.overload
    @staticmethod
    def objective_suppressed(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, lambda_extra: typing.SupportsFloat | typing.SupportsIndex=0.5, sigma_extra: typing.SupportsFloat | typing.SupportsIndex=0.05, lambda_reg: typing.SupportsFloat | typing.SupportsIndex=0.01, target_halfwidth: typing.SupportsFloat | typing.SupportsIndex=0.35, penalize_all_extra_minima: bool=True) -> float:
        """
        objective_near_nodes + lambda_extra times a penalty for minima outside the target windows
        + lambda_reg times the sum of (w - 1)^2; the "total" of objective_suppressed_breakdown.
        """

    @typing.overload
    @staticmethod
    def objective_suppressed_breakdown(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex, beta: typing.SupportsFloat | typing.SupportsIndex, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, lambda_extra: typing.SupportsFloat | typing.SupportsIndex=0.5, sigma_extra: typing.SupportsFloat | typing.SupportsIndex=0.05, lambda_reg: typing.SupportsFloat | typing.SupportsIndex=0.01, target_halfwidth: typing.SupportsFloat | typing.SupportsIndex=0.35, penalize_all_extra_minima: bool=True) -> results.SuppressedObjective:
        """
        Dict with "total", "mismatch" (objective_near_nodes), "extra_penalty" (the sum of
        exp(-|Phi_pc| / sigma_extra) over the minima outside the windows target_nodes +- target_halfwidth,
        or its first term alone unless penalize_all_extra_minima) and "reg_penalty" (the sum of (w - 1)^2).
        For fewer minima than targets total is 1e300 and the others are 0.
        """

    @typing.overload
    @staticmethod
    def objective_suppressed_breakdown(t_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sectors: typing.Annotated[numpy.typing.ArrayLike, numpy.int32], thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], sector_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, *, ell_trefoil: typing.SupportsFloat | typing.SupportsIndex, truncation_M: typing.SupportsInt | typing.SupportsIndex, completion_mode: typing.SupportsInt | typing.SupportsIndex=0, alpha: typing.SupportsFloat | typing.SupportsIndex=0.0, beta: typing.SupportsFloat | typing.SupportsIndex=0.0, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], node_weights: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, lambda_extra: typing.SupportsFloat | typing.SupportsIndex=0.5, sigma_extra: typing.SupportsFloat | typing.SupportsIndex=0.05, lambda_reg: typing.SupportsFloat | typing.SupportsIndex=0.01, target_halfwidth: typing.SupportsFloat | typing.SupportsIndex=0.35, penalize_all_extra_minima: bool=True) -> results.SuppressedObjective:
        """
        Dict with "total", "mismatch" (objective_near_nodes), "extra_penalty" (the sum of
        exp(-|Phi_pc| / sigma_extra) over the minima outside the windows target_nodes +- target_halfwidth,
        or its first term alone unless penalize_all_extra_minima) and "reg_penalty" (the sum of (w - 1)^2).
        For fewer minima than targets total is 1e300 and the others are 0.
        """

    @staticmethod
    def phase_invariants(thetas: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> results.PhaseInvariants:
        """
        Dict with "delta23" = theta(0) - theta(1), "delta35" = theta(1) - theta(2) and "theta_sum_mod", their sum
        modulo 2 pi, from the first three phases / rad; all NaN for fewer.
        """

class TimeEvolution:
    """
    A closed vortex filament evolved from a given state.
    """

    def __init__(self, initial_positions: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], initial_tangents: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], gamma: typing.SupportsFloat | typing.SupportsIndex=1.0) -> None:
        """
        Start from positions (m), their element vectors (m) and a circulation gamma (m^2/s).

        The tangents stay as given until the first step.
        """

    def evolve(self, dt: typing.SupportsFloat | typing.SupportsIndex, steps: typing.SupportsInt | typing.SupportsIndex) -> None:
        """
        Take `steps` Euler steps of `dt` seconds under the filament's own Biot-Savart velocity.

        An interrupted call leaves the state as it was. RuntimeError from within another step of the same object (in a signal's
        handler, or another thread). ValueError if there are fewer tangents than positions.
        """

    def get_positions(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Positions in m, a new list.
        """

    def get_tangents(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        Element vectors in m, a new list.
        """

class DensityRegime:
    """
    Which density the fluid of a loop has.

    Members:

      EFFECTIVE_FLUID : 7e-7 kg/m^3.

      CORE_DOMINATED : 3.893435826691869e18 kg/m^3.
    """
    CORE_DOMINATED: typing.ClassVar[DensityRegime]
    EFFECTIVE_FLUID: typing.ClassVar[DensityRegime]
    __members__: typing.ClassVar[dict[str, DensityRegime]]

    @typing.overload
    def __eq__(self, other: DensityRegime) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: DensityRegime) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class GoldenNLSClosure:
    """
    Energy of a thin vortex loop closed by the golden ratio, and the loop that has a given mass.

    E(R) = (ln(8 R / r_c) - phi) rho/2 Gamma^2 R, with r_c = 1.40897017e-15 m, Gamma = 9.683619203e-9 m^2/s and the density rho of the regime. With x = R / r_c and S = rho Gamma^2 / (2 c^2) r_c a mass M is met at the root of f(x) = (ln(8 x) - phi) x - M / S. SI units. Whatever needs the density raises RuntimeError for a regime that is no member.
    """

    @staticmethod
    def infer_effective_base(ratio: typing.SupportsFloat | typing.SupportsIndex, exponent_n: typing.SupportsInt | typing.SupportsIndex) -> float:
        """
        The root ratio^(1 / exponent_n). ValueError unless both are positive.
        """

    @staticmethod
    def predicted_ratio_from_base(base: typing.SupportsFloat | typing.SupportsIndex, exponent_n: typing.SupportsInt | typing.SupportsIndex) -> float:
        """
        The power base^exponent_n. ValueError unless base is positive.
        """

    @staticmethod
    def relative_error(predicted: typing.SupportsFloat | typing.SupportsIndex, observed: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        |predicted - observed| / |observed|. ValueError if observed is 0.
        """

    def __init__(self, regime: DensityRegime=...) -> None:
        """
        A loop in this regime.
        """

    def calculate_loop_energy(self, R: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Energy of a loop of radius R in m, J. There is no guard on R.
        """

    def calculate_loop_mass(self, R: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Mass E(R) / c^2 of the loop, kg.
        """

    def calculate_screened_mass(self, bare_mass: typing.SupportsFloat | typing.SupportsIndex, double_k: typing.SupportsInt | typing.SupportsIndex) -> float:
        """
        bare_mass phi^(-double_k).
        """

    def geometric_ratio_residual(self, x: typing.SupportsFloat | typing.SupportsIndex, target_mass: typing.SupportsFloat | typing.SupportsIndex=9.10938356e-31) -> float:
        """
        f(x) for a mass in kg. ValueError unless x is positive; NaN is not rejected. Outside the core-dominated regime each evaluation warns with a line on the process's standard error.
        """

    def get_active_density(self) -> float:
        """
        Density of the regime, kg/m^3.
        """

    def infer_geometric_ratio(self, target_mass: typing.SupportsFloat | typing.SupportsIndex=9.10938356e-31, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-12, max_iter: typing.SupportsInt | typing.SupportsIndex=100) -> float:
        """
        The x of a mass in kg by Newton's iteration from x = 1, up to a last step below tolerance.

        RuntimeError if max_iter steps don't reach it. Outside the core-dominated regime a line on the process's standard error warns.
        """

    def infer_geometric_ratio_safe(self, target_mass: typing.SupportsFloat | typing.SupportsIndex=9.10938356e-31, x0: typing.SupportsFloat | typing.SupportsIndex=1.0, x_min: typing.SupportsFloat | typing.SupportsIndex=1e-06, x_max: typing.SupportsFloat | typing.SupportsIndex=10.0, x_tol: typing.SupportsFloat | typing.SupportsIndex=1e-12, f_tol: typing.SupportsFloat | typing.SupportsIndex=1e-12, max_iter: typing.SupportsInt | typing.SupportsIndex=100) -> float:
        """
        The x of a mass in kg by Newton's iteration from x0 inside (x_min, x_max), else by bisection.

        A bracket without a change of sign is widened up to 12 times; bisection takes up to 4 max_iter steps, until |f| < f_tol or half the bracket is below x_tol. ValueError unless 0 < x_min < x_max; RuntimeError for a residual that is not finite, no bracket, or no convergence.
        """

    def set_regime(self, regime: DensityRegime) -> None:
        """
        Change the density.
        """

class VKMGravity:
    """
    Gravity-like effects of a swirling medium, sample by sample.

    Static functions. Fields are arrays of shape (N, 3), radii of shape (N,); ValueError for other
    shapes. Results are lists of N floats. NaN is not rejected.
    """

    @staticmethod
    def compute_G_swirl(v_swirl: typing.SupportsFloat | typing.SupportsIndex, t_p: typing.SupportsFloat | typing.SupportsIndex, F_max: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
        """
        c^5 v_swirl t_p^2 / (2 F_max r_c^2), one float in m^3/(kg s^2) for SI units. ValueError unless
        F_max and r_c are positive.
        """

    @staticmethod
    def compute_beltrami_shear(B_field: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], Curl_B: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> list[float]:
        """
        |B x curl B|, zero for a Beltrami field. ValueError if the sizes differ.
        """

    @staticmethod
    def compute_gravity_dilation(B_field: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], omega_drive: typing.SupportsFloat | typing.SupportsIndex, v_swirl: typing.SupportsFloat | typing.SupportsIndex, B_saturation: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
        """
        1 - (|B| / B_saturation) log10(omega_drive), clamped to 0 and 1; without the second term unless
        omega_drive > 0. v_swirl takes no part. ValueError unless B_saturation is positive.
        """

    @staticmethod
    def compute_helicity_density(A_field: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], B_field: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> list[float]:
        """
        A . B. ValueError if the sizes differ.
        """

    @staticmethod
    def compute_swirl_clock(v_swirl_field: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], v_swirl: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
        """
        sqrt(max(1 - |v|^2 / v_swirl^2, 0)).
        """

    @staticmethod
    def compute_swirl_coulomb_force(radii: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], Lambda: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
        """
        -Lambda r / (r^2 + r_c^2)^(3/2), and 0 where the denominator is 0. ValueError unless r_c is positive.
        """

    @staticmethod
    def compute_swirl_coulomb_potential(radii: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], Lambda: typing.SupportsFloat | typing.SupportsIndex, r_c: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
        """
        -Lambda / sqrt(r^2 + r_c^2): Plummer's softening. ValueError unless r_c is positive.
        """

    @staticmethod
    def compute_swirl_energy_density(v_field: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], rho_f: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
        """
        rho_f |v|^2 / 2, J/m^3 for m/s and kg/m^3.
        """

class CanonicalizeResult:
    """
    What canonicalize_fseries_file_inplace found and did.
    """

    def __init__(self) -> None:
        ...

    @property
    def changed(self) -> bool:
        """
        Whether the file was written.
        """

    @changed.setter
    def changed(self, arg0: bool, /) -> None:
        ...

    @property
    def found_numeric_rows(self) -> int:
        """
        Rows of three or six numbers.
        """

    @found_numeric_rows.setter
    def found_numeric_rows(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def path(self) -> str:
        """
        The file.
        """

    @path.setter
    def path(self, arg0: str, /) -> None:
        ...

    @property
    def reason(self) -> str:
        """
        Why, or why not.
        """

    @reason.setter
    def reason(self, arg0: str, /) -> None:
        ...

class HelicityResult:
    """
    Helicity and discrete measures of a file's curve.
    """

    def __init__(self) -> None:
        ...

    @property
    def Hc(self) -> float:
        """
        H_charge.
        """

    @Hc.setter
    def Hc(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def Hm(self) -> float:
        """
        H_mass.
        """

    @Hm.setter
    def Hm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def L(self) -> float:
        """
        Polygon length.
        """

    @L.setter
    def L(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_mu(self) -> float:
        """
        Ratio of the invariants.
        """

    @a_mu.setter
    def a_mu(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def bend_energy(self) -> float:
        """
        Sum of curvature squared, 1 / length.
        """

    @bend_energy.setter
    def bend_energy(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kappa_max(self) -> float:
        """
        Greatest discrete curvature, 1 / length.
        """

    @kappa_max.setter
    def kappa_max(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kappa_mean(self) -> float:
        """
        Mean discrete curvature, 1 / length.
        """

    @kappa_mean.setter
    def kappa_mean(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def min_non_neighbor_dist(self) -> float:
        """
        Least distance of samples more than 3 apart.
        """

    @min_non_neighbor_dist.setter
    def min_non_neighbor_dist(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def nsamples(self) -> int:
        """
        Samples.
        """

    @nsamples.setter
    def nsamples(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def path(self) -> str:
        """
        The file.
        """

    @path.setter
    def path(self, arg0: str, /) -> None:
        ...

    @property
    def reach_proxy(self) -> float:
        """
        Tube radius of the polygon.
        """

    @reach_proxy.setter
    def reach_proxy(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class FilamentEnergyParams:
    """
    Parameters of compute_filament_energy_from_fseries.
    """

    def __init__(self) -> None:
        ...

    @property
    def Gamma(self) -> float:
        """
        Circulation.
        """

    @Gamma.setter
    def Gamma(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_core(self) -> float:
        """
        Core radius.
        """

    @a_core.setter
    def a_core(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def c_rankine_outer(self) -> float:
        """
        Constant of the local match.
        """

    @c_rankine_outer.setter
    def c_rankine_outer(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def delta(self) -> float:
        """
        If positive, pairs within this distance do not count.
        """

    @delta.setter
    def delta(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def include_core_int(self) -> bool:
        """
        Whether the core's term is taken.
        """

    @include_core_int.setter
    def include_core_int(self, arg0: bool, /) -> None:
        ...

    @property
    def include_local_match(self) -> bool:
        """
        Whether the local match is taken.
        """

    @include_local_match.setter
    def include_local_match(self, arg0: bool, /) -> None:
        ...

    @property
    def include_nonlocal(self) -> bool:
        """
        Whether the nonlocal term is taken.
        """

    @include_nonlocal.setter
    def include_nonlocal(self, arg0: bool, /) -> None:
        ...

    @property
    def nsamples(self) -> int:
        """
        Samples.
        """

    @nsamples.setter
    def nsamples(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_local(self) -> float:
        """
        Density of the local terms.
        """

    @rho_local.setter
    def rho_local(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_outer(self) -> float:
        """
        Density of the nonlocal term.
        """

    @rho_outer.setter
    def rho_outer(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def s_cut_local(self) -> float:
        """
        Arc length of the local region.
        """

    @s_cut_local.setter
    def s_cut_local(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def skip_neighbors_base(self) -> int:
        """
        Least neighbour skip.
        """

    @skip_neighbors_base.setter
    def skip_neighbors_base(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

class FilamentEnergyResult:
    """
    Discrete measures and energies of a file's curve.
    """

    def __init__(self) -> None:
        ...

    @property
    def E_core_int(self) -> float:
        """
        Energy of the core.
        """

    @E_core_int.setter
    def E_core_int(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def E_local_match(self) -> float:
        """
        Energy of the local match.
        """

    @E_local_match.setter
    def E_local_match(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def E_nonlocal(self) -> float:
        """
        Nonlocal energy.
        """

    @E_nonlocal.setter
    def E_nonlocal(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def E_total(self) -> float:
        """
        Sum of the three.
        """

    @E_total.setter
    def E_total(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def Gamma(self) -> float:
        """
        As used.
        """

    @Gamma.setter
    def Gamma(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def L(self) -> float:
        """
        Polygon length.
        """

    @L.setter
    def L(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def a_core(self) -> float:
        """
        As used.
        """

    @a_core.setter
    def a_core(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def bend_energy(self) -> float:
        """
        Sum of curvature squared, 1 / length.
        """

    @bend_energy.setter
    def bend_energy(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def c_rankine_outer(self) -> float:
        """
        As used.
        """

    @c_rankine_outer.setter
    def c_rankine_outer(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def delta(self) -> float:
        """
        As used.
        """

    @delta.setter
    def delta(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ds_avg(self) -> float:
        """
        Mean edge length.
        """

    @ds_avg.setter
    def ds_avg(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kappa_max(self) -> float:
        """
        Greatest discrete curvature, 1 / length.
        """

    @kappa_max.setter
    def kappa_max(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kappa_mean(self) -> float:
        """
        Mean discrete curvature, 1 / length.
        """

    @kappa_mean.setter
    def kappa_mean(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def m_loc(self) -> int:
        """
        Neighbours that the nonlocal term leaves out.
        """

    @m_loc.setter
    def m_loc(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def min_non_neighbor_dist(self) -> float:
        """
        Least distance of samples beyond the skip.
        """

    @min_non_neighbor_dist.setter
    def min_non_neighbor_dist(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def nsamples(self) -> int:
        """
        Samples.
        """

    @nsamples.setter
    def nsamples(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def path(self) -> str:
        """
        The file.
        """

    @path.setter
    def path(self, arg0: str, /) -> None:
        ...

    @property
    def reach_proxy(self) -> float:
        """
        Tube radius of the polygon.
        """

    @reach_proxy.setter
    def reach_proxy(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_local(self) -> float:
        """
        As used.
        """

    @rho_local.setter
    def rho_local(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rho_outer(self) -> float:
        """
        As used.
        """

    @rho_outer.setter
    def rho_outer(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def s_cut_local(self) -> float:
        """
        As used.
        """

    @s_cut_local.setter
    def s_cut_local(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class Grid1D:
    """
    A uniform grid of n points from u_min to u_max, both included.
    """

    def __init__(self) -> None:
        ...

    @property
    def n(self) -> int:
        ...

    @n.setter
    def n(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def spacing(self) -> float:
        """
        (u_max - u_min) / (n - 1), or 0 for n below 2.
        """

    @property
    def u_max(self) -> float:
        ...

    @u_max.setter
    def u_max(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def u_min(self) -> float:
        ...

    @u_min.setter
    def u_min(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class BoundaryOptions:
    """
    Boundary rows of an operator: mode 0 Dirichlet, 1 Dirichlet with a centre node, 2 reflecting ends.
    """
    force_center_dirichlet: bool

    def __init__(self) -> None:
        ...

    @property
    def mode(self) -> int:
        ...

    @mode.setter
    def mode(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

class PotentialGaussianWell:
    """
    amplitude exp(-(u - center)^2 / (2 sigma^2)), a well for a negative amplitude.
    """

    def __init__(self) -> None:
        ...

    @property
    def amplitude(self) -> float:
        ...

    @amplitude.setter
    def amplitude(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def center(self) -> float:
        ...

    @center.setter
    def center(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def sigma(self) -> float:
        ...

    @sigma.setter
    def sigma(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class PotentialOptions:
    """
    constant_shift + harmonic_coeff u^2 + quartic_coeff u^4 + the sum of the gaussians.
    """

    def __init__(self) -> None:
        ...

    @property
    def constant_shift(self) -> float:
        ...

    @constant_shift.setter
    def constant_shift(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gaussians(self) -> list[PotentialGaussianWell]:
        """
        List of PotentialGaussianWell.
        """

    @gaussians.setter
    def gaussians(self, arg1: collections.abc.Sequence[PotentialGaussianWell], /) -> None:
        ...

    @property
    def harmonic_coeff(self) -> float:
        ...

    @harmonic_coeff.setter
    def harmonic_coeff(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def quartic_coeff(self) -> float:
        ...

    @quartic_coeff.setter
    def quartic_coeff(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class TrefoilOperator:
    """
    One-dimensional spectral operators on a uniform grid, their potentials and spectra.
    """

    @staticmethod
    def apply_diagonal_shift(matrix: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], shift: typing.SupportsFloat | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
        """
        A copy of the matrix with shift added to each diagonal element.
        """

    @staticmethod
    def assemble_schrodinger_matrix(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, boundary_mode: typing.SupportsInt | typing.SupportsIndex, force_center_dirichlet: bool, potential: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], kinetic_prefactor: typing.SupportsFloat | typing.SupportsIndex=1.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        Kinetic matrix with potential(i) added to the diagonal, boundary rows included, shape (n, n).
        RuntimeError for n < 3, another mode or a potential of another length.
        """

    @staticmethod
    def assemble_transfer_kernel(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, potential: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], diffusion_scale: typing.SupportsFloat | typing.SupportsIndex, potential_scale: typing.SupportsFloat | typing.SupportsIndex, normalize_rows: bool=True) -> numpy.typing.NDArray[numpy.float64]:
        """
        K(i, j) = exp(-(u(i) - u(j))^2 / (2 s^2) - potential_scale V(j)), s = max(diffusion_scale, 1e-15), shape
        (n, n); rows with a sum above 0 are divided by it if normalize_rows. RuntimeError for n < 2 or a potential of
        another length.
        """

    @staticmethod
    def build_and_solve_node_anchored_operator(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, boundary_mode: typing.SupportsInt | typing.SupportsIndex, force_center_dirichlet: bool, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], well_amplitude: typing.SupportsFloat | typing.SupportsIndex, well_sigma: typing.SupportsFloat | typing.SupportsIndex, harmonic_coeff: typing.SupportsFloat | typing.SupportsIndex=0.0, quartic_coeff: typing.SupportsFloat | typing.SupportsIndex=0.0, constant_shift: typing.SupportsFloat | typing.SupportsIndex=0.0, kinetic_prefactor: typing.SupportsFloat | typing.SupportsIndex=1.0, max_sweeps: typing.SupportsInt | typing.SupportsIndex=100, tol: typing.SupportsFloat | typing.SupportsIndex=1e-12, sort_ascending: bool=True) -> results.SpectralSolve:
        """
        Schroedinger matrix with Gaussian wells at the target nodes, solved with eigenvectors; the dict of
        jacobi_eigensolve_symmetric. RuntimeError for n < 3 or another boundary mode.
        """

    @staticmethod
    def build_and_solve_trace_anchored_operator(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, boundary_mode: typing.SupportsInt | typing.SupportsIndex, force_center_dirichlet: bool, trace_density: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], trace_scale: typing.SupportsFloat | typing.SupportsIndex, smooth_strength: typing.SupportsFloat | typing.SupportsIndex=0.0, constant_shift: typing.SupportsFloat | typing.SupportsIndex=0.0, kinetic_prefactor: typing.SupportsFloat | typing.SupportsIndex=1.0, max_sweeps: typing.SupportsInt | typing.SupportsIndex=100, tol: typing.SupportsFloat | typing.SupportsIndex=1e-12, sort_ascending: bool=True) -> results.SpectralSolve:
        """
        Schroedinger matrix with the potential of a trace density (n,), solved with eigenvectors; the dict of
        jacobi_eigensolve_symmetric. RuntimeError for n < 3, another boundary mode or a density of another length.
        """

    @staticmethod
    def build_identity(n: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
        """
        Identity matrix, shape (n, n).
        """

    @staticmethod
    def build_laplacian_schrodinger_kinetic(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, boundary_mode: typing.SupportsInt | typing.SupportsIndex=0, force_center_dirichlet: bool=True, kinetic_prefactor: typing.SupportsFloat | typing.SupportsIndex=1.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        -kinetic_prefactor times the second difference, boundary rows included, shape (n, n).
        """

    @staticmethod
    def build_potential_from_nodes(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, target_nodes: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], well_amplitude: typing.SupportsFloat | typing.SupportsIndex, well_sigma: typing.SupportsFloat | typing.SupportsIndex, harmonic_coeff: typing.SupportsFloat | typing.SupportsIndex=0.0, quartic_coeff: typing.SupportsFloat | typing.SupportsIndex=0.0, constant_shift: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        Potential with an equal Gaussian well at each target node, over a polynomial, shape (n,).
        RuntimeError for n < 2.
        """

    @staticmethod
    def build_potential_from_options(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, opts: PotentialOptions) -> numpy.typing.NDArray[numpy.float64]:
        """
        Potential of a PotentialOptions at the n grid points, shape (n,). RuntimeError for n < 2.
        """

    @staticmethod
    def build_potential_from_phi_abs(phi_abs: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], scale: typing.SupportsFloat | typing.SupportsIndex, smooth_strength: typing.SupportsFloat | typing.SupportsIndex=0.0, constant_shift: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        As build_potential_from_trace_density, with smooth_strength before constant_shift.
        """

    @staticmethod
    def build_potential_from_trace_density(trace_density: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], scale: typing.SupportsFloat | typing.SupportsIndex, constant_shift: typing.SupportsFloat | typing.SupportsIndex=0.0, smooth_strength: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
        """
        scale density + constant_shift, of the density's length. A smooth_strength above 0 takes the mean over the
        samples i - r .. i + r, r = max(round(smooth_strength), 1), cut at both ends.
        """

    @staticmethod
    def build_second_difference(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex, boundary_mode: typing.SupportsInt | typing.SupportsIndex=0, force_center_dirichlet: bool=True) -> numpy.typing.NDArray[numpy.float64]:
        """
        Second-difference matrix, shape (n, n): rows (w, -2 w, w), w = 1 / h^2. Boundary modes 0 and 1 set identity
        rows at both ends, 2 reflects; mode 1 with force_center_dirichlet also sets an identity row at the point
        nearest u = 0 if that lies within h / 2. RuntimeError for n < 3 or another mode.
        """

    @staticmethod
    def build_uniform_grid(u_min: typing.SupportsFloat | typing.SupportsIndex, u_max: typing.SupportsFloat | typing.SupportsIndex, n: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
        """
        The points u_min + i h, h = (u_max - u_min) / (n - 1), shape (n,). RuntimeError for n < 2.
        """

    @staticmethod
    def eigenvalues(matrix: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], max_sweeps: typing.SupportsInt | typing.SupportsIndex=100, tol: typing.SupportsFloat | typing.SupportsIndex=1e-12, sort_ascending: bool=True) -> numpy.typing.NDArray[numpy.float64]:
        """
        Eigenvalues of a symmetric matrix, shape (n,): jacobi_eigensolve_symmetric without eigenvectors. max_sweeps
        limits single rotations.
        """

    @staticmethod
    def generator_from_transfer_kernel(kernel: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], dt: typing.SupportsFloat | typing.SupportsIndex, subtract_identity_first: bool=True) -> numpy.typing.NDArray[numpy.float64]:
        """
        (K - 1) / dt, or K / dt unless subtract_identity_first. RuntimeError for dt = 0.
        """

    @staticmethod
    def jacobi_eigensolve_symmetric(matrix: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], compute_eigenvectors: bool=True, max_sweeps: typing.SupportsInt | typing.SupportsIndex=100, tol: typing.SupportsFloat | typing.SupportsIndex=1e-12, sort_ascending: bool=True) -> results.SpectralSolve:
        """
        Classical Jacobi solve of a symmetric matrix (n, n). Dict with "eigenvalues" (n,), "eigenvectors" (n, n) with
        column k for eigenvalue k, or None, and "n". max_sweeps limits single rotations, not sweeps over all pairs: a
        dense matrix needs some 2 n^2 to 4 n^2 of them. The solve stops when no off-diagonal magnitude reaches tol.
        """

    @staticmethod
    def logdet_from_eigenvalues(eigenvalues: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], regularization: typing.SupportsFloat | typing.SupportsIndex=1e-15) -> float:
        """
        The sum of ln(|e| + regularization), a log-determinant of magnitudes.
        """

    @staticmethod
    def matrix_vector_multiply(matrix: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], x: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> numpy.typing.NDArray[numpy.float64]:
        """
        A x for a matrix (n, n) and a vector (n,).
        """

    @staticmethod
    def nearest_eigenvalues_to_targets(eigenvalues: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], targets: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> numpy.typing.NDArray[numpy.float64]:
        """
        The eigenvalue nearest to each target, the first on a tie, shape of targets. ValueError if there are targets
        and no eigenvalues.
        """

    @staticmethod
    def normalize_vector(x: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> numpy.typing.NDArray[numpy.float64]:
        """
        A copy divided by its Euclidean norm, unchanged where the norm is not above 0.
        """

    @staticmethod
    def rayleigh_quotient(matrix: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], x: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> float:
        """
        (x . A x) / (x . x), NaN for x = 0.
        """

    @staticmethod
    def residual_norm(matrix: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], x: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], lambda_: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        |A x - lambda x|.
        """

    @staticmethod
    def spectral_density_histogram(eigenvalues: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], x_min: typing.SupportsFloat | typing.SupportsIndex, x_max: typing.SupportsFloat | typing.SupportsIndex, n_bins: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
        """
        Counts of the eigenvalues with x_min <= e < x_max in n_bins equal bins, as floats, shape (n_bins,).
        RuntimeError unless x_min < x_max and n_bins > 0.
        """

    @staticmethod
    def trace_from_diagonal(matrix: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> float:
        """
        The sum of the diagonal.
        """

class SegmentPair:
    """
    The closest points of two edges i < j of a polygon.
    """

    def __init__(self) -> None:
        ...

    @property
    def arclength_i(self) -> float:
        """
        Arc length from vertex 0 to the point on edge i.
        """

    @arclength_i.setter
    def arclength_i(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def arclength_j(self) -> float:
        """
        Arc length from vertex 0 to the point on edge j.
        """

    @arclength_j.setter
    def arclength_j(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def distance(self) -> float:
        """
        Distance of the two points.
        """

    @distance.setter
    def distance(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def i(self) -> int:
        """
        First edge.
        """

    @i.setter
    def i(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def j(self) -> int:
        """
        Second edge.
        """

    @j.setter
    def j(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def s(self) -> float:
        """
        Parameter 0..1 on edge i.
        """

    @s.setter
    def s(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def t(self) -> float:
        """
        Parameter 0..1 on edge j.
        """

    @t.setter
    def t(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class KinkRecord:
    """
    The radius of a corner of a polygon, from either of its edges.
    """

    def __init__(self) -> None:
        ...

    @property
    def minrad(self) -> float:
        """
        The smaller of the two.
        """

    @minrad.setter
    def minrad(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def minrad_minus(self) -> float:
        """
        Radius from the incoming edge.
        """

    @minrad_minus.setter
    def minrad_minus(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def minrad_plus(self) -> float:
        """
        Radius from the outgoing edge.
        """

    @minrad_plus.setter
    def minrad_plus(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def turning_angle(self) -> float:
        """
        Exterior angle in radians.
        """

    @turning_angle.setter
    def turning_angle(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def vertex(self) -> int:
        """
        Vertex, reduced modulo n.
        """

    @vertex.setter
    def vertex(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

class ResolvedTubeMetrics:
    """
    Thickness, ropelength and contacts of a polygon; lengths in its unit.
    """

    def __init__(self) -> None:
        ...

    @property
    def edge_length_max_rel_dev(self) -> float:
        """
        Largest relative deviation of an edge length from the mean.
        """

    @edge_length_max_rel_dev.setter
    def edge_length_max_rel_dev(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def edge_length_mean(self) -> float:
        """
        Mean edge length.
        """

    @edge_length_mean.setter
    def edge_length_mean(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def edge_length_rel_std(self) -> float:
        """
        Relative standard deviation of the edge lengths (population form).
        """

    @edge_length_rel_std.setter
    def edge_length_rel_std(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def equilateral_ok(self) -> bool:
        """
        edge_length_max_rel_dev is within its tolerance.
        """

    @equilateral_ok.setter
    def equilateral_ok(self, arg0: bool, /) -> None:
        ...

    @property
    def half_min_dcsd(self) -> float:
        """
        Half of min_dcsd.
        """

    @half_min_dcsd.setter
    def half_min_dcsd(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kinks(self) -> list[KinkRecord]:
        """
        Active curvature contacts, list of KinkRecord.
        """

    @kinks.setter
    def kinks(self, arg1: collections.abc.Sequence[KinkRecord], /) -> None:
        ...

    @property
    def length(self) -> float:
        """
        Polygon length.
        """

    @length.setter
    def length(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def lower_bound_ok(self) -> bool:
        """
        The ropelength does not undercut the bound for non-trivial knots.
        """

    @lower_bound_ok.setter
    def lower_bound_ok(self, arg0: bool, /) -> None:
        ...

    @property
    def min_dcsd(self) -> float:
        """
        Least distance of admissible edge pairs, +infinity if there is none.
        """

    @min_dcsd.setter
    def min_dcsd(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def minrad(self) -> float:
        """
        Least vertex radius.
        """

    @minrad.setter
    def minrad(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def reach_rad(self) -> float:
        """
        Equal to thickness_rad.
        """

    @reach_rad.setter
    def reach_rad(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ropelength_diam(self) -> float:
        """
        Length over tube diameter.
        """

    @ropelength_diam.setter
    def ropelength_diam(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ropelength_rad(self) -> float:
        """
        length / thickness_rad; 0 when the thickness is not positive and finite.
        """

    @ropelength_rad.setter
    def ropelength_rad(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def struts(self) -> list[SegmentPair]:
        """
        Active edge contacts, list of SegmentPair.
        """

    @struts.setter
    def struts(self, arg1: collections.abc.Sequence[SegmentPair], /) -> None:
        ...

    @property
    def thickness_rad(self) -> float:
        """
        min(minrad, half_min_dcsd).
        """

    @thickness_rad.setter
    def thickness_rad(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class SparseEntry:
    """
    One stored entry of a sparse column.
    """

    def __init__(self) -> None:
        ...

    @property
    def row(self) -> int:
        """
        Row, zero-based.
        """

    @row.setter
    def row(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def value(self) -> float:
        """
        Value.
        """

    @value.setter
    def value(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class RigidityColumn:
    """
    The flat gradient of one active contact.
    """

    def __init__(self) -> None:
        ...

    @property
    def kind(self) -> str:
        """
        'strut' or 'kink'.
        """

    @kind.setter
    def kind(self, arg0: str, /) -> None:
        ...

    @property
    def kink_index(self) -> int:
        """
        Position in the tube's kinks; 0 for a strut.
        """

    @kink_index.setter
    def kink_index(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def norm(self) -> float:
        """
        Euclidean norm of the gradient.
        """

    @norm.setter
    def norm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def strut_index(self) -> int:
        """
        Position in the tube's struts; 0 for a kink.
        """

    @strut_index.setter
    def strut_index(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def values(self) -> list[float]:
        """
        Flat gradient, 3 N floats.
        """

    @values.setter
    def values(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def vertex(self) -> int:
        """
        Vertex of a kink; 0 for a strut.
        """

    @vertex.setter
    def vertex(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

class RigidityMatrix:
    """
    Dense rigidity matrix, by columns.
    """

    def __init__(self) -> None:
        ...

    @property
    def column_count(self) -> int:
        """
        Number of columns.
        """

    @column_count.setter
    def column_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def columns(self) -> list[RigidityColumn]:
        """
        List of RigidityColumn.
        """

    @columns.setter
    def columns(self, arg1: collections.abc.Sequence[RigidityColumn], /) -> None:
        ...

    @property
    def row_count(self) -> int:
        """
        3 N.
        """

    @row_count.setter
    def row_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

class SparseRigidityColumn:
    """
    The stored entries of one gradient.
    """

    def __init__(self) -> None:
        ...

    @property
    def entries(self) -> list[SparseEntry]:
        """
        List of SparseEntry, rows ascending.
        """

    @entries.setter
    def entries(self, arg1: collections.abc.Sequence[SparseEntry], /) -> None:
        ...

    @property
    def kind(self) -> str:
        """
        'strut' or 'kink'.
        """

    @kind.setter
    def kind(self, arg0: str, /) -> None:
        ...

    @property
    def kink_index(self) -> int:
        """
        Position in the tube's kinks; 0 for a strut.
        """

    @kink_index.setter
    def kink_index(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def norm(self) -> float:
        """
        Euclidean norm of the gradient.
        """

    @norm.setter
    def norm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def strut_index(self) -> int:
        """
        Position in the tube's struts; 0 for a kink.
        """

    @strut_index.setter
    def strut_index(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def vertex(self) -> int:
        """
        Vertex of a kink; 0 for a strut.
        """

    @vertex.setter
    def vertex(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

class SparseRigidityMatrix:
    """
    Sparse rigidity matrix, by columns.
    """

    def __init__(self) -> None:
        ...

    @property
    def column_count(self) -> int:
        """
        Number of columns.
        """

    @column_count.setter
    def column_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def columns(self) -> list[SparseRigidityColumn]:
        """
        List of SparseRigidityColumn.
        """

    @columns.setter
    def columns(self, arg1: collections.abc.Sequence[SparseRigidityColumn], /) -> None:
        ...

    @property
    def nonzero_count(self) -> int:
        """
        Number of stored entries.
        """

    @nonzero_count.setter
    def nonzero_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def row_count(self) -> int:
        """
        3 N.
        """

    @row_count.setter
    def row_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

class NNLSResult:
    """
    A non-negative least squares fit of A x to b.
    """

    def __init__(self) -> None:
        ...

    @property
    def active_set_size(self) -> int:
        """
        Multipliers above the tolerance.
        """

    @active_set_size.setter
    def active_set_size(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def algorithm(self) -> str:
        """
        'coordinate_descent', 'coordinate_descent_sparse' or 'active_set'.
        """

    @algorithm.setter
    def algorithm(self, arg0: str, /) -> None:
        ...

    @property
    def converged(self) -> bool:
        """
        The method's test was met.
        """

    @converged.setter
    def converged(self, arg0: bool, /) -> None:
        ...

    @property
    def iterations(self) -> int:
        """
        Sweeps or outer iterations used.
        """

    @iterations.setter
    def iterations(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def multipliers(self) -> list[float]:
        """
        x, one float per column.
        """

    @multipliers.setter
    def multipliers(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def objective(self) -> float:
        """
        Half the squared residual_norm.
        """

    @objective.setter
    def objective(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def relative_residual(self) -> float:
        """
        residual_norm / max(|b|, 1e-14).
        """

    @relative_residual.setter
    def relative_residual(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def residual_norm(self) -> float:
        """
        |A x - b|.
        """

    @residual_norm.setter
    def residual_norm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class TighteningOptions:
    """
    How a polygon is tightened.
    """

    def __init__(self) -> None:
        ...

    @property
    def contact_tol(self) -> float:
        """
        As in the analysis.
        """

    @contact_tol.setter
    def contact_tol(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def correction_strategy(self) -> str:
        """
        'newton', 'scale' or 'none': how lost thickness is restored.
        """

    @correction_strategy.setter
    def correction_strategy(self, arg0: str, /) -> None:
        ...

    @property
    def equilateral_tol(self) -> float:
        """
        As in the analysis.
        """

    @equilateral_tol.setter
    def equilateral_tol(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def line_search_shrink(self) -> float:
        """
        Step factor, used within 0.05..0.95.
        """

    @line_search_shrink.setter
    def line_search_shrink(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def line_search_trials(self) -> int:
        """
        Trials per step.
        """

    @line_search_trials.setter
    def line_search_trials(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def max_step_size(self) -> float:
        """
        First trial step.
        """

    @max_step_size.setter
    def max_step_size(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def max_steps(self) -> int:
        """
        Outer step limit.
        """

    @max_steps.setter
    def max_steps(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def min_step_size(self) -> float:
        """
        Smallest trial step.
        """

    @min_step_size.setter
    def min_step_size(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def newton_correction_damping(self) -> float:
        """
        Factor on each correction, used within 0..1.
        """

    @newton_correction_damping.setter
    def newton_correction_damping(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def newton_ridge(self) -> float:
        """
        Ridge of the correction's equations.
        """

    @newton_ridge.setter
    def newton_ridge(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def nnls_max_iterations(self) -> int:
        """
        Iteration limit of the contact fit.
        """

    @nnls_max_iterations.setter
    def nnls_max_iterations(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def nnls_tolerance(self) -> float:
        """
        Tolerance of the contact fit.
        """

    @nnls_tolerance.setter
    def nnls_tolerance(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def normalize_direction(self) -> bool:
        """
        Scale the direction to a largest vertex move of 1.
        """

    @normalize_direction.setter
    def normalize_direction(self, arg0: bool, /) -> None:
        ...

    @property
    def preserve_initial_thickness(self) -> bool:
        """
        Hold the first thickness, not the current one.
        """

    @preserve_initial_thickness.setter
    def preserve_initial_thickness(self, arg0: bool, /) -> None:
        ...

    @property
    def ropelength_increase_tolerance(self) -> float:
        """
        Allowed rise of the ropelength R, relative to max(R, 1).
        """

    @ropelength_increase_tolerance.setter
    def ropelength_increase_tolerance(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def skip_neighbors(self) -> int:
        """
        As in the analysis.
        """

    @skip_neighbors.setter
    def skip_neighbors(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def target_kkt_residual(self) -> float:
        """
        Converged at or below this residual.
        """

    @target_kkt_residual.setter
    def target_kkt_residual(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def thickness_floor_fraction(self) -> float:
        """
        Part of the thickness that a step must keep.
        """

    @thickness_floor_fraction.setter
    def thickness_floor_fraction(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def use_active_set_solver(self) -> bool:
        """
        Active set rather than coordinate descent.
        """

    @use_active_set_solver.setter
    def use_active_set_solver(self, arg0: bool, /) -> None:
        ...

    @property
    def use_analytic_kink_gradient(self) -> bool:
        """
        Analytic kink columns.
        """

    @use_analytic_kink_gradient.setter
    def use_analytic_kink_gradient(self, arg0: bool, /) -> None:
        ...

    @property
    def use_sparse_solver(self) -> bool:
        """
        Sparse rigidity matrix.
        """

    @use_sparse_solver.setter
    def use_sparse_solver(self, arg0: bool, /) -> None:
        ...

class TighteningStepRecord:
    """
    One attempted step of a tightening.
    """

    def __init__(self) -> None:
        ...

    @property
    def accepted(self) -> bool:
        """
        A trial was accepted.
        """

    @accepted.setter
    def accepted(self, arg0: bool, /) -> None:
        ...

    @property
    def alpha(self) -> float:
        """
        Step size accepted, or at which the search gave up.
        """

    @alpha.setter
    def alpha(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def correction_strategy(self) -> str:
        """
        Copy of the option.
        """

    @correction_strategy.setter
    def correction_strategy(self, arg0: str, /) -> None:
        ...

    @property
    def kink_count(self) -> int:
        """
        Kinks before the step.
        """

    @kink_count.setter
    def kink_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kkt_residual_before(self) -> float:
        """
        KKT residual that started the step.
        """

    @kkt_residual_before.setter
    def kkt_residual_before(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def length_after(self) -> float:
        """
        The same after it.
        """

    @length_after.setter
    def length_after(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def length_before(self) -> float:
        """
        Length before the step.
        """

    @length_before.setter
    def length_before(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def projected_gradient_norm(self) -> float:
        """
        Norm of the direction before normalisation.
        """

    @projected_gradient_norm.setter
    def projected_gradient_norm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rigidity_columns(self) -> int:
        """
        Columns of the rigidity matrix.
        """

    @rigidity_columns.setter
    def rigidity_columns(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ropelength_after(self) -> float:
        """
        The same after it; unchanged if rejected.
        """

    @ropelength_after.setter
    def ropelength_after(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def ropelength_before(self) -> float:
        """
        ropelength_rad before the step.
        """

    @ropelength_before.setter
    def ropelength_before(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def solver_algorithm(self) -> str:
        """
        Method of the contact fit; empty if none ran.
        """

    @solver_algorithm.setter
    def solver_algorithm(self, arg0: str, /) -> None:
        ...

    @property
    def step(self) -> int:
        """
        Zero-based number.
        """

    @step.setter
    def step(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def strut_count(self) -> int:
        """
        Struts before the step.
        """

    @strut_count.setter
    def strut_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def thickness_after(self) -> float:
        """
        The same after it.
        """

    @thickness_after.setter
    def thickness_after(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def thickness_before(self) -> float:
        """
        thickness_rad before the step.
        """

    @thickness_before.setter
    def thickness_before(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def thickness_corrected(self) -> bool:
        """
        The accepted trial was corrected.
        """

    @thickness_corrected.setter
    def thickness_corrected(self, arg0: bool, /) -> None:
        ...

class TighteningResult:
    """
    A tightened polygon and its history.
    """

    def __init__(self) -> None:
        ...

    @property
    def converged(self) -> bool:
        """
        The target KKT residual was reached.
        """

    @converged.setter
    def converged(self, arg0: bool, /) -> None:
        ...

    @property
    def metrics(self) -> ResolvedTubeMetrics:
        """
        Its ResolvedTubeMetrics.
        """

    @metrics.setter
    def metrics(self, arg0: ResolvedTubeMetrics, /) -> None:
        ...

    @property
    def points(self) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        The last accepted polygon.
        """

    @points.setter
    def points(self, arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> None:
        ...

    @property
    def reason(self) -> str:
        """
        Why the run ended.
        """

    @reason.setter
    def reason(self, arg0: str, /) -> None:
        ...

    @property
    def steps(self) -> list[TighteningStepRecord]:
        """
        List of TighteningStepRecord.
        """

    @steps.setter
    def steps(self, arg1: collections.abc.Sequence[TighteningStepRecord], /) -> None:
        ...

class ContactStressDiagnostics:
    """
    The fit of a length gradient by the gradients of contacts.
    """

    def __init__(self) -> None:
        ...

    @property
    def contact_entropy(self) -> float:
        """
        Shannon entropy of the multipliers, nats.
        """

    @contact_entropy.setter
    def contact_entropy(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def contact_residual(self) -> float:
        """
        Relative residual of the fit.
        """

    @contact_residual.setter
    def contact_residual(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def gradient_norm(self) -> float:
        """
        Norm of the length gradient.
        """

    @gradient_norm.setter
    def gradient_norm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kink_count(self) -> int:
        """
        Kinks of the tube.
        """

    @kink_count.setter
    def kink_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def kink_weight_sum(self) -> float:
        """
        Sum of positive multipliers on kinks.
        """

    @kink_weight_sum.setter
    def kink_weight_sum(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def multipliers(self) -> list[float]:
        """
        One float per column.
        """

    @multipliers.setter
    def multipliers(self, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> None:
        ...

    @property
    def nnls_active_set_size(self) -> int:
        """
        Multipliers above the tolerance.
        """

    @nnls_active_set_size.setter
    def nnls_active_set_size(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def nnls_algorithm(self) -> str:
        """
        Method of the fit.
        """

    @nnls_algorithm.setter
    def nnls_algorithm(self, arg0: str, /) -> None:
        ...

    @property
    def nnls_converged(self) -> bool:
        """
        The fit converged.
        """

    @nnls_converged.setter
    def nnls_converged(self, arg0: bool, /) -> None:
        ...

    @property
    def nnls_iterations(self) -> int:
        """
        Iterations of the fit.
        """

    @nnls_iterations.setter
    def nnls_iterations(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def nnls_objective(self) -> float:
        """
        Half the squared residual norm.
        """

    @nnls_objective.setter
    def nnls_objective(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def residual_norm(self) -> float:
        """
        Norm of the residual.
        """

    @residual_norm.setter
    def residual_norm(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rigidity_columns(self) -> int:
        """
        Columns of the matrix.
        """

    @rigidity_columns.setter
    def rigidity_columns(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def rigidity_rows(self) -> int:
        """
        3 N.
        """

    @rigidity_rows.setter
    def rigidity_rows(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def solved_nnls(self) -> bool:
        """
        A fit was run.
        """

    @solved_nnls.setter
    def solved_nnls(self, arg0: bool, /) -> None:
        ...

    @property
    def strut_count(self) -> int:
        """
        Struts of the tube.
        """

    @strut_count.setter
    def strut_count(self, arg0: typing.SupportsInt | typing.SupportsIndex, /) -> None:
        ...

    @property
    def strut_weight_sum(self) -> float:
        """
        Sum of positive multipliers on struts.
        """

    @strut_weight_sum.setter
    def strut_weight_sum(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class ResolvedTubeGeometry:
    """
    Closed polygons as the centre lines of tubes of constant radius. Points are N lists of three floats or an (N, 3)
    array in any unit of length; the closing edge is implied. A flat gradient has 3 N entries, coordinate `axis` of
    vertex v at index 3 v + axis. Vertex numbers are taken modulo N.
    """

    @staticmethod
    def analyze(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], skip_neighbors: typing.SupportsInt | typing.SupportsIndex=2, contact_tol: typing.SupportsFloat | typing.SupportsIndex=0.001, equilateral_tol: typing.SupportsFloat | typing.SupportsIndex=0.001) -> ResolvedTubeMetrics:
        """
        Thickness, ropelength and contacts of a closed polygon.

        Args:
            points: vertices, N lists of three floats or an (N, 3) array, any unit of length; the closing edge is implied.
            skip_neighbors (int): edges up to this many apart around the loop are not tested against each other.
            contact_tol (float): contacts up to (1 + tol) thickness + tol are active; relative and additive at once.
            equilateral_tol (float): largest relative deviation of an edge length that still counts as equilateral.

        Returns: ResolvedTubeMetrics. Raises ValueError below three points and for negative tolerances.
        Time is n log n on curves, memory linear in the vertices and contacts.
        """

    @staticmethod
    def dcsd_candidates(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], skip_neighbors: typing.SupportsInt | typing.SupportsIndex=2, distance_tol: typing.SupportsFloat | typing.SupportsIndex=0.0) -> list[SegmentPair]:
        """
        List of SegmentPair, by i, then j: the edge pairs more than skip_neighbors apart around the loop whose
        distance is within 1e-12 of the least distance m, or within (1 + tol) m + tol for a positive tolerance.
        """

    @staticmethod
    def diameter_to_radius_ropelength(ropelength_diam: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Twice the argument.
        """

    @staticmethod
    def edge_length_max_relative_deviation(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
        """
        Largest |l / mean - 1| of the edge lengths l.
        """

    @staticmethod
    def edge_length_mean(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
        """
        Mean edge length; 0 for fewer than two points.
        """

    @staticmethod
    def edge_length_relative_std(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
        """
        Standard deviation (divisor N) of the edge lengths over their mean.
        """

    @staticmethod
    def global_minrad(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
        """
        Least minrad_at_vertex; 0 for fewer than three points.
        """

    @staticmethod
    def kink_at_vertex(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], i: typing.SupportsInt | typing.SupportsIndex) -> KinkRecord:
        """
        KinkRecord of the corner at vertex i. Raises ValueError below three points. A collapsed edge makes the
        angle 0 and thereby all radii infinite, unlike minrad_at_vertex.
        """

    @staticmethod
    def kink_minrad_gradient_flat(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], kink: KinkRecord, use_analytic: bool=True, finite_difference_step: typing.SupportsFloat | typing.SupportsIndex=1e-06) -> list[float]:
        """
        Flat gradient of minrad: the active side's analytic form, ties to the minus side; central differences of
        step max(|x|, 1) finite_difference_step where that vanishes or is not wanted.
        """

    @staticmethod
    def kink_minrad_minus_gradient_flat(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], kink: KinkRecord) -> list[float]:
        """
        Flat gradient of minrad_minus, at the record's turning angle.
        """

    @staticmethod
    def kink_minrad_plus_gradient_flat(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], kink: KinkRecord) -> list[float]:
        """
        Flat gradient of minrad_plus, at the record's turning angle.
        """

    @staticmethod
    def length(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
        """
        Polygon length; 0 for fewer than two points.
        """

    @staticmethod
    def length_gradient_flat(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> list[float]:
        """
        Flat gradient of the length.
        """

    @staticmethod
    def minrad_at_vertex(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], i: typing.SupportsInt | typing.SupportsIndex) -> float:
        """
        Radius min(l-, l+) / (2 tan(theta / 2)) of the corner at vertex i (Rawdon's MinRad): 0 at a collapsed edge,
        +infinity on a straight run.
        """

    @staticmethod
    def nontrivial_knot_lower_bound_rad() -> float:
        """
        (4 + 2 sqrt(2)) pi, a lower bound of length over radius for any non-trivial knot.
        """

    @staticmethod
    def radius_to_diameter_ropelength(ropelength_rad: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Half of the argument.
        """

    @staticmethod
    def segment_segment_distance(p0: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], p1: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], q0: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], q1: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> tuple[float, float, float]:
        """
        (distance, s, t) of the segments p0 p1 and q0 q1: the closest points are p0 + s (p1 - p0), q0 + t (q1 - q0).
        """

    @staticmethod
    def strut_gradient_flat(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], pair: SegmentPair) -> list[float]:
        """
        Flat gradient of half the distance of the pair at its fixed s and t.
        """

    @staticmethod
    def turning_angle(a: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], b: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], c: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> float:
        """
        Exterior angle of the corner a b c in radians: 0 straight on, pi for a reversal; 0 for a collapsed
        edge.
        """

class ResolvedTubeTightener:
    """
    Shortens closed polygons at fixed tube thickness.
    """

    @staticmethod
    def correct_thickness(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], target_thickness: typing.SupportsFloat | typing.SupportsIndex, options: TighteningOptions=...) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        The polygon moved up to the target thickness: by up to three Newton steps on its contacts and a scaling
        for the rest ('newton'), by the scaling alone ('scale'), or not at all ('none').
        """

    @staticmethod
    def projected_gradient_flat(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, options: TighteningOptions=...) -> list[float]:
        """
        The part of the negative length gradient that the contacts do not balance.

        Args:
            points: vertices, N lists of three floats or an (N, 3) array.
            tube: the ResolvedTubeMetrics of these points.
            options: TighteningOptions, of which the nnls_... and use_... fields count.

        Returns: flat direction of 3 N floats, A x - g with the rigidity matrix A, the non-negative multipliers x that fit
        the length gradient g best.
        """

    @staticmethod
    def rescale_to_thickness(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], target_thickness: typing.SupportsFloat | typing.SupportsIndex, skip_neighbors: typing.SupportsInt | typing.SupportsIndex=2, contact_tol: typing.SupportsFloat | typing.SupportsIndex=0.001, equilateral_tol: typing.SupportsFloat | typing.SupportsIndex=0.001) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
        """
        The polygon scaled up about its centroid to just past the target thickness; a copy where it has that
        already, where it has none, or where the target is not positive and finite.
        """

    @staticmethod
    def tighten(initial_points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], options: TighteningOptions=...) -> TighteningResult:
        """
        Shorten a closed polygon at fixed tube thickness, towards least ropelength.

        Args:
            initial_points: vertices, N lists of three floats or an (N, 3) array, any unit of length.
            options: TighteningOptions; its step sizes and contact_tol are in the unit of the points.

        Returns: TighteningResult. Its `reason` is one of max_steps_zero, nonpositive_initial_thickness, target_kkt_residual
        (the one with `converged` true), zero_projected_gradient, line_search_failed, max_steps.
        Raises ValueError below three points and for negative contact_tol or equilateral_tol. Ctrl-C ends the run.
        After Ashton, Cantarella, Piatek and Rawdon, Knot tightening by constrained gradient descent (2011).
        """

class ContactStressMap:
    """
    Rigidity matrices of resolved tubes and the stress that contacts carry.
    """

    @staticmethod
    def build_rigidity_matrix(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, include_struts: bool=True, include_kinks: bool=True, kink_finite_difference_step: typing.SupportsFloat | typing.SupportsIndex=1e-06, use_analytic_kink_gradient: bool=True) -> RigidityMatrix:
        """
        Rigidity matrix of a tube: one column per active contact, struts before kinks.

        Args:
            points: vertices, N lists of three floats or an (N, 3) array.
            tube: the ResolvedTubeMetrics of these points; another's gives columns without meaning.
            include_struts, include_kinks (bool): which contacts to take.
            kink_finite_difference_step (float): relative step where a kink's gradient is found by differences.
            use_analytic_kink_gradient (bool): False takes differences for all kinks.

        Contacts whose gradient has a norm up to 1e-14 give no column.
        """

    @staticmethod
    def build_sparse_rigidity_matrix(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, include_struts: bool=True, include_kinks: bool=True, kink_finite_difference_step: typing.SupportsFloat | typing.SupportsIndex=1e-06, use_analytic_kink_gradient: bool=True) -> SparseRigidityMatrix:
        """
        Sparse rigidity matrix of a tube: entries above 1e-15 in magnitude, rows ascending.

        Arguments as for the dense form, which holds the same numbers.
        """

    @staticmethod
    def diagnose_length_criticality(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, solve_nnls: bool=True, max_iterations: typing.SupportsInt | typing.SupportsIndex=5000, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-10, use_sparse_solver: bool=True, use_analytic_kink_gradient: bool=True, use_active_set_solver: bool=True) -> ContactStressDiagnostics:
        """
        How far the length gradient of a tube lies from the cone of its contacts' gradients.

        Args:
            points: vertices, N lists of three floats or an (N, 3) array.
            tube: the ResolvedTubeMetrics of these points.
            solve_nnls (bool): False reports the counts and norms alone.
            max_iterations, tolerance: of the non-negative fit.
            use_sparse_solver, use_active_set_solver (bool): which of the four solvers.
            use_analytic_kink_gradient (bool): False takes differences for all kinks.

        Returns: ContactStressDiagnostics; a contact_residual of 0 is a length-critical polygon.
        """

    @staticmethod
    def solve_nonnegative_least_squares(matrix: RigidityMatrix, target: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], max_iterations: typing.SupportsInt | typing.SupportsIndex=5000, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-10) -> NNLSResult:
        """
        Multipliers x >= 0 that minimise |A x - target|, by coordinate descent.

        Args:
            matrix: rigidity matrix A, one column per contact.
            target: list of floats, one per row; read only as far as the shorter of it and a column reaches.
            max_iterations (int): limit of sweeps; 0 counts as 1.
            tolerance (float): ends the sweeps when no multiplier moves by more than (|x| + 1) tolerance or the relative
                residual is within it; 1e-10 if not positive.

        Returns: NNLSResult; never raises for bad sizes, see `converged`.
        """

    @staticmethod
    def solve_nonnegative_least_squares_active_set(matrix: RigidityMatrix, target: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], max_iterations: typing.SupportsInt | typing.SupportsIndex=2000, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-10, ridge: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> NNLSResult:
        """
        Multipliers x >= 0 that minimise |A x - target|, by Lawson and Hanson's active set.

        Args:
            matrix: rigidity matrix A, one column per contact.
            target: list of floats, one per row; read only as far as the shorter of it and a column reaches.
            max_iterations (int): limit of outer iterations; 0 counts as 1.
            tolerance (float): multipliers and dual slopes up to this count as zero; 1e-10 if not positive.
            ridge (float): added to the diagonal of each subproblem; climbs by factors of 10 where it is singular.

        Returns: NNLSResult; never raises for bad sizes, see `converged`.
        """

    @staticmethod
    def solve_nonnegative_least_squares_sparse(matrix: SparseRigidityMatrix, target: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], max_iterations: typing.SupportsInt | typing.SupportsIndex=5000, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-10) -> NNLSResult:
        """
        Multipliers x >= 0 that minimise |A x - target|, by coordinate descent.

        Args:
            matrix: rigidity matrix A, one column per contact.
            target: list of floats, one per row; read only as far as the shorter of it and a column reaches.
            max_iterations (int): limit of sweeps; 0 counts as 1.
            tolerance (float): ends the sweeps when no multiplier moves by more than (|x| + 1) tolerance or the relative
                residual is within it; 1e-10 if not positive.

        Returns: NNLSResult; never raises for bad sizes, see `converged`.
        """

    @staticmethod
    def solve_nonnegative_least_squares_sparse_active_set(matrix: SparseRigidityMatrix, target: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], max_iterations: typing.SupportsInt | typing.SupportsIndex=2000, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-10, ridge: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> NNLSResult:
        """
        Multipliers x >= 0 that minimise |A x - target|, by Lawson and Hanson's active set.

        Args:
            matrix: rigidity matrix A, one column per contact.
            target: list of floats, one per row; read only as far as the shorter of it and a column reaches.
            max_iterations (int): limit of outer iterations; 0 counts as 1.
            tolerance (float): multipliers and dual slopes up to this count as zero; 1e-10 if not positive.
            ridge (float): added to the diagonal of each subproblem; climbs by factors of 10 where it is singular.

        Returns: NNLSResult; never raises for bad sizes, see `converged`.
        """

    @staticmethod
    def sparse_to_dense(sparse: SparseRigidityMatrix) -> RigidityMatrix:
        """
        The dense matrix of the same columns; entries at or beyond row_count are ignored.
        """

    @staticmethod
    def write_sparse_matrix_market(sparse: SparseRigidityMatrix, path: str, one_based_indices: bool=True) -> None:
        """
        Write the matrix as a Matrix Market coordinate file, 17 significant digits, and replace the file by it as a
        whole. Raises RuntimeError if the file cannot be opened or written; the old one stays then.
        """

    @staticmethod
    def write_vector_csv(vector: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], path: str) -> None:
        """
        Write the floats as CSV with the header row,value, 17 significant digits, and replace the file by it as a
        whole. Raises RuntimeError if the file cannot be opened or written; the old one stays then.
        """

    @staticmethod
    def write_vector_market(vector: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], path: str) -> None:
        """
        Write the floats as a Matrix Market array file, 17 significant digits, and replace the file by it as a whole.
        Raises RuntimeError if the file cannot be opened or written; the old one stays then.
        """

class CertificateStatus:
    """
    The verdict of a certificate.

    Members:

      Pass

      Fail

      Indeterminate : The numbers do not allow a verdict.

      NotEvaluated
    """
    Fail: typing.ClassVar[CertificateStatus]
    Indeterminate: typing.ClassVar[CertificateStatus]
    NotEvaluated: typing.ClassVar[CertificateStatus]
    Pass: typing.ClassVar[CertificateStatus]
    __members__: typing.ClassVar[dict[str, CertificateStatus]]

    @typing.overload
    def __eq__(self, other: CertificateStatus) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: CertificateStatus) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class GeometryCertificate:
    """
    Whether a tube fits around a closed polygon; lengths in the points' unit.
    """

    @property
    def discretization_error(self) -> float:
        """
        Largest relative deviation of an edge from the mean edge length.
        """

    @property
    def geometry_hash(self) -> str:
        """
        sha256_hex_of_points of the points, in every outcome.
        """

    @property
    def minimum_radius_of_curvature(self) -> float:
        """
        Least vertex radius.
        """

    @property
    def minimum_separation(self) -> float:
        """
        Least distance of edges that are not neighbours.
        """

    @property
    def status(self) -> CertificateStatus:
        """
        CertificateStatus.
        """

    @property
    def thickness_margin(self) -> float:
        """
        minimum_separation - 2 tube_radius.
        """

    @property
    def tube_radius(self) -> float:
        """
        Tube radius as given.
        """

class ContactSaturationResult:
    """
    Whether contact pressures stay at or below saturation.
    """

    @property
    def active_contact_count(self) -> int:
        """
        Number of pressures above the floor.
        """

    @property
    def peak_contact_pressure(self) -> float:
        """
        Largest pressure.
        """

    @property
    def saturation_pressure(self) -> float:
        """
        Saturation pressure as given.
        """

    @property
    def saturation_ratio(self) -> float:
        """
        Peak over saturation pressure.
        """

    @property
    def status(self) -> CertificateStatus:
        """
        CertificateStatus.
        """

class ChronosFirstHittingResult:
    """
    When an observable first reaches a threshold from below.
    """

    @property
    def event_index(self) -> int:
        """
        First sample at or above the threshold; the number of samples if none.
        """

    @property
    def first_hitting_time(self) -> float:
        """
        Interpolated time; +infinity if never.
        """

    @property
    def status(self) -> CertificateStatus:
        """
        CertificateStatus.
        """

    @property
    def threshold(self) -> float:
        """
        Threshold as given.
        """

class Rank9ChannelDiagnostics:
    """
    Whether nine channels are independent.
    """

    @property
    def conditioning(self) -> float:
        """
        Largest value over the smallest that counts.
        """

    @property
    def numerical_rank(self) -> int:
        """
        Number of singular values that count.
        """

    @property
    def singular_values(self) -> typing.Annotated[list[float], 'FixedSize(9)']:
        """
        The nine values as given.
        """

    @property
    def status(self) -> CertificateStatus:
        """
        CertificateStatus.
        """

class GeometryCertificateAPI:
    """
    Certificates of geometries, pressures, time series and singular values. Bad numbers do not raise:
    the status is Indeterminate then.
    """

    @staticmethod
    def chronos_first_hitting(times: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], observable: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], threshold: typing.SupportsFloat | typing.SupportsIndex) -> ChronosFirstHittingResult:
        """
        ChronosFirstHittingResult: Pass with the linearly interpolated time of the first crossing from below, or
        times[0] if the observable starts at or above the threshold; Fail with +infinity if it never crosses.
        Indeterminate: fewer than two samples, lists of different lengths, decreasing times, or a number that is
        not finite.
        """

    @staticmethod
    def evaluate_contact_saturation(contact_pressures: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], saturation_pressure: typing.SupportsFloat | typing.SupportsIndex, ratio_epsilon: typing.SupportsFloat | typing.SupportsIndex=1e-09, pressure_floor: typing.SupportsFloat | typing.SupportsIndex=0.0) -> ContactSaturationResult:
        """
        ContactSaturationResult: Pass if peak / saturation_pressure is below 1 or within ratio_epsilon of it, Fail
        above. Indeterminate: no pressures, one that is negative or not finite, a saturation pressure that is not
        positive, or a negative epsilon or floor. Contacts above pressure_floor are counted.
        """

    @staticmethod
    def evaluate_tube_geometry(pts: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube_radius: typing.SupportsFloat | typing.SupportsIndex, separation_tol: typing.SupportsFloat | typing.SupportsIndex=1e-09, curvature_tol: typing.SupportsFloat | typing.SupportsIndex=1e-09) -> GeometryCertificate:
        """
        GeometryCertificate of a closed polygon, N lists of three floats or an (N, 3) array. Pass: edges that are
        not neighbours are more than 2 tube_radius + separation_tol apart, and curvature times tube_radius is at
        most 1 + curvature_tol. Indeterminate: fewer than three points, a radius that is not positive, a negative
        tolerance, or a separation or vertex radius that is not finite.
        """

    @staticmethod
    def rank9_from_singular_values(singular_values: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(9)'], tau_rank: typing.SupportsFloat | typing.SupportsIndex=1e-12, max_conditioning: typing.SupportsFloat | typing.SupportsIndex=1000000000000.0) -> Rank9ChannelDiagnostics:
        """
        Rank9ChannelDiagnostics of nine singular values: those above tau_rank times the largest count. Pass:
        rank nine, conditioned no worse than max_conditioning; Indeterminate if worse, for a value that is
        negative or not finite, and for limits that are not positive; Fail for a lower rank.
        """

    @staticmethod
    def sha256_hex_of_points(pts: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> str:
        """
        SHA-256 of the points' coordinates as little-endian doubles, 24 bytes a point: of the stored numbers, so
        that 0.0 and -0.0 differ. 64 lower-case hexadecimal digits.
        """

class PolygonalSmoothCertificate:
    """
    A polygon compared with samples of its smooth curve.
    """

    @property
    def curvature_error(self) -> float:
        """
        Difference of the largest curvatures, 1/length.
        """

    @property
    def hausdorff_bound(self) -> float:
        """
        Larger directed distance, in the points' unit.
        """

    @property
    def polygon_hash(self) -> str:
        """
        fingerprint_points of the polygon, in every outcome.
        """

    @property
    def smooth_hash(self) -> str:
        """
        fingerprint_points of the samples, in every outcome.
        """

    @property
    def status(self) -> CertificateStatus:
        """
        CertificateStatus; never Pass.
        """

    @property
    def tangent_error(self) -> float:
        """
        Largest difference of the unit tangents of segments of equal number.
        """

    @property
    def thickness_lower_bound(self) -> float:
        """
        Smaller of the two least vertex radii.
        """

class PolygonalSmoothCertificateAPI:
    """
    Comparison of a closed polygon with samples of its smooth curve.
    """

    @staticmethod
    def evaluate(polygon_pts: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], smooth_pts: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube_radius: typing.SupportsFloat | typing.SupportsIndex, hausdorff_tol: typing.SupportsFloat | typing.SupportsIndex, tangent_tol: typing.SupportsFloat | typing.SupportsIndex, curvature_tol: typing.SupportsFloat | typing.SupportsIndex) -> PolygonalSmoothCertificate:
        """
        PolygonalSmoothCertificate of two closed curves, N lists of three floats or (N, 3) arrays. Fail: the
        thickness bound is not above tube_radius or an error exceeds its tolerance. Indeterminate: all else, since
        samples cannot prove the curve between them; Pass is never given. Bad numbers do not raise.
        """

    @staticmethod
    def fingerprint_points(pts: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> str:
        """
        GeometryCertificateAPI.sha256_hex_of_points under another name.
        """

class BiotSavartGateResult:
    """
    Whether a regularised Biot-Savart observable agrees with its limit.
    """

    @property
    def boundary_margin(self) -> float:
        """
        Margin as given.
        """

    @property
    def estimated_limit(self) -> float:
        """
        Limit as given, or 1 / (4 pi).
        """

    @property
    def observable(self) -> float:
        """
        Observable as given.
        """

    @property
    def regularization_id(self) -> str:
        """
        Regularisation as given.
        """

    @property
    def relative_residual(self) -> float:
        """
        Relative deviation from the limit.
        """

    @property
    def sample_count(self) -> int:
        """
        Samples as given.
        """

    @property
    def status(self) -> CertificateStatus:
        """
        CertificateStatus.
        """

class BiotSavartGateAPI:
    """
    Gate on the limit of a Biot-Savart observable.
    """

    @staticmethod
    def evaluate(observable: typing.SupportsFloat | typing.SupportsIndex, estimated_limit: typing.SupportsFloat | typing.SupportsIndex, boundary_margin: typing.SupportsFloat | typing.SupportsIndex, min_boundary_margin: typing.SupportsFloat | typing.SupportsIndex, sample_count: typing.SupportsInt | typing.SupportsIndex, regularization_id: str, residual_tol: typing.SupportsFloat | typing.SupportsIndex=0.001, use_four_pi_identity: bool=True) -> BiotSavartGateResult:
        """
        BiotSavartGateResult. The residual is |4 pi observable - 1| with use_four_pi_identity, whatever limit
        is given, else relative to max(|estimated_limit|, 1e-30). Fail: boundary_margin is below its minimum or
        the residual above residual_tol. Indeterminate: no id, no samples, a negative tolerance or minimum, or
        a number that is not finite. Bad numbers do not raise.
        """

class RadarInterval:
    """
    Radar time and distance of an event.
    """

    @property
    def causal(self) -> bool:
        """
        Whether the signal comes back no earlier than it left.
        """

    @property
    def emission_time(self) -> float:
        """
        As given.
        """

    @property
    def radar_distance(self) -> float:
        """
        c / 2 times their difference; NaN unless causal.
        """

    @property
    def radar_time(self) -> float:
        """
        Mean of the two times; NaN unless causal.
        """

    @property
    def reception_time(self) -> float:
        """
        As given.
        """

class LorentzMapResult:
    """
    An event as a moving observer sees it.
    """

    @property
    def gamma(self) -> float:
        """
        Lorentz factor.
        """

    @property
    def invariant_residual(self) -> float:
        """
        Relative change of the interval to the origin.
        """

    @property
    def transformed_event(self) -> typing.Annotated[list[float], 'FixedSize(4)']:
        """
        [t, x, y, z].
        """

class OperationalSpacetimeAPI:
    """
    Radar times and Lorentz boosts of events [t, x, y, z], in any consistent units. No number raises.
    """

    @staticmethod
    def lorentz_boost(event: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(4)'], velocity: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], c: typing.SupportsFloat | typing.SupportsIndex=1.0) -> LorentzMapResult:
        """
        LorentzMapResult of an event (four floats) for an observer of that velocity (three floats). Every
        number is NaN unless c > 0, the speed is below c and all components are finite.
        """

    @staticmethod
    def lorentz_boost_x(event: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(4)'], velocity: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=1.0) -> LorentzMapResult:
        """
        lorentz_boost along x: velocity is one float.
        """

    @staticmethod
    def minkowski_interval2(event_a: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(4)'], event_b: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(4)'], c: typing.SupportsFloat | typing.SupportsIndex=1.0) -> float:
        """
        c^2 dt^2 - |dx|^2 of two events, four floats each.
        """

    @staticmethod
    def radar_interval(emission_time: typing.SupportsFloat | typing.SupportsIndex, reception_time: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=1.0) -> RadarInterval:
        """
        RadarInterval of the times at which a signal leaves and comes back. Not causal, with NaN results,
        if it comes back earlier, c is not positive or a time is not finite.
        """

class QSSSpectrumResult:
    """
    Eigenvalues of a 2 x 2 matrix.
    """

    @property
    def conditioning(self) -> float:
        """
        The same number.
        """

    @property
    def eigen_residual(self) -> float:
        """
        Larger modulus of the characteristic polynomial at them.
        """

    @property
    def eigenvalue_magnitude_ratio(self) -> float:
        """
        Larger modulus over the smaller; +infinity if that is 0.
        """

    @property
    def eigenvalues(self) -> list[complex]:
        """
        Two complex numbers, or none for bad input.
        """

    @property
    def epistemic_status(self) -> str:
        """
        "SYNTHETIC_DIAGNOSTIC", or "OPEN_RESEARCH_GATE" for bad input.
        """

class QSSPseudospectrumSample:
    """
    A resolvent norm at one point of the complex plane.
    """

    @property
    def imag_z(self) -> float:
        """
        Imaginary part.
        """

    @property
    def real_z(self) -> float:
        """
        Real part.
        """

    @property
    def resolvent_norm(self) -> float:
        """
        Inverse distance to the nearer eigenvalue; at most 1e30.
        """

class QSSPseudospectrumResult:
    """
    Resolvent norms on a grid.
    """

    @property
    def epistemic_status(self) -> str:
        """
        "SYNTHETIC_DIAGNOSTIC", or "OPEN_RESEARCH_GATE" for bad input.
        """

    @property
    def max_resolvent_norm(self) -> float:
        """
        Largest norm; NaN for bad input.
        """

    @property
    def samples(self) -> list[QSSPseudospectrumSample]:
        """
        QSSPseudospectrumSample, imaginary part fastest.
        """

class QSSSpectroscopyAPI:
    """
    Diagnostics on made-up 2 x 2 operators. Bad numbers do not raise.
    """

    @staticmethod
    def eigen_2x2(matrix_row_major: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex]) -> QSSSpectrumResult:
        """
        QSSSpectrumResult of four floats, row by row: of real eigenvalues the larger comes first, of
        complex ones that with positive imaginary part. A list of another length gives NaN and no
        eigenvalues.
        """

    @staticmethod
    def pseudospectrum_diag_2x2(a00: typing.SupportsFloat | typing.SupportsIndex, a11: typing.SupportsFloat | typing.SupportsIndex, real_min: typing.SupportsFloat | typing.SupportsIndex, real_max: typing.SupportsFloat | typing.SupportsIndex, n_real: typing.SupportsInt | typing.SupportsIndex, imag_min: typing.SupportsFloat | typing.SupportsIndex, imag_max: typing.SupportsFloat | typing.SupportsIndex, n_imag: typing.SupportsInt | typing.SupportsIndex) -> QSSPseudospectrumResult:
        """
        QSSPseudospectrumResult of diag(a00, a11) on n_real x n_imag points, ends included; one point stands at
        the lower bound. No points or bounds out of order give NaN and no samples. MemoryError for absurd grids.
        """

class PipelineStage:
    """
    The tools that a geometry goes through, in order.

    Members:

      KnotPlot

      Ridgerunner

      Smoothing

      VKMcore

      EddyLab
    """
    EddyLab: typing.ClassVar[PipelineStage]
    KnotPlot: typing.ClassVar[PipelineStage]
    Ridgerunner: typing.ClassVar[PipelineStage]
    Smoothing: typing.ClassVar[PipelineStage]
    VKMcore: typing.ClassVar[PipelineStage]
    __members__: typing.ClassVar[dict[str, PipelineStage]]

    @typing.overload
    def __eq__(self, other: PipelineStage) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: PipelineStage) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class PipelineCertificationStatus:
    """
    What a chain of custody amounts to.

    Members:

      Unknown : Empty, or a record lacks a field.

      Candidate : Complete records that do not make an unbroken chain.

      Certified : An unbroken chain from the first tool to the library.
    """
    Candidate: typing.ClassVar[PipelineCertificationStatus]
    Certified: typing.ClassVar[PipelineCertificationStatus]
    Unknown: typing.ClassVar[PipelineCertificationStatus]
    __members__: typing.ClassVar[dict[str, PipelineCertificationStatus]]

    @typing.overload
    def __eq__(self, other: PipelineCertificationStatus) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: PipelineCertificationStatus) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class ProvenanceRecord:
    """
    One step of a chain of custody. Hashes are SHA-256 as 64 hexadecimal digits; texts are empty at first.
    """

    def __init__(self) -> None:
        ...

    @property
    def certification(self) -> PipelineCertificationStatus:
        """
        PipelineCertificationStatus that the tool itself claims.
        """

    @certification.setter
    def certification(self, arg0: PipelineCertificationStatus, /) -> None:
        ...

    @property
    def coordinate_convention(self) -> str:
        """
        Axes, handedness and order of points.
        """

    @coordinate_convention.setter
    def coordinate_convention(self, arg0: str, /) -> None:
        ...

    @property
    def input_sha256(self) -> str:
        """
        Hash of what it read.
        """

    @input_sha256.setter
    def input_sha256(self, arg0: str, /) -> None:
        ...

    @property
    def output_sha256(self) -> str:
        """
        Hash of what it wrote.
        """

    @output_sha256.setter
    def output_sha256(self, arg0: str, /) -> None:
        ...

    @property
    def parameter_sha256(self) -> str:
        """
        Hash of its parameters.
        """

    @parameter_sha256.setter
    def parameter_sha256(self, arg0: str, /) -> None:
        ...

    @property
    def parent_record_sha256(self) -> str:
        """
        Fingerprint of the record before; empty in the first.
        """

    @parent_record_sha256.setter
    def parent_record_sha256(self, arg0: str, /) -> None:
        ...

    @property
    def scale_convention(self) -> str:
        """
        Unit of length.
        """

    @scale_convention.setter
    def scale_convention(self, arg0: str, /) -> None:
        ...

    @property
    def stage(self) -> PipelineStage:
        """
        PipelineStage of the tool.
        """

    @stage.setter
    def stage(self, arg0: PipelineStage, /) -> None:
        ...

    @property
    def timestamp_utc(self) -> str:
        """
        Such as 2024-01-01T00:00:00Z; fractions of a second are allowed.
        """

    @timestamp_utc.setter
    def timestamp_utc(self, arg0: str, /) -> None:
        ...

    @property
    def tool_name(self) -> str:
        """
        Name of the tool.
        """

    @tool_name.setter
    def tool_name(self, arg0: str, /) -> None:
        ...

    @property
    def tool_version(self) -> str:
        """
        Its version.
        """

    @tool_version.setter
    def tool_version(self, arg0: str, /) -> None:
        ...

class PipelineProvenanceAPI:
    """
    Fingerprints and verdicts of chains of custody. Nothing here raises.
    """

    @staticmethod
    def certification_name(arg0: PipelineCertificationStatus, /) -> str:
        """
        Name of a PipelineCertificationStatus; "Unknown" for other values.
        """

    @staticmethod
    def evaluate_chain(arg0: collections.abc.Sequence[ProvenanceRecord], /) -> PipelineCertificationStatus:
        """
        PipelineCertificationStatus of a list of records. Unknown: it is empty or a record is incomplete.
        Certified: hashes and times are well formed; the first record is KnotPlot's, without a parent; each later
        one holds its predecessor's fingerprint, reads what that wrote, has its stage or the next, and keeps its
        conventions; the last is VKMcore's or EddyLab's. Candidate: all else.
        """

    @staticmethod
    def fingerprint_hex(arg0: str, /) -> str:
        """
        SHA-256 (FIPS 180-4) of the UTF-8 bytes of a text, as 64 lower-case hexadecimal digits.
        """

    @staticmethod
    def record_complete(arg0: ProvenanceRecord, /) -> bool:
        """
        Whether no text of the record but the parent's fingerprint is empty.
        """

    @staticmethod
    def record_fingerprint(arg0: ProvenanceRecord, /) -> str:
        """
        SHA-256 of the eleven fields of a record in their order, stage and certification by name, joined by
        "|" without escaping.
        """

    @staticmethod
    def stage_name(arg0: PipelineStage, /) -> str:
        """
        Name of a PipelineStage; "Unknown" for other values.
        """

class TorsionMassResult:
    """
    Inertial mass of a core's torsional energy.
    """

    @property
    def convention(self) -> str:
        """
        Formula of the mass.
        """

    @property
    def dimensional_residual(self) -> float:
        """
        Deviation of c_T^2 mass from the energy.
        """

    @property
    def mass(self) -> float:
        """
        Mass, kg; NaN for bad input.
        """

    @property
    def ok(self) -> bool:
        """
        Whether the input was valid.
        """

class AnisotropyResiduals:
    """
    How far a core matrix is from isotropic.
    """

    @property
    def chi_hat(self) -> float:
        """
        c_T^2 tr M / (3 E0).
        """

    @property
    def delta_aniso(self) -> float:
        """
        Norm of the deviator over the mean of the diagonal.
        """

    @property
    def epistemic_status(self) -> str:
        """
        Always "OPEN_RESEARCH_GATE".
        """

    @property
    def normalization(self) -> float:
        """
        3 E0.
        """

    @property
    def ok(self) -> bool:
        """
        Whether both residuals are finite.
        """

class CoreTorsionAPI:
    """
    Torsional mass and anisotropy of a core. Nothing here raises.
    """

    @staticmethod
    def anisotropy_residuals(M_row_major: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(9)'], E0: typing.SupportsFloat | typing.SupportsIndex, c_T: typing.SupportsFloat | typing.SupportsIndex) -> AnisotropyResiduals:
        """
        AnisotropyResiduals of a symmetric 3 x 3 matrix, nine floats row by row. All zero and not ok
        unless E0 > 0, c_T > 0 and M is finite; delta_aniso is NaN for a matrix that is not symmetric.
        """

    @staticmethod
    def torsion_inertial_mass(E0: typing.SupportsFloat | typing.SupportsIndex, I: typing.SupportsFloat | typing.SupportsIndex, c_T: typing.SupportsFloat | typing.SupportsIndex) -> TorsionMassResult:
        """
        TorsionMassResult of E0 I / c_T^2: energy in J, dimensionless factor, wave speed in m/s. NaN and
        not ok unless E0 >= 0, I >= 0, c_T > 0 and all are finite.
        """

    @staticmethod
    def torsion_inertial_mass_legacy_factor2(E0: typing.SupportsFloat | typing.SupportsIndex, I: typing.SupportsFloat | typing.SupportsIndex, c_T: typing.SupportsFloat | typing.SupportsIndex) -> TorsionMassResult:
        """
        The same with twice the mass, an older convention.
        """

class LinkGateFailure:
    """
    The first step of the link field gate that fails.

    Members:

      None_ : None.

      E : rho_star is not positive.

      T : Gamma_star is not positive.

      N : r_star is not positive.

      M : The phase residual is above its tolerance.
    """
    E: typing.ClassVar[LinkGateFailure]
    M: typing.ClassVar[LinkGateFailure]
    N: typing.ClassVar[LinkGateFailure]
    None_: typing.ClassVar[LinkGateFailure]
    T: typing.ClassVar[LinkGateFailure]
    __members__: typing.ClassVar[dict[str, LinkGateFailure]]

    @typing.overload
    def __eq__(self, other: LinkGateFailure) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: LinkGateFailure) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class LinkFieldGateResult:
    """
    Admissibility of the parameters of a link field.
    """

    @property
    def Gamma_star(self) -> float:
        """
        Circulation as given, m^2/s.
        """

    @property
    def epistemic_status(self) -> str:
        """
        Always "OPEN_RESEARCH_GATE".
        """

    @property
    def failure(self) -> LinkGateFailure:
        """
        LinkGateFailure: the first step that fails.
        """

    @property
    def passed(self) -> bool:
        """
        Whether all four steps hold.
        """

    @property
    def phase_residual(self) -> float:
        """
        Phase residual as given.
        """

    @property
    def r_star(self) -> float:
        """
        Length as given, m.
        """

    @property
    def rho_star(self) -> float:
        """
        Density as given, kg/m^3.
        """

class LinkFieldGateAPI:
    """
    Gate on the parameters of a link field. Nothing here raises.
    """

    @staticmethod
    def evaluate(rho_star: typing.SupportsFloat | typing.SupportsIndex, Gamma_star: typing.SupportsFloat | typing.SupportsIndex, r_star: typing.SupportsFloat | typing.SupportsIndex, phase_residual: typing.SupportsFloat | typing.SupportsIndex, tol: typing.SupportsFloat | typing.SupportsIndex=1e-06) -> LinkFieldGateResult:
        """
        LinkFieldGateResult. In this order: E, T, N if rho_star, Gamma_star, r_star is not positive, M
        unless |phase_residual| <= tol. A NaN fails the step that tests it.
        """

    @staticmethod
    def failure_name(arg0: LinkGateFailure, /) -> str:
        """
        "None", "E", "T", "N" or "M"; "None" for other values.
        """

class KAMSector:
    """
    Sectors of a KAM analysis.

    Members:

      S : Sector S.

      T : Sector T.
    """
    S: typing.ClassVar[KAMSector]
    T: typing.ClassVar[KAMSector]
    __members__: typing.ClassVar[dict[str, KAMSector]]

    @typing.overload
    def __eq__(self, other: KAMSector) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: KAMSector) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class KAMStage:
    """
    Stages of a KAM analysis. Nothing reaches those above KAM1.

    Members:

      KAM0 : Nothing shown.

      KAM1 : Twist condition and low-order resonances.

      KAM2 : A name only.

      KAM3 : A name only.

      KAM4 : A name only.

      KAM5 : A name only.
    """
    KAM0: typing.ClassVar[KAMStage]
    KAM1: typing.ClassVar[KAMStage]
    KAM2: typing.ClassVar[KAMStage]
    KAM3: typing.ClassVar[KAMStage]
    KAM4: typing.ClassVar[KAMStage]
    KAM5: typing.ClassVar[KAMStage]
    __members__: typing.ClassVar[dict[str, KAMStage]]

    @typing.overload
    def __eq__(self, other: KAMStage) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: KAMStage) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class KAMStage1Result:
    """
    Twist condition and low-order resonances of a frequency vector.
    """

    @property
    def achieved_stage(self) -> KAMStage:
        """
        KAM1 with status Pass, else KAM0.
        """

    @property
    def diophantine_margin(self) -> float:
        """
        minimum_detuning - diophantine_tau.
        """

    @property
    def frequencies(self) -> list[float]:
        """
        As given.
        """

    @property
    def hessian(self) -> list[float]:
        """
        As given.
        """

    @property
    def hessian_determinant(self) -> float:
        """
        Determinant of the Hessian.
        """

    @property
    def minimum_detuning(self) -> float:
        """
        Least |k . omega|, in the unit of the frequencies.
        """

    @property
    def sector(self) -> KAMSector:
        """
        KAMSector as given.
        """

    @property
    def status(self) -> CertificateStatus:
        """
        CertificateStatus.
        """

class KAMDiagnosticsAPI:
    """
    The first stage of a KAM analysis. No number raises.
    """

    @staticmethod
    def golden_ratio_null_test(value: typing.SupportsFloat | typing.SupportsIndex, tol: typing.SupportsFloat | typing.SupportsIndex=1e-09) -> bool:
        """
        Whether a value is the golden ratio within tol.
        """

    @staticmethod
    def sector_name(arg0: KAMSector, /) -> str:
        """
        "S", and "T" for all other values.
        """

    @staticmethod
    def stage1(sector: KAMSector, frequencies: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], hessian_row_major: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], diophantine_tau: typing.SupportsFloat | typing.SupportsIndex=1e-06) -> KAMStage1Result:
        """
        KAMStage1Result of n frequencies and an n x n Hessian, row by row. Pass: |determinant| and the least
        |k . omega| over integer vectors k, components from -2 to 2 and not all 0, both exceed diophantine_tau.
        Indeterminate: no frequencies, a Hessian of another size, a diophantine_tau that is not positive, or a
        number that is not finite. The time grows with 5^n at worst.
        """

    @staticmethod
    def stage_name(arg0: KAMStage, /) -> str:
        """
        "KAM-1" to "KAM-5", and "KAM-0" for all other values.
        """

class ValueOrigin:
    """
    Where a number came from.

    Members:

      CanonicalSnapshot : Written down once.

      Recomputed : From its formula.

      CalibratedInput : Fitted; supports no prediction.
    """
    CalibratedInput: typing.ClassVar[ValueOrigin]
    CanonicalSnapshot: typing.ClassVar[ValueOrigin]
    Recomputed: typing.ClassVar[ValueOrigin]
    __members__: typing.ClassVar[dict[str, ValueOrigin]]

    @typing.overload
    def __eq__(self, other: ValueOrigin) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: ValueOrigin) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class CanonicalValue:
    """
    A number with its origin.
    """

    @property
    def name(self) -> str:
        """
        Name.
        """

    @property
    def origin(self) -> ValueOrigin:
        """
        ValueOrigin.
        """

    @property
    def significant_figures(self) -> int:
        """
        Figures; -1 if not stated.
        """

    @property
    def value(self) -> float:
        """
        Value.
        """

class SnapshotCompareResult:
    """
    A value as it was written down, beside what its formula gives.
    """

    @property
    def recomputed(self) -> float:
        """
        Value of the formula.
        """

    @property
    def residual(self) -> float:
        """
        |recomputed - snapshot|.
        """

    @property
    def snapshot(self) -> float:
        """
        Value as written down.
        """

    @property
    def snapshot_unchanged(self) -> bool:
        """
        The literal was not edited in one place only; no numerical test.
        """

class ValueOriginAPI:
    """
    Origins of numbers, and guards on calibrated ones. Nothing here raises.
    """

    @staticmethod
    def bare_mass_from_dimensionless_length(L_tot: typing.SupportsFloat | typing.SupportsIndex, m_e: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        L_tot m_e / 4, in the unit of m_e; NaN unless m_e is positive and L_tot finite.
        """

    @staticmethod
    def bare_mass_ratio_from_dimensionless_length(L_tot: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        L_tot / 4, in electron masses; NaN if L_tot is not finite.
        """

    @staticmethod
    def compare_fmax_snapshot_to_recomputed() -> SnapshotCompareResult:
        """
        SnapshotCompareResult of the maximal swirl force.
        """

    @staticmethod
    def fmax_recompute_from_primitives() -> float:
        """
        The maximal swirl force of VKMCanonicalConstants.values(), N.
        """

    @staticmethod
    def fmax_rydberg_16pi2(hbar: typing.SupportsFloat | typing.SupportsIndex, R_infty: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        16 pi^2 hbar R_infty^2 c / alpha^5, N in SI units: hbar omega_c / (2 r_c) with omega_c = 4 pi c
        R_infty / alpha^2 and r_c = alpha^3 / (8 pi R_infty). NaN unless all are positive.
        """

    @staticmethod
    def fmax_rydberg_32pi2(hbar: typing.SupportsFloat | typing.SupportsIndex, R_infty: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        Twice fmax_rydberg_16pi2.
        """

    @staticmethod
    def fmax_snapshot() -> float:
        """
        The maximal swirl force as written down, 29.053507 N.
        """

    @staticmethod
    def make_canonical_value(name: str, value: typing.SupportsFloat | typing.SupportsIndex, origin: ValueOrigin, significant_figures: typing.SupportsInt | typing.SupportsIndex=-1) -> CanonicalValue:
        """
        CanonicalValue of these.
        """

    @staticmethod
    def origin_name(arg0: ValueOrigin, /) -> str:
        """
        Name of a ValueOrigin; "CanonicalSnapshot" for other values.
        """

    @staticmethod
    def reject_qdm_line_inertia_as_rho_f_derivation(proposed_kg_per_m: typing.SupportsFloat | typing.SupportsIndex, proposed_rho_f_kg_per_m3: typing.SupportsFloat | typing.SupportsIndex) -> bool:
        """
        Always True, a policy: a line inertia in kg/m is no derivation of a density in kg/m^3.
        """

    @staticmethod
    def rho_eff_rescale_preserves_calibrated_primitives(v_swirl_before: typing.SupportsFloat | typing.SupportsIndex, omega_c_before: typing.SupportsFloat | typing.SupportsIndex, r_c_before: typing.SupportsFloat | typing.SupportsIndex, gamma_0_before: typing.SupportsFloat | typing.SupportsIndex, v_swirl_after: typing.SupportsFloat | typing.SupportsIndex, omega_c_after: typing.SupportsFloat | typing.SupportsIndex, r_c_after: typing.SupportsFloat | typing.SupportsIndex, gamma_0_after: typing.SupportsFloat | typing.SupportsIndex, rel_tol: typing.SupportsFloat | typing.SupportsIndex=0.0) -> bool:
        """
        Whether all four primitives agree before and after: |a - b| <= max(|a|, |b|, 1) rel_tol.
        """

    @staticmethod
    def rho_f_is_two_sigfig_calibration(rho_f: typing.SupportsFloat | typing.SupportsIndex) -> bool:
        """
        Whether rounding to two figures changes rho_f by no more than 1e-30 max(|rho_f|, 1).
        """

    @staticmethod
    def rho_f_two_sigfig(rho_f: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        rho_f rounded to two significant figures; NaN unless positive and finite.
        """

class CheckKind:
    """
    What kind of claim a numerical check supports.

    Members:

      AlgebraicIdentity : Follows from the definitions.

      CalibratedClosure : Holds because a constant was fitted to make it hold.

      IndependentPrediction : No input of the check was fitted to its target.

      NumericalConvergence : A discretisation tends to its limit.

      ConditionalBridge : Holds under an assumption that is itself unproven.

      OpenResearchGate : Undecided; what an unclassified check is.

      SyntheticDiagnostic : Made-up input, to exercise the code.
    """
    AlgebraicIdentity: typing.ClassVar[CheckKind]
    CalibratedClosure: typing.ClassVar[CheckKind]
    ConditionalBridge: typing.ClassVar[CheckKind]
    IndependentPrediction: typing.ClassVar[CheckKind]
    NumericalConvergence: typing.ClassVar[CheckKind]
    OpenResearchGate: typing.ClassVar[CheckKind]
    SyntheticDiagnostic: typing.ClassVar[CheckKind]
    __members__: typing.ClassVar[dict[str, CheckKind]]

    @typing.overload
    def __eq__(self, other: CheckKind) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: CheckKind) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class CheckResult:
    """
    The outcome of one check, and what it may support.
    """

    def __init__(self) -> None:
        ...

    @property
    def kind(self) -> CheckKind:
        """
        CheckKind; OpenResearchGate unless classified.
        """

    @kind.setter
    def kind(self, arg0: CheckKind, /) -> None:
        ...

    @property
    def message(self) -> str:
        """
        Any text.
        """

    @message.setter
    def message(self, arg1: str, /) -> None:
        ...

    @property
    def name(self) -> str:
        """
        Name of the check.
        """

    @name.setter
    def name(self, arg1: str, /) -> None:
        ...

    @property
    def passed(self) -> bool:
        """
        The check holds.
        """

    @passed.setter
    def passed(self, arg0: bool, /) -> None:
        ...

    @property
    def residual(self) -> float:
        """
        Deviation found, in the unit of the tolerance.
        """

    @residual.setter
    def residual(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

    @property
    def supports_empirical_claim(self) -> bool:
        """
        A claim about nature may rest on it.
        """

    @supports_empirical_claim.setter
    def supports_empirical_claim(self, arg0: bool, /) -> None:
        ...

    @property
    def tolerance(self) -> float:
        """
        Deviation allowed.
        """

    @tolerance.setter
    def tolerance(self, arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> None:
        ...

class EvidenceReportMeta:
    """
    Where a report was made; all texts, all empty at first.
    """

    def __init__(self) -> None:
        ...

    @property
    def canon_version(self) -> str:
        """
        Version of the canon; the library's where empty.
        """

    @canon_version.setter
    def canon_version(self, arg1: str, /) -> None:
        ...

    @property
    def compiler(self) -> str:
        """
        Compiler and version.
        """

    @compiler.setter
    def compiler(self, arg1: str, /) -> None:
        ...

    @property
    def git_commit(self) -> str:
        """
        Commit of the sources.
        """

    @git_commit.setter
    def git_commit(self, arg1: str, /) -> None:
        ...

    @property
    def numeric_profile(self) -> str:
        """
        Rules of arithmetic, as the author names them.
        """

    @numeric_profile.setter
    def numeric_profile(self, arg1: str, /) -> None:
        ...

    @property
    def platform(self) -> str:
        """
        Machine and operating system.
        """

    @platform.setter
    def platform(self, arg1: str, /) -> None:
        ...

    @property
    def vkmcore_version(self) -> str:
        """
        Library version; its own is written where empty.
        """

    @vkmcore_version.setter
    def vkmcore_version(self, arg1: str, /) -> None:
        ...

class EvidenceReportAPI:
    """
    Evidence reports as JSON documents, schema version 1.0.
    """

    @staticmethod
    def build_report_json(meta: EvidenceReportMeta, checks: collections.abc.Sequence[CheckResult]) -> str:
        """
        The report of a list of CheckResult as JSON text with a fixed layout. Numbers have 17 significant digits;
        NaN and the infinities are null.
        """

    @staticmethod
    def write_evidence_report(path: str, meta: EvidenceReportMeta, checks: collections.abc.Sequence[CheckResult]) -> bool:
        """
        Writes the report to a file, replacing it. True if all of it was written; False for an empty or unwritable
        path, with no error raised, no directory made, and the old file left as it was.
        """

class ActionPhaseResiduals:
    """
    Consistency of the mass-shell formulas at one momentum.
    """

    @property
    def delta_shape_separability(self) -> float:
        """
        Tripwire of the shape's separability.
        """

    @property
    def finite(self) -> bool:
        """
        Whether all six are finite.
        """

    @property
    def gamma_consistency(self) -> float:
        """
        Tripwire of gamma's formula.
        """

    @property
    def hamiltonian_consistency(self) -> float:
        """
        |H^2 - (E0^2 + (c p)^2)| relative to max(1, H^2).
        """

    @property
    def ok(self) -> bool:
        """
        The same.
        """

    @property
    def phase_rate_consistency(self) -> float:
        """
        Tripwire of the phase rate.
        """

    @property
    def proper_time_consistency(self) -> float:
        """
        Tripwire of the proper time rate.
        """

    @property
    def velocity_consistency(self) -> float:
        """
        Tripwire of the velocity's formula.
        """

    @property
    def within_tolerance(self) -> bool:
        """
        Whether the largest is at most the tolerance.
        """

class ActionPhaseAPI:
    """
    The mass shell H = sqrt((p c)^2 + E0^2) and the internal phase on it, in any consistent units.
    Nothing here raises: results are NaN unless p, E0 and c are finite and E0 and c positive.
    """

    @staticmethod
    def action_phase_residuals(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex, Omega0: typing.SupportsFloat | typing.SupportsIndex, tol: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> ActionPhaseResiduals:
        """
        ActionPhaseResiduals. All zero and not ok unless H and Omega0 are finite and tol is not negative.
        """

    @staticmethod
    def coupled_shape_residual(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, dE0_dq: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex, f_q: typing.SupportsFloat | typing.SupportsIndex, df_dq: typing.SupportsFloat | typing.SupportsIndex, eps: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        |(p^2 f_q eps + d) - d| with d = (E0 / H) dE0_dq; NaN unless the other four are finite, too.
        """

    @staticmethod
    def delta_shape_separability(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, dE0_dq: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        |d - d| with d = (E0 / H) dE0_dq; NaN unless dE0_dq is finite, too.
        """

    @staticmethod
    def fixed_v_phase_error_factor(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        (H / E0)^2 - 1.
        """

    @staticmethod
    def gamma_from_mass_shell(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        H / E0.
        """

    @staticmethod
    def internal_phase_rate_at_fixed_momentum(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex, Omega0: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        E0 Omega0 / H; NaN unless Omega0 is finite, too.
        """

    @staticmethod
    def mass_shell_hamiltonian(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        H, by hypot.
        """

    @staticmethod
    def proper_time_rate(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        dH/dE0 = E0 / H.
        """

    @staticmethod
    def velocity_from_mass_shell(p: typing.SupportsFloat | typing.SupportsIndex, E0: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
        """
        dH/dp = p c^2 / H.
        """

class DensitySymbol:
    """
    Density symbols that must not be mistaken for each other.

    Members:

      RhoSub : Substrate density, kg/m^3.

      RhoEff : Effective density, kg/m^3.

      JOmega : Rotational inertia, kg/m.

      MuL : Line mass, kg/m.
    """
    JOmega: typing.ClassVar[DensitySymbol]
    MuL: typing.ClassVar[DensitySymbol]
    RhoEff: typing.ClassVar[DensitySymbol]
    RhoSub: typing.ClassVar[DensitySymbol]
    __members__: typing.ClassVar[dict[str, DensitySymbol]]

    @typing.overload
    def __eq__(self, other: DensitySymbol) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: DensitySymbol) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class EnergyDensityForm:
    """
    Energy densities that somebody may propose.

    Members:

      HalfRhoEffDtASquared : 1/2 rho_eff |d_t A|^2, A in m.

      HalfJOmegaOmegaSquared : 1/2 J_omega |omega|^2.

      HalfRhoFOmegaSquaredNoLength : 1/2 rho_f |omega|^2, which lacks a length^2.

      Unknown
    """
    HalfJOmegaOmegaSquared: typing.ClassVar[EnergyDensityForm]
    HalfRhoEffDtASquared: typing.ClassVar[EnergyDensityForm]
    HalfRhoFOmegaSquaredNoLength: typing.ClassVar[EnergyDensityForm]
    Unknown: typing.ClassVar[EnergyDensityForm]
    __members__: typing.ClassVar[dict[str, EnergyDensityForm]]

    @typing.overload
    def __eq__(self, other: EnergyDensityForm) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: EnergyDensityForm) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class DimensionalCheckResult:
    """
    Whether a formula has the right dimension.
    """

    @property
    def allowed(self) -> bool:
        """
        It has.
        """

    @property
    def reason(self) -> str:
        """
        Why, or why not.
        """

class DensityOntologyAPI:
    """
    Density symbols and the energy densities on them. Nothing here raises.
    """

    @staticmethod
    def j_omega_differs_from_mu_l(j_omega: typing.SupportsFloat | typing.SupportsIndex, mu_l: typing.SupportsFloat | typing.SupportsIndex, abs_tol: typing.SupportsFloat | typing.SupportsIndex=0.0) -> bool:
        """
        Whether two line densities are more than abs_tol apart; True if one is not finite.
        """

    @staticmethod
    def reject_j_omega_equals_rho_f_ell2_without_bridge(j_omega: typing.SupportsFloat | typing.SupportsIndex, rho_f: typing.SupportsFloat | typing.SupportsIndex, ell2: typing.SupportsFloat | typing.SupportsIndex) -> bool:
        """
        Always True, a policy: J_omega is not rho_f length^2 unless a bridge derives the length.
        """

    @staticmethod
    def rho_f_aliases_rho_eff() -> bool:
        """
        Always True, a policy: rho_f is the effective density under its old name.
        """

    @staticmethod
    def rho_sub_differs_from_rho_f(rho_sub: typing.SupportsFloat | typing.SupportsIndex, rho_f: typing.SupportsFloat | typing.SupportsIndex, abs_tol: typing.SupportsFloat | typing.SupportsIndex=0.0) -> bool:
        """
        Whether two densities are more than abs_tol apart; True if one is not finite.
        """

    @staticmethod
    def symbol_name(arg0: DensitySymbol, /) -> str:
        """
        Symbol of a DensitySymbol; "unknown" for other values.
        """

    @staticmethod
    def symbol_unit(arg0: DensitySymbol, /) -> str:
        """
        Unit of a DensitySymbol; empty for other values.
        """

    @staticmethod
    def validate_energy_density_form(arg0: EnergyDensityForm, /) -> DimensionalCheckResult:
        """
        DimensionalCheckResult of an EnergyDensityForm.
        """

class WaveModeClass:
    """
    How a core's wave answers to its amplitude.

    Members:

      LinearTwist : A twist wave.

      QuadraticKelvinBend : A bend of the filament.

      Unknown : Neither, or both.
    """
    LinearTwist: typing.ClassVar[WaveModeClass]
    QuadraticKelvinBend: typing.ClassVar[WaveModeClass]
    Unknown: typing.ClassVar[WaveModeClass]
    __members__: typing.ClassVar[dict[str, WaveModeClass]]

    @typing.overload
    def __eq__(self, other: WaveModeClass) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: WaveModeClass) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class RotorParticipationResult:
    """
    How much of a medium takes part in a core's rotation.
    """

    @property
    def c_omega(self) -> float:
        """
        v_swirl as given, m/s.
        """

    @property
    def ell_rho_eq_ref(self) -> float:
        """
        sqrt(j_omega_rot / rho_ref), m.
        """

    @property
    def j_omega_rot(self) -> float:
        """
        pi r_c^2 rho_horn, kg/m.
        """

    @property
    def phi_dyn_ref(self) -> float:
        """
        rho_ref / (pi rho_horn).
        """

class RotorParticipationAPI:
    """
    Participation of a medium in a core's rotation. Nothing here raises.
    """

    @staticmethod
    def c_omega_equals_v_swirl(arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        The argument itself.
        """

    @staticmethod
    def classify_wave_mode(arg0: bool, arg1: bool, /) -> WaveModeClass:
        """
        WaveModeClass of (linear, quadratic); Unknown unless exactly one holds.
        """

    @staticmethod
    def ell_rho_eq_ref(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (j, rho): sqrt(j / rho); NaN unless both are positive.
        """

    @staticmethod
    def evaluate(r_c: typing.SupportsFloat | typing.SupportsIndex=1.40897017e-15, rho_horn: typing.SupportsFloat | typing.SupportsIndex=3.8934358266918687e+18, rho_ref: typing.SupportsFloat | typing.SupportsIndex=7e-07, v_swirl: typing.SupportsFloat | typing.SupportsIndex=1093845.63) -> RotorParticipationResult:
        """
        RotorParticipationResult of a core radius (m), two densities (kg/m^3) and a swirl speed (m/s); NaN
        where a formula needs a positive number and has none.
        """

    @staticmethod
    def j_omega_rot(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (r, rho): pi r^2 rho; NaN unless both are positive.
        """

    @staticmethod
    def phi_dyn_ref(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (rho_ref, rho_horn): rho_ref / (pi rho_horn); NaN unless both are positive.
        """

class PrimitiveSet:
    """
    Sets of primitive quantities.

    Members:

      PCal : Calibrated.

      POpen : Open: a rescale of the density may change them.

      PRef : Reference values.
    """
    PCal: typing.ClassVar[PrimitiveSet]
    POpen: typing.ClassVar[PrimitiveSet]
    PRef: typing.ClassVar[PrimitiveSet]
    __members__: typing.ClassVar[dict[str, PrimitiveSet]]

    @typing.overload
    def __eq__(self, other: PrimitiveSet) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: PrimitiveSet) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class ScalingClass:
    """
    How an observable answers to a rescale of the density.

    Members:

      A : Invariant.

      B : A normalisation that absorbs the factor.

      C : An absolute value, which takes the factor.

      Q : A quantum or its normalisation.

      X : Unclassified: nothing may be inferred.
    """
    A: typing.ClassVar[ScalingClass]
    B: typing.ClassVar[ScalingClass]
    C: typing.ClassVar[ScalingClass]
    Q: typing.ClassVar[ScalingClass]
    X: typing.ClassVar[ScalingClass]
    __members__: typing.ClassVar[dict[str, ScalingClass]]

    @typing.overload
    def __eq__(self, other: ScalingClass) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: ScalingClass) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class PrimitiveSetMembership:
    """
    The sets that a symbol belongs to.
    """

    @property
    def in_p_cal(self) -> bool:
        """
        Calibrated.
        """

    @property
    def in_p_open(self) -> bool:
        """
        Open.
        """

    @property
    def in_p_ref(self) -> bool:
        """
        A reference value.
        """

    @property
    def legacy_reference(self) -> bool:
        """
        A reference that is kept for old inputs only.
        """

class ScalingAuditAPI:
    """
    What a rescale of the density may change. Nothing here raises.
    """

    @staticmethod
    def class_a_invariant_under_rescale() -> bool:
        """
        Always True, a policy: class A does not change under a rescale.
        """

    @staticmethod
    def class_x_blocks_inference() -> bool:
        """
        Always True, a policy: nothing may be inferred from class X.
        """

    @staticmethod
    def classify_observable(arg0: str, /) -> ScalingClass:
        """
        ScalingClass of an observable such as "absolute_mass", case-sensitive; X for unknown ones.
        """

    @staticmethod
    def classify_symbol(arg0: str, /) -> PrimitiveSetMembership:
        """
        PrimitiveSetMembership of a symbol such as "rho_f", case-sensitive; no set for unknown ones.
        """

    @staticmethod
    def is_legacy_reference_density(arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> bool:
        """
        Whether a density is exactly rho_ref_legacy().
        """

    @staticmethod
    def primitive_set_name(arg0: PrimitiveSet, /) -> str:
        """
        "P_cal", "P_open" or "P_ref"; "?" for other values.
        """

    @staticmethod
    def rho_ref_legacy() -> float:
        """
        The reference density of old inputs, 7e-7 kg/m^3.
        """

    @staticmethod
    def scaling_class_name(arg0: ScalingClass, /) -> str:
        """
        Letter of a ScalingClass; "?" for other values.
        """

class WorldsheetGuardResult:
    """
    The worldsheet guards, each on its own and together.
    """

    @property
    def b_not_a_em(self) -> bool:
        """
        Nobody claims that B is A_em.
        """

    @property
    def charge_not_gamma0(self) -> bool:
        """
        The charge is not the circulation quantum.
        """

    @property
    def form_degree_ok(self) -> bool:
        """
        The degree is not 2.
        """

    @property
    def material_v_not_a_eff(self) -> bool:
        """
        Nobody claims that the velocity is A_eff.
        """

    @property
    def message(self) -> str:
        """
        The verdict in words.
        """

    @property
    def passed(self) -> bool:
        """
        All four.
        """

class WorldsheetGuardsAPI:
    """
    Guards of the worldsheet coupling. No number raises.
    """

    @staticmethod
    def b_field_not_identified_with_a_em(arg0: bool, /) -> bool:
        """
        The negation of the claim that B is A_em.
        """

    @staticmethod
    def charge_differs_from_circulation(q_B: typing.SupportsFloat | typing.SupportsIndex, gamma_0: typing.SupportsFloat | typing.SupportsIndex, abs_tol: typing.SupportsFloat | typing.SupportsIndex=0.0) -> bool:
        """
        Whether the two are more than abs_tol apart, or one is not finite.
        """

    @staticmethod
    def evaluate(form_degree_H: typing.SupportsInt | typing.SupportsIndex, q_B: typing.SupportsFloat | typing.SupportsIndex, gamma_0: typing.SupportsFloat | typing.SupportsIndex, claimed_b_is_a_em: bool, claimed_v_is_a_eff: bool) -> WorldsheetGuardResult:
        """
        WorldsheetGuardResult: the degree is not 2, the charge is not the circulation, nothing is claimed.
        """

    @staticmethod
    def form_degree_H(arg0: typing.SupportsInt | typing.SupportsIndex, /) -> int:
        """
        The degree as given.
        """

    @staticmethod
    def ladder_stage_name(arg0: typing.SupportsInt | typing.SupportsIndex, /) -> str:
        """
        Name of the stages 0 ("mode_census") to 6 ("oos_phenomenology"); "unknown" for others.
        """

    @staticmethod
    def material_velocity_not_a_eff(arg0: bool, /) -> bool:
        """
        The negation of the claim that the material velocity is A_eff.
        """

    @typing.overload
    @staticmethod
    def two_form_degree_guard(sphere_dimension: typing.SupportsInt | typing.SupportsIndex, form_degree_H: typing.SupportsInt | typing.SupportsIndex) -> bool:
        """
        Whether the two integers are equal. evaluate tests the degree in the opposite sense.
        """

    @typing.overload
    @staticmethod
    def two_form_degree_guard(sphere_dimension: typing.SupportsInt | typing.SupportsIndex=2, *, form_degree_H: typing.SupportsInt | typing.SupportsIndex) -> bool:
        """
        Whether the two integers are equal. evaluate tests the degree in the opposite sense.
        """

class KnotRegime:
    """
    Shape of a knot's tube.

    Members:

      Compact : Curvature or separation is of the order of the core.

      Slender : The core is thin.

      Indeterminate : Cannot be judged.
    """
    Compact: typing.ClassVar[KnotRegime]
    Indeterminate: typing.ClassVar[KnotRegime]
    Slender: typing.ClassVar[KnotRegime]
    __members__: typing.ClassVar[dict[str, KnotRegime]]

    @typing.overload
    def __eq__(self, other: KnotRegime) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: KnotRegime) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class IdealKnotRegimeResult:
    """
    The regime of a knot's tube.
    """

    @property
    def epsilon_kappa(self) -> float:
        """
        a_core kappa_max.
        """

    @property
    def epsilon_sep(self) -> float:
        """
        a_core / d_sep.
        """

    @property
    def helicity_moffatt_ricca(self) -> float:
        """
        gamma^2 (writhe + twist).
        """

    @property
    def kkt_residual(self) -> float:
        """
        As given.
        """

    @property
    def lia_kam_excluded(self) -> bool:
        """
        Whether the regime is Compact.
        """

    @property
    def message(self) -> str:
        """
        The verdict in words.
        """

    @property
    def regime(self) -> KnotRegime:
        """
        KnotRegime.
        """

class IdealKnotRegimeAPI:
    """
    Compact or slender tubes of knots. Nothing here raises.
    """

    @staticmethod
    def classify_regime(eps_kappa: typing.SupportsFloat | typing.SupportsIndex, eps_sep: typing.SupportsFloat | typing.SupportsIndex, order_one: typing.SupportsFloat | typing.SupportsIndex=0.3) -> KnotRegime:
        """
        KnotRegime: Compact if either number is at least order_one, Slender if both are below,
        Indeterminate if one of them is not finite.
        """

    @staticmethod
    def epsilon_kappa(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (a_core, kappa_max): their product; NaN unless a_core > 0 and kappa_max >= 0.
        """

    @staticmethod
    def epsilon_sep(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (a_core, d_sep): a_core / d_sep; NaN unless both are positive.
        """

    @staticmethod
    def evaluate(a_core: typing.SupportsFloat | typing.SupportsIndex, kappa_max: typing.SupportsFloat | typing.SupportsIndex, d_sep: typing.SupportsFloat | typing.SupportsIndex, gamma: typing.SupportsFloat | typing.SupportsIndex, writhe: typing.SupportsFloat | typing.SupportsIndex, twist: typing.SupportsFloat | typing.SupportsIndex, kkt_residual: typing.SupportsFloat | typing.SupportsIndex=0.0) -> IdealKnotRegimeResult:
        """
        IdealKnotRegimeResult of a core radius, the largest curvature, the least separation of strands,
        the circulation, writhe and twist; classified with order_one = 0.3.
        """

    @staticmethod
    def moffatt_ricca_helicity(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (gamma, writhe, twist): gamma^2 (writhe + twist) (Moffatt & Ricca 1992);
        NaN unless all are finite.
        """

    @staticmethod
    def regime_name(arg0: KnotRegime, /) -> str:
        """
        "compact" or "slender"; "indeterminate" for all other values.
        """

class RopelengthConvention:
    """
    Where a ratio of length to diameter comes from.

    Members:

      HighRes : high_res_ld.

      Halvard : halvard_ld.

      Custom : The caller's own.
    """
    Custom: typing.ClassVar[RopelengthConvention]
    Halvard: typing.ClassVar[RopelengthConvention]
    HighRes: typing.ClassVar[RopelengthConvention]
    __members__: typing.ClassVar[dict[str, RopelengthConvention]]

    @typing.overload
    def __eq__(self, other: RopelengthConvention) -> bool:
        ...

    @typing.overload
    def __eq__(self, other: typing.Any) -> bool:
        ...

    def __getstate__(self) -> int:
        ...

    def __hash__(self) -> int:
        ...

    def __index__(self) -> int:
        ...

    def __init__(self, value: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __int__(self) -> int:
        ...

    @typing.overload
    def __ne__(self, other: RopelengthConvention) -> bool:
        ...

    @typing.overload
    def __ne__(self, other: typing.Any) -> bool:
        ...

    def __repr__(self) -> str:
        ...

    def __setstate__(self, state: typing.SupportsInt | typing.SupportsIndex) -> None:
        ...

    def __str__(self) -> str:
        ...

    @property
    def name(self) -> str:
        ...

    @property
    def value(self) -> int:
        ...

class TransverseProjectorResult:
    """
    Response of a knotted tube to a transverse field.
    """

    @property
    def R0(self) -> float:
        """
        Leading response, 8 pi / 3 L/D.
        """

    @property
    def R_VKM(self) -> float:
        """
        R0 + delta_micro.
        """

    @property
    def convention_mixed(self) -> bool:
        """
        Always False: one ratio is of one convention.
        """

    @property
    def delta_micro(self) -> float:
        """
        Microscopic corrections.
        """

    @property
    def message(self) -> str:
        """
        The verdict in words.
        """

    @property
    def projector_sphere_integral(self) -> float:
        """
        8 pi / 3.
        """

    @property
    def rop_rad(self) -> float:
        """
        Ropelength by the radius, 2 L/D.
        """

    @property
    def twist_bound_ok(self) -> bool:
        """
        Whether I_Omega2 reaches it.
        """

    @property
    def twist_bound_rhs(self) -> float:
        """
        Least twist energy.
        """

class TransverseProjectorAPI:
    """
    Response of a knotted tube to a transverse field. Nothing here raises.
    """

    @staticmethod
    def R0_from_rop_rad(arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        4 pi / 3 times the argument; NaN unless that is positive.
        """

    @staticmethod
    def R_VKM(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (R0, delta): their sum.
        """

    @staticmethod
    def conventions_mixed(arg0: RopelengthConvention, arg1: RopelengthConvention, /) -> bool:
        """
        Whether two RopelengthConvention differ; Custom goes with either.
        """

    @staticmethod
    def delta_micro_plus(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, arg4: typing.SupportsFloat | typing.SupportsIndex, arg5: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (a, b, c, d, e, f): a b + c d + e f.
        """

    @staticmethod
    def evaluate(L_over_D: typing.SupportsFloat | typing.SupportsIndex, c_kappa: typing.SupportsFloat | typing.SupportsIndex, I_kappa2: typing.SupportsFloat | typing.SupportsIndex, c_Omega: typing.SupportsFloat | typing.SupportsIndex, I_Omega2: typing.SupportsFloat | typing.SupportsIndex, c_C: typing.SupportsFloat | typing.SupportsIndex, C_contact: typing.SupportsFloat | typing.SupportsIndex, SL: typing.SupportsFloat | typing.SupportsIndex, Wr: typing.SupportsFloat | typing.SupportsIndex, convention: RopelengthConvention=...) -> TransverseProjectorResult:
        """
        TransverseProjectorResult of a ratio of length to diameter, three couplings with their integrals,
        the self-linking and the writhe. The bound takes SL, Wr for the twists and I_Omega2 for the
        energy; the convention has no effect.
        """

    @staticmethod
    def halvard_ld() -> float:
        """
        L/D of the Halvard convention.
        """

    @staticmethod
    def high_res_ld() -> float:
        """
        L/D of the HighRes convention.
        """

    @staticmethod
    def leading_response_R0(arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        8 pi / 3 L/D; NaN unless L/D > 0.
        """

    @staticmethod
    def projector_sphere_integral() -> float:
        """
        8 pi / 3.
        """

    @staticmethod
    def rop_rad_from_ld(arg0: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        2 L/D; NaN unless L/D > 0.
        """

    @staticmethod
    def twist_bound_satisfied(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> bool:
        """
        Of (energy, L, Tw, Tw0): whether the bound is at most energy + 1e-30 and both are finite.
        """

    @staticmethod
    def twist_energy_bound_rhs(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (L, Tw, Tw0): 4 pi^2 / L (Tw - Tw0)^2; NaN unless L > 0 and both twists are finite.
        """

class SpectroResponseResult:
    """
    A transition and its linear response.
    """

    @property
    def delta_E(self) -> float:
        """
        Transition energy, J.
        """

    @property
    def delta_nu(self) -> float:
        """
        Linear response, Hz.
        """

    @property
    def double_count_with_xi_k(self) -> bool:
        """
        Whether xi_K holds the response already.
        """

    @property
    def message(self) -> str:
        """
        The verdict in words.
        """

    @property
    def nu(self) -> float:
        """
        delta_E / h, Hz.
        """

    @property
    def passed(self) -> bool:
        """
        The response is finite and counted once.
        """

class SpectroResponseAPI:
    """
    Transition energies and line shifts. No number raises.
    """

    @staticmethod
    def configuration_transition_energy(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        First minus second energy, J; NaN unless both are finite.
        """

    @staticmethod
    def evaluate(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg4: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg5: bool, /) -> SpectroResponseResult:
        """
        SpectroResponseResult of (energy, energy, h, list, list, whether xi_K holds the response already).
        """

    @staticmethod
    def linear_response_delta_nu(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg2: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> float:
        """
        Of (h, list, list): the lists' dot product over h. NaN unless h > 0 and the lists are of one
        length; 0 for empty lists.
        """

    @staticmethod
    def rejects_double_count_with_xi_k(arg0: bool, /) -> bool:
        """
        The argument: a response that xi_K holds already is rejected.
        """

    @staticmethod
    def transition_frequency(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (delta_E, h): delta_E / h; NaN unless h > 0 and delta_E is finite.
        """

class MaxwellKineticResult:
    """
    Whether a kinetic relaxation channel is active.
    """

    @property
    def coupling_nonzero(self) -> bool:
        """
        Coupling is not 0; NaN counts as not 0.
        """

    @property
    def drive_above_gap(self) -> bool:
        """
        Drive >= gap.
        """

    @property
    def lifetime_observable(self) -> bool:
        """
        Lifetime >= its threshold.
        """

    @property
    def message(self) -> str:
        """
        The verdict in words.
        """

    @property
    def tau_inv(self) -> float:
        """
        Collision rate.
        """

    @property
    def three_gate_ok(self) -> bool:
        """
        All three, of finite numbers.
        """

class MaxwellKineticAPI:
    """
    Activation of a kinetic relaxation channel. Nothing here raises.
    """

    @staticmethod
    def collision_rate_inv(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Product of three factors, such as density, cross section and speed; NaN unless all are finite.
        """

    @staticmethod
    def evaluate(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, arg4: typing.SupportsFloat | typing.SupportsIndex, arg5: typing.SupportsFloat | typing.SupportsIndex, arg6: typing.SupportsFloat | typing.SupportsIndex, arg7: typing.SupportsFloat | typing.SupportsIndex, /) -> MaxwellKineticResult:
        """
        MaxwellKineticResult of (coupling, drive, gap, lifetime threshold, lifetime) and the three factors
        of the collision rate.
        """

    @staticmethod
    def three_gate_condition(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, arg4: typing.SupportsFloat | typing.SupportsIndex, /) -> bool:
        """
        Of (coupling, drive, gap, lifetime threshold, lifetime): all finite, the coupling not 0, drive >=
        gap and lifetime >= threshold.
        """

class MechanicalFalsifierResult:
    """
    Outcome of a blind mechanical test.
    """

    @property
    def C_blind(self) -> float:
        """
        delta_p_omega / (L K^2).
        """

    @property
    def delta_p_omega(self) -> float:
        """
        Difference of the pressures.
        """

    @property
    def message(self) -> str:
        """
        The verdict in words.
        """

    @property
    def scaling_ok(self) -> bool:
        """
        Whether C_blind is finite.
        """

class MechanicalFalsifierAPI:
    """
    A blind mechanical test. Nothing here raises.
    """

    @staticmethod
    def C_blind(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        Of (delta, L, K): delta / (L K^2); NaN unless L > 0, K > 0 and delta is finite.
        """

    @staticmethod
    def blind_scaling_gate(arg0: typing.SupportsInt | typing.SupportsIndex, arg1: typing.SupportsInt | typing.SupportsIndex, arg2: typing.SupportsInt | typing.SupportsIndex, /) -> bool:
        """
        True for the exponents (1, 2, 0) alone.
        """

    @staticmethod
    def delta_p_omega(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        First minus second pressure; NaN unless both are finite.
        """

    @staticmethod
    def evaluate(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> MechanicalFalsifierResult:
        """
        MechanicalFalsifierResult of (pressure, pressure, L, K).
        """

class SwirlTonicResult:
    """
    Circulation and material holonomy of a sampled loop.
    """

    @property
    def circulation(self) -> float:
        """
        Sum of u . dl.
        """

    @property
    def holonomy(self) -> float:
        """
        Circulation over scale.
        """

    @property
    def material_not_a_eff(self) -> bool:
        """
        Whether no identification with A_eff is claimed.
        """

    @property
    def message(self) -> str:
        """
        The verdict in words.
        """

    @property
    def passed(self) -> bool:
        """
        The holonomy is finite and nothing is claimed.
        """

class SwirlTonicAPI:
    """
    Circulation of a sampled loop. No number raises.
    """

    @staticmethod
    def evaluate(arg0: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg2: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg3: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg4: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg5: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg6: typing.SupportsFloat | typing.SupportsIndex, arg7: bool, /) -> SwirlTonicResult:
        """
        SwirlTonicResult of the six lists of stokes_circulation, the scale and the claim.
        """

    @staticmethod
    def material_holonomy(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
        """
        circulation / scale; NaN unless scale > 0 and the circulation is finite.
        """

    @staticmethod
    def material_tonic_not_a_eff(arg0: bool, /) -> bool:
        """
        The negation of the claim that the material tonic is A_eff.
        """

    @staticmethod
    def stokes_circulation(arg0: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg2: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg3: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg4: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], arg5: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> float:
        """
        Of six lists (u_x, u_y, u_z, dl_x, dl_y, dl_z): the sum of u . dl. NaN for empty lists and for
        lists of different lengths.
        """

def analyze_resolved_tube_clearance(curves: collections.abc.Sequence[typing.Annotated[numpy.typing.ArrayLike, numpy.float64]], core_radius: typing.SupportsFloat | typing.SupportsIndex=0.0) -> results.Clearance:
    """
    Compute the least distance between edges of closed polygons that are not neighbours.

    curves: list of arrays (N, 3), closing vertex not repeated. Edges of one curve are neighbours when their indices differ
    by less than 2 along it; with a positive core_radius by less than six core radii in mean edge lengths, at least 2.

    Returns a dict: clearance (the smaller of the two that follow), self_min (within a curve of at least 4 points) and
    inter_min (between two curves of at least 2 points), each infinity where there is no such pair. Lengths are in the unit
    of the points. analyze_resolved_tube_clearance and compute_topology_clearance are one computation.

    Raises ValueError "Expected (N,3) array" for another shape.
    """

def analyze_smooth_resolved_tube(curves: collections.abc.Sequence[typing.Annotated[numpy.typing.ArrayLike, numpy.float64]], length_abs_tol: typing.SupportsFloat | typing.SupportsIndex=1e-10, length_rel_tol: typing.SupportsFloat | typing.SupportsIndex=1e-10) -> results.SmoothTube:
    """
    Analyze the smooth tube around closed curves: length, reach and ropelength.

    curves: list of arrays (N, 3), N >= 4, as for compute_continuous_reach. The length is that of the splines, by adaptive
    Gauss-Kronrod integration to the tolerances (1e-10 in place of a tolerance that is not positive).

    Returns a dict: spline_length, spline_length_error, curvature_radius, self_dcsd, self_radius, inter_component_radius,
    reach, ropelength_rad (length / reach), ropelength_diam (half of it), orthogonality_residual, converged, limiter,
    curvature_intervals_examined, dcsd_seed_count, dcsd_refined_count, dcsd_rejected_count, search_resolution,
    refinement_tolerance, search_converged, length_interval_count and length_converged. The ropelengths are NaN where the
    reach is not finite and positive. Errors as in compute_continuous_reach.
    """

def baroclinic_term(grad_rho: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], grad_p: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], rho: typing.SupportsFloat | typing.SupportsIndex) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Baroclinic torque term

    grad_rho x grad_p / rho^2, 1/s^2.
    """

def batch_helicity_from_dir(root_dir: str, grid_size: typing.SupportsInt | typing.SupportsIndex=32, spacing: typing.SupportsFloat | typing.SupportsIndex=0.1, interior_margin: typing.SupportsInt | typing.SupportsIndex=8, nsamples: typing.SupportsInt | typing.SupportsIndex=1000, recurse: bool=False) -> list[HelicityResult]:
    """
    compute_helicity_from_fseries of every *.fseries file of a directory, a list sorted by path. Links to directories
    are not followed. Raises RuntimeError for a missing directory; the first error ends the batch.
    """

def bending_energy_exact(block: FourierBlock, nsamples: typing.SupportsInt | typing.SupportsIndex=4096, eps: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> float:
    """
    Compute bending energy integral of Fourier curve.

    Integral of curvature squared over arc length, in 1 / length, by the rectangle rule; the speed is clamped from below at
    eps. At least 32 samples are taken.
    """

def bernoulli_pressure_potential(velocity_squared: typing.SupportsFloat | typing.SupportsIndex, V: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    velocity_squared / 2 - V, m^2/s^2.
    """

def biot_savart_vector_potential_grid(polyline: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], grid: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], current: typing.SupportsFloat | typing.SupportsIndex=1.0) -> tuple[numpy.typing.NDArray[numpy.float64], numpy.typing.NDArray[numpy.float64], numpy.typing.NDArray[numpy.float64]]:
    """
    Vector potential of an open polyline (mu0=1): current / (4 pi) sum dl / |R|, R from each segment's midpoint.

    `polyline` has shape (N, 3) and N - 1 segments, `grid` (M, 3). Returns (Ax, Ay, Az), three new arrays of shape (M,).
    Segments nearer than 1e-12 to a grid point are left out. ValueError for other shapes.
    """

def biot_savart_velocity(r: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], filament_points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tangent_vectors: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], circulation: typing.SupportsFloat | typing.SupportsIndex=1.0) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Velocity at a point, induced by the points of a filament.

    Sums circulation / (4 pi) t x R / |R|^3 over the points; the tangent vectors carry the element length. Points at a
    distance of at most 1e-6 are skipped. ValueError if there are fewer tangents than points.
    """

def biot_savart_velocity_grid(polyline: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], grid: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], circulation: typing.SupportsFloat | typing.SupportsIndex=1.0) -> numpy.typing.NDArray[numpy.float64]:
    """
    Velocity of a closed vortex polyline at grid points, on arrays.

    Backward compatible with the historical 2-argument call; circulation defaults to 1.0.

    `polyline` has shape (N, 3), `grid` (M, 3), both in m; returns a new array (M, 3) in m/s. The formula is that of
    BiotSavart.compute_velocity. ValueError for other shapes.
    """

def biot_savart_wire_grid(X: typing.Any, Y: typing.Any, Z: typing.Any, wire_points: typing.Any, current: typing.SupportsFloat | typing.SupportsIndex=1.0) -> tuple[numpy.typing.NDArray[numpy.float64], numpy.typing.NDArray[numpy.float64], numpy.typing.NDArray[numpy.float64]]:
    """
    Field of an open wire by the Biot-Savart law (mu0=1).

    `X`, `Y`, `Z` are arrays of one shape, `wire_points` has shape (N, 3) and N - 1 segments. Returns (Bx, By, Bz), new
    arrays of the shape of X. Segments nearer than 1e-12 to a field point are left out. ValueError for shapes that do not
    fit.
    """

def build_invariants_from_fourier_block(block: FourierBlock, knot_name: str='', crossing_number: typing.SupportsInt | typing.SupportsIndex=0, braid_index: typing.SupportsInt | typing.SupportsIndex=0, seifert_genus: typing.SupportsInt | typing.SupportsIndex=0, chirality: typing.SupportsInt | typing.SupportsIndex=0, hyperbolic: bool=False, hyperbolic_volume: typing.SupportsFloat | typing.SupportsIndex=0.0, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, exclude_window: typing.SupportsInt | typing.SupportsIndex=4) -> KnotInvariants:
    """
    Build KnotInvariants from Fourier coefficients plus optional catalog metadata.

    Args:
        block: the curve; lengths come out in the units of its coefficients.
        knot_name, crossing_number, braid_index, seifert_genus: taken as given.
        chirality: clamped to -1 .. 1.
        hyperbolic, hyperbolic_volume: the volume counts for a hyperbolic knot only, and is at least 0.
        nsamples: vertices of the polygon that is measured, at least 64.
        exclude_window: vertices to either side that count as neighbours, at least 1.

    Raises ValueError when a coefficient vector is shorter than a_x, MemoryError for absurd sample counts.
    """

def build_invariants_from_fseries(path: str, knot_name: str='', crossing_number: typing.SupportsInt | typing.SupportsIndex=0, braid_index: typing.SupportsInt | typing.SupportsIndex=0, seifert_genus: typing.SupportsInt | typing.SupportsIndex=0, chirality: typing.SupportsInt | typing.SupportsIndex=0, hyperbolic: bool=False, hyperbolic_volume: typing.SupportsFloat | typing.SupportsIndex=0.0, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, exclude_window: typing.SupportsInt | typing.SupportsIndex=4) -> KnotInvariants:
    """
    Load a .fseries file, build KnotInvariants from its largest block, and return the payload.

    Arguments from knot_name on as for build_invariants_from_fourier_block; an empty name becomes the file's. Raises
    RuntimeError when the file cannot be read or holds no block.
    """

def calculate_bs_cutoff_energy(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], tangents: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], ds_arr: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], a_cutoff: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Biot-Savart energy of the pairs of curve elements farther apart than a cutoff.

    The single entry of calculate_bs_cutoff_energy_scan for [a_cutoff]; exactly 0 if no pair is that far apart. RuntimeError
    for other shapes.
    """

def calculate_bs_cutoff_energy_scan(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], tangents: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], ds_arr: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], a_values: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> numpy.typing.NDArray[numpy.float64]:
    """
    Biot-Savart energies of a curve for a list of cutoffs, in one pass over the pairs.

    E[m] is 1 / (8 pi) times the sum of (t[i] . t[j]) / d ds[i] ds[j] over the ordered pairs at a distance d > a_values[m];
    pairs at distance 0 never count. `points` and `tangents` have shape (N, 3), `ds_arr` (N,); `a_values` (M,) must ascend
    and is not checked. Returns a new array (M,). RuntimeError for other shapes.
    """

def calculate_core_repulsion(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], rc: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    A wall of the twelfth power between points of a closed polygon that are not neighbours.

    Sum of (2 rc / d)^12 over the pairs with 2 rc / d > 0.1, d the distance or 1e-30 m if that is more. `points` has shape
    (N, 3) in m, `rc` in m. 0 for N below 3. RuntimeError for another shape.
    """

def calculate_curvature_penalty(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> float:
    """
    Integral of the squared Menger curvature of a closed polygon over arc length, in 1 / m.

    The curvature of three points is 2 |a x b| / (|a| |b| |c|), and 0 if one of the lengths is 1e-20 or less. `points` has
    shape (N, 3) in m. 0 for N below 2. RuntimeError for another shape.
    """

def calculate_length(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> float:
    """
    Length of a closed polygon, the closing edge included.

    `points` has shape (N, 3), the closing point not repeated. 0 for N below 2. RuntimeError for another shape.
    """

def calculate_neumann_self_energy(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], rc: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Neumann's double sum of a closed polygon with a softened kernel, in m.

    Sum of 2 dl[i] . dl[j] / sqrt(|p[j] - p[i]|^2 + rc^2) over all pairs i < j of edges dl[i] = p[i+1] - p[i], neighbours
    included, the diagonal not; no prefactor. `points` has shape (N, 3) in m, the closing point not repeated; `rc` in m. 0
    for N below 2. RuntimeError for another shape.
    """

def calculate_writhe(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], rc: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Writhe of a closed polygon by the double sum over its edges, softened by rc.

    1 / (4 pi) times the sum of 2 (dl[i] x dl[j]) . R / (|R|^2 + rc^2)^(3/2), R = p[j] - p[i], over all pairs i < j
    (Calugareanu, Fuller); with this R the sign is the opposite of compute_writhe's. `rc` is no cutoff: with rc = 0
    coincident points divide by zero. `points` has shape (N, 3) in m. 0 for N below 2. RuntimeError for another shape.
    """

def canonicalize_fseries_file_inplace(path: str) -> CanonicalizeResult:
    """
    Replace the leading three-column row of a legacy file by a six-column row of zeros, whatever stood in it.

    The file is written in that one case only, with line feeds for line ends, and replaced as a whole: a failure
    leaves the old one. Returns a CanonicalizeResult; raises RuntimeError when the file cannot be read or written.
    """

def check_kind_export_string(arg0: CheckKind, /) -> str:
    """
    Text of a CheckKind in reports, such as "ALGEBRAIC_IDENTITY"; "OPEN_RESEARCH_GATE" for unknown values.
    """

def check_kind_from_export_string(arg0: str, /) -> CheckKind:
    """
    CheckKind from its text in reports or its own name, case-sensitive; OpenResearchGate for any other text.
    """

def circulation_surface_integral(omega_field: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], dA_field: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
    """
    Sum of omega . dA over the samples, m^2/s: the circulation around a surface (Stokes).

    ValueError if the lists differ in length.
    """

def compare_fseries_files(path_a: str, path_b: str, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, skip: typing.SupportsInt | typing.SupportsIndex=3) -> results.CurveComparison:
    """
    Measures of two files, their differences b - a, and the root mean square distance of samples with the same index:
    no alignment of phase or direction.
    """

def compute_bernoulli_pressure(velocity_magnitude: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], rho: typing.SupportsFloat | typing.SupportsIndex=7e-07, p_inf: typing.SupportsFloat | typing.SupportsIndex=0.0) -> list[float]:
    """
    p_inf - rho v^2 / 2, a list of one pressure in Pa a speed; rho is the canonical fluid density by default.
    """

def compute_biot_savart_velocity_grid(curve: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], grid_points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    Velocity of a closed vortex polyline of circulation 1 at grid points, as BiotSavart.compute_velocity.
    """

def compute_centerline_helicity(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute the centerline helicity as the sum of writhe and twist.

    The second list is not read and there is no twist term: the result equals compute_writhe(X).
    """

def compute_continuous_reach(curves: collections.abc.Sequence[typing.Annotated[numpy.typing.ArrayLike, numpy.float64]]) -> results.ContinuousReach:
    """
    Compute the reach of smooth closed curves: the radius of their thickest embedded tube.

    curves: list of arrays (N, 3), N >= 4, each the knots of a periodic cubic spline. The reach is the least of the radius
    of curvature, half the doubly critical self distance and half the distance between components.

    Returns a dict: curvature_radius, self_dcsd, self_radius, inter_component_distance, inter_component_radius, reach,
    limiter ("CURVATURE", "SELF_DCSD", "INTER_COMPONENT", "TIE" within 1e-5, or "ERROR"), orth_residual (largest cosine
    between a chord found and its tangents), component_count, curvature_intervals_examined, dcsd_seed_count,
    dcsd_refined_count, dcsd_rejected_count, search_resolution (parameter step of the seed scan), refinement_tolerance and
    search_converged. Distances are infinity where nothing was found; lengths are in the unit of the points. Without curves
    all values are 0 and the limiter is "ERROR".

    Raises ValueError "Expected (N,3) array" for another shape and "PeriodicCubicSpline3D requires >= 4 points".
    """

def compute_curvature(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], eps: typing.SupportsFloat | typing.SupportsIndex=1e-08) -> numpy.typing.NDArray[numpy.float64]:
    """
    Compute discrete curvature from points.

    points: array (N, 3) of a closed curve, the closing point not repeated; array (N,) in 1 / length by central differences,
    |d1 x d2| / (|d1|^3 + eps). Zeros for N below 3. Raises ValueError for another shape.
    """

def compute_curvature_torsion(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> tuple[list[float], list[float]]:
    """
    compute_curvature_torsion(T, N): the lists (curvature, torsion), per index and not per unit length.

    ValueError if the lists differ in length; fewer than three entries give zeros.
    """

def compute_curve_metrics_from_fseries(path: str, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, skip: typing.SupportsInt | typing.SupportsIndex=3) -> FilamentEnergyResult:
    """
    FilamentEnergyResult with the measures of the samples; its energies and parameters are 0.
    """

def compute_filament_energy_from_fseries(path: str, params: FilamentEnergyParams) -> FilamentEnergyResult:
    """
    FilamentEnergyResult: rho_outer Gamma^2 ds^2 / (8 pi) times the sum of t_i . t_j / |p_j - p_i| over ordered pairs
    more than m_loc apart, (ln(s_cut_local / a_core) + c_rankine_outer) rho_local Gamma^2 L / (4 pi), and
    rho_local Gamma^2 L / (16 pi).
    """

def compute_filament_velocity(filaments: collections.abc.Sequence[dict[typing.Any, typing.Any]], options: dict[typing.Any, typing.Any]={}) -> results.FilamentVelocity:
    """
    Compute the velocity of closed vortex filaments by local induction and the Biot-Savart sum of all sources.

    filaments: list of dicts with the keys points (array (N, 3) in m, required; a closed polygon), circulation (m^2/s, 1.0),
    source (induces, True), ghost (neither moves nor induces, False), id ("") and carrier ("A").
    options: dict with the keys lia_only (local induction only, False), a_sim (softening length between different filaments
    in m, 0.0), core_delta (the core radius is scaled by exp(core_delta), 0.0), lia_constant (added to the logarithm, 0.25)
    and core_radius (m, 0.01).

    Returns a dict: velocity, a list of arrays (N, 3) in m/s in the order of the input, zeros for ghosts, and maximum_speed.
    compute_filament_velocity and compute_regularized_mutual_velocity are one computation.

    The local term is Gamma / (4 pi) (log(2 sqrt(la lb) / a_eff) + C) times the discrete curvature binormal of the edges at
    the vertex (Arms and Hama 1965; Schwarz, Phys. Rev. B 31 (1985) 5782), and the sum leaves these two edges out.
    Raises KeyError without points and ValueError "Expected (N,3) array" for another shape.
    """

def compute_frenet_frames(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> tuple[list[typing.Annotated[list[float], 'FixedSize(3)']], list[typing.Annotated[list[float], 'FixedSize(3)']], list[typing.Annotated[list[float], 'FixedSize(3)']]]:
    """
    compute_frenet_frames(X): the lists (T, N, B) of unit tangents, normals and binormals.

    Central differences over the inner points of an open curve; the ends copy their neighbours. A straight stretch gives
    NaN normals; fewer than three points give zero vectors.
    """

def compute_gravitational_potential(positions: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], vorticity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], epsilon: typing.SupportsFloat | typing.SupportsIndex=7e-07) -> list[float]:
    """
    compute_gravitational_potential_gradient under its first name; kept for backward compatibility.
    """

def compute_gravitational_potential_direct(positions: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], vorticity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], epsilon: typing.SupportsFloat | typing.SupportsIndex=0.1) -> list[float]:
    """
    -1 / (4 pi) sum over j != i of (p_i - p_j) . w_j / (|p_i - p_j|^2 + epsilon^2)^(3/2): Plummer's softening.

    `positions` and `vorticity` are lists of N vectors, in m and 1/s; `epsilon` in m. Returns a list of N floats. ValueError
    if the lists differ in length.
    """

def compute_gravitational_potential_gradient(positions: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], vorticity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], epsilon: typing.SupportsFloat | typing.SupportsIndex=7e-07) -> list[float]:
    """
    -|a_i|^2 / 2 with a_i = sum over j != i of exp(-|p_i - p_j|^2 / (2 epsilon^2)) w_j: Gaussian smoothing.

    `positions` and `vorticity` are lists of N vectors, in m and 1/s; `epsilon` in m. Returns a list of N floats. ValueError
    if the lists differ in length.
    """

@typing.overload
def compute_helicity(velocity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], vorticity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], dV: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    compute_helicity with three arguments: dV times the sum of v . w over the samples, m^4/s^2.

    In double precision; with two arguments it is another function, a mean in single precision. ValueError if the lists
    differ in length.
    """

@typing.overload
def compute_helicity(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute helicity H = ∫ v · ω dV.

    compute_helicity(velocity, vorticity) on two lists of vectors. What it returns is the mean of the pointwise products,
    accumulated in single precision; NaN for empty lists. ValueError if the vorticity is the shorter list.
    """

def compute_helicity_from_fourier_block(block: FourierBlock, grid_size: typing.SupportsInt | typing.SupportsIndex=32, spacing: typing.SupportsFloat | typing.SupportsIndex=0.1, interior_margin: typing.SupportsInt | typing.SupportsIndex=8, nsamples: typing.SupportsInt | typing.SupportsIndex=1000) -> tuple[float, float, float]:
    """
    Helicity invariants (H_charge, H_mass, a_mu) of the flow induced by a Fourier curve.

    The curve is centred, sampled at `nsamples` parameters (both ends of the period) and given circulation 1; its velocity is
    taken on a cube of grid_size^3 points `spacing` apart, and the invariants on the interior that is left when
    `interior_margin` cells are cut from every face. An empty interior gives (0, 0, nan).
    """

def compute_helicity_from_fseries(path: str, grid_size: typing.SupportsInt | typing.SupportsIndex=32, spacing: typing.SupportsFloat | typing.SupportsIndex=0.1, interior_margin: typing.SupportsInt | typing.SupportsIndex=8, nsamples: typing.SupportsInt | typing.SupportsIndex=1000) -> HelicityResult:
    """
    HelicityResult: compute_helicity_from_fourier_block of the largest block, and the measures of its centred samples.
    """

def compute_helicity_invariants(v_sub: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], w_sub: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], r_sq: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex]) -> tuple[float, float, float]:
    """
    The tuple (H_charge, H_mass, a_mu), as BiotSavart.compute_invariants.
    """

def compute_intrinsic_frame(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], weights: typing.Any=None) -> results.IntrinsicFrame:
    """
    Compute the centroid and the principal axes of points.

    points: array (N, 3); weights: list of N floats, or None for ones; a list of another length is ignored.

    Returns a dict: centroid, axis_x (largest spread), axis_y, axis_z (normal of the best-fit plane) and eigenvalues (of the
    covariance, ascending), each a list of three floats. The axes are right-handed.
    Raises ValueError "Expected (N,3) array" for another shape.
    """

def compute_kinetic_energy(velocity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], rho_ae: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    rho_ae / 2 times the sum of |v|^2 over the samples, J/m^3; times the volume of a cell it is the energy.
    """

def compute_linking_number(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> int:
    """
    Compute the Gauss linking number of two filaments.

    A and B are lists of points, read as open: repeat the first point at the end to close a curve. Gauss sum over pairs of
    edges, taken at the edge starts, over 4 pi, rounded to the nearest integer (halves away from zero). Pairs nearer than
    1e-6 are left out. A NaN sum gives 0, a sum beyond 32 bits the nearest 32-bit integer.
    """

def compute_polygonal_gauss(curve_a: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], curve_b: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, same_curve: bool=True) -> results.PolygonalGauss:
    """
    Compute the exact Gauss integral of closed polygons, with its integer audit.

    curve_a: array (N, 3); curve_b: array (M, 3) or None. The closing vertex is not repeated. With same_curve true (the
    default) or without curve_b the result is the self integral of curve_a, and curve_b is ignored; with same_curve=False it
    is the linking integral of the two.

    Returns a dict: signed_integral (writhe, or linking number), absolute_integral (the same over absolute values) and
    linking_integer_audit (the nearest integer to signed_integral, halves away from zero). All 0 below 3 points.

    Each pair of edges contributes its solid angle in closed form (Klenin and Langowski, Biopolymers 54 (2000) 307).
    Raises ValueError "Expected (N,3) array" for another shape.
    """

def compute_pressure_field(velocity_magnitude: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], rho_ae: typing.SupportsFloat | typing.SupportsIndex, P_infinity: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
    """
    P_infinity - rho_ae v^2 / 2 (Bernoulli), a list of one pressure in Pa a speed in m/s; rho_ae in kg/m^3.
    """

def compute_regularized_mutual_velocity(filaments: collections.abc.Sequence[dict[typing.Any, typing.Any]], options: dict[typing.Any, typing.Any]={}) -> results.FilamentVelocity:
    """
    Compute the velocity of closed vortex filaments by local induction and the Biot-Savart sum of all sources.

    filaments: list of dicts with the keys points (array (N, 3) in m, required; a closed polygon), circulation (m^2/s, 1.0),
    source (induces, True), ghost (neither moves nor induces, False), id ("") and carrier ("A").
    options: dict with the keys lia_only (local induction only, False), a_sim (softening length between different filaments
    in m, 0.0), core_delta (the core radius is scaled by exp(core_delta), 0.0), lia_constant (added to the logarithm, 0.25)
    and core_radius (m, 0.01).

    Returns a dict: velocity, a list of arrays (N, 3) in m/s in the order of the input, zeros for ghosts, and maximum_speed.
    compute_filament_velocity and compute_regularized_mutual_velocity are one computation.

    The local term is Gamma / (4 pi) (log(2 sqrt(la lb) / a_eff) + C) times the discrete curvature binormal of the edges at
    the vertex (Arms and Hama 1965; Schwarz, Phys. Rev. B 31 (1985) 5782), and the sum leaves these two edges out.
    Raises KeyError without points and ValueError "Expected (N,3) array" for another shape.
    """

def compute_rigid_motion(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], velocity: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], weights: typing.Any=None) -> results.RigidMotion:
    """
    Split a velocity field on points into translation, rotation and deformation.

    points, velocity: arrays (N, 3), of which the common rows count; weights: list of floats, or None for ones. The centroid
    uses weights when there is one for each point, the motion when there are at least as many as common rows.

    Returns a dict: centroid, translation, omega (lists of three floats), translation_field, rotation_field,
    deformation_field (arrays (n, 3)), reconstruction_relative_error and deformation_relative_norm. omega solves
    I omega = L for the inertia tensor and angular momentum about the centroid; 0 where I is singular.
    Raises ValueError "Expected (N,3) array" for another shape.
    """

def compute_swirl_field(res: typing.SupportsInt | typing.SupportsIndex, time: typing.SupportsFloat | typing.SupportsIndex) -> list[typing.Annotated[list[float], 'FixedSize(2)']]:
    """
    Compute 2D swirl force field at a given resolution and time.

    A list of res^2 pairs, point (x, y) = (j / res - 1/2, i / res - 1/2) at index i res + j: ((-A y - B x) m,
    (-A x + B y) m) with r2 = r^2 = x^2 + y^2 + 1e-5, A = 0.1 / r2, B = 0.25 / r, m = 1 + 0.03 sin(10 r - 6 time). Single
    precision throughout. A negative res gives res^2 zero pairs; MemoryError for absurd sizes.
    """

def compute_time_dilation_map(tangents: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], C_e: typing.SupportsFloat | typing.SupportsIndex=1093845.63) -> list[float]:
    """
    compute_time_dilation_map_sqrt under its first name; kept for backward compatibility.
    """

def compute_time_dilation_map_linear(tangents: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], C_e: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
    """
    Clock rates 1 - |t|^2 / C_e^2, a list of one float a tangent. There is no floor: negative beyond C_e.
    """

def compute_time_dilation_map_sqrt(tangents: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], C_e: typing.SupportsFloat | typing.SupportsIndex=1093845.63) -> list[float]:
    """
    Clock rates sqrt(1 - q) with q = |t|^2 / C_e^2, a list of one float a tangent.

    q is replaced by 0.999999 where it is 1 or more: the rate jumps to 0.001 there and never reaches 0.
    """

def compute_topology_clearance(curves: collections.abc.Sequence[typing.Annotated[numpy.typing.ArrayLike, numpy.float64]], core_radius: typing.SupportsFloat | typing.SupportsIndex=0.0) -> results.Clearance:
    """
    Compute the least distance between edges of closed polygons that are not neighbours.

    curves: list of arrays (N, 3), closing vertex not repeated. Edges of one curve are neighbours when their indices differ
    by less than 2 along it; with a positive core_radius by less than six core radii in mean edge lengths, at least 2.

    Returns a dict: clearance (the smaller of the two that follow), self_min (within a curve of at least 4 points) and
    inter_min (between two curves of at least 2 points), each infinity where there is no such pair. Lengths are in the unit
    of the points. analyze_resolved_tube_clearance and compute_topology_clearance are one computation.

    Raises ValueError "Expected (N,3) array" for another shape.
    """

def compute_twist(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute the twist of a frame along a filament.

    T: M unit tangents; N: at least M unit normals. Sum over the inner entries of (T x dN) . N with central differences,
    over 2 pi: turns of the normal about the curve, a right-handed turn counting -1. 0 for M below 3.
    Raises ValueError when N is shorter than T.
    """

def compute_velocity_magnitude(velocity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> list[float]:
    """
    |v|, a list of one float a vector.
    """

def compute_vkm_mass(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], chi_spin: typing.SupportsFloat | typing.SupportsIndex) -> tuple[float, float]:
    """
    points: list of [x,y,z] (closed curve by convention).
    chi_spin: spin factor (e.g. 2 for fermion).

    Returns (m_core_kg, m_fluid_kg) of N points in m, the closing point not repeated. The core is the length times
    rho_core pi r_c^2; the fluid is chi_spin^2 rho_f Gamma^2 / (8 pi c^2) times the sum of d[i] . d[j] /
    sqrt(|p[i] - p[j]|^2 + r_c^2) over all ordered pairs of edges d, i = j included (Rosenhead and Moore's regularised
    filament). An empty list gives (0, 0).
    """

@typing.overload
def compute_vorticity(grad: typing.Annotated[collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], 'FixedSize(3)']) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Curl of a velocity, 1/s: row i of the 3 by 3 matrix `grad` holds the derivatives of component i.
    """

@typing.overload
def compute_vorticity(u: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], v: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], nx: typing.SupportsInt | typing.SupportsIndex, ny: typing.SupportsInt | typing.SupportsIndex, dx: typing.SupportsFloat | typing.SupportsIndex, dy: typing.SupportsFloat | typing.SupportsIndex) -> list[float]:
    """
    Compute 2D vorticity field

    Vorticity tools for 2D flows

    dv/dx - du/dy by central differences. `u` and `v` are flat lists, cell (i, j) of nx times ny at j nx + i; `dx` and `dy`
    are the spacings. Returns a list of nx ny floats; the rim is 0. ValueError if u or v is shorter than nx ny or an extent
    negative.
    """

def compute_vorticity_grid(velocity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], shape: typing.Annotated[collections.abc.Sequence[typing.SupportsInt | typing.SupportsIndex], 'FixedSize(3)'], spacing: typing.SupportsFloat | typing.SupportsIndex) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    Minus the textbook curl on a periodic grid, as BiotSavart.compute_vorticity.
    """

def compute_vorticity_rhs(omega: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], grad_u: typing.Annotated[collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], 'FixedSize(3)'], div_u: typing.SupportsFloat | typing.SupportsIndex, grad_rho: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], grad_p: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], rho: typing.SupportsFloat | typing.SupportsIndex) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Vorticity transport RHS

    grad_u omega - omega div_u + grad_rho x grad_p / rho^2, 1/s^2. Row k of `grad_u` holds the derivatives of component
    k.
    """

def compute_writhe(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute the writhe of a closed filament.

    The vertices X (list of N points) are read as an open list: the sum runs over the N - 1 edges X[i+1] - X[i], so repeat
    the first point at the end for the whole closed curve. Gauss sum over pairs of edges i < j, taken at the edge starts,
    over 2 pi; pairs nearer than 1e-6 are left out. Dimensionless; 0 for fewer than two edges.
    """

def couette_vorticity(alpha: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Vorticity of Couette flow: -alpha
    """

def crocco_gradient(velocity: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], vorticity: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], grad_phi: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], grad_p: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], rho: typing.SupportsFloat | typing.SupportsIndex) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Compute ∇H from Crocco's theorem

    rho (vorticity x velocity) + grad_phi + grad_p / rho; the textbook form has no density in the first term.
    """

def crocco_relation(vorticity: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], rho: typing.SupportsFloat | typing.SupportsIndex, pressure_gradient: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Velocity-curl product equals pressure gradient divided by density

    The vorticity takes no part.
    """

def curl3d_central(vel: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], spacing: typing.SupportsFloat | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
    """
    Curl of a vector field on a periodic grid, by central differences.

    `vel` has shape (Nx, Ny, Nz, 3), x along the first axis; `spacing` is the distance of neighbouring cells. Returns a new
    array of the same shape. ValueError for other shapes.
    """

def curvature_exact(block: FourierBlock, s: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], eps: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> list[float]:
    """
    Compute exact curvature from Fourier coefficients at sample parameters.

    |r' x r''| / max(eps, |r'|)^3 at each parameter s (radians), in 1 / length. A stopped point gives a finite value.
    """

def curve_length_from_fseries(path: str, nsamples: typing.SupportsInt | typing.SupportsIndex=2048) -> float:
    """
    Length of the closed polygon of the samples.
    """

def cylinder_inertia(mass: typing.SupportsFloat | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    mass R^2 / 2, kg m^2: about the cylinder's axis.
    """

def cylinder_mass(rho: typing.SupportsFloat | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex, H: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    pi rho R^2 H, kg.
    """

def describe_fourier_block(block: FourierBlock, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, exclude_window: typing.SupportsInt | typing.SupportsIndex=4) -> GeometricDescriptors:
    """
    Compute geometric descriptors (length, bending energy, self-distance, writhe, mode energies) for a Fourier block.

    Self-distance and writhe are those of n = max(64, nsamples) uniform samples; length and bending energy are integrated on
    a grid of 4 n. Raises ValueError when a coefficient vector is shorter than a_x, MemoryError for absurd sample counts.
    """

def detect_reconnection_candidates(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> list[tuple[int, int]]:
    """
    Detect pairs of vertices close enough to reconnect.

    X: list of points; threshold: distance in the units of X. Returns the pairs (i, j), j >= i + 5, whose distance is
    strictly below the threshold, in lexicographic order; the neighbour exclusion does not wrap around the end.
    Raises MemoryError when the list of pairs would not fit.
    """

def dipole_field_at_point(r: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], m: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Analytical point dipole field (mu0=1).

    (3 (m.r) / |r|^3 r - m) / (4 pi |r|^3): the radial term is one power of |r| weaker than the textbook's. Zero where
    |r| < 1e-12.
    """

def dipole_ring_field_grid(X: typing.Any, Y: typing.Any, Z: typing.Any, positions: typing.Any, moments: typing.Any) -> tuple[numpy.typing.NDArray[numpy.float64], numpy.typing.NDArray[numpy.float64], numpy.typing.NDArray[numpy.float64]]:
    """
    Sum of the fields of point dipoles (mu0=1), each as in dipole_field_at_point.

    `X`, `Y`, `Z` are arrays of one shape, `positions` and `moments` have shape (N, 3). Returns (Bx, By, Bz), new arrays of
    the shape of X. ValueError for shapes that do not fit.
    """

def ekman_number(nu: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex, H: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    nu / (omega H^2): viscosity over Coriolis force.
    """

def enstrophy(omega_squared: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], ds_area: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex]) -> float:
    """
    Sum of omega^2 dS over the samples, m^2/s^2. ValueError if the lists differ in length.
    """

def enthalpy(internal_energy: typing.SupportsFloat | typing.SupportsIndex, p: typing.SupportsFloat | typing.SupportsIndex, V: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Enthalpy H = E + pV

    in J, for E in J, p in Pa and V in m^3.
    """

def entropy_from_pv(N: typing.SupportsFloat | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex, p: typing.SupportsFloat | typing.SupportsIndex, V: typing.SupportsFloat | typing.SupportsIndex, gamma: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Entropy from pressure and volume ds = NR/(γ-1) * (ln(p)+ln(V))

    in the unit of N R. Both logarithms have the weight 1, where the entropy of an ideal gas has γ ln(V). An infinity
    or NaN for gamma = 1.
    """

def entropy_from_theta(cp: typing.SupportsFloat | typing.SupportsIndex, theta: typing.SupportsFloat | typing.SupportsIndex, dtheta: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Entropy differential ds = cp * dθ / θ

    in the unit of cp, J/(kg K).
    """

def estimate_cfl_dt(filaments: collections.abc.Sequence[dict[typing.Any, typing.Any]], options: dict[typing.Any, typing.Any]={}, cfl: typing.SupportsFloat | typing.SupportsIndex=0.5) -> float:
    """
    Estimate a time step: that in which the fastest vertex covers cfl of the shortest edge that moves.

    filaments and options as in compute_filament_velocity. Returns seconds, at least 1e-6; 1e-6 where nothing moves.
    """

def estimate_crossing_number(r: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], directions: typing.SupportsInt | typing.SupportsIndex=24, seed: typing.SupportsInt | typing.SupportsIndex=12345) -> int:
    """
    Estimate crossing number from projections

    r: list of N points of a closed polygon. The least number of proper crossings over seeded random projections: an upper
    bound of the crossing number. N^2 if `directions` is 0 or less.
    """

def evaluate_fourier_block(block: FourierBlock, s: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex]) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    Evaluate r(s) for the given Fourier block.

    s in radians. Returns one [x, y, z] per entry of s.

    Raises ValueError if one of the block's vectors is shorter than a_x.
    """

def evaluate_fourier_series(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(6)']], arg1: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], /) -> FourierResult:
    """
    Evaluate a Fourier series for positions and tangents

    Rows a_x b_x a_y b_y a_z b_z of harmonic j = 0, 1, ...: row 0 is a true constant term here, and row 1 is harmonic 1. The
    second list holds the parameters in radians. Tangents are derivatives by the parameter, not normalised.
    """

def evaluate_ideal_ab_components(ab: IdealABBlock, s: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> list[numpy.typing.NDArray[numpy.float64]]:
    """
    Evaluate all components of an ideal AB block.

    s in radians, shape (N,). Returns one array of shape (N, 3) a component.

    Raises ValueError if s is not one-dimensional.
    """

def evaluate_ideal_component(component: IdealABComponent, s: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> numpy.typing.NDArray[numpy.float64]:
    """
    Evaluate a single ideal AB component (includes I=0 offset).

    s in radians, shape (N,). Returns an array of shape (N, 3); both triples of row 0 are added.

    Raises ValueError if s is not one-dimensional.
    """

def evaluate_knot_dataset(dataset: collections.abc.Sequence[KnotState], params: SimpleInvariantXiModelParams=..., constants: CanonicalConstants=...) -> list[KnotReportRow]:
    """
    Evaluate a dataset of KnotState entries into report rows.

    One KnotReportRow an entry, in order, by MassFunctional.evaluate and SimpleInvariantXiModel. Raises ValueError for
    constants that are not positive, even without entries.
    """

def evaluate_knot_dataset_vkm_canonical(dataset: collections.abc.Sequence[KnotState], params: VKMCanonicalXiModelParams=..., constants: CanonicalConstants=...) -> list[KnotReportRow]:
    """
    Evaluate a dataset of KnotState entries using VKMCanonicalXiModel.

    One KnotReportRow an entry, in order. Raises ValueError for constants that are not positive, even without entries.
    """

def evaluate_single_knot(K: KnotInvariants, params: SimpleInvariantXiModelParams=..., constants: CanonicalConstants=...) -> KnotDerived:
    """
    Evaluate one knot using SimpleInvariantXiModel and canonical constants.

    Returns the KnotDerived of MassFunctional.evaluate. Raises ValueError for constants that are not positive.
    """

def evaluate_single_knot_vkm_canonical(K: KnotInvariants, params: VKMCanonicalXiModelParams=..., constants: CanonicalConstants=...) -> KnotDerived:
    """
    Evaluate one knot using VKMCanonicalXiModel and canonical constants.

    Returns the KnotDerived of MassFunctional.evaluate. Raises ValueError for constants that are not positive.
    """

def evaluate_with_derivatives(block: FourierBlock, s: typing.SupportsFloat | typing.SupportsIndex) -> tuple[typing.Annotated[list[float], 'FixedSize(3)'], typing.Annotated[list[float], 'FixedSize(3)'], typing.Annotated[list[float], 'FixedSize(3)'], typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    Evaluate Fourier block and its first three derivatives at parameter s.

    s in radians. Returns r, r', r'' and r''' as [x, y, z]; entries missing in a shorter vector count as 0.
    """

def evolve_positions_euler(positions: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], velocity: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], dt: typing.SupportsFloat | typing.SupportsIndex) -> None:
    """
    Move positions by dt times velocity, on the copy that the call makes of the list.

    The caller's list stays as it was, and None is returned. ValueError if there are fewer velocities than positions.
    """

def evolve_vortex_knot(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    evolve_vortex_knot(positions, tangents, dt, gamma): positions + (dt gamma) tangents, as a new list.

    One explicit step in which the tangents play the velocity. ValueError if there are fewer tangents than positions.
    """

def extract_interior_field(field: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], shape: typing.Annotated[collections.abc.Sequence[typing.SupportsInt | typing.SupportsIndex], 'FixedSize(3)'], margin: typing.SupportsInt | typing.SupportsIndex) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    Cells at least `margin` cells away from every face, as BiotSavart.extract_interior.
    """

def find_ideal_ab_block_by_id(ab_id: str) -> str:
    """
    Find <AB Id="..."> block XML in embedded/disk ideal*.txt (never knotplot). Returns empty string if not found.

    Sources, in order: the embedded databases; ideal*.txt under VKM_RESOURCE_DIR, beside VKM_KNOT_DATA_DIR and in the usual
    places; VKM_IDEAL_DATABASE; ideal_database.txt; VKM_IDEAL_TXT.
    """

def find_ideal_block_by_id(block_id: str, tag: str='') -> str:
    """
    Find <AB>, <HT>, or <TL> block XML by Id in ideal*.txt sources. Empty tag tries AB, HT, TL in order.

    Returns an empty string if not found.
    """

def format_ideal_ab_header(ab: IdealABBlock) -> str:
    """
    Format AB metadata as: AB Id="..." Conway="..." L="..." D="..." n="..."

    L and D are written with six decimals.
    """

def fourier_knot_eval(a_x: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], b_x: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], a_y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], b_y: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], a_z: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], b_z: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], s: typing.Annotated[numpy.typing.ArrayLike, numpy.float64]) -> tuple[typing.Any, ...]:
    """
    NumPy-friendly Fourier evaluation returning (x,y,z)

    Coefficient arrays (n,), row 0 being harmonic 1, and parameters s (M,) in radians; three arrays (M,). Raises ValueError
    when a pair is not one-dimensional of one length, when s is not one-dimensional, or when a pair is shorter than a_x.
    """

def get_embedded_ideal_files() -> dict[str, str]:
    """
    Return embedded ideal*.txt resources as {relative_name: content}.
    """

def get_embedded_knot_files() -> dict[str, str]:
    """
    Return embedded .fseries resources as {knot_id: file_content}.
    """

def grad_phi(phi_grad: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    The gradient that it is given.
    """

def guard_topology_step(before: collections.abc.Sequence[typing.Annotated[numpy.typing.ArrayLike, numpy.float64]], after: collections.abc.Sequence[typing.Annotated[numpy.typing.ArrayLike, numpy.float64]], contact_threshold: typing.SupportsFloat | typing.SupportsIndex, max_displacement: typing.SupportsFloat | typing.SupportsIndex, core_radius: typing.SupportsFloat | typing.SupportsIndex=0.0) -> results.TopologyGuard:
    """
    Check that strands of closed polygons stay apart on the way of a step.

    before, after: lists of arrays (N, 3). A contact is a clearance (compute_topology_clearance with core_radius) below
    contact_threshold, at the start, at the end, or in between along straight lines. max_displacement bounds how far a
    vertex moves; where it rules out a contact, the positions in between are not looked at.

    Returns a dict: contact, warn_only (False), safe_dt_fraction (part of the step that is safe: 1 without contact, 0 for a
    contact at the start or the end), clearance_before, clearance_after and message.
    Raises ValueError "Expected (N,3) array" for another shape.
    """

def hill_circulation(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    (A, a): circulation a^3 2 pi A / 3.
    """

def hill_streamfunction(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    (A, r, z, a): stream function A r (a^2 - r^2 - z^2) inside the sphere of radius a, 0 outside. The power of r is 1, where textbooks have 2.
    """

def hill_velocity(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    (A, a): velocity A / (5 a).
    """

def hill_vorticity(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    (A, r, z, a): vorticity A (4 z^2 + r^2 - a^2) inside the sphere of radius a, 0 outside; textbooks have a multiple of r.
    """

def hyperbolic_volume_from_pd(pd: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsInt | typing.SupportsIndex], 'FixedSize(4)']]) -> float:
    """
    Hyperbolic volume from PD (delegates to Python if no native solver).

    `pd` is a list of rows of four labels, as pd_from_curve returns it. The work is done by the Python module
    vkm_hypvol_no_deps, which the user supplies: its hyperbolic_volume_from_pd(pd, verbose=False) must return a number.
    ImportError where the module is missing; whatever it raises comes through; RuntimeError if its result is no number.
    """

def index_of_ideal_id(blocks: collections.abc.Sequence[IdealABBlock], id: str) -> int:
    """
    Return index of IdealABBlock with given id, or -1 if not found.
    """

def index_of_largest_block(blocks: collections.abc.Sequence[FourierBlock]) -> int:
    """
    Return index of block with most harmonics.

    The first of equals; -1 for an empty list.
    """

def is_incompressible(dudx: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], dvdy: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], dwdz: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']) -> bool:
    """
    Whether |dudx[0] + dvdy[1] + dwdz[2]| < 1e-8 1/s; other entries are not read.
    """

def kairos_energy_trigger(rho: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex, Ce: typing.SupportsFloat | typing.SupportsIndex) -> bool:
    """
    Whether rho omega^2 / 2 > rho Ce^2 / 2; False at equality.
    """

def lamb_oseen_velocity(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    (Gamma, r, nu, t): azimuthal velocity (1 - exp(-r^2 / (4 nu t))) Gamma / (2 pi r) of a Lamb-Oseen vortex, m/s.
    """

def lamb_oseen_vorticity(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    (Gamma, r, nu, t): vorticity exp(-r^2 / (4 nu t)) Gamma / (4 pi nu t) of a Lamb-Oseen vortex, 1/s.
    """

def laplacian_phi(d2phidx2: typing.SupportsFloat | typing.SupportsIndex, d2phidy2: typing.SupportsFloat | typing.SupportsIndex, d2phidz2: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Sum of the three second derivatives.
    """

def length_exact(block: FourierBlock, nsamples: typing.SupportsInt | typing.SupportsIndex=4096) -> float:
    """
    Compute exact length of Fourier curve by sampling.

    Rectangle rule for the integral of |r'| over the period, spectrally accurate. At least 16 samples are taken.
    """

def list_bindings(pattern: typing.Any=None, include_private: bool=False) -> results.Bindings:
    """
    Return a dictionary of exported names in this module.

    Args:
        pattern (str|None): optional case-insensitive substring filter.
        include_private (bool): include names beginning with '_' if True.

    Returns: dict with keys: 'functions', 'classes', 'attributes', and 'counts'.
    Also sets module __all__ = functions + classes (public names).
    """

def load_all_knots(paths: collections.abc.Sequence[str], nsamples: typing.SupportsInt | typing.SupportsIndex=1000) -> list[LoadedKnot]:
    """
    Load all knots from a list of .fseries file paths.

    The largest block of each file at nsamples parameters from 0 to 2 pi, both ends included, centred on the mean of the
    samples. A file that cannot be read or holds no block is skipped. Raises MemoryError for absurd sample counts.
    """

def load_embedded_ideal_text(name: str='ideal.txt') -> str:
    """
    Load embedded ideal text resource from library (basename fallback supported).

    Raises RuntimeError if there is none.
    """

def load_embedded_knot_block(knot_id: str) -> FourierBlock:
    """
    Load embedded knot by id and return its largest Fourier block.

    Raises RuntimeError if the id is unknown or its text holds no block.
    """

def local_circulation_density(dv_dx: typing.SupportsFloat | typing.SupportsIndex, du_dy: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Local circulation density (vorticity) via Stokes' theorem

    The same as vorticity_z_2D.
    """

def local_rotation_rate(dv_dx: typing.SupportsFloat | typing.SupportsIndex, du_dy: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    (dv/dx - du/dy) / 2, rad/s: the angular velocity of a fluid element about z, half its vorticity.
    """

def make_knot_report_row(K: KnotInvariants, D: KnotDerived) -> KnotReportRow:
    """
    Create a compact report row from invariants and derived quantities.
    """

def min_non_neighbor_distance_from_fseries(path: str, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, skip: typing.SupportsInt | typing.SupportsIndex=3) -> float:
    """
    Least distance of samples more than `skip` apart along the curve: 0 for fewer than four samples, 1e300 when no
    pair counts.
    """

def min_self_distance_exactish(block: FourierBlock, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, exclude_window: typing.SupportsInt | typing.SupportsIndex=4) -> float:
    """
    Estimate minimum self-distance of Fourier curve via sampling.

    min_self_distance_sampled of uniform samples of the period, at least 64. Raises ValueError when a coefficient vector is
    shorter than a_x, MemoryError for absurd sample counts.
    """

def min_self_distance_sampled(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], exclude_window: typing.SupportsInt | typing.SupportsIndex=4) -> float:
    """
    Compute minimum self-distance of a closed polygonal curve.

    points: list of N points. The least distance between vertices whose gap along the closed curve, min(j - i, N - j + i),
    is greater than exclude_window. 0 for fewer than 4 points, or when no pair counts. A search over a tree of boxes, with
    the bits of the plain loop over all pairs.
    """

def mode_energies(block: FourierBlock) -> list[float]:
    """
    Compute per-mode energy from Fourier coefficients.

    Entry i is the sum of the squared coefficients of row i, in length squared, without a weight by harmonic. Entries
    missing in a shorter vector count as 0.
    """

def parse_embedded_ideal_ab_by_id(ab_id: str, name: str='ideal.txt') -> IdealABBlock:
    """
    Parse a single AB block by Id from an embedded ideal*.txt resource.

    Raises RuntimeError if the resource or the block does not exist.
    """

def parse_embedded_ideal_txt(name: str='ideal.txt') -> list[IdealABBlock]:
    """
    Parse embedded ideal*.txt resource into AB blocks.

    Raises RuntimeError if there is no such resource.
    """

def parse_fseries_from_string(content: str) -> list[FourierBlock]:
    """
    Parse .fseries content string into Fourier blocks.

    A blank line ends a block; a line that begins with % ends it and is the header of the next.
    """

def parse_fseries_multi(path: str) -> list[FourierBlock]:
    """
    Parse a .fseries file into Fourier blocks.

    An unreadable file gives an empty list; rows that do not begin with six numbers are dropped.
    """

def parse_ideal_ab_by_id_from_string(content: str, ab_id: str) -> IdealABBlock:
    """
    Parse a single AB block by Id from ideal.txt-style content string.

    Raises RuntimeError if there is none.
    """

def parse_ideal_halvard_from_string(content: str) -> list[IdealABBlock]:
    """
    Parse Halvard ideal*.txt content (AB, HT, TL) into IdealABBlock entries.

    All AB blocks come first, then the HT, then the TL blocks.
    """

def parse_ideal_txt_from_string(content: str) -> list[IdealABBlock]:
    """
    Parse ideal.txt-style content string into IdealABBlock entries.

    Only AB blocks. Attributes and rows that do not parse fall back or are skipped; an I too large for an int raises
    IndexError.
    """

def parse_ideal_txt_multi(path: str) -> list[IdealABBlock]:
    """
    Parse an ideal.txt-style file into IdealABBlock entries.

    Only AB blocks. Raises RuntimeError if the file cannot be opened.
    """

def pd_from_curve(P3: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], tries: typing.SupportsInt | typing.SupportsIndex=40, seed: typing.SupportsInt | typing.SupportsIndex=12345, min_angle_deg: typing.SupportsFloat | typing.SupportsIndex=1.0, depth_tol: typing.SupportsFloat | typing.SupportsIndex=1e-06) -> list[typing.Annotated[list[int], 'FixedSize(4)']]:
    """
    Compute a PD code from a closed 3D polygonal curve.

    P3: array (N, 3), the closing point not repeated. Of `tries` seeded random projections the one that shows the most
    crossings is taken. Returns a list of rows of four labels, one a crossing: the arcs entering on the under and the over
    strand, then those leaving on the under and the over strand, numbered 1 to 2C along the curve. Left out are crossings
    flatter than `min_angle_deg` degrees and those whose depths differ by less than `depth_tol`, in the units of P3.
    Raises ValueError for another shape or fewer than 4 points, RuntimeError if no projection shows a crossing.
    """

def potential_temperature(T: typing.SupportsFloat | typing.SupportsIndex, p0: typing.SupportsFloat | typing.SupportsIndex, p: typing.SupportsFloat | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex, cp: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Compute potential temperature θ = T (p0/p)^k

    with k = R / cp: the temperature in K of a parcel brought adiabatically from the pressure p to p0 (Poisson).
    """

def potential_vorticity(fa: typing.SupportsFloat | typing.SupportsIndex, zeta_r: typing.SupportsFloat | typing.SupportsIndex, h: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    (fa + zeta_r) / h, 1/(m s): planetary and relative vorticity over the depth of a shallow layer (Rossby).
    """

def predict_particle_from_fourier_block(block: FourierBlock, params: KnotParticleModelParams=..., knot_name: str='', crossing_number: typing.SupportsInt | typing.SupportsIndex=0, braid_index: typing.SupportsInt | typing.SupportsIndex=0, seifert_genus: typing.SupportsInt | typing.SupportsIndex=0, chirality: typing.SupportsInt | typing.SupportsIndex=0, hyperbolic: bool=False, hyperbolic_volume: typing.SupportsFloat | typing.SupportsIndex=0.0, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, exclude_window: typing.SupportsInt | typing.SupportsIndex=4) -> KnotPrediction:
    """
    Predict particle quantities directly from a Fourier block and optional metadata.

    KnotParticleModel(params).predict of build_invariants_from_fourier_block, whose arguments and errors hold.
    """

def predict_particle_from_fseries(path: str, params: KnotParticleModelParams=..., knot_name: str='', crossing_number: typing.SupportsInt | typing.SupportsIndex=0, braid_index: typing.SupportsInt | typing.SupportsIndex=0, seifert_genus: typing.SupportsInt | typing.SupportsIndex=0, chirality: typing.SupportsInt | typing.SupportsIndex=0, hyperbolic: bool=False, hyperbolic_volume: typing.SupportsFloat | typing.SupportsIndex=0.0, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, exclude_window: typing.SupportsInt | typing.SupportsIndex=4) -> KnotPrediction:
    """
    Predict particle quantities from a .fseries file using its largest Fourier block.

    KnotParticleModel(params).predict of build_invariants_from_fseries, whose arguments and errors hold.
    """

def pressure_gradient(pressure_field: collections.abc.Sequence[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex]], dx: typing.SupportsFloat | typing.SupportsIndex=1.0, dy: typing.SupportsFloat | typing.SupportsIndex=1.0) -> list[list[typing.Annotated[list[float], 'FixedSize(3)']]]:
    """
    The negated gradient of a pressure field, Pa/m: the direction of the force.

    `pressure_field` is a list of rows p[i][j], i along x with the spacing dx, j along y with dy. Central differences
    inside, one-sided ones on the first and last row and column. Returns rows of 3-lists, the third component 0. ValueError
    for rows of different lengths, and for a single row or column.
    """

def radiation_force(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, arg4: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    radiation_force(a, b, c, d, e): (d / e) (c / e) (2 a b / 3e8) / (1 - (c / e)^2).

    The speed of light in it is the rounded 3e8 m/s. Nothing is guarded: an infinity or NaN at c = e.
    """

def reach_proxy_from_fseries(path: str, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, skip: typing.SupportsInt | typing.SupportsIndex=3) -> float:
    """
    Tube radius of the polygon of the samples; 0 for fewer than four.
    """

def resample_closed_curve(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], n: typing.SupportsInt | typing.SupportsIndex) -> numpy.typing.NDArray[numpy.float64]:
    """
    Resample a closed polygon at n equal steps of its length, by linear interpolation.

    points: array (N, 3), closing vertex not repeated; the closing edge counts. Returns an array (n, 3) that begins at
    points[0] and ends one step short of it; zeros if there are fewer than two points or the length is 0.

    Raises ValueError "Expected (N,3) array" for another width, and for another rank.
    """

def resolved_tube_analyze(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], skip_neighbors: typing.SupportsInt | typing.SupportsIndex=2, contact_tol: typing.SupportsFloat | typing.SupportsIndex=0.001, equilateral_tol: typing.SupportsFloat | typing.SupportsIndex=0.001) -> ResolvedTubeMetrics:
    """
    Thickness, ropelength and contacts of a closed polygon.

    Args:
        points: vertices, N lists of three floats or an (N, 3) array, any unit of length; the closing edge is implied.
        skip_neighbors (int): edges up to this many apart around the loop are not tested against each other.
        contact_tol (float): contacts up to (1 + tol) thickness + tol are active; relative and additive at once.
        equilateral_tol (float): largest relative deviation of an edge length that still counts as equilateral.

    Returns: ResolvedTubeMetrics. Raises ValueError below three points and for negative tolerances.
    Time is n log n on curves, memory linear in the vertices and contacts.
    """

def resolved_tube_build_rigidity_matrix(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, include_struts: bool=True, include_kinks: bool=True, kink_finite_difference_step: typing.SupportsFloat | typing.SupportsIndex=1e-06, use_analytic_kink_gradient: bool=True) -> RigidityMatrix:
    """
    Rigidity matrix of a tube: one column per active contact, struts before kinks.

    Args:
        points: vertices, N lists of three floats or an (N, 3) array.
        tube: the ResolvedTubeMetrics of these points; another's gives columns without meaning.
        include_struts, include_kinks (bool): which contacts to take.
        kink_finite_difference_step (float): relative step where a kink's gradient is found by differences.
        use_analytic_kink_gradient (bool): False takes differences for all kinks.

    Contacts whose gradient has a norm up to 1e-14 give no column.
    """

def resolved_tube_build_sparse_rigidity_matrix(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, include_struts: bool=True, include_kinks: bool=True, kink_finite_difference_step: typing.SupportsFloat | typing.SupportsIndex=1e-06, use_analytic_kink_gradient: bool=True) -> SparseRigidityMatrix:
    """
    Sparse rigidity matrix of a tube: entries above 1e-15 in magnitude, rows ascending.

    Arguments as for the dense form, which holds the same numbers.
    """

def resolved_tube_kkt_diagnostics(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, solve_nnls: bool=True, max_iterations: typing.SupportsInt | typing.SupportsIndex=5000, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-10, use_sparse_solver: bool=True, use_analytic_kink_gradient: bool=True, use_active_set_solver: bool=True) -> ContactStressDiagnostics:
    """
    How far the length gradient of a tube lies from the cone of its contacts' gradients.

    Args:
        points: vertices, N lists of three floats or an (N, 3) array.
        tube: the ResolvedTubeMetrics of these points.
        solve_nnls (bool): False reports the counts and norms alone.
        max_iterations, tolerance: of the non-negative fit.
        use_sparse_solver, use_active_set_solver (bool): which of the four solvers.
        use_analytic_kink_gradient (bool): False takes differences for all kinks.

    Returns: ContactStressDiagnostics; a contact_residual of 0 is a length-critical polygon.
    """

def resolved_tube_length(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
    """
    Polygon length; 0 for fewer than two points.
    """

def resolved_tube_length_gradient_flat(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> list[float]:
    """
    Flat gradient of the length.
    """

def resolved_tube_lower_bound_rad() -> float:
    """
    (4 + 2 sqrt(2)) pi, a lower bound of length over radius for any non-trivial knot.
    """

def resolved_tube_metrics_from_fseries(path: str, nsamples: typing.SupportsInt | typing.SupportsIndex=2048, skip: typing.SupportsInt | typing.SupportsIndex=3) -> ResolvedTubeMetrics:
    """
    ResolvedTubeMetrics of the samples, with at least one neighbour skipped. Raises ValueError for fewer than three
    samples.
    """

def resolved_tube_minrad(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']]) -> float:
    """
    Least vertex radius; 0 for fewer than three points.
    """

def resolved_tube_projected_gradient(points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], tube: ResolvedTubeMetrics, options: TighteningOptions=...) -> list[float]:
    """
    The part of the negative length gradient that the contacts do not balance.

    Args:
        points: vertices, N lists of three floats or an (N, 3) array.
        tube: the ResolvedTubeMetrics of these points.
        options: TighteningOptions, of which the nnls_... and use_... fields count.

    Returns: flat direction of 3 N floats, A x - g with the rigidity matrix A, the non-negative multipliers x that fit
    the length gradient g best.
    """

def resolved_tube_solve_active_set(matrix: SparseRigidityMatrix, target: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], max_iterations: typing.SupportsInt | typing.SupportsIndex=2000, tolerance: typing.SupportsFloat | typing.SupportsIndex=1e-10, ridge: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> NNLSResult:
    """
    Multipliers x >= 0 that minimise |A x - target|, by Lawson and Hanson's active set.

    Args:
        matrix: rigidity matrix A, one column per contact.
        target: list of floats, one per row; read only as far as the shorter of it and a column reaches.
        max_iterations (int): limit of outer iterations; 0 counts as 1.
        tolerance (float): multipliers and dual slopes up to this count as zero; 1e-10 if not positive.
        ridge (float): added to the diagonal of each subproblem; climbs by factors of 10 where it is singular.

    Returns: NNLSResult; never raises for bad sizes, see `converged`.
    """

def resolved_tube_tighten(initial_points: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], options: TighteningOptions=...) -> TighteningResult:
    """
    Shorten a closed polygon at fixed tube thickness, towards least ropelength.

    Args:
        initial_points: vertices, N lists of three floats or an (N, 3) array, any unit of length.
        options: TighteningOptions; its step sizes and contact_tol are in the unit of the points.

    Returns: TighteningResult. Its `reason` is one of max_steps_zero, nonpositive_initial_thickness, target_kkt_residual
    (the one with `converged` true), zero_projected_gradient, line_search_failed, max_steps.
    Raises ValueError below three points and for negative contact_tol or equilateral_tol. Ctrl-C ends the run.
    After Ashton, Cantarella, Piatek and Rawdon, Knot tightening by constrained gradient descent (2011).
    """

def resolved_tube_write_matrix_market(sparse: SparseRigidityMatrix, path: str, one_based_indices: bool=True) -> None:
    """
    Write the matrix as a Matrix Market coordinate file, 17 significant digits, and replace the file by it as a
    whole. Raises RuntimeError if the file cannot be opened or written; the old one stays then.
    """

def resolved_tube_write_vector_market(vector: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], path: str) -> None:
    """
    Write the floats as a Matrix Market array file, 17 significant digits, and replace the file by it as a whole.
    Raises RuntimeError if the file cannot be opened or written; the old one stays then.
    """

def rk4_integrate(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg2: typing.SupportsFloat | typing.SupportsIndex, arg3: typing.SupportsFloat | typing.SupportsIndex, /) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    Runge-Kutta 4th order time integrator for vortex elements.

    rk4_integrate(positions, tangents, dt, gamma). With velocities that do not change within the step all four stages agree:
    the result is that of evolve_vortex_knot. The integrator of the filament equations is rk4_step.
    """

def rk4_step(filaments: collections.abc.Sequence[dict[typing.Any, typing.Any]], dt: typing.SupportsFloat | typing.SupportsIndex, options: dict[typing.Any, typing.Any]={}) -> results.FilamentStep:
    """
    Advance closed vortex filaments by one classical fourth-order Runge-Kutta step of dt seconds.

    filaments and options as in compute_filament_velocity. Returns a dict: filaments, a list of dicts with the keys id,
    carrier, points, circulation and ghost, and maximum_stage_speed (m/s, over the four stages). The key source is not
    written back: restore it where it was False. The input is left as it is.
    """

def rossby_number(U: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex, d: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    U / (2 omega d): inertia over Coriolis force.
    """

def rotating_frame_rhs(velocity: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], vorticity: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], grad_phi: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], grad_p: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], omega: typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)'], rho: typing.SupportsFloat | typing.SupportsIndex) -> typing.Annotated[list[float], 'FixedSize(3)']:
    """
    Compute rotating frame momentum RHS

    2 velocity x omega - grad_phi - grad_p / rho, m/s^2. The vorticity takes no part.
    """

def sample_circle(n: typing.SupportsInt | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex=1.0, z: typing.SupportsFloat | typing.SupportsIndex=0.0) -> numpy.typing.NDArray[numpy.float64]:
    """
    Sample a circle of radius R about the z axis, at height z: array (n, 3), counterclockwise from (R, 0, z).
    """

def sample_curve(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], n: typing.SupportsInt | typing.SupportsIndex, arclength_uniform: bool=True) -> numpy.typing.NDArray[numpy.float64]:
    """
    Sample a closed polygon: n points at equal steps of its length, as resample_closed_curve does.

    With arclength_uniform=False, or when points has n rows already, the points come back as they are.
    """

def sample_curve_centered(path: str, nsamples: typing.SupportsInt | typing.SupportsIndex=1024) -> list[typing.Annotated[list[float], 'FixedSize(3)']]:
    """
    Samples of a file's largest block at s = 2 pi k / nsamples, less their mean; a list of points, empty for
    nsamples below 1. Raises RuntimeError for a missing file or one without blocks, as do all tools over files here.
    """

def solid_body_rotation_vorticity(omega: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Vorticity of solid body rotation: 2 * omega
    """

def swirl_clock_factor_from_speed(v_norm: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex=299792458.0) -> float:
    """
    sqrt(max(1 - v_norm^2 / c^2, 0)), both in m/s: exactly 0 from c on.
    """

def swirl_clock_rate(dv_dx: typing.SupportsFloat | typing.SupportsIndex, du_dy: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Legacy alias for local_rotation_rate = 0.5 * (dv/dx - du/dy). Not the Canon Swirl-Clock factor.
    """

def swirl_energy(rho: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Legacy helper 0.5 * rho * omega^2. Prefer swirl_energy_density_from_speed or swirl_tension_energy_density.
    """

def swirl_energy_density_from_speed(rho: typing.SupportsFloat | typing.SupportsIndex, v_norm: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    rho v_norm^2 / 2, J/m^3.
    """

def swirl_tension_energy_density(rho: typing.SupportsFloat | typing.SupportsIndex, omega: typing.SupportsFloat | typing.SupportsIndex, ell: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    rho (ell omega)^2 / 2, J/m^3: a rotation omega in 1/s felt over the length ell in m.
    """

def torque(inertia: typing.SupportsFloat | typing.SupportsIndex, alpha: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    inertia alpha, N m for kg m^2 and rad/s^2.
    """

def van_der_pol_dx(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    van_der_pol_dx(x, y): dx/dt = y of van der Pol's oscillator.
    """

def van_der_pol_dy(arg0: typing.SupportsFloat | typing.SupportsIndex, arg1: typing.SupportsFloat | typing.SupportsIndex, arg2: typing.SupportsFloat | typing.SupportsIndex, /) -> float:
    """
    van_der_pol_dy(x, y, mu): dy/dt = mu (1 - x^2) y - x of van der Pol's oscillator.
    """

def vortex_pressure_drop(rho: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    rho c^2 / 2, Pa: the drop to the centre of a vortex with rim speed c (Bernoulli).
    """

def vortex_transverse_pressure_diff(rho: typing.SupportsFloat | typing.SupportsIndex, c: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    rho c^2 / 4, Pa: half of vortex_pressure_drop.
    """

def vorticity_from_curvature(V: typing.SupportsFloat | typing.SupportsIndex, R: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    V / R, 1/s: what a speed V along streamlines of radius R adds to the vorticity.
    """

def vorticity_z_2D(dv_dx: typing.SupportsFloat | typing.SupportsIndex, du_dy: typing.SupportsFloat | typing.SupportsIndex) -> float:
    """
    Compute 2D vorticity: dv/dx - du/dy
    """

def writhe_gauss_curve(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute writhe via Gauss integral

    N positions at uniform parameters of a closed curve and at least N tangents, the derivatives by the parameter (period
    2 pi). Pairs nearer than 1e-6 are left out. 0 for no positions. Raises ValueError when there are fewer tangents.
    """
