// Plain loops of the potentials of filament samples: straight from the formulas.

#include <cmath>
#include <cstdint>

extern "C" {

double plain_potential_direct(const double* p, const double* w, std::int64_t n, double epsilon, double* out) {
  for (std::int64_t i = 0; i < n; ++i) {
    double sum = 0.0;
    for (std::int64_t j = 0; j < n; ++j) {
      if (j == i) continue;
      const double x = p[3 * i] - p[3 * j], y = p[3 * i + 1] - p[3 * j + 1], z = p[3 * i + 2] - p[3 * j + 2];
      sum += (x * w[3 * j] + y * w[3 * j + 1] + z * w[3 * j + 2]) /
             std::pow(x * x + y * y + z * z + epsilon * epsilon, 1.5);
    }
    out[i] = -0.07957747154594767 * sum;
  }
  return 0.0;
}

double plain_potential_gradient(const double* p, const double* w, std::int64_t n, double epsilon, double* out) {
  for (std::int64_t i = 0; i < n; ++i) {
    double a = 0.0, b = 0.0, c = 0.0;
    for (std::int64_t j = 0; j < n; ++j) {
      if (j == i) continue;
      const double x = p[3 * i] - p[3 * j], y = p[3 * i + 1] - p[3 * j + 1], z = p[3 * i + 2] - p[3 * j + 2];
      const double g = std::exp(-(x * x + y * y + z * z) / ((epsilon + epsilon) * epsilon));
      a += g * w[3 * j];
      b += g * w[3 * j + 1];
      c += g * w[3 * j + 2];
    }
    out[i] = -0.5 * (a * a + b * b + c * c);
  }
  return 0.0;
}

}  // extern "C"
