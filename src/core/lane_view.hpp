#pragma once

/// Three runs of numbers side by side: what a kernel sees of the coordinates of points (lanes.hpp), and of its sums at
/// them. All kernels that work on a block of points take their blocks in this form.

#include <cstddef>

#include "core/lanes.hpp"

namespace vkm {

struct LaneView {
  const double *x, *y, *z;

  LaneView operator+(std::size_t lanes) const { return {x + lanes, y + lanes, z + lanes}; }
};

struct LaneSpace {
  double *x, *y, *z;

  LaneSpace operator+(std::size_t lanes) const { return {x + lanes, y + lanes, z + lanes}; }
};

/// From lane `first` on.
inline LaneView view(const Lanes& lanes, std::size_t first = 0) {
  return {lanes.axis(0) + first, lanes.axis(1) + first, lanes.axis(2) + first};
}
inline LaneSpace space(Lanes& lanes, std::size_t first = 0) {
  return {lanes.axis(0) + first, lanes.axis(1) + first, lanes.axis(2) + first};
}

}  // namespace vkm
