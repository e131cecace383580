#include "filament/reach/critical_pairs.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "core/elementary.hpp"
#include "core/kernel.hpp"

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Distance of two parameters around a curve of length L.
double circular_gap(double s, double t, double L) {
  const double gap = std::abs(s - t);
  return std::min(L - gap, gap);
}

struct Seed {
  double s;
  double t;
  double key;
};

/// NaN comes after every number.
bool comes_before(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

/// The seeds with the least keys, ascending; of equal keys the earlier seed comes first.
class ShortList {
 public:
  explicit ShortList(std::size_t limit) : limit_(limit) { seeds_.reserve(limit + 1); }

  void offer(double s, double t, double key) {
    if (seeds_.size() == limit_) {
      if (!comes_before(key, seeds_.back().key)) return;
      seeds_.pop_back();
    }
    const auto place = std::upper_bound(seeds_.begin(), seeds_.end(), key,
                                        [](double value, const Seed& seed) { return comes_before(value, seed.key); });
    seeds_.insert(place, {s, t, key});
  }

  const std::vector<Seed>& seeds() const { return seeds_; }

 private:
  std::size_t limit_;
  std::vector<Seed> seeds_;
};

/// Samples of a spline at s = i L / M, by coordinate.
constexpr std::size_t most_samples = 192;

struct GridSamples {
  std::size_t size;
  std::array<double, most_samples> s{}, x{}, y{}, z{}, tx{}, ty{}, tz{}, speed{};

  GridSamples(const PeriodicCubicSpline3D& spline, std::size_t M) : size(M) {
    SplineSample sample;
    for (std::size_t i = 0; i < M; ++i) {
      s[i] = static_cast<double>(i) * spline.L() / static_cast<double>(M);
      spline.evaluate(s[i], sample);
      x[i] = sample.position[0];
      y[i] = sample.position[1];
      z[i] = sample.position[2];
      tx[i] = sample.tangent[0];
      ty[i] = sample.tangent[1];
      tz[i] = sample.tangent[2];
      speed[i] = norm(sample.tangent);
    }
  }
};

/// Chords from sample i of A to all samples of B: lengths d, and cosines ca, cb with the tangents.
VKM_KERNEL void chord_row(const GridSamples& A, std::size_t i, const GridSamples& B, double* d, double* ca,
                          double* cb) {
  const double x = A.x[i], y = A.y[i], z = A.z[i];
  const double tx = A.tx[i], ty = A.ty[i], tz = A.tz[i], speed = A.speed[i];
  for (std::size_t j = 0; j < most_samples; ++j) {
    const double rx = x - B.x[j], ry = y - B.y[j], rz = z - B.z[j];
    d[j] = std::sqrt(rx * rx + ry * ry + rz * rz);
    ca[j] = std::abs(rx * tx + ry * ty + rz * tz) / (speed * d[j] + 1e-30);
    cb[j] = std::abs(rx * B.tx[j] + ry * B.ty[j] + rz * B.tz[j]) / (B.speed[j] * d[j] + 1e-30);
  }
}

/// The seeds worth refining: the best by a score that favours short orthogonal chords, by the cosines, by the length.
std::vector<Seed> scan_seeds(const PeriodicCubicSpline3D& A, const PeriodicCubicSpline3D& B, bool same, std::size_t M,
                             double exclusion, Heartbeat& heartbeat) {
  constexpr double largest_cosine = 0.92;
  const GridSamples on_a(A, M);
  const std::optional<GridSamples> other = same ? std::nullopt : std::optional<GridSamples>(std::in_place, B, M);
  const GridSamples& on_b = same ? on_a : *other;
  ShortList by_score(64), by_cosines(48), by_distance(32);
  std::array<double, most_samples> d, ca, cb;
  for (std::size_t i = 0; i < M; ++i) {
    chord_row(on_a, i, on_b, d.data(), ca.data(), cb.data());
    heartbeat.tick();
    const double s = on_a.s[i];
    for (std::size_t j = same ? i + 1 : 0; j < M; ++j) {
      const double t = on_b.s[j];
      if (same && circular_gap(s, t, A.L()) < exclusion) continue;
      if (!(d[j] > 1e-12) || ca[j] > largest_cosine || cb[j] > largest_cosine) continue;
      by_score.offer(s, t, (ca[j] * ca[j] + 0.02 + cb[j] * cb[j]) * d[j]);
      by_cosines.offer(s, t, ca[j] + cb[j]);
      by_distance.offer(s, t, d[j]);
    }
  }
  std::vector<Seed> merged;
  for (const ShortList* list : {&by_score, &by_cosines, &by_distance}) {
    for (const Seed& seed : list->seeds()) {
      const bool known =
          std::any_of(merged.begin(), merged.end(), [&](const Seed& m) { return m.s == seed.s && m.t == seed.t; });
      if (!known) merged.push_back(seed);
    }
  }
  return merged;
}

/// The chord at one pair of parameters.
struct Chord {
  SplineSample a;
  SplineSample b;
  Vec3 R;
  double d;         // |R|
  double dd;        // |R|, or 1e-30 in place of 0
  double F;         // R . A'
  double G;         // R . B'
  double speed_a;   // |A'|
  double speed_b;   // |B'|
  double residual;  // the greater of |F| and |G|, relative to the lengths in it
};

VKM_INLINE void evaluate_chord(const PeriodicCubicSpline3D& A, const PeriodicCubicSpline3D& B, double s, double t,
                               Chord& chord) {
  A.evaluate(s, chord.a);
  B.evaluate(t, chord.b);
  chord.R = chord.a.position - chord.b.position;
  chord.d = norm(chord.R);
  chord.dd = chord.d > 0.0 ? chord.d : 1e-30;
  chord.F = dot(chord.R, chord.a.tangent);
  chord.G = dot(chord.R, chord.b.tangent);
  chord.speed_a = norm(chord.a.tangent);
  chord.speed_b = norm(chord.b.tangent);
  const double scale = std::max(std::max(chord.speed_a * chord.dd, chord.speed_b * chord.dd), 1e-30);
  chord.residual = std::max(std::abs(chord.F), std::abs(chord.G)) / scale;
}

struct Step {
  double ds;
  double dt;
  bool damped;
};

/// The Newton step of F = G = 0 where the Jacobian allows one, then damped least-squares steps (Levenberg 1944) with
/// growing damping; returns how many there are.
std::size_t candidate_steps(const Chord& c, std::array<Step, 6>& steps) {
  const double F = c.F, G = c.G;
  const double J11 = norm2(c.a.tangent) + dot(c.R, c.a.second);
  const double J12 = -dot(c.a.tangent, c.b.tangent);
  const double J21 = dot(c.a.tangent, c.b.tangent);
  const double J22 = dot(c.R, c.b.second) - norm2(c.b.tangent);
  const double det = J11 * J22 - J12 * J21;
  const double scale = std::max(1e-30, J11 * J11 + J12 * J12 + J21 * J21 + J22 * J22);
  std::size_t count = 0;
  if (std::abs(det) > scale * 1e-12) {
    steps[count++] = {(G * J12 - F * J22) / det, (F * J21 - G * J11) / det, false};
  }
  for (const double factor : {1e-16, 1e-14, 1e-12, 1e-10, 1e-8}) {
    const double mu = std::max(scale * factor, 1e-30);
    const double a11 = J11 * J11 + J21 * J21 + mu;
    const double a22 = J22 * J22 + J12 * J12 + mu;
    const double a12 = J22 * J21 + J12 * J11;
    const double g1 = G * J21 + F * J11;
    const double g2 = G * J22 + F * J12;
    const double D = a11 * a22 - a12 * a12;
    if (std::abs(D) > 1e-40) steps[count++] = {(-g1 * a22 + g2 * a12) / D, (-g2 * a11 + g1 * a12) / D, true};
  }
  return count;
}

Contact refine(const PeriodicCubicSpline3D& A, const PeriodicCubicSpline3D& B, bool same, double exclusion, double s,
               double t) {
  constexpr int most_iterations = 64;
  constexpr int halvings = 14;
  const double longest_step = std::min(A.L(), B.L()) * 0.08;
  s = A.wrap(s);
  t = B.wrap(t);
  Contact contact;
  Chord chord, trial;
  for (int iteration = 0; iteration < most_iterations; ++iteration) {
    evaluate_chord(A, B, s, t, chord);
    if (chord.residual < refinement_tolerance) break;
    std::array<Step, 6> steps;
    const std::size_t count = candidate_steps(chord, steps);
    double best = infinity, best_s = s, best_t = t;
    bool best_damped = false;
    for (std::size_t k = 0; k < count; ++k) {
      auto [ds, dt, damped] = steps[k];
      if (!std::isfinite(ds) || !std::isfinite(dt)) continue;
      const double length = vkm::hypot(ds, dt);
      if (length > longest_step) {
        ds *= longest_step / length;
        dt *= longest_step / length;
      }
      double alpha = 1.0;
      for (int halving = 0; halving < halvings; ++halving, alpha *= 0.5) {
        const double trial_s = A.wrap(s + alpha * ds);
        const double trial_t = B.wrap(t + alpha * dt);
        if (same && circular_gap(trial_s, trial_t, A.L()) < exclusion) continue;
        evaluate_chord(A, B, trial_s, trial_t, trial);
        if (trial.residual < best) {
          best = trial.residual;
          best_s = trial_s;
          best_t = trial_t;
          best_damped = damped;
        }
      }
    }
    if (!(best < chord.residual * 0.9999999999)) break;
    s = best_s;
    t = best_t;
    if (best_damped) contact.used_damped_step = true;
  }
  evaluate_chord(A, B, s, t, chord);
  const double aa = norm2(chord.a.tangent), bb = norm2(chord.b.tangent);
  contact.s = s;
  contact.t = t;
  contact.distance = chord.d;
  contact.orthogonality_residual = std::max(std::abs(chord.G) / (chord.speed_b * chord.dd + 1e-30),
                                            std::abs(chord.F) / (chord.speed_a * chord.dd + 1e-30));
  contact.h11 = aa + dot(chord.R, chord.a.second);
  contact.h22 = bb - dot(chord.R, chord.b.second);
  contact.h12 = -dot(chord.a.tangent, chord.b.tangent);
  contact.det = contact.h11 * contact.h22 - contact.h12 * contact.h12;
  contact.local_minimum = contact.h11 > -1e-10 && contact.h22 > -1e-10 &&
                          contact.det > -1e-8 * std::max(std::abs(contact.h11 * contact.h22), 1.0);
  contact.point_a = chord.a.position;
  contact.point_b = chord.b.position;
  return contact;
}

}  // namespace

