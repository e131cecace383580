#pragma once

/// The double sum behind the nonlocal energy of a closed filament: sum of (t_i . t_j) / |p_j - p_i| over all ordered
/// pairs of points that are neither neighbours nor too close. With unit tangents t and N points a length ds apart, the
/// kinetic energy is rho Gamma^2 ds^2 / (8 pi) times the sum (the discrete form of Neumann's integral).

#include <cstdint>
#include <span>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Counts the pairs whose gap min(|i - j|, N - |i - j|) is greater than `neighbours` and whose distance is greater than
/// `cutoff`, at least 0. Each unordered pair counts twice. The sum of each point is taken in order, and they are added
/// in order. Units 1 / length. std::invalid_argument unless there is a tangent a point.
double nonlocal_pair_sum(std::span<const Vec3> points, std::span<const Vec3> tangents, std::int64_t neighbours,
                         double cutoff, const Poll& poll = {});

}  // namespace vkm
