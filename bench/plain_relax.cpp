/// The plain pair loop of the particle evaluator's relaxation, one closed filament, straight from the formulas.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

extern "C" double plain_relax(const double* points, std::int64_t n, std::int64_t iterations, double dt, double* out) {
  std::vector<double> p(points, points + 3 * n);
  std::vector<double> v(3 * n, 0.0);
  std::vector<double> f(3 * n);
  double centre[3];
  const auto find_centre = [&] {
    for (int a = 0; a < 3; ++a) centre[a] = 0.0;
    for (std::int64_t i = 0; i < n; ++i) {
      for (int a = 0; a < 3; ++a) centre[a] += p[3 * i + a];
    }
    for (int a = 0; a < 3; ++a) centre[a] /= static_cast<double>(n);
  };
  for (std::int64_t sweep = 0; sweep < iterations; ++sweep) {
    find_centre();
    for (std::int64_t i = 0; i < n; ++i) {
      const std::int64_t prev = (i + n - 1) % n;
      const std::int64_t next = (i + 1) % n;
      double force[3] = {0.0, 0.0, 0.0};
      for (int a = 0; a < 3; ++a) {
        force[a] += ((p[3 * next + a] - p[3 * i + a]) + (p[3 * prev + a] - p[3 * i + a])) * 25.0;
        force[a] += (centre[a] - p[3 * i + a]) * 15.0;
      }
      for (std::int64_t j = 0; j < n; ++j) {
        if (j == i || j == prev || j == next) continue;
        const double dx = p[3 * i] - p[3 * j];
        const double dy = p[3 * i + 1] - p[3 * j + 1];
        const double dz = p[3 * i + 2] - p[3 * j + 2];
        const double r2 = dx * dx + dy * dy + dz * dz;
        if (r2 > 1e-8 && r2 < 0.04000000000000001) {
          const double r = std::sqrt(r2);
          const double strength = std::min(200.0, 0.5 / (r2 * r2));
          force[0] += (dx / r) * strength;
          force[1] += (dy / r) * strength;
          force[2] += (dz / r) * strength;
        }
      }
      for (int a = 0; a < 3; ++a) f[3 * i + a] = force[a];
    }
    for (std::int64_t k = 0; k < 3 * n; ++k) {
      v[k] = (dt * f[k] + v[k]) * 0.7;
      p[k] = dt * v[k] + p[k];
    }
  }
  find_centre();
  double radius = 0.0;
  for (std::int64_t i = 0; i < n; ++i) {
    double r2 = 0.0;
    for (int a = 0; a < 3; ++a) r2 += (p[3 * i + a] - centre[a]) * (p[3 * i + a] - centre[a]);
    radius = std::max(radius, std::sqrt(r2));
  }
  if (radius < 1e-12) radius = 1e-6;
  for (std::int64_t i = 0; i < n; ++i) {
    for (int a = 0; a < 3; ++a) out[3 * i + a] = (p[3 * i + a] - centre[a]) * (2.81794034e-15 / radius) + centre[a];
  }
  return radius;
}
