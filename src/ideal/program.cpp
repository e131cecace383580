#include "ideal/program.hpp"

#include <algorithm>
#include <cmath>

namespace vkm::ideal {

namespace {

/// What a row with this excess (negative: violated) may ask of the step.
double demand(double excess, double most) { return std::min(-excess, most); }

/// Part of the bound that the vertices may slide along the curve for even edges.
constexpr double slide = 0.3;

/// Leaves as much of the edges' unevenness as they are as sliding by the allowed part of the bound cannot take away.
void even_out(Program& program, std::size_t c, double h) {
  const auto [begin, end] = program.components[c];
  double sum = 0.0;
  double least = 0.0;
  double most = 0.0;
  for (Index k = begin; k < end; ++k) {
    sum += program.edges[k].length - h;
    least = std::min(least, sum);
    most = std::max(most, sum);
  }
  const double needed = 0.5 * (most - least);
  const double part = needed > slide * program.bound ? slide * program.bound / needed : 1.0;
  for (Index k = begin; k < end; ++k) {
    double& l = program.edges[k].length;
    l = h + part * (l - h);
  }
}

}  // namespace

double kink_excess(const Vec3& u, const Vec3& v, double h, double radius) {
  const double x = 0.5 * h / radius;
  return h * (norm(u + v) - 2.0 / std::sqrt(1.0 + x * x));
}

double kink_factor(double h) { return 2.0 / (h * h * h); }

double quadratic(const Program& program, const Cycle& cycle, const std::vector<Vec3>& moves) {
  double sum = 0.0;
  for (Index k = 0; k < moves.size(); ++k) {
    const auto& [u, l] = program.edges[k];
    const Vec3 change = moves[cycle.next[k]] - moves[k];
    const Vec3 bend = change - (moves[k] - moves[cycle.previous[k]]);
    const double along = dot(u, change);
    sum += (norm2(change) - along * along) / l + program.stiffness / (l * l * l) * norm2(bend) +
           program.rho * norm2(moves[k]);
  }
  return 0.5 * sum;
}

Program program_of(const Rope& rope, const Cycle& cycle, const std::vector<double>& edge_lengths,
                   const std::vector<Contact>& near, const Demands& demands) {
  const auto& p = rope.points;
  Program program;
  program.components = rope.components;
  program.bound = demands.bound;
  program.stiffness = demands.stiffness;
  program.edges.reserve(rope.size());
  for (Index k = 0; k < rope.size(); ++k) {
    const Vec3 e = p[cycle.next[k]] - p[k];
    const double l = norm(e);
    program.edges.push_back({e / l, l});
  }
  for (std::size_t c = 0; c < rope.components.size(); ++c) even_out(program, c, edge_lengths[c]);

  // A corner that cannot reach its limit within the box needs no row.
  for (Index k = 0; k < rope.size(); ++k) {
    const double h = edge_lengths[cycle.component[k]];
    const double factor = kink_factor(h);
    const double x = 0.5 * h / demands.radius;
    const double root = std::sqrt(1.0 + x * x);
    const Vec3& u = program.edges[cycle.previous[k]].direction;
    const Vec3& v = program.edges[k].direction;
    const double size = norm(u + v);
    // Derivatives by h: of the target; of h |u + v| where the edges stay as long as h.
    const double slope = factor * (2.0 / (root * root * root) - 4.0 / size);
    const double excess = factor * kink_excess(u, v, h, demands.radius);
    const double most = demands.pace * demands.bound * std::max(1.0, 0.1 * factor);
    // The row holds the change of h, so that the demand holds the present h.
    program.kinks.push_back({k, (factor / size) * (u - v), slope, excess, demand(excess, most) - slope * h});
  }

  program.struts.reserve(near.size());
  for (const Contact& contact : near) {
    const auto [i, j, s, t, distance] = contact;
    const Vec3 w = (1.0 - s) * p[i] + s * p[cycle.next[i]] - (1.0 - t) * p[j] - t * p[cycle.next[j]];
    program.struts.push_back({i, j, s, t, w / distance, distance - demands.distance,
                              demand(distance - demands.distance, demands.pace * demands.bound)});
  }
  return program;
}

}  // namespace vkm::ideal
