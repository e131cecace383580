#pragma once

/// Points and vectors of three-space, and their arithmetic.
///
/// Sums of three products are evaluated from left to right, x first; results depend on that order in their last bits.

#include <array>
#include <cmath>

namespace vkm {

using Vec3 = std::array<double, 3>;

inline constexpr Vec3 operator+(const Vec3& a, const Vec3& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
inline constexpr Vec3 operator-(const Vec3& a, const Vec3& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
inline constexpr Vec3 operator*(const Vec3& a, double k) { return {a[0] * k, a[1] * k, a[2] * k}; }
inline constexpr Vec3 operator*(double k, const Vec3& a) { return {k * a[0], k * a[1], k * a[2]}; }
inline constexpr Vec3 operator/(const Vec3& a, double k) { return {a[0] / k, a[1] / k, a[2] / k}; }

inline constexpr Vec3& operator+=(Vec3& a, const Vec3& b) {
  a[0] += b[0];
  a[1] += b[1];
  a[2] += b[2];
  return a;
}

inline constexpr Vec3& operator-=(Vec3& a, const Vec3& b) {
  a[0] -= b[0];
  a[1] -= b[1];
  a[2] -= b[2];
  return a;
}

inline constexpr double dot(const Vec3& a, const Vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

inline constexpr Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline constexpr double norm2(const Vec3& a) { return dot(a, a); }
inline double norm(const Vec3& a) { return std::sqrt(norm2(a)); }

}  // namespace vkm
