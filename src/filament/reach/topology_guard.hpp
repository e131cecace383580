#pragma once

/// Whether strands of closed polygons came into contact on the way of a step, by the clearance of the positions in
/// between.

#include <span>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

struct TopologyGuard {
  bool contact = false;
  bool warn_only = false;
  double safe_dt_fraction = 1.0;  // part of the step that keeps every clearance at the threshold or above
  double clearance_before = 0.0;
  double clearance_after = 0.0;
  std::string message;
};

/// A contact is a clearance below `contact_threshold`. Positions in between are linear in time, over the curves and
/// points that `before` and `after` have in common; they are looked at in eighths of the step, unless strands that
/// move by `max_displacement` at most cannot have met. `core_radius` sets the window of neighbours of the clearance.
TopologyGuard guard_topology_step(std::span<const std::vector<Vec3>> before, std::span<const std::vector<Vec3>> after,
                                  double contact_threshold, double max_displacement, double core_radius = 0.0,
                                  const Poll& poll = {});

}  // namespace vkm
