#pragma once

/// Contact stress of a resolved tube: how far the gradient of its length lies from the cone of its contacts' gradients.
///
/// A polygon is length-critical at fixed thickness when the length gradient is a non-negative combination of the
/// columns of the rigidity matrix A; the multipliers are the stress that the contacts carry (J. Cantarella, J. H. G.
/// Fu, R. Kusner, J. M. Sullivan, N. C. Wrinkle, Criticality for the Gehring link problem, Geom. Topol. 10, 2006).

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/nnls_result.hpp"
#include "tube/resolved_tube.hpp"
#include "tube/rigidity_matrix.hpp"

namespace vkm {

struct ContactStressDiagnostics {
  double contact_residual = 0.0;  ///< relative residual of the fit of the length gradient
  double strut_weight_sum = 0.0;  ///< sum of the positive multipliers on struts
  double kink_weight_sum = 0.0;   ///< the same on kinks
  double contact_entropy = 0.0;   ///< Shannon entropy of the normalised multipliers, nats
  double gradient_norm = 0.0;     ///< of the length gradient
  double residual_norm = 0.0;     ///< of the fit
  double nnls_objective = 0.0;
  std::uint64_t strut_count = 0;       ///< of the tube
  std::uint64_t kink_count = 0;        ///< of the tube
  std::uint64_t rigidity_rows = 0;     ///< 3n
  std::uint64_t rigidity_columns = 0;  ///< kept in the matrix
  std::uint64_t nnls_iterations = 0;
  std::uint64_t nnls_active_set_size = 0;
  std::string nnls_algorithm;
  bool solved_nnls = false;  ///< a fit was run
  bool nnls_converged = false;
  std::vector<double> multipliers;  ///< one per column
};

struct ContactStressMap {
  using Points = std::span<const Vec3>;
  using Vector = std::vector<double>;

  /// `tube` is the analysis of `points`; contacts whose gradient vanishes (norm up to 1e-14) give no column.
  static RigidityMatrix build_rigidity_matrix(Points points, const ResolvedTubeMetrics& tube,
                                              bool include_struts = true, bool include_kinks = true,
                                              double kink_finite_difference_step = 1e-6,
                                              bool use_analytic_kink_gradient = true, const Poll& poll = {});
  /// The same, of entries above 1e-15 in magnitude.
  static SparseRigidityMatrix build_sparse_rigidity_matrix(Points points, const ResolvedTubeMetrics& tube,
                                                           bool include_struts = true, bool include_kinks = true,
                                                           double kink_finite_difference_step = 1e-6,
                                                           bool use_analytic_kink_gradient = true,
                                                           const Poll& poll = {});
  /// Entries at or beyond row_count are ignored.
  static RigidityMatrix sparse_to_dense(const SparseRigidityMatrix& sparse);

  /// Writers for outside solvers. std::runtime_error if the file cannot be opened or written; the old one stays then.
  static void write_sparse_matrix_market(const SparseRigidityMatrix& sparse, const std::string& path,
                                         bool one_based_indices = true, const Poll& poll = {});
  static void write_vector_market(std::span<const double> vector, const std::string& path, const Poll& poll = {});
  static void write_vector_csv(std::span<const double> vector, const std::string& path, const Poll& poll = {});

  /// Multipliers x >= 0 that minimise |A x - target| (nnls.cpp).
  static NNLSResult solve_nonnegative_least_squares(const RigidityMatrix& matrix, std::span<const double> target,
                                                    std::uint64_t max_iterations = 5000, double tolerance = 1e-10,
                                                    const Poll& poll = {});
  static NNLSResult solve_nonnegative_least_squares_sparse(const SparseRigidityMatrix& matrix,
                                                           std::span<const double> target,
                                                           std::uint64_t max_iterations = 5000,
                                                           double tolerance = 1e-10, const Poll& poll = {});
  static NNLSResult solve_nonnegative_least_squares_active_set(const RigidityMatrix& matrix,
                                                               std::span<const double> target,
                                                               std::uint64_t max_iterations = 2000,
                                                               double tolerance = 1e-10, double ridge = 1e-12,
                                                               const Poll& poll = {});
  static NNLSResult solve_nonnegative_least_squares_sparse_active_set(const SparseRigidityMatrix& matrix,
                                                                      std::span<const double> target,
                                                                      std::uint64_t max_iterations = 2000,
                                                                      double tolerance = 1e-10, double ridge = 1e-12,
                                                                      const Poll& poll = {});

  static ContactStressDiagnostics diagnose_length_criticality(Points points, const ResolvedTubeMetrics& tube,
                                                              bool solve_nnls = true,
                                                              std::uint64_t max_iterations = 5000,
                                                              double tolerance = 1e-10, bool use_sparse_solver = true,
                                                              bool use_analytic_kink_gradient = true,
                                                              bool use_active_set_solver = true, const Poll& poll = {});
};

}  // namespace vkm
