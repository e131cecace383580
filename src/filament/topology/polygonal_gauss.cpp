#include "filament/topology/polygonal_gauss.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "core/elementary.hpp"
#include "core/numbers.hpp"
#include "core/tasks.hpp"

namespace vkm {

namespace {

/// Four cosines, whose inverse sines add up to the solid angle of a pair of edges, and its sign; the sign is 0 for a
/// pair without one.
struct PairCosines {
  std::array<double, 4> cosines{};
  double sign = 0.0;

  double solid_angle(const double* angles) const {
    if (sign == 0.0) return 0.0;
    const double w = angles[0] + angles[1] + angles[2] + angles[3];
    return sign < 0.0 ? -w : w;
  }
};

/// The nearest integer, halves away from zero; NaN gives 0 and values beyond the range its ends.
std::int64_t rounded_to_64_bits(double value) {
  if (std::isnan(value)) return 0;
  constexpr double limit = 9223372036854775808.0;  // 2^63
  const double rounded = std::round(value);
  if (rounded >= limit) return std::numeric_limits<std::int64_t>::max();
  if (rounded < -limit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(rounded);
}

struct Sums {
  double with_sign = 0.0;
  double absolute = 0.0;

  void add(double w) {
    with_sign += w;
    absolute += std::abs(w);
  }

  PolygonalGaussResult over(double divisor) const {
    const double signed_integral = with_sign / divisor;
    return {signed_integral, absolute / divisor, rounded_to_64_bits(signed_integral)};
  }
};

const Vec3& wrapped(std::span<const Vec3> curve, std::size_t i) { return i == curve.size() ? curve[0] : curve[i]; }

PairCosines pair_cosines(const Vec3& p1, const Vec3& p2, const Vec3& p3, const Vec3& p4) {
  constexpr double least_norm2 = 1e-60;
  const Vec3 r13 = p3 - p1, r14 = p4 - p1, r23 = p3 - p2, r24 = p4 - p2;
  Vec3 n1 = cross(r13, r14);
  const double s1 = norm2(n1);
  if (s1 < least_norm2) return {};
  Vec3 n2 = cross(r14, r24);
  const double s2 = norm2(n2);
  if (s2 < least_norm2) return {};
  Vec3 n3 = cross(r24, r23);
  const double s3 = norm2(n3);
  if (s3 < least_norm2) return {};
  Vec3 n4 = cross(r23, r13);
  const double s4 = norm2(n4);
  if (s4 < least_norm2) return {};
  n1 = n1 * (1.0 / std::sqrt(s1));
  n2 = n2 * (1.0 / std::sqrt(s2));
  n3 = n3 * (1.0 / std::sqrt(s3));
  n4 = n4 * (1.0 / std::sqrt(s4));
  // rounding may have put a cosine just outside [-1, 1]; NaN stays NaN
  const auto clamped = [](double value) { return std::clamp(value, -1.0, 1.0); };
  const Vec3 r12 = p2 - p1, r34 = p4 - p3;
  return {{clamped(dot(n2, n3)), clamped(dot(n1, n2)), clamped(dot(n3, n4)), clamped(dot(n4, n1))},
          dot(r13, cross(r34, r12)) < 0.0 ? -1.0 : 1.0};
}

/// Hands the solid angles of pairs on in their order; the inverse sines are taken for many pairs at a time.
template <class Take>
class SolidAngles {
 public:
  explicit SolidAngles(const Take& take) : take_(take) {}

  void add(const PairCosines& pair) {
    pairs_[count_++] = pair;
    if (count_ == pairs_.size()) flush();
  }

  void flush() {
    std::array<double, 4 * block> angles;
    for (std::size_t i = 0; i < count_; ++i) std::copy_n(pairs_[i].cosines.begin(), 4, angles.begin() + 4 * i);
    const std::span<double> used(angles.data(), 4 * count_);
    vkm::asin(used, used);
    for (std::size_t i = 0; i < count_; ++i) take_(pairs_[i].solid_angle(&angles[4 * i]));
    count_ = 0;
  }

 private:
  static constexpr std::size_t block = 64;
  const Take& take_;
  std::array<PairCosines, block> pairs_;
  std::size_t count_ = 0;
};

/// The pairs of an edge of one curve with the edges first .. last - 1 of another.
struct EdgeRow {
  std::size_t edge, first, last;

  std::size_t pairs() const { return last - first; }
};

/// Gives take(angle) the solid angle of each pair of the rows, in their order.
template <class Take>
void visit_angles(std::span<const Vec3> a, std::span<const Vec3> b, std::span<const EdgeRow> rows, Heartbeat& heartbeat,
                  const Take& take) {
  SolidAngles<Take> angles(take);
  for (const EdgeRow& row : rows) {
    const std::size_t i = row.edge;
    for (std::size_t j = row.first; j < row.last; ++j) {
      if (j % 1024 == 0) heartbeat.tick();
      angles.add(pair_cosines(a[i], wrapped(a, i + 1), b[j], wrapped(b, j + 1)));
    }
    heartbeat.tick();
  }
  angles.flush();
}

/// Sums over all rows, in their order. Threads share runs of them, and the sums are taken afterwards.
Sums sum_over_rows(std::span<const Vec3> a, std::span<const Vec3> b, std::span<const EdgeRow> rows, const Poll& poll,
                   int threads) {
  Sums sums;
  Heartbeat heartbeat(poll);
  if (threads <= 1) {
    visit_angles(a, b, rows, heartbeat, [&](double w) { sums.add(w); });
    return sums;
  }
  constexpr std::size_t run = 4096;  // pairs of a task, as long as rows are shorter
  std::vector<std::size_t> begins = {0};
  std::size_t pairs = 0;
  for (std::size_t r = 0; r < rows.size(); ++r) {
    pairs += rows[r].pairs();
    if (pairs < run && r + 1 < rows.size()) continue;
    begins.push_back(r + 1);
    pairs = 0;
  }
  const std::size_t tasks = begins.size() - 1;
  const std::size_t window = 64 * static_cast<std::size_t>(threads);
  for (std::size_t begin = 0; begin < tasks; begin += window) {
    std::vector<std::vector<double>> angles(std::min(window, tasks - begin));
    run_tasks(angles.size(), threads, poll, [&](std::size_t task, Heartbeat& own) {
      const std::size_t first = begins[begin + task];
      visit_angles(a, b, rows.subspan(first, begins[begin + task + 1] - first), own,
                   [&found = angles[task]](double w) { found.push_back(w); });
    });
    heartbeat.tick();
    for (const std::vector<double>& list : angles) {
      for (const double w : list) sums.add(w);
    }
  }
  return sums;
}

}  // namespace

double edge_pair_solid_angle(const Vec3& p1, const Vec3& p2, const Vec3& p3, const Vec3& p4) {
  const PairCosines pair = pair_cosines(p1, p2, p3, p4);
  std::array<double, 4> angles = pair.cosines;
  vkm::asin(angles, angles);
  return pair.solid_angle(angles.data());
}

PolygonalGaussResult polygonal_gauss_self(std::span<const Vec3> curve, const Poll& poll, int threads) {
  const std::size_t n = curve.size();
  if (n < 3) return {};
  std::vector<EdgeRow> rows;
  for (std::size_t i = 0; i + 2 < n; ++i) rows.push_back({i, i + 2, i == 0 ? n - 1 : n});  // n - 1 ends where 0 starts
  return sum_over_rows(curve, curve, rows, poll, threads).over(two_pi);
}

PolygonalGaussResult polygonal_gauss_pair(std::span<const Vec3> a, std::span<const Vec3> b, const Poll& poll,
                                          int threads) {
  if (a.size() < 3 || b.size() < 3) return {};
  std::vector<EdgeRow> rows;
  for (std::size_t i = 0; i < a.size(); ++i) rows.push_back({i, 0, b.size()});
  return sum_over_rows(a, b, rows, poll, threads).over(four_pi);
}

}  // namespace vkm
