#include "mass/repulsion.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "core/kernel.hpp"

namespace vkm {

namespace {

constexpr double nearest2 = 1e-8;
constexpr double farthest2 = 0.04000000000000001;  // 0.2 squared
constexpr double strength = 200.0;                 // min(200, 0.5 / r^4), r^4 < 0.0016

struct Coordinates {
  const double *x, *y, *z;
};

VKM_INLINE bool interacts(double dx, double dy, double dz) {
  const double r2 = dx * dx + dy * dy + dz * dz;
  return (r2 > nearest2) & (r2 < farthest2);
}

/// Indices of the points in a range of positions that interact with a point, in the order of the positions.
VKM_INLINE std::size_t find_partners(const Coordinates& at, const std::uint32_t* index, CellGrid::Range range, double x,
                                     double y, double z, std::uint32_t* partners) {
  std::size_t found = 0;
  for (std::uint32_t k = range.begin; k < range.end; ++k) {
    partners[found] = index[k];
    found += interacts(x - at.x[k], y - at.y[k], z - at.z[k]);
  }
  return found;
}

/// Adds the forces of the partners of point i in their order.
VKM_KERNEL void add_forces(const Coordinates& points, std::uint32_t i, const std::uint32_t* partners, std::size_t count,
                           double (&force)[3]) {
  constexpr std::size_t lanes = 8;
  const double x = points.x[i];
  const double y = points.y[i];
  const double z = points.z[i];
  std::size_t k = 0;
  for (; k + lanes <= count; k += lanes) {
    double tx[lanes];
    double ty[lanes];
    double tz[lanes];
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      const std::uint32_t j = partners[k + lane];
      tx[lane] = x - points.x[j];
      ty[lane] = y - points.y[j];
      tz[lane] = z - points.z[j];
    }
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      const double r = std::sqrt(tx[lane] * tx[lane] + ty[lane] * ty[lane] + tz[lane] * tz[lane]);
      tx[lane] = (tx[lane] / r) * strength;
      ty[lane] = (ty[lane] / r) * strength;
      tz[lane] = (tz[lane] / r) * strength;
    }
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      force[0] += tx[lane];
      force[1] += ty[lane];
      force[2] += tz[lane];
    }
  }
  for (; k < count; ++k) {
    const std::uint32_t j = partners[k];
    const double dx = x - points.x[j];
    const double dy = y - points.y[j];
    const double dz = z - points.z[j];
    const double r = std::sqrt(dx * dx + dy * dy + dz * dz);
    force[0] += (dx / r) * strength;
    force[1] += (dy / r) * strength;
    force[2] += (dz / r) * strength;
  }
}

/// Sorts few partners by insertion, many by marking them in a bit set, a scattered crowd by the standard sort.
void sort_partners(std::uint32_t* partners, std::size_t count, std::vector<std::uint64_t>& marks) {
  if (count <= 24) {
    for (std::size_t k = 1; k < count; ++k) {
      const std::uint32_t value = partners[k];
      std::size_t at = k;
      for (; at > 0 && partners[at - 1] > value; --at) partners[at] = partners[at - 1];
      partners[at] = value;
    }
    return;
  }
  const auto [least, most] = std::minmax_element(partners, partners + count);
  const std::size_t first = *least / 64;
  const std::size_t last = *most / 64;
  if (last - first > 16 * count) {
    std::sort(partners, partners + count);
    return;
  }
  for (std::size_t k = 0; k < count; ++k) marks[partners[k] / 64] |= std::uint64_t{1} << (partners[k] % 64);
  std::size_t filled = 0;
  for (std::size_t word = first; word <= last; ++word) {
    for (std::uint64_t rest = std::exchange(marks[word], 0); rest != 0; rest &= rest - 1) {
      partners[filled++] = static_cast<std::uint32_t>(word * 64) + static_cast<std::uint32_t>(std::countr_zero(rest));
    }
  }
}

}  // namespace

Repulsion::Repulsion(std::vector<std::uint32_t> previous, std::vector<std::uint32_t> next)
    : previous_(std::move(previous)),
      next_(std::move(next)),
      partners_(previous_.size() + 1),  // one slot of slack for the branchless search
      marks_(previous_.size() / 64 + 1) {}

void Repulsion::add_to(Axes& force, const Axes& points, Heartbeat& heartbeat) {
  grid_.build(points);
  const Coordinates at{grid_.x.data(), grid_.y.data(), grid_.z.data()};
  const Coordinates from{points.x.data(), points.y.data(), points.z.data()};
  std::uint32_t* partners = partners_.data();
  CellGrid::Range ranges[18];
  int range_count = 0;
  std::size_t work = 0;
  for (std::size_t position = 0; position < grid_.size(); ++position) {
    if (position == 0 || grid_.cell[position] != grid_.cell[position - 1]) {
      range_count = grid_.ranges_around(grid_.cell[position], ranges);
    }
    std::size_t count = 0;
    for (int k = 0; k < range_count; ++k) {
      count += find_partners(at, grid_.index.data(), ranges[k], at.x[position], at.y[position], at.z[position],
                             partners + count);
      work += ranges[k].end - ranges[k].begin;
    }
    if (work > 65536) {
      heartbeat.tick();
      work = 0;
    }
    const std::uint32_t i = grid_.index[position];
    const auto on_filament = [&](std::uint32_t j) { return j == previous_[i] || j == next_[i]; };
    count = static_cast<std::size_t>(std::remove_if(partners, partners + count, on_filament) - partners);
    if (count == 0) continue;
    sort_partners(partners, count, marks_);
    double sum[3] = {force.x[i], force.y[i], force.z[i]};
    add_forces(from, i, partners, count, sum);
    force.x[i] = sum[0];
    force.y[i] = sum[1];
    force.z[i] = sum[2];
  }
}

}  // namespace vkm
