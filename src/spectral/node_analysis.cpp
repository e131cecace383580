#include "spectral/node_analysis.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "spectral/ascending.hpp"

namespace vkm {

namespace {

/// Indices of inner points that `beats(neighbour, point)` on both sides.
template <class Beats>
std::vector<std::int64_t> extrema(std::span<const double> y, const Poll& poll, Beats beats) {
  Heartbeat heartbeat(poll);
  std::vector<std::int64_t> indices;
  for (std::size_t i = 1; i + 1 < y.size(); ++i) {
    if (beats(y[i - 1], y[i]) && beats(y[i + 1], y[i])) indices.push_back(static_cast<std::int64_t>(i));
    heartbeat.tick(i, 16384);
  }
  return indices;
}

double at(std::span<const double> values, std::int64_t index) { return values[static_cast<std::size_t>(index)]; }

std::size_t kept(std::size_t count, std::uint64_t keep_count) {
  return static_cast<std::size_t>(std::min<std::uint64_t>(count, keep_count));
}

std::vector<double> deepest_t(std::span<const double> t, std::span<const double> y, std::vector<std::int64_t> minima,
                              std::uint64_t keep_count, const Poll& poll) {
  Heartbeat heartbeat(poll);
  std::size_t comparisons = 0;
  std::stable_sort(minima.begin(), minima.end(), [&](std::int64_t a, std::int64_t b) {
    heartbeat.tick(comparisons++, 16384);
    return ascending(at(y, a), at(y, b));
  });
  minima.resize(kept(minima.size(), keep_count));
  std::vector<double> result;
  result.reserve(minima.size());
  for (const std::int64_t index : minima) result.push_back(at(t, index));
  std::sort(result.begin(), result.end(), ascending);
  return result;
}

}  // namespace

std::vector<std::int64_t> local_minima_indices(std::span<const double> y, const Poll& poll) {
  return extrema(y, poll, [](double neighbour, double point) { return neighbour >= point; });
}

std::vector<std::int64_t> local_maxima_indices(std::span<const double> y, const Poll& poll) {
  return extrema(y, poll, [](double neighbour, double point) { return point >= neighbour; });
}

std::vector<double> strongest_minima_t(std::span<const double> t, std::span<const double> y, std::uint64_t keep_count,
                                       const Poll& poll) {
  return deepest_t(t, y, local_minima_indices(y, poll), keep_count, poll);
}

std::vector<double> strongest_minima_values(std::span<const double> y, std::uint64_t keep_count, const Poll& poll) {
  std::vector<double> values;
  for (const std::int64_t index : local_minima_indices(y, poll)) values.push_back(at(y, index));
  std::sort(values.begin(), values.end(), ascending);
  values.resize(kept(values.size(), keep_count));
  return values;
}

bool TargetWindows::contain(double t) const {
  return std::any_of(targets.begin(), targets.end(),
                     [&](double target) { return t >= target - halfwidth && t <= target + halfwidth; });
}

std::vector<double> strongest_minima_t_by_windows(std::span<const double> t, std::span<const double> y,
                                                  const TargetWindows& windows, bool keep_only_outside,
                                                  std::uint64_t keep_count, const Poll& poll) {
  Heartbeat heartbeat(poll);
  std::vector<std::int64_t> minima = local_minima_indices(y, poll);
  std::erase_if(minima, [&](std::int64_t index) {
    heartbeat.tick();
    return windows.contain(at(t, index)) == keep_only_outside;
  });
  return deepest_t(t, y, std::move(minima), keep_count, poll);
}

double extra_minima_penalty(std::span<const double> t, std::span<const double> y, const TargetWindows& windows,
                            double sigma, bool penalize_all, const Poll& poll) {
  Heartbeat heartbeat(poll);
  double penalty = 0.0;
  for (const std::int64_t index : local_minima_indices(y, poll)) {
    heartbeat.tick();
    if (windows.contain(at(t, index))) continue;
    penalty += vkm::exp(-at(y, index) / sigma);
    if (!penalize_all) break;
  }
  return penalty;
}

}  // namespace vkm
