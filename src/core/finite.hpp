#pragma once

#include <cmath>
#include <initializer_list>
#include <span>

namespace vkm {

/// Whether no number is NaN or infinite; true of none at all.
inline bool all_finite(std::span<const double> values) {
  for (const double x : values) {
    if (!std::isfinite(x)) return false;
  }
  return true;
}

inline bool all_finite(std::initializer_list<double> values) {
  return all_finite(std::span(values.begin(), values.size()));
}

}  // namespace vkm
