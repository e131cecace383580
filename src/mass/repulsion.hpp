#pragma once

/// Short-range repulsion between the points of a particle's filaments.
///
/// Two points at a distance r with 1e-8 < r^2 < 0.04000000000000001 push each other apart along d = P_i - P_j with
///   (d / r) * min(200, 0.5 / r^4).
/// Inside the window 0.5 / r^4 is above 312, so the strength is the cap of 200 throughout. A point does not interact
/// with itself and its two neighbours on its filament. Lengths are dimensionless.
///
/// The force on a point is the sum over its partners in ascending order of their index, and equals the plain loop over
/// all pairs bit for bit; a grid of cells only spares the pairs that are too far apart. Memory is linear in the points.

#include <cstdint>
#include <vector>

#include "core/poll.hpp"
#include "mass/cell_grid.hpp"

namespace vkm {

class Repulsion {
 public:
  /// `previous` and `next` are the neighbours of each point on its filament.
  Repulsion(std::vector<std::uint32_t> previous, std::vector<std::uint32_t> next);

  /// Adds the repulsion to `force`.
  void add_to(Axes& force, const Axes& points, Heartbeat& heartbeat);

 private:
  void gather_candidates(std::uint32_t cell);
  void add_to_few(CellGrid::Range cell, Axes& force, const Axes& points);
  void add_to_many(CellGrid::Range cell, Axes& force, const Axes& points, Heartbeat& heartbeat);

  std::vector<std::uint32_t> previous_;
  std::vector<std::uint32_t> next_;
  CellGrid grid_;
  std::size_t candidate_count_ = 0;        // points in the 27 cells around the current cell
  std::vector<std::uint32_t> candidates_;  // their indices
  Axes at_;                                // and coordinates
  std::vector<std::uint32_t> partners_;    // of one point
  std::vector<std::uint64_t> marks_;       // a bit a point, all zero between uses
};

}  // namespace vkm
