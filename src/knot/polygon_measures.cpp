#include "knot/polygon_measures.hpp"

#include <algorithm>
#include <cmath>

#include "knot/self_distance.hpp"
#include "tube/edge_lengths.hpp"
#include "tube/tube_analysis.hpp"

namespace vkm {

PolygonMeasures measure_polygon(std::span<const Vec3> points) {
  PolygonMeasures found;
  found.length = polygon_length(points);
  const std::size_t n = points.size();
  if (n < 3 || !(found.length > 0.0)) return found;
  double sum = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    const Vec3 e1 = points[i] - points[i > 0 ? i - 1 : n - 1];
    const Vec3 e2 = points[i + 1 < n ? i + 1 : 0] - points[i];
    const double l1 = norm(e1);
    const double l2 = norm(e2);
    if (l1 == 0.0 || l2 == 0.0) continue;
    const double ds = (l1 + l2) / 2.0;
    const double kappa = norm(e2 / l2 - e1 / l1) / ds;
    found.kappa_max = std::max(found.kappa_max, kappa);
    found.bend_energy += kappa * kappa * ds;
    sum += kappa;
  }
  found.kappa_mean = sum / static_cast<double>(n);
  return found;
}

double min_non_neighbor_distance(std::span<const Vec3> points, std::int32_t skip, const Poll& poll) {
  if (points.size() < 4) return 0.0;
  return std::min(1e300, least_self_distance(points, skip, poll));
}

double reach_proxy(std::span<const Vec3> points, std::int32_t skip, const Poll& poll) {
  if (points.size() < 4) return 0.0;
  return analyze_tube(points, {std::max(skip, 1), 0.001, 1.0}, poll).thickness_rad;
}

std::vector<Vec3> forward_tangents(std::span<const Vec3> points) {
  const std::size_t n = points.size();
  std::vector<Vec3> tangents(n);
  for (std::size_t i = 0; i < n; ++i) {
    const Vec3 edge = points[i + 1 < n ? i + 1 : 0] - points[i];
    const double length = norm(edge);
    if (length != 0.0) tangents[i] = edge / length;
  }
  return tangents;
}

}  // namespace vkm
