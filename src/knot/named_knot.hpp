#pragma once

#include <string>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "knot/fourier_series.hpp"

namespace vkm {

/// `resolution` points of a block at the parameters i 2 pi / (resolution - 1), with their mean subtracted. Both ends
/// of the period are sampled: the last point repeats the first. A resolution below 1 gives no points, and 1 gives one
/// point that is not a number.
std::vector<Vec3> sample_both_ends_centred(const FourierBlock& block, int resolution, const Poll& poll = {});

/// The points of a knot by its identifier, as "3_1": the largest block of the embedded text or, failing that, of the
/// file that resolve_knot_fseries_path finds. Throws std::runtime_error if there is none.
std::vector<Vec3> sample_named_knot(const std::string& knot_id, int resolution, const Poll& poll = {});

}  // namespace vkm
