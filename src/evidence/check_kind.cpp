#include "evidence/check_kind.hpp"

namespace vkm {

namespace {

struct Spelling {
  CheckKind kind;
  std::string_view exported;
  std::string_view enumerator;
};

constexpr Spelling spellings[] = {
    {CheckKind::AlgebraicIdentity, "ALGEBRAIC_IDENTITY", "AlgebraicIdentity"},
    {CheckKind::CalibratedClosure, "CALIBRATED_CLOSURE", "CalibratedClosure"},
    {CheckKind::IndependentPrediction, "INDEPENDENT_PREDICTION", "IndependentPrediction"},
    {CheckKind::NumericalConvergence, "NUMERICAL_CONVERGENCE", "NumericalConvergence"},
    {CheckKind::ConditionalBridge, "CONDITIONAL_BRIDGE", "ConditionalBridge"},
    {CheckKind::OpenResearchGate, "OPEN_RESEARCH_GATE", "OpenResearchGate"},
    {CheckKind::SyntheticDiagnostic, "SYNTHETIC_DIAGNOSTIC", "SyntheticDiagnostic"},
};

}  // namespace

std::string_view check_kind_export_string(CheckKind kind) {
  for (const Spelling& spelling : spellings) {
    if (spelling.kind == kind) return spelling.exported;
  }
  return "OPEN_RESEARCH_GATE";
}

CheckKind check_kind_from_export_string(std::string_view text) {
  for (const Spelling& spelling : spellings) {
    if (text == spelling.exported || text == spelling.enumerator) return spelling.kind;
  }
  return CheckKind::OpenResearchGate;
}

}  // namespace vkm
