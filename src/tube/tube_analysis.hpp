#pragma once

/// Thickness, ropelength and contacts of a closed polygon as the centre line of a tube.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm {

/// (4 + 2 sqrt(2)) pi, a lower bound of the ropelength (length over radius) of any non-trivial knot (J. Cantarella,
/// R. B. Kusner, J. M. Sullivan, On the minimum ropelength of knots and links, Invent. Math. 150, 2002).
inline constexpr double nontrivial_knot_lower_bound_rad = 21.452136490675905;

/// The edge pairs within a tolerance of the least distance m, by i, then j: within m + 1e-12 for a tolerance of 0
/// (or below), else within (tol + 1) m + tol.
std::vector<SegmentPair> dcsd_candidates(std::span<const Vec3> points, std::int32_t skip_neighbors, double distance_tol,
                                         const Poll& poll = {});

struct TubeAnalysis {
  std::int32_t skip_neighbors = 2;  ///< edges up to this many apart around the loop make no pair
  double contact_tol = 0.001;       ///< contacts up to (1 + tol) thickness + tol are active
  double equilateral_tol = 0.001;   ///< largest relative deviation of an edge length that counts as equilateral
};

/// Throws std::invalid_argument below three points and for negative tolerances. The same bits for any number of
/// threads.
ResolvedTubeMetrics analyze_tube(std::span<const Vec3> points, const TubeAnalysis& options = {}, const Poll& poll = {},
                                 int threads = 1);

}  // namespace vkm
