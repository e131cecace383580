#pragma once

/// Chains of custody: one record for each tool that a geometry went through, each bound to the one before by that
/// record's fingerprint and by the hash of the file that was handed over.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/poll.hpp"

namespace vkm {

/// The tools in the order of the pipeline.
enum class PipelineStage : std::int32_t { KnotPlot = 0, Ridgerunner = 1, Smoothing = 2, VKMcore = 3, EddyLab = 4 };

enum class PipelineCertificationStatus : std::int32_t { Unknown = 0, Candidate = 1, Certified = 2 };

/// One step of the chain. Hashes are SHA-256 as 64 hexadecimal digits.
struct ProvenanceRecord {
  PipelineStage stage = PipelineStage::KnotPlot;
  PipelineCertificationStatus certification = PipelineCertificationStatus::Unknown;  ///< what the tool itself claims
  std::string tool_name;
  std::string tool_version;
  std::string input_sha256;
  std::string output_sha256;
  std::string parameter_sha256;
  std::string parent_record_sha256;  ///< fingerprint of the record before; empty in the first
  std::string coordinate_convention;
  std::string scale_convention;
  std::string timestamp_utc;  ///< such as "2024-01-01T00:00:00Z", fractions of a second allowed
};

struct PipelineProvenanceAPI {
  /// "Unknown" for values outside the enumeration.
  static std::string_view stage_name(PipelineStage stage);
  static std::string_view certification_name(PipelineCertificationStatus status);

  /// SHA-256 of the text's bytes.
  static std::string fingerprint_hex(std::string_view text, const Poll& poll = {});

  /// SHA-256 of all eleven fields in their order, stage and certification by name, joined by "|". A "|" inside a field
  /// is not escaped.
  static std::string record_fingerprint(const ProvenanceRecord& record);

  /// Unknown for an empty chain or one with an incomplete record; Candidate where a field is malformed, a link between
  /// neighbours is broken, or the chain does not run from KnotPlot to VKMcore or beyond; else Certified. The records'
  /// own certification is not consulted.
  static PipelineCertificationStatus evaluate_chain(std::span<const ProvenanceRecord> records);

  /// All texts are there; the parent's fingerprint may be empty.
  static bool record_complete(const ProvenanceRecord& record);
};

}  // namespace vkm
