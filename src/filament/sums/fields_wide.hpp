#pragma once

/// The hand-written twins of this room's plain sums: the same bits in less time, as divisions are done beside the
/// divider's roots (core/wide.hpp). Each declines, by returning nothing, where the plain sum is to be taken: on
/// machines without the vectors they are written for, and for data of extreme magnitude.

#include <optional>
#include <span>

#include "core/lanes.hpp"
#include "core/pair_form.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "core/wide.hpp"
#include "filament/sums/meshgrid.hpp"

namespace vkm {

extern const PairKernel wire_grid_kernel, dipole_grid_kernel;

#if VKM_HAS_WIDE

/// Sum of elements / |R| over sources, R from the source at `at`; at points in any order.
std::optional<Lanes> potential_on_points(std::span<const Vec3> at, std::span<const Vec3> elements, const Lanes& points,
                                         const Poll& poll);

/// Sum of the fields of dipoles.
std::optional<Lanes> dipole_field_on_points(std::span<const Vec3> at, std::span<const Vec3> moments,
                                            const Lanes& points, const Poll& poll);

/// Sum of elements x R * f / |R|^3. What depends on one or two coordinates of a field point is computed once for all
/// points that share them. Declines in the plain form (core/pair_form.hpp), as the next one does.
std::optional<Lanes> wire_field_on_meshgrid(std::span<const Vec3> at, std::span<const Vec3> elements, double f,
                                            const Meshgrid& grid, const Poll& poll, PairForm form);

/// Sum of the fields of dipoles.
std::optional<Lanes> dipole_field_on_meshgrid(std::span<const Vec3> at, std::span<const Vec3> moments,
                                              const Meshgrid& grid, const Poll& poll, PairForm form);

/// self_velocities of finite numbers, for a circulation up to 1e200.
std::optional<Lanes> self_velocities_by_tiles(const Lanes& points, const Lanes& tangents, double circulation,
                                              Heartbeat& heartbeat);

#else

inline std::optional<Lanes> potential_on_points(std::span<const Vec3>, std::span<const Vec3>, const Lanes&,
                                                const Poll&) {
  return {};
}
inline std::optional<Lanes> dipole_field_on_points(std::span<const Vec3>, std::span<const Vec3>, const Lanes&,
                                                   const Poll&) {
  return {};
}
inline std::optional<Lanes> wire_field_on_meshgrid(std::span<const Vec3>, std::span<const Vec3>, double,
                                                   const Meshgrid&, const Poll&, PairForm) {
  return {};
}
inline std::optional<Lanes> dipole_field_on_meshgrid(std::span<const Vec3>, std::span<const Vec3>, const Meshgrid&,
                                                     const Poll&) {
  return {};
}
inline std::optional<Lanes> self_velocities_by_tiles(const Lanes&, const Lanes&, double, Heartbeat&) { return {}; }

#endif

}  // namespace vkm
