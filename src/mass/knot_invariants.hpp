#pragma once

/// What a knot is known by on its way to a mass: catalogue metadata, curve descriptors and tube measures in one record.
///
/// Lengths are in the units of the curve's coefficients. Two measures exist in pairs. The effective volume is the
/// optional one where it is set, else the plain one; the same holds for the ropelength.

#include <cstdint>
#include <optional>
#include <string>

#include "core/poll.hpp"
#include "knot/fourier_series.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm {

struct KnotInvariants {
  std::string name;
  std::int32_t crossing_number = 0;  // k
  std::int32_t braid_index = 0;      // b
  std::int32_t seifert_genus = 0;    // g
  std::int32_t chirality = 0;        // -1, 0 or 1
  bool hyperbolic = false;
  double hyperbolic_volume = 0.0;               // 0 when not hyperbolic
  double ropelength_like = 0.0;                 // the ropelength measure that is always there
  std::optional<double> hyperbolic_volume_opt;  // set for a hyperbolic knot only
  std::optional<double> ropelength;
  double writhe = 0.0;
  double min_self_distance = 0.0;  // length
  double bending_energy = 0.0;     // 1 / length
  std::optional<ResolvedTubeMetrics> tube_metrics;
  double thickness_rad = 0.0;  // length
  double ropelength_rad = 0.0;
  double ropelength_diam = 0.0;
  double minrad_min = 0.0;  // least discrete curvature radius, length
  double dcsd_min = 0.0;    // least doubly critical self-distance, length
  std::int32_t strut_count = 0;
  std::int32_t kink_count = 0;
  double contact_residual = 0.0;
  double contact_entropy = 0.0;  // nats
  bool ropelength_lower_bound_ok = true;

  /// V
  double effective_volume() const { return hyperbolic_volume_opt.value_or(hyperbolic_volume); }
  /// L
  double effective_ropelength() const { return ropelength.value_or(ropelength_like); }
};

/// What only a catalogue knows of a knot, and how finely its curve is to be measured.
struct KnotMetadata {
  std::string knot_name;
  std::int32_t crossing_number = 0;
  std::int32_t braid_index = 0;
  std::int32_t seifert_genus = 0;
  std::int32_t chirality = 0;  // clamped to -1 .. 1
  bool hyperbolic = false;
  double hyperbolic_volume = 0.0;   // at least 0 is taken, and 0 unless hyperbolic
  std::int64_t nsamples = 2048;     // at least 64 are taken
  std::int32_t exclude_window = 4;  // samples to either side that count as neighbours; at least 1 is taken
};

/// Invariants of a Fourier curve. The ropelength is length over tube diameter where the tube has a thickness, else
/// length over self-distance, and the bare length where both vanish.
KnotInvariants build_invariants_from_fourier_block(const FourierBlock& block, const KnotMetadata& metadata = {},
                                                   const Poll& poll = {});

/// The same of a file's largest block. An empty name becomes the last component of the path. std::runtime_error if the
/// file holds no block or cannot be read.
KnotInvariants build_invariants_from_fseries(const std::string& path, const KnotMetadata& metadata = {},
                                             const Poll& poll = {});

}  // namespace vkm
