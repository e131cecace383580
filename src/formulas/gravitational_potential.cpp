#include "formulas/gravitational_potential.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/elementary.hpp"
#include "core/elementary/exponential.hpp"
#include "core/finite.hpp"
#include "core/numbers.hpp"
#include "core/pair_sums.hpp"
#include "core/time_dilation.hpp"
#include "formulas/guards.hpp"
#include "formulas/plummer_dipoles.hpp"

namespace vkm {

namespace {

/// Beyond this the exponential of the negative is 0 in double precision.
constexpr double vanished_exponent = 746.0;

/// The samples that one block of targets reads, lane k being sample `first` + k.
struct Targets {
  LaneView at;
  std::size_t first;
};

/// Exponents |p_i - p_j|^2 / width of one source against a block of targets; returns whether any of them counts.
VKM_INLINE bool exponents(const Vec3& p, const LaneView& at, double width, double* q) {
  std::uint64_t counts = 0;
  for (std::size_t k = 0; k < lane_block; ++k) {
    const double dx = at.x[k] - p[0];
    const double dy = at.y[k] - p[1];
    const double dz = at.z[k] - p[2];
    q[k] = (dx * dx + dy * dy + dz * dz) / width;
    counts |= q[k] > vanished_exponent ? 0U : 1U;
  }
  return counts != 0;
}

/// `finite` says that no vorticity is infinite or NaN: a vanished factor then contributes exactly nothing and is
/// passed over.
VKM_KERNEL void gradient_block(const Vec3* positions, const Vec3* vorticity, std::size_t count, const Targets& targets,
                               double width, bool finite, double* potential) {
  double sum_x[lane_block] = {};
  double sum_y[lane_block] = {};
  double sum_z[lane_block] = {};
  double q[lane_block];
  for (std::size_t j = 0; j < count; ++j) {
    if (!exponents(positions[j], targets.at, width, q) && finite) continue;
    double factor[lane_block];
    std::uint64_t hard = 0;
    for (std::size_t k = 0; k < lane_block; ++k) {
      factor[k] = elementary::try_exp(-q[k]);
      hard |= std::isnan(factor[k]) ? 1U : 0U;
    }
    if (hard != 0) {
      for (std::size_t k = 0; k < lane_block; ++k) factor[k] = std::isnan(factor[k]) ? vkm::exp(-q[k]) : factor[k];
    }
    const double wx = vorticity[j][0], wy = vorticity[j][1], wz = vorticity[j][2];
    const double own = static_cast<double>(j) - static_cast<double>(targets.first);
    for (std::size_t k = 0; k < lane_block; ++k) {
      const bool left_out = (own == static_cast<double>(k)) | (finite & (q[k] > vanished_exponent));
      const LaneVec3 term = unless(left_out, LaneVec3{wx, wy, wz} * factor[k]);
      sum_x[k] += term.x;
      sum_y[k] += term.y;
      sum_z[k] += term.z;
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) {
    potential[k] = -0.5 * (sum_x[k] * sum_x[k] + sum_y[k] * sum_y[k] + sum_z[k] * sum_z[k]);
  }
}

/// Calls block(targets, potential) for every block of samples, and cuts the result to their number.
template <class Block>
std::vector<double> potential_by_blocks(std::span<const Vec3> positions, const Poll& poll, Block&& block) {
  const Lanes lanes(positions);
  std::vector<double> potential(lanes.blocks() * lane_block);
  Heartbeat heartbeat(poll);
  for (std::size_t b = 0; b < lanes.blocks(); ++b) {
    const std::size_t at = b * lane_block;
    block(Targets{view(lanes, at), at}, potential.data() + at);
    heartbeat.tick();
  }
  potential.resize(positions.size());
  return potential;
}

}  // namespace

std::vector<double> gravitational_potential_direct(std::span<const Vec3> positions, std::span<const Vec3> vorticity,
                                                   double epsilon, const Poll& poll) {
  reject_if(positions.size() != vorticity.size(), "positions and vorticity must have the same length.");
  const double epsilon2 = epsilon * epsilon;
  const bool regular = moderate(positions) && moderate(vorticity) && epsilon != 0.0 && moderate(epsilon);
  const PairForm form = plummer_kernel.form_for(regular);
  return potential_by_blocks(positions, poll, [&](const Targets& targets, double* potential) {
    add_plummer_dipoles({positions.data(), vorticity.data()}, positions.size(), targets.at, targets.first, epsilon2,
                        potential, form);
    for (std::size_t k = 0; k < lane_block; ++k) potential[k] = -inv_four_pi * potential[k];
  });
}

std::vector<double> gravitational_potential_gradient(std::span<const Vec3> positions, std::span<const Vec3> vorticity,
                                                     double epsilon, const Poll& poll) {
  reject_if(positions.size() != vorticity.size(), "positions and vorticity must have the same length.");
  const double width = (epsilon + epsilon) * epsilon;
  const bool finite = all_finite(vorticity);
  return potential_by_blocks(positions, poll, [&](const Targets& targets, double* potential) {
    gradient_block(positions.data(), vorticity.data(), positions.size(), targets, width, finite, potential);
  });
}

std::vector<double> time_dilation_map_linear(std::span<const Vec3> tangents, double C_e) {
  std::vector<double> map(tangents.size());
  const double scale = C_e * C_e;
  std::transform(tangents.begin(), tangents.end(), map.begin(),
                 [scale](const Vec3& t) { return 1.0 - norm2(t) / scale; });
  return map;
}

std::vector<double> time_dilation_map_sqrt(std::span<const Vec3> tangents, double C_e) {
  std::vector<double> map(tangents.size());
  std::transform(tangents.begin(), tangents.end(), map.begin(),
                 [C_e](const Vec3& t) { return time_dilation_sqrt(t, C_e); });
  return map;
}

}  // namespace vkm
