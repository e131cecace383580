#include "tube/contact_gradient.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "tube/corner.hpp"
#include "tube/polygon_index.hpp"

namespace vkm {

Vec3& ContactGradient::entry(std::uint64_t vertex) {
  std::size_t place = 0;
  while (place < count_ && parts_[place].vertex < vertex) ++place;
  if (place == count_ || parts_[place].vertex != vertex) {
    std::copy_backward(parts_.begin() + static_cast<std::ptrdiff_t>(place),
                       parts_.begin() + static_cast<std::ptrdiff_t>(count_),
                       parts_.begin() + static_cast<std::ptrdiff_t>(count_ + 1));
    parts_[place] = {vertex, {0.0, 0.0, 0.0}};
    ++count_;
  }
  return parts_[place].value;
}

double ContactGradient::norm() const {
  double sum = 0.0;
  for (const Part& part : parts()) {
    for (const double value : part.value) sum += value * value;
  }
  return std::sqrt(sum);
}

std::vector<double> ContactGradient::flat(std::size_t n) const {
  std::vector<double> values(3 * n, 0.0);
  for (const Part& part : parts()) {
    if (3 * part.vertex + 2 >= values.size()) continue;
    for (std::size_t axis = 0; axis < 3; ++axis) values[3 * part.vertex + axis] = part.value[axis];
  }
  return values;
}

ContactGradient strut_gradient(std::span<const Vec3> points, const SegmentPair& pair) {
  ContactGradient gradient;
  const std::uint64_t n = points.size();
  if (n < 2) return gradient;
  const std::uint64_t i0 = vertex_at(pair.i, n);
  const std::uint64_t i1 = next_vertex(i0, n);
  const std::uint64_t j0 = vertex_at(pair.j, n);
  const std::uint64_t j1 = next_vertex(j0, n);
  const double s = std::clamp(pair.s, 0.0, 1.0);
  const double t = std::clamp(pair.t, 0.0, 1.0);
  const Vec3 c1 = points[i0] + s * (points[i1] - points[i0]);
  const Vec3 c2 = points[j0] + t * (points[j1] - points[j0]);
  const Vec3 w = c1 - c2;
  const double distance = norm(w);
  if (distance <= tube_epsilon) return gradient;
  const Vec3 g = w / (2.0 * distance);
  gradient.add(i0, (1.0 - s) * g);
  gradient.add(i1, s * g);
  gradient.add(j0, -(1.0 - t) * g);
  gradient.add(j1, -t * g);
  return gradient;
}

ContactGradient kink_minrad_plus_gradient(std::span<const Vec3> points, const KinkRecord& kink) {
  ContactGradient gradient;
  const std::uint64_t n = points.size();
  if (n < 3) return gradient;
  const std::uint64_t prev = previous_vertex(kink.vertex, n);
  const std::uint64_t v = vertex_at(kink.vertex, n);
  const std::uint64_t next = next_vertex(kink.vertex, n);
  const double theta = kink.turning_angle;
  const Vec3 a = points[prev] - points[v];
  const Vec3 b = points[next] - points[v];
  const double la = norm(a);
  const double lb = norm(b);
  if (la <= tube_epsilon || lb <= tube_epsilon || theta <= tube_epsilon || !std::isfinite(theta)) return gradient;
  const Vec3 N = cross(b, a);
  const double length_N = norm(N);
  if (length_N <= tube_epsilon) return gradient;
  const Vec3 nh = N / length_N;
  const double C = 2.0 * vkm::cos(theta) - 2.0;
  const double T = vkm::tan(theta / 2.0);
  if (std::fabs(C) <= tube_epsilon || std::fabs(T) <= tube_epsilon) return gradient;
  const double dtheta = lb / C;
  const Vec3 gl = b / (2.0 * T * lb);
  const Vec3 gp = cross(a, nh) * dtheta / (la * la);
  const Vec3 gx = cross(nh, b) * dtheta / (lb * lb);
  gradient.add(prev, gp);
  gradient.add(v, -1.0 * (gp + gx) - gl);
  gradient.add(next, gx + gl);
  return gradient;
}

ContactGradient kink_minrad_minus_gradient(std::span<const Vec3> points, const KinkRecord& kink) {
  ContactGradient gradient;
  const std::uint64_t n = points.size();
  if (n < 3) return gradient;
  // The plus side of the corner walked backwards.
  const std::array<std::uint64_t, 3> vertices = {next_vertex(kink.vertex, n), vertex_at(kink.vertex, n),
                                                 previous_vertex(kink.vertex, n)};
  const std::array<Vec3, 3> corner = {points[vertices[0]], points[vertices[1]], points[vertices[2]]};
  KinkRecord reversed;
  reversed.vertex = 1;
  reversed.minrad_plus = reversed.minrad = kink.minrad_minus;
  reversed.turning_angle = kink.turning_angle;
  const ContactGradient plus = kink_minrad_plus_gradient(corner, reversed);
  for (const auto& part : plus.parts()) gradient.add(vertices[part.vertex], part.value);
  return gradient;
}

ContactGradient kink_minrad_gradient(std::span<const Vec3> points, const KinkRecord& kink, const KinkGradient& how) {
  ContactGradient gradient;
  const std::uint64_t n = points.size();
  if (n < 3) return gradient;
  if (how.analytic) {
    const double slack = 1e-12 * std::max(std::fabs(kink.minrad), 1.0);
    const bool minus = kink.minrad_plus + slack >= kink.minrad_minus;  // ties go to the minus side
    ContactGradient analytic =
        minus ? kink_minrad_minus_gradient(points, kink) : kink_minrad_plus_gradient(points, kink);
    if (analytic.norm() > tube_epsilon) return analytic;
  }

  const double step = how.finite_difference_step > 0.0 ? how.finite_difference_step : 1e-6;
  const std::array<std::uint64_t, 3> vertices = {previous_vertex(kink.vertex, n), vertex_at(kink.vertex, n),
                                                 next_vertex(kink.vertex, n)};
  // The radius at the corner with one vertex of the polygon moved.
  const auto minrad_with = [&](std::uint64_t moved, const Vec3& position) {
    const auto at = [&](std::uint64_t v) { return v == moved ? position : points[v]; };
    const Corner corner = corner_of(at(vertices[0]), at(vertices[1]), at(vertices[2]));
    return corner_kink(corner, half_tangent(corner), 0).minrad;
  };
  for (const std::uint64_t vertex : vertices) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double x = points[vertex][axis];
      const double h = std::max(std::fabs(x), 1.0) * step;
      Vec3 plus = points[vertex];
      Vec3 minus = points[vertex];
      plus[axis] = x + h;
      minus[axis] = x - h;
      const double rp = minrad_with(vertex, plus);
      const double rm = minrad_with(vertex, minus);
      double slope = 0.0;
      if (std::isfinite(rp) && std::isfinite(rm)) {
        slope = (rp - rm) / (2.0 * h);
      } else if (std::isfinite(rp)) {
        slope = (rp - kink.minrad) / h;
      } else if (std::isfinite(rm)) {
        slope = (kink.minrad - rm) / h;
      }
      gradient.set(vertex, axis, slope);
    }
  }
  return gradient;
}

std::vector<double> length_gradient(std::span<const Vec3> points) {
  const std::size_t n = points.size();
  std::vector<double> gradient(3 * n, 0.0);
  if (n < 2) return gradient;
  for (std::size_t v = 0; v < n; ++v) {
    const Vec3 a = points[v] - points[previous_vertex(v, n)];
    const Vec3 b = points[v] - points[next_vertex(v, n)];
    const double la = norm(a);
    const double lb = norm(b);
    Vec3 g = {0.0, 0.0, 0.0};
    if (la > tube_epsilon) g += a / la;
    if (lb > tube_epsilon) g += b / lb;
    for (std::size_t axis = 0; axis < 3; ++axis) gradient[3 * v + axis] = g[axis];
  }
  return gradient;
}

}  // namespace vkm
