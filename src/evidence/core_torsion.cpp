#include "evidence/core_torsion.hpp"

#include <algorithm>
#include <cmath>

#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

namespace {

constexpr const char* canonical_convention = "E0*I/c_T^2";
constexpr const char* legacy_convention = "legacy_2*E0*I/c_T^2";

bool is_valid(double E0, double I, double c_T) {
  return E0 >= 0.0 && I >= 0.0 && c_T > 0.0 && all_finite({E0, I, c_T});
}

double residual_of(double mass, double c_T, double energy) {
  return std::fabs(c_T * mass * c_T - energy) / std::max({std::fabs(mass) * c_T * c_T, std::fabs(energy), 1.0});
}

}  // namespace

TorsionMassResult CoreTorsionAPI::torsion_inertial_mass(double E0, double I, double c_T) {
  if (!is_valid(E0, I, c_T)) return {quiet_nan, quiet_nan, canonical_convention, false};
  const double mass = (E0 * I) / (c_T * c_T);
  return {mass, residual_of(mass, c_T, E0 * I), canonical_convention, true};
}

TorsionMassResult CoreTorsionAPI::torsion_inertial_mass_legacy_factor2(double E0, double I, double c_T) {
  TorsionMassResult result = torsion_inertial_mass(E0, I, c_T);
  if (!result.ok) return result;
  result.mass *= 2.0;
  result.dimensional_residual = residual_of(result.mass, c_T, (E0 + E0) * I);
  result.convention = legacy_convention;
  return result;
}

AnisotropyResiduals CoreTorsionAPI::anisotropy_residuals(const std::array<double, 9>& M, double E0, double c_T) {
  AnisotropyResiduals result;
  if (!(E0 > 0.0) || !(c_T > 0.0) || !all_finite(M)) return result;
  double squares = 0.0;
  for (const double x : M) squares += x * x;
  const double tolerance = (std::sqrt(squares) + 1.0) * 1e-12;
  if (std::fabs(M[1] - M[3]) + std::fabs(M[2] - M[6]) + std::fabs(M[5] - M[7]) > tolerance) {
    result.delta_aniso = quiet_nan;
    return result;
  }

  const double trace = M[0] + M[4] + M[8];
  result.normalization = E0 * 3.0;
  result.chi_hat = c_T * c_T * trace / (E0 * 3.0);

  const double mean = trace / 3.0;
  double deviator = 0.0;
  for (const std::size_t diagonal : {0, 4, 8}) deviator += (M[diagonal] - mean) * (M[diagonal] - mean);
  for (const std::size_t other : {1, 2, 3, 5, 6, 7}) deviator += M[other] * M[other];
  result.delta_aniso = std::sqrt(deviator * 0.125) / (std::fabs(mean) + 1e-30);
  result.ok = std::isfinite(result.chi_hat) && std::isfinite(result.delta_aniso);
  return result;
}

}  // namespace vkm
