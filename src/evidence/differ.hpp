#pragma once

#include <cmath>

namespace vkm {

/// Whether two quantities that must not be identified are indeed apart: by more than `abs_tol`, or since one of them is
/// not finite.
inline bool differ(double a, double b, double abs_tol) {
  return !std::isfinite(a) || !std::isfinite(b) || std::fabs(a - b) > abs_tol;
}

}  // namespace vkm
