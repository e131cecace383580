#include "evidence/biot_savart_gate.hpp"
#include "evidence/points_hash.hpp"
#include "evidence/polygonal_smooth_certificate.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_gate_certificates(py::module_& m) {
  using Points = std::vector<Vec3>;
  using P = PolygonalSmoothCertificate;
  bound_class<P>(m, "PolygonalSmoothCertificate", "A polygon compared with samples of its smooth curve.")
      .def_readonly("status", &P::status, "CertificateStatus; never Pass.")
      .def_readonly("hausdorff_bound", &P::hausdorff_bound, "Larger directed distance, in the points' unit.")
      .def_readonly("tangent_error", &P::tangent_error,
                    "Largest difference of the unit tangents of segments of equal number.")
      .def_readonly("curvature_error", &P::curvature_error, "Difference of the largest curvatures, 1/length.")
      .def_readonly("thickness_lower_bound", &P::thickness_lower_bound, "Smaller of the two least vertex radii.")
      .def_readonly("polygon_hash", &P::polygon_hash, "fingerprint_points of the polygon, in every outcome.")
      .def_readonly("smooth_hash", &P::smooth_hash, "fingerprint_points of the samples, in every outcome.");

  bound_class<PolygonalSmoothCertificateAPI>(m, "PolygonalSmoothCertificateAPI",
                                             "Comparison of a closed polygon with samples of its smooth curve.")
      .def_static(
          "evaluate",
          [](const Points& polygon_pts, const Points& smooth_pts, double tube_radius, double hausdorff_tol,
             double tangent_tol, double curvature_tol) {
            return PolygonalSmoothCertificateAPI::evaluate(polygon_pts, smooth_pts, tube_radius, hausdorff_tol,
                                                           tangent_tol, curvature_tol, python_poll());
          },
          py::arg("polygon_pts"), py::arg("smooth_pts"), py::arg("tube_radius"), py::arg("hausdorff_tol"),
          py::arg("tangent_tol"), py::arg("curvature_tol"),
          "PolygonalSmoothCertificate of two closed curves, N lists of three floats or (N, 3) arrays. Fail: the\n"
          "thickness bound is not above tube_radius or an error exceeds its tolerance. Indeterminate: all else, since\n"
          "samples cannot prove the curve between them; Pass is never given. Bad numbers do not raise.")
      .def_static(
          "fingerprint_points", [](const Points& pts) { return sha256_hex_of_points(pts, python_poll()); },
          py::arg("pts"), "GeometryCertificateAPI.sha256_hex_of_points under another name.");

  using B = BiotSavartGateResult;
  bound_class<B>(m, "BiotSavartGateResult", "Whether a regularised Biot-Savart observable agrees with its limit.")
      .def_readonly("status", &B::status, "CertificateStatus.")
      .def_readonly("observable", &B::observable, "Observable as given.")
      .def_readonly("estimated_limit", &B::estimated_limit, "Limit as given, or 1 / (4 pi).")
      .def_readonly("relative_residual", &B::relative_residual, "Relative deviation from the limit.")
      .def_readonly("boundary_margin", &B::boundary_margin, "Margin as given.")
      .def_readonly("sample_count", &B::sample_count, "Samples as given.")
      .def_readonly("regularization_id", &B::regularization_id, "Regularisation as given.");

  bound_class<BiotSavartGateAPI>(m, "BiotSavartGateAPI", "Gate on the limit of a Biot-Savart observable.")
      .def_static(
          "evaluate", &BiotSavartGateAPI::evaluate, py::arg("observable"), py::arg("estimated_limit"),
          py::arg("boundary_margin"), py::arg("min_boundary_margin"), py::arg("sample_count"),
          py::arg("regularization_id"), py::arg("residual_tol") = 0.001, py::arg("use_four_pi_identity") = true,
          "BiotSavartGateResult. The residual is |4 pi observable - 1| with use_four_pi_identity, whatever limit\n"
          "is given, else relative to max(|estimated_limit|, 1e-30). Fail: boundary_margin is below its minimum or\n"
          "the residual above residual_tol. Indeterminate: no id, no samples, a negative tolerance or minimum, or\n"
          "a number that is not finite. Bad numbers do not raise.");
}

}  // namespace vkm
