#include "ideal/tile_products_wide.hpp"

#if VKM_HAS_WIDE

namespace vkm::ideal {

namespace {

/// A whole tile of sums in registers: eight columns of a row in one, the other four in half of one.
struct WideTile {
  __m512d left[tile_side];
  __m256d right[tile_side];
};

VKM_WIDE_INLINE void subtract_product(const double* a, const double* b, WideTile& sum) {
  for (std::size_t m = 0; m < tile_side; ++m) {
    const __m512d b_left = _mm512_loadu_pd(b + m * tile_side);
    const __m256d b_right = _mm256_loadu_pd(b + m * tile_side + 8);
#pragma GCC unroll 12
    for (std::size_t i = 0; i < tile_side; ++i) {
      const __m512d factor = _mm512_set1_pd(a[m * tile_side + i]);
      sum.left[i] = _mm512_fnmadd_pd(factor, b_left, sum.left[i]);
      sum.right[i] = _mm256_fnmadd_pd(_mm512_castpd512_pd256(factor), b_right, sum.right[i]);
    }
  }
}

VKM_WIDE void scale_tiles(const double* w, double* b, std::size_t count) {
  for (std::size_t tile = 0; tile < count; ++tile, b += tile_size) {
    WideTile sum;
#pragma GCC unroll 12
    for (std::size_t i = 0; i < tile_side; ++i) {
      sum.left[i] = _mm512_setzero_pd();
      sum.right[i] = _mm256_setzero_pd();
    }
    subtract_product(w, b, sum);
#pragma GCC unroll 12
    for (std::size_t i = 0; i < tile_side; ++i) {
      _mm512_storeu_pd(b + i * tile_side, -sum.left[i]);
      _mm256_storeu_pd(b + i * tile_side + 8, -sum.right[i]);
    }
  }
}

VKM_WIDE void subtract_from_tiles(const double* a, const double* b, double* const* targets, std::size_t count) {
  for (std::size_t k = 0; k < count; ++k, b += tile_size) {
    double* const c = targets[k];
    WideTile sum;
#pragma GCC unroll 12
    for (std::size_t i = 0; i < tile_side; ++i) {
      sum.left[i] = _mm512_loadu_pd(c + i * tile_side);
      sum.right[i] = _mm256_loadu_pd(c + i * tile_side + 8);
    }
    subtract_product(a, b, sum);
#pragma GCC unroll 12
    for (std::size_t i = 0; i < tile_side; ++i) {
      _mm512_storeu_pd(c + i * tile_side, sum.left[i]);
      _mm256_storeu_pd(c + i * tile_side + 8, sum.right[i]);
    }
  }
}

}  // namespace

bool scale_row_wide(const double* w, double* b, std::size_t count) {
  if (!has_wide()) return false;
  scale_tiles(w, b, count);
  return true;
}

bool subtract_products_wide(const double* a, const double* b, double* const* targets, std::size_t count) {
  if (!has_wide()) return false;
  subtract_from_tiles(a, b, targets, count);
  return true;
}

}  // namespace vkm::ideal

#endif
