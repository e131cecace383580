#pragma once

/// The normal equations on a subset of columns, taken apart into blocks that share no row of the matrix.
///
/// Contacts couple only through the vertices they share. Elimination never mixes blocks: their factors and pivots are
/// zero against each other, and each block's operations keep their order; so solving block by block has the bits
/// of solving them as one system.

#include <cstddef>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "tube/linear_solve.hpp"
#include "tube/normal_equations.hpp"

namespace vkm {

class BlockSolver {
 public:
  BlockSolver(const NormalEquations& equations, Heartbeat& heartbeat)
      : equations_(equations), heartbeat_(heartbeat), seen_(equations.size(), 0) {}

  /// Those of `columns` (ascending) that are coupled to one of the seeds, over any number of others; ascending. The
  /// seeds may lie outside; inside, they belong to the result.
  std::vector<std::size_t> coupled(std::span<const std::size_t> columns, std::span<const std::size_t> seeds);

  /// Solves G z = rhs on the columns (ascending), with the ridge on the diagonal; writes z there. False if a block is
  /// singular; z is then partly written.
  bool solve(std::span<const std::size_t> columns, std::span<const double> rhs, double ridge, std::span<double> z);
  /// The same on columns that are known to be one block.
  bool solve_block(std::span<const std::size_t> block, std::span<const double> rhs, double ridge, std::span<double> z);

 private:
  const NormalEquations& equations_;
  Heartbeat& heartbeat_;
  LinearSystem system_;
  std::vector<char> seen_;
  std::vector<double> solution_;
};

}  // namespace vkm
