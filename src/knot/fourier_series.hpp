#pragma once

/// Knots as truncated Fourier series, and the `.fseries` texts that hold them.
///
///   x(s) = sum_i a_x[i] cos((i + 1) s) + b_x[i] sin((i + 1) s),  i = 0 .. n - 1,  s in radians, period 2 pi,
///
/// and the same for y and z. There is no constant term: the first row of a block is harmonic 1, whatever the file says.

#include <string>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

/// One series; a reader gives the six vectors one length, the number of harmonics.
struct FourierBlock {
  std::string header;        // text of the block's last `%` line
  std::vector<double> a_x;   // cosine coefficients of x; entry i belongs to harmonic i + 1
  std::vector<double> b_x;   // sine coefficients of x
  std::vector<double> a_y;
  std::vector<double> b_y;
  std::vector<double> a_z;
  std::vector<double> b_z;
};

}  // namespace vkm
