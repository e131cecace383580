// Plain loops of the filament energies: straight from the formulas.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

extern "C" {

double plain_cutoff_scan(const double* p, const double* t, const double* ds, std::int64_t n, const double* a,
                         std::int64_t m, double* energies) {
  std::vector<double> D(static_cast<std::size_t>(m) + 1, 0.0);
  for (std::int64_t i = 0; i < n; ++i) {
    for (std::int64_t j = 0; j < n; ++j) {
      if (i == j) continue;
      const double x = p[3 * j] - p[3 * i], y = p[3 * j + 1] - p[3 * i + 1], z = p[3 * j + 2] - p[3 * i + 2];
      const double d2 = x * x + y * y + z * z;
      if (!(d2 > 0.0)) continue;
      const double d = std::sqrt(d2);
      const auto index = std::lower_bound(a, a + m, d) - a;
      if (index == 0) continue;
      const double term =
          (t[3 * i] * t[3 * j] + t[3 * i + 1] * t[3 * j + 1] + t[3 * i + 2] * t[3 * j + 2]) / d * ds[i] * ds[j];
      D[0] += term;
      D[static_cast<std::size_t>(index)] -= term;
    }
  }
  double sum = 0.0;
  for (std::int64_t k = 0; k < m; ++k) {
    sum += D[static_cast<std::size_t>(k)];
    energies[k] = sum / 25.132741228718345;
  }
  return 0.0;
}

double plain_neumann(const double* p, std::int64_t n, double rc) {
  double sum = 0.0;
  for (std::int64_t i = 0; i + 1 < n; ++i) {
    const double *a = p + 3 * i, *b = p + 3 * (i + 1);
    for (std::int64_t j = i + 1; j < n; ++j) {
      const double *c = p + 3 * j, *d = p + 3 * ((j + 1) % n);
      const double x = c[0] - a[0], y = c[1] - a[1], z = c[2] - a[2];
      const double along =
          (b[0] - a[0]) * (d[0] - c[0]) + (b[1] - a[1]) * (d[1] - c[1]) + (b[2] - a[2]) * (d[2] - c[2]);
      sum += 2.0 * (along / std::sqrt(x * x + y * y + z * z + rc * rc));
    }
  }
  return sum;
}

double plain_repulsion(const double* p, std::int64_t n, double rc) {
  double sum = 0.0;
  for (std::int64_t i = 0; i < n; ++i) {
    for (std::int64_t j = i + 2; j < n; ++j) {
      if (i == 0 && j == n - 1) continue;
      const double x = p[3 * j] - p[3 * i], y = p[3 * j + 1] - p[3 * i + 1], z = p[3 * j + 2] - p[3 * i + 2];
      const double s = (rc + rc) / std::max(std::sqrt(x * x + y * y + z * z), 1e-30);
      if (s > 0.1) sum += std::pow(s, 12.0);
    }
  }
  return sum;
}

double plain_fluid_sum(const double* p, std::int64_t n) {
  double total = 0.0;
  for (std::int64_t i = 0; i < n; ++i) {
    const double *a = p + 3 * i, *b = p + 3 * ((i + 1) % n);
    double row = 0.0;
    for (std::int64_t j = 0; j < n; ++j) {
      const double *c = p + 3 * j, *d = p + 3 * ((j + 1) % n);
      const double x = a[0] - c[0], y = a[1] - c[1], z = a[2] - c[2];
      row += ((b[0] - a[0]) * (d[0] - c[0]) + (b[1] - a[1]) * (d[1] - c[1]) + (b[2] - a[2]) * (d[2] - c[2])) /
             std::sqrt(x * x + y * y + z * z + 1.985196939949829e-30);
    }
    total += row;
  }
  return total;
}

}  // extern "C"
