// The formulas of the Biot-Savart kernels as plain loops.

#include <cmath>
#include <cstdint>

namespace {

constexpr double inv_four_pi = 0.07957747154594767;

double length2(const double* r) { return r[0] * r[0] + r[1] * r[1] + r[2] * r[2]; }

/// Midpoint and vector of the segment from a to b.
void segment(const double* a, const double* b, double* mid, double* dl) {
  for (int k = 0; k < 3; ++k) {
    mid[k] = 0.5 * (a[k] + b[k]);
    dl[k] = b[k] - a[k];
  }
}

void cross(const double* a, const double* b, double* out) {
  out[0] = a[1] * b[2] - a[2] * b[1];
  out[1] = a[2] * b[0] - a[0] * b[2];
  out[2] = a[0] * b[1] - a[1] * b[0];
}

}  // namespace

extern "C" {

double plain_closed_curve_velocity(const double* curve, int64_t n, const double* grid, int64_t m, double circulation,
                                   double* out) {
  for (int64_t k = 0; k < 3 * m; ++k) out[k] = 0.0;
  for (int64_t s = 0; s < n; ++s) {
    double mid[3], dl[3];
    segment(curve + 3 * s, curve + 3 * ((s + 1) % n), mid, dl);
    for (int64_t g = 0; g < m; ++g) {
      const double* p = grid + 3 * g;
      const double R[3] = {p[0] - mid[0], p[1] - mid[1], p[2] - mid[2]};
      const double D = std::pow(length2(R), 1.5) + 1e-12;
      double c[3];
      cross(dl, R, c);
      for (int k = 0; k < 3; ++k) out[3 * g + k] += c[k] / D;
    }
  }
  for (int64_t k = 0; k < 3 * m; ++k) out[k] *= circulation / 12.566370614359172;
  return 0.0;
}

double plain_wire_field(const double* wire, int64_t n, const double* X, const double* Y, const double* Z, int64_t m,
                        double current, double* Bx, double* By, double* Bz) {
  for (int64_t g = 0; g < m; ++g) Bx[g] = By[g] = Bz[g] = 0.0;
  const double f = current * inv_four_pi;
  for (int64_t s = 0; s + 1 < n; ++s) {
    double mid[3], dl[3];
    segment(wire + 3 * s, wire + 3 * (s + 1), mid, dl);
    for (int64_t g = 0; g < m; ++g) {
      const double R[3] = {X[g] - mid[0], Y[g] - mid[1], Z[g] - mid[2]};
      const double n2 = length2(R);
      const double r = std::sqrt(n2);
      if (r < 1e-12) continue;
      double c[3];
      cross(dl, R, c);
      const double q = 1.0 / (r * n2);
      Bx[g] += c[0] * f * q;
      By[g] += c[1] * f * q;
      Bz[g] += c[2] * f * q;
    }
  }
  return 0.0;
}

double plain_vector_potential(const double* wire, int64_t n, const double* grid, int64_t m, double current, double* Ax,
                              double* Ay, double* Az) {
  for (int64_t g = 0; g < m; ++g) {
    double S[3] = {0.0, 0.0, 0.0};
    for (int64_t s = 0; s + 1 < n; ++s) {
      double mid[3], dl[3];
      segment(wire + 3 * s, wire + 3 * (s + 1), mid, dl);
      const double* p = grid + 3 * g;
      const double R[3] = {p[0] - mid[0], p[1] - mid[1], p[2] - mid[2]};
      const double r = std::sqrt(length2(R));
      if (r < 1e-12) continue;
      for (int k = 0; k < 3; ++k) S[k] += dl[k] * (1.0 / r);
    }
    Ax[g] = S[0] * current * inv_four_pi;
    Ay[g] = S[1] * current * inv_four_pi;
    Az[g] = S[2] * current * inv_four_pi;
  }
  return 0.0;
}

double plain_dipole_field(const double* positions, const double* moments, int64_t n, const double* X, const double* Y,
                          const double* Z, int64_t m, double* Bx, double* By, double* Bz) {
  for (int64_t g = 0; g < m; ++g) Bx[g] = By[g] = Bz[g] = 0.0;
  for (int64_t s = 0; s < n; ++s) {
    const double* p = positions + 3 * s;
    const double* d = moments + 3 * s;
    for (int64_t g = 0; g < m; ++g) {
      const double R[3] = {X[g] - p[0], Y[g] - p[1], Z[g] - p[2]};
      const double n2 = length2(R);
      const double r = std::sqrt(n2);
      if (r < 1e-12) continue;
      const double q = (d[0] * R[0] + d[1] * R[1] + d[2] * R[2]) / r * 3.0 / r / r;
      const double w = 1.0 / (r * n2);
      Bx[g] += (q * R[0] - d[0]) * inv_four_pi * w;
      By[g] += (q * R[1] - d[1]) * inv_four_pi * w;
      Bz[g] += (q * R[2] - d[2]) * inv_four_pi * w;
    }
  }
  return 0.0;
}

double plain_evolve(double* positions, double* tangents, int64_t n, double circulation, double dt, int64_t steps,
                    double* velocity) {
  for (int64_t step = 0; step < steps; ++step) {
    for (int64_t i = 0; i < n; ++i) {
      double u[3] = {0.0, 0.0, 0.0};
      for (int64_t j = 0; j < n; ++j) {
        const double* p = positions + 3 * j;
        const double R[3] = {positions[3 * i] - p[0], positions[3 * i + 1] - p[1], positions[3 * i + 2] - p[2]};
        const double r = std::sqrt(length2(R));
        if (r > 1e-6) {
          double c[3];
          cross(tangents + 3 * j, R, c);
          const double g = circulation / (r * r * r);
          for (int k = 0; k < 3; ++k) u[k] += c[k] * inv_four_pi * g;
        }
      }
      for (int k = 0; k < 3; ++k) velocity[3 * i + k] = u[k];
    }
    for (int64_t k = 0; k < 3 * n; ++k) positions[k] += dt * velocity[k];
    for (int64_t i = 0; i < n; ++i) {
      for (int k = 0; k < 3; ++k) {
        tangents[3 * i + k] = 0.5 * (positions[3 * ((i + 1) % n) + k] - positions[3 * ((i - 1 + n) % n) + k]);
      }
    }
  }
  return 0.0;
}
}
