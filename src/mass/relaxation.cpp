#include "mass/relaxation.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include "core/kernel.hpp"
#include "mass/repulsion.hpp"

namespace vkm {

namespace {

constexpr double tension = 25.0;
constexpr double centring = 15.0;
constexpr double damping = 0.7;

using Filaments = std::vector<std::vector<Vec3>>;

std::size_t point_count(const Filaments& filaments) {
  std::size_t count = 0;
  for (const auto& filament : filaments) count += filament.size();
  return count;
}

Axes axes_of(const Filaments& filaments, std::size_t count) {
  Axes points(count);
  std::size_t i = 0;
  for (const auto& filament : filaments) {
    for (const Vec3& p : filament) {
      points.x[i] = p[0];
      points.y[i] = p[1];
      points.z[i] = p[2];
      ++i;
    }
  }
  return points;
}

Vec3 mean_of(const Axes& points) {
  Vec3 sum{};
  for (std::size_t i = 0; i < points.size(); ++i) sum += Vec3{points.x[i], points.y[i], points.z[i]};
  return sum / static_cast<double>(points.size());
}

/// Tension and centring, the part of the force that comes before the repulsion.
VKM_KERNEL void set_elastic_force(double* force, const double* p, const std::uint32_t* previous,
                                  const std::uint32_t* next, std::size_t count, double centre) {
  for (std::size_t i = 0; i < count; ++i) {
    double sum = 0.0;  // an addition to zero, so that no force is -0
    sum += ((p[next[i]] - p[i]) + (p[previous[i]] - p[i])) * tension;
    sum += (centre - p[i]) * centring;
    force[i] = sum;
  }
}

VKM_KERNEL void advance(double* p, double* velocity, const double* force, std::size_t count, double dt) {
  for (std::size_t i = 0; i < count; ++i) {
    velocity[i] = (dt * force[i] + velocity[i]) * damping;
    p[i] = dt * velocity[i] + p[i];
  }
}

void scale_to_electron(Axes& points) {
  const Vec3 centre = mean_of(points);
  double radius = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    radius = std::max(radius, norm(Vec3{points.x[i], points.y[i], points.z[i]} - centre));
  }
  if (radius < 1e-12) radius = 1e-6;
  const double scale = electron_radius / radius;
  for (std::size_t i = 0; i < points.size(); ++i) {
    points.x[i] = (points.x[i] - centre[0]) * scale + centre[0];
    points.y[i] = (points.y[i] - centre[1]) * scale + centre[1];
    points.z[i] = (points.z[i] - centre[2]) * scale + centre[2];
  }
}

}  // namespace

Filaments relaxed(const Filaments& filaments, int iterations, double timestep, const Poll& poll) {
  const std::size_t count = point_count(filaments);
  if (count == 0) return filaments;
  if (count > std::numeric_limits<std::uint32_t>::max() / 2) throw std::bad_alloc();  // indices are of 32 bits

  std::vector<std::uint32_t> previous(count);
  std::vector<std::uint32_t> next(count);
  std::size_t first = 0;
  for (const auto& filament : filaments) {
    const std::size_t n = filament.size();
    for (std::size_t i = 0; i < n; ++i) {
      previous[first + i] = static_cast<std::uint32_t>(first + (i + n - 1) % n);
      next[first + i] = static_cast<std::uint32_t>(first + (i + 1) % n);
    }
    first += n;
  }

  Axes points = axes_of(filaments, count);
  Axes velocity(count);
  Axes force(count);
  Repulsion repulsion(previous, next);
  Heartbeat heartbeat(poll);
  for (int sweep = 0; sweep < iterations; ++sweep) {
    heartbeat.tick();
    const Vec3 centre = mean_of(points);
    set_elastic_force(force.x.data(), points.x.data(), previous.data(), next.data(), count, centre[0]);
    set_elastic_force(force.y.data(), points.y.data(), previous.data(), next.data(), count, centre[1]);
    set_elastic_force(force.z.data(), points.z.data(), previous.data(), next.data(), count, centre[2]);
    repulsion.add_to(force, points, heartbeat);
    advance(points.x.data(), velocity.x.data(), force.x.data(), count, timestep);
    advance(points.y.data(), velocity.y.data(), force.y.data(), count, timestep);
    advance(points.z.data(), velocity.z.data(), force.z.data(), count, timestep);
  }
  scale_to_electron(points);

  Filaments result(filaments.size());
  std::size_t i = 0;
  for (std::size_t k = 0; k < filaments.size(); ++k) {
    result[k].reserve(filaments[k].size());
    for (std::size_t j = 0; j < filaments[k].size(); ++j, ++i) {
      result[k].push_back({points.x[i], points.y[i], points.z[i]});
    }
  }
  return result;
}

}  // namespace vkm
