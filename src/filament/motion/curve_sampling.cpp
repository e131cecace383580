#include "filament/motion/curve_sampling.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"

namespace vkm {

std::vector<Vec3> resample_closed_curve(std::span<const Vec3> points, std::size_t count) {
  require_memory(count, 3 * sizeof(Vec3));
  std::vector<Vec3> samples(count, Vec3{});
  const std::size_t n = points.size();
  if (n < 2) return samples;
  const auto next = [&](std::size_t i) -> const Vec3& { return points[i + 1 == n ? 0 : i + 1]; };
  std::vector<double> length(n + 1, 0.0);
  for (std::size_t i = 0; i < n; ++i) length[i + 1] = length[i] + norm(next(i) - points[i]);
  const double total = length[n];
  if (!(total > 0.0)) return samples;
  std::size_t j = 0;
  for (std::size_t k = 0; k < count; ++k) {
    const double target = static_cast<double>(k) * total / static_cast<double>(count);
    while (j + 1 < n && target > length[j + 1]) ++j;
    const double u = (target - length[j]) / std::max(length[j + 1] - length[j], 1e-30);
    samples[k] = points[j] + u * (next(j) - points[j]);
  }
  return samples;
}

std::vector<Vec3> sample_circle(std::size_t count, double R, double z) {
  require_memory(count, 3 * sizeof(Vec3));
  std::vector<Vec3> samples(count);
  std::vector<double> angles(count);
  std::vector<double> cosines(count);
  for (std::size_t i = 0; i < count; ++i) {
    angles[i] = static_cast<double>(i) * two_pi / static_cast<double>(count);
  }
  vkm::sin_cos(angles, angles, cosines);
  for (std::size_t i = 0; i < count; ++i) samples[i] = {R * cosines[i], R * angles[i], z};
  return samples;
}

}  // namespace vkm
