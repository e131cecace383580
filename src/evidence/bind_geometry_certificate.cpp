#include "evidence/geometry_certificate.hpp"
#include "evidence/points_hash.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

using Points = std::vector<Vec3>;
using Series = std::vector<double>;

void bind_results(py::module_& m) {
  using G = GeometryCertificate;
  bound_class<G>(m, "GeometryCertificate", "Whether a tube fits around a closed polygon; lengths in the points' unit.")
      .def_readonly("status", &G::status, "CertificateStatus.")
      .def_readonly("minimum_separation", &G::minimum_separation, "Least distance of edges that are not neighbours.")
      .def_readonly("minimum_radius_of_curvature", &G::minimum_radius_of_curvature, "Least vertex radius.")
      .def_readonly("tube_radius", &G::tube_radius, "Tube radius as given.")
      .def_readonly("thickness_margin", &G::thickness_margin, "minimum_separation - 2 tube_radius.")
      .def_readonly("discretization_error", &G::discretization_error,
                    "Largest relative deviation of an edge from the mean edge length.")
      .def_readonly("geometry_hash", &G::geometry_hash, "sha256_hex_of_points of the points, in every outcome.");

  using S = ContactSaturationResult;
  bound_class<S>(m, "ContactSaturationResult", "Whether contact pressures stay at or below saturation.")
      .def_readonly("status", &S::status, "CertificateStatus.")
      .def_readonly("peak_contact_pressure", &S::peak_contact_pressure, "Largest pressure.")
      .def_readonly("saturation_pressure", &S::saturation_pressure, "Saturation pressure as given.")
      .def_readonly("saturation_ratio", &S::saturation_ratio, "Peak over saturation pressure.")
      .def_readonly("active_contact_count", &S::active_contact_count, "Number of pressures above the floor.");

  using C = ChronosFirstHittingResult;
  bound_class<C>(m, "ChronosFirstHittingResult", "When an observable first reaches a threshold from below.")
      .def_readonly("status", &C::status, "CertificateStatus.")
      .def_readonly("first_hitting_time", &C::first_hitting_time, "Interpolated time; +infinity if never.")
      .def_readonly("event_index", &C::event_index,
                    "First sample at or above the threshold; the number of samples if none.")
      .def_readonly("threshold", &C::threshold, "Threshold as given.");

  using R = Rank9ChannelDiagnostics;
  auto rank9 = bound_class<R>(m, "Rank9ChannelDiagnostics", "Whether nine channels are independent.");
  rank9.def_readonly("status", &R::status, "CertificateStatus.")
      .def_readonly("numerical_rank", &R::numerical_rank, "Number of singular values that count.");
  def_list_readonly(rank9, "singular_values", &R::singular_values, "The nine values as given.");
  rank9.def_readonly("conditioning", &R::conditioning, "Largest value over the smallest that counts.");
}

}  // namespace

void bind_geometry_certificate(py::module_& m) {
  py::enum_<CertificateStatus>(m, "CertificateStatus", "The verdict of a certificate.")
      .value("Pass", CertificateStatus::Pass)
      .value("Fail", CertificateStatus::Fail)
      .value("Indeterminate", CertificateStatus::Indeterminate, "The numbers do not allow a verdict.")
      .value("NotEvaluated", CertificateStatus::NotEvaluated);

  bind_results(m);

  using API = GeometryCertificateAPI;
  bound_class<API>(m, "GeometryCertificateAPI",
                   "Certificates of geometries, pressures, time series and singular values. Bad numbers do not raise:\n"
                   "the status is Indeterminate then.")
      .def_static(
          "evaluate_tube_geometry",
          [](const Points& pts, double tube_radius, double separation_tol, double curvature_tol) {
            return API::evaluate_tube_geometry(pts, tube_radius, separation_tol, curvature_tol, python_poll());
          },
          py::arg("pts"), py::arg("tube_radius"), py::arg("separation_tol") = 1e-9, py::arg("curvature_tol") = 1e-9,
          "GeometryCertificate of a closed polygon, N lists of three floats or an (N, 3) array. Pass: edges that are\n"
          "not neighbours are more than 2 tube_radius + separation_tol apart, and curvature times tube_radius is at\n"
          "most 1 + curvature_tol. Indeterminate: fewer than three points, a radius that is not positive, a negative\n"
          "tolerance, or a separation or vertex radius that is not finite.")
      .def_static(
          "evaluate_contact_saturation",
          [](const Series& contact_pressures, double saturation_pressure, double ratio_epsilon, double pressure_floor) {
            return API::evaluate_contact_saturation(contact_pressures, saturation_pressure, ratio_epsilon,
                                                    pressure_floor);
          },
          py::arg("contact_pressures"), py::arg("saturation_pressure"), py::arg("ratio_epsilon") = 1e-9,
          py::arg("pressure_floor") = 0.0,
          "ContactSaturationResult: Pass if peak / saturation_pressure is below 1 or within ratio_epsilon of it, Fail\n"
          "above. Indeterminate: no pressures, one that is negative or not finite, a saturation pressure that is not\n"
          "positive, or a negative epsilon or floor. Contacts above pressure_floor are counted.")
      .def_static(
          "chronos_first_hitting",
          [](const Series& times, const Series& observable, double threshold) {
            return API::chronos_first_hitting(times, observable, threshold);
          },
          py::arg("times"), py::arg("observable"), py::arg("threshold"),
          "ChronosFirstHittingResult: Pass with the linearly interpolated time of the first crossing from below, or\n"
          "times[0] if the observable starts at or above the threshold; Fail with +infinity if it never crosses.\n"
          "Indeterminate: fewer than two samples, lists of different lengths, decreasing times, or a number that is\n"
          "not finite.")
      .def_static(
          "rank9_from_singular_values", &API::rank9_from_singular_values, py::arg("singular_values"),
          py::arg("tau_rank") = 1e-12, py::arg("max_conditioning") = 1e12,
          "Rank9ChannelDiagnostics of nine singular values: those above tau_rank times the largest count. Pass:\n"
          "rank nine, conditioned no worse than max_conditioning; Indeterminate if worse, for a value that is\n"
          "negative or not finite, and for limits that are not positive; Fail for a lower rank.")
      .def_static(
          "sha256_hex_of_points", [](const Points& pts) { return sha256_hex_of_points(pts, python_poll()); },
          py::arg("pts"),
          "SHA-256 of the points' coordinates as little-endian doubles, 24 bytes a point: of the stored numbers, so\n"
          "that 0.0 and -0.0 differ. 64 lower-case hexadecimal digits.");
}

}  // namespace vkm
