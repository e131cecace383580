#pragma once

/// The forms of the sums over pairs of an edge and a point, and the choice among them.
///
/// Each term has one root and one quotient. A processor can leave both to its divider, or do one of them by
/// multiply-adds that give the same bits (core/wide.hpp), so that divider and multipliers work side by side. Which form
/// is the quickest differs between processors of one vector width, so it is measured on first use, in about half a
/// millisecond. The bits are the same whichever it is; the environment variable VKM_PAIR_FORM names one for tests.

#include <cstddef>
#include <span>

#include "core/lane_view.hpp"
#include "core/pair_sums.hpp"
#include "core/wide.hpp"

namespace vkm {

enum class PairForm {
  plain,    // the compiler's vectors, divider
  divider,  // eight lanes, divider
  mixed,    // eight lanes, the divider's root and a quotient by multiply-adds
  added,    // eight lanes, both by multiply-adds
};

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

/// The form to take for data of moderate magnitude (core/wide.hpp), and its name.
PairForm pair_form();
const char* name_of(PairForm form);

/// The one for these numbers: the hand-written forms need moderate ones.
PairForm pair_form_for(std::span<const Vec3> vertices, double scale);

#if VKM_HAS_WIDE
/// The hand-written forms. False, and the sums as they were, where a point is in the place of a source and that
/// matters.
bool add_closed_curve_wide(const PairRun& run, double softening, PairForm form);
bool add_induced_wide(const PairRun& run, double soft2, double strength, PairForm form);
#else
inline bool add_closed_curve_wide(const PairRun&, double, PairForm) { return false; }
inline bool add_induced_wide(const PairRun&, double, double, PairForm) { return false; }
#endif

}  // namespace vkm
