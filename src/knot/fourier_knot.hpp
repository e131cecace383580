#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "knot/fourier_series.hpp"

namespace vkm {

/// A knot on its way from a file to points: loaded, selected, reconstructed. Nothing enforces the order but the
/// messages of the two last steps, and each field may be set by hand.
class FourierKnot {
 public:
  std::vector<FourierBlock> blocks;  // of the last loadBlocks
  FourierBlock activeBlock;          // a copy of the chosen block
  std::vector<Vec3> points;          // of the last reconstruct

  /// Replaces `blocks` by the blocks of the file, without headers. An older and stricter reader than
  /// parse_fseries_multi: a line of blanks ends no block, and a row counts only if it has exactly six numbers before
  /// its end or its first word. Throws std::runtime_error if the file cannot be opened, with `blocks` empty.
  void loadBlocks(const std::string& path, const Poll& poll = {});

  /// Copies the first block with the most rows into `activeBlock`; std::runtime_error if there is none.
  void selectMaxHarmonics();

  /// Fills `points` with `count` points at the parameters k 2 pi / count, the end point not repeated. Throws
  /// std::runtime_error if `activeBlock` has no rows, std::invalid_argument if its vectors are shorter than a_x.
  void reconstruct(std::size_t count, const Poll& poll = {});
};

}  // namespace vkm
