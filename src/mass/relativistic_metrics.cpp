#include "mass/relativistic_metrics.hpp"

#include <algorithm>

#include "core/time_dilation.hpp"
#include "filament/biot_savart.hpp"
#include "filament/frames.hpp"

namespace vkm {

namespace {

constexpr double speed_of_light = 299792458.0;        // m/s
constexpr double core_area = 6.236680122475321e-30;  // pi times core radius squared, m^2

}  // namespace

RelativisticMetrics relativistic_metrics(std::span<const Vec3> filament, double circulation, const Poll& poll) {
  RelativisticMetrics metrics;
  const std::size_t n = filament.size();
  if (n == 0) return metrics;
  std::vector<Vec3> tangents = compute_frenet_frames(filament).T;
  tangents.resize(n);

  Heartbeat heartbeat(poll);
  std::vector<Vec3> velocity(n);
  std::vector<Vec3> vorticity(n);
  metrics.time_dilation_map.resize(n);
  double sum = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    heartbeat.tick();
    velocity[i] = biot_savart_velocity(filament[i], filament, tangents, circulation);
    vorticity[i] = tangents[i] * (circulation / core_area);
    metrics.time_dilation_map[i] = time_dilation_sqrt(velocity[i], speed_of_light);
    sum += metrics.time_dilation_map[i];
  }
  metrics.helicity = compute_helicity(velocity, vorticity);
  metrics.core_time_dilation = sum / static_cast<double>(n);
  return metrics;
}

}  // namespace vkm
