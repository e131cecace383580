#pragma once

/// Doubly critical pairs of two closed splines: parameters s, t where the chord R = A(s) - B(t) is orthogonal to both
/// curves,
///
///   F = R . A'(s) = 0,   G = R . B'(t) = 0,
///
/// so that the distance |R| is stationary. The least of these distances of a curve with itself is its doubly critical
/// self distance (Cantarella, Kusner and Sullivan, On the minimum ropelength of knots and links, 2002).
///
/// The search scans a grid of parameters for chords that are nearly orthogonal, keeps the best by three measures, and
/// refines each by Newton steps with a damped least-squares fallback and a line search.

#include <cstddef>
#include <optional>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "filament/reach/periodic_spline.hpp"

namespace vkm {

/// One refined pair.
struct Contact {
  double s = 0.0;  // parameter on A
  double t = 0.0;  // parameter on B
  double distance = 0.0;
  double orthogonality_residual = 0.0;  // largest cosine between the chord and a tangent
  bool local_minimum = false;           // by the second-order terms below, halves of the Hessian of |R|^2
  double h11 = 0.0;
  double h22 = 0.0;
  double h12 = 0.0;
  double det = 0.0;
  Vec3 point_a{};
  Vec3 point_b{};
  bool used_damped_step = false;
};

struct CriticalPairSearch {
  std::optional<Contact> contact;  // the refined pair of the least distance
  std::size_t seeds = 0;           // refinements tried
  std::size_t refined = 0;         // refined pairs accepted
  std::size_t rejected = 0;
  double resolution = 0.0;  // parameter step of the scan
};

/// A refined pair counts when its orthogonality residual is below this.
inline constexpr double orthogonality_bound = 5e-9;

/// A refinement stops when the residual of F and G is below this.
inline constexpr double refinement_tolerance = 1e-13;

/// Searches A against B. With `same` (A and B are one spline) pairs nearer along the curve than 1.5 % of its length or
/// four mean spans are left out.
CriticalPairSearch search_critical_pairs(const PeriodicCubicSpline3D& A, const PeriodicCubicSpline3D& B, bool same,
                                         Heartbeat& heartbeat);

}  // namespace vkm
