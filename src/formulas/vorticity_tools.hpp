#pragma once

/// Vorticity of planar flows, and the local terms of the vorticity equation.
///
/// Velocities in m/s, vorticities and angular velocities in 1/s, rho density (kg/m^3), grad_p gradient of the pressure
/// (Pa/m), grad_phi of the potential of body forces (m/s^2). Nothing is guarded: a zero density divides.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

/// Derivatives of a vector field, row i those of component i.
using Gradient = std::array<Vec3, 3>;

inline double vorticity_z_2D(double dv_dx, double du_dy) { return dv_dx - du_dy; }

inline double solid_body_rotation_vorticity(double omega) { return omega + omega; }

inline double couette_vorticity(double alpha) { return -alpha; }

/// grad p / rho, what u x w equals in a steady flow without body forces (Crocco's theorem).
inline Vec3 crocco_relation(double rho, const Vec3& pressure_gradient) { return pressure_gradient / rho; }

/// 2 u x Omega - grad phi - grad p / rho: the momentum equation in a rotating frame.
inline Vec3 rotating_frame_rhs(const Vec3& velocity, const Vec3& grad_phi, const Vec3& grad_p, const Vec3& omega,
                               double rho) {
  return 2.0 * cross(velocity, omega) - grad_phi - grad_p / rho;
}

/// rho (w x u) + grad phi + grad p / rho. The textbook form has no density in the first term.
inline Vec3 crocco_gradient(const Vec3& velocity, const Vec3& vorticity, const Vec3& grad_phi, const Vec3& grad_p,
                            double rho) {
  return rho * cross(vorticity, velocity) + grad_phi + grad_p / rho;
}

/// grad rho x grad p / rho^2.
inline Vec3 baroclinic_term(const Vec3& grad_rho, const Vec3& grad_p, double rho) {
  return cross(grad_rho, grad_p) / (rho * rho);
}

/// Stretching and tilting (grad u) w, less the dilatation w div u, plus the baroclinic term.
inline Vec3 vorticity_rhs(const Vec3& omega, const Gradient& grad_u, double div_u, const Vec3& grad_rho,
                          const Vec3& grad_p, double rho) {
  const Vec3 stretching = {dot(grad_u[0], omega), dot(grad_u[1], omega), dot(grad_u[2], omega)};
  return stretching - omega * div_u + baroclinic_term(grad_rho, grad_p, rho);
}

/// dv/dx - du/dy by central differences on a grid of nx times ny cells, cell (i, j) at j nx + i; the rim stays 0.
/// Throws std::invalid_argument for negative extents and for lists that do not cover the grid.
std::vector<double> planar_vorticity(std::span<const double> u, std::span<const double> v, std::int64_t nx,
                                     std::int64_t ny, double dx, double dy);

}  // namespace vkm
