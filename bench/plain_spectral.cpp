// The plain scalar loops of the spectral kernels, straight from their formulas.

#include <cmath>
#include <complex>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

using Complex = std::complex<double>;

Complex log_product(double t, const double* nu, const double* theta, std::int64_t sectors, double ell,
                    std::int64_t m_end) {
  double real = 0.0;
  double imaginary = 0.0;
  for (std::int64_t j = 0; j < sectors; ++j) {
    for (std::int64_t m = 1; m <= m_end; ++m) {
      const double repetition = static_cast<double>(m);
      const double length = nu[j] * repetition * ell;
      const Complex z = std::exp(Complex(-0.5 * length, -t * length));
      const Complex d = 1.0 - 2.0 * std::cos(repetition * theta[j]) * z + z * z;
      real -= std::log(std::abs(d));
      imaginary -= std::atan2(d.imag(), d.real());
    }
  }
  return {real, imaginary};
}

}  // namespace

extern "C" {

double plain_multisector_abs(const double* t, std::int64_t n, const double* nu, const double* theta,
                             std::int64_t sectors, double ell, std::int64_t truncation, double* out) {
  for (std::int64_t i = 0; i < n; ++i) {
    const Complex phi = std::exp(log_product(t[i], nu, theta, sectors, ell, truncation));
    out[i] = std::hypot(phi.real(), phi.imag());
  }
  return 0.0;
}

double plain_multisector_abs_batch(const double* t, std::int64_t n, const double* nu, const double* theta,
                                   std::int64_t sectors, double ell, const double* truncations, std::int64_t rows,
                                   double* out) {
  for (std::int64_t row = 0; row < rows; ++row) {
    plain_multisector_abs(t, n, nu, theta, sectors, ell, static_cast<std::int64_t>(truncations[row]), out + row * n);
  }
  return 0.0;
}

/// out holds n real parts, then n imaginary parts.
double plain_multisector_dlogz_ds(const double* t, std::int64_t n, const double* nu, const double* theta,
                                  std::int64_t sectors, double ell, std::int64_t truncation, double* out) {
  for (std::int64_t i = 0; i < n; ++i) {
    Complex sum = 0.0;
    for (std::int64_t j = 0; j < sectors; ++j) {
      for (std::int64_t m = 1; m <= truncation; ++m) {
        const double repetition = static_cast<double>(m);
        const double length = nu[j] * repetition * ell;
        const Complex z = std::exp(Complex(-0.5 * length, -t[i] * length));
        const double c = std::cos(repetition * theta[j]);
        sum -= (2.0 * c * length * z - 2.0 * length * z * z) / (1.0 - 2.0 * c * z + z * z);
      }
    }
    out[i] = sum.real();
    out[n + i] = sum.imag();
  }
  return 0.0;
}

/// Classical Jacobi with a search through the whole triangle for each rotation; `vectors` comes out with columns.
double plain_jacobi(const double* matrix, std::int64_t n, std::int64_t rotations, double tol, double* vectors) {
  const auto at = [n](std::int64_t i, std::int64_t j) { return static_cast<std::size_t>(i * n + j); };
  std::vector<double> a(matrix, matrix + n * n);
  for (std::int64_t i = 0; i < n; ++i) {
    for (std::int64_t j = 0; j < n; ++j) vectors[at(i, j)] = i == j ? 1.0 : 0.0;
  }
  for (std::int64_t rotation = 0; rotation < rotations; ++rotation) {
    std::int64_t p = 0;
    std::int64_t q = 1;
    double greatest = 0.0;
    for (std::int64_t i = 0; i < n; ++i) {
      for (std::int64_t j = i + 1; j < n; ++j) {
        const double magnitude = std::fabs(a[at(i, j)]);
        if (magnitude > greatest) {
          greatest = magnitude;
          p = i;
          q = j;
        }
      }
    }
    if (greatest < tol) break;
    const double app = a[at(p, p)];
    const double aqq = a[at(q, q)];
    const double apq = a[at(p, q)];
    const double tau = (aqq - app) / (2.0 * apq);
    const double r = std::sqrt(tau * tau + 1.0);
    const double t = tau >= 0.0 ? 1.0 / (r + tau) : -1.0 / (r - tau);
    const double c = 1.0 / std::sqrt(t * t + 1.0);
    const double s = c * t;
    for (std::int64_t k = 0; k < n; ++k) {
      if (k == p || k == q) continue;
      const double x = a[at(k, p)];
      const double y = a[at(k, q)];
      a[at(k, p)] = a[at(p, k)] = x * c - y * s;
      a[at(k, q)] = a[at(q, k)] = x * s + y * c;
    }
    const double m = 2.0 * s * c * apq;
    a[at(p, p)] = c * c * app - m + s * s * aqq;
    a[at(q, q)] = m + s * s * app + c * c * aqq;
    a[at(p, q)] = a[at(q, p)] = 0.0;
    for (std::int64_t k = 0; k < n; ++k) {
      const double x = vectors[at(k, p)];
      const double y = vectors[at(k, q)];
      vectors[at(k, p)] = x * c - y * s;
      vectors[at(k, q)] = x * s + y * c;
    }
  }
  double trace = 0.0;
  for (std::int64_t i = 0; i < n; ++i) trace += a[at(i, i)];
  return trace;
}

}  // extern "C"
