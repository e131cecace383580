#include "knot/planar_diagram.hpp"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <mutex>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/kernel.hpp"
#include "core/lanes.hpp"
#include "core/numbers.hpp"
#include "core/tasks.hpp"
#include "knot/projected_crossings.hpp"
#include "knot/random_directions.hpp"

namespace vkm {

namespace {

struct Crossing {
  std::size_t i;
  std::size_t j;
  double t;
  double u;
  bool first_is_over;
};

struct Passage {
  double position;  // along the curve, in [0, 1)
  std::size_t crossing;
  bool over;
};

/// Coordinates in the plane and depth along the direction, a lane a point.
Lanes project(std::span<const Vec3> points, const ProjectionPlane& plane, const Vec3& direction) {
  Lanes projected(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    projected.set(i, {dot(points[i], plane.a), dot(points[i], plane.b), dot(points[i], direction)});
  }
  return projected;
}

double angle_in_degrees(const Vec3& a, const Vec3& b) {
  const double product = a[0] * b[0] + a[1] * b[1];
  const double cosine = product / ((vkm::hypot(a[0], a[1]) + 1e-18) * (vkm::hypot(b[0], b[1]) + 1e-18));
  return vkm::acos(std::abs(std::max(-1.0, std::min(1.0, cosine)))) * 180.0 / pi;
}

/// Whether segments of a projection meet at less than an angle. A cosine that is right to 1e-12 tells that of nearly
/// all.
class LeastAngle {
 public:
  explicit LeastAngle(double degrees)
      : degrees_(degrees), surely_(degrees > 0.0 && degrees < 90.0 ? vkm::cos(degrees * pi / 180.0) - 1e-9 : -1.0) {}

  bool exceeds(const Vec3& a, const Vec3& b) const {
    const double aa = a[0] * a[0] + a[1] * a[1];
    const double bb = b[0] * b[0] + b[1] * b[1];
    const bool moderate = aa > 1e-30 && aa < 1e100 && bb > 1e-30 && bb < 1e100;
    if (moderate && std::abs(a[0] * b[0] + a[1] * b[1]) < surely_ * std::sqrt(aa * bb)) return false;
    return degrees_ > angle_in_degrees(a, b);
  }

 private:
  double degrees_;
  double surely_;  // a cosine below it belongs to a greater angle
};

/// The crossings of a projection, by i, then j.
std::vector<Crossing> find_crossings(const Lanes& points, double min_angle_deg, double depth_tol,
                                     Heartbeat& heartbeat) {
  constexpr double least = 1e-12, most = 0.999999999999;
  const std::size_t n = points.size();
  const auto at = [&](std::size_t index) { return points[index == n ? 0 : index]; };
  const LeastAngle least_angle(min_angle_deg);
  CrossingSearch search(points);
  std::vector<Crossing> crossings;
  for (std::size_t i = 0; i < n; ++i) {
    if (i % 16 == 0) heartbeat.tick();
    const Vec3 A = points[i], B = at(i + 1);
    for (const std::size_t j : search.candidates(i)) {
      const Vec3 C = points[j], D = at(j + 1);
      const Vec3 e = A - B, f = C - D, g = A - C;
      const double denom = f[1] * e[0] - f[0] * e[1];
      if (std::abs(denom) < parallel_limit) continue;
      const double t = (f[1] * g[0] - f[0] * g[1]) / denom;
      const double u = (g[0] * e[1] - g[1] * e[0]) / denom;
      if (!(least < t && t < most && least < u && u < most)) continue;
      const double z1 = A[2] + t * (B[2] - A[2]);
      const double z2 = C[2] + u * (D[2] - C[2]);
      if (std::abs(z1 - z2) < depth_tol) continue;
      if (least_angle.exceeds(B - A, D - C)) continue;
      crossings.push_back({i, j, t, u, z1 > z2});
    }
  }
  return crossings;
}

/// Draws the directions of an estimate, so many at a time, with one source of deviates over all of them.
class Directions {
 public:
  Directions(int seed, double guard) : generator_(static_cast<std::mt19937::result_type>(seed)), guard_(guard) {}

  std::vector<Vec3> next(int count) {
    std::vector<Vec3> list;
    for (int k = 0; k < count; ++k) list.push_back(random_direction(generator_, normal_, guard_));
    return list;
  }

