#pragma once

#include <cstdint>

namespace vkm {

/// The verdict of a certificate. A certificate never raises on bad numbers: it says Indeterminate.
enum class CertificateStatus : std::int32_t { Pass = 0, Fail = 1, Indeterminate = 2, NotEvaluated = 3 };

}  // namespace vkm
