#pragma once

/// Knots as truncated Fourier series, and the `.fseries` texts that hold them.
///
///   x(s) = sum_i a_x[i] cos((i + 1) s) + b_x[i] sin((i + 1) s),  i = 0 .. n - 1,  s in radians, period 2 pi,
///
/// and the same for y and z. There is no constant term: the first row of a block is harmonic 1, whatever the file says.

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// One series; a reader gives the six vectors one length, the number of harmonics.
struct FourierBlock {
  std::string header;       // text of the block's last `%` line
  std::vector<double> a_x;  // cosine coefficients of x; entry i belongs to harmonic i + 1
  std::vector<double> b_x;  // sine coefficients of x
  std::vector<double> a_y;
  std::vector<double> b_y;
  std::vector<double> a_z;
  std::vector<double> b_z;
};

/// One more harmonic: a_x b_x a_y b_y a_z b_z.
inline void append_row(FourierBlock& block, std::span<const double, 6> row) {
  block.a_x.push_back(row[0]);
  block.b_x.push_back(row[1]);
  block.a_y.push_back(row[2]);
  block.b_y.push_back(row[3]);
  block.a_z.push_back(row[4]);
  block.b_z.push_back(row[5]);
}

/// The blocks of a `.fseries` text.
///
/// Lines lose their trailing white space. An empty line ends the block; a line whose first character is `%` ends it
/// too and is the header of the next; any other line is a row of six numbers a_x b_x a_y b_y a_z b_z, what follows
/// them is ignored, and a line that does not begin with six numbers is dropped. A block without rows is none.
std::vector<FourierBlock> parse_fseries_from_string(std::string_view content, const Poll& poll = {});

/// The blocks of a `.fseries` file; none if it cannot be opened.
std::vector<FourierBlock> parse_fseries_multi(const std::string& path, const Poll& poll = {});

/// Index of the first block with the most rows, -1 for no blocks.
int index_of_largest_block(std::span<const FourierBlock> blocks);

/// The points r(s), with the length of a_x for the number of harmonics. Throws std::invalid_argument if another
/// vector is shorter than a_x.
std::vector<Vec3> evaluate_fourier_block(const FourierBlock& block, std::span<const double> s, const Poll& poll = {});

/// r and its first three derivatives by s. The longest vector gives the number of harmonics; entries missing in a
/// shorter one count as 0.
std::array<Vec3, 4> evaluate_with_derivatives(const FourierBlock& block, double s);

}  // namespace vkm
