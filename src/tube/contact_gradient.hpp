#pragma once

/// The gradient of one contact: it touches at most four vertices, so only these are held. Spread into a zero vector it
/// is the flat gradient, entry by entry.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm {

class ContactGradient {
 public:
  struct Part {
    std::uint64_t vertex;
    Vec3 value;
  };

  /// Adds to the vertex's three entries.
  void add(std::uint64_t vertex, const Vec3& value) { entry(vertex) += value; }
  /// Overwrites one entry.
  void set(std::uint64_t vertex, std::size_t axis, double value) { entry(vertex)[axis] = value; }

  /// The touched vertices, ascending.
  std::span<const Part> parts() const& { return {parts_.data(), count_}; }
  std::span<const Part> parts() && = delete;

  /// Euclidean norm, summed in order of the rows.
  double norm() const;

  /// All 3n entries; parts of vertices beyond n are dropped.
  std::vector<double> flat(std::size_t n) const;

 private:
  Vec3& entry(std::uint64_t vertex);

  std::array<Part, 4> parts_{};
  std::size_t count_ = 0;
};

/// Gradient of half the distance of the pair at its fixed parameters; empty for fewer than two points.
ContactGradient strut_gradient(std::span<const Vec3> points, const SegmentPair& pair);

/// Gradients of the two radii of a corner and of the smaller one; empty for fewer than three points.
ContactGradient kink_minrad_plus_gradient(std::span<const Vec3> points, const KinkRecord& kink);
ContactGradient kink_minrad_minus_gradient(std::span<const Vec3> points, const KinkRecord& kink);
ContactGradient kink_minrad_gradient(std::span<const Vec3> points, const KinkRecord& kink, bool use_analytic,
                                     double finite_difference_step);

}  // namespace vkm
