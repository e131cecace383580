#pragma once

/// The greatest off-diagonal element above the diagonal, kept up to date from one rotation to the next.
///
/// Magnitudes are compared by their bit patterns, which order like the numbers; NaN counts as 0. Each row keeps its
/// greatest magnitude and the first column that holds it, so that a rotation costs O(n) rather than O(n^2) and the
/// pivot is the one of a search through the whole triangle, ties included.

#include <bit>
#include <cstdint>
#include <vector>

#include "core/kernel.hpp"

namespace vkm::spectral {

VKM_INLINE std::int64_t magnitude_key(double x) {
  const auto key = static_cast<std::int64_t>(std::bit_cast<std::uint64_t>(x) & 0x7fffffffffffffffULL);
  return key > 0x7ff0000000000000LL ? 0 : key;
}

class PivotSearch {
 public:
  struct Pivot {
    std::size_t p;
    std::size_t q;
    double magnitude;
  };

  /// `transposed` is the matrix transposed, n x n with n >= 2; it must outlive the search.
  PivotSearch(const std::vector<double>& transposed, std::size_t n);

  /// The strictly greatest element, the first of equals in the order of rows; (0, 1) and 0 where all vanish.
  Pivot greatest() const;

  /// To be called after rows and columns p < q have changed, to equal ones.
  void update(std::size_t p, std::size_t q);

 private:
  void scan(std::size_t row);
  bool is_mirrored(std::size_t row) const;

  const std::vector<double>& transposed_;
  std::size_t n_;
  std::vector<bool> mirrored_;         // rows that equal their column, and can be read along the memory
  std::vector<std::int64_t> keys_;     // a row's greatest magnitude
  std::vector<std::int64_t> columns_;  // its first column, n where the row vanishes
  std::vector<std::int64_t> touched_;  // rows that the last change may concern
};

}  // namespace vkm::spectral
