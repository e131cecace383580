# Types of the extension module. Made by tools/make_stubs.py from the built module; do not edit.
"""
VKMcore Bindings
"""
from __future__ import annotations
import collections.abc
import numpy
import numpy.typing
import typing
__all__: list[str] = ['FourierBlock', 'FourierResult', 'GeometricDescriptors', 'IdealABBlock', 'IdealABComponent', 'LoadedKnot', 'ParticleEvaluator', 'RelativisticMetrics', 'TailApproxConfig', 'VKMCanonicalConstants', 'VKMCanonicalValues', 'VKMMasterEquation', 'VKMMasterEquationInput', 'VKMMasterEquationOutput', 'VKMTensionScales', 'VKMTopologyKernelInput', 'bending_energy_exact', 'compute_centerline_helicity', 'compute_curvature', 'compute_linking_number', 'compute_polygonal_gauss', 'compute_twist', 'compute_writhe', 'curvature_exact', 'describe_fourier_block', 'detect_reconnection_candidates', 'evaluate_fourier_block', 'evaluate_fourier_series', 'evaluate_ideal_ab_components', 'evaluate_ideal_component', 'evaluate_with_derivatives', 'find_ideal_ab_block_by_id', 'find_ideal_block_by_id', 'format_ideal_ab_header', 'fourier_knot', 'fourier_knot_eval', 'get_embedded_ideal_files', 'get_embedded_knot_files', 'index_of_ideal_id', 'index_of_largest_block', 'length_exact', 'list_bindings', 'load_all_knots', 'load_embedded_ideal_text', 'load_embedded_knot_block', 'min_self_distance_exactish', 'min_self_distance_sampled', 'mode_energies', 'parse_embedded_ideal_ab_by_id', 'parse_embedded_ideal_txt', 'parse_fseries_from_string', 'parse_fseries_multi', 'parse_ideal_ab_by_id_from_string', 'parse_ideal_halvard_from_string', 'parse_ideal_txt_from_string', 'parse_ideal_txt_multi', 'writhe_gauss_curve']

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
        over the partners with 1e-8 < |d|^2 < 0.04, and steps V = (timestep F + V) 0.7, P = timestep V + P. The same input gives the same bits on every machine. Ctrl-C leaves the filaments as they were.
        """

    def set_tail_approx_config(self, config: TailApproxConfig) -> None:
        """
        Copy in a TailApproxConfig for the tail surrogate.
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

def bending_energy_exact(block: FourierBlock, nsamples: typing.SupportsInt | typing.SupportsIndex=4096, eps: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> float:
    """
    Compute bending energy integral of Fourier curve.

    Integral of curvature squared over arc length, in 1 / length, by the rectangle rule; the speed is clamped from below at
    eps. At least 32 samples are taken.
    """

def compute_centerline_helicity(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute the centerline helicity as the sum of writhe and twist.

    The second list is not read and there is no twist term: the result equals compute_writhe(X).
    """

def compute_curvature(points: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], eps: typing.SupportsFloat | typing.SupportsIndex=1e-08) -> numpy.typing.NDArray[numpy.float64]:
    """
    Compute discrete curvature from points.

    points: array (N, 3) of a closed curve, the closing point not repeated; array (N,) in 1 / length by central differences,
    |d1 x d2| / (|d1|^3 + eps). Zeros for N below 3. Raises ValueError for another shape.
    """

def compute_linking_number(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> int:
    """
    Compute the Gauss linking number of two filaments.

    A and B are lists of points, read as open: repeat the first point at the end to close a curve. Gauss sum over pairs of
    edges, taken at the edge starts, over 4 pi, rounded to the nearest integer (halves away from zero). Pairs nearer than
    1e-6 are left out. A NaN sum gives 0, a sum beyond 32 bits the nearest 32-bit integer.
    """

def compute_polygonal_gauss(curve_a: typing.Annotated[numpy.typing.ArrayLike, numpy.float64], curve_b: typing.Annotated[numpy.typing.ArrayLike, numpy.float64] | None=None, same_curve: bool=True) -> dict[typing.Any, typing.Any]:
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

def compute_twist(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute the twist of a frame along a filament.

    T: M unit tangents; N: at least M unit normals. Sum over the inner entries of (T x dN) . N with central differences,
    over 2 pi: turns of the normal about the curve, a right-handed turn counting -1. 0 for M below 3.
    Raises ValueError when N is shorter than T.
    """

def compute_writhe(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute the writhe of a closed filament.

    The vertices X (list of N points) are read as an open list: the sum runs over the N - 1 edges X[i+1] - X[i], so repeat
    the first point at the end for the whole closed curve. Gauss sum over pairs of edges i < j, taken at the edge starts,
    over 2 pi; pairs nearer than 1e-6 are left out. Dimensionless; 0 for fewer than two edges.
    """

def curvature_exact(block: FourierBlock, s: collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], eps: typing.SupportsFloat | typing.SupportsIndex=1e-12) -> list[float]:
    """
    Compute exact curvature from Fourier coefficients at sample parameters.

    |r' x r''| / max(eps, |r'|)^3 at each parameter s (radians), in 1 / length. A stopped point gives a finite value.
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

def evaluate_with_derivatives(block: FourierBlock, s: typing.SupportsFloat | typing.SupportsIndex) -> typing.Annotated[list[typing.Annotated[list[float], 'FixedSize(3)']], 'FixedSize(4)']:
    """
    Evaluate Fourier block and its first three derivatives at parameter s.

    s in radians. Returns r, r', r'' and r''' as [x, y, z]; entries missing in a shorter vector count as 0.
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

def index_of_ideal_id(blocks: collections.abc.Sequence[IdealABBlock], id: str) -> int:
    """
    Return index of IdealABBlock with given id, or -1 if not found.
    """

def index_of_largest_block(blocks: collections.abc.Sequence[FourierBlock]) -> int:
    """
    Return index of block with most harmonics.

    The first of equals; -1 for an empty list.
    """

def length_exact(block: FourierBlock, nsamples: typing.SupportsInt | typing.SupportsIndex=4096) -> float:
    """
    Compute exact length of Fourier curve by sampling.

    Rectangle rule for the integral of |r'| over the period, spectrally accurate. At least 16 samples are taken.
    """

def list_bindings(pattern: typing.Any=None, include_private: bool=False) -> dict[typing.Any, typing.Any]:
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

def writhe_gauss_curve(arg0: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], arg1: collections.abc.Sequence[typing.Annotated[collections.abc.Sequence[typing.SupportsFloat | typing.SupportsIndex], 'FixedSize(3)']], /) -> float:
    """
    Compute writhe via Gauss integral

    N positions at uniform parameters of a closed curve and at least N tangents, the derivatives by the parameter (period
    2 pi). Pairs nearer than 1e-6 are left out. 0 for no positions. Raises ValueError when there are fewer tangents.
    """
