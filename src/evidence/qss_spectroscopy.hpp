#pragma once

/// Two diagnostics of quasi-stationary states on made-up 2 x 2 operators: the eigenvalues of a non-normal matrix, from
/// its characteristic polynomial, and the resolvent norm |(A - z)^-1| of a diagonal one, 1 over the distance from z to
/// the nearer eigenvalue.

#include <complex>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "evidence/check_kind.hpp"

namespace vkm {

struct QSSSpectrumResult {
  std::vector<std::complex<double>> eigenvalues;  ///< two, or none for bad input
  double eigen_residual = 0.0;                    ///< larger modulus of the characteristic polynomial at them
  double eigenvalue_magnitude_ratio = 0.0;        ///< larger modulus over the smaller
  double conditioning = 0.0;                      ///< the same, under the name that reports use
  std::string epistemic_status{check_kind_export_string(CheckKind::SyntheticDiagnostic)};
};

struct QSSPseudospectrumSample {
  double real_z = 0.0;
  double imag_z = 0.0;
  double resolvent_norm = 0.0;  ///< at most 1e30
};

struct QSSPseudospectrumResult {
  std::vector<QSSPseudospectrumSample> samples;  ///< imaginary part fastest
  double max_resolvent_norm = 0.0;
  std::string epistemic_status{check_kind_export_string(CheckKind::SyntheticDiagnostic)};
};

struct QSSSpectroscopyAPI {
  /// An open research gate, with NaN and no eigenvalues, unless there are four numbers.
  static QSSSpectrumResult eigen_2x2(std::span<const double> matrix_row_major);
  /// An open research gate, with NaN and no samples, for an empty grid or bounds out of order.
  static QSSPseudospectrumResult pseudospectrum_diag_2x2(double a00, double a11, double real_min, double real_max,
                                                         std::int64_t n_real, double imag_min, double imag_max,
                                                         std::int64_t n_imag, const Poll& poll = {});
};

}  // namespace vkm
