#pragma once

/// A planar field of inflow and swirl about the centre of the unit square, for display.

#include <array>
#include <cstdint>
#include <vector>

#include "core/poll.hpp"

namespace vkm {

/// res^2 vectors at x = j / res - 1/2, y = i / res - 1/2, index i res + j:
/// ((-A y - B x) m, (-A x + B y) m) with A = 0.1 / r2, B = 0.25 / r, m = 1 + 0.03 sin(10 r - 6 time) and
/// r2 = r^2 = x^2 + y^2 + 1e-5. All of it in single precision; the signs are these, and make no rotation. A negative
/// `res` gives res^2 zero vectors. Absurd sizes throw std::bad_alloc.
std::vector<std::array<float, 2>> swirl_field(std::int32_t res, float time, const Poll& poll = {});

}  // namespace vkm
