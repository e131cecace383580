#include "tube/vertex_radius.hpp"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "tube/corner.hpp"
#include "tube/polygon_index.hpp"

namespace vkm {

double minrad_at_vertex(std::span<const Vec3> points, std::uint64_t i) {
  const std::uint64_t n = points.size();
  if (n < 3) return 0.0;
  return corner_minrad(corner_of(points[previous_vertex(i, n)], points[vertex_at(i, n)], points[next_vertex(i, n)]));
}

KinkRecord kink_at_vertex(std::span<const Vec3> points, std::uint64_t i) {
  const std::uint64_t n = points.size();
  if (n < 3) throw std::invalid_argument("kink_at_vertex requires at least 3 points.");
  const Corner corner = corner_of(points[previous_vertex(i, n)], points[vertex_at(i, n)], points[next_vertex(i, n)]);
  return corner_kink(corner, vertex_at(i, n));
}

double global_minrad(std::span<const Vec3> points) {
  if (points.size() < 3) return 0.0;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t v = 0; v < points.size(); ++v) least = std::min(least, minrad_at_vertex(points, v));
  return least;
}

}  // namespace vkm
