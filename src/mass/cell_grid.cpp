#include "mass/cell_grid.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/kernel.hpp"

namespace vkm {

namespace {

// Points of a pair within 0.2 lie in adjacent cells: the width leaves room for the rounding of cell coordinates, which
// is below 2^-22 of a cell up to the limit. Beyond the limit coordinates are clamped, and adjacent cells stay adjacent.
constexpr double cell_width = 0.2002;
constexpr double coordinate_limit = 1073741824.0;  // 2^30
constexpr int least_bits = 2;                      // three adjacent cells must differ

VKM_KERNEL void cell_coordinates(const double* x, std::size_t count, std::int32_t* out) {
  for (std::size_t i = 0; i < count; ++i) {
    const double finite = std::abs(x[i]) <= std::numeric_limits<double>::max() ? x[i] : 0.0;
    const double cell = std::floor(finite * (1.0 / cell_width));
    const double clamped = std::min(std::max(cell, -coordinate_limit), coordinate_limit);
    out[i] = static_cast<std::int32_t>(clamped);
  }
}

VKM_INLINE bool is_finite(double value) { return std::abs(value) <= std::numeric_limits<double>::max(); }

}  // namespace

void CellGrid::choose_extent(const std::int32_t (&low)[3], const std::int32_t (&high)[3], std::size_t points) {
  for (int axis = 0; axis < 3; ++axis) {
    const std::int64_t cells = std::int64_t{high[axis]} - low[axis] + 1;
    bits_[axis] = least_bits;
    while ((std::int64_t{1} << bits_[axis]) < cells) ++bits_[axis];
  }
  // At most 16 cells a point; the longest axis is folded first.
  int limit = 3 * least_bits;
  while (limit < 30 && (std::size_t{1} << limit) < 16 * points) ++limit;
  while (bits_[0] + bits_[1] + bits_[2] > limit) {
    int& longest = *std::max_element(bits_, bits_ + 3);
    --longest;
  }
}

void CellGrid::build(const Axes& points) {
  const std::size_t n = points.size();
  const std::vector<double>* axes[3] = {&points.x, &points.y, &points.z};
  std::int32_t low[3];
  std::int32_t high[3];
  for (int axis = 0; axis < 3; ++axis) {
    coordinate_[axis].resize(n);
    cell_coordinates(axes[axis]->data(), n, coordinate_[axis].data());
    const auto [least, most] = std::minmax_element(coordinate_[axis].begin(), coordinate_[axis].end());
    low[axis] = n ? *least : 0;
    high[axis] = n ? *most : 0;
  }
  choose_extent(low, high, n);

  const std::uint32_t mask[3] = {(1u << bits_[0]) - 1, (1u << bits_[1]) - 1, (1u << bits_[2]) - 1};
  const std::size_t cells = std::size_t{1} << (bits_[0] + bits_[1] + bits_[2]);
  const auto outside = static_cast<std::uint32_t>(cells);  // collects what is not finite
  start_.assign(cells + 2, 0);
  cell_of_.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint32_t cx = static_cast<std::uint32_t>(coordinate_[0][i]) & mask[0];
    const std::uint32_t cy = static_cast<std::uint32_t>(coordinate_[1][i]) & mask[1];
    const std::uint32_t cz = static_cast<std::uint32_t>(coordinate_[2][i]) & mask[2];
    const bool finite = is_finite(points.x[i]) && is_finite(points.y[i]) && is_finite(points.z[i]);
    cell_of_[i] = finite ? cx | (cy | cz << bits_[1]) << bits_[0] : outside;
    ++start_[cell_of_[i]];
  }
  // Counts become the end of each cell, and filling from the back makes them its start.
  std::uint32_t end = 0;
  for (std::uint32_t& entry : start_) entry = end += entry;
  x.resize(n);
  y.resize(n);
  z.resize(n);
  index.resize(n);
  cell.resize(n);
  for (std::size_t i = n; i-- > 0;) {
    const std::uint32_t at = --start_[cell_of_[i]];
    x[at] = points.x[i];
    y[at] = points.y[i];
    z[at] = points.z[i];
    index[at] = static_cast<std::uint32_t>(i);
    cell[at] = cell_of_[i];
  }
  count_ = start_[cells];
}

int CellGrid::ranges_around(std::uint32_t cell_number, Range (&ranges)[18]) const {
  const std::uint32_t size_x = 1u << bits_[0];
  const std::uint32_t mask_y = (1u << bits_[1]) - 1;
  const std::uint32_t mask_z = (1u << bits_[2]) - 1;
  const std::uint32_t cx = cell_number & (size_x - 1);
  const std::uint32_t cy = (cell_number >> bits_[0]) & mask_y;
  const std::uint32_t cz = cell_number >> (bits_[0] + bits_[1]);
  int count = 0;
  const auto add = [&](std::uint32_t first, std::uint32_t last) {
    ranges[count] = {start_[first], start_[last + 1]};
    count += ranges[count].begin != ranges[count].end;
  };
  for (std::uint32_t dz = 0; dz < 3; ++dz) {
    for (std::uint32_t dy = 0; dy < 3; ++dy) {
      const std::uint32_t row = (((cy + dy - 1) & mask_y) | ((cz + dz - 1) & mask_z) << bits_[1]) << bits_[0];
      if (cx == 0) {
        add(row, row + 1);
        add(row + size_x - 1, row + size_x - 1);
      } else if (cx == size_x - 1) {
        add(row, row);
        add(row + cx - 1, row + cx);
      } else {
        add(row + cx - 1, row + cx + 1);
      }
    }
  }
  return count;
}

}  // namespace vkm
