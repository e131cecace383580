#pragma once

/// dipole_field (magnetostatics.hpp) at eight points.

#include "core/numbers.hpp"
#include "core/wide.hpp"

#if VKM_HAS_WIDE

namespace vkm {

/// By mr = m.R, n = |R|, r2 = R^2 and per_n = 1 / n.
VKM_WIDE_INLINE WideVec3 dipole_field(const WideVec3& m, const WideVec3& r, Wide mr, Wide n, Wide r2, Wide per_n) {
  const Wide once = quotient(mr, n, per_n) * wide(3.0);
  const Wide radial = quotient(quotient(once, n, per_n), n, per_n);
  const Wide q = reciprocal(n * r2, per_n * per_n * per_n);
  return (r * radial - m) * wide(inv_four_pi) * q;
}

}  // namespace vkm

#endif
