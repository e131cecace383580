#pragma once

/// Biot-Savart energy of the pairs of curve elements that lie farther apart than a cutoff, for a whole list of cutoffs
/// in one pass over the pairs.
///
/// E[m] = 1 / (8 pi) sum of (t[i] . t[j]) / d ds[i] ds[j] over the ordered pairs at a distance d > a[m]; a pair at d =
/// 0 counts never. A pair adds to the first entry of a difference array and takes itself off where the cutoffs have
/// reached it, so the cost is O(N^2 log M).

#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// One energy a cutoff. `a_values` must ascend for the energies to mean the above; another order gives what the binary
/// search finds. `points` in m, `tangents` of unit length, `ds` in m; std::invalid_argument if their lengths differ.
std::vector<double> cutoff_energies(std::span<const Vec3> points, std::span<const Vec3> tangents,
                                    std::span<const double> ds, std::span<const double> a_values,
                                    const Poll& poll = {});

}  // namespace vkm
