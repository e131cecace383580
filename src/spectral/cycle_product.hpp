#pragma once

/// The logarithm of a multisector primitive-cycle product on the critical line s = 1/2 + i t.
///
/// A sector with number nu and phase theta contributes, for each repetition m = 1 .. M of its primitive cycle, a factor
/// 1 / D with
///
///     D = 1 - 2 cos(m theta) z + z^2,   z = exp(-s L),   L = nu m ell,
///
/// the inverse determinant of a 2 x 2 rotation by m theta damped by z, as in an Euler product. The product over
/// sectors, each to the power of its weight w, is kept in log form, real part -sum w ln|D| and imaginary part
/// -sum w arg D with principal arguments, so that the phase is not folded before the end.
///
/// Here ell is the base length of a primitive cycle and t its conjugate wave number, so that s L is a pure number;
/// theta is in radians.

#include <complex>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "core/poll.hpp"

namespace vkm {

struct Sectors {
  std::vector<std::int32_t> nu;
  std::vector<double> theta;    // as many as nu, rad
  std::vector<double> weights;  // as many as nu, or none for weights of 1
};

/// ln and argument of a factor in front of the product, at the critical line's t.
using LogPrefactor = std::function<std::complex<double>(double t)>;

/// Takes one row's sums at the points first .. first + real.size() - 1.
using LogSink = std::function<void(std::size_t row, std::size_t first, std::span<const double> real,
                                   std::span<const double> imaginary)>;

/// The log form at each t, a row for each truncation. Each term is computed once for all rows and added in the order
/// of the row alone, sectors outside and repetitions inside, so that a row has the bits of a single evaluation.
/// Without a prefactor the sums start from 0.
void log_cycle_products(const Sectors& sectors, double ell, std::span<const std::uint64_t> truncations,
                        std::span<const double> t, const LogPrefactor& prefactor, const LogSink& sink,
                        const Poll& poll);

/// Derivative of the log form with respect to s: the sum of -w D' / D with D' = 2 cos(m theta) L z - 2 L z^2.
/// NaN where a D is not finite; where a D is zero both parts of D' are divided by zero.
std::vector<std::complex<double>> cycle_product_log_derivative(const Sectors& sectors, double ell,
                                                               std::uint64_t truncation, std::span<const double> t,
                                                               const Poll& poll);

}  // namespace vkm
