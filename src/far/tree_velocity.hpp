#pragma once

/// The Biot-Savart velocity of many elements at many points in about n log n work: a tree code of cells with cells.
///
/// Sums u(x) = sum e x R / (R^2 + a^2)^(3/2), e the element vector times Gamma / (4 pi) of its filament. Near elements
/// are summed one by one, far ones by cells whose Taylor expansions are passed on to cells of points (L. Greengard and
/// V. Rokhlin, J. Comput. Phys. 73 (1987) 325; W. Dehnen, J. Comput. Phys. 179 (2002) 27 for walks of two trees). The
/// sum at a point does not depend on the number of threads. Memory is linear.

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm::far {

/// Sources: places in m, and vectors in m times Gamma / (4 pi).
struct Elements {
  std::span<const Vec3> at, vector;
};

/// Numbers of the elements that a point leaves out; `none` leaves nothing out.
struct LeftOut {
  static constexpr double none = -1.0;
  double first = none, second = none;
};

struct TreeRule {
  double soft = 0.0;       // m, a
  double allowance = 0.0;  // m/s, of the remainder for each pair of cells (interactions.hpp)
  int limit = 10;          // order of expansions at most
  int steps = 4;           // of the near roots (eight.hpp)
  int threads = 1;
};

/// The trees over elements and points, for sums by any number of rules.
class TreeSum {
 public:
  /// `left_out` is empty, or has an entry a point. An element that is left out must be in line with its point, as a far
  /// one is summed all the same. All numbers must be finite.
  TreeSum(const Elements& elements, std::span<const Vec3> points, std::span<const LeftOut> left_out);
  TreeSum(TreeSum&&) noexcept;
  ~TreeSum();

  /// The velocity at each point.
  std::vector<Vec3> velocity(const TreeRule& rule, const Poll& poll);

 private:
  struct Trees;
  std::unique_ptr<Trees> trees_;
};

}  // namespace vkm::far
