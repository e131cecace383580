#pragma once

/// The cubic spline that closes on itself, through the points of a polygon: the smooth curve C(s) behind it.
///
/// The parameter s is the length along the polygon (chord length), from 0 at the first point to L. On the span from
/// knot i to knot i + 1, with A = (s[i+1] - s) / h, B = (s - s[i]) / h and the second derivatives M at the knots,
///
///   C   = ((B^3 - B) M[i+1] + (A^3 - A) M[i]) h^2 / 6 + P[i+1] B + P[i] A.
///
/// M solves the cyclic tridiagonal system that makes C' continuous (de Boor, A Practical Guide to Splines, 1978), by
/// the Sherman-Morrison correction of a plain tridiagonal solve.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "core/kernel.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// The spline at one parameter.
struct SplineSample {
  Vec3 position{};
  Vec3 tangent{};  // C'; its norm is near 1, as s is near arc length
  Vec3 second{};   // C''
  double s = 0.0;  // wrapped into [0, L]
};

class PeriodicCubicSpline3D {
 public:
  /// Throws std::invalid_argument below four points and std::runtime_error when the cyclic system is singular.
  explicit PeriodicCubicSpline3D(std::span<const Vec3> points);

  std::size_t n() const { return n_; }
  double L() const { return L_; }
  const std::vector<Vec3>& points() const { return points_; }
  const std::vector<double>& s() const { return s_; }                 // n + 1 knots
  const std::vector<double>& h() const { return h_; }                 // n spans
  const std::array<std::vector<double>, 3>& M() const { return M_; }  // second derivatives at the knots, by axis

  /// `s` modulo L, negative values counted from the end.
  double wrap(double s) const {
    if (!(L_ > 0.0)) return 0.0;
    if (s >= 0.0 && s < L_) return s;  // what fmod gives, at a tenth of its time
    s = std::fmod(s, L_);
    return s < 0.0 ? s + L_ : s;
  }

  VKM_INLINE void evaluate(double s, SplineSample& out) const {
    out.s = wrap(s);
    const Span& span = spans_[span_at(out.s)];
    const double h = span.h;
    const double A = (span.end - out.s) / h;
    const double B = (out.s - span.begin) / h;
    const double a0 = A * A * A - A, b0 = B * B * B - B;
    const double a1 = 3.0 * A * A - 1.0, b1 = 3.0 * B * B - 1.0;
    for (std::size_t c = 0; c < 3; ++c) {
      const double Mi = span.Mi[c], Mj = span.Mj[c];
      out.position[c] = (b0 * Mj + a0 * Mi) * h * h / 6.0 + (span.Pj[c] * B + span.Pi[c] * A);
      out.tangent[c] = (b1 * Mj - a1 * Mi) * h / 6.0 + span.slope[c];
      out.second[c] = Mj * B + Mi * A;
    }
  }

  double speed(double s) const {
    SplineSample sample;
    evaluate(s, sample);
    return norm(sample.tangent);
  }

 private:
  /// What evaluation needs of one span, side by side in memory.
  struct Span {
    double begin, end, h;
    Vec3 Pi, Pj, Mi, Mj;
    Vec3 slope;  // (Pj - Pi) / h
  };

  std::size_t bucket(double s) const {
    const double place = s * buckets_per_length_;
    return place < static_cast<double>(n_) ? static_cast<std::size_t>(place) : n_ - 1;
  }

  /// The last span that begins at or before `s`. n equal buckets over [0, L] narrow the bisection to the knots of one
  /// bucket; `bucket` never decreases, so knots of lower buckets lie below `s` and those of higher ones above.
  std::size_t span_at(double s) const {
    const std::size_t b = bucket(s);
    std::size_t lo = first_knot_[b] > 0 ? first_knot_[b] - 1 : 0;
    std::size_t hi = first_knot_[b + 1];
    while (lo + 1 < hi) {
      const std::size_t mid = (lo + hi) / 2;
      if (s >= s_[mid]) {
        lo = mid;
      } else {
        hi = mid;
      }
    }
    return lo;
  }

  void solve_second_derivatives();
  void index_knots();

  std::size_t n_;
  double L_ = 0.0;
  std::vector<Vec3> points_;
  std::vector<double> s_;
  std::vector<double> h_;
  std::array<std::vector<double>, 3> M_;
  std::vector<Span> spans_;
  double buckets_per_length_ = 0.0;
  std::vector<std::size_t> first_knot_;  // number of knots in the buckets before, n + 1 entries
};

/// |C' x C''| / |C'|^3 in 1/length; 0 where |C'| is not above 1e-20.
inline double curvature(const SplineSample& sample) {
  const double speed = norm(sample.tangent);
  if (!(speed > 1e-20)) return 0.0;
  return norm(cross(sample.tangent, sample.second)) / (speed * speed * speed);
}

/// Golden-section search for a maximum of the curvature between a and b: its parameter and its value.
std::pair<double, double> maximize_curvature(const PeriodicCubicSpline3D& spline, double a, double b, int iterations);

}  // namespace vkm
