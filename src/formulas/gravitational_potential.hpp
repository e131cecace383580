#pragma once

/// Potentials that the samples of a filament make for one another, and the clock maps of its tangents.
///
/// Positions in m, vorticities in 1/s, epsilon the softening length in m, C_e a characteristic speed in the unit of the
/// tangents. The sums run over all other samples in the order of the list. Different lengths of the lists throw
/// std::invalid_argument; `poll` may throw to abandon the sums.

#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "mass/canonical_constants.hpp"

namespace vkm {

/// -1 / (4 pi) sum (p_i - p_j) . w_j / (|p_i - p_j|^2 + epsilon^2)^(3/2): Plummer-softened dipoles.
std::vector<double> gravitational_potential_direct(std::span<const Vec3> positions, std::span<const Vec3> vorticity,
                                                   double epsilon, const Poll& poll = {});

/// -|a_i|^2 / 2 with a_i = sum exp(-|p_i - p_j|^2 / (2 epsilon^2)) w_j: a Gaussian smoothing of the vorticity.
std::vector<double> gravitational_potential_gradient(std::span<const Vec3> positions, std::span<const Vec3> vorticity,
                                                     double epsilon, const Poll& poll = {});

/// 1 - |t_i|^2 / C_e^2; without a floor, so negative beyond C_e.
std::vector<double> time_dilation_map_linear(std::span<const Vec3> tangents, double C_e);

/// time_dilation_sqrt of each tangent: sqrt(1 - q), q = |t_i|^2 / C_e^2, with 0.999999 for q from 1 on.
std::vector<double> time_dilation_map_sqrt(std::span<const Vec3> tangents, double C_e = canonical::default_v_swirl);

}  // namespace vkm
