#pragma once

/// The sums of magnetostatics.hpp at points in any order, with the same bits and in less time: the divisions are done
/// beside the divider's roots (core/wide.hpp). Nothing is returned where the plain sum is to be taken: on machines
/// without the vectors they are written for, and for data of extreme magnitude.

#include <optional>
#include <span>

#include "core/lanes.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Sum of elements / |R| over sources, R from the source at `at`.
std::optional<Lanes> potential_on_points(std::span<const Vec3> at, std::span<const Vec3> elements, const Lanes& points,
                                         const Poll& poll);

/// Sum of the fields of dipoles.
std::optional<Lanes> dipole_field_on_points(std::span<const Vec3> at, std::span<const Vec3> moments,
                                            const Lanes& points, const Poll& poll);

}  // namespace vkm
