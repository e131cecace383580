#include "filament/topology/gauss_terms.hpp"

#if VKM_HAS_WIDE

#include "core/pair_sums_wide.hpp"

namespace vkm {

namespace {

/// The bound is an argument for every form's root, and far below what is left out.
template <PairForm form>
VKM_WIDE_INLINE Wide length_as(const WideVec3& r) {
  return WideForm<form>::root(_mm512_max_pd(dot(r, r), wide(1e-100)));
}

template <PairForm form>
VKM_WIDE void fill_as(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                      double* terms) {
  const LaneView points{columns.point(0) + first, columns.point(1) + first, columns.point(2) + first};
  const LaneView directions{columns.direction(0) + first, columns.direction(1) + first, columns.direction(2) + first};
  const WideVec3 at = wide(x), along = wide(u);
  // The next root is begun before a term is finished (pair_sums_wide.hpp).
  WideVec3 next_r = at - load_wide(points, 0);
  Wide next_n = length_as<form>(next_r);
  for (std::size_t k = 0; k < count; k += wide_lanes) {
    const WideVec3 r = next_r;
    const Wide n = next_n;
    next_r = at - load_wide(points, k + wide_lanes < count ? k + wide_lanes : k);
    next_n = length_as<form>(next_r);
    const Wide term = WideForm<form>::quotient(dot(cross(along, load_wide(directions, k)), r), n * n * n);
    const __mmask8 near = _mm512_cmp_pd_mask(n, wide(least_gauss_distance), _CMP_LT_OQ);
    store_wide(terms + k, _mm512_mask_mov_pd(term, near, wide(-0.0)));
  }
}

}  // namespace

void fill_gauss_wide(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                     double* terms, PairForm form) {
  with_form(form, [&](auto f) { fill_as<f>(x, u, columns, first, count, terms); });
}

}  // namespace vkm

#endif