CriticalPairSearch search_critical_pairs(const PeriodicCubicSpline3D& A, const PeriodicCubicSpline3D& B, bool same,
                                         Heartbeat& heartbeat) {
  const double LA = A.L(), LB = B.L();
  const double grid = std::round(10.0 * std::sqrt(static_cast<double>(std::max(A.n(), B.n()))));
  const auto M = static_cast<std::size_t>(std::clamp(grid, 64.0, static_cast<double>(most_samples)));
  const double exclusion = same ? std::max(LA * 0.015, LA * 4.0 / static_cast<double>(A.n())) : 0.0;

  CriticalPairSearch result;
  result.resolution = LA / static_cast<double>(M);
  const std::vector<Seed> seeds = scan_seeds(A, B, same, M, exclusion, heartbeat);
  result.seeds = seeds.size();
  std::vector<Contact> accepted;
  for (const Seed& seed : seeds) {
    heartbeat.tick();
    const Contact contact = refine(A, B, same, exclusion, seed.s, seed.t);
    const double d = contact.distance;
    const bool critical = std::isfinite(d) && contact.orthogonality_residual < orthogonality_bound;
    const bool excluded = same && circular_gap(contact.s, contact.t, LA) < exclusion;
    const bool known = std::any_of(accepted.begin(), accepted.end(), [&](const Contact& other) {
      return std::abs(d - other.distance) < std::max(d, 1.0) * 1e-8 &&
             circular_gap(contact.s, other.s, LA) < LA * 1e-5 && circular_gap(contact.t, other.t, LB) < LB * 1e-5;
    });
    if (critical && !excluded && !known) {
      accepted.push_back(contact);
    } else {
      ++result.rejected;
    }
  }
  result.refined = accepted.size();
  // The first of equal distances, as a stable sort would put it in front.
  const auto least = std::min_element(accepted.begin(), accepted.end(),
                                      [](const Contact& a, const Contact& b) { return a.distance < b.distance; });
  if (least != accepted.end()) result.contact = *least;
  return result;
}

}  // namespace vkm
