#pragma once

/// Multisector products on the critical line and the objectives by which an optimiser fits their phases to nodes.
///
/// Phi(t) = C(s) prod over sectors, repetitions of D^-w (see cycle_product.hpp), s = 1/2 + i t. The completion factor
/// C(s) is 1 (mode 0) or exp(alpha s + beta) (mode 1). Near-zeros of |Phi| are its local minima; the objectives pair
/// the deepest of them, in order of t, with the target nodes.

#include <complex>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "spectral/cycle_product.hpp"

namespace vkm {

/// Parameters of one evaluation.
struct MultisectorConfig {
  double ell_trefoil = 0.0;          // base length of a primitive cycle
  std::uint64_t truncation_M = 0;    // highest repetition in the product
  std::int32_t completion_mode = 0;  // 0 none, 1 exponential
  double alpha = 0.0;                // completion slope
  double beta = 0.0;                 // completion offset
};

struct SuppressionOptions {
  double lambda_extra = 0.5;       // weight of the penalty for minima outside the windows
  double sigma_extra = 0.05;       // depth, in units of |Phi|, at which an extra minimum stops counting
  double lambda_reg = 0.01;        // weight of the sum of (w - 1)^2
  double target_halfwidth = 0.35;  // half width of a window, in units of t
  bool penalize_all_extra_minima = true;
};

struct SuppressedObjective {
  double total = 0.0;
  double mismatch = 0.0;
  double extra_penalty = 0.0;
  double reg_penalty = 0.0;
};

struct PhaseInvariants {
  double delta23;
  double delta35;
  double theta_sum_mod;  // in [0, 2 pi)
};

/// Target nodes in ascending t, with weights or none for weights of 1.
struct TargetNodes {
  std::vector<double> t;
  std::vector<double> weights;
};

/// C(s); std::runtime_error for a mode other than 0 and 1.
std::complex<double> completion_factor(std::complex<double> s, std::int32_t mode, double alpha, double beta);

/// Phi at each t. The completion mode is checked where there is a t.
std::vector<std::complex<double>> evaluate_multisector(std::span<const double> t, const Sectors& sectors,
                                                       const MultisectorConfig& config, const Poll& poll);

/// |Phi| at each t, a row after the other for each truncation (config.truncation_M is not read).
std::vector<double> evaluate_multisector_abs(std::span<const double> t, const Sectors& sectors,
                                             std::span<const std::uint64_t> truncations,
                                             const MultisectorConfig& config, const Poll& poll);

/// Weighted sum of squared distances between |Phi|'s deepest minima and the targets; 1e300 for too few minima.
double objective_near_nodes(std::span<const double> t, const Sectors& sectors, const MultisectorConfig& config,
                            const TargetNodes& targets, const Poll& poll);

/// That mismatch with penalties for extra minima and for weights away from 1.
SuppressedObjective objective_suppressed(std::span<const double> t, const Sectors& sectors,
                                         const MultisectorConfig& config, const TargetNodes& targets,
                                         const SuppressionOptions& options, const Poll& poll);

/// Differences and the sum modulo 2 pi of the first three phases; NaN for fewer.
PhaseInvariants phase_invariants(std::span<const double> thetas);

}  // namespace vkm
