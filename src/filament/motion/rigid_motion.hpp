#pragma once

/// The principal frame of a set of points, and the split of a velocity field on them into translation, rotation and
/// deformation: the rotation is that of a rigid body with the same masses and angular momentum.

#include <array>
#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

/// Axes are unit vectors of a right-handed frame; axis_z is the normal of the best-fit plane, axis_x the direction of
/// the largest spread.
struct IntrinsicFrame {
  Vec3 centroid{};
  Vec3 axis_x{1.0, 0.0, 0.0};
  Vec3 axis_y{0.0, 1.0, 0.0};
  Vec3 axis_z{0.0, 0.0, 1.0};
  Vec3 eigenvalues{};  // of the covariance, ascending; length^2
};

/// Weights count when there is exactly one for each point; otherwise all are 1.
IntrinsicFrame intrinsic_frame(std::span<const Vec3> points, std::span<const double> weights = {});

/// Velocities in the unit of the input, omega in rad per its unit of time.
struct RigidMotion {
  Vec3 centroid{};
  Vec3 translation{};
  Vec3 omega{};
  std::vector<Vec3> translation_field;
  std::vector<Vec3> rotation_field;     // omega x r
  std::vector<Vec3> deformation_field;  // the rest
  double reconstruction_relative_error = 0.0;
  double deformation_relative_norm = 0.0;
};

/// Over the rows that points and velocity have in common; all 0 without any. For the centroid, which takes all rows of
/// `points`, weights count when there is exactly one for each; for everything else when there are enough of them.
/// omega is 0 where the inertia is singular. The deformation norm keeps the energy of the translation in its sum.
RigidMotion rigid_motion(std::span<const Vec3> points, std::span<const Vec3> velocity,
                         std::span<const double> weights = {});

}  // namespace vkm
