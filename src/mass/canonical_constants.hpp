#pragma once

/// The constants of the theory and the closed-form relations between them, each written once, here.
///
/// SI units throughout. c speed of light, hbar reduced Planck constant, m_e electron mass, omega_c = m_e c^2 / hbar
/// Compton angular frequency, lambda_c = 2 pi hbar / (m_e c) full and lambda_bar_c = hbar / (m_e c) reduced Compton
/// wavelength, v_swirl characteristic swirl speed, rho_f fluid density, r_c = v_swirl / omega_c core radius.
/// The values are those of CODATA 2018; the relations are the theory's own.

namespace vkm {

/// Fixed constants. The derived ones are their formulas evaluated once in double precision, and kept as literals so
/// that all who use them see the same bits.
namespace canonical {

inline constexpr double c = 299792458.0;               // m/s
inline constexpr double hbar = 1.054571817e-34;        // J s
inline constexpr double alpha = 0.0072973525693;       // 1
inline constexpr double m_e = 9.1093837015e-31;        // kg
inline constexpr double e_charge = 1.602176634e-19;    // C
inline constexpr double epsilon_0 = 8.8541878128e-12;  // F/m
inline constexpr double phi = 1.618033988749895;       // (1 + sqrt(5)) / 2

inline constexpr double omega_c = 776344071105010991104.0;      // (m_e c c) / hbar, 1/s
inline constexpr double lambda_c = 2.4263102371964454e-12;      // (hbar / (m_e c)) 2 pi, m
inline constexpr double lambda_bar_c = 3.8615926772428334e-13;  // hbar / (m_e c), m
inline constexpr double c_squared = 89875517873681760.0;        // c c, m^2/s^2

inline constexpr double default_rho_f = 7e-7;          // kg/m^3
inline constexpr double default_v_swirl = 1093845.63;  // m/s

}  // namespace canonical

/// A snapshot of the constants and of what follows from them for one pair (rho_f, v_swirl).
struct VKMCanonicalValues {
  double c = canonical::c;                      // speed of light, m/s
  double hbar = canonical::hbar;                // reduced Planck constant, J s
  double alpha = canonical::alpha;              // fine-structure constant
  double m_e = canonical::m_e;                  // electron mass, kg
  double e_charge = canonical::e_charge;        // elementary charge, C
  double rho_f = canonical::default_rho_f;      // fluid density, kg/m^3
  double v_swirl = canonical::default_v_swirl;  // swirl speed, m/s
  double omega_c = 0.0;                         // Compton angular frequency, 1/s
  double r_c = 0.0;                             // core radius, m
  double gamma_0 = 0.0;                         // circulation quantum, m^2/s
  double lambda_c = 0.0;                        // full Compton wavelength, m
  double lambda_bar_c = 0.0;                    // reduced Compton wavelength, m
  double rho_E = 0.0;                           // swirl energy density, J/m^3
  double rho_m = 0.0;                           // mass-equivalent density, kg/m^3
  double rho_core = 0.0;                        // core density closure, kg/m^3
  double rho_horn = 0.0;                        // horn envelope density, kg/m^3
  double eta_0 = 0.0;                           // v_swirl / c
  double geometric_gate = 0.0;                  // lambda_c / (pi r_c)
  double swirl_clock = 0.0;                     // clock factor
  double F_swirl_max = 0.0;                     // maximal swirl force, N
  double R_infty_vkm = 0.0;                     // Rydberg-like wavenumber, 1/m
};

/// The relations. A guard rejects the bad range (std::invalid_argument), so a NaN passes and gives a NaN.
class VKMCanonicalConstants {
 public:
  VKMCanonicalConstants() = delete;

  static double speed_of_light() { return canonical::c; }
  static double hbar() { return canonical::hbar; }
  static double alpha() { return canonical::alpha; }
  static double electron_mass() { return canonical::m_e; }
  static double elementary_charge() { return canonical::e_charge; }
  static double epsilon_0() { return canonical::epsilon_0; }
  static double phi() { return canonical::phi; }

  static double compton_angular_frequency(double m_e = canonical::m_e, double c = canonical::c,
                                          double hbar = canonical::hbar);
  static double reduced_compton_wavelength(double hbar = canonical::hbar, double m_e = canonical::m_e,
                                           double c = canonical::c);
  static double full_compton_wavelength(double hbar = canonical::hbar, double m_e = canonical::m_e,
                                        double c = canonical::c);
  static double core_radius_from_compton_anchor(double v_swirl, double omega_c);
  static double circulation_quantum(double r_c, double v_swirl);
  /// Unguarded: omega_c = 0 gives an infinity or NaN.
  static double circulation_quantum_from_v_omega(double v_swirl, double omega_c);
  static double eta0(double v_swirl, double c = canonical::c);
  /// sqrt(max(1 - v_norm^2 / c^2, 0)): exactly 0 at and above the speed of light, with no error.
  static double swirl_clock(double v_norm, double c = canonical::c);
  static double swirl_energy_density(double rho_f, double v_norm);
  static double mass_equivalent_density(double rho_E, double c = canonical::c);
  /// The same expression as core_density_closure; the two densities are distinct concepts of the theory.
  static double horn_envelope_density(double m_e, double c, double v_swirl, double r_c);
  static double core_density_closure(double m_e, double c, double v_swirl, double r_c);
  static double geometric_gate(double lambda_c, double r_c);
  static double f_swirl_max(double hbar, double omega_c, double r_c);
  static double rydberg_vkm(double v_swirl, double r_c, double c = canonical::c);
  static double bare_master_mass_scale(double rho_m, double r_c);

  static VKMCanonicalValues values(double rho_f = canonical::default_rho_f,
                                   double v_swirl = canonical::default_v_swirl);
};

}  // namespace vkm
