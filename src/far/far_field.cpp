#include "far/far_field.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/finite.hpp"
#include "core/lane_view.hpp"
#include "core/tasks.hpp"
#include "far/eight.hpp"
#include "far/near_sums.hpp"

namespace vkm::far {

namespace {

constexpr std::size_t sample_count = 64;
constexpr std::size_t worthwhile = 512;  // elements and points; fewer are summed directly
constexpr int most_tries = 3;

double largest_of(std::span<const Vec3> vectors) {
  double most = 0.0;
  for (const Vec3& v : vectors) most = std::max(most, norm2(v));
  return std::sqrt(most);
}

Elements elements_of(const Problem& problem, const Pass& pass) {
  const std::size_t count = pass.last_element - pass.first_element;
  return {std::span(problem.at).subspan(pass.first_element, count),
          std::span(problem.vector).subspan(pass.first_element, count)};
}

/// The entries of a point, in the numbering of a pass.
LeftOut left_out_of(const Problem& problem, const Pass& pass, std::size_t point) {
  if (problem.left_out.empty()) return {};
  const auto first = static_cast<double>(pass.first_element);
  const LeftOut all = problem.left_out[point];
  // What is before the run is below 0, and what is behind it is the number of none.
  return {all.first - first, all.second - first};
}

/// The direct sum at some of the points, given in ascending order.
std::vector<Vec3> direct_at(const Problem& problem, std::span<const std::size_t> points, int threads,
                            const Poll& poll) {
  const Lanes at{problem.at}, vectors{problem.vector};
  std::vector<double> number(problem.at.size());
  for (std::size_t i = 0; i < number.size(); ++i) number[i] = static_cast<double>(i);
  std::vector<Vec3> velocity(points.size());
  run_tasks((points.size() + near_margin - 1) / near_margin, threads, poll,
            [&](std::size_t task, Heartbeat& heartbeat) {
              const std::span own =
                  points.subspan(task * near_margin, std::min(near_margin, points.size() - task * near_margin));
              for (std::size_t k = 0; k < own.size(); ++k) velocity[task * near_margin + k] = problem.base[own[k]];
              for (const Pass& pass : problem.passes) {
                Lanes places(near_margin), sums(near_margin);
                double first[near_margin], second[near_margin];
                std::vector<std::size_t> taken;
                for (std::size_t k = 0; k < own.size(); ++k) {
                  if (own[k] < pass.first_point || own[k] >= pass.last_point) continue;
                  const LeftOut left_out = problem.left_out.empty() ? LeftOut{} : problem.left_out[own[k]];
                  places.set(taken.size(), problem.points[own[k]]);
                  first[taken.size()] = left_out.first;
                  second[taken.size()] = left_out.second;
                  taken.push_back(k);
                }
                if (taken.empty()) continue;
                std::fill(first + taken.size(), first + near_margin, LeftOut::none);
                std::fill(second + taken.size(), second + near_margin, LeftOut::none);
                const NearPoints to{view(places), first, second, space(sums)};
                const NearRule rule{pass.soft * pass.soft, 4};
                constexpr std::size_t run = 4096;
                for (std::size_t s = pass.first_element; s < pass.last_element; s += run) {
                  const std::size_t end = std::min(pass.last_element, s + run);
                  const NearRun own_run{s, end, !problem.left_out.empty()};
                  add_near({view(at), view(vectors), number.data()}, {&own_run, 1}, rule, to, 0, taken.size());
                  heartbeat.tick();
                }
                for (std::size_t k = 0; k < taken.size(); ++k)
                  velocity[task * near_margin + taken[k]] += pass.sign * sums[k];
              }
            });
  return velocity;
}

/// The trees of all passes.
std::vector<TreeSum> trees_of(const Problem& problem) {
  std::vector<TreeSum> trees;
  for (const Pass& pass : problem.passes) {
    const std::size_t count = pass.last_point - pass.first_point;
    std::vector<LeftOut> left_out;
    for (std::size_t i = 0; i < count && !problem.left_out.empty(); ++i) {
      left_out.push_back(left_out_of(problem, pass, pass.first_point + i));
    }
    trees.emplace_back(elements_of(problem, pass), std::span(problem.points).subspan(pass.first_point, count),
                       left_out);
  }
  return trees;
}

std::vector<Vec3> by_tree(const Problem& problem, std::vector<TreeSum>& trees, const TreeRule& rule, const Poll& poll) {
  std::vector<Vec3> velocity = problem.base;
  for (std::size_t k = 0; k < trees.size(); ++k) {
    const Pass& pass = problem.passes[k];
    TreeRule own = rule;
    own.soft = pass.soft;
    const std::vector<Vec3> sums = trees[k].velocity(own, poll);
    for (std::size_t i = 0; i < sums.size(); ++i) velocity[pass.first_point + i] += pass.sign * sums[i];
  }
  return velocity;
}

/// About the largest velocity: where strands pass close to each other it is far above that of a sample. An expansion of
/// the first order is enough to tell, and costs little beside what a generous allowance saves.
double rough_largest(const Problem& problem, std::vector<TreeSum>& trees, double sampled, int threads,
                     const Poll& poll) {
  TreeRule rule;
  rule.limit = 1;
  rule.steps = 2;
  rule.threads = threads;
  rule.allowance = 3.0 * sampled;
  return std::max(sampled, 0.8 * largest_of(by_tree(problem, trees, rule, poll)));
}

/// Expansions above the limit cost more than the cut of their cells; near roots need not be more exact.
TreeRule rule_of(double tolerance, int threads) {
  TreeRule rule;
  const double digits = -vkm::log10(tolerance);
  rule.limit = static_cast<int>(4.0 + 0.7 * digits);
  rule.steps = tolerance >= 1e-4 ? 2 : tolerance >= 1e-8 ? 3 : 4;
  rule.threads = threads;
  return rule;
}

}  // namespace

FarVelocity far_velocity(const Problem& problem, double tolerance, int threads, const Poll& poll) {
  if (!(tolerance >= 1e-12 && tolerance <= 1e-1)) {
    throw std::invalid_argument("the tolerance must be from 1e-12 to 1e-1");
  }
  if (!all_finite(problem.at) || !all_finite(problem.vector) || !all_finite(problem.points)) {
    throw std::invalid_argument("coordinates must be finite");
  }
  const std::size_t count = problem.points.size();
  FarVelocity result;
  if (std::min(count, problem.at.size()) >= worthwhile) {
    std::vector<std::size_t> samples(sample_count);
    for (std::size_t s = 0; s < sample_count; ++s) samples[s] = (2 * s + 1) * count / (2 * sample_count);
    const std::vector<Vec3> exact = direct_at(problem, samples, threads, poll);
    TreeRule rule = rule_of(tolerance, threads);
    std::vector<TreeSum> trees = trees_of(problem);
    // The largest error is 0.7 of the allowance for a single smooth curve, and less for more strands.
    rule.allowance = 0.5 * tolerance * rough_largest(problem, trees, largest_of(exact), threads, poll);
    for (int attempt = 0; attempt < most_tries && rule.allowance > 0.0; ++attempt) {
      result.velocity = by_tree(problem, trees, rule, poll);
      result.largest = largest_of(result.velocity);
      double error = 0.0;
      for (std::size_t s = 0; s < sample_count; ++s)
        error = std::max(error, norm(result.velocity[samples[s]] - exact[s]));
      result.sampled_error = error / result.largest;
      result.tree = true;
      if (result.sampled_error <= 0.3 * tolerance) return result;
      rule.allowance /= 16.0;
      rule.limit = std::min(rule.limit + 2, 20);
      ++rule.steps;
    }
  }
  std::vector<std::size_t> all(count);
  for (std::size_t i = 0; i < count; ++i) all[i] = i;
  result.velocity = direct_at(problem, all, threads, poll);
  result.largest = largest_of(result.velocity);
  result.sampled_error = 0.0;
  result.tree = false;
  return result;
}

}  // namespace vkm::far
