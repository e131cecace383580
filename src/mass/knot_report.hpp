#pragma once

/// Masses of single knots and of whole data sets, as rows of a table.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "mass/knot_invariants.hpp"
#include "mass/mass_functional.hpp"
#include "mass/xi_model.hpp"

namespace vkm {

/// An entry of a data set. Only `inv` enters an evaluation; the rest is the caller's to carry along.
struct KnotState {
  KnotInvariants inv;
  std::optional<double> contact_score;
  std::optional<double> hopf_like_score;
  std::optional<double> energy_score;
  KnotDerived derived;
};

struct KnotReportRow {
  std::string name;
  std::int32_t k = 0;  // crossing number
  std::int32_t b = 0;  // braid index
  std::int32_t g = 0;  // genus
  double vol_h = 0.0;  // effective volume
  double L_tot = 0.0;  // effective ropelength
  SectorGate gate = SectorGate::Unknown;
  double xi = 1.0;
  double mass_ratio = 1.0;  // to the electron's mass
  double mass_kg = 0.0;     // kg
};

KnotReportRow make_knot_report_row(const KnotInvariants& K, const KnotDerived& D);

/// MassFunctional::evaluate of each entry, in order. The constants are checked even for an empty data set.
std::vector<KnotReportRow> evaluate_knot_dataset(std::span<const KnotState> dataset, const XiModel& model,
                                                 const CanonicalConstants& constants, const Poll& poll = {});

}  // namespace vkm
