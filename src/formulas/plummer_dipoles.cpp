#include "formulas/plummer_dipoles.hpp"

#include <algorithm>
#include <cmath>

namespace vkm {

namespace {

VKM_INLINE double term(const LaneVec3& w, const LaneVec3& d, double epsilon2) {
  const double s = dot(d, d) + epsilon2;
  return dot(d, w) / (s * std::sqrt(s));
}

VKM_KERNEL void add_plain(const PointSources& samples, std::size_t first, std::size_t last, const LaneView& block,
                          double epsilon2, double* sums) {
  add_sources(samples, first, last, block, sums,
              [epsilon2](const LaneVec3& w, const LaneVec3& d, auto...) VKM_TERM { return term(w, d, epsilon2); });
}

VKM_KERNEL void add_others(const PointSources& samples, std::size_t first, std::size_t last, const LaneView& block,
                           double epsilon2, double* sums) {
  add_sources(samples, first, last, block, sums,
              [=](const LaneVec3& w, const LaneVec3& d, std::size_t j, std::size_t k) VKM_TERM {
                return j - first == k ? -0.0 : term(w, d, epsilon2);  // -0.0 changes no sum
              });
}

}  // namespace

void add_plummer_dipoles(const PointSources& samples, std::size_t count, const LaneView& block, std::size_t first,
                         double epsilon2, double* sums, PairForm form) {
  const auto add = [&](std::size_t begin, std::size_t end) {
    if (form == PairForm::plain) return add_plain(samples, begin, end, block, epsilon2, sums);
    add_plummer_dipoles_wide(samples, begin, end, block, epsilon2, sums, form);
  };
  const std::size_t last = std::min(first + lane_block, count);
  add(0, first);
  add_others(samples, first, last, block, epsilon2, sums);
  add(last, count);
}

const PairKernel plummer_kernel("gravitational potential", [](PairForm form) {
  static const Lanes points(trial_curve().at);
  double sums[lane_block] = {};
  add_plummer_dipoles({trial_curve().at.data(), trial_curve().edges.data()}, 512, view(points), 0, 0.01, sums, form);
});

}  // namespace vkm
