#include "mass/repulsion.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

#include "core/kernel.hpp"
#include "core/vec3.hpp"

// A loop over the lanes must reach the vectoriser as a loop: GCC would unroll eight turns before.
#if defined(__GNUC__) && !defined(__clang__)
#define VKM_LANE_LOOP _Pragma("GCC unroll 1")
#else
#define VKM_LANE_LOOP
#endif

namespace vkm {

namespace {

constexpr double nearest2 = 1e-8;
constexpr double farthest2 = 0.04000000000000001;  // 0.2 squared
constexpr double strength = 200.0;                 // min(200, 0.5 / r^4), r^4 < 0.0016

struct Coordinates {
  const double *x, *y, *z;
};

VKM_INLINE bool in_window(double r2) { return (r2 > nearest2) & (r2 < farthest2); }

constexpr std::size_t lanes = 8;

/// The candidates that lie in the window around a point, in their order. Candidates are padded to whole lanes.
VKM_KERNEL std::size_t find_partners(const Coordinates& at, const std::uint32_t* candidates, std::size_t count,
                                     double x, double y, double z, std::uint32_t* partners) {
  std::size_t found = 0;
  for (std::size_t k = 0; k < count; k += lanes) {
    std::uint64_t hits[lanes];
    std::uint64_t any = 0;
    VKM_LANE_LOOP for (std::size_t lane = 0; lane < lanes; ++lane) {
      const double dx = x - at.x[k + lane];
      const double dy = y - at.y[k + lane];
      const double dz = z - at.z[k + lane];
      const bool hit = in_window(dx * dx + dy * dy + dz * dz);
      hits[lane] = hit ? ~std::uint64_t{0} : 0;
      any |= hits[lane];
    }
    if (any == 0) continue;
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      if (hits[lane] != 0) partners[found++] = candidates[k + lane];
    }
  }
  return found;
}

/// Points of one cell side by side. Indices are held as doubles, so that a lane has one width throughout.
struct Targets {
  double x[lanes], y[lanes], z[lanes];
  double previous[lanes], next[lanes];
  double fx[lanes], fy[lanes], fz[lanes];
};

/// Adds the forces of all candidates, in their order, to the targets.
VKM_KERNEL void add_to_targets(const Coordinates& at, const std::uint32_t* candidates, std::size_t count,
                               Targets& targets) {
  Targets t = targets;
  for (std::size_t k = 0; k < count; ++k) {
    const double x = at.x[k];
    const double y = at.y[k];
    const double z = at.z[k];
    const double j = static_cast<double>(candidates[k]);
    double dx[lanes];
    double dy[lanes];
    double dz[lanes];
    double r2[lanes];
    std::uint64_t hits[lanes];
    std::uint64_t any = 0;
    VKM_LANE_LOOP for (std::size_t lane = 0; lane < lanes; ++lane) {
      dx[lane] = t.x[lane] - x;
      dy[lane] = t.y[lane] - y;
      dz[lane] = t.z[lane] - z;
      r2[lane] = dx[lane] * dx[lane] + dy[lane] * dy[lane] + dz[lane] * dz[lane];
      const bool hit = in_window(r2[lane]) & (t.previous[lane] != j) & (t.next[lane] != j);
      hits[lane] = hit ? ~std::uint64_t{0} : 0;
      any |= hits[lane];
    }
    if (any == 0) continue;
    VKM_LANE_LOOP for (std::size_t lane = 0; lane < lanes; ++lane) {
      const double r = std::sqrt(r2[lane]);
      const double fx = t.fx[lane] + (dx[lane] / r) * strength;
      const double fy = t.fy[lane] + (dy[lane] / r) * strength;
      const double fz = t.fz[lane] + (dz[lane] / r) * strength;
      t.fx[lane] = hits[lane] ? fx : t.fx[lane];
      t.fy[lane] = hits[lane] ? fy : t.fy[lane];
      t.fz[lane] = hits[lane] ? fz : t.fz[lane];
    }
  }
  targets = t;
}

/// Adds the forces of the partners of point i in their order.
void add_forces(const Axes& points, std::uint32_t i, const std::uint32_t* partners, std::size_t count, Axes& force) {
  const Vec3 p{points.x[i], points.y[i], points.z[i]};
  Vec3 sum{force.x[i], force.y[i], force.z[i]};
  for (std::size_t k = 0; k < count; ++k) {
    const std::uint32_t j = partners[k];
    const Vec3 d = p - Vec3{points.x[j], points.y[j], points.z[j]};
    sum += (d / norm(d)) * strength;
  }
  force.x[i] = sum[0];
  force.y[i] = sum[1];
  force.z[i] = sum[2];
}

/// Sorts few indices by insertion, many by marking them in a bit set, a scattered crowd by the standard sort.
void sort_indices(std::uint32_t* indices, std::size_t count, std::vector<std::uint64_t>& marks) {
  if (count <= 24) {
    for (std::size_t k = 1; k < count; ++k) {
      const std::uint32_t value = indices[k];
      std::size_t at = k;
      for (; at > 0 && indices[at - 1] > value; --at) indices[at] = indices[at - 1];
      indices[at] = value;
    }
    return;
  }
  const auto [least, most] = std::minmax_element(indices, indices + count);
  const std::size_t first = *least / 64;
  const std::size_t last = *most / 64;
  if (last - first > 16 * count) {
    std::sort(indices, indices + count);
    return;
  }
  for (std::size_t k = 0; k < count; ++k) marks[indices[k] / 64] |= std::uint64_t{1} << (indices[k] % 64);
  std::size_t filled = 0;
  for (std::size_t word = first; word <= last; ++word) {
    for (std::uint64_t rest = std::exchange(marks[word], 0); rest != 0; rest &= rest - 1) {
      indices[filled++] = static_cast<std::uint32_t>(word * 64) + static_cast<std::uint32_t>(std::countr_zero(rest));
    }
  }
}

}  // namespace

