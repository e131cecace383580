#include "knot/harmonics.hpp"

#include "core/kernel.hpp"

namespace vkm {

namespace {

VKM_KERNEL void add_column(double* sums, const double* cosine, const double* sine, std::size_t count, double a,
                           double b) {
  for (std::size_t k = 0; k < count; ++k) sums[k] += a * cosine[k] + b * sine[k];
}

}  // namespace

void add_harmonic(HarmonicPoints& points, const HarmonicTurns& turns, std::size_t count, const Vec3& a, const Vec3& b) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    add_column(points.axis[axis].data(), turns.cosine.data(), turns.sine.data(), count, a[axis], b[axis]);
  }
}

}  // namespace vkm
