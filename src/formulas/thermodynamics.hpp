#pragma once

/// Thermodynamics of the ideal gas; SI units. Nothing is guarded: a zero denominator divides.

#include <cmath>

#include "core/elementary.hpp"

namespace vkm {

/// Poisson's equation: the temperature of a parcel brought adiabatically from the pressure p to p0. T in K, R and cp in
/// J/(kg K).
inline double potential_temperature(double T, double p0, double p, double R, double cp) {
  return T * vkm::pow(p0 / p, R / cp);
}

/// ds = cp dtheta / theta.
inline double entropy_from_theta(double cp, double theta, double dtheta) { return cp * dtheta / theta; }

/// N R / (gamma - 1) (ln p + ln V), with gamma the heat capacity ratio. The exponent of V is not gamma here.
inline double entropy_from_pv(double N, double R, double p, double V, double gamma) {
  return (vkm::log(p) + vkm::log(V)) * (N * R / (gamma - 1.0));
}

inline double enthalpy(double internal_energy, double p, double V) { return internal_energy + p * V; }

}  // namespace vkm
