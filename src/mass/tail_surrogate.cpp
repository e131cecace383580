#include "mass/tail_surrogate.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "core/pair_sums.hpp"
#include "core/polygon_edges.hpp"
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
VKM_KERNEL void add_field(const PointSources& segments, std::size_t begin, std::size_t end, Block& block) {
  add_sources(segments, begin, end, {block.x, block.y, block.z}, LaneSpace{block.ux, block.uy, block.uz},
              [](const LaneVec3& dl, const LaneVec3& r, auto...) VKM_TERM {
                const double r2 = dot(r, r) + 1e-24;
                return cross(dl, r) * (field_coefficient / (std::sqrt(r2) * r2));
              });
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

}  // namespace

double tail_surrogate_energy(const std::vector<std::vector<Vec3>>& filaments, const TailApproxConfig& config,
                             const Poll& poll) {
  if (!config.enabled || filaments.empty()) return 0.0;
  const Samples samples(config);
  const std::size_t per_vertex = samples.shells * samples.angles;

  Segments segments;  // of all filaments of at least two points, in order
  for (const auto& points : filaments) {
    if (points.size() >= 2) segments.append(points, points.size());
  }
  const std::size_t all = segments.dl.size();

  Heartbeat heartbeat(poll);
  double total = 0.0;
  std::size_t first = 0;  // segment of this filament's vertex 0
  for (const auto& points : filaments) {
    const std::size_t n = points.size();
    if (n < 3) {
      if (n == 2) first += 2;
      continue;
    }
    std::vector<double> ds(n);
    double length = 0.0;
    for (std::size_t j = 0; j < n; ++j) {
      ds[j] = norm(points[(j + 1) % n] - points[j]);
      length += ds[j];
    }
    const double mean_ds = length / static_cast<double>(n);
    const std::int64_t w = excluded_segments(mean_ds * config.exclusion_ds_factor, mean_ds);

    for (std::size_t j = 0; j < n; ++j) {
      const NormalPlane plane = normal_plane(points[(j + n - 1) % n], points[(j + 1) % n]);
      Run own[2];
      own_runs(first, static_cast<std::int64_t>(n), static_cast<std::int64_t>(j), w, own);
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
        add_field(segments.sources(), 0, first, block);
        add_field(segments.sources(), own[0].begin, own[0].end, block);
        add_field(segments.sources(), own[1].begin, own[1].end, block);
        add_field(segments.sources(), first + n, all, block);
        heartbeat.tick();
        for (std::size_t i = 0; i < used; ++i) {
          const std::size_t shell = (base + i) / samples.angles;
          shell_sum += norm2({block.ux[i], block.uy[i], block.uz[i]});
          if ((base + i) % samples.angles != samples.angles - 1) continue;
          total += (shell_sum / static_cast<double>(samples.angles)) * half_density * (samples.area(shell) * ds[j]);
          shell_sum = 0.0;
        }
      }
    }
    first += n;
  }
  return total;
}

}  // namespace vkm
