#pragma once

/// Closed curves as the binders of this room take them: arrays (N, 3), one or a list.

#include <vector>

#include "core/vec3.hpp"
#include "module/border.hpp"

namespace vkm {

inline constexpr const char* shape_text = "Expected (N,3) array";

inline std::vector<std::vector<Vec3>> curves_from(const std::vector<DoubleArray>& arrays) {
  std::vector<std::vector<Vec3>> curves;
  curves.reserve(arrays.size());
  for (const DoubleArray& array : arrays) curves.push_back(points_from(array, shape_text));
  return curves;
}

}  // namespace vkm
