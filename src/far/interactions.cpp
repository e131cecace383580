#include "far/interactions.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "far/taylor.hpp"

namespace vkm::far {

namespace {

/// Work in units of eight points with one source, measured on machines with AVX-512.
constexpr double expansion_base = 40.0;
constexpr double expansion_pair = 0.04;  // of n and m; there are (p + 6)! / (p! 6!)

struct Walk {
  const CellTree& points;
  const CellTree& sources;
  const std::vector<double>& strength;
  const Criterion& criterion;
  std::array<double, most_order + 1> work{};
  std::vector<Interaction> found{};

  void join(std::uint32_t p, std::uint32_t s) {
    const Cell& to = points.cells[p];
    const Cell& from = sources.cells[s];
    if (const int order = order_of(to, from, strength[s]); order > 0) {
      const double one_by_one = static_cast<double>((to.size() + 7) / 8 * from.size());
      found.push_back({p, s, work[static_cast<std::size_t>(order)] < one_by_one ? order : 0});
    } else if (to.is_leaf() && from.is_leaf()) {
      found.push_back({p, s, 0});
    } else if (from.is_leaf() || (!to.is_leaf() && to.radius > from.radius)) {
      join(p + 1, s);
      join(to.right, s);
    } else {
      join(p, s + 1);
      join(p, from.right);
    }
  }

  /// The order that two cells are joined by; 0 if by none.
  int order_of(const Cell& to, const Cell& from, double size) const {
    const double reach = to.radius + from.radius;
    const double d2 = norm2(to.centre - from.centre) + criterion.soft2;
    if (!(reach * reach < 0.7 * d2)) return 0;
    const double x = reach / std::sqrt(d2), gap = 1.0 / (1.0 - x);
    const double scale = criterion.allowance * d2;
    double power = size * gap;
    for (int p = 1; p <= criterion.limit; ++p) {
      power *= x;
      if (power * (p + 1.5 + x * gap) <= scale) return p;
    }
    return 0;
  }
};

}  // namespace

std::vector<Interaction> interactions_of(const CellTree& points, std::uint32_t root, const CellTree& sources,
                                         const std::vector<double>& strength, const Criterion& criterion) {
  Walk walk{points, sources, strength, criterion};
  double pairs = 1.0;
  for (int p = 0; p <= most_order; ++p) {
    walk.work[static_cast<std::size_t>(p)] = expansion_base + expansion_pair * pairs;
    pairs *= (p + 7.0) / (p + 1.0);
  }
  walk.join(root, 0);
  std::sort(walk.found.begin(), walk.found.end(), [](const Interaction& a, const Interaction& b) {
    if (a.points != b.points) return a.points < b.points;
    if (a.order != b.order) return a.order > b.order;
    return a.sources < b.sources;
  });
  return std::move(walk.found);
}

}  // namespace vkm::far
