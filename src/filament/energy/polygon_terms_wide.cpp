#include "filament/energy/polygon_terms.hpp"

#if VKM_HAS_WIDE

#include "core/pair_sums_wide.hpp"

namespace vkm {

namespace {

template <PairForm form>
struct SoftenedTerm {
  Wide rc2;

  VKM_WIDE_INLINE Wide square(const WideVec3& r) const { return dot(r, r) + rc2; }
  VKM_WIDE_INLINE static Wide root(Wide r2) { return WideForm<form>::root(r2); }
};

template <PairForm form>
struct NeumannTerm : SoftenedTerm<form> {
  VKM_WIDE_INLINE Wide operator()(const WideVec3& e, const WideVec3& f, const WideVec3&, Wide, Wide n) const {
    return wide(2.0) * WideForm<form>::quotient(dot(e, f), n);
  }
};

/// The offset is the other way round here: a factor of -1, which changes no rounding.
template <PairForm form>
struct WritheTerm : SoftenedTerm<form> {
  VKM_WIDE_INLINE Wide operator()(const WideVec3& e, const WideVec3& f, const WideVec3& r, Wide, Wide n) const {
    return WideForm<form>::quotient(wide(-2.0) * dot(cross(e, f), r), n * n * n);
  }
};

template <template <PairForm> class Term, PairForm form>
VKM_WIDE void fill_as(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                      double* terms) {
  fill_terms_wide(wide(edges.place(i)), wide(edges.element(i)), edges, first, count, Term<form>{{wide(rc2)}}, terms);
}

}  // namespace

void fill_neumann_wide(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                       double* terms, PairForm form) {
  with_form(form, [&](auto f) { fill_as<NeumannTerm, f>(edges, i, first, count, rc2, terms); });
}

void fill_writhe_wide(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                      double* terms, PairForm form) {
  with_form(form, [&](auto f) { fill_as<WritheTerm, f>(edges, i, first, count, rc2, terms); });
}

}  // namespace vkm

#endif
