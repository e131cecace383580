#include "tube/vertex_radius.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <stdexcept>

#include "tube/corner.hpp"
#include "tube/edge_lengths.hpp"
#include "tube/polygon_index.hpp"

namespace vkm {

namespace {

Corner corner_at(std::span<const Vec3> points, std::uint64_t i) {
  const std::uint64_t n = points.size();
  return corner_of(points[previous_vertex(i, n)], points[vertex_at(i, n)], points[next_vertex(i, n)]);
}

/// Calls visit(vertex, corner, tan(theta / 2)) for the vertices, whose angles and tangents are worked out in lanes.
template <class Visit>
void visit_corners(std::span<const Vec3> points, std::span<const std::uint64_t> vertices, Visit visit) {
  constexpr std::size_t block = 256;
  Corner corners[block];
  double angles[block];
  double tangents[block];
  const std::size_t n = points.size();
  for (std::size_t first = 0; first < vertices.size(); first += block) {
    const std::size_t count = std::min(block, vertices.size() - first);
    for (std::size_t k = 0; k < count; ++k) {
      const std::uint64_t v = vertices[first + k];
      const Vec3 u = points[v] - points[v == 0 ? n - 1 : v - 1];
      const Vec3 w = points[v + 1 == n ? 0 : v + 1] - points[v];
      corners[k] = {norm(u), norm(w), 0.0};
      angles[k] = corner_cosine(u, w, corners[k].length_minus, corners[k].length_plus);
    }
    vkm::acos(std::span(angles, count), std::span(angles, count));
    for (std::size_t k = 0; k < count; ++k) {
      corners[k].angle = angles[k];
      tangents[k] = angles[k] / 2.0;
    }
    vkm::tan(std::span(tangents, count), std::span(tangents, count));
    for (std::size_t k = 0; k < count; ++k) visit(vertices[first + k], corners[k], tangents[k]);
  }
}

/// The least radius at some vertices.
double least_at(std::span<const Vec3> points, std::span<const std::uint64_t> vertices) {
  double least = std::numeric_limits<double>::infinity();
  visit_corners(points, vertices, [&](std::uint64_t, const Corner& corner, double tangent) {
    least = std::min(least, corner_minrad(corner, tangent));
  });
  return least;
}

}  // namespace

double minrad_at_vertex(std::span<const Vec3> points, std::uint64_t i) {
  if (points.size() < 3) return 0.0;
  const Corner corner = corner_at(points, i);
  return corner_minrad(corner, half_tangent(corner));
}

KinkRecord kink_at_vertex(std::span<const Vec3> points, std::uint64_t i) {
  if (points.size() < 3) throw std::invalid_argument("kink_at_vertex requires at least 3 points.");
  const Corner corner = corner_at(points, i);
  return corner_kink(corner, half_tangent(corner), vertex_at(i, points.size()));
}

std::vector<double> estimated_radii(std::span<const Vec3> points, std::span<const double> lengths) {
  const std::size_t n = points.size();
  std::vector<double> radii(n);
  for (std::size_t v = 0; v < n; ++v) {
    const std::size_t prev = v == 0 ? n - 1 : v - 1;
    const double cosine =
        dot(points[v] - points[prev], points[v + 1 == n ? 0 : v + 1] - points[v]) / (lengths[prev] * lengths[v]);
    const double shorter = std::min(lengths[prev], lengths[v]);
    const double capped = std::min(cosine, 1.0);
    radii[v] = 0.5 * shorter * std::sqrt((1.0 + capped) / (1.0 - capped));
    if (shorter <= tube_epsilon || cosine < -0.999) radii[v] = minrad_at_vertex(points, v);
  }
  return radii;
}

double least_radius(std::span<const Vec3> points, std::span<const double> radii) {
  double limit = std::numeric_limits<double>::infinity();
  for (const double radius : radii) limit = std::min(limit, radius);
  limit *= 1.0 + estimate_margin;
  std::vector<std::uint64_t> close;
  for (std::size_t v = 0; v < points.size(); ++v) {
    if (!(radii[v] > limit)) close.push_back(v);
  }
  return least_at(points, close);
}

double global_minrad(std::span<const Vec3> points) {
  constexpr std::size_t few = 16;  // corners that are worked out in less time than estimates of them
  if (points.size() < 3) return 0.0;
  if (points.size() > few) return least_radius(points, estimated_radii(points, edge_lengths(points)));
  std::uint64_t vertices[few];
  std::iota(vertices, vertices + points.size(), 0);
  return least_at(points, std::span(vertices, points.size()));
}

std::vector<KinkRecord> kinks_within(std::span<const Vec3> points, std::span<const double> radii, double contact) {
  std::vector<std::uint64_t> close;
  for (std::size_t v = 0; v < points.size(); ++v) {
    if (!(radii[v] > contact * (1.0 + estimate_margin))) close.push_back(v);
  }
  std::vector<KinkRecord> kinks;
  visit_corners(points, close, [&](std::uint64_t v, const Corner& corner, double tangent) {
    const KinkRecord kink = corner_kink(corner, tangent, v);
    if (kink.minrad <= contact) kinks.push_back(kink);
  });
  return kinks;
}

}  // namespace vkm
