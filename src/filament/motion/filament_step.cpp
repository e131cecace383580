#include "filament/motion/filament_step.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vkm {

namespace {

VelocityLaw direct_law(const FilamentOptions& options, const Poll& poll) {
  return [&](std::span<const Filament> filaments) { return filament_velocity(filaments, options, poll); };
}

using Velocities = std::vector<std::vector<Vec3>>;

/// The start state moved by `dt` along `velocity`; `state` holds a copy of it whose positions may be out of date.
void move_from(std::span<const Filament> start, const Velocities& velocity, double dt, std::vector<Filament>& state) {
  for (std::size_t f = 0; f < start.size(); ++f) {
    if (!start[f].moves()) continue;
    const std::vector<Vec3>& points = start[f].points;
    for (std::size_t i = 0; i < points.size(); ++i) state[f].points[i] = points[i] + velocity[f][i] * dt;
  }
}

}  // namespace

FilamentStep rk4_step(std::span<const Filament> filaments, double dt, const VelocityLaw& law) {
  FilamentStep step;
  const FilamentVelocity k1 = law(filaments);
  std::vector<Filament>& state = step.filaments;
  state.assign(filaments.begin(), filaments.end());
  move_from(filaments, k1.velocity, dt * 0.5, state);
  const FilamentVelocity k2 = law(state);
  move_from(filaments, k2.velocity, dt * 0.5, state);
  const FilamentVelocity k3 = law(state);
  move_from(filaments, k3.velocity, dt, state);
  const FilamentVelocity k4 = law(state);
  Velocities sum = k1.velocity;
  for (std::size_t f = 0; f < sum.size(); ++f) {
    for (std::size_t i = 0; i < sum[f].size(); ++i) {
      sum[f][i] = 2.0 * k2.velocity[f][i] + k1.velocity[f][i] + 2.0 * k3.velocity[f][i] + k4.velocity[f][i];
    }
  }
  move_from(filaments, sum, dt / 6.0, state);
  step.maximum_stage_speed =
      std::max(std::max(k1.maximum_speed, k2.maximum_speed), std::max(k3.maximum_speed, k4.maximum_speed));
  return step;
}

double cfl_time_step(std::span<const Filament> filaments, const VelocityLaw& law, double cfl) {
  constexpr double least_step = 1e-6;
  double ds = std::numeric_limits<double>::infinity();
  for (const Filament& filament : filaments) {
    if (!filament.moves()) continue;
    const std::vector<Vec3>& points = filament.points;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const double length = norm(points[i + 1 == points.size() ? 0 : i + 1] - points[i]);
      if (length < ds) ds = length;
    }
  }
  if (!std::isfinite(ds) || !(ds > 0.0)) return least_step;
  const double speed = law(filaments).maximum_speed;
  return std::max(ds * cfl / std::max(1e-12, speed), least_step);
}

FilamentStep rk4_step(std::span<const Filament> filaments, double dt, const FilamentOptions& options,
                      const Poll& poll) {
  return rk4_step(filaments, dt, direct_law(options, poll));
}

double cfl_time_step(std::span<const Filament> filaments, const FilamentOptions& options, double cfl,
                     const Poll& poll) {
  return cfl_time_step(filaments, direct_law(options, poll), cfl);
}

}  // namespace vkm
