#pragma once

/// Phase derivative of a sampled complex function, the smooth density of a trace formula.

#include <complex>
#include <span>
#include <vector>

#include "core/poll.hpp"

namespace vkm {

/// -d arg(xi) / dt by central differences of the unwrapped phase over t(i + 1) - t(i - 1), 0 where that is 0; the ends
/// copy their neighbours. A step of exactly pi is not unwrapped. All zeros for fewer than 3 samples.
/// `t` and `xi` must have the same length.
std::vector<double> phase_derivative(std::span<const double> t, std::span<const std::complex<double>> xi,
                                     const Poll& poll);

}  // namespace vkm
