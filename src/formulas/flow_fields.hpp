#pragma once

/// Pressures, energies and integrals of sampled flows, on lists of samples in the order of the list.
///
/// Velocities in m/s, vorticities in 1/s, densities in kg/m^3, pressures in Pa. Lists of different lengths and ragged
/// rows throw std::invalid_argument.

#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

/// p_inf - rho v^2 / 2 at each sample (Bernoulli).
std::vector<double> bernoulli_pressure(std::span<const double> velocity_magnitude, double rho, double p_inf);

std::vector<double> velocity_magnitude(std::span<const Vec3> velocity);

/// rho sum |v|^2 / 2 over the samples: times the volume of a cell it is the energy.
double kinetic_energy(std::span<const Vec3> velocity, double rho);

/// dV sum v . w.
double helicity_integral(std::span<const Vec3> velocity, std::span<const Vec3> vorticity, double dV);

/// sum w . dA, the flux of vorticity (Stokes).
double circulation_surface_integral(std::span<const Vec3> omega_field, std::span<const Vec3> dA_field);

/// sum w^2 dS.
double enstrophy(std::span<const double> omega_squared, std::span<const double> ds_area);

/// The negated gradient, a force a volume, of p[i][j] with i along x (spacing dx) and j along y (dy): central
/// differences inside, one-sided ones at the rim, third component 0. At least two rows and two columns, or none.
std::vector<std::vector<Vec3>> pressure_gradient(const std::vector<std::vector<double>>& pressure_field, double dx,
                                                 double dy);

}  // namespace vkm
