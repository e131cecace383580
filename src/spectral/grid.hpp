#pragma once

#include <cstdint>
#include <vector>

#include "core/poll.hpp"

namespace vkm {

/// A uniform grid of n points, ends included.
struct Grid1D {
  double u_min = -1.0;    // left end
  double u_max = 1.0;     // right end
  std::uint64_t n = 201;  // number of points

  double spacing() const { return n < 2 ? 0.0 : (u_max - u_min) / static_cast<double>(n - 1); }
};

namespace spectral {

/// The points u_min + i h; std::runtime_error for n below 2.
std::vector<double> build_uniform_grid(const Grid1D& grid, const Poll& poll = {});

}  // namespace spectral

}  // namespace vkm
