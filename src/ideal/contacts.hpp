#pragma once

/// Contacts of a rope with itself: pairs of edges near each other, and the radius of curvature at vertices.
///
/// Edges are strangers if they belong to different components, or if more than `gap` of the curve lies between them
/// both ways round. For a tube of radius 1 with MinRad >= 1 only strangers at a gap of pi can touch (Schur's
/// comparison theorem), so thickness = min(MinRad, least distance of strangers / 2).
/// MinRad at a vertex is the radius of the largest circular arc that fits its corner, l / (2 tan(turn / 2)) with the
/// shorter adjacent edge l (E. Rawdon, Approximating the thickness of a knot, 1998).

#include <vector>

#include "ideal/rope.hpp"

namespace vkm::ideal {

/// Points (1 - s) p_i + s p_next(i) and (1 - t) p_j + t p_next(j) at the least distance of edges i < j.
struct Contact {
  Index i;
  Index j;
  double s;
  double t;
  double distance;
};

/// All pairs of strangers nearer than `cut`, sorted by (i, j).
std::vector<Contact> contacts(const Rope& rope, const Cycle& cycle, double cut, double gap);

/// The nearest points of edges i and j.
Contact contact(const Rope& rope, const Cycle& cycle, Index i, Index j);

/// Least distance of strangers, or `most` if none are nearer.
double least_distance(const Rope& rope, const Cycle& cycle, double most, double gap);

/// MinRad at each vertex; infinity where the edges are in line.
std::vector<double> corner_radii(const Rope& rope, const Cycle& cycle);

/// What a rope is, measured on its polygon.
struct Measures {
  double length;
  double min_radius;      ///< least MinRad
  double strut_distance;  ///< least distance of strangers at a gap of pi tube radii
  double thickness;       ///< largest radius of an embedded tube, min(min_radius, strut_distance / 2)
  double ropelength;      ///< length / thickness
};

Measures measure(const Rope& rope, const Cycle& cycle);

}  // namespace vkm::ideal
