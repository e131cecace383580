#include "filament/motion/vortex_knot_system.hpp"

#include <cmath>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "filament/sums/self_velocity.hpp"

namespace vkm {

namespace {

template <class Point>
std::vector<Vec3> sample_period(int resolution, const Poll& poll, Point point) {
  std::vector<Vec3> points;
  if (resolution <= 0) return points;
  require_memory(static_cast<std::size_t>(resolution), 2 * sizeof(Vec3));
  points.reserve(static_cast<std::size_t>(resolution));
  Heartbeat heartbeat(poll);
  for (int i = 0; i < resolution; ++i) {
    points.push_back(point(i * two_pi / resolution));
    heartbeat.tick(static_cast<std::size_t>(i), 1024);
  }
  return points;
}

}  // namespace

std::vector<Vec3> central_tangents(std::span<const Vec3> positions) {
  const std::size_t n = positions.size();
  std::vector<Vec3> tangents(n);
  for (std::size_t i = 0; i < n; ++i) {
    tangents[i] = 0.5 * (positions[i + 1 == n ? 0 : i + 1] - positions[i == 0 ? n - 1 : i - 1]);
  }
  return tangents;
}

std::vector<Vec3> trefoil_curve(int resolution, const Poll& poll) {
  return sample_period(resolution, poll, [](double t) -> Vec3 {
    return {vkm::cos(2 * t) * (vkm::cos(3 * t) + 2), vkm::sin(2 * t) * (vkm::cos(3 * t) + 2), vkm::sin(3 * t)};
  });
}

std::vector<Vec3> figure8_curve(int resolution, const Poll& poll) {
  return sample_period(resolution, poll, [](double t) -> Vec3 {
    return {vkm::cos(3 * t) * (vkm::cos(2 * t) + 2), vkm::sin(3 * t) * (vkm::cos(2 * t) + 2), vkm::sin(4 * t)};
  });
}

void set_positions(VortexKnotSystem& system, std::vector<Vec3> positions) {
  system.tangents = central_tangents(positions);
  system.positions = std::move(positions);
}

void evolve(VortexKnotSystem& system, double dt, std::uint64_t steps, const Poll& poll) {
  if (steps == 0) return;
  Heartbeat heartbeat(poll);
  std::vector<Vec3> positions = system.positions;
  std::vector<Vec3> tangents = system.tangents;
  for (std::uint64_t step = 0; step < steps; ++step) {
    const std::vector<Vec3> velocity = self_velocities(positions, tangents, system.circulation, heartbeat);
    evolve_positions_euler(positions, velocity, dt);
    tangents = central_tangents(positions);
    heartbeat.tick();
  }
  system.positions = std::move(positions);
  system.tangents = std::move(tangents);
}

std::vector<Vec3> advance_along_tangents(std::span<const Vec3> positions, std::span<const Vec3> tangents, double dt,
                                         double gamma) {
  if (tangents.size() < positions.size()) throw std::invalid_argument("tangents must be at least as long as positions");
  const double step = dt * gamma;
  std::vector<Vec3> moved(positions.size());
  for (std::size_t i = 0; i < moved.size(); ++i) moved[i] = positions[i] + step * tangents[i];
  return moved;
}

void evolve_positions_euler(std::span<Vec3> positions, std::span<const Vec3> velocity, double dt) {
  if (velocity.size() < positions.size()) {
    throw std::invalid_argument("evolve_positions_euler: velocity must be at least as long as positions");
  }
  for (std::size_t i = 0; i < positions.size(); ++i) positions[i] += dt * velocity[i];
}

}  // namespace vkm
