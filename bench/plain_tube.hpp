#pragma once

// Plain pieces of the tube's geometry that several plain loops share.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace plain {

struct V {
  double x, y, z;
};
inline V operator-(V a, V b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline V operator+(V a, V b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline V operator*(double k, V a) { return {k * a.x, k * a.y, k * a.z}; }
inline double dot(V a, V b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline double norm(V a) { return std::sqrt(dot(a, a)); }

inline constexpr double eps = 1e-14;

inline double segment_distance(V p0, V p1, V q0, V q1, double& s, double& t) {
  const V d1 = p1 - p0, d2 = q1 - q0, r = p0 - q0;
  const double a = dot(d1, d1), e = dot(d2, d2), f = dot(d2, r);
  s = t = 0.0;
  if (a <= eps && e <= eps) return norm(p0 - q0);
  if (a <= eps) {
    t = std::clamp(f / e, 0.0, 1.0);
    return norm(p0 - (q0 + t * d2));
  }
  const double c = dot(d1, r);
  if (e <= eps) {
    s = std::clamp(-c / a, 0.0, 1.0);
    return norm((p0 + s * d1) - q0);
  }
  const double b = dot(d1, d2), D = a * e - b * b;
  double sN, sD = D, tN, tD = D;
  if (D < eps) {
    sN = 0.0, sD = 1.0, tN = f, tD = e;
  } else {
    sN = b * f - c * e;
    tN = a * f - b * c;
    if (sN < 0.0) {
      sN = 0.0, tN = f, tD = e;
    } else if (sN > D) {
      sN = D, tN = f + b, tD = e;
    }
  }
  if (tN < 0.0 || tN > tD) {
    const double m = tN < 0.0 ? -c : b - c;
    tN = tN < 0.0 ? 0.0 : tD;
    if (m < 0.0) {
      sN = 0.0;
    } else if (m > a) {
      sN = sD;
    } else {
      sN = m, sD = a;
    }
  }
  s = std::clamp(std::fabs(sN) < eps ? 0.0 : sN / sD, 0.0, 1.0);
  t = std::clamp(std::fabs(tN) < eps ? 0.0 : tN / tD, 0.0, 1.0);
  return norm((p0 + s * d1) - (q0 + t * d2));
}

struct Pair {
  std::size_t i, j;
  double s, t, distance, arc_i, arc_j;
};

/// `p` ends with a copy of its first point.
inline std::vector<Pair> candidates(const std::vector<V>& p, std::int64_t skip, double tol, double& least) {
  const std::size_t n = p.size() - 1;
  const auto gap = static_cast<std::size_t>(skip);
  std::vector<double> arc(n + 1, 0.0);
  for (std::size_t k = 0; k < n; ++k) arc[k + 1] = arc[k] + norm(p[k] - p[k + 1]);
  least = std::numeric_limits<double>::infinity();
  double limit = least;
  std::vector<Pair> pairs;
  for (std::size_t i = 0; i + 1 < n; ++i) {
    for (std::size_t j = i + 1; j < n; ++j) {
      if (std::min(j - i, n - (j - i)) <= gap) continue;
      Pair pair{i, j, 0, 0, 0, 0, 0};
      pair.distance = segment_distance(p[i], p[i + 1], p[j], p[j + 1], pair.s, pair.t);
      if (pair.distance < least) {
        least = pair.distance;
        limit = tol == 0.0 ? least + 1e-12 : (tol + 1.0) * least + tol;
      }
      if (!(pair.distance <= limit)) continue;
      pair.arc_i = arc[i] + norm(p[i] - p[i + 1]) * pair.s;
      pair.arc_j = arc[j] + norm(p[j] - p[j + 1]) * pair.t;
      pairs.push_back(pair);
    }
  }
  std::erase_if(pairs, [&](const Pair& pair) { return !(pair.distance <= limit); });
  return pairs;
}

inline std::vector<V> read(const double* points, std::int64_t n) {
  std::vector<V> p(static_cast<std::size_t>(n));
  for (std::size_t k = 0; k < p.size(); ++k) p[k] = {points[3 * k], points[3 * k + 1], points[3 * k + 2]};
  p.push_back(p.front());
  return p;
}

}  // namespace plain
