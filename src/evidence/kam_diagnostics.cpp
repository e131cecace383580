#include "evidence/kam_diagnostics.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "core/finite.hpp"
#include "mass/canonical_constants.hpp"

namespace vkm {

namespace {

/// By Gaussian elimination with partial pivoting; directly for n below 3.
double determinant(std::vector<double> a, std::size_t n, Heartbeat& heartbeat) {
  if (n == 1) return a[0];
  if (n == 2) return a[0] * a[3] - a[1] * a[2];
  double product = 1.0;
  for (std::size_t column = 0; column < n; ++column) {
    heartbeat.tick();
    std::size_t pivot = column;
    for (std::size_t row = column + 1; row < n; ++row) {
      if (std::fabs(a[row * n + column]) > std::fabs(a[pivot * n + column])) pivot = row;
    }
    if (a[pivot * n + column] == 0.0) return 0.0;
    if (pivot != column) {
      std::swap_ranges(&a[pivot * n], &a[pivot * n] + n, &a[column * n]);
      product = -product;
    }
    product *= a[column * n + column];
    for (std::size_t row = column + 1; row < n; ++row) {
      const double factor = a[row * n + column] / a[column * n + column];
      for (std::size_t k = column + 1; k < n; ++k) a[row * n + k] -= factor * a[column * n + k];
    }
  }
  return product;
}

/// The least |k . omega|, sums from left to right. A vector and its negative give the same, so the first component that
/// is not 0 is taken positive. A branch is left when the components to come cannot bring its sum below the best one,
/// whatever the rounding: the result is that of the full enumeration, to the bit.
class DetuningSearch {
 public:
  DetuningSearch(std::span<const double> omega, Heartbeat& heartbeat)
      : omega_(omega), reach_(omega.size() + 1), heartbeat_(heartbeat) {
    for (std::size_t i = omega.size(); i-- > 0;) reach_[i] = reach_[i + 1] + 2.0 * std::fabs(omega[i]);
    rounding_ = reach_[0] * static_cast<double>(omega.size() + 1) * 0x1p-50;
  }

  double least() {
    descend(0, 0.0, true);
    return best_;
  }

 private:
  void descend(std::size_t place, double sum, bool all_zero) {
    if (place == omega_.size()) {
      if (!all_zero && std::fabs(sum) < best_) best_ = std::fabs(sum);
      return;
    }
    if (best_ == 0.0 || std::fabs(sum) - reach_[place] > best_ + rounding_) return;
    if ((++branches_ & 1023) == 0) heartbeat_.tick();
    for (int k = all_zero ? 0 : -2; k <= 2; ++k) descend(place + 1, sum + k * omega_[place], all_zero && k == 0);
  }

  std::span<const double> omega_;
  std::vector<double> reach_;  ///< most that the components from here on can add
  double rounding_ = 0.0;
  double best_ = std::numeric_limits<double>::infinity();
  std::uint64_t branches_ = 0;
  Heartbeat& heartbeat_;
};

}  // namespace

std::string_view KAMDiagnosticsAPI::sector_name(KAMSector sector) { return sector == KAMSector::S ? "S" : "T"; }

std::string_view KAMDiagnosticsAPI::stage_name(KAMStage stage) {
  switch (stage) {
    case KAMStage::KAM0:
      break;
    case KAMStage::KAM1:
      return "KAM-1";
    case KAMStage::KAM2:
      return "KAM-2";
    case KAMStage::KAM3:
      return "KAM-3";
    case KAMStage::KAM4:
      return "KAM-4";
    case KAMStage::KAM5:
      return "KAM-5";
  }
  return "KAM-0";
}

KAMStage1Result KAMDiagnosticsAPI::stage1(KAMSector sector, std::vector<double> frequencies,
                                          std::vector<double> hessian, double diophantine_tau, const Poll& poll) {
  KAMStage1Result result;
  result.sector = sector;
  result.frequencies = std::move(frequencies);
  result.hessian = std::move(hessian);
  const std::size_t n = result.frequencies.size();
  if (n == 0 || result.hessian.size() != n * n || !(diophantine_tau > 0.0) || !std::isfinite(diophantine_tau) ||
      !all_finite(result.frequencies) || !all_finite(result.hessian)) {
    result.status = CertificateStatus::Indeterminate;
    return result;
  }

  Heartbeat heartbeat(poll);
  result.hessian_determinant = determinant(result.hessian, n, heartbeat);
  result.minimum_detuning = DetuningSearch(result.frequencies, heartbeat).least();
  result.diophantine_margin = result.minimum_detuning - diophantine_tau;
  const bool holds =
      std::fabs(result.hessian_determinant) > diophantine_tau && result.minimum_detuning > diophantine_tau;
  result.status = holds ? CertificateStatus::Pass : CertificateStatus::Fail;
  result.achieved_stage = holds ? KAMStage::KAM1 : KAMStage::KAM0;
  return result;
}

bool KAMDiagnosticsAPI::golden_ratio_null_test(double value, double tol) {
  return std::isfinite(value) && tol >= std::fabs(value - canonical::phi);
}

}  // namespace vkm
