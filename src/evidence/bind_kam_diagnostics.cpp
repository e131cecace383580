#include "evidence/kam_diagnostics.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_kam_diagnostics(py::module_& m) {
  py::enum_<KAMSector>(m, "KAMSector", "Sectors of a KAM analysis.")
      .value("S", KAMSector::S, "Sector S.")
      .value("T", KAMSector::T, "Sector T.");

  py::enum_<KAMStage>(m, "KAMStage", "Stages of a KAM analysis. Nothing reaches those above KAM1.")
      .value("KAM0", KAMStage::KAM0, "Nothing shown.")
      .value("KAM1", KAMStage::KAM1, "Twist condition and low-order resonances.")
      .value("KAM2", KAMStage::KAM2, "A name only.")
      .value("KAM3", KAMStage::KAM3, "A name only.")
      .value("KAM4", KAMStage::KAM4, "A name only.")
      .value("KAM5", KAMStage::KAM5, "A name only.");

  using R = KAMStage1Result;
  auto result = bound_class<R>(m, "KAMStage1Result", "Twist condition and low-order resonances of a frequency vector.");
  result.def_readonly("sector", &R::sector, "KAMSector as given.")
      .def_readonly("achieved_stage", &R::achieved_stage, "KAM1 with status Pass, else KAM0.");
  def_list_readonly(result, "frequencies", &R::frequencies, "As given.");
  def_list_readonly(result, "hessian", &R::hessian, "As given.");
  result.def_readonly("hessian_determinant", &R::hessian_determinant, "Determinant of the Hessian.")
      .def_readonly("minimum_detuning", &R::minimum_detuning, "Least |k . omega|, in the unit of the frequencies.")
      .def_readonly("diophantine_margin", &R::diophantine_margin, "minimum_detuning - diophantine_tau.")
      .def_readonly("status", &R::status, "CertificateStatus.");

  using API = KAMDiagnosticsAPI;
  bound_class<API>(m, "KAMDiagnosticsAPI", "The first stage of a KAM analysis. No number raises.")
      .def_static("sector_name", &API::sector_name, "\"S\", and \"T\" for all other values.")
      .def_static("stage_name", &API::stage_name, "\"KAM-1\" to \"KAM-5\", and \"KAM-0\" for all other values.")
      .def_static(
          "stage1",
          [](KAMSector sector, std::vector<double> frequencies, std::vector<double> hessian, double diophantine_tau) {
            return API::stage1(sector, std::move(frequencies), std::move(hessian), diophantine_tau, python_poll());
          },
          py::arg("sector"), py::arg("frequencies"), py::arg("hessian_row_major"), py::arg("diophantine_tau") = 1e-6,
          "KAMStage1Result of n frequencies and an n x n Hessian, row by row. Pass: |determinant| and the least\n"
          "|k . omega| over integer vectors k, components from -2 to 2 and not all 0, both exceed diophantine_tau.\n"
          "Indeterminate: no frequencies, a Hessian of another size, a diophantine_tau that is not positive, or a\n"
          "number that is not finite. The time grows with 5^n at worst.")
      .def_static("golden_ratio_null_test", &API::golden_ratio_null_test, py::arg("value"), py::arg("tol") = 1e-9,
                  "Whether a value is the golden ratio within tol.");
}

}  // namespace vkm
