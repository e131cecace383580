#include "ideal/respace.hpp"

#include <algorithm>
#include <cmath>

#include "core/memory.hpp"
#include "ideal/contacts.hpp"
#include "ideal/settle.hpp"

namespace vkm::ideal {

namespace {

constexpr std::size_t pieces = 8;  // of an edge's cubic when it is measured

/// A closed curve through vertices, by a parameter that is k at vertex k.
class Curve {
 public:
  explicit Curve(std::span<const Vec3> vertices) : p_(vertices) {
    double least = INFINITY;
    double most = 0.0;
    for (std::size_t k = 0; k < p_.size(); ++k) {
      const double l = norm(at(k + 1) - at(k));
      least = std::min(least, l);
      most = std::max(most, l);
    }
    smooth_ = most < 1.5 * least;
    arc_.push_back(0.0);
    for (std::size_t m = 0; m < p_.size() * pieces; ++m) {
      arc_.push_back(arc_.back() + norm((*this)(parameter(m + 1)) - (*this)(parameter(m))));
    }
  }

  Vec3 operator()(double parameter) const {
    const auto k = static_cast<std::size_t>(parameter);
    const double u = parameter - static_cast<double>(k);
    const Vec3& b = at(k);
    const Vec3& c = at(k + 1);
    if (!smooth_) return (1.0 - u) * b + u * c;
    const Vec3& a = at(k + p_.size() - 1);
    const Vec3& d = at(k + 2);
    const Vec3 tb = 0.5 * (c - a);
    const Vec3 tc = 0.5 * (d - b);
    const double v = 1.0 - u;
    return (v * v * (1.0 + 2.0 * u)) * b + (u * v * v) * tb + (u * u * (3.0 - 2.0 * u)) * c - (u * u * v) * tc;
  }

  /// The polygon at the same parameter.
  Vec3 polygon(double parameter) const {
    const auto k = static_cast<std::size_t>(parameter);
    const double u = parameter - static_cast<double>(k);
    return (1.0 - u) * at(k) + u * at(k + 1);
  }

  /// Parameters of so many points at equal distances along the curve.
  std::vector<double> spaced(std::size_t count) const {
    std::vector<double> list;
    std::size_t m = 0;
    for (std::size_t i = 0; i < count; ++i) {
      const double target = arc_.back() * static_cast<double>(i) / static_cast<double>(count);
      while (arc_[m + 1] <= target) ++m;
      const double u = (target - arc_[m]) / (arc_[m + 1] - arc_[m]);
      list.push_back((static_cast<double>(m) + u) / static_cast<double>(pieces));
    }
    return list;
  }

 private:
  static double parameter(std::size_t m) { return static_cast<double>(m) / static_cast<double>(pieces); }
  const Vec3& at(std::size_t k) const { return p_[k % p_.size()]; }

  std::span<const Vec3> p_;
  std::vector<double> arc_;  // up to each piece's begin
  bool smooth_ = false;
};

}  // namespace

std::optional<Rope> respaced(const Rope& rope, std::span<const Index> counts) {
  Rope result;
  double moved = 0.0;
  for (std::size_t c = 0; c < rope.components.size(); ++c) {
    const auto [begin, end] = rope.components[c];
    const std::span<const Vec3> old(rope.points.data() + begin, end - begin);
    const Curve curve(old);
    const auto parameters = curve.spaced(counts[c]);
    const Index first = result.size();
    for (const double u : parameters) {
      result.points.push_back(curve(u));
      moved = std::max(moved, norm(result.points.back() - curve.polygon(u)));
    }
    result.components.push_back({first, result.size()});
    // Both polygons are linear in the parameter between the vertices of either: old vertices remain to be seen.
    std::size_t k = 0;
    for (std::size_t v = 0; v < old.size(); ++v) {
      const auto u = static_cast<double>(v);
      while (k + 1 < parameters.size() && parameters[k + 1] <= u) ++k;
      const bool last = k + 1 == parameters.size();
      const double from = parameters[k];
      const double to = last ? static_cast<double>(old.size()) : parameters[k + 1];
      const double part = (u - from) / (to - from);
      const Vec3 point = (1.0 - part) * result.points[first + k] + part * result.points[last ? first : first + k + 1];
      moved = std::max(moved, norm(point - old[v]));
    }
  }
  if (moved > 0.0 && !(moved < 0.45 * least_distance(rope, Cycle(rope), 3.0 * moved, strand_gap))) return {};
  return result;
}

std::optional<Rope> respaced(const Rope& rope, double h) {
  std::vector<Index> counts;
  for (const double l : lengths(rope, Cycle(rope))) {
    const double count = std::round(l / h);
    if (!(count < 1e8)) throw std::bad_alloc();
    require_memory(static_cast<std::size_t>(count), 64 * sizeof(Vec3));
    counts.push_back(std::max(Index{6}, static_cast<Index>(count)));
  }
  return respaced(rope, counts);
}

}  // namespace vkm::ideal
