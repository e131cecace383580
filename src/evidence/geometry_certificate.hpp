#pragma once

/// Certificates of a sampled geometry and of the series that come with it. None raises on bad numbers: what cannot be
/// judged is Indeterminate. Lengths are in the unit of the points.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "evidence/certificate_status.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm {

/// Whether a tube of a given radius fits around a closed polygon without touching itself or pinching at a corner.
struct GeometryCertificate {
  CertificateStatus status = CertificateStatus::NotEvaluated;
  double minimum_separation = 0.0;           ///< least distance of edges that are not neighbours, length
  double minimum_radius_of_curvature = 0.0;  ///< least vertex radius, length
  double tube_radius = 0.0;                  ///< as given, length
  double thickness_margin = 0.0;             ///< minimum_separation - 2 tube_radius, length
  double discretization_error = 0.0;         ///< largest relative deviation of an edge from the mean length
  std::string geometry_hash;                 ///< of the points; there in every outcome
};

/// Whether the contact pressures stay at or below the saturation pressure.
struct ContactSaturationResult {
  CertificateStatus status = CertificateStatus::NotEvaluated;
  double peak_contact_pressure = 0.0;      ///< in the unit of the pressures
  double saturation_pressure = 0.0;        ///< as given
  double saturation_ratio = 0.0;           ///< peak over saturation pressure
  std::uint64_t active_contact_count = 0;  ///< pressures above the floor
};

/// The first time at which an observable reaches a threshold from below.
struct ChronosFirstHittingResult {
  CertificateStatus status = CertificateStatus::NotEvaluated;
  double first_hitting_time = 0.0;  ///< interpolated, in the unit of the times; +infinity if never
  std::uint64_t event_index = 0;    ///< first sample at or above the threshold; the sample count if none
  double threshold = 0.0;           ///< as given
};

/// Whether nine channels are independent, judged by their singular values.
struct Rank9ChannelDiagnostics {
  CertificateStatus status = CertificateStatus::NotEvaluated;
  std::int32_t numerical_rank = 0;
  std::array<double, 9> singular_values{};  ///< as given
  double conditioning = 0.0;                ///< largest value over the smallest that counts towards the rank
};

/// The tube analysis that certificates rest on: two neighbours skipped, tolerances 0.001. Nothing where the analysis
/// fails; what the poll throws passes through.
std::optional<ResolvedTubeMetrics> certified_tube_metrics(std::span<const Vec3> points, const Poll& poll);

/// 1 / radius, and +infinity for a radius that is not positive.
double curvature_of_radius(double radius);

struct GeometryCertificateAPI {
  /// Pass: separation > 2 tube_radius + separation_tol, and curvature times tube_radius <= 1 + curvature_tol.
  /// Indeterminate: fewer than three points, a radius that is not positive, a negative tolerance, or a separation or
  /// vertex radius that is not finite.
  static GeometryCertificate evaluate_tube_geometry(std::span<const Vec3> pts, double tube_radius,
                                                    double separation_tol = 1e-9, double curvature_tol = 1e-9,
                                                    const Poll& poll = {});

  /// Pass below and within the band 1 +- ratio_epsilon of the ratio: reaching saturation is fine, only more is not.
  static ContactSaturationResult evaluate_contact_saturation(std::span<const double> contact_pressures,
                                                             double saturation_pressure, double ratio_epsilon = 1e-9,
                                                             double pressure_floor = 0.0);

  /// Fail if the threshold is never reached. Times may repeat but not decrease.
  static ChronosFirstHittingResult chronos_first_hitting(std::span<const double> times,
                                                         std::span<const double> observable, double threshold);

  /// The rank counts the values above tau_rank times the largest. Below nine: Fail; nine but conditioned worse than
  /// max_conditioning: Indeterminate.
  static Rank9ChannelDiagnostics rank9_from_singular_values(const std::array<double, 9>& singular_values,
                                                            double tau_rank = 1e-12, double max_conditioning = 1e12);
};

}  // namespace vkm
