#include "evidence/polygonal_smooth_certificate.hpp"

#include <algorithm>
#include <cmath>
#include <new>

#include "core/finite.hpp"
#include "evidence/geometry_certificate.hpp"
#include "evidence/points_hash.hpp"
#include "evidence/polyline_distance.hpp"

namespace vkm {

namespace {

/// Unit vector of segment k of a closed polyline; zero for a segment without length.
Vec3 segment_tangent(std::span<const Vec3> points, std::size_t k) {
  const Vec3 d = points[k + 1 == points.size() ? 0 : k + 1] - points[k];
  const double length = norm(d);
  return length > 0.0 ? d / length : Vec3{};
}

double largest_tangent_difference(std::span<const Vec3> a, std::span<const Vec3> b) {
  double largest = 0.0;
  for (std::size_t k = 0; k < std::min(a.size(), b.size()); ++k) {
    largest = std::max(largest, norm(segment_tangent(a, k) - segment_tangent(b, k)));
  }
  return largest;
}

}  // namespace

PolygonalSmoothCertificate PolygonalSmoothCertificateAPI::evaluate(std::span<const Vec3> polygon_pts,
                                                                   std::span<const Vec3> smooth_pts, double tube_radius,
                                                                   double hausdorff_tol, double tangent_tol,
                                                                   double curvature_tol, const Poll& poll) {
  PolygonalSmoothCertificate result;
  result.polygon_hash = sha256_hex_of_points(polygon_pts, poll);
  result.smooth_hash = sha256_hex_of_points(smooth_pts, poll);
  result.status = CertificateStatus::Indeterminate;
  if (polygon_pts.size() < 3 || smooth_pts.size() < 3 || !(tube_radius > 0.0) || hausdorff_tol < 0.0 ||
      tangent_tol < 0.0 || curvature_tol < 0.0) {
    return result;
  }
  const auto polygon = certified_tube_metrics(polygon_pts, poll);
  const auto smooth = certified_tube_metrics(smooth_pts, poll);
  if (!polygon || !smooth) return result;
  try {
    result.hausdorff_bound = std::max(directed_hausdorff_distance(polygon_pts, smooth_pts, poll),
                                      directed_hausdorff_distance(smooth_pts, polygon_pts, poll));
  } catch (const std::bad_alloc&) {
    return result;
  }
  result.tangent_error = largest_tangent_difference(polygon_pts, smooth_pts);
  result.curvature_error = std::fabs(curvature_of_radius(polygon->minrad) - curvature_of_radius(smooth->minrad));
  result.thickness_lower_bound = std::min(polygon->minrad, smooth->minrad);
  if (!all_finite(
          {result.hausdorff_bound, result.tangent_error, result.curvature_error, result.thickness_lower_bound})) {
    return result;
  }
  const bool holds = result.thickness_lower_bound > tube_radius && result.hausdorff_bound <= hausdorff_tol &&
                     result.tangent_error <= tangent_tol && result.curvature_error <= curvature_tol;
  // Samples cannot prove the curve, so bounds that hold are no Pass.
  result.status = holds ? CertificateStatus::Indeterminate : CertificateStatus::Fail;
  return result;
}

}  // namespace vkm
