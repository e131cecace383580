#pragma once

/// Short-range repulsion between the points of a particle's filaments.
///
/// Two points at a distance r with 1e-8 < r^2 < 0.04000000000000001 push each other apart along d = P_i - P_j with
///   (d / r) * min(200, 0.5 / r^4).
/// Inside the window 0.5 / r^4 is above 312, so the strength is the cap of 200 throughout. A point does not interact
/// with itself and its two neighbours on its filament. Lengths are dimensionless (the filament's radius is 1/2).
///
/// The force on a point is the sum over its partners in ascending order of their index, and equals the plain loop over
/// all pairs bit for bit; a grid of cells only spares the pairs that are too far apart. Memory is linear in the points.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"

namespace vkm {

/// Coordinates of points, or components of vectors, one array an axis.
struct Axes {
  std::vector<double> x, y, z;

  Axes() = default;
  explicit Axes(std::size_t count) : x(count), y(count), z(count) {}
  std::size_t size() const { return x.size(); }
};

/// Points sorted into cubic cells a little wider than the range of the repulsion. The grid wraps around: a cell holds
/// all points whose cell coordinates agree with its own modulo the grid's extent, so a far outlier costs nothing, and
/// the candidates of a point are those of 27 cells. Points that are not finite are left out.
class CellGrid {
 public:
  void build(const Axes& points);

  /// Number of points in the grid; they stand in `x`, `y`, `z` in order of their cells, those of a cell by index.
  std::size_t size() const { return count_; }

  /// Positions [begin, end) of the points of one cell.
  struct Range {
    std::uint32_t begin, end;
  };
  /// The cell that holds a position.
  Range cell_at(std::uint32_t position) const { return {start_[cell[position]], start_[cell[position] + 1]}; }
  /// The positions of all points in the 27 cells around a cell, as at most 18 ranges.
  int ranges_around(std::uint32_t cell, Range (&ranges)[18]) const;

  std::vector<double> x, y, z;       // coordinates by position
  std::vector<std::uint32_t> index;  // index of the point at a position
  std::vector<std::uint32_t> cell;   // cell of the point at a position

 private:
  void choose_extent(const std::int32_t (&low)[3], const std::int32_t (&high)[3], std::size_t points);

  std::size_t count_ = 0;
  int bits_[3] = {2, 2, 2};                  // binary logarithm of the number of cells along an axis
  std::vector<std::uint32_t> start_;         // first position of a cell
  std::vector<std::int32_t> coordinate_[3];  // cell coordinates by index
  std::vector<std::uint32_t> cell_of_;       // cell by index
};

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
