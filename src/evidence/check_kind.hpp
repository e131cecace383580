#pragma once

/// What kind of claim a numerical check supports, weakest standing by default: a check that nobody classified is an
/// open question and claims nothing.

#include <cstdint>
#include <string_view>

namespace vkm {

enum class CheckKind : std::int32_t {
  AlgebraicIdentity = 0,      ///< follows from the definitions
  CalibratedClosure = 1,      ///< holds because a constant was fitted to make it hold
  IndependentPrediction = 2,  ///< no input of the check was fitted to its target
  NumericalConvergence = 3,   ///< a discretisation tends to its limit
  ConditionalBridge = 4,      ///< holds under an assumption that is itself unproven
  OpenResearchGate = 5,       ///< undecided
  SyntheticDiagnostic = 6,    ///< made-up input, to exercise the code
};

/// Such as "ALGEBRAIC_IDENTITY"; a value outside the enumeration counts as OpenResearchGate.
std::string_view check_kind_export_string(CheckKind kind);

/// By export string or enumerator's name, case-sensitive; any other text is OpenResearchGate.
CheckKind check_kind_from_export_string(std::string_view text);

}  // namespace vkm
