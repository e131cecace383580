#pragma once

/// Local minima of a sampled curve y(t), the near-zeros of a spectral product, ranked by depth; and the penalty for
/// minima outside windows around target nodes. Comparisons of neighbours and of window bounds are inclusive: every
/// inner point of a flat stretch is a minimum and a maximum.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"

namespace vkm {

std::vector<std::int64_t> local_minima_indices(std::span<const double> y, const Poll& poll = {});
std::vector<std::int64_t> local_maxima_indices(std::span<const double> y, const Poll& poll = {});

/// The t of the `keep_count` deepest minima, ascending. Equal depths rank in the order of their indices.
std::vector<double> strongest_minima_t(std::span<const double> t, std::span<const double> y, std::uint64_t keep_count,
                                       const Poll& poll = {});

/// The `keep_count` least values at local minima, ascending.
std::vector<double> strongest_minima_values(std::span<const double> y, std::uint64_t keep_count, const Poll& poll = {});

/// Windows [target - halfwidth, target + halfwidth] around the targets.
struct TargetWindows {
  std::span<const double> targets;
  double halfwidth;

  bool contain(double t) const;
};

/// strongest_minima_t of the minima outside all windows (`keep_only_outside`), or of those inside any.
std::vector<double> strongest_minima_t_by_windows(std::span<const double> t, std::span<const double> y,
                                                  const TargetWindows& windows, bool keep_only_outside,
                                                  std::uint64_t keep_count, const Poll& poll = {});

/// The sum of exp(-y / sigma) over the minima outside all windows, or its first term alone unless `penalize_all`.
double extra_minima_penalty(std::span<const double> t, std::span<const double> y, const TargetWindows& windows,
                            double sigma, bool penalize_all, const Poll& poll = {});

}  // namespace vkm
