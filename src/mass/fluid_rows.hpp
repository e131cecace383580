#pragma once

/// The rows of the fluid's double sum (vkm_mass.hpp), in their forms (core/pair_form.hpp).

#include <cstddef>

#include "core/pair_form.hpp"
#include "core/pair_sums.hpp"
#include "core/wide.hpp"

namespace vkm {

inline constexpr double core_radius_squared = 1.985196939949829e-30;  // r_c^2, m^2

/// Adds d . d_j / sqrt(R^2 + r_c^2) over the edges 0 .. n - 1 to the sums of a block of points, whose edges are `edge`.
void add_fluid_rows(const LaneSources& edges, std::size_t n, const LaneView& points, const LaneView& edge, double* sums,
                    PairForm form);

extern const PairKernel fluid_kernel;

#if VKM_HAS_WIDE
void add_fluid_rows_wide(const LaneSources& edges, std::size_t n, const LaneView& points, const LaneView& edge,
                         double* sums, PairForm form);
#else
inline void add_fluid_rows_wide(const LaneSources&, std::size_t, const LaneView&, const LaneView&, double*, PairForm) {}
#endif

}  // namespace vkm
