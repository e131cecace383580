#pragma once

/// Rows of the Gauss double sum over pairs of points with a direction each:
///
///   term(i, j) = ((u_i x v_j) . R) / |R|^3,  R = x_i - y_j,  left out where |R| < 1e-6.
///
/// Writhe, linking number and the parametric writhe integral all sum these terms and differ only in their pairs and in
/// the factor in front (Gauss 1833; Calugareanu 1961). The terms of a row are computed in lanes and added in the order
/// of j (core/ordered_sum.hpp), so that the sum has the bits of the plain double loop. A NaN distance is not left out.
/// The terms have several forms (core/pair_form.hpp).

#include <cstddef>
#include <span>
#include <vector>

#include "core/pair_form.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "core/wide.hpp"

namespace vkm {

/// Points y_j with their directions v_j, coordinate by coordinate, with zeros behind the end up to a whole block.
class GaussColumns {
 public:
  static constexpr std::size_t block = 16;

  /// `directions` must have at least as many entries as `points`.
  GaussColumns(std::span<const Vec3> points, std::span<const Vec3> directions);

  std::size_t size() const { return size_; }
  const double* point(std::size_t axis) const { return values_.data() + axis * stride_; }
  const double* direction(std::size_t axis) const { return values_.data() + (3 + axis) * stride_; }

 private:
  std::size_t size_;
  std::size_t stride_;
  std::vector<double> values_;
};

inline constexpr double least_gauss_distance = 1e-6;  // nearer pairs are left out

/// Writes term(x, u; j) for j = first .. first + count - 1; up to a whole number of eights may be written.
void fill_gauss(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                double* terms, PairForm form);

extern const PairKernel gauss_kernel;

/// The form for points, on either side, and the edges between them.
PairForm gauss_form(std::span<const Vec3> points);

#if VKM_HAS_WIDE
void fill_gauss_wide(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                     double* terms, PairForm form);
#else
inline void fill_gauss_wide(const Vec3&, const Vec3&, const GaussColumns&, std::size_t, std::size_t, double*,
                            PairForm) {}
#endif

/// Adds term(x, u; j) for j = begin .. end - 1 to `sum`, with the bits of one by one.
double add_gauss_row(double sum, const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t begin,
                     std::size_t end, PairForm form = PairForm::plain);

/// Ticks a heartbeat once in some thousands of pairs.
class PairHeartbeat {
 public:
  explicit PairHeartbeat(const Poll& poll) : heartbeat_(poll) {}

  void count(std::size_t pairs) {
    pairs_ += pairs;
    if (pairs_ < 16384) return;
    pairs_ = 0;
    heartbeat_.tick();
  }

 private:
  Heartbeat heartbeat_;
  std::size_t pairs_ = 0;
};

}  // namespace vkm
