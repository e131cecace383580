#include "filament/sums/pair_forms.hpp"

#if VKM_HAS_WIDE

#include "core/pair_sums_wide.hpp"
#include "filament/sums/magnetostatics.hpp"

namespace vkm {

namespace {

template <PairForm form>
struct VectorTerm {
  using sums = WideVec3;
  static constexpr std::size_t vectors = 2;  // more of them, with the sums at them, do not fit in the registers
  static constexpr double least = 0.0;

  VKM_WIDE_INLINE static Wide root(Wide r2) { return WideForm<form>::root(r2); }
};

template <PairForm form>
struct ClosedCurveTerm : VectorTerm<form> {
  static constexpr bool bounded = WideForm<form>::positive;
  Wide softening;

  VKM_WIDE_INLINE Wide square(const WideVec3& r) const { return dot(r, r); }
  VKM_WIDE_INLINE WideVec3 operator()(const WideVec3& dl, const WideVec3& r, Wide r2, Wide n, std::size_t) const {
    return cross(dl, r) * WideForm<form>::reciprocal(r2 * n + softening);
  }
};

template <PairForm form>
struct InducedTerm : VectorTerm<form> {
  static constexpr bool bounded = true;
  Wide soft2, strength;

  VKM_WIDE_INLINE Wide square(const WideVec3& r) const { return dot(r, r) + soft2; }
  VKM_WIDE_INLINE WideVec3 operator()(const WideVec3& e, const WideVec3& r, Wide r2, Wide n, std::size_t) const {
    return cross(e, r) * WideForm<form>::quotient(strength, n * r2);
  }
};

template <PairForm form>
struct WireTerm : VectorTerm<form> {
  static constexpr bool bounded = true;
  static constexpr double least = 1.01 * least_distance * least_distance;
  Wide f;

  VKM_WIDE_INLINE Wide square(const WideVec3& r) const { return dot(r, r); }
  VKM_WIDE_INLINE WideVec3 operator()(const WideVec3& dl, const WideVec3& r, Wide r2, Wide n, std::size_t) const {
    return cross(dl, r) * f * WideForm<form>::reciprocal(n * r2);
  }
};

template <class Term>
VKM_WIDE bool add_run(const PairRun& run, const Term& term) {
  return add_sources_wide(run.sources, run.first, run.last, run.points, run.sums, term);
}

template <PairForm form>
VKM_WIDE bool add_closed_curve_as(const PairRun& run, double softening) {
  return add_run(run, ClosedCurveTerm<form>{{}, wide(softening)});
}

template <PairForm form>
VKM_WIDE bool add_induced_as(const PairRun& run, double soft2, double strength) {
  return add_run(run, InducedTerm<form>{{}, wide(soft2), wide(strength)});
}

template <PairForm form>
VKM_WIDE bool add_wire_as(const PairRun& run, double f) {
  return add_run(run, WireTerm<form>{{}, wide(f)});
}

}  // namespace

bool add_closed_curve_wide(const PairRun& run, double softening, PairForm form) {
  return with_form(form, [&](auto f) { return add_closed_curve_as<f>(run, softening); });
}

bool add_induced_wide(const PairRun& run, double soft2, double strength, PairForm form) {
  return with_form(form, [&](auto f) { return add_induced_as<f>(run, soft2, strength); });
}

bool add_wire_wide(const PairRun& run, double f, PairForm form) {
  return with_form(form, [&](auto constant) { return add_wire_as<constant>(run, f); });
}

}  // namespace vkm

#endif
