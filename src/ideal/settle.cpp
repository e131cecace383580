#include "ideal/settle.hpp"

#include <algorithm>
#include <cmath>

#include "core/numbers.hpp"
#include "ideal/interior_point.hpp"

namespace vkm::ideal {

namespace {

constexpr double least_bound = 1e-6;
constexpr double most_pace = 0.6;

std::vector<double> edge_lengths(const Rope& rope, const Cycle& cycle) {
  auto list = lengths(rope, cycle);
  for (std::size_t c = 0; c < list.size(); ++c) list[c] /= rope.components[c].size();
  return list;
}

/// One step's program, and what it takes to judge a trial of it.
struct Step {
  Program program;
  std::vector<double> h;           ///< edge lengths before the step
  std::vector<Contact> reachable;  ///< pairs that any step within the bound could bring into touch
  std::vector<std::size_t> row;    ///< of each of them among the struts, or none
  std::vector<double> kink_weights;
  std::vector<double> strut_weights;
};

constexpr std::size_t none = SIZE_MAX;
constexpr double least_kink_weight = 0.02;
constexpr double most_kink_weight = 1.0;
constexpr int first_programs = 3;            // they take what a new spacing left
constexpr int last_programs = 20;            // of a fine level that does not settle: they mend its corners
constexpr double least_strut_weight = 0.02;  // a contact has many rows

/// Weights of an exact penalty: the multipliers with a margin, and with floors, or rows without a force now would stay
/// violated. One weight for all rows, the largest, would make long steps along a curved valley look bad.
std::vector<double> weights(const std::vector<double>& forces, double least) {
  std::vector<double> list;
  for (const double force : forces) list.push_back(std::max(least, 1.5 * force));
  return list;
}

struct Judgement {
  double merit;
  double violation;  ///< largest shortfall, in tube radii
};

double excess_of(const Kink& kink, const Rope& rope, const Cycle& cycle, double factor, double h, double radius) {
  const Vec3 before = rope.points[kink.at] - rope.points[cycle.previous[kink.at]];
  const Vec3 after = rope.points[cycle.next[kink.at]] - rope.points[kink.at];
  return factor * kink_excess(before / norm(before), after / norm(after), h, radius);
}

Judgement judge(const Rope& rope, const Cycle& cycle, const Step& step, const SettleOptions& options) {
  const auto h = edge_lengths(rope, cycle);
  double sum = 0.0;
  for (std::size_t c = 0; c < h.size(); ++c) sum += h[c] * rope.components[c].size();
  double kinks = 0.0;
  for (std::size_t r = 0; r < step.program.kinks.size(); ++r) {
    const Kink& kink = step.program.kinks[r];
    const Index c = cycle.component[kink.at];
    const double excess = excess_of(kink, rope, cycle, kink_factor(step.h[c]), h[c], options.radius);
    kinks += step.kink_weights[r] * std::max(0.0, -excess);
  }
  double struts = 0.0;
  double least = options.distance;
  for (std::size_t k = 0; k < step.reachable.size(); ++k) {
    const double distance = contact(rope, cycle, step.reachable[k].i, step.reachable[k].j).distance;
    const double weight = step.row[k] == none ? least_strut_weight : step.strut_weights[step.row[k]];
    struts += weight * std::max(0.0, options.distance - distance);
    least = std::min(least, distance);
  }
  const auto radii = corner_radii(rope, cycle);
  const double corner = options.radius - *std::min_element(radii.begin(), radii.end());
  return {sum + kinks + struts, std::max({0.0, corner, 0.5 * (options.distance - least)})};
}

double kink_change(const Kink& kink, const Cycle& cycle, const std::vector<Vec3>& d, double change_of_h) {
  const Vec3 bend = d[cycle.next[kink.at]] - 2.0 * d[kink.at] + d[cycle.previous[kink.at]];
  return dot(kink.gradient, bend) - kink.slope * change_of_h;
}

double strut_change(const Strut& strut, const Cycle& cycle, const std::vector<Vec3>& d) {
  const Vec3 change = (1.0 - strut.s) * d[strut.i] + strut.s * d[cycle.next[strut.i]] - (1.0 - strut.t) * d[strut.j] -
                      strut.t * d[cycle.next[strut.j]];
  return dot(strut.normal, change);
}

/// What the program says the merit will be after a part of its step.
double model(const Cycle& cycle, const Step& step, const Solution& solution, double part) {
  double sum = 0.0;
  for (std::size_t c = 0; c < step.h.size(); ++c) {
    sum += (step.h[c] + part * (solution.edge_lengths[c] - step.h[c])) * step.program.components[c].size();
  }
  double kinks = 0.0;
  for (std::size_t r = 0; r < step.program.kinks.size(); ++r) {
    const Kink& kink = step.program.kinks[r];
    const Index c = cycle.component[kink.at];
    const double change = kink_change(kink, cycle, solution.moves, solution.edge_lengths[c] - step.h[c]);
    kinks += step.kink_weights[r] * std::max(0.0, -(kink.excess + part * change));
  }
  double struts = 0.0;
  for (std::size_t r = 0; r < step.program.struts.size(); ++r) {
    const Strut& strut = step.program.struts[r];
    struts +=
        step.strut_weights[r] * std::max(0.0, -(strut.excess + part * strut_change(strut, cycle, solution.moves)));
  }
  return sum + kinks + struts + part * part * quadratic(step.program, cycle, solution.moves);
}

/// The same program with its rows corrected by what they lost in this trial beyond their linear forms (R. Fletcher,
/// Second order corrections for non-differentiable optimization, 1982). Fine corners ask for it: moves across the edges
/// lengthen them, which a corner's limit feels 1 / h^3 times.
Program corrected(const Step& step, const Rope& rope, const Cycle& cycle, const Solution& solution, const Rope& trial,
                  const SettleOptions& options) {
  Program program = step.program;
  const auto& d = solution.moves;
  for (Index k = 0; k < trial.size(); ++k) {
    const Index next = cycle.next[k];
    Edge& edge = program.edges[k];
    edge.length += norm(trial.points[next] - trial.points[k]) - norm(rope.points[next] - rope.points[k]) -
                   dot(edge.direction, d[next] - d[k]);
  }
  const auto h = edge_lengths(trial, cycle);
  for (Kink& kink : program.kinks) {
    const Index c = cycle.component[kink.at];
    const double found = excess_of(kink, trial, cycle, kink_factor(step.h[c]), h[c], options.radius);
    kink.demand += kink.excess + kink_change(kink, cycle, d, h[c] - step.h[c]) - found;
  }
  for (Strut& strut : program.struts) {
    const double found = contact(trial, cycle, strut.i, strut.j).distance - options.distance;
    strut.demand += strut.excess + strut_change(strut, cycle, d) - found;
  }
  return program;
}

void move(const Rope& rope, const Solution& solution, double part, Rope& trial) {
  for (Index k = 0; k < rope.size(); ++k) trial.points[k] = rope.points[k] + part * solution.moves[k];
}

double reach(const Solution& solution) {
  double most = 0.0;
  for (const Vec3& d : solution.moves) most = std::max({most, std::abs(d[0]), std::abs(d[1]), std::abs(d[2])});
  return most;
}

bool usable(const Solution& solution, double tolerance) { return solution.residual < std::max(10.0 * tolerance, 1e-3); }

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
  result.violation = violation(rope, cycle, options.radius, options.distance);
  double bound = options.bound;
  double pace = most_pace;
  double kink_weight = least_kink_weight;
  double renewed_at = 0.0;  // length at which the bound was last widened
  double tightest_value = INFINITY;
  std::vector<Vec3> tightest;
  Rope trial = rope;
  while (result.programs < options.programs) {
    heartbeat.tick();
    bound = std::min(bound, options.bound_most);
    bound = std::min(bound, 0.26 * least_distance(rope, cycle, bound / 0.26, strand_gap));
    if (bound < least_bound) break;
    ++result.programs;
    Demands demands;
    demands.radius = options.radius;
    demands.distance = options.distance;
    demands.bound = bound;
    demands.pace = pace;
    demands.stiffness = options.stiffness;
    Step step;
    step.h = edge_lengths(rope, cycle);
    // No vertex moves by more than sqrt(3) of the bound.
    step.reachable = contacts(rope, cycle, options.distance + 3.5 * bound, pi);
    std::vector<Contact> near;
    for (const Contact& pair : step.reachable) {
      const bool is_row = pair.distance < options.distance + 1.5 * bound + 0.01;
      step.row.push_back(is_row ? near.size() : none);
      if (is_row) near.push_back(pair);
    }
    step.program = program_of(rope, cycle, step.h, near, demands);
    Solution solution = solve(step.program, options.tolerance);
    if (!usable(solution, options.tolerance)) {
      // Too much is asked within too small a box.
      pace *= 0.25;
      bound *= 2.0;
      continue;
    }
    pace = std::min(most_pace, 2.0 * pace);
    step.kink_weights = weights(solution.kink_forces, kink_weight);
    step.strut_weights = weights(solution.strut_forces, least_strut_weight);
    const double before = judge(rope, cycle, step, options).merit;
    const double gain = before - model(cycle, step, solution, 1.0);
    const auto ratio_of = [&](double promised, const Judgement& found) {
      return promised > 0.0 ? (before - found.merit) / promised : 0.0;
    };
    double part = 1.0;
    move(rope, solution, part, trial);
    Judgement found = judge(trial, cycle, step, options);
    double ratio = ratio_of(gain, found);
    if (options.fine && ratio < 0.3) {
      const Solution second = solve(corrected(step, rope, cycle, solution, trial, options), options.tolerance);
      if (usable(second, options.tolerance)) {
        Rope other = rope;
        move(rope, second, 1.0, other);
        const Judgement better = judge(other, cycle, step, options);
        if (better.merit < found.merit) {
          trial = std::move(other);
          found = better;
          ratio = ratio_of(gain, found);
        }
      }
    }
    while (ratio < 0.05 && part > 0.25) {
      part *= 0.5;
      move(rope, solution, part, trial);
      found = judge(trial, cycle, step, options);
      ratio = ratio_of(before - model(cycle, step, solution, part), found);
    }
    if (ratio < 0.05) {
      bound *= 0.35;
    } else {
      std::swap(rope.points, trial.points);
      result.violation = found.violation;
      // Light corners let contacts slide to where they rest; at the end they must hold.
      if (options.fine && result.programs > options.programs - last_programs && found.violation > options.violation) {
        kink_weight = std::min(most_kink_weight, 2.0 * kink_weight);
      }
      const double value = length(rope, cycle) / (1.0 - std::min(0.5, found.violation));
      if (value < tightest_value) {
        tightest_value = value;
        tightest = rope.points;
      }
      // A bound that no move reaches brings rows, and no gain.
      if (part == 1.0 && ratio > 0.6 && reach(solution) > 0.5 * bound) bound *= 1.7;
      if (part < 1.0) bound *= part;
      if (part == 1.0 && ratio < 0.25) bound *= 0.5;
    }
    const double total = length(rope, cycle);
    if (result.programs == first_programs) renewed_at = total;
    if (gain < options.decrease * total && result.violation <= options.violation) {
      // Within a narrow bound no step promises much.
      result.settled =
          !options.fine || bound > 0.25 * options.bound || renewed_at - total < 10.0 * options.decrease * total;
      if (result.settled) break;
      renewed_at = total;
      bound = options.bound;
    }
    // Nothing left but to mend what the last steps violated: a wider one would violate as much again.
    if (options.fine && gain < 3.0 * options.decrease * total && result.violation > options.violation) {
      bound = std::min(bound, 4.0 * result.violation);
    }
    if (total < options.shortening * first_length) break;
  }
  if (options.fine && !result.settled && !tightest.empty()) rope.points = std::move(tightest);
  result.bound = bound;
  result.violation = violation(rope, cycle, options.radius, options.distance);
  result.rope = std::move(rope);
  return result;
}

}  // namespace vkm::ideal
