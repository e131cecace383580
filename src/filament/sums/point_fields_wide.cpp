#include "filament/sums/point_fields_wide.hpp"

#include <algorithm>

#include "filament/sums/source_loop_wide.hpp"

namespace vkm {

#if VKM_HAS_WIDE

namespace {

/// Two vectors of points coordinate by coordinate, and the sources.
struct AtPoints {
  static constexpr std::size_t vectors = 2;
  static constexpr std::size_t ahead = 2;

  std::span<const Vec3> at;
  std::span<const Vec3> elements;
  const double *x, *y, *z;

  VKM_WIDE_INLINE WideVec3 offset(std::size_t s, std::size_t v) const {
    const Vec3& source = at[std::min(s, at.size() - 1)];
    return {load_wide(x + v * wide_lanes) - wide(source[0]), load_wide(y + v * wide_lanes) - wide(source[1]),
            load_wide(z + v * wide_lanes) - wide(source[2])};
  }

  VKM_WIDE_INLINE Wide square(std::size_t s, std::size_t v) const {
    const WideVec3 r = offset(s, v);
    return r.x * r.x + r.y * r.y + r.z * r.z;
  }

  VKM_WIDE_INLINE static Wide root(Wide r2, std::size_t) { return _mm512_sqrt_pd(r2); }

  VKM_WIDE_INLINE WideVec3 vector(std::size_t s) const {
    return {wide(elements[s][0]), wide(elements[s][1]), wide(elements[s][2])};
  }
};

struct PotentialTerms : AtPoints {
  VKM_WIDE_INLINE static Wide divide(Wide n) { return n; }

  VKM_WIDE_INLINE WideVec3 term(std::size_t s, std::size_t, Wide n, Wide, Wide) const {
    const Wide q = reciprocal(n);
    const WideVec3 dl = vector(s);
    return {dl.x * q, dl.y * q, dl.z * q};
  }
};

struct DipoleTerms : AtPoints {
  VKM_WIDE_INLINE static Wide divide(Wide n) { return wide(1.0) / n; }

  VKM_WIDE_INLINE WideVec3 term(std::size_t s, std::size_t v, Wide n, Wide r2, Wide per_n) const {
    const WideVec3 m = vector(s), r = offset(s, v);
    return wide_dipole_field(m, r, m.x * r.x + m.y * r.y + m.z * r.z, n, r2, per_n);
  }
};

template <bool near, class Terms>
VKM_WIDE bool sum_at(const Terms& terms, double* x, double* y, double* z) {
  WideVec3 sums[2];
  sums[0] = sums[1] = {wide(0.0), wide(0.0), wide(0.0)};
  if (!add_terms<near>(terms, terms.at.size(), sums)) return false;
  for (std::size_t v = 0; v < 2; ++v) {
    store_wide(x + v * wide_lanes, sums[v].x);
    store_wide(y + v * wide_lanes, sums[v].y);
    store_wide(z + v * wide_lanes, sums[v].z);
  }
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
  for (std::size_t i = 0; i < points.size(); i += 2 * wide_lanes) {
    const Terms terms{{at, vectors, points.axis(0) + i, points.axis(1) + i, points.axis(2) + i}};
    double *x = sums.axis(0) + i, *y = sums.axis(1) + i, *z = sums.axis(2) + i;
    if (!sum_at<false>(terms, x, y, z)) sum_at<true>(terms, x, y, z);
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

#else

std::optional<Lanes> potential_on_points(std::span<const Vec3>, std::span<const Vec3>, const Lanes&, const Poll&) {
  return std::nullopt;
}

std::optional<Lanes> dipole_field_on_points(std::span<const Vec3>, std::span<const Vec3>, const Lanes&, const Poll&) {
  return std::nullopt;
}

#endif

}  // namespace vkm
