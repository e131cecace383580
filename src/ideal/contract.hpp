#pragma once

/// From a loose or rough rope to a settled one at a given edge length, and the random moves between two settlings.

#include <optional>

#include "ideal/random.hpp"
#include "ideal/settle.hpp"

namespace vkm::ideal {

/// Scales the rope so that its strands are two tube radii apart. std::invalid_argument if strands touch or cross.
void scale_to_tube(Rope& rope);

/// Settles with new spacing every 14 programs or 12 % of shortening, until the rope is settled with edges of about h
/// or so many programs are spent. Nothing where strands are too near to each other even for edges of half that length.
std::optional<Settled> contract(const Rope& rope, double h, int most_programs, Heartbeat& heartbeat);

/// How a level is settled; the finer, the more exactly.
SettleOptions level_options(double h);

/// Spaces at h and settles.
Settled refine(const Rope& rope, double h, Heartbeat& heartbeat);

/// Moves the rope by a smooth random field whose largest length is `amplitude`, or less: twice the move stays under
/// the distance of strands, and within a strand the field stretches by no more than 0.6, while a chord of a curve of
/// curvature <= 1 is no shorter than 2 / pi of an arc up to pi. So nothing passes through anything.
void displace(Rope& rope, double amplitude, int modes, Random& random);

/// A hop: swell by 0 to 0.6 tube radii and displace by 0.5 to 1.3.
Rope hop(const Rope& rope, Random& random);

/// A hop that keeps the arrangement of lobes: displaced by 0.1 to 0.5, and swelled as far as that brought strands near
/// to each other.
Rope small_hop(const Rope& rope, Random& random);

}  // namespace vkm::ideal
