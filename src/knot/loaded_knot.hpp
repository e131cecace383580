#pragma once

/// Knots read from `.fseries` files, sampled and centred, for plots and first looks.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

struct LoadedKnot {
  std::string name;               // derived from the path
  std::vector<Vec3> points;       // samples with their mean subtracted; the first point is repeated as the last
  std::vector<double> curvature;  // compute_curvature of the points
};

/// The file name behind the last slash or backslash, before its last dot, without the first "knot" in it (in any case):
/// "a/knot.3_1.fseries" is named ".3_1".
std::string knot_name_of_path(std::string_view path);

/// The largest block of each file, sampled at s_k = k 2 pi / (nsamples - 1): both ends of the period. A file that
/// cannot be read or has no block gives no entry. No points for nsamples below 1; a single sample has no step, it is
/// NaN.
std::vector<LoadedKnot> load_all_knots(std::span<const std::string> paths, std::int64_t nsamples = 1000,
                                       const Poll& poll = {});

}  // namespace vkm
