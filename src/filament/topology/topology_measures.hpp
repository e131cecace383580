#pragma once

/// How a filament is knotted, linked and twisted, straight from its vertices: discrete Gauss sums over edge starts.
///
/// These are sums over the edges d[i] = X[i+1] - X[i] of an open vertex list. A closing edge does not exist: repeat the
/// first vertex at the end to close a curve. The kernel is taken at the starts of the edges, not at their midpoints.
/// `polygonal_gauss.hpp` has the exact form for closed polygons.

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// (1 / 2 pi) sum over i < j of ((d[i] x d[j]) . R) / |R|^3 with R = X[i] - X[j], dimensionless. Pairs of starts nearer
/// than 1e-6 are left out; neighbouring edges take part. 0 for fewer than two edges.
double compute_writhe(std::span<const Vec3> X, const Poll& poll = {}, int threads = 1);

/// The Gauss linking integral of two open lists, over 4 pi and rounded to the nearest integer, halves away from zero.
/// A NaN sum gives 0, a sum beyond 32 bits the nearest 32-bit integer. 0 when either list has no edge.
std::int32_t compute_linking_number(std::span<const Vec3> A, std::span<const Vec3> B, const Poll& poll = {});

/// (1 / 2 pi) sum over the inner entries of (T[i] x dN) . N[i], dN = (N[i+1] - N[i-1]) / 2: turns of the frame's
/// normal. The sign is opposite to the usual T . (N x dN): a right-handed turn counts -1. 0 for fewer than three
/// tangents; std::invalid_argument when there are fewer normals than tangents.
double compute_twist(std::span<const Vec3> T, std::span<const Vec3> N);

/// The same sum as compute_writhe(X). There is no twist term: callers compare the two.
double compute_centerline_helicity(std::span<const Vec3> X, const Poll& poll = {});

/// Pairs (i, j), j >= i + 5, with |X[i] - X[j]| < threshold, in lexicographic order; no wrap-around at the end.
std::vector<std::pair<int, int>> detect_reconnection_candidates(std::span<const Vec3> X, double threshold,
                                                                const Poll& poll = {});

}  // namespace vkm
