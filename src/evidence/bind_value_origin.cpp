#include "evidence/value_origin.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_value_origin(py::module_& m) {
  py::enum_<ValueOrigin>(m, "ValueOrigin", "Where a number came from.")
      .value("CanonicalSnapshot", ValueOrigin::CanonicalSnapshot, "Written down once.")
      .value("Recomputed", ValueOrigin::Recomputed, "From its formula.")
      .value("CalibratedInput", ValueOrigin::CalibratedInput, "Fitted; supports no prediction.");

  bound_class<CanonicalValue>(m, "CanonicalValue", "A number with its origin.")
      .def_readonly("name", &CanonicalValue::name, "Name.")
      .def_readonly("value", &CanonicalValue::value, "Value.")
      .def_readonly("origin", &CanonicalValue::origin, "ValueOrigin.")
      .def_readonly("significant_figures", &CanonicalValue::significant_figures, "Figures; -1 if not stated.");

  using S = SnapshotCompareResult;
  bound_class<S>(m, "SnapshotCompareResult", "A value as it was written down, beside what its formula gives.")
      .def_readonly("snapshot", &S::snapshot, "Value as written down.")
      .def_readonly("recomputed", &S::recomputed, "Value of the formula.")
      .def_readonly("residual", &S::residual, "|recomputed - snapshot|.")
      .def_readonly("snapshot_unchanged", &S::snapshot_unchanged,
                    "The literal was not edited in one place only; no numerical test.");

  using API = ValueOriginAPI;
  bound_class<API>(m, "ValueOriginAPI", "Origins of numbers, and guards on calibrated ones. Nothing here raises.")
      .def_static("origin_name", &API::origin_name, "Name of a ValueOrigin; \"CanonicalSnapshot\" for other values.")
      .def_static("fmax_snapshot", &API::fmax_snapshot, "The maximal swirl force as written down, 29.053507 N.")
      .def_static("fmax_recompute_from_primitives", &API::fmax_recompute_from_primitives,
                  "The maximal swirl force of VKMCanonicalConstants.values(), N.")
      .def_static("fmax_rydberg_16pi2", &API::fmax_rydberg_16pi2, py::arg("hbar"), py::arg("R_infty"), py::arg("c"),
                  py::arg("alpha"),
                  "16 pi^2 hbar R_infty^2 c / alpha^5, N in SI units: hbar omega_c / (2 r_c) with omega_c = 4 pi c\n"
                  "R_infty / alpha^2 and r_c = alpha^3 / (8 pi R_infty). NaN unless all are positive.")
      .def_static("fmax_rydberg_32pi2", &API::fmax_rydberg_32pi2, py::arg("hbar"), py::arg("R_infty"), py::arg("c"),
                  py::arg("alpha"), "Twice fmax_rydberg_16pi2.")
      .def_static("compare_fmax_snapshot_to_recomputed", &API::compare_fmax_snapshot_to_recomputed,
                  "SnapshotCompareResult of the maximal swirl force.")
      .def_static("bare_mass_ratio_from_dimensionless_length", &API::bare_mass_ratio_from_dimensionless_length,
                  py::arg("L_tot"), "L_tot / 4, in electron masses; NaN if L_tot is not finite.")
      .def_static("bare_mass_from_dimensionless_length", &API::bare_mass_from_dimensionless_length, py::arg("L_tot"),
                  py::arg("m_e"), "L_tot m_e / 4, in the unit of m_e; NaN unless m_e is positive and L_tot finite.")
      .def_static("rho_f_two_sigfig", &API::rho_f_two_sigfig, py::arg("rho_f"),
                  "rho_f rounded to two significant figures; NaN unless positive and finite.")
      .def_static("rho_f_is_two_sigfig_calibration", &API::rho_f_is_two_sigfig_calibration, py::arg("rho_f"),
                  "Whether rounding to two figures changes rho_f by no more than 1e-30 max(|rho_f|, 1).")
      .def_static("rho_eff_rescale_preserves_calibrated_primitives",
                  &API::rho_eff_rescale_preserves_calibrated_primitives, py::arg("v_swirl_before"),
                  py::arg("omega_c_before"), py::arg("r_c_before"), py::arg("gamma_0_before"), py::arg("v_swirl_after"),
                  py::arg("omega_c_after"), py::arg("r_c_after"), py::arg("gamma_0_after"), py::arg("rel_tol") = 0.0,
                  "Whether all four primitives agree before and after: |a - b| <= max(|a|, |b|, 1) rel_tol.")
      .def_static("reject_qdm_line_inertia_as_rho_f_derivation", &API::reject_qdm_line_inertia_as_rho_f_derivation,
                  py::arg("proposed_kg_per_m"), py::arg("proposed_rho_f_kg_per_m3"),
                  "Always True, a policy: a line inertia in kg/m is no derivation of a density in kg/m^3.")
      .def_static("make_canonical_value", &API::make_canonical_value, py::arg("name"), py::arg("value"),
                  py::arg("origin"), py::arg("significant_figures") = -1, "CanonicalValue of these.");
}

}  // namespace vkm
