#include "evidence/pipeline_provenance.hpp"

#include <algorithm>

#include "evidence/sha256.hpp"

namespace vkm {

namespace {

bool is_digit(char c) { return '0' <= c && c <= '9'; }

bool is_sha256_hex(std::string_view text) {
  const auto is_hex = [](char c) { return is_digit(c) || ('a' <= c && c <= 'f') || ('A' <= c && c <= 'F'); };
  return text.size() == 64 && std::ranges::all_of(text, is_hex);
}

/// The form of a time stamp alone: dates are not validated, and after the seconds any mix of digits and dots will do.
bool is_timestamp_utc(std::string_view text) {
  if (text.size() < 20 || text.back() != 'Z') return false;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    const char c = text[i];
    bool fits;
    switch (i) {
      case 4:
      case 7:
        fits = c == '-';
        break;
      case 10:
        fits = c == 'T';
        break;
      case 13:
      case 16:
        fits = c == ':';
        break;
      default:
        fits = is_digit(c) || (i >= 19 && c == '.');
    }
    if (!fits) return false;
  }
  return true;
}

bool is_well_formed(const ProvenanceRecord& r) {
  return is_sha256_hex(r.input_sha256) && is_sha256_hex(r.output_sha256) && is_sha256_hex(r.parameter_sha256) &&
         (r.parent_record_sha256.empty() || is_sha256_hex(r.parent_record_sha256)) && is_timestamp_utc(r.timestamp_utc);
}

/// Whether `r` takes over where its predecessor `p` has left. A stage may repeat but not be skipped.
bool continues(const ProvenanceRecord& r, const ProvenanceRecord& p) {
  const auto stage = static_cast<std::int64_t>(r.stage);
  const auto stage_before = static_cast<std::int64_t>(p.stage);
  return r.parent_record_sha256 == PipelineProvenanceAPI::record_fingerprint(p) && r.input_sha256 == p.output_sha256 &&
         (stage == stage_before || stage == stage_before + 1) && r.coordinate_convention == p.coordinate_convention &&
         r.scale_convention == p.scale_convention;
}

}  // namespace

std::string_view PipelineProvenanceAPI::stage_name(PipelineStage stage) {
  switch (stage) {
    case PipelineStage::KnotPlot:
      return "KnotPlot";
    case PipelineStage::Ridgerunner:
      return "Ridgerunner";
    case PipelineStage::Smoothing:
      return "Smoothing";
    case PipelineStage::VKMcore:
      return "VKMcore";
    case PipelineStage::EddyLab:
      return "EddyLab";
  }
  return "Unknown";
}

std::string_view PipelineProvenanceAPI::certification_name(PipelineCertificationStatus status) {
  switch (status) {
    case PipelineCertificationStatus::Unknown:
      return "Unknown";
    case PipelineCertificationStatus::Candidate:
      return "Candidate";
    case PipelineCertificationStatus::Certified:
      return "Certified";
  }
  return "Unknown";
}

std::string PipelineProvenanceAPI::fingerprint_hex(std::string_view text, const Poll& poll) {
  return sha256_hex(text, poll);
}

std::string PipelineProvenanceAPI::record_fingerprint(const ProvenanceRecord& record) {
  Sha256 hash;
  hash.update(stage_name(record.stage));
  for (const std::string_view part :
       {certification_name(record.certification), std::string_view(record.tool_name),
        std::string_view(record.tool_version), std::string_view(record.input_sha256),
        std::string_view(record.output_sha256), std::string_view(record.parameter_sha256),
        std::string_view(record.parent_record_sha256), std::string_view(record.coordinate_convention),
        std::string_view(record.scale_convention), std::string_view(record.timestamp_utc)}) {
    hash.update("|");
    hash.update(part);
  }
  return hash.finish_hex();
}

bool PipelineProvenanceAPI::record_complete(const ProvenanceRecord& r) {
  return !(r.tool_name.empty() || r.tool_version.empty() || r.input_sha256.empty() || r.output_sha256.empty() ||
           r.parameter_sha256.empty() || r.coordinate_convention.empty() || r.scale_convention.empty() ||
           r.timestamp_utc.empty());
}

PipelineCertificationStatus PipelineProvenanceAPI::evaluate_chain(std::span<const ProvenanceRecord> records) {
  using Status = PipelineCertificationStatus;
  if (records.empty() || !std::ranges::all_of(records, record_complete)) return Status::Unknown;
  if (!std::ranges::all_of(records, is_well_formed)) return Status::Candidate;
  if (records.front().stage != PipelineStage::KnotPlot || !records.front().parent_record_sha256.empty()) {
    return Status::Candidate;
  }
  for (std::size_t i = 1; i < records.size(); ++i) {
    if (!continues(records[i], records[i - 1])) return Status::Candidate;
  }
  const PipelineStage last = records.back().stage;
  return last == PipelineStage::VKMcore || last == PipelineStage::EddyLab ? Status::Certified : Status::Candidate;
}

}  // namespace vkm
