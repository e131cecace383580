#pragma once

/// Forms for spans: a kernel leaves NaN where its fast path cannot tell, and the scalar function fills these in.

#include <cmath>
#include <cstddef>
#include <span>

#include "core/kernel.hpp"

namespace vkm::elementary {

/// values[i] = try_one(x[i]), NaN where it cannot tell; how many of these there are.
template <double (*try_one)(double)>
VKM_INLINE std::size_t try_lanes(const double* x, std::size_t count, double* values) {
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double value = try_one(x[i]);
    values[i] = value;
    missed += value != value;
  }
  return missed;
}

/// result[i] = scalar(x[i]) wherever the kernel left NaN; `left` of them. Works on blocks, so that x and result may be
/// the same memory.
template <class Kernel, class Scalar>
void lanes_of(std::span<const double> x, std::span<double> result, Kernel kernel, Scalar scalar) {
  constexpr std::size_t block = 512;
  double values[block];
  for (std::size_t first = 0; first < x.size(); first += block) {
    const std::size_t count = x.size() - first < block ? x.size() - first : block;
    if (kernel(x.data() + first, count, values) != 0) {
      for (std::size_t i = 0; i < count; ++i) {
        if (std::isnan(values[i])) values[i] = scalar(x[first + i]);
      }
    }
    for (std::size_t i = 0; i < count; ++i) result[first + i] = values[i];
  }
}

}  // namespace vkm::elementary
