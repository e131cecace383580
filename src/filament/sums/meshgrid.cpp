#include "filament/sums/meshgrid.hpp"

namespace vkm {

namespace {

bool same(const Lanes& points, std::size_t axis, std::size_t i, std::size_t j) {
  return points.axis(axis)[i] == points.axis(axis)[j];
}

/// How many of the points 0, stride, 2 stride, ... share the coordinates on both axes with point 0.
std::size_t run(const Lanes& points, std::size_t stride, std::size_t a, std::size_t b) {
  std::size_t count = 1;
  while (count * stride < points.size() && same(points, a, 0, count * stride) && same(points, b, 0, count * stride)) {
    ++count;
  }
  return count;
}

std::vector<double> coordinates(const Lanes& points, std::size_t axis, std::size_t stride, std::size_t count) {
  std::vector<double> values;
  for (std::size_t i = 0; i < count; ++i) values.push_back(points.axis(axis)[i * stride]);
  return values;
}

bool is_product(const Lanes& points, const Meshgrid& grid) {
  const auto& [slow, middle, fast] = grid.values;
  std::size_t at = 0;
  for (const double s : slow) {
    for (const double m : middle) {
      for (const double f : fast) {
        if (points.axis(grid.axis[0])[at] != s || points.axis(grid.axis[1])[at] != m ||
            points.axis(grid.axis[2])[at] != f) {
          return false;
        }
        ++at;
      }
    }
  }
  return true;
}

}  // namespace

std::optional<Meshgrid> meshgrid_of(const Lanes& points) {
  const std::size_t n = points.size();
  if (n < 2) return std::nullopt;
  std::size_t fast = 0;
  while (fast < 3 && same(points, fast, 0, 1)) ++fast;
  if (fast == 3) return std::nullopt;
  std::size_t middle = (fast + 1) % 3;
  std::size_t slow = (fast + 2) % 3;
  const std::size_t row = run(points, 1, middle, slow);
  if (row < n && same(points, middle, 0, row)) std::swap(middle, slow);
  const std::size_t rows = run(points, row, fast, slow);
  if (n % (row * rows) != 0) return std::nullopt;
  const std::size_t plane = row * rows;
  Meshgrid grid{{slow, middle, fast},
                {coordinates(points, slow, plane, n / plane), coordinates(points, middle, row, rows),
                 coordinates(points, fast, 1, row)}};
  if (row < 2 || !is_product(points, grid)) return std::nullopt;
  return grid;
}

}  // namespace vkm
