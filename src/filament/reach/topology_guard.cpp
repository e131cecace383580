#include "filament/reach/topology_guard.hpp"

#include <algorithm>
#include <cmath>

#include "filament/reach/tube_clearance.hpp"

namespace vkm {

TopologyGuard guard_topology_step(std::span<const std::vector<Vec3>> before, std::span<const std::vector<Vec3>> after,
                                  double contact_threshold, double max_displacement, double core_radius,
                                  const Poll& poll) {
  const auto below_threshold = [&](double clearance) {
    return std::isfinite(clearance) && contact_threshold > clearance;
  };
  const auto clearance_at = [&](double u) {
    std::vector<std::vector<Vec3>> curves(std::min(before.size(), after.size()));
    for (std::size_t c = 0; c < curves.size(); ++c) {
      curves[c].resize(std::min(before[c].size(), after[c].size()));
      for (std::size_t i = 0; i < curves[c].size(); ++i) {
        curves[c][i] = before[c][i] + u * (after[c][i] - before[c][i]);
      }
    }
    return tube_clearance(curves, core_radius, poll).clearance;
  };

  TopologyGuard result;
  const double c0 = result.clearance_before = tube_clearance(before, core_radius, poll).clearance;
  const double c1 = result.clearance_after = tube_clearance(after, core_radius, poll).clearance;
  const bool apart = max_displacement * 2.25 + contact_threshold < std::min(c0, c1);
  if (std::isfinite(c0) && std::isfinite(c1) && !apart) {
    if (below_threshold(c0)) {
      result.contact = true;
      result.safe_dt_fraction = 0.0;
      result.message = "contact at start of step";
      return result;
    }
    for (int k = 1; k <= 8; ++k) {
      if (!below_threshold(clearance_at(k * 0.125))) continue;
      double lo = (k - 1) * 0.125;
      double hi = k * 0.125;
      for (int round = 0; round < 18 && hi - lo > 1e-6; ++round) {
        const double mid = 0.5 * (lo + hi);
        (below_threshold(clearance_at(mid)) ? hi : lo) = mid;
      }
      result.contact = true;
      result.safe_dt_fraction = lo;
      result.message = "topology guard: transient contact within step; stopped on safe side";
      return result;
    }
  }
  if (below_threshold(c1)) {
    result.contact = true;
    result.safe_dt_fraction = 0.0;
    result.message = "contact at end of step";
  }
  return result;
}

}  // namespace vkm
