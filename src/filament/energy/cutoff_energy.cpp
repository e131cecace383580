#include "filament/energy/cutoff_energy.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include "core/kernel.hpp"
#include "core/lanes.hpp"
#include "core/memory.hpp"

namespace vkm {

namespace {

constexpr double eight_pi = 25.132741228718345;
/// Copies of the difference array, so that pairs at like distances do not wait for each other's additions.
constexpr std::size_t copies = 4;

/// The cutoffs, filled up with infinities to a power of two for a search without branches.
struct Edges {
  std::vector<double> values;
  std::size_t count;
  bool ascending;
};

Edges edges_from(std::span<const double> a_values) {
  Edges edges{{a_values.begin(), a_values.end()}, a_values.size(), true};
  edges.values.resize(std::bit_ceil(a_values.size() + 1), std::numeric_limits<double>::infinity());
  for (std::size_t m = 1; m < a_values.size(); ++m) {
    if (!(a_values[m - 1] <= a_values[m])) edges.ascending = false;
  }
  return edges;
}

/// The pairs of element i with the later ones, both orders of each. `total` has a sum a lane; `differences` has the
/// entry of edge m in copy c at m * copies + c, and nothing of use at m = 0.
VKM_KERNEL void add_cutoff_row(const double* x, const double* y, const double* z, const double* tx, const double* ty,
                               const double* tz, const double* ds, std::size_t n, std::size_t i, const double* edges,
                               std::size_t count, std::size_t padded, bool ascending, double* total,
                               double* differences) {
  const double px = x[i], py = y[i], pz = z[i];
  const double ux = tx[i], uy = ty[i], uz = tz[i];
  const double length = ds[i];
  double sum[lane_block];
  for (std::size_t k = 0; k < lane_block; ++k) sum[k] = total[k];
  for (std::size_t block = (i + 1) / lane_block * lane_block; block < n; block += lane_block) {
    double d[lane_block];
    double pair[lane_block];
    std::int64_t index[lane_block];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[block + k] - px;
      const double ry = y[block + k] - py;
      const double rz = z[block + k] - pz;
      d[k] = std::sqrt(rx * rx + ry * ry + rz * rz);
      const double q = (ux * tx[block + k] + uy * ty[block + k] + uz * tz[block + k]) / d[k];
      pair[k] = q * length * ds[block + k] + q * ds[block + k] * length;
      index[k] = 0;
    }
    if (ascending) {
      for (std::size_t half = padded / 2; half > 0; half /= 2) {
        const double* middle = edges + (half - 1);
        const auto step = static_cast<std::int64_t>(half);
        for (std::size_t k = 0; k < lane_block; ++k) index[k] += middle[index[k]] < d[k] ? step : 0;
      }
    } else {
      for (std::size_t k = 0; k < lane_block; ++k) index[k] = std::lower_bound(edges, edges + count, d[k]) - edges;
    }
    const auto after = static_cast<std::int64_t>(i) - static_cast<std::int64_t>(block);
    const auto end = static_cast<std::int64_t>(n - block);
    for (std::size_t k = 0; k < lane_block; ++k) {
      const auto lane = static_cast<std::int64_t>(k);
      const bool counts = lane > after && lane < end && d[k] > 0.0 && index[k] > 0;
      pair[k] = counts ? pair[k] : 0.0;
      sum[k] += pair[k];
    }
    for (std::size_t k = 0; k < lane_block; ++k) {
      differences[static_cast<std::size_t>(index[k]) * copies + k % copies] -= pair[k];
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) total[k] = sum[k];
}

}  // namespace

std::vector<double> cutoff_energies(std::span<const Vec3> points, std::span<const Vec3> tangents,
                                    std::span<const double> ds, std::span<const double> a_values, const Poll& poll) {
  const std::size_t n = points.size();
  if (tangents.size() != n || ds.size() != n) throw std::invalid_argument("cutoff_energies: lengths differ");
  const Lanes p(points);
  const Lanes t(tangents);
  std::vector<double> lengths(p.blocks() * lane_block, 0.0);
  std::copy(ds.begin(), ds.end(), lengths.begin());
  require_memory(a_values.size(), (copies + 3) * sizeof(double));
  const Edges edges = edges_from(a_values);
  std::vector<double> differences((edges.count + 1) * copies, 0.0);
  double total[lane_block] = {};
  Heartbeat heartbeat(poll);
  for (std::size_t i = 0; i + 1 < n; ++i) {
    add_cutoff_row(p.axis(0), p.axis(1), p.axis(2), t.axis(0), t.axis(1), t.axis(2), lengths.data(), n, i,
                   edges.values.data(), edges.count, edges.values.size(), edges.ascending, total, differences.data());
    if (i % 16 == 0) heartbeat.tick();
  }
  std::vector<double> energies(edges.count);
  double sum = 0.0;
  for (const double lane : total) sum += lane;
  for (std::size_t m = 0; m < edges.count; ++m) {
    if (m > 0) {
      for (std::size_t c = 0; c < copies; ++c) sum += differences[m * copies + c];
    }
    energies[m] = sum / eight_pi;
  }
  return energies;
}

}  // namespace vkm
