// The analysis of a closed polygon as a scalar loop over all pairs of edges, run twice: once for the least distance and
// once for the struts. Pairs beyond the least distance so far, and its tolerance, are not kept: the list of all pairs
// would cost this loop more than the distances do.

#include "plain_tube.hpp"

using namespace plain;

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
