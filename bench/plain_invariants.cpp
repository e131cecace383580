// The double sum of the nonlocal filament energy, straight from its formula.

#include <cmath>
#include <cstdint>

extern "C" double plain_nonlocal_sum(const double* p, const double* t, std::int64_t n, std::int64_t neighbours) {
  double sum = 0.0;
  for (std::int64_t i = 0; i < n; ++i) {
    for (std::int64_t j = 0; j < n; ++j) {
      const std::int64_t along = i < j ? j - i : i - j;
      if ((along < n - along ? along : n - along) <= neighbours) continue;
      const double x = p[3 * j] - p[3 * i];
      const double y = p[3 * j + 1] - p[3 * i + 1];
      const double z = p[3 * j + 2] - p[3 * i + 2];
      const double d = std::sqrt(x * x + y * y + z * z);
      if (!(d > 0.0)) continue;
      sum += (t[3 * i] * t[3 * j] + t[3 * i + 1] * t[3 * j + 1] + t[3 * i + 2] * t[3 * j + 2]) / d;
    }
  }
  return sum;
}
