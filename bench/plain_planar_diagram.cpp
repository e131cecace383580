// Plain loop of the planar diagram: every pair of segments of every projection, straight from the formulas.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace {

double uniform(std::mt19937& g) {
  const auto low = static_cast<double>(g());
  const auto high = static_cast<double>(g());
  return (low + high * 4294967296.0) / 18446744073709551616.0;
}

struct Crossing {
  std::int64_t i, j;
  double t, u;
  bool over;
};

struct Passage {
  double position;
  std::size_t crossing;
  bool over;
};

}  // namespace

extern "C" {

/// Writes at most `room` rows of four labels and returns how many there are.
double plain_pd_from_curve(const double* p, std::int64_t n, std::int64_t tries, std::int64_t seed, double min_angle,
                           double depth_tol, double* rows, std::int64_t room) {
  std::mt19937 g(static_cast<std::uint32_t>(seed));
  std::vector<Crossing> best, found;
  std::vector<double> X(static_cast<std::size_t>(n)), Y(X), Z(X);
  for (std::int64_t attempt = 0; attempt < tries; ++attempt) {
    double v[4];
    for (int k = 0; k < 4; k += 2) {
      double x, y, s;
      do {
        x = 2 * uniform(g) - 1;
        y = 2 * uniform(g) - 1;
        s = x * x + y * y;
      } while (s >= 1 || s == 0);
      const double f = std::sqrt(-2 * std::log(s) / s);
      v[k] = x * f;
      v[k + 1] = y * f;
    }
    const double r = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]) + 1e-18;
    const double d[3] = {v[0] / r, v[1] / r, v[2] / r};
    const bool far = std::abs(d[0]) < 0.9;
    double a[3] = {far ? 0.0 : -d[2], far ? d[2] : 0.0, far ? -d[1] : d[0]};
    const double q = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]) + 1e-18;
    for (double& c : a) c /= q;
    const double b[3] = {d[1] * a[2] - d[2] * a[1], d[2] * a[0] - d[0] * a[2], d[0] * a[1] - d[1] * a[0]};
    for (std::int64_t i = 0; i < n; ++i) {
      const double* c = p + 3 * i;
      const auto k = static_cast<std::size_t>(i);
      X[k] = c[0] * a[0] + c[1] * a[1] + c[2] * a[2];
      Y[k] = c[0] * b[0] + c[1] * b[1] + c[2] * b[2];
      Z[k] = c[0] * d[0] + c[1] * d[1] + c[2] * d[2];
    }
    found.clear();
    for (std::int64_t i = 0; i < n; ++i) {
      for (std::int64_t j = i + 2; j < n; ++j) {
        if (i == 0 && j == n - 1) continue;
        const auto A = static_cast<std::size_t>(i), B = static_cast<std::size_t>((i + 1) % n);
        const auto C = static_cast<std::size_t>(j), D = static_cast<std::size_t>((j + 1) % n);
        const double ex = X[A] - X[B], ey = Y[A] - Y[B], fx = X[C] - X[D], fy = Y[C] - Y[D];
        const double gx = X[A] - X[C], gy = Y[A] - Y[C];
        const double denom = fy * ex - fx * ey;
        if (std::abs(denom) < 1e-12) continue;
        const double t = (fy * gx - fx * gy) / denom, u = (gx * ey - gy * ex) / denom;
        if (!(t > 1e-12 && t < 0.999999999999 && u > 1e-12 && u < 0.999999999999)) continue;
        const double z1 = Z[A] + t * (Z[B] - Z[A]), z2 = Z[C] + u * (Z[D] - Z[C]);
        if (std::abs(z1 - z2) < depth_tol) continue;
        const double cosine = (ex * fx + ey * fy) / ((std::hypot(ex, ey) + 1e-18) * (std::hypot(fx, fy) + 1e-18));
        if (min_angle > std::acos(std::abs(std::clamp(cosine, -1.0, 1.0))) * 180 / 3.141592653589793) continue;
        found.push_back({i, j, t, u, z1 > z2});
      }
    }
    if (found.size() > best.size()) best = found;
  }
  std::vector<Passage> passages;
  for (std::size_t c = 0; c < best.size(); ++c) {
    const auto count = static_cast<double>(n);
    passages.push_back({(static_cast<double>(best[c].i) + best[c].t) / count, c, best[c].over});
    passages.push_back({(static_cast<double>(best[c].j) + best[c].u) / count, c, !best[c].over});
  }
  std::sort(passages.begin(), passages.end(),
            [](const Passage& s, const Passage& o) { return s.position < o.position; });
  for (std::size_t k = 0; k < passages.size(); ++k) {
    const std::size_t row = passages[k].crossing;
    if (row >= static_cast<std::size_t>(room)) continue;
    rows[4 * row + (passages[k].over ? 1 : 0)] = static_cast<double>(k == 0 ? passages.size() : k);
    rows[4 * row + (passages[k].over ? 3 : 2)] = static_cast<double>(k + 1);
  }
  return static_cast<double>(best.size());
}

}  // extern "C"
