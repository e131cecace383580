#include "evidence/geometry_certificate.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>

#include "core/finite.hpp"
#include "evidence/points_hash.hpp"
#include "tube/tube_analysis.hpp"

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

}  // namespace

std::optional<ResolvedTubeMetrics> certified_tube_metrics(std::span<const Vec3> points, const Poll& poll) {
  try {
    return analyze_tube(points, {2, 0.001, 0.001}, poll);
  } catch (const std::logic_error&) {
  } catch (const std::runtime_error&) {
  } catch (const std::bad_alloc&) {
  }
  return std::nullopt;
}

double curvature_of_radius(double radius) { return radius > 0.0 ? 1.0 / radius : infinity; }

GeometryCertificate GeometryCertificateAPI::evaluate_tube_geometry(std::span<const Vec3> pts, double tube_radius,
                                                                   double separation_tol, double curvature_tol,
                                                                   const Poll& poll) {
  GeometryCertificate result;
  result.tube_radius = tube_radius;
  result.geometry_hash = sha256_hex_of_points(pts, poll);
  result.status = CertificateStatus::Indeterminate;
  if (pts.size() < 3 || !(tube_radius > 0.0) || separation_tol < 0.0 || curvature_tol < 0.0) return result;

  const auto metrics = certified_tube_metrics(pts, poll);
  if (!metrics) return result;
  result.minimum_separation = metrics->min_dcsd;
  result.minimum_radius_of_curvature = metrics->minrad;
  result.thickness_margin = result.minimum_separation - 2.0 * tube_radius;
  result.discretization_error = metrics->edge_length_max_rel_dev;
  if (!std::isfinite(result.minimum_separation) || !std::isfinite(result.minimum_radius_of_curvature)) return result;

  const bool apart = result.minimum_separation > 2.0 * tube_radius + separation_tol;
  const bool round = (1.0 + curvature_tol) >= curvature_of_radius(result.minimum_radius_of_curvature) * tube_radius;
  result.status = apart && round ? CertificateStatus::Pass : CertificateStatus::Fail;
  return result;
}

ContactSaturationResult GeometryCertificateAPI::evaluate_contact_saturation(std::span<const double> contact_pressures,
                                                                            double saturation_pressure,
                                                                            double ratio_epsilon,
                                                                            double pressure_floor) {
  ContactSaturationResult result;
  result.saturation_pressure = saturation_pressure;
  result.status = CertificateStatus::Indeterminate;
  if (!(saturation_pressure > 0.0) || ratio_epsilon < 0.0 || pressure_floor < 0.0 || contact_pressures.empty()) {
    return result;
  }
  double peak = 0.0;
  std::uint64_t active = 0;
  for (const double pressure : contact_pressures) {
    if (!std::isfinite(pressure) || pressure < 0.0) return result;
    peak = std::max(peak, pressure);
    if (pressure > pressure_floor) ++active;
  }
  result.peak_contact_pressure = peak;
  result.active_contact_count = active;
  result.saturation_ratio = peak / saturation_pressure;
  const double ratio = result.saturation_ratio;
  const bool within = ratio < 1.0 - ratio_epsilon || std::fabs(ratio - 1.0) <= ratio_epsilon;
  result.status = within ? CertificateStatus::Pass : CertificateStatus::Fail;
  return result;
}

ChronosFirstHittingResult GeometryCertificateAPI::chronos_first_hitting(std::span<const double> times,
                                                                        std::span<const double> observable,
                                                                        double threshold) {
  ChronosFirstHittingResult result;
  result.threshold = threshold;
  result.status = CertificateStatus::Indeterminate;
  if (times.size() < 2 || times.size() != observable.size() || !std::isfinite(threshold)) return result;
  if (!all_finite(times) || !all_finite(observable) || !std::ranges::is_sorted(times)) return result;

  result.status = CertificateStatus::Pass;
  if (observable[0] >= threshold) {
    result.first_hitting_time = times[0];
    return result;
  }
  for (std::size_t i = 1; i < times.size(); ++i) {
    if (!(observable[i - 1] < threshold && threshold <= observable[i])) continue;
    const double d = observable[i] - observable[i - 1];
    const double alpha = std::fabs(d) < 1e-30 ? 0.0 : (threshold - observable[i - 1]) / d;
    result.first_hitting_time = (times[i] - times[i - 1]) * alpha + times[i - 1];
    result.event_index = i;
    return result;
  }
  result.status = CertificateStatus::Fail;
  result.first_hitting_time = infinity;
  result.event_index = times.size();
  return result;
}

Rank9ChannelDiagnostics GeometryCertificateAPI::rank9_from_singular_values(const std::array<double, 9>& singular_values,
                                                                           double tau_rank, double max_conditioning) {
  Rank9ChannelDiagnostics result;
  result.singular_values = singular_values;
  result.status = CertificateStatus::Indeterminate;
  if (!(tau_rank > 0.0) || !(max_conditioning > 0.0) || !all_finite(singular_values)) return result;
  if (std::ranges::min(singular_values) < 0.0) return result;

  const double largest = std::ranges::max(singular_values);
  result.conditioning = infinity;
  if (largest == 0.0) {
    result.status = CertificateStatus::Fail;
    return result;
  }
  double smallest = infinity;
  for (const double value : singular_values) {
    if (!(value / largest > tau_rank)) continue;
    ++result.numerical_rank;
    smallest = std::min(smallest, value);
  }
  if (result.numerical_rank > 0) result.conditioning = largest / smallest;
  if (result.numerical_rank != 9) {
    result.status = CertificateStatus::Fail;
  } else if (!(result.conditioning > max_conditioning)) {
    result.status = CertificateStatus::Pass;
  }
  return result;
}

}  // namespace vkm
