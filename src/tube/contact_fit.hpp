#pragma once

/// Which rigidity matrix and which solver fit a gradient by those of the contacts.

#include <span>

#include "tube/nnls.hpp"
#include "tube/rigidity.hpp"

namespace vkm {

struct ContactFit {
  bool sparse = true;          ///< form of the matrix
  bool active_set = true;      ///< else coordinate descent
  bool analytic_kinks = true;  ///< else kinks by differences
  NNLSOptions solver = {};
};

/// Calls use(matrix, solve) with the matrix of a tube in the wanted form; solve(target) fits a target by its columns.
template <class Use>
void with_contacts(std::span<const Vec3> points, const ResolvedTubeMetrics& tube, const ContactFit& fit,
                   const Poll& poll, const Use& use) {
  const auto use_matrix = [&](const auto& matrix) {
    use(matrix, [&](std::span<const double> target) {
      return fit.active_set ? solve_by_active_set(matrix, target, fit.solver, poll)
                            : solve_by_coordinate_descent(matrix, target, fit.solver, poll);
    });
  };
  RigidityChoice all;
  all.kink_gradient.analytic = fit.analytic_kinks;
  if (fit.sparse) {
    use_matrix(build_sparse_rigidity_matrix(points, tube, all, poll));
  } else {
    use_matrix(build_rigidity_matrix(points, tube, all, poll));
  }
}

}  // namespace vkm
