#pragma once

/// A tile of pair weights turned over, so that what one block of points feels from another serves the other way round.

#include <cstddef>
#include <cstring>

#include "core/kernel.hpp"
#include "core/lanes.hpp"

namespace vkm {

using PairTile = double[lane_block][lane_block];

#if defined(__GNUC__) && !defined(__clang__)
using Four = double __attribute__((vector_size(32)));
using Choice = long long __attribute__((vector_size(32)));

VKM_INLINE void load_four(const double* from, Four& values) { std::memcpy(&values, from, sizeof values); }
VKM_INLINE void store_four(const Four& values, double* to) { std::memcpy(to, &values, sizeof values); }
#endif

/// out[i][j] = in[j][i].
VKM_INLINE void transpose(const PairTile& in, PairTile& out) {
#if defined(__GNUC__) && !defined(__clang__)
  for (std::size_t i = 0; i < lane_block; i += 4) {
    for (std::size_t j = 0; j < lane_block; j += 4) {
      Four a, b, c, d;
      load_four(&in[j][i], a);
      load_four(&in[j + 1][i], b);
      load_four(&in[j + 2][i], c);
      load_four(&in[j + 3][i], d);
      const Four ab_even = __builtin_shuffle(a, b, Choice{0, 4, 2, 6});
      const Four ab_odd = __builtin_shuffle(a, b, Choice{1, 5, 3, 7});
      const Four cd_even = __builtin_shuffle(c, d, Choice{0, 4, 2, 6});
      const Four cd_odd = __builtin_shuffle(c, d, Choice{1, 5, 3, 7});
      store_four(__builtin_shuffle(ab_even, cd_even, Choice{0, 1, 4, 5}), &out[i][j]);
      store_four(__builtin_shuffle(ab_odd, cd_odd, Choice{0, 1, 4, 5}), &out[i + 1][j]);
      store_four(__builtin_shuffle(ab_even, cd_even, Choice{2, 3, 6, 7}), &out[i + 2][j]);
      store_four(__builtin_shuffle(ab_odd, cd_odd, Choice{2, 3, 6, 7}), &out[i + 3][j]);
    }
  }
#else
  for (std::size_t i = 0; i < lane_block; ++i) {
    for (std::size_t j = 0; j < lane_block; ++j) out[i][j] = in[j][i];
  }
#endif
}

}  // namespace vkm
