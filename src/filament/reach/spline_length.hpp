#pragma once

/// The length of a closed spline: the integral of |C'(s)|, adaptively by the 15-point Kronrod rule and its embedded
/// 7-point Gauss rule (Kronrod 1965; abscissae and weights as published with QUADPACK, 1983).

#include <cstddef>

#include "core/poll.hpp"
#include "filament/reach/periodic_spline.hpp"

namespace vkm {

/// The rule on one bracket of the parameter.
struct LengthInterval {
  double a = 0.0;
  double b = 0.0;
  double integral = 0.0;  // Kronrod value
  double error = 0.0;     // |Kronrod - Gauss|
};

struct SplineLength {
  double length = 0.0;
  double error_estimate = 0.0;
  std::size_t interval_count = 0;
  bool converged = false;
};

LengthInterval gauss_kronrod_length(const PeriodicCubicSpline3D& spline, double a, double b);

/// Halves intervals, one a knot span at first, until each one's error is within its share of `abs_tol` or within
/// `rel_tol` of its integral. A tolerance that is not positive becomes 1e-10.
SplineLength adaptive_length(const PeriodicCubicSpline3D& spline, double abs_tol, double rel_tol,
                             const Poll& poll = {});

}  // namespace vkm
