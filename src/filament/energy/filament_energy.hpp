#pragma once

/// Scalar functionals of a closed polygon, the terms of a knot-closure energy.
///
/// Symbols: N points p[i] in m, edges dl[i] = p[i+1] - p[i] with index N read as 0, a core radius rc in m. The closing
/// point is not repeated in the data; a caller who repeats it gets an edge of length zero. Each functional decides for
/// itself which pairs of indices it visits: the differences are deliberate. Sums run in the order of the plain loop,
/// i before j, and have its bits.
///
/// Neumann's double integral: F. E. Neumann, Abh. Preuss. Akad. Wiss. (1846). Writhe: G. Calugareanu (1961),
/// F. B. Fuller, PNAS 68 (1971) 815. Curvature of three points: K. Menger, Math. Ann. 103 (1930) 466.

#include <span>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Length of the closed polygon, the closing edge included; 0 for fewer than two points.
double calculate_length(std::span<const Vec3> points);

/// Sum of 2 dl[i] . dl[j] / sqrt(|p[j] - p[i]|^2 + rc^2) over all pairs i < j, in m; neighbours are in, i = j is not,
/// and there is no prefactor. 0 for fewer than two points.
double calculate_neumann_self_energy(std::span<const Vec3> points, double rc, const Poll& poll = {}, int threads = 1);

/// Sum of 2 (dl[i] x dl[j]) . R / r^3 over the same pairs, divided by 4 pi, with R = p[j] - p[i] and
/// r = sqrt(|R|^2 + rc^2). R points from i to j, so the sign is the opposite of the textbook's writhe. rc softens and
/// cuts nothing off: with rc = 0 a coincident pair divides by zero.
double calculate_writhe(std::span<const Vec3> points, double rc, const Poll& poll = {}, int threads = 1);

/// A wall of the twelfth power: the sum of (2 rc / d)^12 over pairs of points that are not neighbours, the pair across
/// the closure left out, where 2 rc / d > 0.1; d is at least 1e-30 m. 0 for fewer than three points.
double calculate_core_repulsion(std::span<const Vec3> points, double rc, const Poll& poll = {});

/// Integral of the squared Menger curvature over arc length, in 1 / m, vertex by vertex. The curvature is 0 at a vertex
/// where one of the three distances is 1e-20 m or less.
double calculate_curvature_penalty(std::span<const Vec3> points);

}  // namespace vkm
