#include "evidence/evidence_report.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_evidence_report(py::module_& m) {
  py::enum_<CheckKind>(m, "CheckKind", "What kind of claim a numerical check supports.")
      .value("AlgebraicIdentity", CheckKind::AlgebraicIdentity, "Follows from the definitions.")
      .value("CalibratedClosure", CheckKind::CalibratedClosure, "Holds because a constant was fitted to make it hold.")
      .value("IndependentPrediction", CheckKind::IndependentPrediction,
             "No input of the check was fitted to its target.")
      .value("NumericalConvergence", CheckKind::NumericalConvergence, "A discretisation tends to its limit.")
      .value("ConditionalBridge", CheckKind::ConditionalBridge, "Holds under an assumption that is itself unproven.")
      .value("OpenResearchGate", CheckKind::OpenResearchGate, "Undecided; what an unclassified check is.")
      .value("SyntheticDiagnostic", CheckKind::SyntheticDiagnostic, "Made-up input, to exercise the code.");

  auto result = bound_class<CheckResult>(m, "CheckResult", "The outcome of one check, and what it may support.");
  result.def(py::init<>());
  def_text(result, "name", &CheckResult::name, "Name of the check.");
  result.def_readwrite("passed", &CheckResult::passed, "The check holds.")
      .def_readwrite("kind", &CheckResult::kind, "CheckKind; OpenResearchGate unless classified.")
      .def_readwrite("residual", &CheckResult::residual, "Deviation found, in the unit of the tolerance.")
      .def_readwrite("tolerance", &CheckResult::tolerance, "Deviation allowed.")
      .def_readwrite("supports_empirical_claim", &CheckResult::supports_empirical_claim,
                     "A claim about nature may rest on it.");
  def_text(result, "message", &CheckResult::message, "Any text.");

  using Meta = EvidenceReportMeta;
  auto record = bound_class<Meta>(m, "EvidenceReportMeta", "Where a report was made; all texts, all empty at first.");
  record.def(py::init<>());
  def_text(record, "vkmcore_version", &Meta::vkmcore_version, "Library version; its own is written where empty.");
  def_text(record, "canon_version", &Meta::canon_version, "Version of the canon; the library's where empty.");
  def_text(record, "git_commit", &Meta::git_commit, "Commit of the sources.");
  def_text(record, "numeric_profile", &Meta::numeric_profile, "Rules of arithmetic, as the author names them.");
  def_text(record, "compiler", &Meta::compiler, "Compiler and version.");
  def_text(record, "platform", &Meta::platform, "Machine and operating system.");

  using Checks = std::vector<CheckResult>;
  bound_class<EvidenceReportAPI>(m, "EvidenceReportAPI", "Evidence reports as JSON documents, schema version 1.0.")
      .def_static(
          "build_report_json",
          [](const Meta& meta, const Checks& checks) { return EvidenceReportAPI::build_report_json(meta, checks); },
          py::arg("meta"), py::arg("checks"),
          "The report of a list of CheckResult as JSON text with a fixed layout. Numbers have 17 significant digits;\n"
          "NaN and the infinities are null.")
      .def_static(
          "write_evidence_report",
          [](const std::string& path, Meta meta, const Checks& checks) {
            return EvidenceReportAPI::write_evidence_report(path, meta, checks, python_poll());
          },
          py::arg("path"), py::arg("meta"), py::arg("checks"),
          "Writes the report to a file, replacing it. True if all of it was written; False for an empty or unwritable\n"
          "path, with no error raised, no directory made, and the old file left as it was.");

  m.def("check_kind_export_string", &check_kind_export_string,
        "Text of a CheckKind in reports, such as \"ALGEBRAIC_IDENTITY\"; \"OPEN_RESEARCH_GATE\" for unknown values.");
  m.def(
      "check_kind_from_export_string", [](const std::string& text) { return check_kind_from_export_string(text); },
      "CheckKind from its text in reports or its own name, case-sensitive; OpenResearchGate for any other text.");
}

}  // namespace vkm
