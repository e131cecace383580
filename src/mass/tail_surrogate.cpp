#include "mass/tail_surrogate.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "core/polygon_edges.hpp"
#include "core/tasks.hpp"
#include "filament/sums/pair_forms.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

namespace {

using stored::core_radius;

constexpr double half_density = 3.5e-7;                      // rho_f / 2, kg/m^3
constexpr double field_coefficient = 7.705979316274285e-10;  // circulation / (4 pi), m^2/s

/// Sample points and the field at them.
struct Block {
  double x[lane_block], y[lane_block], z[lane_block];
  double ux[lane_block], uy[lane_block], uz[lane_block];
};

/// Adds the field of the segments [begin, end) at the samples of a block. The 1e-24 m^2 under the root smooths the
/// field on the scale of 1e-12 m.
void add_field(const PointSources& segments, std::size_t begin, std::size_t end, Block& block, PairForm form) {
  add_induced({segments, begin, end, {block.x, block.y, block.z}, {block.ux, block.uy, block.uz}}, 1e-24,
              field_coefficient, form);
}

Vec3 normalised(const Vec3& v) {
  const double length = norm(v);
  if (length < 1e-30) return {1.0, 0.0, 0.0};
  return v / length;
}

struct NormalPlane {
  Vec3 n, b;
};

/// Two unit vectors normal to the chord between a vertex's neighbours.
NormalPlane normal_plane(const Vec3& before, const Vec3& after) {
  const Vec3 t = normalised(after - before);
  const Vec3 reference = std::abs(t[2]) < 0.9 ? Vec3{0.0, 0.0, 1.0} : Vec3{0.0, 1.0, 0.0};
  Vec3 n = normalised(cross(reference, t));
  if (norm(n) < 1e-12) n = {1.0, 0.0, 0.0};
  const Vec3 b = normalised(cross(t, n));
  return {cross(b, t), b};
}

/// Number of segments left out on either side of a vertex, at least 1.
std::int64_t excluded_segments(double exclusion, double mean_ds) {
  const double w = std::ceil(exclusion / std::max(mean_ds, 1e-30));
  if (!(w > 1.0)) return 1;  // NaN too
  return w < 2147483647.0 ? static_cast<std::int64_t>(w) : 2147483647;
}

/// Ladder of shells and of angles, the same at every vertex.
struct Samples {
  std::size_t shells, angles;
  std::vector<double> edges, cosines, sines;

  explicit Samples(const TailApproxConfig& config)
      : shells(static_cast<std::size_t>(std::max(config.radial_samples, 1))),
        angles(static_cast<std::size_t>(std::max(config.azimuth_samples, 1))) {
    require_memory(shells + 2 * angles, sizeof(double));
    const double r_min = std::max(config.r_min_factor, 1.01) * core_radius;
    const double r_max = std::max(config.r_max_factor * core_radius, r_min * 1.1);
    edges.resize(shells + 1);
    for (std::size_t i = 0; i <= shells; ++i) {
      edges[i] = (r_max - r_min) * (static_cast<double>(i) / static_cast<double>(shells)) + r_min;
    }
    cosines.resize(angles);
    sines.resize(angles);
    for (std::size_t a = 0; a < angles; ++a) {
      const double angle = (static_cast<double>(a) + 0.5) * two_pi / static_cast<double>(angles);
      cosines[a] = vkm::cos(angle);
      sines[a] = vkm::sin(angle);
    }
  }

  double area(std::size_t shell) const {
    return (edges[shell + 1] * edges[shell + 1] - edges[shell] * edges[shell]) * pi;
  }
  double mean_radius(std::size_t shell) const { return (edges[shell] + edges[shell + 1]) * 0.5; }
};

/// Segments [begin, end).
struct Run {
  std::size_t begin, end;
};

/// Segments k of a closed filament of m with w < |j - k| < m - w, as two runs counted from `first`.
void own_runs(std::size_t first, std::int64_t m, std::int64_t j, std::int64_t w, Run (&runs)[2]) {
  const auto run = [&](std::int64_t begin, std::int64_t end) {
    const auto base = static_cast<std::int64_t>(first);
    return Run{static_cast<std::size_t>(base + begin), static_cast<std::size_t>(base + std::max(begin, end))};
  };
  runs[0] = run(std::max<std::int64_t>(0, j - m + w + 1), j - w);
  runs[1] = run(j + w + 1, std::min(m, j + m - w));
}

/// A filament of at least three points: its segments in the list of all, and the lengths of its edges.
struct TailFilament {
  std::span<const Vec3> points;
  std::size_t first;
  std::vector<double> ds;
  std::int64_t excluded;  // segments on either side of a vertex

