#include "formulas/delay_mode.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_delay_mode(py::module_& m) {
  using R = DelayModeResult;
  bound_class<R>(m, "DelayModeResult", "How DelayModeSelector.solve_phase_locked_frequency ended.")
      .def(py::init<>())
      .def_readwrite("omega", &R::omega, "Frequency at which the iteration ended, rad/s.")
      .def_readwrite("residual", &R::residual, "Phase-lock residual at that frequency, rad/s.")
      .def_readwrite("tau", &R::tau, "The delay that was passed in, s.")
      .def_readwrite("converged", &R::converged, "Whether the last step met the tolerance.")
      .def_readwrite("iterations", &R::iterations, "Newton steps taken.");

  using D = DelayModeSelector;
  bound_class<D>(m, "DelayModeSelector",
                 "Frequencies that a delayed feedback selects: the roots of Omega - omega0 + kappa sin(Omega tau).\n\n"
                 "Static functions; frequencies and kappa in rad/s, tau in s, lengths in m, speeds in m/s. NaN is not\n"
                 "rejected.")
      .def_static("circulation_delay", &D::circulation_delay, py::arg("length"), py::arg("v_swirl"),
                  "length / v_swirl, s. ValueError if length is negative or v_swirl not positive.")
      .def_static("core_turnover_delay", &D::core_turnover_delay, py::arg("r_c"), py::arg("v_swirl"),
                  "2 pi r_c / v_swirl, s. ValueError unless both are positive.")
      .def_static("discrete_mode_frequency", &D::discrete_mode_frequency, py::arg("n"), py::arg("tau"),
                  "2 pi n / tau, rad/s, n an integer. ValueError unless tau is positive.")
      .def_static("phase_lock_residual", &D::phase_lock_residual, py::arg("Omega"), py::arg("omega0"), py::arg("kappa"),
                  py::arg("tau"), "Omega - omega0 + kappa sin(Omega tau), rad/s.")
      .def_static("phase_lock_stability_slope", &D::phase_lock_stability_slope, py::arg("Omega"), py::arg("kappa"),
                  py::arg("tau"), "kappa tau cos(Omega tau): the residual's derivative, less one.")
      .def_static(
          "solve_phase_locked_frequency",
          [](double omega0, double kappa, double tau, double initial_guess, std::int32_t max_iter, double tol) {
            return D::solve_phase_locked_frequency(omega0, kappa, tau, initial_guess, max_iter, tol, python_poll());
          },
          py::arg("omega0"), py::arg("kappa"), py::arg("tau"), py::arg("initial_guess") = 0.0, py::arg("max_iter") = 64,
          py::arg("tol") = 1e-12,
          "A root of phase_lock_residual by Newton's iteration, as a DelayModeResult.\n\n"
          "It starts at initial_guess, or at omega0 if that is exactly 0, and converges when a step is at most tol\n"
          "max(|omega|, 1). It ends unconverged after max_iter steps or where the derivative vanishes; neither\n"
          "raises. ValueError unless tau, max_iter and tol are positive.");
}

}  // namespace vkm
