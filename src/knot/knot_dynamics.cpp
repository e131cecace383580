#include "knot/knot_dynamics.hpp"

#include <algorithm>
#include <stdexcept>

#include "core/numbers.hpp"
#include "filament/topology/gauss_terms.hpp"
#include "knot/harmonics.hpp"

namespace vkm::KnotDynamics {

FourierResult evaluate_fourier_series(std::span<const std::array<double, 6>> rows, std::span<const double> t,
                                      const Poll& poll) {
  FourierResult result;
  result.positions.reserve(t.size());
  result.tangents.reserve(t.size());
  Heartbeat heartbeat(poll);
  HarmonicColumn angles{};
  HarmonicTurns turns;
  for (std::size_t first = 0; first < t.size(); first += harmonic_block) {
    const std::size_t count = std::min(harmonic_block, t.size() - first);
    HarmonicPoints position;
    HarmonicPoints tangent;
    for (std::size_t row = 0; row < rows.size(); ++row) {
      const double j = static_cast<double>(row);
      const Vec3 a{rows[row][0], rows[row][2], rows[row][4]};
      const Vec3 b{rows[row][1], rows[row][3], rows[row][5]};
      for (std::size_t k = 0; k < count; ++k) angles[k] = j * t[first + k];
      turns.turn(angles, count);
      add_harmonic(position, turns, count, a, b);
      // -j a sin + j b cos: the sums of two terms do not depend on their order
      if (row > 0) add_harmonic(tangent, turns, count, b * j, a * -j);
      heartbeat.tick();
    }
    for (std::size_t k = 0; k < count; ++k) {
      result.positions.push_back(position[k]);
      result.tangents.push_back(tangent[k]);
    }
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
