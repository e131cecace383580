#pragma once

/// The sums of gravitational_potential_direct (gravitational_potential.hpp), in their forms (core/pair_form.hpp).

#include <cstddef>

#include "core/lane_view.hpp"
#include "core/pair_form.hpp"
#include "core/pair_sums.hpp"
#include "core/wide.hpp"

namespace vkm {

/// Adds d . w / (d^2 + epsilon2)^(3/2), d the offset from the sample, of all samples to the sums of a block of them, of
/// which lane 0 is sample `first`: a sample is no source of its own. Forms other than the plain one are for
/// epsilon2 > 0.
void add_plummer_dipoles(const PointSources& samples, std::size_t count, const LaneView& block, std::size_t first,
                         double epsilon2, double* sums, PairForm form);

extern const PairKernel plummer_kernel;

#if VKM_HAS_WIDE
/// Of the samples first .. last - 1, none of which is in the block.
void add_plummer_dipoles_wide(const PointSources& samples, std::size_t first, std::size_t last, const LaneView& block,
                              double epsilon2, double* sums, PairForm form);
#else
inline void add_plummer_dipoles_wide(const PointSources&, std::size_t, std::size_t, const LaneView&, double, double*,
                                     PairForm) {}
#endif

}  // namespace vkm
