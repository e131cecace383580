#pragma once

/// Tools over `.fseries` files by path: repair, sample, measure, helicity, filament energy, comparison.
///
/// All measures are discrete, on the polygon of uniform samples of the file's largest block, centred on their mean. A
/// file without blocks, a missing one included, is an error: std::runtime_error("no blocks parsed from: <path>").

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm::workbench {

struct CanonicalizeResult {
  std::string path;
  std::int32_t found_numeric_rows = 0;
  bool changed = false;
  std::string reason;
};

struct HelicityResult {
  std::string path;
  double a_mu = 0.0;
  double Hc = 0.0;  // H_charge
  double Hm = 0.0;  // H_mass
  double L = 0.0;   // polygon length
  double kappa_max = 0.0;
  double kappa_mean = 0.0;
  double bend_energy = 0.0;
  double min_non_neighbor_dist = 0.0;
  double reach_proxy = 0.0;
  std::int32_t nsamples = 0;
};

struct FilamentEnergyParams {
  double rho_outer = 7e-07;  // density of the nonlocal term
  double rho_local = 7e-07;  // density of the local terms
  double Gamma = 1.0;        // circulation
  double a_core = 1.0;       // core radius
  double delta = 0.0;        // if positive, pairs within this distance do not count
  double s_cut_local = 0.0;  // arc length of the local region
  bool include_nonlocal = true;
  bool include_local_match = true;
  bool include_core_int = true;
  double c_rankine_outer = 0.0;  // constant of the local match
  std::int32_t nsamples = 1024;
  std::int32_t skip_neighbors_base = 1;  // least neighbour skip
};

struct FilamentEnergyResult {
  std::string path;
  double L = 0.0;
  double ds_avg = 0.0;
  std::int32_t m_loc = 0;  // neighbours to either side that the nonlocal term leaves out
  double E_nonlocal = 0.0;
  double E_local_match = 0.0;
  double E_core_int = 0.0;
  double E_total = 0.0;
  double kappa_max = 0.0;
  double kappa_mean = 0.0;
  double bend_energy = 0.0;
  double min_non_neighbor_dist = 0.0;
  double reach_proxy = 0.0;
  double rho_outer = 0.0;
  double rho_local = 0.0;
  double Gamma = 0.0;
  double a_core = 0.0;
  double delta = 0.0;
  double s_cut_local = 0.0;
  double c_rankine_outer = 0.0;
  std::int32_t nsamples = 0;
};

/// Parameters of the helicity, as compute_helicity_from_fourier_block takes them.
struct HelicityGrid {
  int grid_size = 32;
  double spacing = 0.1;
  int interior_margin = 8;
  int nsamples = 1000;
};

/// Brings a legacy file to six columns by replacing its leading three-column row by a row of zeros, whatever numbers
/// stood in it. Writes the file in that one case only, as a whole, with line feeds for line ends. std::runtime_error if
/// the file cannot be read, or cannot be written: the old one is as it was then.
CanonicalizeResult canonicalize_fseries_file_inplace(const std::string& path, const Poll& poll = {});

/// The samples, less their mean; none for nsamples below 1.
std::vector<Vec3> sample_curve_centered(const std::string& path, int nsamples, const Poll& poll = {});

/// Measures of the samples; energies and parameters stay 0.
FilamentEnergyResult compute_curve_metrics_from_fseries(const std::string& path, int nsamples, std::int32_t skip,
                                                        const Poll& poll = {});

/// The tube analysis of the samples, with at least one neighbour skipped. std::invalid_argument below three samples.
ResolvedTubeMetrics resolved_tube_metrics_from_fseries(const std::string& path, int nsamples, std::int32_t skip,
                                                       const Poll& poll = {});

/// Measures of the samples, with three neighbours skipped, and the helicity of the block itself.
HelicityResult compute_helicity_from_fseries(const std::string& path, const HelicityGrid& grid, const Poll& poll = {});

/// Energy of a vortex filament of core radius a_core: a nonlocal double sum, the local match
/// (ln(s_cut_local / a_core) + c_rankine_outer) Gamma^2 rho L / (4 pi), and the core's Gamma^2 rho L / (16 pi).
FilamentEnergyResult compute_filament_energy_from_fseries(const std::string& path, const FilamentEnergyParams& params,
                                                          const Poll& poll = {});

/// compute_helicity_from_fseries of every file *.fseries of a directory, by path. Subdirectories are walked on demand;
/// links to directories are not. Any error ends the batch.
std::vector<HelicityResult> batch_helicity_from_dir(const std::string& root_dir, const HelicityGrid& grid, bool recurse,
                                                    const Poll& poll = {});

/// Measures of two files, their differences b - a, and the root mean square distance of samples with the same index.
std::vector<std::pair<std::string, double>> compare_fseries_files(const std::string& path_a, const std::string& path_b,
                                                                  int nsamples, std::int32_t skip,
                                                                  const Poll& poll = {});

}  // namespace vkm::workbench
