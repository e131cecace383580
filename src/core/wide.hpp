#pragma once

/// Eight doubles at once, for the few kernels that are written out by hand where the machine has AVX-512.
///
/// A square root and a division a pair keep the divider busy for 25 cycles per eight lanes, while the multipliers
/// stand idle half of that time. Here divisions are done by multiply-adds, beside the divider's roots, and give the
/// same bits as `/`: the kernels that use them have a plain twin for other machines, and differ from it in speed only.
///
/// Exactness. Let b be in [1, 2), y = 1/b (1 + d) a double, and e = 1 - b y, which a fused multiply-add gives exactly
/// once y is within one unit in the last place; y + y e = 1/b (1 - e^2) before it is rounded.
///   Reciprocal. The step before the last rounds upwards, so that y is 1/b rounded up, 0 <= -e < 2^-52. Say that 1/b
///   lies just above the midpoint m of two doubles: 1/b - m = k 2^-106 / b with an integer k >= 1. Then -e < b 2^-54,
///   and y + y e falls short of 1/b by e^2 / b < b 2^-108, which is less than the distance to m because b^2 < 4 k. So
///   the last rounding gives 1/b correctly rounded, for every b. (Where a double lies within 2^-55 below 1/b, y may be
///   that one; e is then too small to matter.)
///   Quotient. With y = 1/b correctly rounded, q = a y rounded, and r = a - b q, the sum q + r y differs from a/b by
///   |q - a/b| |b y - 1|. If a/b is near a midpoint, q is next to it, and the same count of units shows that the
///   rounding cannot cross it; else the difference is too small to matter.
///   Root. With s = sqrt(x) in [1, 2), h about 1 / (2 s) and g near s, the sum g + (x - g^2) h differs from s by
///   s (d^2 / 2 + d c), where d and c are the relative errors of g and h. In `square_root` both are below 1.85 2^-54
///   before they are rounded, so that g is next to every midpoint m near s. Now D = 2^106 (x - m^2) is an integer, 7
///   mod 8, as m is odd in units of 2^-53. In the units of D the sum errs by 1, downwards, and by up to s (s + 1.85)
///   either way: it can cross the midpoint for D = -1, and for D = 7 if s > 1.695. Solving m^2 = -7 mod 2^54 and 2^55
///   shows no such s for D = 7; D = -1 is x = 1 + 2^-52 and x = 4 - 2^-51 alone. Those two, at every exponent, are
///   tried when the kernels are chosen.
/// All hold while nothing overflows or gets subnormal: `moderate` asks that of the data beforehand.

///
/// Hand-written kernels stand in files of their own, named *_wide, which hold nothing where VKM_HAS_WIDE is 0. Plain
/// code sees the declarations of those files only, and keeps its own loop for when they decline.

#include <cmath>
#include <cstddef>
#include <span>

#include "core/lane_view.hpp"
#include "core/vec3.hpp"

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && defined(__gnu_linux__)
// GCC 12 takes the undefined value inside its own intrinsics for a mistake.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <immintrin.h>
#pragma GCC diagnostic pop
#define VKM_HAS_WIDE 1
// Without no-tree-ter, GCC 12 puts off sums until their terms fill the stack.
#define VKM_WIDE __attribute__((target("arch=x86-64-v4"), optimize("no-tree-ter")))
#define VKM_WIDE_INLINE VKM_WIDE __attribute__((always_inline)) inline
#else
#define VKM_HAS_WIDE 0
#endif

