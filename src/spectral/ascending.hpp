#pragma once

#include <cmath>

namespace vkm {

/// Order of numbers for sorting, with NaN behind all others: with a bare `<` a NaN would break the sort.
inline bool ascending(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

}  // namespace vkm
