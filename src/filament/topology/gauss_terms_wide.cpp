#include "filament/topology/gauss_terms.hpp"

#if VKM_HAS_WIDE

#include "core/pair_sums_wide.hpp"

namespace vkm {

namespace {

template <PairForm form>
VKM_WIDE void fill_as(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                      double* terms) {
  const LaneView points{columns.point(0) + first, columns.point(1) + first, columns.point(2) + first};
  const LaneView directions{columns.direction(0) + first, columns.direction(1) + first, columns.direction(2) + first};
  const WideVec3 at = wide(x), along = wide(u);
  for (std::size_t k = 0; k < count; k += wide_lanes) {
    const WideVec3 r = at - load_wide(points, k);
    // The bound is an argument for every form's root, and far below what is left out.
    const Wide n = WideForm<form>::root(_mm512_max_pd(dot(r, r), wide(1e-100)));
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
