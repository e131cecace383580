#include "evidence/qss_spectroscopy.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_qss_spectroscopy(py::module_& m) {
  using R = QSSSpectrumResult;
  auto spectrum = bound_class<R>(m, "QSSSpectrumResult", "Eigenvalues of a 2 x 2 matrix.");
  def_list_readonly(spectrum, "eigenvalues", &R::eigenvalues, "Two complex numbers, or none for bad input.");
  spectrum
      .def_readonly("eigen_residual", &R::eigen_residual, "Larger modulus of the characteristic polynomial at them.")
      .def_readonly("eigenvalue_magnitude_ratio", &R::eigenvalue_magnitude_ratio,
                    "Larger modulus over the smaller; +infinity if that is 0.")
      .def_readonly("conditioning", &R::conditioning, "The same number.")
      .def_readonly("epistemic_status", &R::epistemic_status,
                    "\"SYNTHETIC_DIAGNOSTIC\", or \"OPEN_RESEARCH_GATE\" for bad input.");

  using S = QSSPseudospectrumSample;
  bound_class<S>(m, "QSSPseudospectrumSample", "A resolvent norm at one point of the complex plane.")
      .def_readonly("real_z", &S::real_z, "Real part.")
      .def_readonly("imag_z", &S::imag_z, "Imaginary part.")
      .def_readonly("resolvent_norm", &S::resolvent_norm, "Inverse distance to the nearer eigenvalue; at most 1e30.");

  using P = QSSPseudospectrumResult;
  auto pseudospectrum = bound_class<P>(m, "QSSPseudospectrumResult", "Resolvent norms on a grid.");
  def_list_readonly(pseudospectrum, "samples", &P::samples, "QSSPseudospectrumSample, imaginary part fastest.");
  pseudospectrum.def_readonly("max_resolvent_norm", &P::max_resolvent_norm, "Largest norm; NaN for bad input.")
      .def_readonly("epistemic_status", &P::epistemic_status,
                    "\"SYNTHETIC_DIAGNOSTIC\", or \"OPEN_RESEARCH_GATE\" for bad input.");

  using API = QSSSpectroscopyAPI;
  bound_class<API>(m, "QSSSpectroscopyAPI", "Diagnostics on made-up 2 x 2 operators. Bad numbers do not raise.")
      .def_static("eigen_2x2", &API::eigen_2x2, py::arg("matrix_row_major"),
                  "QSSSpectrumResult of four floats, row by row: of real eigenvalues the larger comes first, of\n"
                  "complex ones that with positive imaginary part. A list of another length gives NaN and no\n"
                  "eigenvalues.")
      .def_static(
          "pseudospectrum_diag_2x2",
          [](double a00, double a11, double real_min, double real_max, std::int64_t n_real, double imag_min,
             double imag_max, std::int64_t n_imag) {
            return API::pseudospectrum_diag_2x2(a00, a11, real_min, real_max, n_real, imag_min, imag_max, n_imag,
                                                python_poll());
          },
          py::arg("a00"), py::arg("a11"), py::arg("real_min"), py::arg("real_max"), py::arg("n_real"),
          py::arg("imag_min"), py::arg("imag_max"), py::arg("n_imag"),
          "QSSPseudospectrumResult of diag(a00, a11) on n_real x n_imag points, ends included; one point stands at\n"
          "the lower bound. No points or bounds out of order give NaN and no samples. MemoryError for absurd grids.");
}

}  // namespace vkm
