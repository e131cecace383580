#include "mass/relativistic_metrics.hpp"

#include "core/time_dilation.hpp"
#include "filament/motion/frames.hpp"
#include "filament/sums/self_velocity.hpp"
#include "mass/canonical_constants.hpp"

namespace vkm {

namespace {

constexpr double speed_of_light = canonical::c;
constexpr double core_area = 6.236680122475321e-30;  // pi times core radius squared, m^2

}  // namespace

RelativisticMetrics relativistic_metrics(std::span<const Vec3> filament, double circulation, const Poll& poll) {
  RelativisticMetrics metrics;
  if (filament.empty()) return metrics;
  const std::vector<Vec3> tangents = compute_frenet_frames(filament).T;
  Heartbeat heartbeat(poll);
  const std::vector<Vec3> velocity = self_velocities(filament, tangents, circulation, heartbeat);

  std::vector<Vec3> vorticity(tangents);
  for (Vec3& w : vorticity) w = w * (circulation / core_area);
  metrics.helicity = compute_helicity(velocity, vorticity);

  double sum = 0.0;
  metrics.time_dilation_map.reserve(filament.size());
  for (const Vec3& u : velocity) {
    metrics.time_dilation_map.push_back(time_dilation_sqrt(u, speed_of_light));
    sum += metrics.time_dilation_map.back();
  }
  metrics.core_time_dilation = sum / static_cast<double>(filament.size());
  return metrics;
}

}  // namespace vkm
