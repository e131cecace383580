#include "mass/knot_invariants.hpp"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "knot/catalogue.hpp"
#include "knot/curve_descriptors.hpp"
#include "tube/contact_stress.hpp"
#include "tube/tube_analysis.hpp"

namespace vkm {

namespace {

constexpr std::int64_t least_samples = 64;
constexpr double contact_tol = 0.001;
constexpr double equilateral_tol = 0.01;

void take_metadata(const KnotMetadata& metadata, KnotInvariants& K) {
  K.name = metadata.knot_name;
  K.crossing_number = metadata.crossing_number;
  K.braid_index = metadata.braid_index;
  K.seifert_genus = metadata.seifert_genus;
  K.chirality = std::clamp(metadata.chirality, -1, 1);
  K.hyperbolic = metadata.hyperbolic;
  if (metadata.hyperbolic) {
    K.hyperbolic_volume = std::max(metadata.hyperbolic_volume, 0.0);
    K.hyperbolic_volume_opt = K.hyperbolic_volume;
  }
}

void take_tube(const std::vector<Vec3>& points, std::int32_t window, KnotInvariants& K, const Poll& poll) {
  K.tube_metrics = analyze_tube(points, {window, contact_tol, equilateral_tol}, poll);
  const ResolvedTubeMetrics& tube = *K.tube_metrics;
  const ContactStressDiagnostics stress = diagnose_length_criticality(points, tube, false, {}, poll);
  K.thickness_rad = tube.thickness_rad;
  K.ropelength_rad = tube.ropelength_rad;
  K.ropelength_diam = tube.ropelength_diam;
  K.minrad_min = tube.minrad;
  K.dcsd_min = tube.min_dcsd;
  K.strut_count = static_cast<std::int32_t>(tube.struts.size());
  K.kink_count = static_cast<std::int32_t>(tube.kinks.size());
  K.ropelength_lower_bound_ok = tube.lower_bound_ok;
  K.contact_residual = stress.contact_residual;
  K.contact_entropy = stress.contact_entropy;
}

double ropelength_of(const KnotInvariants& K, double length) {
  if (K.ropelength_diam > 0.0) return K.ropelength_diam;
  if (K.min_self_distance > 1e-12) return length / K.min_self_distance;
  return length;  // undivided: better some measure than none
}

}  // namespace

KnotInvariants build_invariants_from_fourier_block(const FourierBlock& block, const KnotMetadata& metadata,
                                                   const Poll& poll) {
  KnotInvariants K;
  take_metadata(metadata, K);
  const std::int64_t n = std::max(metadata.nsamples, least_samples);
  const std::int32_t window = std::max(metadata.exclude_window, 1);
  const std::vector<Vec3> points = sample_period(block, n, poll);
  const GeometricDescriptors curve = describe_fourier_block(block, points, window, poll);
  K.writhe = curve.writhe;
  K.min_self_distance = curve.min_self_distance;
  K.bending_energy = curve.bending_energy;
  take_tube(points, window, K, poll);
  K.ropelength_like = ropelength_of(K, curve.length);
  K.ropelength = K.ropelength_like;
  return K;
}

KnotInvariants build_invariants_from_fseries(const std::string& path, const KnotMetadata& metadata, const Poll& poll) {
  const std::vector<FourierBlock> blocks = parse_fseries_multi(path, poll);
  const int largest = index_of_largest_block(blocks);
  if (largest < 0) throw std::runtime_error("build_invariants_from_fseries: no Fourier block in file: " + path);
  KnotMetadata named = metadata;
  if (named.knot_name.empty()) named.knot_name = base_name(path);
  return build_invariants_from_fourier_block(blocks[static_cast<std::size_t>(largest)], named, poll);
}

}  // namespace vkm
