#pragma once

/// Mass of a closed polyline: a core of constant line density, and the kinetic energy of the fluid around it from the
/// double sum of Rosenhead and Moore, whose root is softened by the core radius r_c. The constants are products of the
/// canonical constants, exact to the last digit.

#include <span>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

struct VkmMass {
  double m_core_kg = 0.0;
  double m_fluid_kg = 0.0;
};

/// m_core = L rho_core pi r_c^2; m_fluid = chi_spin^2 rho_f Gamma^2 / (8 pi) S / c^2 with
/// S = sum d[i] . d[j] / sqrt(|p[i] - p[j]|^2 + r_c^2) over all ordered pairs. The diagonal belongs to the sum: its
/// softening is what r_c is there for. `points` in m; no points give zeros.
VkmMass compute_vkm_mass(std::span<const Vec3> points, double chi_spin, const Poll& poll = {}, int threads = 1);

}  // namespace vkm
