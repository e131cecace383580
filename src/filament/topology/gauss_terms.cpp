#include "filament/topology/gauss_terms.hpp"

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"

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

VKM_KERNEL double add_gauss_row(double sum, const Vec3& x, const Vec3& u, const GaussColumns& columns,
                                std::size_t begin, std::size_t end) {
  constexpr std::size_t block = GaussColumns::block;
  const double* px = columns.point(0);
  const double* py = columns.point(1);
  const double* pz = columns.point(2);
  const double* vx = columns.direction(0);
  const double* vy = columns.direction(1);
  const double* vz = columns.direction(2);
  const double x0 = x[0], x1 = x[1], x2 = x[2];
  const double u0 = u[0], u1 = u[1], u2 = u[2];
  for (std::size_t j = begin; j < end; j += block) {
    double terms[block];
    for (std::size_t k = 0; k < block; ++k) {
      const double rx = x0 - px[j + k];
      const double ry = x1 - py[j + k];
      const double rz = x2 - pz[j + k];
      const double r = std::sqrt(rx * rx + ry * ry + rz * rz);
      const double cx = u1 * vz[j + k] - u2 * vy[j + k];
      const double cy = u2 * vx[j + k] - u0 * vz[j + k];
      const double cz = u0 * vy[j + k] - u1 * vx[j + k];
      const double term = (cx * rx + cy * ry + cz * rz) / (r * r * r);
      terms[k] = r < 1e-6 ? -0.0 : term;  // adding -0.0 leaves every sum as it is, bit by bit
    }
    if (end - j >= block) {
      for (std::size_t k = 0; k < block; ++k) sum += terms[k];
    } else {
      for (std::size_t k = 0; k < end - j; ++k) sum += terms[k];
    }
  }
  return sum;
}

}  // namespace vkm
