#pragma once

/// Field points in the order of np.meshgrid or np.mgrid, flattened or not: all combinations of three runs of
/// coordinates. A sum of a field over such points has factors that only change with one or two of the coordinates.

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "core/lanes.hpp"

namespace vkm {

/// Point (i * values[1].size() + j) * values[2].size() + k has the coordinates values[0][i], values[1][j] and
/// values[2][k] on the axes axis[0], axis[1] and axis[2], where 0, 1, 2 are x, y, z.
struct Meshgrid {
  std::array<std::size_t, 3> axis;
  std::array<std::vector<double>, 3> values;
};

/// The product that the points are, in their order, if they are one in which more than one coordinate is to be found
/// along the last axis.
std::optional<Meshgrid> meshgrid_of(const Lanes& points);

}  // namespace vkm
