#include "far/near_sums.hpp"

#include <algorithm>

#include "far/eight.hpp"

namespace vkm::far {

namespace {

template <int steps, bool leave_out>
VKM_INLINE void add_elements(const NearSources& sources, std::size_t first, std::size_t last, double soft2,
                             const NearPoints& points, std::size_t begin, std::size_t end) {
  for (std::size_t p = begin; p < end; p += eight) {
    Eight x, y, z, u, v, w, one = {}, two = {};
    load(points.at.x + p, x), load(points.at.y + p, y), load(points.at.z + p, z);
    load(points.sums.x + p, u), load(points.sums.y + p, v), load(points.sums.z + p, w);
    if constexpr (leave_out) load(points.first_left_out + p, one), load(points.second_left_out + p, two);
    for (std::size_t s = first; s < last; ++s) {
      const Eight rx = x - sources.at.x[s], ry = y - sources.at.y[s], rz = z - sources.at.z[s];
      const Eight r2 = rx * rx + ry * ry + rz * rz + soft2;
      Eight root;
      reciprocal_root<steps>(r2, root);
      if constexpr (leave_out) root = (one == sources.number[s]) | (two == sources.number[s]) ? Eight{} : root;
      const Eight weight = root * root * root;
      const double ex = sources.element.x[s], ey = sources.element.y[s], ez = sources.element.z[s];
      u += (ey * rz - ez * ry) * weight;
      v += (ez * rx - ex * rz) * weight;
      w += (ex * ry - ey * rx) * weight;
    }
    for (std::size_t k = 0; k < std::min(eight, end - p); ++k) {
      points.sums.x[p + k] = u[k];
      points.sums.y[p + k] = v[k];
      points.sums.z[p + k] = w[k];
    }
  }
}

template <int steps>
VKM_KERNEL void add_all(const NearSources& sources, std::size_t first, std::size_t last, double soft2,
                        const NearPoints& points, std::size_t begin, std::size_t end) {
  add_elements<steps, false>(sources, first, last, soft2, points, begin, end);
}

template <int steps>
VKM_KERNEL void add_others(const NearSources& sources, std::size_t first, std::size_t last, double soft2,
                           const NearPoints& points, std::size_t begin, std::size_t end) {
  add_elements<steps, true>(sources, first, last, soft2, points, begin, end);
}

}  // namespace

void add_near(const NearSources& sources, std::size_t first, std::size_t last, const NearRule& rule,
              const NearPoints& points, std::size_t begin, std::size_t end) {
  const auto add = rule.leave_out ? (rule.steps <= 2   ? add_others<2>
                                     : rule.steps == 3 ? add_others<3>
                                                       : add_others<4>)
                                  : (rule.steps <= 2   ? add_all<2>
                                     : rule.steps == 3 ? add_all<3>
                                                       : add_all<4>);
  add(sources, first, last, rule.soft2, points, begin, end);
}

}  // namespace vkm::far
