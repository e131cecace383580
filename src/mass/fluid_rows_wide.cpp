#include "mass/fluid_rows.hpp"

#if VKM_HAS_WIDE

#include "core/pair_sums_wide.hpp"

namespace vkm {

namespace {

template <PairForm form>
struct FluidTerm {
  using sums = Wide;
  static constexpr std::size_t vectors = 4;
  static constexpr bool bounded = false;  // R^2 + r_c^2 > 0
  static constexpr double least = 0.0;
  LaneView edge;

  VKM_WIDE_INLINE Wide square(const WideVec3& r) const { return dot(r, r) + wide(core_radius_squared); }
  VKM_WIDE_INLINE static Wide root(Wide r2) { return WideForm<form>::root(r2); }
  VKM_WIDE_INLINE Wide operator()(const WideVec3& d, const WideVec3&, Wide, Wide n, std::size_t lane) const {
    return WideForm<form>::quotient(dot(load_wide(edge, lane), d), n);
  }
};

template <PairForm form>
VKM_WIDE void add_as(const LaneSources& edges, std::size_t n, const LaneView& points, const LaneView& edge,
                     double* sums) {
  add_sources_wide(edges, 0, n, points, sums, FluidTerm<form>{edge});
}

}  // namespace

void add_fluid_rows_wide(const LaneSources& edges, std::size_t n, const LaneView& points, const LaneView& edge,
                         double* sums, PairForm form) {
  with_form(form, [&](auto f) { add_as<f>(edges, n, points, edge, sums); });
}

}  // namespace vkm

#endif