 private:
  std::mt19937 generator_;
  PolarNormal normal_;
  double guard_;
};

/// The code of a projection's crossings on a curve of n points.
PlanarDiagram code_of(const std::vector<Crossing>& crossings, std::size_t n) {
  if (crossings.size() > static_cast<std::size_t>(std::numeric_limits<int>::max() / 2)) {
    throw std::length_error("pd_from_curve: too many crossings");
  }
  std::vector<Passage> passages;
  passages.reserve(2 * crossings.size());
  const auto position = [n](std::size_t i, double t) { return (static_cast<double>(i) + t) / static_cast<double>(n); };
  for (std::size_t c = 0; c < crossings.size(); ++c) {
    const Crossing& crossing = crossings[c];
    passages.push_back({position(crossing.i, crossing.t), c, crossing.first_is_over});
    passages.push_back({position(crossing.j, crossing.u), c, !crossing.first_is_over});
  }
  // The positions serve the order alone, so equal ones need not be told apart afterwards.
  std::stable_sort(passages.begin(), passages.end(),
                   [](const Passage& a, const Passage& b) { return a.position < b.position; });
  PlanarDiagram code(crossings.size());
  for (std::size_t k = 0; k < passages.size(); ++k) {
    const std::size_t over = passages[k].over ? 1 : 0;
    code[passages[k].crossing][over] = static_cast<int>(k == 0 ? passages.size() : k);
    code[passages[k].crossing][over + 2] = static_cast<int>(k + 1);
  }
  return code;
}

/// Twice the signed area of the triangle p, q, r.
VKM_INLINE double orientation(double px, double py, double qx, double qy, double rx, double ry) {
  return (qx - px) * (ry - py) - (qy - py) * (rx - px);
}

/// How many of the segments from `first` to `end` - 1 cross the segment from (ax, ay) to (bx, by) properly; x, y hold
/// their starts, x2, y2 their ends.
VKM_KERNEL std::int64_t count_row(const double* x, const double* y, const double* x2, const double* y2,
                                  std::size_t first, std::size_t end, double ax, double ay, double bx, double by) {
  std::int64_t count = 0;
  for (std::size_t block = first / lane_block * lane_block; block < end; block += lane_block) {
    std::int64_t hit[lane_block];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double cx = x[block + k], cy = y[block + k], dx = x2[block + k], dy = y2[block + k];
      const double first_side = orientation(ax, ay, bx, by, cx, cy) * orientation(ax, ay, bx, by, dx, dy);
      const double second_side = orientation(cx, cy, dx, dy, ax, ay) * orientation(cx, cy, dx, dy, bx, by);
      hit[k] = (first_side < 0.0) & (second_side < 0.0);
    }
    const auto low = static_cast<std::int64_t>(first) - static_cast<std::int64_t>(block);
    const auto high = static_cast<std::int64_t>(end - block);
    for (std::size_t k = 0; k < lane_block; ++k) {
      const auto lane = static_cast<std::int64_t>(k);
      count += lane >= low && lane < high ? hit[k] : 0;
    }
  }
  return count;
}

/// The proper crossings of a projection; the count stops where it has reached `limit`.
std::int64_t count_crossings(const Lanes& points, const std::atomic<std::int64_t>& limit, Heartbeat& heartbeat) {
  const std::size_t n = points.size();
  Lanes ends(n);
  for (std::size_t i = 0; i < n; ++i) ends.set(i, points[i + 1 == n ? 0 : i + 1]);
  std::int64_t count = 0;
  for (std::size_t i = 0; i + 2 < n && count < limit; ++i) {
    if (i % 16 == 0) heartbeat.tick();
    const Vec3 a = points[i], b = ends[i];
    const std::size_t end = i == 0 ? n - 1 : n;
    count += count_row(points.axis(0), points.axis(1), ends.axis(0), ends.axis(1), i + 2, end, a[0], a[1], b[0], b[1]);
  }
  return count;
}

}  // namespace

PlanarDiagram pd_from_curve(std::span<const Vec3> points, int tries, int seed, double min_angle_deg, double depth_tol,
                            const Poll& poll, int threads) {
  if (points.size() < 4) throw std::invalid_argument("pd_from_curve: need at least 4 points");
  constexpr double guard = 1e-18;
  constexpr int window = 64;  // directions that are drawn at once
  std::mt19937 generator(static_cast<std::mt19937::result_type>(seed));
  std::vector<Crossing> best;
  std::size_t best_try = 0;
  for (int attempt = 0; attempt < tries; attempt += window) {
    std::vector<Vec3> directions;
    for (int k = attempt; k < std::min(tries, attempt + window); ++k) {
      PolarNormal normal;  // a fresh one each time: the kept deviate of the third draw is thrown away
      directions.push_back(random_direction(generator, normal, guard));
    }
    std::mutex mutex;
    run_tasks(directions.size(), threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
      const Vec3& d = directions[task];
      const ProjectionPlane plane = projection_plane(d, std::abs(d[0]) < 0.9, guard);
      std::vector<Crossing> crossings = find_crossings(project(points, plane, d), min_angle_deg, depth_tol, heartbeat);
      const std::size_t own_try = static_cast<std::size_t>(attempt) + task;
      const std::lock_guard lock(mutex);
      if (crossings.size() < best.size() || (crossings.size() == best.size() && own_try >= best_try)) return;
      best = std::move(crossings);
      best_try = own_try;
    });
  }
  if (best.empty()) throw std::runtime_error("Failed to extract PD from any projection");
  return code_of(best, points.size());
}

std::int64_t estimate_crossing_number(std::span<const Vec3> points, int directions, int seed, const Poll& poll,
                                      int threads) {
  constexpr double guard = 1e-12;
  constexpr int window = 64;
  const auto n = static_cast<std::int64_t>(points.size());
  std::atomic<std::int64_t> best = n * n;
  Directions list(seed, guard);
  for (int first = 0; first < directions; first += window) {
    const std::vector<Vec3> drawn = list.next(std::min(window, directions - first));
    run_tasks(drawn.size(), threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
      heartbeat.tick();
      const Vec3& d = drawn[task];
      const ProjectionPlane plane = projection_plane(d, std::abs(d[0]) <= 0.9, guard);
      const std::int64_t count = count_crossings(project(points, plane, d), best, heartbeat);
      for (std::int64_t before = best; count < before && !best.compare_exchange_weak(before, count);) {
      }
    });
  }
  return best;
}

}  // namespace vkm
