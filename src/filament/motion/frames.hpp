#pragma once

/// Frames of a discretised filament, and measures on them. The list of points is read as an open curve; derivatives are
/// differences per index, not per unit length. Nothing guards the norms: a straight stretch gives NaN.

#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

struct FrenetFrames {
  std::vector<Vec3> T;  // unit tangents
  std::vector<Vec3> N;  // unit normals
  std::vector<Vec3> B;  // binormals T x N
};

/// Central differences at the inner points; the ends copy their neighbours. Fewer than three points have no inner
/// point: their frames are zero vectors.
FrenetFrames compute_frenet_frames(std::span<const Vec3> X);

struct CurvatureTorsion {
  std::vector<double> curvature;
  std::vector<double> torsion;
};

/// Half of |T[i+1] - T[i-1]| and of (T[i] x N[i]) . (N[i+1] - N[i-1]); the ends copy their neighbours, and fewer than
/// three points give zeros. Throws std::invalid_argument if the lengths differ.
CurvatureTorsion compute_curvature_torsion(std::span<const Vec3> T, std::span<const Vec3> N);

/// The mean of the pointwise v . w in single precision: each product is rounded to 32 bits and added in 32 bits. It is
/// no volume integral, whatever its name says. NaN for empty lists; std::invalid_argument if `vorticity` is shorter.
double compute_helicity(std::span<const Vec3> velocity, std::span<const Vec3> vorticity);

}  // namespace vkm
