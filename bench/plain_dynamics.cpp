// Plain loops of the regularised filament velocity and the clearance of polygons: straight from the formulas.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

double distance2(const double* P0, const double* P1, const double* Q0, const double* Q1) {
  double a = 0, b = 0, c = 0, d = 0, e = 0;
  for (int k = 0; k < 3; ++k) {
    const double u = P1[k] - P0[k], v = Q1[k] - Q0[k], w = P0[k] - Q0[k];
    a += u * u;
    b += u * v;
    c += v * v;
    d += u * w;
    e += v * w;
  }
  const double D = a * c - b * b;
  double sN, sD = D, tN, tD = D;
  if (D < 1e-30) {
    sN = 0, sD = 1, tN = e, tD = c;
  } else {
    sN = b * e - c * d;
    tN = a * e - b * d;
    if (sN < 0) {
      sN = 0, tN = e, tD = c;
    } else if (sN > D) {
      sN = D, tN = e + b, tD = c;
    }
  }
  if (tN < 0) {
    tN = 0;
    if (-d < 0) {
      sN = 0;
    } else if (-d > a) {
      sN = sD;
    } else {
      sN = -d, sD = a;
    }
  } else if (tN > tD) {
    tN = tD;
    if (-d + b < 0) {
      sN = 0;
    } else if (-d + b > a) {
      sN = sD;
    } else {
      sN = -d + b, sD = a;
    }
  }
  const double sc = std::abs(sD) < 1e-30 ? 0 : sN / sD, tc = std::abs(tD) < 1e-30 ? 0 : tN / tD;
  double sum = 0;
  for (int k = 0; k < 3; ++k) {
    const double r = (P0[k] - Q0[k]) + sc * (P1[k] - P0[k]) - tc * (Q1[k] - Q0[k]);
    sum += r * r;
  }
  return sum;
}

struct Polygon {
  const double* X;
  std::int64_t n;
  std::vector<double> mid, len;

  Polygon(const double* points, std::int64_t count) : X(points), n(count), mid(3 * count), len(count) {
    for (std::int64_t i = 0; i < n; ++i) {
      const double *p = start(i), *q = end(i);
      double sum = 0;
      for (int k = 0; k < 3; ++k) {
        mid[3 * i + k] = 0.5 * (p[k] + q[k]);
        sum += (q[k] - p[k]) * (q[k] - p[k]);
      }
      len[i] = std::sqrt(sum);
    }
  }
  const double* start(std::int64_t i) const { return X + 3 * i; }
  const double* end(std::int64_t i) const { return X + 3 * ((i + 1) % n); }
};

void take_pair(const Polygon& a, std::int64_t i, const Polygon& b, std::int64_t j, double& best) {
  const double dx = a.mid[3 * i] - b.mid[3 * j], dy = a.mid[3 * i + 1] - b.mid[3 * j + 1],
               dz = a.mid[3 * i + 2] - b.mid[3 * j + 2];
  const double g = std::sqrt(dx * dx + dy * dy + dz * dz) - 0.5 * (a.len[i] + b.len[j]);
  if (g > 0 && g * g >= best) return;
  best = std::min(best, distance2(a.start(i), a.end(i), b.start(j), b.end(j)));
}

}  // namespace

extern "C" {

double plain_self_clearance(const double* X, std::int64_t n, std::int64_t window) {
  double best = std::numeric_limits<double>::infinity();
  if (n < 4) return best;
  const Polygon a(X, n);
  for (std::int64_t i = 0; i < n; ++i) {
    for (std::int64_t j = i + 1; j < n; ++j) {
      if (std::min(j - i, n - (j - i)) < window) continue;
      take_pair(a, i, a, j, best);
    }
  }
  return std::sqrt(best);
}

double plain_pair_clearance(const double* X, std::int64_t n, const double* Y, std::int64_t m) {
  double best = std::numeric_limits<double>::infinity();
  if (n < 2 || m < 2) return best;
  const Polygon a(X, n), b(Y, m);
  for (std::int64_t i = 0; i < n; ++i) {
    for (std::int64_t j = 0; j < m; ++j) take_pair(a, i, b, j, best);
  }
  return std::sqrt(best);
}

// `filaments` filaments of n vertices each, all sources of circulation 1; velocities go to V. Returns the top speed.
double plain_filament_velocity(const double* X, std::int64_t filaments, std::int64_t n, double core, double constant,
                               double softening, double* V) {
  const double G = 1.0 / 12.566370614359172;
  const std::int64_t total = filaments * n;
  std::vector<double> E(3 * total), M(3 * total);
  for (std::int64_t f = 0; f < filaments; ++f) {
    for (std::int64_t k = 0; k < n; ++k) {
      const double *p = X + 3 * (f * n + k), *q = X + 3 * (f * n + (k + 1) % n);
      for (int c = 0; c < 3; ++c) {
        E[3 * (f * n + k) + c] = q[c] - p[c];
        M[3 * (f * n + k) + c] = 0.5 * (q[c] + p[c]);
      }
    }
  }
  double largest = 0;
  for (std::int64_t f = 0; f < filaments; ++f) {
    for (std::int64_t i = 0; i < n; ++i) {
      const std::int64_t prev = (i - 1 + n) % n;
      const double *p = X + 3 * (f * n + i), *a = &E[3 * (f * n + prev)], *b = &E[3 * (f * n + i)];
      const double la = std::max(1e-30, std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]));
      const double lb = std::max(1e-30, std::sqrt(b[0] * b[0] + b[1] * b[1] + b[2] * b[2]));
      const double c = (std::log(2 * std::sqrt(la * lb) / core) + constant) * G;
      const double den = la * lb * (lb + la);
      double vx = (a[1] * b[2] - a[2] * b[1]) * (2 * c) / den;
      double vy = (a[2] * b[0] - a[0] * b[2]) * (2 * c) / den;
      double vz = (a[0] * b[1] - a[1] * b[0]) * (2 * c) / den;
      for (std::int64_t s = 0; s < filaments; ++s) {
        const double soft2 = s == f ? 0 : softening * softening;
        for (std::int64_t k = 0; k < n; ++k) {
          if (s == f && (k == prev || k == i)) continue;
          const double *e = &E[3 * (s * n + k)], *m = &M[3 * (s * n + k)];
          const double rx = p[0] - m[0], ry = p[1] - m[1], rz = p[2] - m[2];
          const double r2 = rx * rx + ry * ry + rz * rz + soft2;
          const double g = G / (std::sqrt(r2) * r2);
          vx += (e[1] * rz - e[2] * ry) * g;
          vy += (e[2] * rx - e[0] * rz) * g;
          vz += (e[0] * ry - e[1] * rx) * g;
        }
      }
      double* v = V + 3 * (f * n + i);
      v[0] = vx, v[1] = vy, v[2] = vz;
      largest = std::max(largest, vx * vx + vy * vy + vz * vz);
    }
  }
  return std::sqrt(largest);
}

}  // extern "C"
