#pragma once

#include <cmath>
#include <initializer_list>
#include <span>

#include "core/vec3.hpp"

namespace vkm {

/// Whether no number is NaN or infinite; true of none at all.
inline bool all_finite(std::span<const double> values) {
  for (const double x : values) {
    if (!std::isfinite(x)) return false;
  }
  return true;
}

inline bool all_finite(std::span<const Vec3> vectors) {
  for (const Vec3& a : vectors) {
    if (!all_finite(std::span<const double>(a))) return false;
  }
  return true;
}

inline bool all_finite(std::initializer_list<double> values) {
  return all_finite(std::span(values.begin(), values.size()));
}

}  // namespace vkm
