#pragma once

/// The velocity law of filaments (filament/motion/regularized_velocity.hpp) with its sums by the tree.
///
/// Own edges are plain and those of others softened by a_sim. With a_sim > 0 the tree sums all edges softened, and then
/// for each filament its own edges plain, less its own edges softened.

#include <span>

#include "core/poll.hpp"
#include "far/far_field.hpp"
#include "filament/motion/regularized_velocity.hpp"

namespace vkm::far {

struct FilamentFarVelocity {
  FilamentVelocity velocity;
  double sampled_error = 0.0;
  bool tree = false;
};

/// filament_velocity within `tolerance` of the largest speed. std::invalid_argument for points that are not finite.
FilamentFarVelocity filament_far_velocity(std::span<const Filament> filaments, const FilamentOptions& options,
                                          double tolerance, int threads, const Poll& poll);

/// The closed-curve velocity (filament/sums/biot_savart.hpp) within `tolerance` of the largest one, without the 1e-12
/// m^3 that the direct form adds to the cube of the distance, but softened by `soft`, in m.
FarVelocity closed_curve_far_velocity(std::span<const Vec3> curve, std::span<const Vec3> points, double circulation,
                                      double soft, double tolerance, int threads, const Poll& poll);

struct FarWrithe {
  double writhe = 0.0;
  double bound = 0.0;  // of its error: the length times the tolerance times the largest velocity
  bool tree = false;
};

/// The sum of compute_writhe (filament/topology/topology_measures.hpp) by the tree: with d[i] the edges of the open
/// list, it is the sum of d[i] . u(X[i]), u the velocity that all edges induce from their starts with Gamma = 1. No
/// near pairs are left out.
FarWrithe far_writhe(std::span<const Vec3> X, double tolerance, int threads, const Poll& poll);

}  // namespace vkm::far
