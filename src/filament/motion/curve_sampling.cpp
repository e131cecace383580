#include "filament/motion/curve_sampling.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"

namespace vkm {

std::vector<Vec3> resample_closed_curve(std::span<const Vec3> points, std::size_t count, const Poll& poll) {
  require_memory(count, 2 * sizeof(Vec3));
  Heartbeat heartbeat(poll);
  std::vector<Vec3> samples;
  samples.reserve(count);
  const std::size_t n = points.size();
  const auto zeros = [&] {
    for (std::size_t k = 0; k < count; ++k) {
      samples.push_back({});
      heartbeat.tick(k, 4096);
    }
    return std::move(samples);
  };
  if (n < 2) return zeros();
  const auto next = [&](std::size_t i) -> const Vec3& { return points[i + 1 == n ? 0 : i + 1]; };
  std::vector<double> length(n + 1, 0.0);
  for (std::size_t i = 0; i < n; ++i) length[i + 1] = length[i] + norm(next(i) - points[i]);
  const double total = length[n];
  if (!(total > 0.0)) return zeros();
  std::size_t j = 0;
  for (std::size_t k = 0; k < count; ++k) {
    const double target = static_cast<double>(k) * total / static_cast<double>(count);
    while (j + 1 < n && target > length[j + 1]) ++j;
    const double u = (target - length[j]) / std::max(length[j + 1] - length[j], 1e-30);
    samples.push_back(points[j] + u * (next(j) - points[j]));
    heartbeat.tick(k, 4096);
  }
  return samples;
}

std::vector<Vec3> sample_circle(std::size_t count, double R, double z, const Poll& poll) {
  require_memory(count, 2 * sizeof(Vec3));
  constexpr std::size_t block = 4096;
  Heartbeat heartbeat(poll);
  std::vector<Vec3> samples;
  samples.reserve(count);
  std::vector<double> angles;
  std::vector<double> cosines;
  for (std::size_t begin = 0; begin < count; begin += block) {
    angles.resize(std::min(block, count - begin));
    cosines.resize(angles.size());
    for (std::size_t i = 0; i < angles.size(); ++i) {
      angles[i] = static_cast<double>(begin + i) * two_pi / static_cast<double>(count);
    }
    vkm::sin_cos(angles, angles, cosines);
    for (std::size_t i = 0; i < angles.size(); ++i) samples.push_back({R * cosines[i], R * angles[i], z});
    heartbeat.tick();
  }
  return samples;
}

}  // namespace vkm
