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

namespace vkm {

struct TighteningOptions {
  std::uint64_t max_steps = 100;          ///< outer steps
  std::uint64_t line_search_trials = 24;  ///< per step
  std::uint64_t nnls_max_iterations = 2000;
  std::int32_t skip_neighbors = 2;      ///< as in the analysis
  double contact_tol = 0.001;           ///< as in the analysis
  double equilateral_tol = 0.001;       ///< as in the analysis
  double target_kkt_residual = 0.0001;  ///< converged at or below
  double nnls_tolerance = 1e-10;
  double max_step_size = 0.01;                   ///< first trial
  double min_step_size = 1e-8;                   ///< smallest trial
  double line_search_shrink = 0.5;               ///< step factor, used within 0.05..0.95
  double thickness_floor_fraction = 0.999;       ///< part of the thickness that a step must keep
  double ropelength_increase_tolerance = 1e-10;  ///< relative to max(ropelength, 1)
  double newton_correction_damping = 1.0;        ///< factor on a correction, used within 0..1
  double newton_ridge = 1e-10;                   ///< of the correction's equations
  bool use_sparse_solver = true;
  bool use_active_set_solver = true;  ///< otherwise coordinate descent
  bool use_analytic_kink_gradient = true;
  bool normalize_direction = true;             ///< to a largest vertex move of 1
  bool preserve_initial_thickness = true;      ///< hold the first thickness, not the current one
  std::string correction_strategy = "newton";  ///< "none", "scale", any other is "newton"
};

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

struct ResolvedTubeTightener {
  using Points = std::span<const Vec3>;
  using Polygon = std::vector<Vec3>;

  /// Scales about the centroid to just past the target thickness; never down.
  static Polygon rescale_to_thickness(Points points, double target_thickness, std::int32_t skip_neighbors = 2,
                                      double contact_tol = 0.001, double equilateral_tol = 0.001,
                                      const Poll& poll = {});

  /// Moves a polygon that is below the target thickness up to it, by the strategy of the options.
  static Polygon correct_thickness(Points points, double target_thickness, const TighteningOptions& options = {},
                                   const Poll& poll = {});

  /// The part of the negative length gradient that the contacts do not balance. `diagnostics`, if given, is reset and
  /// filled, but for its sums over multipliers.
  static std::vector<double> projected_gradient_flat(Points points, const ResolvedTubeMetrics& tube,
                                                     const TighteningOptions& options = {},
                                                     ContactStressDiagnostics* diagnostics = nullptr,
                                                     const Poll& poll = {});

  /// Throws std::invalid_argument below three points.
  static TighteningResult tighten(Points initial_points, const TighteningOptions& options = {}, const Poll& poll = {},
                                  const TighteningWatch& watch = {});
};

}  // namespace vkm
