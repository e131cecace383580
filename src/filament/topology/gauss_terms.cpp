#include "filament/topology/gauss_terms.hpp"

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"
#include "core/ordered_sum.hpp"

namespace vkm {

GaussColumns::GaussColumns(std::span<const Vec3> points, std::span<const Vec3> directions)
    : size_(points.size()), stride_(points.size() + block), values_(6 * stride_) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    double* point_row = values_.data() + axis * stride_;
    double* direction_row = values_.data() + (3 + axis) * stride_;
    for (std::size_t j = 0; j < size_; ++j) {
      point_row[j] = points[j][axis];
      direction_row[j] = directions[j][axis];
    }
  }
}

namespace {

VKM_KERNEL void fill_plain(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first,
                           std::size_t count, double* __restrict terms) {
  const double* px = columns.point(0) + first;
  const double* py = columns.point(1) + first;
  const double* pz = columns.point(2) + first;
  const double* vx = columns.direction(0) + first;
  const double* vy = columns.direction(1) + first;
  const double* vz = columns.direction(2) + first;
  const double x0 = x[0], x1 = x[1], x2 = x[2];
  const double u0 = u[0], u1 = u[1], u2 = u[2];
  for (std::size_t k = 0; k < count; ++k) {
    const double rx = x0 - px[k];
    const double ry = x1 - py[k];
    const double rz = x2 - pz[k];
    const double r = std::sqrt(rx * rx + ry * ry + rz * rz);
    const double cx = u1 * vz[k] - u2 * vy[k];
    const double cy = u2 * vx[k] - u0 * vz[k];
    const double cz = u0 * vy[k] - u1 * vx[k];
    const double term = (cx * rx + cy * ry + cz * rz) / (r * r * r);
    terms[k] = r < least_gauss_distance ? -0.0 : term;  // adding -0.0 leaves every sum as it is, bit by bit
  }
}

}  // namespace

PairForm gauss_form(std::span<const Vec3> points) { return gauss_kernel.form_for(modest(points)); }

void fill_gauss(const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t first, std::size_t count,
                double* terms, PairForm form) {
  if (form == PairForm::plain) return fill_plain(x, u, columns, first, count, terms);
  fill_gauss_wide(x, u, columns, first, count, terms, form);
}

const PairKernel gauss_kernel("Gauss sum", [](PairForm form) {
  static const GaussColumns columns(trial_curve().at, trial_curve().edges);
  double terms[1024];
  for (std::size_t i = 0; i < 8; ++i)
    fill_gauss({2.0, 0.5, 0.0}, trial_curve().edges[i], columns, 0, 1024, terms, form);
});

double add_gauss_row(double sum, const Vec3& x, const Vec3& u, const GaussColumns& columns, std::size_t begin,
                     std::size_t end, PairForm form) {
  constexpr std::size_t run = 512;
  double terms[run];
  for (std::size_t j = begin; j < end; j += run) {
    const std::size_t count = std::min(run, end - j);
    fill_gauss(x, u, columns, j, count, terms, form);
    sum = add_in_order(sum, {terms, count});
  }
  return sum;
}

}  // namespace vkm
