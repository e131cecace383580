#include "mass/knot_report.hpp"

namespace vkm {

KnotReportRow make_knot_report_row(const KnotInvariants& K, const KnotDerived& D) {
  KnotReportRow row;
  row.name = K.name;
  row.k = K.crossing_number;
  row.b = K.braid_index;
  row.g = K.seifert_genus;
  row.vol_h = K.effective_volume();
  row.L_tot = K.effective_ropelength();
  row.gate = D.gate;
  row.xi = D.xi;
  row.mass_ratio = D.mass_ratio;
  row.mass_kg = D.mass_kg;
  return row;
}

std::vector<KnotReportRow> evaluate_knot_dataset(std::span<const KnotState> dataset, const XiModel& model,
                                                 const CanonicalConstants& constants, const Poll& poll) {
  const MassFunctional functional(constants);
  std::vector<KnotReportRow> rows;
  rows.reserve(dataset.size());
  Heartbeat heartbeat(poll);
  for (const KnotState& state : dataset) {
    rows.push_back(make_knot_report_row(state.inv, functional.evaluate(state.inv, model)));
    heartbeat.tick();
  }
  return rows;
}

}  // namespace vkm
