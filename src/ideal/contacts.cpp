#include "ideal/contacts.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/kernel.hpp"
#include "core/numbers.hpp"

namespace vkm::ideal {

namespace {

struct Nearest {
  double s;
  double t;
  double squared;
};

struct Segment {
  Vec3 along;
  Vec3 middle;
  double squared;  ///< length squared
  double size;
  double arc;  ///< of its begin, from the begin of the component
};

/// Nearest points of p + s u and q + t v, s and t in [0, 1]; r = p - q. Clamped minimum of the quadratic (D. Eberly,
/// Robust computation of distance between line segments).
VKM_INLINE Nearest nearest(const Vec3& r, const Vec3& u, const Vec3& v, double uu, double vv) {
  const double b = dot(u, v);
  const double c = dot(u, r);
  const double f = dot(v, r);
  const double d = uu * vv - b * b;
  double s = d > 1e-12 * uu * vv ? std::clamp((b * f - c * vv) / d, 0.0, 1.0) : 0.5;
  double t = (b * s + f) / vv;
  if (t < 0.0) {
    t = 0.0;
    s = std::clamp(-c / uu, 0.0, 1.0);
  } else if (t > 1.0) {
    t = 1.0;
    s = std::clamp((b - c) / uu, 0.0, 1.0);
  }
  const Vec3 w = r + s * u - t * v;
  return {s, t, norm2(w)};
}

/// Calls visit(i, j, nearest) for strangers i < j at a distance below cut(), which the visits may lower.
///
/// Along a component the distance to a fixed edge changes by at most one edge's length a step, so that a pair far
/// beyond the cut tells how many edges to pass over.
template <class Cut, class Visit>
void search(const Rope& rope, const Cycle& cycle, double gap, Cut cut, Visit visit) {
  const Index n = rope.size();
  std::vector<Segment> edges(n);
  std::vector<double> total(rope.components.size(), 0.0);
  std::vector<double> longest(rope.components.size(), 0.0);
  for (Index k = 0; k < n; ++k) {
    const Index c = cycle.component[k];
    Segment& e = edges[k];
    e.along = rope.points[cycle.next[k]] - rope.points[k];
    e.middle = rope.points[k] + 0.5 * e.along;
    e.squared = norm2(e.along);
    e.size = std::sqrt(e.squared);
    e.arc = total[c];
    total[c] += e.size;
    longest[c] = std::max(longest[c], e.size);
  }
  const auto scan = [&](Index i, Index j, Index end, double stride, double last) {
    const Segment& a = edges[i];
    while (j < end && edges[j].arc + edges[j].size < last) {
      const Segment& b = edges[j];
      const double limit = cut();
      const double apart = std::sqrt(norm2(a.middle - b.middle)) - 0.5 * (a.size + b.size);  // or farther
      if (apart > limit + stride) {
        j += static_cast<Index>(std::min((apart - limit) / stride, 1e9));
        continue;
      }
      const Nearest near = nearest(rope.points[i] - rope.points[j], a.along, b.along, a.squared, b.squared);
      if (near.squared < limit * limit) {
        visit(i, j, near);
        ++j;
      } else {
        const double steps = (std::sqrt(near.squared) - limit) / stride;
        j += steps > 1.0 ? static_cast<Index>(std::min(steps, 1e9)) : 1;
      }
    }
  };
  for (Index i = 0; i < n; ++i) {
    const Index c = cycle.component[i];
    // The gap runs from the end of i to the begin of j forwards, from the end of j to the begin of i backwards.
    const Index end = rope.components[c].end;
    const double first = edges[i].arc + edges[i].size + gap;
    Index begin = i + 1;
    while (begin < end && edges[begin].arc <= first) ++begin;
    scan(i, begin, end, longest[c], total[c] + edges[i].arc - gap);
    for (Index other = c + 1; other < rope.components.size(); ++other) {
      const Component& k = rope.components[other];
      scan(i, k.begin, k.end, longest[other], std::numeric_limits<double>::infinity());
    }
  }
}

}  // namespace

std::vector<Contact> contacts(const Rope& rope, const Cycle& cycle, double cut, double gap) {
  std::vector<Contact> list;
  search(
      rope, cycle, gap, [cut] { return cut; },
      [&](Index i, Index j, const Nearest& near) { list.push_back({i, j, near.s, near.t, std::sqrt(near.squared)}); });
  return list;
}

Contact contact(const Rope& rope, const Cycle& cycle, Index i, Index j) {
  const auto& p = rope.points;
  const Vec3 u = p[cycle.next[i]] - p[i];
  const Vec3 v = p[cycle.next[j]] - p[j];
  const Nearest near = nearest(p[i] - p[j], u, v, norm2(u), norm2(v));
  return {i, j, near.s, near.t, std::sqrt(near.squared)};
}

double least_distance(const Rope& rope, const Cycle& cycle, double most, double gap) {
  double least = most;
  search(
      rope, cycle, gap, [&least] { return least; },
      [&least](Index, Index, const Nearest& near) { least = std::sqrt(near.squared); });
  return least;
}

std::vector<double> corner_radii(const Rope& rope, const Cycle& cycle) {
  std::vector<double> radii(rope.size());
  for (Index k = 0; k < rope.size(); ++k) {
    const Vec3 a = rope.points[k] - rope.points[cycle.previous[k]];
    const Vec3 b = rope.points[cycle.next[k]] - rope.points[k];
    const double la = norm(a);
    const double lb = norm(b);
    // tan(turn / 2) = |a x b| / (|a| |b| + a . b)
    const double sine = norm(cross(a, b));
    radii[k] =
        sine > 0.0 ? 0.5 * std::min(la, lb) * (la * lb + dot(a, b)) / sine : std::numeric_limits<double>::infinity();
  }
  return radii;
}

Measures measure(const Rope& rope, const Cycle& cycle) {
  Measures m{};
  m.length = length(rope, cycle);
  const auto radii = corner_radii(rope, cycle);
  m.min_radius = *std::min_element(radii.begin(), radii.end());
  // The gap is pi radii of the tube that is to be found. Corners alone give its first guess; a guess too small makes
  // strangers of edges that a corner keeps apart, so that the radius found with it is a bound from below.
  double radius = m.min_radius;
  for (int turn = 0; turn < 4; ++turn) {
    m.strut_distance = least_distance(rope, cycle, m.length, pi * radius);
    const double found = std::min(m.min_radius, 0.5 * m.strut_distance);
    if (found >= radius * (1.0 - 1e-9)) break;
    radius = found;
  }
  m.thickness = std::min(m.min_radius, 0.5 * m.strut_distance);
  m.ropelength = m.length / m.thickness;
  return m;
}

}  // namespace vkm::ideal
