#pragma once

/// Points laid out coordinate by coordinate for kernels that work on a block of points at a time, one lane a point.

#include <cstddef>
#include <span>
#include <vector>

#include "core/memory.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Points in a kernel's block. Thirty-two of them with their sums fill the widest registers and stay in the nearest
/// cache; the time is flat from 16 to 128.
inline constexpr std::size_t lane_block = 32;

/// Coordinates of points in three runs of memory, filled up with zeros to whole blocks. A size that would need absurd
/// memory for a field and its sums throws std::bad_alloc.
class Lanes {
 public:
  explicit Lanes(std::size_t size)
      : size_((require_memory(size, 2 * sizeof(Vec3)), size)),
        stride_((size + lane_block - 1) / lane_block * lane_block),
        values_(3 * stride_ / CacheLine::size) {}

  explicit Lanes(std::span<const Vec3> points) : Lanes(points.size()) {
    for (std::size_t i = 0; i < size_; ++i) set(i, points[i]);
  }

  std::size_t size() const { return size_; }
  std::size_t blocks() const { return stride_ / lane_block; }

  const double* axis(std::size_t a) const { return reinterpret_cast<const double*>(values_.data()) + a * stride_; }
  double* axis(std::size_t a) { return reinterpret_cast<double*>(values_.data()) + a * stride_; }

  Vec3 operator[](std::size_t i) const { return {axis(0)[i], axis(1)[i], axis(2)[i]}; }

  std::vector<Vec3> vectors() const {
    std::vector<Vec3> list(size_);
    for (std::size_t i = 0; i < size_; ++i) list[i] = (*this)[i];
    return list;
  }

  void set(std::size_t i, const Vec3& point) {
    for (std::size_t a = 0; a < 3; ++a) axis(a)[i] = point[a];
  }

 private:
  /// Where each block begins a line of the cache, no vector of it is split between two.
  struct alignas(64) CacheLine {
    static constexpr std::size_t size = 8;
    double values[size];
  };

  std::size_t size_;
  std::size_t stride_;
  std::vector<CacheLine> values_;
};

}  // namespace vkm
