#pragma once

/// The edge lengths of a closed polygon, and their statistics.

#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

/// |p(k) - p(k+1)|, the closing edge last.
std::vector<double> edge_lengths(std::span<const Vec3> points);

/// All 0 for fewer than two edges; the deviations are 0 unless the mean is positive.
struct EdgeStatistics {
  double sum = 0.0;
  double mean = 0.0;
  double relative_std = 0.0;            ///< population form over the mean
  double max_relative_deviation = 0.0;  ///< largest |l / mean - 1|
};

EdgeStatistics edge_statistics(std::span<const double> lengths);

/// Sum of all edge lengths, the closing edge included; 0 for fewer than two points.
double polygon_length(std::span<const Vec3> points);

}  // namespace vkm
