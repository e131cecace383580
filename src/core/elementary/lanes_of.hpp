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

/// A kernel on any count of numbers: the last few are filled up to a whole vector, which takes a third of the time that
/// they would take one by one. `values` has room for the whole group.
template <class Kernel>
std::size_t fill_whole(const double* x, std::size_t count, double* values, Kernel kernel) {
  constexpr std::size_t lane_group = 8;
  const std::size_t rest = count % lane_group;
  const std::size_t whole = count - rest;
  std::size_t missed = whole == 0 ? 0 : kernel(x, whole, values);
  if (rest == 0) return missed;
  double last[lane_group];
  for (std::size_t i = 0; i < lane_group; ++i) last[i] = x[whole + (i < rest ? i : 0)];
  return missed + kernel(last, lane_group, values + whole);
}

/// result[i] = scalar(x[i]) wherever the kernel left NaN. Works on blocks, so that x and result may be the same memory.
template <class Kernel, class Scalar>
void lanes_of(std::span<const double> x, std::span<double> result, Kernel kernel, Scalar scalar) {
  constexpr std::size_t block = 512;
  double values[block];  // a multiple of eight, so that a filled-up group stays inside
  for (std::size_t first = 0; first < x.size(); first += block) {
    const std::size_t count = x.size() - first < block ? x.size() - first : block;
    if (fill_whole(x.data() + first, count, values, kernel) != 0) {
      for (std::size_t i = 0; i < count; ++i) {
        if (std::isnan(values[i])) values[i] = scalar(x[first + i]);
      }
    }
    for (std::size_t i = 0; i < count; ++i) result[first + i] = values[i];
  }
}

}  // namespace vkm::elementary
