#include "filament/motion/regularized_velocity.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/elementary.hpp"
#include "core/numbers.hpp"
#include "core/pair_sums.hpp"
#include "core/polygon_edges.hpp"
#include "core/tasks.hpp"
#include "filament/sums/pair_forms.hpp"

namespace vkm {

namespace {

/// A block of vertices with their velocities so far. `row` is the index of each vertex and `before` that of the edge
/// that arrives at it, as doubles, so that one vector width serves all.
struct VertexBlock {
  LaneView at;
  LaneSpace velocity;
  double row[lane_block];
  double before[lane_block];
};

VKM_INLINE LaneVec3 induced(const LaneVec3& edge, const LaneVec3& r, double strength) {
  const double r2 = dot(r, r);
  return cross(edge, r) * (strength / (std::sqrt(r2) * r2));
}

/// Adds the velocities that the edges first .. last - 1 of a source induce, but for the two edges at each vertex.
VKM_KERNEL void add_edges_off_vertices(const PointSources& edges, std::size_t first, std::size_t last, double strength,
                                       const VertexBlock& block) {
  const double *row = block.row, *before = block.before;
  const auto term = [=](const LaneVec3& e, const LaneVec3& r, std::size_t edge, std::size_t k) VKM_TERM {
    const double place = static_cast<double>(edge);
    const bool at_vertex = (row[k] == place) | (before[k] == place);
    return unless(at_vertex, induced(e, r, strength));
  };
  add_sources(edges, first, last, block.at, block.velocity, term);
}

/// The sum of a filament on a block of its own vertices, which begins at vertex `begin`: only edges next to the block
/// can be edges at one of its vertices.
void add_own_edges(const Segments& edges, double strength, std::size_t begin, const VertexBlock& block, PairForm form) {
  const PointSources sources = edges.sources();
  const std::size_t n = edges.dl.size();
  const std::size_t near = begin > 0 ? begin - 1 : 0;
  const std::size_t far = std::min(n, begin + lane_block);
  const std::size_t tail = begin == 0 ? std::max(far, n - 1) : n;  // the last edge arrives at vertex 0
  add_induced({sources, 0, near, block.at, block.velocity}, 0.0, strength, form);
  add_edges_off_vertices(sources, near, far, strength, block);
  add_induced({sources, far, tail, block.at, block.velocity}, 0.0, strength, form);
  add_edges_off_vertices(sources, tail, n, strength, block);
}

/// A filament in the form of the sums.
struct Prepared {
  Segments edges;
  Lanes points;
  Lanes velocity;
  bool moderate;
};

/// The block of vertices that begins at `begin`, of filament f: the local term, and the sum over all sources.
void sum_block(std::span<const Filament> filaments, const FilamentOptions& options, std::size_t f, std::size_t begin,
               std::vector<Prepared>& prepared, Heartbeat& heartbeat) {
  const double core = effective_core(options);
  const double soft2 = options.a_sim * options.a_sim;
  Prepared& own = prepared[f];
  const std::size_t n = own.points.size();
  const double strength = filaments[f].circulation / four_pi;
  for (std::size_t i = begin; i < std::min(n, begin + lane_block); ++i) {
    const Vec3& a = own.edges.dl[i == 0 ? n - 1 : i - 1];
    own.velocity.set(i, local_induction(a, own.edges.dl[i], core, options.lia_constant, strength));
  }
  if (options.lia_only) return;
  VertexBlock block{view(own.points, begin), space(own.velocity, begin), {}, {}};
  for (std::size_t i = 0; i < lane_block; ++i) {
    block.row[i] = static_cast<double>(begin + i);
    block.before[i] = static_cast<double>(begin + i == 0 ? n - 1 : begin + i - 1);
  }
  for (std::size_t s = 0; s < filaments.size(); ++s) {
    if (!filaments[s].induces()) continue;
    heartbeat.tick();
    const Segments& edges = prepared[s].edges;
    const double source_strength = filaments[s].circulation / four_pi;
    const PairForm form =
        induced_form(prepared[s].moderate && own.moderate && moderate(options.a_sim), source_strength);
    if (s == f) {
      add_own_edges(edges, source_strength, begin, block, form);
    } else {
      const PointSources sources = edges.sources();
      add_induced({sources, 0, edges.dl.size(), block.at, block.velocity}, soft2, source_strength, form);
    }
  }
}

}  // namespace

double effective_core(const FilamentOptions& options) {
  return vkm::exp(options.core_delta) * std::max(1e-30, options.core_radius);
}

Vec3 local_induction(const Vec3& a, const Vec3& b, double core, double constant, double strength) {
  constexpr double least_length = 1e-30;
  const double la = std::max(least_length, norm(a));
  const double lb = std::max(least_length, norm(b));
  const double c = (vkm::log(2.0 * std::sqrt(la * lb) / core) + constant) * strength;
  return cross(a, b) * (2.0 * c) / (la * lb * (lb + la));
}

FilamentVelocity filament_velocity(std::span<const Filament> filaments, const FilamentOptions& options,
                                   const Poll& poll, int threads) {
  std::vector<Prepared> prepared;
  std::vector<std::pair<std::size_t, std::size_t>> blocks;  // filament, first vertex
  for (std::size_t f = 0; f < filaments.size(); ++f) {
    const std::vector<Vec3>& points = filaments[f].points;
    prepared.push_back({closed_segments(points), Lanes(points), Lanes(points.size()), moderate(points)});
    for (std::size_t b = 0; !filaments[f].ghost && b < prepared[f].points.blocks(); ++b) {
      blocks.emplace_back(f, b * lane_block);
    }
  }
  run_tasks(blocks.size(), threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
    sum_block(filaments, options, blocks[task].first, blocks[task].second, prepared, heartbeat);
  });
  FilamentVelocity result;
  double largest = 0.0;
  for (const Prepared& filament : prepared) {
    result.velocity.push_back(filament.velocity.vectors());
    for (const Vec3& v : result.velocity.back()) largest = norm2(v) > largest ? norm2(v) : largest;
  }
  result.maximum_speed = std::sqrt(largest);
  return result;
}

}  // namespace vkm
