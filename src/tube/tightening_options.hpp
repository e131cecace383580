#pragma once

/// How a polygon is tightened (tightener.hpp).

#include <cstdint>
#include <string>

#include "tube/contact_fit.hpp"
#include "tube/tube_analysis.hpp"

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

inline TubeAnalysis analysis_of(const TighteningOptions& options) {
  return {options.skip_neighbors, options.contact_tol, options.equilateral_tol};
}

inline ContactFit fit_of(const TighteningOptions& options) {
  return {options.use_sparse_solver,
          options.use_active_set_solver,
          options.use_analytic_kink_gradient,
          {options.nnls_max_iterations, options.nnls_tolerance}};
}

}  // namespace vkm
