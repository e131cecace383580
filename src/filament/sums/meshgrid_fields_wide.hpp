#pragma once

/// Fields of wires and dipoles on product grids, with the bits of the plain sums in magnetostatics.hpp and in less
/// time: what depends on one or two coordinates of a field point is computed once for all points that share them, and
/// the divisions are spread over divider and multipliers (core/wide.hpp).
///
/// Both return nothing where the plain sum is to be taken: on machines without the vectors they are written for, and
/// for data of extreme magnitude.

#include <optional>
#include <span>

#include "core/lanes.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "filament/sums/meshgrid.hpp"

namespace vkm {

/// Sum of elements x R * f / |R|^3 over sources, R from the source at `at`.
std::optional<Lanes> wire_field_on_product(std::span<const Vec3> at, std::span<const Vec3> elements, double f,
                                           const ProductGrid& grid, const Poll& poll);

/// Sum of the fields of dipoles.
std::optional<Lanes> dipole_field_on_product(std::span<const Vec3> at, std::span<const Vec3> moments,
                                             const ProductGrid& grid, const Poll& poll);

}  // namespace vkm
