#include "ideal/settle.hpp"

#include <algorithm>
#include <cmath>

#include "core/numbers.hpp"

namespace vkm::ideal {

namespace {

constexpr double least_bound = 1e-6;

struct Penalties {
  double kink;
  double strut;
};

/// Multipliers with a margin, and with floors, or rows without a force now would stay violated.
Penalties penalties(const Solution& solution) {
  const auto most = [](const std::vector<double>& forces) {
    return forces.empty() ? 0.0 : *std::max_element(forces.begin(), forces.end());
  };
  return {std::max(0.05, 1.5 * most(solution.kink_forces)), std::max(0.2, 1.5 * most(solution.strut_forces))};
}

std::vector<double> edge_lengths(const Rope& rope, const Cycle& cycle) {
  auto list = lengths(rope, cycle);
  for (std::size_t c = 0; c < list.size(); ++c) list[c] /= rope.components[c].size();
  return list;
}

/// Merit of a rope, its kinks with the factors of the program.
double merit(const Rope& rope, const Cycle& cycle, const Program& program, const std::vector<double>& factors,
             const SettleOptions& options, const Penalties& weights) {
  const auto h = edge_lengths(rope, cycle);
  double sum = 0.0;
  for (std::size_t c = 0; c < h.size(); ++c) sum += h[c] * rope.components[c].size();
  double kinks = 0.0;
  for (const Kink& kink : program.kinks) {
    const Index c = cycle.component[kink.at];
    const double chord = norm(rope.points[cycle.next[kink.at]] - rope.points[cycle.previous[kink.at]]);
    kinks += factors[c] * std::max(0.0, chord_target(h[c], options.radius) - chord);
  }
  double struts = 0.0;
  for (const Contact& near : contacts(rope, cycle, options.distance, pi)) struts += options.distance - near.distance;
  return sum + weights.kink * kinks + weights.strut * struts;
}

/// What the program says the merit will be after a part of its step.
double model(const Cycle& cycle, const Program& program, const Solution& solution, const std::vector<double>& h,
             const Penalties& weights, double part) {
  double sum = 0.0;
  for (std::size_t c = 0; c < h.size(); ++c) {
    sum += (h[c] + part * (solution.edge_lengths[c] - h[c])) * program.components[c].size();
  }
  const auto& d = solution.moves;
  double kinks = 0.0;
  for (const Kink& kink : program.kinks) {
    const Index c = cycle.component[kink.at];
    const double change = dot(kink.gradient, d[cycle.next[kink.at]] - d[cycle.previous[kink.at]]) -
                          kink.slope * (solution.edge_lengths[c] - h[c]);
    kinks += std::max(0.0, -(kink.excess + part * change));
  }
  double struts = 0.0;
  for (const Strut& strut : program.struts) {
    const auto [i, j, s, t, w, excess, demand] = strut;
    const Vec3 change = (1.0 - s) * d[i] + s * d[cycle.next[i]] - (1.0 - t) * d[j] - t * d[cycle.next[j]];
    struts += std::max(0.0, -(excess + part * dot(w, change)));
  }
  return sum + weights.kink * kinks + weights.strut * struts;
}

}  // namespace

double violation(const Rope& rope, const Cycle& cycle, double radius, double distance) {
  const auto radii = corner_radii(rope, cycle);
  const double kink = radius - *std::min_element(radii.begin(), radii.end());
  const double strut = 0.5 * (distance - least_distance(rope, cycle, distance, pi));
  return std::max({0.0, kink, strut});
}

Settled settle(Rope rope, const SettleOptions& options, Heartbeat& heartbeat) {
  const Cycle cycle(rope);
  const double first_length = length(rope, cycle);
  Settled result;
  double bound = options.bound;
  while (result.programs < options.programs) {
    heartbeat.tick();
    const auto h = edge_lengths(rope, cycle);
    bound = std::min({bound, options.bound_most, 0.26 * least_distance(rope, cycle, 8.0, strand_gap)});
    if (bound < least_bound) break;
    ++result.programs;
    Demands demands;
    demands.radius = options.radius;
    demands.distance = options.distance;
    demands.bound = bound;
    const auto near = contacts(rope, cycle, options.distance + 1.5 * bound + 0.01, pi);
    Program program = program_of(rope, cycle, h, near, demands);
    Solution solution = solve(program, options.tolerance);
    if (!(solution.residual < std::max(10.0 * options.tolerance, 1e-3))) {
      bound *= 0.35;
      continue;
    }
    std::vector<double> factors;
    for (const double edge : h) factors.push_back(kink_factor(edge));
    const Penalties weights = penalties(solution);
    const double before = merit(rope, cycle, program, factors, options, weights);
    const double gain = before - model(cycle, program, solution, h, weights, 1.0);
    double part = 1.0;
    double ratio = 0.0;
    Rope trial = rope;
    bool accepted = false;
    for (int attempt = 0; attempt < 3 && !accepted; ++attempt, part *= accepted ? 1.0 : 0.5) {
      for (Index k = 0; k < rope.size(); ++k) trial.points[k] = rope.points[k] + part * solution.moves[k];
      const double promised = before - model(cycle, program, solution, h, weights, part);
      const double actual = before - merit(trial, cycle, program, factors, options, weights);
      ratio = promised > 0.0 ? actual / promised : 0.0;
      accepted = ratio > 0.05;
    }
    result.last = {std::move(program), std::move(solution)};
    if (accepted) {
      rope.points = trial.points;
      if (part == 1.0 && ratio > 0.6) bound *= 1.7;
      if (ratio < 0.25 || part < 0.5) bound *= 0.5;
    } else {
      bound *= 0.35;
    }
    const double total = length(rope, cycle);
    result.violation = violation(rope, cycle, options.radius, options.distance);
    if (gain < options.decrease * total && result.violation <= options.violation) {
      result.settled = true;
      break;
    }
    if (total < options.shortening * first_length) break;
  }
  result.bound = bound;
  result.rope = std::move(rope);
  return result;
}

}  // namespace vkm::ideal
