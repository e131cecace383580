#include "evidence/spectro_response.hpp"

#include <cmath>

#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

double SpectroResponseAPI::configuration_transition_energy(double E_a, double E_b) {
  return all_finite({E_a, E_b}) ? E_a - E_b : quiet_nan;
}

double SpectroResponseAPI::transition_frequency(double delta_E, double h) {
  return h > 0.0 && std::isfinite(delta_E) ? delta_E / h : quiet_nan;
}

double SpectroResponseAPI::linear_response_delta_nu(double h, std::span<const double> dE_dq,
                                                    std::span<const double> dq) {
  if (!(h > 0.0) || dE_dq.size() != dq.size()) return quiet_nan;
  double sum = 0.0;
  for (std::size_t i = 0; i < dq.size(); ++i) sum += dE_dq[i] * dq[i];
  return sum / h;
}

bool SpectroResponseAPI::rejects_double_count_with_xi_k(bool claimed) { return claimed; }

SpectroResponseResult SpectroResponseAPI::evaluate(double E_a, double E_b, double h, std::span<const double> dE_dq,
                                                   std::span<const double> dq, bool claimed) {
  SpectroResponseResult result;
  result.delta_E = configuration_transition_energy(E_a, E_b);
  result.nu = transition_frequency(result.delta_E, h);
  result.delta_nu = linear_response_delta_nu(h, dE_dq, dq);
  result.double_count_with_xi_k = claimed;
  result.passed = std::isfinite(result.delta_nu) && !rejects_double_count_with_xi_k(claimed);
  result.message = result.passed ? "spectro response ok" : "spectro response guard failure";
  return result;
}

}  // namespace vkm
