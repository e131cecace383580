#include "filament/topology/gauss_terms.hpp"

#if VKM_HAS_WIDE

#include "core/pair_sums_wide.hpp"

namespace vkm {

namespace {

template <PairForm form>
struct GaussTerm {
  /// The bound is an argument for every form's root, and far below what is left out.
  VKM_WIDE_INLINE static Wide square(const WideVec3& r) { return _mm512_max_pd(dot(r, r), wide(1e-100)); }
  VKM_WIDE_INLINE static Wide root(Wide r2) { return WideForm<form>::root(r2); }
  VKM_WIDE_INLINE Wide operator()(const WideVec3& u, const WideVec3& v, const WideVec3& r, Wide, Wide n) const {
    const Wide term = WideForm<form>::quotient(dot(cross(u, v), r), n * n * n);
    const __mmask8 near = _mm512_cmp_pd_mask(n, wide(least_gauss_distance), _CMP_LT_OQ);
    return _mm512_mask_mov_pd(term, near, wide(-0.0));
  }
};

template <PairForm form>
VKM_WIDE void fill_as(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                      double* terms) {
  const LaneSources sources{{columns.point(0), columns.point(1), columns.point(2)},
                            {columns.direction(0), columns.direction(1), columns.direction(2)}};
  fill_terms_wide(wide(x), wide(u), sources, first, count, GaussTerm<form>{}, terms);
}

}  // namespace

void fill_gauss_wide(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                     double* terms, PairForm form) {
  with_form(form, [&](auto f) { fill_as<f>(x, u, columns, first, count, terms); });
}

}  // namespace vkm

#endif
