#pragma once

/// The tightener: shortens a closed polygon at fixed tube thickness, towards a ropelength-critical one.
///
/// A step projects the negative length gradient against the active contacts by a non-negative least squares fit (the
/// contacts may push, not pull), walks along the remainder with a backtracking line search, and restores thickness that
/// was lost by a Newton correction on the contacts. What the contacts leave of the gradient, relative to its norm,
/// is the KKT residual; it vanishes where the polygon is critical. The scheme is that of T. Ashton, J. Cantarella,
/// M. Piatek, E. J. Rawdon, Knot tightening by constrained gradient descent, Experimental Mathematics 20, 2011.

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/contact_stress.hpp"
#include "tube/resolved_tube.hpp"
#include "tube/tightening_options.hpp"

namespace vkm {

/// One attempted step.
struct TighteningStepRecord {
  std::uint64_t step = 0;
  double ropelength_before = 0.0;
  double ropelength_after = 0.0;  ///< as before if no trial was accepted; so the other two
  double thickness_before = 0.0;
  double thickness_after = 0.0;
  double length_before = 0.0;
  double length_after = 0.0;
  double kkt_residual_before = 0.0;
  double projected_gradient_norm = 0.0;  ///< before normalisation
  double alpha = 0.0;                    ///< step size accepted, or at which the search gave up
  std::uint64_t strut_count = 0;         ///< before the step
  std::uint64_t kink_count = 0;          ///< before the step
  std::uint64_t rigidity_columns = 0;
  bool accepted = false;
  bool thickness_corrected = false;  ///< the accepted trial was corrected
  std::string correction_strategy;
  std::string solver_algorithm;  ///< empty if no fit ran
};

struct TighteningResult {
  std::vector<Vec3> points;     ///< the last accepted polygon
  ResolvedTubeMetrics metrics;  ///< its analysis
  std::vector<TighteningStepRecord> steps;
  bool converged = false;
  std::string reason;  ///< why the run ended
};

/// Sees each step's record, and the polygon that the step left. Throws to abandon the run.
using TighteningWatch = std::function<void(const TighteningStepRecord&, const std::vector<Vec3>&)>;

/// The part of the negative length gradient that the contacts do not balance. `diagnostics`, if given, is reset and
/// filled, but for its sums over multipliers.
std::vector<double> projected_gradient(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                       const TighteningOptions& options = {},
                                       ContactStressDiagnostics* diagnostics = nullptr, const Poll& poll = {});

/// Throws std::invalid_argument below three points.
TighteningResult tighten(std::span<const Vec3> initial_points, const TighteningOptions& options = {},
                         const Poll& poll = {}, const TighteningWatch& watch = {});

}  // namespace vkm
