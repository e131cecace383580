#include "mass/fluid_rows.hpp"

#include <cmath>

namespace vkm {

namespace {

VKM_KERNEL void add_plain(const LaneSources& edges, std::size_t n, const LaneView& points, const LaneView& edge,
                          double* sums) {
  add_sources(edges, 0, n, points, sums,
              [&edge](const LaneVec3& d, const LaneVec3& r, std::size_t, std::size_t k) VKM_TERM {
                const double along = edge.x[k] * d.x + edge.y[k] * d.y + edge.z[k] * d.z;
                return along / std::sqrt(dot(r, r) + core_radius_squared);
              });
}

}  // namespace

void add_fluid_rows(const LaneSources& edges, std::size_t n, const LaneView& points, const LaneView& edge, double* sums,
                    PairForm form) {
  if (form == PairForm::plain) return add_plain(edges, n, points, edge, sums);
  add_fluid_rows_wide(edges, n, points, edge, sums, form);
}

const PairKernel fluid_kernel("fluid mass", [](PairForm form) {
  static const Lanes at(trial_curve().at), edges(trial_curve().edges);
  double sums[lane_block] = {};
  add_fluid_rows({view(at), view(edges)}, 256, view(at), view(edges), sums, form);
});

}  // namespace vkm