Repulsion::Repulsion(std::vector<std::uint32_t> previous, std::vector<std::uint32_t> next)
    : previous_(std::move(previous)),
      next_(std::move(next)),
      candidates_(previous_.size() + lanes),
      at_(previous_.size() + lanes),
      partners_(previous_.size()),
      marks_(previous_.size() / 64 + 1) {}

/// The points in the cells around `cell`, in the order of their positions, padded with points that touch nothing.
void Repulsion::gather_candidates(std::uint32_t cell) {
  CellGrid::Range ranges[18];
  const int range_count = grid_.ranges_around(cell, ranges);
  std::size_t n = 0;
  for (int k = 0; k < range_count; ++k) {
    for (std::uint32_t position = ranges[k].begin; position < ranges[k].end; ++position, ++n) {
      candidates_[n] = grid_.index[position];
      at_.x[n] = grid_.x[position];
      at_.y[n] = grid_.y[position];
      at_.z[n] = grid_.z[position];
    }
  }
  candidate_count_ = n;
  for (std::size_t k = n; k < n + lanes; ++k) at_.x[k] = std::numeric_limits<double>::infinity();
}

/// Cells of few points: the partners of each point are found first, and then put in order.
void Repulsion::add_to_few(CellGrid::Range cell, Axes& force, const Axes& points) {
  const Coordinates at{at_.x.data(), at_.y.data(), at_.z.data()};
  std::uint32_t* partners = partners_.data();
  for (std::uint32_t position = cell.begin; position < cell.end; ++position) {
    const std::uint32_t i = grid_.index[position];
    std::size_t count =
        find_partners(at, candidates_.data(), candidate_count_, points.x[i], points.y[i], points.z[i], partners);
    const auto on_filament = [&](std::uint32_t j) { return j == previous_[i] || j == next_[i]; };
    count = static_cast<std::size_t>(std::remove_if(partners, partners + count, on_filament) - partners);
    if (count == 0) continue;
    sort_indices(partners, count, marks_);
    add_forces(points, i, partners, count, force);
  }
}

/// Cells of many points: the candidates are put in order once, and pass by the points side by side.
void Repulsion::add_to_many(CellGrid::Range cell, Axes& force, const Axes& points, Heartbeat& heartbeat) {
  sort_indices(candidates_.data(), candidate_count_, marks_);
  for (std::size_t k = 0; k < candidate_count_; ++k) {
    const std::uint32_t j = candidates_[k];
    at_.x[k] = points.x[j];
    at_.y[k] = points.y[j];
    at_.z[k] = points.z[j];
  }
  const Coordinates at{at_.x.data(), at_.y.data(), at_.z.data()};
  for (std::uint32_t first = cell.begin; first < cell.end; first += lanes) {
    const std::size_t used = std::min<std::size_t>(lanes, cell.end - first);
    if (candidate_count_ > 4096) heartbeat.tick();
    Targets targets{};
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      const std::uint32_t i = grid_.index[first + std::min(lane, used - 1)];
      targets.x[lane] = points.x[i];
      targets.y[lane] = points.y[i];
      targets.z[lane] = points.z[i];
      targets.previous[lane] = previous_[i];
      targets.next[lane] = next_[i];
      targets.fx[lane] = force.x[i];
      targets.fy[lane] = force.y[i];
      targets.fz[lane] = force.z[i];
    }
    add_to_targets(at, candidates_.data(), candidate_count_, targets);
    for (std::size_t lane = 0; lane < used; ++lane) {
      const std::uint32_t i = grid_.index[first + lane];
      force.x[i] = targets.fx[lane];
      force.y[i] = targets.fy[lane];
      force.z[i] = targets.fz[lane];
    }
  }
}

void Repulsion::add_to(Axes& force, const Axes& points, Heartbeat& heartbeat) {
  grid_.build(points);
  std::size_t work = 0;
  CellGrid::Range cell{0, 0};
  for (std::uint32_t position = 0; position < grid_.size(); position = cell.end) {
    cell = grid_.cell_at(position);
    gather_candidates(grid_.cell[position]);
    if (cell.end - cell.begin < 4) {
      add_to_few(cell, force, points);
    } else {
      add_to_many(cell, force, points, heartbeat);
    }
    work += candidate_count_ * (cell.end - cell.begin);
    if (work > 65536) {
      heartbeat.tick();
      work = 0;
    }
  }
}

}  // namespace vkm
