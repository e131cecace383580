#pragma once

/// The first stage of a KAM analysis: the frequency map is not degenerate (twist condition, determinant of the Hessian
/// of H in the actions), and no low-order combination k . omega of the frequencies vanishes.

#include <cstdint>
#include <string_view>
#include <vector>

#include "core/poll.hpp"
#include "evidence/certificate_status.hpp"

namespace vkm {

enum class KAMSector : std::int32_t { S = 0, T = 1 };

/// Stages above KAM1 are names for work to come; nothing reaches them.
enum class KAMStage : std::int32_t { KAM0 = 0, KAM1 = 1, KAM2 = 2, KAM3 = 3, KAM4 = 4, KAM5 = 5 };

struct KAMStage1Result {
  KAMSector sector = KAMSector::S;
  KAMStage achieved_stage = KAMStage::KAM0;
  std::vector<double> frequencies;  ///< as given, 1/time
  std::vector<double> hessian;      ///< as given, row by row
  double hessian_determinant = 0.0;
  double minimum_detuning = 0.0;    ///< least |k . omega|, 1/time
  double diophantine_margin = 0.0;  ///< minimum_detuning - diophantine_tau
  CertificateStatus status = CertificateStatus::NotEvaluated;
};

struct KAMDiagnosticsAPI {
  /// "S", and "T" for all other values.
  static std::string_view sector_name(KAMSector sector);
  /// "KAM-1" to "KAM-5", and "KAM-0" for all other values.
  static std::string_view stage_name(KAMStage stage);

  /// Over all integer vectors k but zero, components from -2 to 2. The time grows with 5^n at worst; the poll ends it.
  static KAMStage1Result stage1(KAMSector sector, std::vector<double> frequencies, std::vector<double> hessian,
                                double diophantine_tau = 1e-6, const Poll& poll = {});

  /// Whether a value is the golden ratio within tol: what a search for special ratios must be able to find.
  static bool golden_ratio_null_test(double value, double tol = 1e-9);
};

}  // namespace vkm
