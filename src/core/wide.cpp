#include "core/wide.hpp"

#include <cmath>

namespace vkm {

namespace {

#if VKM_HAS_WIDE
/// The two roots that `square_root` could miss, at all exponents of moderate numbers' squares.
VKM_WIDE bool hard_roots_are_exact() {
  bool exact = true;
  for (int exponent = -380; exponent <= 280; exponent += 2) {
    const double one = std::ldexp(1.0, exponent);
    for (const double x : {std::nextafter(one, 2.0 * one), std::nextafter(4.0 * one, one)}) {
      exact = exact && _mm512_cmp_pd_mask(square_root(wide(x)), wide(std::sqrt(x)), _CMP_EQ_OQ) == 0xff;
    }
  }
  return exact;
}
#endif

bool wide_is_wanted = true;

}  // namespace

bool has_wide() {
#if VKM_HAS_WIDE
  static const bool supported =
      (__builtin_cpu_init(), __builtin_cpu_supports("x86-64-v4") != 0) && hard_roots_are_exact();
  return supported && wide_is_wanted;
#else
  return false;
#endif
}

void want_wide(bool wanted) { wide_is_wanted = wanted; }

}  // namespace vkm
