#include "knot/workbench.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <system_error>
#include <tuple>
#include <utility>

#include "core/elementary.hpp"
#include "core/numbers.hpp"
#include "filament/energy/nonlocal_energy.hpp"
#include "knot/curve_descriptors.hpp"
#include "knot/fourier_helicity.hpp"
#include "knot/fourier_series.hpp"
#include "knot/polygon_measures.hpp"
#include "tube/tube_analysis.hpp"

namespace vkm::workbench {

namespace {

constexpr double eight_pi = 25.132741228718345;
constexpr double sixteen_pi = 50.26548245743669;
constexpr std::int32_t helicity_skip = 3;

FourierBlock largest_block(const std::string& path, const Poll& poll) {
  std::vector<FourierBlock> blocks = parse_fseries_multi(path, poll);
  if (blocks.empty()) throw std::runtime_error("no blocks parsed from: " + path);
  return std::move(blocks[static_cast<std::size_t>(index_of_largest_block(blocks))]);
}

std::vector<Vec3> sample_centered(const FourierBlock& block, int nsamples, const Poll& poll) {
  std::vector<Vec3> points = sample_period(block, nsamples, poll);
  Vec3 mean{};
  for (const Vec3& point : points) mean += point;
  mean = mean / static_cast<double>(points.size());
  for (Vec3& point : points) point -= mean;
  return points;
}

/// Fills in the fields that the two records share.
template <class Result>
void take_measures(const std::vector<Vec3>& points, std::int32_t skip, Result& result, const Poll& poll) {
  const PolygonMeasures measures = measure_polygon(points);
  result.L = measures.length;
  result.kappa_max = measures.kappa_max;
  result.kappa_mean = measures.kappa_mean;
  result.bend_energy = measures.bend_energy;
  result.min_non_neighbor_dist = min_non_neighbor_distance(points, skip, poll);
  result.reach_proxy = reach_proxy(points, skip, poll);
}

FilamentEnergyResult metrics_of(const std::string& path, const std::vector<Vec3>& points, int nsamples,
                                std::int32_t skip, const Poll& poll) {
  FilamentEnergyResult result;
  result.path = path;
  result.nsamples = nsamples;
  take_measures(points, skip, result, poll);
  result.ds_avg = points.empty() ? 0.0 : result.L / static_cast<double>(points.size());
  return result;
}

/// Number of samples that the local region reaches over.
std::int32_t local_neighbours(double s_cut_local, double ds, std::int32_t base) {
  constexpr double most = std::numeric_limits<std::int32_t>::max();
  std::int32_t m = 0;
  if (s_cut_local > 0.0 && ds > 0.0) m = static_cast<std::int32_t>(std::min(std::ceil(s_cut_local / ds), most));
  return std::max(m, base);
}

void list_fseries(const std::string& directory, bool recurse, std::vector<std::string>& paths) {
  const std::string prefix = directory.ends_with('/') ? directory : directory + '/';
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    const std::string path = prefix + entry.path().filename().string();
    if (!entry.is_directory()) {
      if (path.ends_with(".fseries")) paths.push_back(path);
    } else if (recurse && !entry.is_symlink()) {
      list_fseries(path, recurse, paths);
    }
  }
}

double rms_distance(const std::vector<Vec3>& a, const std::vector<Vec3>& b) {
  const std::size_t n = std::min(a.size(), b.size());
  if (n == 0) return 0.0;
  double sum = 0.0;
  for (std::size_t i = 0; i < n; ++i) sum += norm2(a[i] - b[i]);
  return std::sqrt(sum / static_cast<double>(n));
}

}  // namespace

std::vector<Vec3> sample_curve_centered(const std::string& path, int nsamples, const Poll& poll) {
  return sample_centered(largest_block(path, poll), nsamples, poll);
}

FilamentEnergyResult compute_curve_metrics_from_fseries(const std::string& path, int nsamples, std::int32_t skip,
                                                        const Poll& poll) {
  return metrics_of(path, sample_curve_centered(path, nsamples, poll), nsamples, skip, poll);
}

ResolvedTubeMetrics resolved_tube_metrics_from_fseries(const std::string& path, int nsamples, std::int32_t skip,
                                                       const Poll& poll) {
  return analyze_tube(sample_curve_centered(path, nsamples, poll), {std::max(skip, 1), 0.001, 1.0}, poll);
}

