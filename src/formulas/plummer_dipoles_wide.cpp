#include "formulas/plummer_dipoles.hpp"

#if VKM_HAS_WIDE

#include "core/pair_sums_wide.hpp"

namespace vkm {

namespace {

template <PairForm form>
struct PlummerTerm {
  using sums = Wide;
  static constexpr std::size_t vectors = 2;
  static constexpr bool bounded = false;  // d^2 + epsilon^2 > 0
  static constexpr double least = 0.0;
  Wide epsilon2;

  VKM_WIDE_INLINE Wide square(const WideVec3& d) const { return dot(d, d) + epsilon2; }
  VKM_WIDE_INLINE static Wide root(Wide s) { return WideForm<form>::root(s); }
  VKM_WIDE_INLINE Wide operator()(const WideVec3& w, const WideVec3& d, Wide s, Wide n, std::size_t) const {
    return WideForm<form>::quotient(dot(d, w), s * n);
  }
};

template <PairForm form>
VKM_WIDE void add_as(const PointSources& samples, std::size_t first, std::size_t last, const LaneView& block,
                     double epsilon2, double* sums) {
  add_sources_wide(samples, first, last, block, sums, PlummerTerm<form>{wide(epsilon2)});
}

}  // namespace

void add_plummer_dipoles_wide(const PointSources& samples, std::size_t first, std::size_t last, const LaneView& block,
                              double epsilon2, double* sums, PairForm form) {
  with_form(form, [&](auto f) { add_as<f>(samples, first, last, block, epsilon2, sums); });
}

}  // namespace vkm

#endif
