#include "tube/block_solve.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vkm {

std::vector<std::size_t> BlockSolver::coupled(std::span<const std::size_t> columns,
                                              std::span<const std::size_t> seeds) {
  for (const std::size_t seed : seeds) seen_[seed] = 1;
  std::vector<std::size_t> reached(seeds.begin(), seeds.end());
  std::vector<std::size_t> rest;
  for (const std::size_t column : columns) {
    if (!seen_[column]) rest.push_back(column);
  }
  for (std::size_t next = 0; next < reached.size() && !rest.empty(); ++next) {
    const double* row = equations_.gram_row(reached[next]);
    std::size_t kept = 0;
    for (const std::size_t column : rest) {
      if (row[column] == 0.0) {
        rest[kept++] = column;
      } else {
        seen_[column] = 1;
        reached.push_back(column);
      }
    }
    rest.resize(kept);
  }
  std::vector<std::size_t> found;
  for (const std::size_t column : columns) {
    if (seen_[column]) found.push_back(column);
  }
  for (const std::size_t column : reached) seen_[column] = 0;
  return found;
}

bool BlockSolver::solve_block(std::span<const std::size_t> block, std::span<const double> rhs, double ridge,
                              std::span<double> z) {
  heartbeat_.tick();
  const std::size_t k = block.size();
  system_.reset(k);
  for (std::size_t i = 0; i < k; ++i) {
    const double* gram_row = equations_.gram_row(block[i]);
    double* row = system_.row(i);
    for (std::size_t j = 0; j < k; ++j) row[j] = gram_row[block[j]];
    row[k] = rhs[block[i]];
  }
  solution_.resize(k);
  if (!system_.solve(ridge, solution_)) return false;
  for (std::size_t i = 0; i < k; ++i) z[block[i]] = solution_[i];
  return true;
}

bool BlockSolver::solve(std::span<const std::size_t> columns, std::span<const double> rhs, double ridge,
                        std::span<double> z) {
  std::vector<std::size_t> rest(columns.begin(), columns.end());
  while (!rest.empty()) {
    const std::vector<std::size_t> block = coupled(rest, std::span(rest).first(1));
    if (!solve_block(block, rhs, ridge, z)) return false;
    std::vector<std::size_t> others;
    std::set_difference(rest.begin(), rest.end(), block.begin(), block.end(), std::back_inserter(others));
    rest = std::move(others);
  }
  return true;
}

}  // namespace vkm
