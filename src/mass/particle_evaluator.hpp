#pragma once

/// The road from a catalogue knot to a mass without a fitted parameter.
///
/// The evaluator holds closed filaments (index i + 1 is taken modulo the number of points), relaxes them into a body
/// of the size of the electron, and converts their length to energy with the line tension T = F_max / 2:
///   E = L T,  F_max = 29.053507 N,  mass = E / (1.602176634e-13 J per MeV).
/// Its constants are its own and fixed. Sizes in metres have their meaning only after `relax`.

#include <cstdint>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "mass/relativistic_metrics.hpp"
#include "mass/tail_surrogate.hpp"

namespace vkm {

class ParticleEvaluator {
 public:
  /// The filaments of an ideal block "n:m:k" of the catalogue, each of `resolution` points. Other ids are blocked, to
  /// keep non-canonical geometry out of canonical masses, unless `allow_non_canonical_geometry_for_research_only`.
  /// std::runtime_error if the id is blocked or not found.
  explicit ParticleEvaluator(const std::string& knot_ab_id, std::int32_t resolution = 4000,
                             bool allow_non_canonical_geometry_for_research_only = false, const Poll& poll = {});
  explicit ParticleEvaluator(std::vector<std::vector<Vec3>> input_filaments);

  /// See mass/relaxation.hpp. An abandoned call leaves the filaments as they were.
  void relax(std::int32_t iterations = 1000, double timestep = 0.01, const Poll& poll = {});

  /// Length of all filaments in electron radii over stretch_lambda squared, which is the theory's stretch law.
  double get_dimless_ropelength(double stretch_lambda = 1.0) const;
  double get_physical_length_m() const;
  double compute_core_energy_J() const;
  double compute_tail_energy_J(bool include_tail = false, const Poll& poll = {}) const;
  double get_mass_mev_ab_initio(bool include_tail = false, const Poll& poll = {}) const;
  double get_core_mass_mev_only() const;

  void set_tail_approx_config(const TailApproxConfig& config) { tail_ = config; }
  const TailApproxConfig& get_tail_approx_config() const { return tail_; }
  double compute_tail_energy_surrogate_J(const Poll& poll = {}) const;

  /// Metrics of the first filament.
  RelativisticMetrics compute_relativistic_metrics(double circulation = default_circulation,
                                                   const Poll& poll = {}) const;

  const std::vector<std::vector<Vec3>>& get_filaments() const { return filaments_; }

  /// Writes the derivation of the core density to standard output.
  static void print_canonical_derivation();

 private:
  std::vector<std::vector<Vec3>> filaments_;
  TailApproxConfig tail_;
};

}  // namespace vkm
