#include "filament/sums/pair_forms.hpp"

#include <cmath>
#include <span>
#include <vector>

#include "filament/sums/magnetostatics.hpp"

namespace vkm {

namespace {

/// One reciprocal a pair serves all three components: the divider is what limits these loops.
VKM_KERNEL void add_closed_curve_plain(const PairRun& run, double softening) {
  const auto term = [softening](const LaneVec3& dl, const LaneVec3& r, auto...) VKM_TERM {
    const double r2 = dot(r, r);
    return cross(dl, r) * (1.0 / (r2 * std::sqrt(r2) + softening));
  };
  add_sources(run.sources, run.first, run.last, run.points, run.sums, term);
}

VKM_KERNEL void add_induced_plain(const PairRun& run, double soft2, double strength) {
  const auto term = [=](const LaneVec3& edge, const LaneVec3& r, auto...) VKM_TERM {
    const double r2 = dot(r, r) + soft2;
    return cross(edge, r) * (strength / (std::sqrt(r2) * r2));
  };
  add_sources(run.sources, run.first, run.last, run.points, run.sums, term);
}

VKM_KERNEL void add_wire_plain(const PairRun& run, double f) {
  const auto term = [f](const LaneVec3& dl, const LaneVec3& r, auto...) VKM_TERM {
    const double r2 = dot(r, r);
    const double n = std::sqrt(r2);
    return unless(n < least_distance, cross(dl, r) * f * (1.0 / (n * r2)));
  };
  add_sources(run.sources, run.first, run.last, run.points, run.sums, term);
}

/// Runs `add` for a block of points and some sources, to measure the forms with.
template <class Add>
void try_form(const Add& add) {
  static const Lanes points = [] {
    Lanes block(lane_block);
    for (std::size_t k = 0; k < lane_block; ++k) block.set(k, {2.0, static_cast<double>(k), -1.0});
    return block;
  }();
  Lanes sums(lane_block);
  const PointSources list{trial_curve().at.data(), trial_curve().edges.data()};
  add(PairRun{list, 0, 256, view(points), space(sums)});
}

}  // namespace

void add_closed_curve(const PairRun& run, double softening, PairForm form) {
  if (form == PairForm::plain || !add_closed_curve_wide(run, softening, form)) add_closed_curve_plain(run, softening);
}

void add_induced(const PairRun& run, double soft2, double strength, PairForm form) {
  if (form == PairForm::plain || !add_induced_wide(run, soft2, strength, form)) add_induced_plain(run, soft2, strength);
}

void add_wire(const PairRun& run, double f, PairForm form) {
  if (form == PairForm::plain || !add_wire_wide(run, f, form)) add_wire_plain(run, f);
}

const PairKernel closed_curve_kernel("velocity grid", [](PairForm form) {
  try_form([form](const PairRun& run) { add_closed_curve(run, 1e-12, form); });
});
const PairKernel induced_kernel("filament velocity", [](PairForm form) {
  try_form([form](const PairRun& run) { add_induced(run, 0.01, 1.0, form); });
});
const PairKernel wire_kernel("wire",
                             [](PairForm form) { try_form([form](const PairRun& run) { add_wire(run, 1.0, form); }); });

PairForm induced_form(bool moderate_places, double strength) {
  return induced_kernel.form_for(moderate_places && strength != 0.0 && moderate(strength));
}

bool moderate_block(const LaneView& points) {
  return moderate(std::span(points.x, lane_block)) && moderate(std::span(points.y, lane_block)) &&
         moderate(std::span(points.z, lane_block));
}

}  // namespace vkm