HelicityResult compute_helicity_from_fseries(const std::string& path, const HelicityGrid& grid, const Poll& poll) {
  HelicityResult result;
  result.path = path;
  const FourierBlock block = largest_block(path, poll);
  take_measures(sample_centered(block, grid.nsamples, poll), helicity_skip, result, poll);
  std::tie(result.Hc, result.Hm, result.a_mu) = compute_helicity_from_fourier_block(
      block, grid.grid_size, grid.spacing, grid.interior_margin, grid.nsamples, poll);
  result.nsamples = grid.nsamples;
  return result;
}

FilamentEnergyResult compute_filament_energy_from_fseries(const std::string& path, const FilamentEnergyParams& params,
                                                          const Poll& poll) {
  const std::vector<Vec3> points = sample_curve_centered(path, params.nsamples, poll);
  const std::int32_t m0 = std::max(params.skip_neighbors_base, 1);
  FilamentEnergyResult result = metrics_of(path, points, params.nsamples, m0, poll);
  const double ds = result.ds_avg;
  result.m_loc = local_neighbours(params.s_cut_local, ds, params.skip_neighbors_base);
  if (params.include_nonlocal && points.size() >= 2) {
    const double sum = nonlocal_pair_sum(points, forward_tangents(points), result.m_loc, params.delta, poll);
    result.E_nonlocal = sum * (ds * ds) * ((params.Gamma * params.Gamma * params.rho_outer) / eight_pi);
  }
  const double local = params.Gamma * params.Gamma * params.rho_local;
  if (params.include_local_match && params.s_cut_local > 0.0 && params.a_core > 0.0) {
    result.E_local_match =
        (vkm::log(params.s_cut_local / params.a_core) + params.c_rankine_outer) * (local / four_pi) * result.L;
  }
  if (params.include_core_int) result.E_core_int = (local / sixteen_pi) * result.L;
  result.E_total = result.E_nonlocal + result.E_local_match + result.E_core_int;
  result.rho_outer = params.rho_outer;
  result.rho_local = params.rho_local;
  result.Gamma = params.Gamma;
  result.a_core = params.a_core;
  result.delta = params.delta;
  result.s_cut_local = params.s_cut_local;
  result.c_rankine_outer = params.c_rankine_outer;
  return result;
}

std::vector<HelicityResult> batch_helicity_from_dir(const std::string& root_dir, const HelicityGrid& grid, bool recurse,
                                                    const Poll& poll) {
  std::error_code error;
  if (root_dir.find('\0') != std::string::npos || !std::filesystem::is_directory(root_dir, error)) {
    throw std::runtime_error("directory does not exist: " + root_dir);
  }
  std::vector<std::string> paths;
  list_fseries(root_dir, recurse, paths);
  std::sort(paths.begin(), paths.end());
  std::vector<HelicityResult> results;
  results.reserve(paths.size());
  for (const std::string& path : paths) results.push_back(compute_helicity_from_fseries(path, grid, poll));
  return results;
}

std::vector<std::pair<std::string, double>> compare_fseries_files(const std::string& path_a, const std::string& path_b,
                                                                  int nsamples, std::int32_t skip, const Poll& poll) {
  const std::vector<Vec3> points_a = sample_curve_centered(path_a, nsamples, poll);
  const std::vector<Vec3> points_b = sample_curve_centered(path_b, nsamples, poll);
  const FilamentEnergyResult a = metrics_of(path_a, points_a, nsamples, skip, poll);
  const FilamentEnergyResult b = metrics_of(path_b, points_b, nsamples, skip, poll);
  std::vector<std::pair<std::string, double>> found;
  const auto compare = [&](const std::string& name, double FilamentEnergyResult::* measure) {
    found.emplace_back(name + "_a", a.*measure);
    found.emplace_back(name + "_b", b.*measure);
    found.emplace_back("d" + name, b.*measure - a.*measure);
  };
  compare("L", &FilamentEnergyResult::L);
  compare("kappa_max", &FilamentEnergyResult::kappa_max);
  compare("kappa_mean", &FilamentEnergyResult::kappa_mean);
  compare("bend_energy", &FilamentEnergyResult::bend_energy);
  compare("reach_proxy", &FilamentEnergyResult::reach_proxy);
  found.emplace_back("rms_point_delta", rms_distance(points_a, points_b));
  return found;
}

}  // namespace vkm::workbench
