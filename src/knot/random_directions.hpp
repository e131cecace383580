#pragma once

/// Seeded random directions, and the plane of projection that belongs to one.
///
/// The stream is part of the results and repeats bit for bit from a seed: the 32-bit Mersenne Twister, a uniform of 53
/// bits from two of its outputs, low word first, and Marsaglia's polar method (G. Marsaglia, T. A. Bray, SIAM Review 6
/// (1964) 260), which gives the value made of x first and keeps that of y. The standard library's normal distribution
/// returns them the other way round, so it is not used.

#include <cmath>
#include <optional>
#include <random>

#include "core/elementary.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// In [0, 1).
inline double uniform_53_bits(std::mt19937& generator) {
  const auto low = static_cast<double>(generator());
  const auto high = static_cast<double>(generator());
  const double u = (low + high * 0x1p32) / 0x1p64;
  return u < 1.0 ? u : 0x1.fffffffffffffp-1;  // rounding of the sum may have reached 1
}

/// Normal deviates of mean 0 and standard deviation 1.
class PolarNormal {
 public:
  double operator()(std::mt19937& generator) {
    if (kept_) {
      const double value = *kept_;
      kept_.reset();
      return value;
    }
    double x, y, s;
    do {
      x = 2.0 * uniform_53_bits(generator) - 1.0;
      y = 2.0 * uniform_53_bits(generator) - 1.0;
      s = x * x + y * y;
    } while (!(0.0 < s && s < 1.0 && x != 0.0 && y != 0.0));
    const double factor = std::sqrt(-2.0 * vkm::log(s) / s);
    kept_ = y * factor;
    return x * factor;
  }

 private:
  std::optional<double> kept_;
};

/// Three normal deviates over their norm plus `guard`.
inline Vec3 random_direction(std::mt19937& generator, PolarNormal& normal, double guard) {
  const double x = normal(generator);
  const double y = normal(generator);
  const double z = normal(generator);
  const Vec3 v{x, y, z};
  return v / (norm(v) + guard);
}

/// Axes a, b of the plane normal to d: a = d x w over its norm plus `guard`, b = d x a.
struct ProjectionPlane {
  Vec3 a;
  Vec3 b;
};

/// The helper axis w is x where `x_is_far`, which says that d is not nearly parallel to x, else y.
inline ProjectionPlane projection_plane(const Vec3& d, bool x_is_far, double guard) {
  const Vec3 w = x_is_far ? Vec3{1.0, 0.0, 0.0} : Vec3{0.0, 1.0, 0.0};
  Vec3 a = cross(d, w);
  a = a / (norm(a) + guard);
  return {a, cross(d, a)};
}

}  // namespace vkm
