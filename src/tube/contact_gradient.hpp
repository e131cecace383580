#pragma once

/// Gradients with respect to the vertices: of a polygon's length, and of the radii of its contacts. Coordinate `axis`
/// of vertex v has the index 3 v + axis in a flat gradient.
///
/// The gradient of one contact touches at most four vertices, so only these are held. Spread into a zero vector it is
/// the flat gradient, entry by entry.

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

/// Flat gradient of the length; zeros for fewer than two points.
std::vector<double> length_gradient(std::span<const Vec3> points);

/// Gradient of half the distance of the pair at its fixed parameters; empty for fewer than two points.
ContactGradient strut_gradient(std::span<const Vec3> points, const SegmentPair& pair);

/// How a kink's gradient is found.
struct KinkGradient {
  bool analytic = true;                  ///< else by central differences throughout
  double finite_difference_step = 1e-6;  ///< relative to max(|x|, 1), where the analytic form vanishes too
};

/// Gradients of the two radii of a corner, at the record's turning angle, and of the smaller one, ties to the minus
/// side; empty for fewer than three points.
ContactGradient kink_minrad_plus_gradient(std::span<const Vec3> points, const KinkRecord& kink);
ContactGradient kink_minrad_minus_gradient(std::span<const Vec3> points, const KinkRecord& kink);
ContactGradient kink_minrad_gradient(std::span<const Vec3> points, const KinkRecord& kink,
                                     const KinkGradient& how = {});

}  // namespace vkm
