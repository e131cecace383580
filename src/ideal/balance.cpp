#include "ideal/balance.hpp"

#include <cmath>

#include "core/numbers.hpp"
#include "ideal/interior_point.hpp"

namespace vkm::ideal {

namespace {

constexpr double bound = 1e-3;        // of the trial step, in tube radii
constexpr double least_force = 1e-5;  // that counts

double square(const std::vector<Vec3>& forces) {
  double sum = 0.0;
  for (const Vec3& force : forces) sum += norm2(force);
  return sum;
}

}  // namespace

Balance balance(const Rope& rope) {
  const Cycle cycle(rope);
  auto h = lengths(rope, cycle);
  for (std::size_t c = 0; c < h.size(); ++c) h[c] /= rope.components[c].size();
  Demands demands;
  demands.bound = bound;
  const Program program = program_of(rope, cycle, h, contacts(rope, cycle, 2.0 + 0.01, pi), demands);
  const Solution solution = solve(program, 1e-7);
  const auto radii = corner_radii(rope, cycle);

  Balance result;
  std::vector<Vec3> rest(rope.size(), Vec3{});
  std::vector<Vec3> tension(rope.size(), Vec3{});
  const auto add = [&rest](Index at, double factor, const Vec3& along) { rest[at] += factor * along; };
  for (Index k = 0; k < rope.size(); ++k) {
    const Vec3& u = program.edges[k].direction;
    tension[k] += u;
    tension[cycle.next[k]] -= u;
    add(k, solution.edge_forces[k], u);
    add(cycle.next[k], -solution.edge_forces[k], u);
  }
  for (std::size_t r = 0; r < program.kinks.size(); ++r) {
    const Kink& kink = program.kinks[r];
    const double z = solution.kink_forces[r];
    add(cycle.next[kink.at], z, kink.gradient);
    add(kink.at, -2.0 * z, kink.gradient);
    add(cycle.previous[kink.at], z, kink.gradient);
    const double force = z * kink_factor(h[cycle.component[kink.at]]);  // along the corner's chord
    if (force > least_force) result.kinks.push_back({kink.at, radii[kink.at], force});
  }
  for (std::size_t r = 0; r < program.struts.size(); ++r) {
    const Strut& strut = program.struts[r];
    const double z = solution.strut_forces[r];
    add(strut.i, z * (1.0 - strut.s), strut.normal);
    add(cycle.next[strut.i], z * strut.s, strut.normal);
    add(strut.j, -z * (1.0 - strut.t), strut.normal);
    add(cycle.next[strut.j], -z * strut.t, strut.normal);
    if (z > least_force) {
      result.struts.push_back({strut.i, strut.s, strut.j, strut.t, 2.0 + strut.excess, z});
    }
  }
  result.residual = std::sqrt(square(rest) / square(tension));
  return result;
}

}  // namespace vkm::ideal
