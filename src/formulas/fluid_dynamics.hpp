#pragma once

/// Small formulas of inviscid flow, number by number.
///
/// SI units: rho density (kg/m^3), omega vorticity or angular velocity as named (1/s), velocities in m/s, lengths in m.
/// Nothing is guarded: a zero denominator divides.

#include <algorithm>
#include <array>
#include <cmath>

#include "core/numbers.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Curl of a velocity, row i of `grad` holding the derivatives of component i.
inline Vec3 vorticity_from_gradient(const std::array<Vec3, 3>& grad) {
  return {grad[2][1] - grad[1][2], grad[0][2] - grad[2][0], grad[1][0] - grad[0][1]};
}

/// Angular velocity of a fluid element about z, half its vorticity.
inline double local_rotation_rate(double dv_dx, double du_dy) { return (dv_dx - du_dy) * 0.5; }

/// sqrt(max(1 - v_norm^2 / c^2, 0)). The constants' swirl_clock rejects c <= 0; this one does not.
inline double swirl_clock_factor_from_speed(double v_norm, double c) {
  return std::sqrt(std::max(1.0 - v_norm * v_norm / (c * c), 0.0));
}

/// V / R, the part of the vorticity that the curvature of the streamlines makes.
inline double vorticity_from_curvature(double V, double R) { return V / R; }

/// Pressure drop to the centre of a vortex with the rim speed c (Bernoulli).
inline double vortex_pressure_drop(double rho, double c) { return rho * 0.5 * c * c; }

/// Half of vortex_pressure_drop.
inline double vortex_transverse_pressure_diff(double rho, double c) { return rho * 0.25 * c * c; }

/// An enstrophy density that was taken for an energy once; kept for old callers.
inline double swirl_energy(double rho, double omega) { return rho * 0.5 * omega * omega; }

inline double swirl_energy_density_from_speed(double rho, double v_norm) { return rho * 0.5 * v_norm * v_norm; }

/// rho (ell omega)^2 / 2: a rotation omega felt over the length ell.
inline double swirl_tension_energy_density(double rho, double omega, double ell) {
  return rho * 0.5 * ell * ell * omega * omega;
}

inline bool kairos_energy_trigger(double rho, double omega, double Ce) {
  return rho * 0.5 * (omega * omega) > rho * 0.5 * (Ce * Ce);
}

/// Conserved by columns of a shallow layer of depth h: (f + zeta) / h.
inline double potential_vorticity(double fa, double zeta_r, double h) { return (fa + zeta_r) / h; }

/// Whether the trace of the gradient is below 1e-8 in magnitude.
inline bool is_incompressible(const Vec3& dudx, const Vec3& dvdy, const Vec3& dwdz) {
  return std::abs(dudx[0] + dvdy[1] + dwdz[2]) < 1e-8;
}

inline double laplacian_phi(double d2phidx2, double d2phidy2, double d2phidz2) {
  return d2phidx2 + d2phidy2 + d2phidz2;
}

/// v^2 / 2 - V.
inline double bernoulli_pressure_potential(double velocity_squared, double V) { return velocity_squared * 0.5 - V; }

/// U / (2 omega d).
inline double rossby_number(double U, double omega, double d) { return U / ((omega + omega) * d); }

/// nu / (omega H^2).
inline double ekman_number(double nu, double omega, double H) { return nu / (omega * H * H); }

inline double cylinder_mass(double rho, double R, double H) { return rho * pi * R * R * H; }

/// About the cylinder's own axis.
inline double cylinder_inertia(double mass, double R) { return mass * 0.5 * R * R; }

inline double torque(double inertia, double alpha) { return inertia * alpha; }

}  // namespace vkm
