#pragma once

/// Eight doubles that are computed with at once, by the vector types of GCC and Clang: one register where the machine
/// has AVX-512, two or four elsewhere, with the same bits. Functions that use them are inlined into a VKM_KERNEL.

#include <cstdint>
#include <cstring>

#include "core/kernel.hpp"

namespace vkm::far {

inline constexpr std::size_t eight = 8;

// The alignment is said, as GCC takes less of it where the machine that it compiles for has no such registers.
using Eight __attribute__((vector_size(64), aligned(64))) = double;
using EightBits __attribute__((vector_size(64), aligned(64))) = std::uint64_t;
static_assert(alignof(Eight) == 64);

VKM_INLINE void load(const double* from, Eight& to) { std::memcpy(&to, from, sizeof(Eight)); }
VKM_INLINE void store(double* to, const Eight& from) { std::memcpy(to, &from, sizeof(Eight)); }

/// out[i][j] = rows[j][i].
VKM_INLINE void transpose(const Eight (&rows)[eight], Eight (&out)[eight]) {
  Eight pairs[eight], fours[eight];
#pragma GCC unroll 4
  for (std::size_t i = 0; i < eight; i += 2) {
    pairs[i] = __builtin_shufflevector(rows[i], rows[i + 1], 0, 8, 2, 10, 4, 12, 6, 14);
    pairs[i + 1] = __builtin_shufflevector(rows[i], rows[i + 1], 1, 9, 3, 11, 5, 13, 7, 15);
  }
#pragma GCC unroll 4
  for (std::size_t i = 0; i < eight; i += i % 4 == 1 ? 3 : 1) {
    fours[i] = __builtin_shufflevector(pairs[i], pairs[i + 2], 0, 1, 8, 9, 4, 5, 12, 13);
    fours[i + 2] = __builtin_shufflevector(pairs[i], pairs[i + 2], 2, 3, 10, 11, 6, 7, 14, 15);
  }
#pragma GCC unroll 4
  for (std::size_t i = 0; i < 4; ++i) {
    out[i] = __builtin_shufflevector(fours[i], fours[i + 4], 0, 1, 2, 3, 8, 9, 10, 11);
    out[i + 4] = __builtin_shufflevector(fours[i], fours[i + 4], 4, 5, 6, 7, 12, 13, 14, 15);
  }
}

/// 1 / sqrt(x) for x > 0 up to a relative error of 2e-3, 5e-6, 3e-11 and some 1e-16 for one to four steps; finite at 0.
///
/// Half of the exponent by integer arithmetic (W. Kahan), and Newton's steps y (3 - x y^2) / 2. Neither divider nor
/// fused multiply-adds: as quick as the multipliers are, and the same bits on every machine.
template <int steps>
VKM_INLINE void reciprocal_root(const Eight& x, Eight& y) {
  EightBits bits;
  std::memcpy(&bits, &x, sizeof bits);
  bits = 0x5FE6EB50C7B537A9ULL - (bits >> 1);
  std::memcpy(&y, &bits, sizeof bits);
  const Eight half = 0.5 * x;
#pragma GCC unroll 4
  for (int step = 0; step < steps; ++step) y = y * (1.5 - half * (y * y));
}

}  // namespace vkm::far
