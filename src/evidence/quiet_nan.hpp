#pragma once

#include <limits>

namespace vkm {

/// What a gate's formula gives where it does not apply; gates never raise on bad numbers.
inline constexpr double quiet_nan = std::numeric_limits<double>::quiet_NaN();

}  // namespace vkm
