#include "far/filament_far_field.hpp"

#include <algorithm>

#include "core/numbers.hpp"
#include "core/polygon_edges.hpp"

namespace vkm::far {

namespace {

void append_elements(Problem& problem, const Segments& edges, double circulation) {
  const double strength = circulation / four_pi;
  problem.at.insert(problem.at.end(), edges.mid.begin(), edges.mid.end());
  for (const Vec3& edge : edges.dl) problem.vector.push_back(edge * strength);
}

/// A run of elements and one of points, of one filament.
struct Runs {
  std::size_t first_element, last_element, first_point, last_point;
};

}  // namespace

FilamentFarVelocity filament_far_velocity(std::span<const Filament> filaments, const FilamentOptions& options,
                                          double tolerance, int threads, const Poll& poll) {
  const double core = effective_core(options);
  Problem problem;
  std::vector<Runs> runs;
  for (const Filament& filament : filaments) {
    const std::size_t n = filament.points.size();
    Runs run{problem.at.size(), problem.at.size(), problem.points.size(), problem.points.size()};
    if (!filament.ghost) {
      const Segments edges = closed_segments(filament.points);
      const double strength = filament.circulation / four_pi;
      for (std::size_t i = 0; i < n; ++i) {
        const std::size_t before = i == 0 ? n - 1 : i - 1;
        problem.base.push_back(local_induction(edges.dl[before], edges.dl[i], core, options.lia_constant, strength));
        problem.points.push_back(filament.points[i]);
        problem.left_out.emplace_back();
        if (!filament.source) continue;
        problem.left_out.back() = {static_cast<double>(run.first_element + i),
                                   static_cast<double>(run.first_element + before)};
      }
      if (filament.source) append_elements(problem, edges, filament.circulation);
    }
    run.last_element = problem.at.size();
    run.last_point = problem.points.size();
    runs.push_back(run);
  }
  if (!options.lia_only) {
    problem.passes.push_back({0, problem.at.size(), 0, problem.points.size(), options.a_sim, 1.0});
    for (const Runs& run : runs) {
      if (options.a_sim == 0.0 || run.first_element == run.last_element) continue;
      for (const bool plain : {true, false}) {
        problem.passes.push_back({run.first_element, run.last_element, run.first_point, run.last_point,
                                  plain ? 0.0 : options.a_sim, plain ? 1.0 : -1.0});
      }
    }
  }
  FarVelocity all = far_velocity(problem, tolerance, threads, poll);
  FilamentFarVelocity result;
  for (std::size_t f = 0; f < filaments.size(); ++f) {
    std::vector<Vec3>& own = result.velocity.velocity.emplace_back(filaments[f].points.size(), Vec3{});
    if (filaments[f].ghost) continue;
    std::copy_n(all.velocity.begin() + static_cast<std::ptrdiff_t>(runs[f].first_point), own.size(), own.begin());
  }
  result.velocity.maximum_speed = all.largest;
  result.sampled_error = all.sampled_error;
  result.tree = all.tree;
  return result;
}

FarVelocity closed_curve_far_velocity(std::span<const Vec3> curve, std::span<const Vec3> points, double circulation,
                                      double soft, double tolerance, int threads, const Poll& poll) {
  Problem problem;
  problem.points.assign(points.begin(), points.end());
  problem.base.resize(points.size());
  if (curve.size() >= 2) append_elements(problem, closed_segments(curve), circulation);
  problem.passes.push_back({0, problem.at.size(), 0, points.size(), soft, 1.0});
  return far_velocity(problem, tolerance, threads, poll);
}

FarWrithe far_writhe(std::span<const Vec3> X, double tolerance, int threads, const Poll& poll) {
  if (X.size() < 3) return {};
  Problem problem;
  for (std::size_t i = 0; i + 1 < X.size(); ++i) {
    problem.at.push_back(X[i]);
    problem.vector.push_back((X[i + 1] - X[i]) * (1.0 / four_pi));
    problem.left_out.push_back({static_cast<double>(i), LeftOut::none});
  }
  problem.points = problem.at;
  problem.base.resize(problem.points.size());
  problem.passes.push_back({0, problem.at.size(), 0, problem.points.size(), 0.0, 1.0});
  const FarVelocity u = far_velocity(problem, tolerance, threads, poll);
  FarWrithe result;
  double length = 0.0;
  for (std::size_t i = 0; i + 1 < X.size(); ++i) {
    const Vec3 d = X[i + 1] - X[i];
    result.writhe += dot(d, u.velocity[i]);
    length += norm(d);
  }
  result.bound = length * tolerance * u.largest;
  result.tree = u.tree;
  return result;
}

}  // namespace vkm::far