namespace vkm {

/// Whether functions marked VKM_WIDE run on this machine, and are wanted.
bool has_wide();

/// Takes the plain twins instead, so that tests can hold the two against each other.
void want_wide(bool wanted);

/// Whether every number is 0 or of a magnitude from 1e-40 to 1e40. Differences of such coordinates are 0 or at least
/// 2^-186, so that their products, cubes, and the remainders of divisions are far from both ends of the range.
inline bool moderate(double x) { return x == 0.0 || (std::abs(x) >= 1e-40 && std::abs(x) <= 1e40); }

/// The same for numbers whose triple products are divided by cubes.
inline bool modest(double x) { return x == 0.0 || (std::abs(x) >= 1e-20 && std::abs(x) <= 1e20); }

inline bool modest(std::span<const Vec3> vectors) {
  bool all = true;
  for (const Vec3& a : vectors) all &= modest(a[0]) & modest(a[1]) & modest(a[2]);
  return all;
}

inline bool moderate(std::span<const double> values) {
  bool all = true;
  for (const double x : values) all &= moderate(x);
  return all;
}

inline bool moderate(std::span<const Vec3> vectors) {
  bool all = true;
  for (const Vec3& a : vectors) all &= moderate(a[0]) & moderate(a[1]) & moderate(a[2]);
  return all;
}

#if VKM_HAS_WIDE

using Wide = __m512d;  // with the arithmetic operators of the compiler
inline constexpr std::size_t wide_lanes = 8;

VKM_WIDE_INLINE Wide wide(double x) { return _mm512_set1_pd(x); }
VKM_WIDE_INLINE Wide load_wide(const double* from) { return _mm512_loadu_pd(from); }
VKM_WIDE_INLINE void store_wide(double* to, Wide values) { _mm512_storeu_pd(to, values); }

/// x y + z and z - x y, rounded once.
VKM_WIDE_INLINE Wide multiply_add(Wide x, Wide y, Wide z) { return _mm512_fmadd_pd(x, y, z); }
VKM_WIDE_INLINE Wide subtract_product(Wide x, Wide y, Wide z) { return _mm512_fnmadd_pd(x, y, z); }

/// Eight points or vectors, coordinate by coordinate. Products are summed x first, as in vec3.hpp.
struct WideVec3 {
  Wide x, y, z;
};

VKM_WIDE_INLINE WideVec3 wide(const Vec3& a) { return {wide(a[0]), wide(a[1]), wide(a[2])}; }
VKM_WIDE_INLINE WideVec3 operator-(const WideVec3& a, const WideVec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
VKM_WIDE_INLINE WideVec3 operator*(const WideVec3& a, Wide k) { return {a.x * k, a.y * k, a.z * k}; }
VKM_WIDE_INLINE Wide dot(const WideVec3& a, const WideVec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

VKM_WIDE_INLINE WideVec3 cross(const WideVec3& a, const WideVec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

VKM_WIDE_INLINE void operator+=(WideVec3& sum, const WideVec3& term) {
  sum.x += term.x;
  sum.y += term.y;
  sum.z += term.z;
}

/// The eight points of a view that begin at `first`, and eight times the same one.
VKM_WIDE_INLINE WideVec3 load_wide(const LaneView& from, std::size_t first) {
  return {load_wide(from.x + first), load_wide(from.y + first), load_wide(from.z + first)};
}
VKM_WIDE_INLINE WideVec3 spread_wide(const LaneView& from, std::size_t index) {
  return {wide(from.x[index]), wide(from.y[index]), wide(from.z[index])};
}
VKM_WIDE_INLINE void store_wide(const LaneSpace& to, std::size_t first, const WideVec3& values) {
  store_wide(to.x + first, values.x);
  store_wide(to.y + first, values.y);
  store_wide(to.z + first, values.z);
}

/// 1 / b from an approximation with a relative error below 2^-27.9.
VKM_WIDE_INLINE Wide reciprocal(Wide b, Wide y) {
  constexpr int upwards = _MM_FROUND_TO_POS_INF | _MM_FROUND_NO_EXC;
  const Wide above = _mm512_fmadd_round_pd(y, subtract_product(b, y, wide(1.0)), y, upwards);
  return multiply_add(above, subtract_product(b, above, wide(1.0)), above);
}

/// 1 / b for b > 0.
VKM_WIDE_INLINE Wide reciprocal(Wide b) {
  const Wide seed = _mm512_rcp14_pd(b);
  return reciprocal(b, multiply_add(seed, subtract_product(b, seed, wide(1.0)), seed));
}

/// Root of x > 0 without the divider.
VKM_WIDE_INLINE Wide square_root(Wide x) {
  const Wide seed = _mm512_rsqrt14_pd(x);
  Wide h = seed * wide(0.5);
  h = multiply_add(h, subtract_product(x * seed, h, wide(0.5)), h);
  Wide g = (x + x) * h;
  const Wide r = subtract_product(g, h, wide(0.5));
  g = multiply_add(g, r, g);
  h = multiply_add(h, r, h);
  return multiply_add(subtract_product(g, g, x), h, g);
}

/// a / b from 1 / b.
VKM_WIDE_INLINE Wide quotient(Wide a, Wide b, Wide reciprocal_b) {
  const Wide q = a * reciprocal_b;
  return multiply_add(subtract_product(b, q, a), reciprocal_b, q);
}

#endif

}  // namespace vkm
