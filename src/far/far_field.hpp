#pragma once

/// Velocities by the tree within a tolerance: the error at any point, relative to the largest velocity.
///
/// The direct sum is taken at a sample of the points. It gives the scale of the velocities, from which the allowance of
/// the tree follows, and it is held against the tree's result: where that misses the tolerance at a sample, the
/// tree is asked again for more, and at last the direct sum is taken for all.

#include <cstddef>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "far/tree_velocity.hpp"

namespace vkm::far {

/// A sum over a run of the elements at a run of the points.
struct Pass {
  std::size_t first_element, last_element;
  std::size_t first_point, last_point;
  double soft;   // m
  double sign;   // 1 or -1
};

/// The velocity is `base` and all passes.
struct Problem {
  std::vector<Vec3> at, vector;  // the elements
  std::vector<Vec3> points;
  std::vector<LeftOut> left_out;  // an entry a point, or empty
  std::vector<Pass> passes;
  std::vector<Vec3> base;  // m/s
};

struct FarVelocity {
  std::vector<Vec3> velocity;   // m/s
  double largest = 0.0;         // m/s
  double sampled_error = 0.0;   // at the samples, relative to the largest velocity; 0 after the direct sum
  bool tree = false;            // whether the tree was used
};

/// Tolerances are from 1e-12 to 1e-1; std::invalid_argument for others, and for numbers that are not finite.
FarVelocity far_velocity(const Problem& problem, double tolerance, int threads, const Poll& poll);

}  // namespace vkm::far
