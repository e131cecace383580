#include "knot/knot_dynamics.hpp"

#include <cmath>
#include <stdexcept>

#include "core/numbers.hpp"
#include "filament/topology/gauss_terms.hpp"

namespace vkm::KnotDynamics {

FourierResult evaluate_fourier_series(std::span<const std::array<double, 6>> rows, std::span<const double> t,
                                      const Poll& poll) {
  FourierResult result;
  result.positions.reserve(t.size());
  result.tangents.reserve(t.size());
  Heartbeat heartbeat(poll);
  for (const double parameter : t) {
    Vec3 position{};
    Vec3 tangent{};
    for (std::size_t row = 0; row < rows.size(); ++row) {
      const double j = static_cast<double>(row);
      const double c = std::cos(j * parameter);
      const double d = std::sin(j * parameter);
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const double a = rows[row][2 * axis];
        const double b = rows[row][2 * axis + 1];
        position[axis] += a * c + b * d;
        if (row > 0) tangent[axis] += -j * a * d + j * b * c;
      }
    }
    result.positions.push_back(position);
    result.tangents.push_back(tangent);
    heartbeat.tick();
  }
  return result;
}

double writhe_gauss_curve(std::span<const Vec3> r, std::span<const Vec3> T, const Poll& poll) {
  const std::size_t n = r.size();
  if (T.size() < n) {
    throw std::invalid_argument("writhe_gauss_curve: there must be at least as many tangents as positions");
  }
  if (n == 0) return 0.0;
  const GaussColumns columns(r, T);
  PairHeartbeat heartbeat(poll);
  double sum = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    sum = add_gauss_row(sum, r[i], T[i], columns, 0, i);
    sum = add_gauss_row(sum, r[i], T[i], columns, i + 1, n);
    heartbeat.count(n);
  }
  const double ds = two_pi / static_cast<double>(n);
  return sum * (ds * ds) / four_pi;
}

}  // namespace vkm::KnotDynamics
