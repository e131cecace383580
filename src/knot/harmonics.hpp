#pragma once

/// Sums of harmonics for a block of parameters at a time: the sines and cosines of one harmonic are taken for all
/// parameters of the block together, and every sum still adds its harmonics in their order.

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "core/elementary.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

inline constexpr std::size_t harmonic_block = 128;

/// One coordinate's column for the parameters of a block.
using HarmonicColumn = std::array<double, harmonic_block>;

/// Three coordinates of the points of a block.
struct HarmonicPoints {
  std::array<HarmonicColumn, 3> axis{};

  Vec3 operator[](std::size_t k) const { return {axis[0][k], axis[1][k], axis[2][k]}; }
};

/// Cosine and sine of a harmonic's angles.
struct HarmonicTurns {
  HarmonicColumn cosine;
  HarmonicColumn sine;

  /// angles[k] for k < count.
  void turn(const HarmonicColumn& angles, std::size_t count) {
    sin_cos({angles.data(), count}, {sine.data(), count}, {cosine.data(), count});
  }
};

/// points += a cos + b sin.
void add_harmonic(HarmonicPoints& points, const HarmonicTurns& turns, std::size_t count, const Vec3& a, const Vec3& b);

}  // namespace vkm
