#pragma once

/// From a Fourier block to the helicity invariants of the flow that it induces: sample the curve, take its velocity on
/// a cubic grid around the centroid, the vorticity of that, and the invariants of the grid's interior.

#include <tuple>

#include "core/poll.hpp"
#include "knot/fourier_series.hpp"

namespace vkm {

/// (H_charge, H_mass, a_mu). The grid has `grid_size` points a side, `spacing` apart, its point grid_size / 2 at the
/// origin; `interior_margin` cells are cut from every face. An empty interior gives (0, 0, NaN).
std::tuple<double, double, double> compute_helicity_from_fourier_block(const FourierBlock& block, int grid_size,
                                                                       double spacing, int interior_margin,
                                                                       int nsamples, const Poll& poll = {});

}  // namespace vkm
