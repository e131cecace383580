#pragma once

/// Guards of the closed forms. They name the bad range (`0.0 >= x`), so that a NaN passes and comes out as a NaN.

#include <stdexcept>

namespace vkm {

inline void reject_if(bool bad, const char* text) {
  if (bad) throw std::invalid_argument(text);
}

}  // namespace vkm
