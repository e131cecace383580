#pragma once

/// Comparison of a closed polygon with samples of the smooth curve that it stands for.
///
/// A comparison of samples proves nothing about the curve between them: the best verdict is Indeterminate, and Pass is
/// never given.

#include <span>
#include <string>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "evidence/certificate_status.hpp"

namespace vkm {

struct PolygonalSmoothCertificate {
  CertificateStatus status = CertificateStatus::NotEvaluated;
  double hausdorff_bound = 0.0;        ///< larger of the two directed distances, length
  double tangent_error = 0.0;          ///< largest difference of the unit tangents of segments of equal number
  double curvature_error = 0.0;        ///< |1/r - 1/r'| of the least vertex radii, 1/length
  double thickness_lower_bound = 0.0;  ///< smaller of the two least vertex radii, length
  std::string polygon_hash;            ///< of the points; there in every outcome
  std::string smooth_hash;             ///< the same
};

struct PolygonalSmoothCertificateAPI {
  /// Indeterminate where the bounds hold, and where nothing can be said; Fail where a bound is broken.
  static PolygonalSmoothCertificate evaluate(std::span<const Vec3> polygon_pts, std::span<const Vec3> smooth_pts,
                                             double tube_radius, double hausdorff_tol, double tangent_tol,
                                             double curvature_tol, const Poll& poll = {});
};

}  // namespace vkm
