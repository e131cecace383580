/// The plain loops of the tail surrogate, one closed filament, the default radii and exclusion, straight from the
/// formulas.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

struct V {
  double x, y, z;
};

V operator-(V a, V b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
V operator+(V a, V b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
V operator*(V a, double k) { return {a.x * k, a.y * k, a.z * k}; }
V cross(V a, V b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double norm(V a) { return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z); }
V unit(V a) {
  const double length = norm(a);
  return {a.x / length, a.y / length, a.z / length};
}

}  // namespace

extern "C" double plain_tail_surrogate(const double* points, std::int64_t n, std::int64_t shells, std::int64_t angles) {
  const double core = 1.40897017e-15;
  const double r_min = 1.25 * core;
  const double r_max = 8.0 * core;
  const auto at = [&](std::int64_t i) { return V{points[3 * i], points[3 * i + 1], points[3 * i + 2]}; };
  const auto p = [&](std::int64_t i) { return at((i + n) % n); };
  std::vector<double> ds(static_cast<std::size_t>(n));
  double length = 0.0;
  for (std::int64_t j = 0; j < n; ++j) {
    ds[static_cast<std::size_t>(j)] = norm(p(j + 1) - p(j));
    length += ds[static_cast<std::size_t>(j)];
  }
  const double mean_ds = length / static_cast<double>(n);
  const auto w = static_cast<std::int64_t>(std::ceil(mean_ds * 3.0 / mean_ds));
  const auto edge = [&](std::int64_t i) {
    return (r_max - r_min) * (static_cast<double>(i) / static_cast<double>(shells)) + r_min;
  };
  double total = 0.0;
  for (std::int64_t j = 0; j < n; ++j) {
    const V t = unit(p(j + 1) - p(j - 1));
    const V reference = std::fabs(t.z) < 0.9 ? V{0.0, 0.0, 1.0} : V{0.0, 1.0, 0.0};
    const V b = unit(cross(t, unit(cross(reference, t))));
    const V normal = cross(b, t);
    for (std::int64_t i = 0; i < shells; ++i) {
      const double area = (edge(i + 1) * edge(i + 1) - edge(i) * edge(i)) * 3.141592653589793;
      const double radius = (edge(i) + edge(i + 1)) * 0.5;
      double s = 0.0;
      for (std::int64_t a = 0; a < angles; ++a) {
        const double angle = (static_cast<double>(a) + 0.5) * 6.283185307179586 / static_cast<double>(angles);
        const V q = p(j) + normal * (std::cos(angle) * radius) + b * (std::sin(angle) * radius);
        V u{0.0, 0.0, 0.0};
        for (std::int64_t k = 0; k < n; ++k) {
          const std::int64_t d = std::abs(j - k);
          if (std::min(n - d, d) <= w) continue;
          const V from = at(k);
          const V to = at(k + 1 == n ? 0 : k + 1);
          const V r = q - (from + to) * 0.5;
          const double r2 = (r.x * r.x + r.y * r.y + r.z * r.z) + 1e-24;
          u = u + cross(to - from, r) * (7.705979316274285e-10 / (std::sqrt(r2) * r2));
        }
        s += u.x * u.x + u.y * u.y + u.z * u.z;
      }
      total += (s / static_cast<double>(angles)) * 3.5e-7 * (area * ds[static_cast<std::size_t>(j)]);
    }
  }
  return total;
}
