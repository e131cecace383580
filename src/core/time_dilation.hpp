#pragma once

#include <cmath>

#include "core/vec3.hpp"

namespace vkm {

/// Clock factor sqrt(1 - |v|^2 / c^2) of special relativity, with |v|^2 / c^2 replaced by 0.999999 from 1 on.
/// `v` and `c` in the same unit.
inline double time_dilation_sqrt(const Vec3& v, double c) {
  double q = norm2(v) / (c * c);
  if (q >= 1.0) q = 0.999999;
  return std::sqrt(1.0 - q);
}

}  // namespace vkm