  TailFilament(std::span<const Vec3> list, std::size_t first_segment, double exclusion_factor)
      : points(list), first(first_segment), ds(list.size()) {
    const std::size_t n = points.size();
    double length = 0.0;
    for (std::size_t j = 0; j < n; ++j) {
      ds[j] = norm(points[(j + 1) % n] - points[j]);
      length += ds[j];
    }
    const double mean_ds = length / static_cast<double>(n);
    excluded = excluded_segments(mean_ds * exclusion_factor, mean_ds);
  }
};

/// The energies of the shells around vertex j.
void vertex_energies(const TailFilament& filament, std::size_t j, const Samples& samples, const Segments& segments,
                     PairForm form, Heartbeat& heartbeat, double* energies) {
  const std::span<const Vec3> points = filament.points;
  const std::size_t n = points.size(), all = segments.dl.size(), first = filament.first;
  const std::size_t per_vertex = samples.shells * samples.angles;
  const NormalPlane plane = normal_plane(points[(j + n - 1) % n], points[(j + 1) % n]);
  Run own[2];
  own_runs(first, static_cast<std::int64_t>(n), static_cast<std::int64_t>(j), filament.excluded, own);
  double shell_sum = 0.0;
  for (std::size_t base = 0; base < per_vertex; base += lane_block) {
    const std::size_t used = std::min(lane_block, per_vertex - base);
    Block block{};
    for (std::size_t i = 0; i < used; ++i) {
      const std::size_t a = (base + i) % samples.angles;
      const double radius = samples.mean_radius((base + i) / samples.angles);
      const Vec3 q = points[j] + plane.n * (samples.cosines[a] * radius) + plane.b * (samples.sines[a] * radius);
      block.x[i] = q[0];
      block.y[i] = q[1];
      block.z[i] = q[2];
    }
    const PairForm own_form = moderate_block({block.x, block.y, block.z}) ? form : PairForm::plain;
    add_field(segments.sources(), 0, first, block, own_form);
    add_field(segments.sources(), own[0].begin, own[0].end, block, own_form);
    add_field(segments.sources(), own[1].begin, own[1].end, block, own_form);
    add_field(segments.sources(), first + n, all, block, own_form);
    heartbeat.tick();
    for (std::size_t i = 0; i < used; ++i) {
      const std::size_t shell = (base + i) / samples.angles;
      shell_sum += norm2({block.ux[i], block.uy[i], block.uz[i]});
      if ((base + i) % samples.angles != samples.angles - 1) continue;
      energies[shell] =
          (shell_sum / static_cast<double>(samples.angles)) * half_density * (samples.area(shell) * filament.ds[j]);
      shell_sum = 0.0;
    }
  }
}

}  // namespace

double tail_surrogate_energy(const std::vector<std::vector<Vec3>>& filaments, const TailApproxConfig& config,
                             const Poll& poll, int threads) {
  if (!config.enabled || filaments.empty()) return 0.0;
  const Samples samples(config);
  Segments segments;  // of all filaments of at least two points, in order
  std::vector<TailFilament> list;
  std::vector<std::pair<std::size_t, std::size_t>> vertices;  // filament in the list, vertex
  bool all_moderate = true;
  for (const auto& points : filaments) {
    const std::size_t first = segments.dl.size();
    if (points.size() >= 2) segments.append(points, points.size());
    all_moderate = all_moderate && moderate(points);
    if (points.size() < 3) continue;
    for (std::size_t j = 0; j < points.size(); ++j) vertices.emplace_back(list.size(), j);
    list.emplace_back(points, first, config.exclusion_ds_factor);
  }
  const PairForm form = induced_form(all_moderate, field_coefficient);
  double total = 0.0;
  const std::size_t window = std::max<std::size_t>(1, 32768 / samples.shells);  // vertices in memory at once
  for (std::size_t begin = 0; begin < vertices.size(); begin += window) {
    const std::size_t count = std::min(window, vertices.size() - begin);
    require_memory(count, samples.shells * sizeof(double));
    std::vector<double> energies(count * samples.shells);
    run_tasks(count, threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
      const auto& [filament, vertex] = vertices[begin + task];
      vertex_energies(list[filament], vertex, samples, segments, form, heartbeat,
                      energies.data() + task * samples.shells);
    });
    for (const double energy : energies) total += energy;
  }
  return total;
}

}  // namespace vkm
