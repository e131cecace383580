#include "evidence/pipeline_provenance.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_pipeline_provenance(py::module_& m) {
  py::enum_<PipelineStage>(m, "PipelineStage", "The tools that a geometry goes through, in order.")
      .value("KnotPlot", PipelineStage::KnotPlot)
      .value("Ridgerunner", PipelineStage::Ridgerunner)
      .value("Smoothing", PipelineStage::Smoothing)
      .value("VKMcore", PipelineStage::VKMcore)
      .value("EddyLab", PipelineStage::EddyLab);

  using Status = PipelineCertificationStatus;
  py::enum_<Status>(m, "PipelineCertificationStatus", "What a chain of custody amounts to.")
      .value("Unknown", Status::Unknown, "Empty, or a record lacks a field.")
      .value("Candidate", Status::Candidate, "Complete records that do not make an unbroken chain.")
      .value("Certified", Status::Certified, "An unbroken chain from the first tool to the library.");

  using R = ProvenanceRecord;
  bound_class<R>(
      m, "ProvenanceRecord",
      "One step of a chain of custody. Hashes are SHA-256 as 64 hexadecimal digits; texts are empty at first.")
      .def(py::init<>())
      .def_readwrite("stage", &R::stage, "PipelineStage of the tool.")
      .def_readwrite("certification", &R::certification, "PipelineCertificationStatus that the tool itself claims.")
      .def_readwrite("tool_name", &R::tool_name, "Name of the tool.")
      .def_readwrite("tool_version", &R::tool_version, "Its version.")
      .def_readwrite("input_sha256", &R::input_sha256, "Hash of what it read.")
      .def_readwrite("output_sha256", &R::output_sha256, "Hash of what it wrote.")
      .def_readwrite("parameter_sha256", &R::parameter_sha256, "Hash of its parameters.")
      .def_readwrite("parent_record_sha256", &R::parent_record_sha256,
                     "Fingerprint of the record before; empty in the first.")
      .def_readwrite("coordinate_convention", &R::coordinate_convention, "Axes, handedness and order of points.")
      .def_readwrite("scale_convention", &R::scale_convention, "Unit of length.")
      .def_readwrite("timestamp_utc", &R::timestamp_utc,
                     "Such as 2024-01-01T00:00:00Z; fractions of a second are allowed.");

  using API = PipelineProvenanceAPI;
  bound_class<API>(m, "PipelineProvenanceAPI", "Fingerprints and verdicts of chains of custody. Nothing here raises.")
      .def_static("stage_name", &API::stage_name, "Name of a PipelineStage; \"Unknown\" for other values.")
      .def_static("certification_name", &API::certification_name,
                  "Name of a PipelineCertificationStatus; \"Unknown\" for other values.")
      .def_static(
          "fingerprint_hex", [](std::string_view text) { return API::fingerprint_hex(text, python_poll()); },
          "SHA-256 (FIPS 180-4) of the UTF-8 bytes of a text, as 64 lower-case hexadecimal digits.")
      .def_static(
          "record_fingerprint", &API::record_fingerprint,
          "SHA-256 of the eleven fields of a record in their order, stage and certification by name, joined by\n"
          "\"|\" without escaping.")
      .def_static(
          "evaluate_chain", [](const std::vector<R>& records) { return API::evaluate_chain(records); },
          "PipelineCertificationStatus of a list of records. Unknown: it is empty or a record is incomplete.\n"
          "Certified: hashes and times are well formed; the first record is KnotPlot's, without a parent; each later\n"
          "one holds its predecessor's fingerprint, reads what that wrote, has its stage or the next, and keeps its\n"
          "conventions; the last is VKMcore's or EddyLab's. Candidate: all else.")
      .def_static("record_complete", &API::record_complete,
                  "Whether no text of the record but the parent's fingerprint is empty.");
}

}  // namespace vkm
