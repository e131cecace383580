#pragma once

/// Evidence reports: numerical checks, each with a statement of what it may support, as a JSON document.
///
/// The document is written by hand: its white space, order of keys and form of numbers are part of the format
/// (schema version 1.0), so that equal reports are equal files.

#include <span>
#include <string>

#include "core/poll.hpp"
#include "evidence/check_kind.hpp"

namespace vkm {

/// The outcome of one check.
struct CheckResult {
  std::string name;
  bool passed = false;
  CheckKind kind = CheckKind::OpenResearchGate;
  double residual = 0.0;   ///< in the unit of the tolerance
  double tolerance = 0.0;  ///< that the residual was compared with
  bool supports_empirical_claim = false;
  std::string message;
};

/// Where a report was made.
struct EvidenceReportMeta {
  std::string vkmcore_version;  ///< the library's own where empty
  std::string canon_version;    ///< the same
  std::string git_commit;
  std::string numeric_profile;
  std::string compiler;
  std::string platform;
};

struct EvidenceReportAPI {
  /// The document, ending with a line feed. Numbers have 17 significant digits; what is not finite is null.
  static std::string build_report_json(const EvidenceReportMeta& meta, std::span<const CheckResult> checks);

  /// Whether the document stands in the file, all of it. A failed write leaves the old file, or none.
  static bool write_evidence_report(const std::string& path, const EvidenceReportMeta& meta,
                                    std::span<const CheckResult> checks, const Poll& poll = {});
};

}  // namespace vkm
