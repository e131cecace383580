#pragma once

/// Resolved tubes: closed polygons around which a tube of constant radius is imagined.
///
/// A polygon is its vertices p(0) .. p(n-1) in any unit of length; edge k runs from p(k) to p((k+1) mod n), the closing
/// edge included. All lengths come out in the unit of the points. The thickness is the smaller of
///
///   minrad   the least vertex radius: min(l-, l+) / (2 tan(theta/2)), the circle tangent to both edges of a corner
///            of turning angle theta (E. J. Rawdon, Approximating smooth thickness, J. Knot Theory Ramif. 9, 2000),
///   dcsd/2   half the least distance of two edges that are more than `skip_neighbors` apart around the loop.
///
/// The ropelength is length / thickness. Struts are the edge pairs and kinks the corners that hold the thickness,
/// within a tolerance; their gradients span the cone of constraint forces (contact_stress.hpp).
///
/// A vertex number may lie outside 0..n-1: next(k) = (k+1) mod n, k stands for k mod n, and prev(k) is k-1, taken as
/// signed, reduced into 0..n-1. A flat gradient has 3n entries, coordinate `axis` of vertex v at index 3v + axis.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Lengths, squared lengths, sines and angles at or below this count as zero in all of the tube geometry.
inline constexpr double tube_epsilon = 1e-14;

/// The closest points of two edges, i < j.
struct SegmentPair {
  std::uint64_t i = 0;       ///< first edge
  std::uint64_t j = 0;       ///< second edge
  double s = 0.0;            ///< parameter 0..1 on edge i
  double t = 0.0;            ///< parameter 0..1 on edge j
  double distance = 0.0;     ///< length
  double arclength_i = 0.0;  ///< from vertex 0 to the closest point on edge i, length
  double arclength_j = 0.0;  ///< the same on edge j
};

/// The radius of a corner, from either of its edges.
struct KinkRecord {
  std::uint64_t vertex = 0;    ///< reduced modulo n
  double minrad_minus = 0.0;   ///< from the incoming edge, length
  double minrad_plus = 0.0;    ///< from the outgoing edge, length
  double minrad = 0.0;         ///< the smaller of the two
  double turning_angle = 0.0;  ///< exterior angle, radians
};

/// What the analysis of a polygon finds.
struct ResolvedTubeMetrics {
  double length = 0.0;
  double minrad = 0.0;    ///< least vertex radius
  double min_dcsd = 0.0;  ///< least distance of admissible edge pairs; +infinity if there is none
  double half_min_dcsd = 0.0;
  double thickness_rad = 0.0;    ///< min(minrad, half_min_dcsd)
  double reach_rad = 0.0;        ///< equal to thickness_rad
  double ropelength_rad = 0.0;   ///< length / thickness_rad; 0 for a thickness that is not positive and finite
  double ropelength_diam = 0.0;  ///< length over tube diameter
  double edge_length_mean = 0.0;
  double edge_length_rel_std = 0.0;
  double edge_length_max_rel_dev = 0.0;
  bool equilateral_ok = false;      ///< edge_length_max_rel_dev within its tolerance
  bool lower_bound_ok = true;       ///< the ropelength does not undercut the bound for non-trivial knots
  std::vector<SegmentPair> struts;  ///< active edge contacts, by i, then j
  std::vector<KinkRecord> kinks;    ///< active curvature contacts, by vertex
};

}  // namespace vkm
