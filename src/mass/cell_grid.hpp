#pragma once

/// Points sorted into cubic cells a little wider than 0.2, the range of the repulsion, so that all points in the range
/// of one lie in the 27 cells around it. The grid wraps around: a cell holds the points whose cell coordinates agree
/// with its own modulo the grid's extent, so a far outlier costs nothing. Points that are not finite are left out.
/// Memory is linear in the points.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vkm {

/// Coordinates of points, or components of vectors, one array an axis.
struct Axes {
  std::vector<double> x, y, z;

  Axes() = default;
  explicit Axes(std::size_t count) : x(count), y(count), z(count) {}
  std::size_t size() const { return x.size(); }
};

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

}  // namespace vkm
