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
#include "tube/contact_fit.hpp"
#include "tube/resolved_tube.hpp"

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

/// Notes a solver's multipliers and how it found them; the residuals are the caller's.
void take_solution(NNLSResult solution, ContactStressDiagnostics& found);

/// `tube` is the analysis of `points`. Without `solve` the counts and norms alone are reported.
ContactStressDiagnostics diagnose_length_criticality(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                                     bool solve = true, const ContactFit& fit = {},
                                                     const Poll& poll = {});

}  // namespace vkm
