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
  constexpr std::size_t count = 256;
  Lanes at(count), edges(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double x = static_cast<double>(i) / count;
    at.set(i, {x, x * x, 0.5 - x});
    edges.set(i, {1.0 - x, x, 0.25});
  }
  double sums[lane_block] = {};
  add_fluid_rows({view(at), view(edges)}, count, view(at), view(edges), sums, form);
});

}  // namespace vkm
