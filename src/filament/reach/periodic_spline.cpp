#include "filament/reach/periodic_spline.hpp"

#include <stdexcept>

namespace vkm {

namespace {

/// Solves the cyclic system with the corner entries `corner` in both corners; every argument is a copy to work on.
std::vector<double> solve_cyclic(const std::vector<double>& sub, std::vector<double> diag,
                                 const std::vector<double>& sup, double corner, std::vector<double> rhs) {
  constexpr double least_pivot = 1e-30;
  const std::size_t n = diag.size();
  const auto check_pivot = [&](std::size_t i) {
    if (std::abs(diag[i]) < least_pivot) throw std::runtime_error("PeriodicCubicSpline3D singular cyclic solve");
  };
  std::vector<double> u(n, 0.0);
  u[0] = corner;
  u[n - 1] = corner;
  diag[0] -= corner;
  diag[n - 1] -= corner;
  for (std::size_t i = 1; i < n; ++i) {
    check_pivot(i - 1);
    const double w = sub[i] / diag[i - 1];
    diag[i] -= w * sup[i - 1];
    rhs[i] -= w * rhs[i - 1];
    u[i] -= w * u[i - 1];
  }
  check_pivot(n - 1);
  std::vector<double>& y = rhs;
  std::vector<double>& z = u;
  y[n - 1] = rhs[n - 1] / diag[n - 1];
  z[n - 1] = u[n - 1] / diag[n - 1];
  for (std::size_t i = n - 1; i-- > 0;) {
    y[i] = (rhs[i] - sup[i] * y[i + 1]) / diag[i];
    z[i] = (u[i] - sup[i] * z[i + 1]) / diag[i];
  }
  const double f = (y[n - 1] + y[0]) / (z[0] + 1.0 + z[n - 1]);
  for (std::size_t i = 0; i < n; ++i) y[i] -= f * z[i];
  return rhs;
}

}  // namespace

PeriodicCubicSpline3D::PeriodicCubicSpline3D(std::span<const Vec3> points)
    : n_(points.size()), points_(points.begin(), points.end()) {
  if (n_ < 4) throw std::invalid_argument("PeriodicCubicSpline3D requires >= 4 points");
  h_.resize(n_);
  s_.resize(n_ + 1);
  s_[0] = 0.0;
  for (std::size_t i = 0; i < n_; ++i) {
    h_[i] = std::max(norm(points_[i + 1 == n_ ? 0 : i + 1] - points_[i]), 1e-12);
    s_[i + 1] = s_[i] + h_[i];
  }
  L_ = s_[n_];
  solve_second_derivatives();
  index_knots();
}

void PeriodicCubicSpline3D::solve_second_derivatives() {
  std::vector<double> sub(n_), diag(n_), sup(n_), rhs(n_);
  for (std::size_t i = 0; i < n_; ++i) {
    const double before = h_[i == 0 ? n_ - 1 : i - 1];
    sub[i] = i > 0 ? before : 0.0;
    diag[i] = 2.0 * (h_[i] + before);
    sup[i] = i + 1 < n_ ? h_[i] : 0.0;
  }
  for (std::size_t c = 0; c < 3; ++c) {
    for (std::size_t i = 0; i < n_; ++i) {
      const std::size_t prev = i == 0 ? n_ - 1 : i - 1;
      const std::size_t next = i + 1 == n_ ? 0 : i + 1;
      rhs[i] = 6.0 * ((points_[next][c] - points_[i][c]) / h_[i] - (points_[i][c] - points_[prev][c]) / h_[prev]);
    }
    M_[c] = solve_cyclic(sub, diag, sup, h_[n_ - 1], rhs);
  }
}

void PeriodicCubicSpline3D::index_knots() {
  spans_.resize(n_);
  for (std::size_t i = 0; i < n_; ++i) {
    const std::size_t j = i + 1 == n_ ? 0 : i + 1;
    spans_[i] = {s_[i],
                 s_[i + 1],
                 h_[i],
                 points_[i],
                 points_[j],
                 {M_[0][i], M_[1][i], M_[2][i]},
                 {M_[0][j], M_[1][j], M_[2][j]},
                 (points_[j] - points_[i]) / h_[i]};
  }
  buckets_per_length_ = static_cast<double>(n_) / L_;
  first_knot_.assign(n_ + 1, 0);
  for (std::size_t i = 0; i < n_; ++i) ++first_knot_[bucket(s_[i]) + 1];
  for (std::size_t b = 0; b < n_; ++b) first_knot_[b + 1] += first_knot_[b];
}

std::pair<double, double> maximize_curvature(const PeriodicCubicSpline3D& spline, double a, double b, int iterations) {
  const auto value = [&](double s) {
    SplineSample sample;
    spline.evaluate(s, sample);
    return curvature(sample);
  };
  const double r = (std::sqrt(5.0) - 1.0) * 0.5;
  double x1 = b - (b - a) * r;
  double x2 = a + (b - a) * r;
  double f1 = value(x1);
  double f2 = value(x2);
  for (int k = 0; k < iterations; ++k) {
    if (f1 > f2) {
      b = x2;
      x2 = x1;
      f2 = f1;
      x1 = b - (b - a) * r;
      f1 = value(x1);
    } else {
      a = x1;
      x1 = x2;
      f1 = f2;
      x2 = (b - a) * r + a;
      f2 = value(x2);
    }
  }
  return f1 > f2 ? std::pair{x1, f1} : std::pair{x2, f2};
}

}  // namespace vkm
