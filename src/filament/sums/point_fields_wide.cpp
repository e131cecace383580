#include "filament/sums/fields_wide.hpp"

#if VKM_HAS_WIDE

#include <algorithm>

#include "filament/sums/dipole_wide.hpp"
#include "filament/sums/magnetostatics.hpp"
#include "filament/sums/source_loop_wide.hpp"

namespace vkm {

namespace {

/// Two vectors of points, and the sources.
struct AtPoints {
  static constexpr std::size_t vectors = 2;
  static constexpr std::size_t ahead = 2;
  static constexpr double near = least_distance;

  std::span<const Vec3> at;
  std::span<const Vec3> elements;
  LaneView points;

  VKM_WIDE_INLINE WideVec3 offset(std::size_t s, std::size_t v) const {
    return load_wide(points, v * wide_lanes) - wide(at[std::min(s, at.size() - 1)]);
  }

  VKM_WIDE_INLINE Wide square(std::size_t s, std::size_t v) const {
    const WideVec3 r = offset(s, v);
    return dot(r, r);
  }

  VKM_WIDE_INLINE static Wide root(Wide r2, std::size_t) { return _mm512_sqrt_pd(r2); }
};

struct PotentialTerms : AtPoints {
  VKM_WIDE_INLINE static Wide divide(Wide n) { return n; }

  VKM_WIDE_INLINE WideVec3 term(std::size_t s, std::size_t, Wide n, Wide, Wide) const {
    return wide(elements[s]) * reciprocal(n);
  }
};

struct DipoleTerms : AtPoints {
  VKM_WIDE_INLINE static Wide divide(Wide n) { return wide(1.0) / n; }

  VKM_WIDE_INLINE WideVec3 term(std::size_t s, std::size_t v, Wide n, Wide r2, Wide per_n) const {
    const WideVec3 m = wide(elements[s]), r = offset(s, v);
    return dipole_field(m, r, dot(m, r), n, r2, per_n);
  }
};

template <bool near, class Terms>
VKM_WIDE bool sum_at(const Terms& terms, const LaneSpace& to) {
  WideVec3 sums[Terms::vectors];
  for (WideVec3& sum : sums) sum = wide(Vec3{});
  if (!add_terms<near>(terms, terms.at.size(), sums)) return false;
  for (std::size_t v = 0; v < Terms::vectors; ++v) store_wide(to, v * wide_lanes, sums[v]);
  return true;
}

template <class Terms>
std::optional<Lanes> sum_on(std::span<const Vec3> at, std::span<const Vec3> vectors, const Lanes& points,
                            const Poll& poll) {
  if (!has_wide() || at.empty() || !moderate(at) || !moderate(vectors)) return std::nullopt;
  for (std::size_t a = 0; a < 3; ++a) {
    if (!moderate(std::span(points.axis(a), points.size()))) return std::nullopt;
  }
  Lanes sums(points.size());
  Heartbeat heartbeat(poll);
  for (std::size_t i = 0; i < points.size(); i += Terms::vectors * wide_lanes) {
    const Terms terms{{at, vectors, view(points, i)}};
    quick_or_careful([&](auto near) { return sum_at<near>(terms, space(sums, i)); });
    heartbeat.tick();
  }
  return sums;
}

}  // namespace

std::optional<Lanes> potential_on_points(std::span<const Vec3> at, std::span<const Vec3> elements, const Lanes& points,
                                         const Poll& poll) {
  return sum_on<PotentialTerms>(at, elements, points, poll);
}

std::optional<Lanes> dipole_field_on_points(std::span<const Vec3> at, std::span<const Vec3> moments,
                                            const Lanes& points, const Poll& poll) {
  return sum_on<DipoleTerms>(at, moments, points, poll);
}

}  // namespace vkm

#endif
