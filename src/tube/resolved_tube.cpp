#include "tube/resolved_tube.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "tube/corner.hpp"
#include "tube/polygon_index.hpp"
#include "tube/segment_distance.hpp"

namespace vkm {

namespace {

double edge_length(std::span<const Vec3> points, std::size_t k) {
  return norm(points[k] - points[k + 1 == points.size() ? 0 : k + 1]);
}

}  // namespace

double ResolvedTubeGeometry::length(Points points) {
  if (points.size() < 2) return 0.0;
  double sum = 0.0;
  for (std::size_t k = 0; k < points.size(); ++k) sum += edge_length(points, k);
  return sum;
}

double ResolvedTubeGeometry::edge_length_mean(Points points) {
  if (points.size() < 2) return 0.0;
  return length(points) / static_cast<double>(points.size());
}

double ResolvedTubeGeometry::edge_length_relative_std(Points points) {
  const double mean = edge_length_mean(points);
  if (points.size() < 2 || !(mean > 0.0)) return 0.0;
  double sum = 0.0;
  for (std::size_t k = 0; k < points.size(); ++k) {
    const double deviation = edge_length(points, k) - mean;
    sum += deviation * deviation;
  }
  return std::sqrt(sum / static_cast<double>(points.size())) / mean;
}

double ResolvedTubeGeometry::edge_length_max_relative_deviation(Points points) {
  const double mean = edge_length_mean(points);
  if (points.size() < 2 || !(mean > 0.0)) return 0.0;
  double worst = 0.0;
  for (std::size_t k = 0; k < points.size(); ++k) {
    worst = std::max(worst, std::fabs(edge_length(points, k) / mean - 1.0));
  }
  return worst;
}

double ResolvedTubeGeometry::turning_angle(const Vec3& a, const Vec3& b, const Vec3& c) {
  return corner_of(a, b, c).angle;
}

double ResolvedTubeGeometry::minrad_at_vertex(Points points, std::uint64_t i) {
  const std::uint64_t n = points.size();
  if (n < 3) return 0.0;
  return corner_minrad(corner_of(points[previous_vertex(i, n)], points[vertex_at(i, n)], points[next_vertex(i, n)]));
}

KinkRecord ResolvedTubeGeometry::kink_at_vertex(Points points, std::uint64_t i) {
  const std::uint64_t n = points.size();
  if (n < 3) throw std::invalid_argument("kink_at_vertex requires at least 3 points.");
  const Corner corner = corner_of(points[previous_vertex(i, n)], points[vertex_at(i, n)], points[next_vertex(i, n)]);
  return corner_kink(corner, vertex_at(i, n));
}

double ResolvedTubeGeometry::global_minrad(Points points) {
  if (points.size() < 3) return 0.0;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t v = 0; v < points.size(); ++v) least = std::min(least, minrad_at_vertex(points, v));
  return least;
}

double ResolvedTubeGeometry::segment_segment_distance(const Vec3& p0, const Vec3& p1, const Vec3& q0, const Vec3& q1,
                                                      double* s, double* t) {
  const SegmentDistance found = segment_distance(p0, p1, q0, q1);
  if (s != nullptr) *s = found.s;
  if (t != nullptr) *t = found.t;
  return found.distance;
}

double ResolvedTubeGeometry::nontrivial_knot_lower_bound_rad() { return 21.452136490675905; }

double ResolvedTubeGeometry::radius_to_diameter_ropelength(double ropelength_rad) { return 0.5 * ropelength_rad; }

double ResolvedTubeGeometry::diameter_to_radius_ropelength(double ropelength_diam) { return 2.0 * ropelength_diam; }

}  // namespace vkm
