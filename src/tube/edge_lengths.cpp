#include "tube/edge_lengths.hpp"

#include <algorithm>
#include <cmath>

namespace vkm {

std::vector<double> edge_lengths(std::span<const Vec3> points) {
  const std::size_t n = points.size();
  std::vector<double> lengths(n);
  for (std::size_t k = 0; k + 1 < n; ++k) lengths[k] = norm(points[k] - points[k + 1]);
  if (n > 0) lengths[n - 1] = norm(points[n - 1] - points[0]);
  return lengths;
}

EdgeStatistics edge_statistics(std::span<const double> lengths) {
  EdgeStatistics found;
  if (lengths.size() < 2) return found;
  const auto n = static_cast<double>(lengths.size());
  for (const double length : lengths) found.sum += length;
  found.mean = found.sum / n;
  if (!(found.mean > 0.0)) return found;
  double squares = 0.0;
  for (const double length : lengths) {
    const double deviation = length - found.mean;
    squares += deviation * deviation;
    found.max_relative_deviation = std::max(found.max_relative_deviation, std::fabs(length / found.mean - 1.0));
  }
  found.relative_std = std::sqrt(squares / n) / found.mean;
  return found;
}

double polygon_length(std::span<const Vec3> points) { return edge_statistics(edge_lengths(points)).sum; }

}  // namespace vkm
