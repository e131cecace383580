#pragma once

/// The sums over pairs of an edge and a point, in their forms (core/pair_form.hpp).

#include <cstddef>

#include "core/lane_view.hpp"
#include "core/pair_form.hpp"
#include "core/pair_sums.hpp"
#include "core/wide.hpp"

namespace vkm {

/// Adds the terms of the sources first .. last - 1 to the sums at a block of points.
struct PairRun {
  const PointSources& sources;
  std::size_t first, last;
  LaneView points;
  LaneSpace sums;
};

/// dl x R / (|R|^3 + softening), softening > 0.
void add_closed_curve(const PairRun& run, double softening, PairForm form);

/// e x R strength / (R^2 + soft2)^(3/2).
void add_induced(const PairRun& run, double soft2, double strength, PairForm form);

/// dl x R f / |R|^3, without sources nearer than least_distance (magnetostatics.hpp).
void add_wire(const PairRun& run, double f, PairForm form);

extern const PairKernel closed_curve_kernel, induced_kernel, wire_kernel;

/// The form of the velocity that edges of this strength induce, where their places are moderate or not.
PairForm induced_form(bool moderate_places, double strength);

/// Whether the coordinates of a block of points are moderate.
bool moderate_block(const LaneView& points);

#if VKM_HAS_WIDE
/// The hand-written forms. False, and the sums as they were, where a point is in the place of a source, or near it, and
/// that matters.
bool add_closed_curve_wide(const PairRun& run, double softening, PairForm form);
bool add_induced_wide(const PairRun& run, double soft2, double strength, PairForm form);
bool add_wire_wide(const PairRun& run, double f, PairForm form);
#else
inline bool add_closed_curve_wide(const PairRun&, double, PairForm) { return false; }
inline bool add_induced_wide(const PairRun&, double, double, PairForm) { return false; }
inline bool add_wire_wide(const PairRun&, double, PairForm) { return false; }
#endif

}  // namespace vkm
