#include "filament/motion/regularized_velocity.hpp"

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"
#include "core/lanes.hpp"
#include "core/numbers.hpp"

namespace vkm {

namespace {

/// Edges of a source with their midpoints.
struct Edges {
  std::vector<Vec3> edge;
  std::vector<Vec3> mid;
};

Edges edges_of(std::span<const Vec3> points) {
  Edges edges;
  edges.edge.reserve(points.size());
  edges.mid.reserve(points.size());
  for (std::size_t k = 0; k < points.size(); ++k) {
    const Vec3& p = points[k];
    const Vec3& q = points[k + 1 == points.size() ? 0 : k + 1];
    edges.edge.push_back(q - p);
    edges.mid.push_back(0.5 * (q + p));
  }
  return edges;
}

/// A block of vertices with their velocities so far. `row` is the index of each vertex and `before` that of the edge
/// that arrives at it, as doubles, so that one vector width serves all.
struct VertexBlock {
  const double *x, *y, *z;
  double *u, *v, *w;
  double row[lane_block];
  double before[lane_block];
};

/// Adds the velocities that the edges first .. last - 1 of a source induce, edge by edge; `own` leaves out the two
/// edges at each vertex.
template <bool own>
VKM_INLINE void add_edges(const Vec3* edge, const Vec3* mid, std::size_t first, std::size_t last, double soft2,
                          double strength, VertexBlock& block) {
  double sum_x[lane_block], sum_y[lane_block], sum_z[lane_block];
  for (std::size_t i = 0; i < lane_block; ++i) {
    sum_x[i] = block.u[i];
    sum_y[i] = block.v[i];
    sum_z[i] = block.w[i];
  }
  for (std::size_t k = first; k < last; ++k) {
    const double ex = edge[k][0], ey = edge[k][1], ez = edge[k][2];
    const double mx = mid[k][0], my = mid[k][1], mz = mid[k][2];
    [[maybe_unused]] const double place = static_cast<double>(k);
    for (std::size_t i = 0; i < lane_block; ++i) {
      const double rx = block.x[i] - mx;
      const double ry = block.y[i] - my;
      const double rz = block.z[i] - mz;
      const double r2 = rx * rx + ry * ry + rz * rz + soft2;
      const double g = strength / (std::sqrt(r2) * r2);
      double tx = (ey * rz - ez * ry) * g;
      double ty = (ez * rx - ex * rz) * g;
      double tz = (ex * ry - ey * rx) * g;
      if constexpr (own) {
        // Adding -0.0 leaves every sum as it is, bit by bit.
        const bool at_vertex = (block.row[i] == place) | (block.before[i] == place);
        tx = at_vertex ? -0.0 : tx;
        ty = at_vertex ? -0.0 : ty;
        tz = at_vertex ? -0.0 : tz;
      }
      sum_x[i] += tx;
      sum_y[i] += ty;
      sum_z[i] += tz;
    }
  }
  for (std::size_t i = 0; i < lane_block; ++i) {
    block.u[i] = sum_x[i];
    block.v[i] = sum_y[i];
    block.w[i] = sum_z[i];
  }
}

VKM_KERNEL void add_all_edges(const Vec3* edge, const Vec3* mid, std::size_t first, std::size_t last, double soft2,
                              double strength, VertexBlock& block) {
  add_edges<false>(edge, mid, first, last, soft2, strength, block);
}

VKM_KERNEL void add_edges_off_vertices(const Vec3* edge, const Vec3* mid, std::size_t first, std::size_t last,
                                       double strength, VertexBlock& block) {
  add_edges<true>(edge, mid, first, last, 0.0, strength, block);
}

/// The sum of a filament on a block of its own vertices, which begins at vertex `begin`: only edges next to the block
/// can be edges at one of its vertices.
void add_own_edges(const Edges& edges, double strength, std::size_t begin, VertexBlock& block) {
  const std::size_t n = edges.edge.size();
  const Vec3 *edge = edges.edge.data(), *mid = edges.mid.data();
  const std::size_t near = begin > 0 ? begin - 1 : 0;
  const std::size_t far = std::min(n, begin + lane_block);
  const std::size_t tail = begin == 0 ? std::max(far, n - 1) : n;  // the last edge arrives at vertex 0
  add_all_edges(edge, mid, 0, near, 0.0, strength, block);
  add_edges_off_vertices(edge, mid, near, far, strength, block);
  add_all_edges(edge, mid, far, tail, 0.0, strength, block);
  add_edges_off_vertices(edge, mid, tail, n, strength, block);
}

Vec3 local_induction(const Vec3& a, const Vec3& b, double core, double constant, double strength) {
  constexpr double least_length = 1e-30;
  const double la = std::max(least_length, norm(a));
  const double lb = std::max(least_length, norm(b));
  const double c = (std::log(2.0 * std::sqrt(la * lb) / core) + constant) * strength;
  return cross(a, b) * (2.0 * c) / (la * lb * (lb + la));
}

}  // namespace

FilamentVelocity filament_velocity(std::span<const Filament> filaments, const FilamentOptions& options,
                                   const Poll& poll) {
  const double core = std::exp(options.core_delta) * std::max(1e-30, options.core_radius);
  const double soft2 = options.a_sim * options.a_sim;
  std::vector<Edges> edges;
  FilamentVelocity result;
  for (const Filament& filament : filaments) {
    edges.push_back(edges_of(filament.points));
    result.velocity.emplace_back(filament.points.size(), Vec3{});
  }
  Heartbeat heartbeat(poll);
  double largest = 0.0;
  for (std::size_t f = 0; f < filaments.size(); ++f) {
    const Filament& filament = filaments[f];
    const std::size_t n = filament.points.size();
    if (filament.ghost || n == 0) continue;
    const double strength = filament.circulation / four_pi;
    const Lanes points(filament.points);
    Lanes velocity(n);
    for (std::size_t i = 0; i < n; ++i) {
      const Vec3& a = edges[f].edge[i == 0 ? n - 1 : i - 1];
      velocity.set(i, local_induction(a, edges[f].edge[i], core, options.lia_constant, strength));
    }
    for (std::size_t b = 0; b < points.blocks() && !options.lia_only; ++b) {
      const std::size_t at = b * lane_block;
      VertexBlock block{points.axis(0) + at,
                        points.axis(1) + at,
                        points.axis(2) + at,
                        velocity.axis(0) + at,
                        velocity.axis(1) + at,
                        velocity.axis(2) + at,
                        {},
                        {}};
      for (std::size_t i = 0; i < lane_block; ++i) {
        block.row[i] = static_cast<double>(at + i);
        block.before[i] = static_cast<double>(at + i == 0 ? n - 1 : at + i - 1);
      }
      for (std::size_t s = 0; s < filaments.size(); ++s) {
        if (!filaments[s].source || filaments[s].ghost) continue;
        heartbeat.tick();
        const double source_strength = filaments[s].circulation / four_pi;
        if (s == f) {
          add_own_edges(edges[s], source_strength, at, block);
        } else {
          add_all_edges(edges[s].edge.data(), edges[s].mid.data(), 0, edges[s].edge.size(), soft2, source_strength,
                        block);
        }
      }
    }
    for (std::size_t i = 0; i < n; ++i) {
      const Vec3 v = velocity[i];
      result.velocity[f][i] = v;
      largest = norm2(v) > largest ? norm2(v) : largest;
    }
  }
  result.maximum_speed = std::sqrt(largest);
  return result;
}

}  // namespace vkm
