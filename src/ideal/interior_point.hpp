#pragma once

/// Solves the quadratic program of one step by a primal-dual interior point method with a predictor and a corrector
/// (S. Mehrotra, On the implementation of a primal-dual interior point method, 1992). The equalities are proximal: the
/// multipliers' step is damped by delta = 1e-7, which leaves one positive definite system in the moves,
///
///     K = H + A^T A / delta + G^T diag(z / s) G + diag(box),
///
/// with H of the objective, and the edge lengths h as its border. Signs of the multipliers: the gradient of the
/// objective plus A^T y equals G^T z plus the box's forces, with A and G the edges' and the inequalities' rows, z >= 0.

#include <vector>

#include "ideal/program.hpp"

namespace vkm::ideal {

struct Solution {
  std::vector<Vec3> moves;
  std::vector<double> edge_lengths;  ///< h of each component
  std::vector<double> edge_forces;   ///< y
  std::vector<double> kink_forces;   ///< z of the kink rows as they stand in the program
  std::vector<double> strut_forces;
  double residual = 0.0;  ///< largest of the violations, the unbalanced forces and the products of slack and force
  int iterations = 0;
  bool solved = false;  ///< within the tolerance; never so of a program without a solution
};

/// Tolerance: of violations and of unbalanced forces in the largest norm, and of the gap between the objective and its
/// bound, relative to the length. Rounding ends the progress at some 1e-9.
Solution solve(const Program& program, double tolerance, int most_iterations = 40);

}  // namespace vkm::ideal
