// Plain loops of the comparison of curves: straight from the formula.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

extern "C" {

double plain_directed_hausdorff(const double* A, std::int64_t n, const double* B, std::int64_t m) {
  double largest = 0.0;
  for (std::int64_t i = 0; i < n; ++i) {
    const double* p = A + 3 * i;
    double least = std::numeric_limits<double>::infinity();
    for (std::int64_t j = 0; j < m; ++j) {
      const double* s = B + 3 * j;
      const double* e = B + 3 * ((j + 1) % m);
      const double dx = e[0] - s[0], dy = e[1] - s[1], dz = e[2] - s[2];
      const double rx = p[0] - s[0], ry = p[1] - s[1], rz = p[2] - s[2];
      const double d2 = dx * dx + dy * dy + dz * dz;
      const double t = d2 > 0.0 ? std::clamp((rx * dx + ry * dy + rz * dz) / d2, 0.0, 1.0) : 0.0;
      const double x = rx - t * dx, y = ry - t * dy, z = rz - t * dz;
      least = std::min(least, std::sqrt(x * x + y * y + z * z));
    }
    largest = std::max(largest, least);
  }
  return largest;
}
}
