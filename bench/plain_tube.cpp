// The analysis of a closed polygon as a scalar loop over all pairs of edges, run twice: once for the least distance and
// once for the struts. Pairs beyond the least distance so far, and its tolerance, are not kept: the list of all pairs
// would cost this loop more than the distances do.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

struct V {
  double x, y, z;
};
V operator-(V a, V b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
V operator+(V a, V b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
V operator*(double k, V a) { return {k * a.x, k * a.y, k * a.z}; }
double dot(V a, V b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double norm(V a) { return std::sqrt(dot(a, a)); }

constexpr double eps = 1e-14;

double segment_distance(V p0, V p1, V q0, V q1, double& s, double& t) {
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
std::vector<Pair> candidates(const std::vector<V>& p, std::int64_t skip, double tol, double& least) {
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

std::vector<V> read(const double* points, std::int64_t n) {
  std::vector<V> p(static_cast<std::size_t>(n));
  for (std::size_t k = 0; k < p.size(); ++k) p[k] = {points[3 * k], points[3 * k + 1], points[3 * k + 2]};
  p.push_back(p.front());
  return p;
}

}  // namespace

extern "C" {

double plain_dcsd_candidates(const double* points, std::int64_t n, std::int64_t skip, double tol) {
  double least;
  return static_cast<double>(candidates(read(points, n), skip, tol, least).size());
}

double plain_analyze_tube(const double* points, std::int64_t n, std::int64_t skip, double tol) {
  const std::vector<V> p = read(points, n);
  double minrad = std::numeric_limits<double>::infinity();
  for (std::size_t v = 0; v + 1 < p.size(); ++v) {
    const V u = p[v] - p[v == 0 ? p.size() - 2 : v - 1];
    const V w = p[v + 1] - p[v];
    const double theta = std::acos(std::clamp(dot(u, w) / (norm(u) * norm(w)), -1.0, 1.0));
    minrad = std::min(minrad, std::min(norm(u), norm(w)) / (2.0 * std::tan(theta / 2.0)));
  }
  double least;
  candidates(p, skip, 0.0, least);
  const double thickness = std::min(minrad, 0.5 * least);
  const double contact = (tol + 1.0) * thickness + tol;
  double count = 0.0;
  double unused;
  for (const Pair& pair : candidates(p, skip, tol, unused)) count += 0.5 * pair.distance <= contact;
  return count;
}
}
