// Plain loops of the topology measures and the self-distance: straight from the formulas.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

extern "C" {

double plain_writhe(const double* X, std::int64_t n) {
  double sum = 0.0;
  for (std::int64_t i = 0; i + 2 < n; ++i) {
    const double* p = X + 3 * i;
    const double ax = p[3] - p[0], ay = p[4] - p[1], az = p[5] - p[2];
    for (std::int64_t j = i + 1; j + 1 < n; ++j) {
      const double* q = X + 3 * j;
      const double rx = p[0] - q[0], ry = p[1] - q[1], rz = p[2] - q[2];
      const double r = std::sqrt(rx * rx + ry * ry + rz * rz);
      if (r < 1e-6) continue;
      const double bx = q[3] - q[0], by = q[4] - q[1], bz = q[5] - q[2];
      sum += ((ay * bz - az * by) * rx + (az * bx - ax * bz) * ry + (ax * by - ay * bx) * rz) / (r * r * r);
    }
  }
  return sum / 6.283185307179586;
}

double plain_min_self_distance(const double* X, std::int64_t n, std::int64_t exclude_window) {
  if (n < 4) return 0.0;
  double best = std::numeric_limits<double>::infinity();
  for (std::int64_t i = 0; i < n; ++i) {
    for (std::int64_t j = i + 1; j < n; ++j) {
      if (std::min(j - i, n - (j - i)) <= exclude_window) continue;
      const double dx = X[3 * i] - X[3 * j], dy = X[3 * i + 1] - X[3 * j + 1], dz = X[3 * i + 2] - X[3 * j + 2];
      const double d = std::sqrt(dx * dx + dy * dy + dz * dz);
      if (d < best) best = d;
    }
  }
  return best < std::numeric_limits<double>::infinity() ? best : 0.0;
}

}  // extern "C"
