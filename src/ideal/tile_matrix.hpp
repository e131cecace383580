#pragma once

/// A sparse symmetric positive definite matrix in tiles of 12 x 12, and its Cholesky factor.
///
/// Unknowns stand in groups of twelve (four vertices with three coordinates). The groups are eliminated in an order of
/// minimum degree; the matrix K = R^T R then keeps for each group its row of tiles in the upper factor R. A tile is
/// row-major, its rows belong to the group eliminated first. The factorisation looks right: once a group's row is
/// done, its products are taken from the tiles behind it by one fixed product of tiles, which is where the time goes.
/// The diagonal tiles are replaced by the inverses of their factors, so that a solution is a chain of products.
///
/// All sums run in a fixed order with one rounding a multiply-add: the same bits at every vector width.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace vkm::ideal {

inline constexpr std::size_t tile_side = 12;
inline constexpr std::size_t tile_size = tile_side * tile_side;

struct alignas(64) Tile {
  double values[tile_size];
};

class TileMatrix {
 public:
  using Group = std::uint32_t;

  /// The pattern: pairs of different groups that share an entry, in any order, repeated or not.
  TileMatrix(std::size_t groups, std::span<const std::pair<Group, Group>> pairs);

  std::size_t groups() const { return place_.size(); }
  std::size_t tiles() const { return tiles_.size(); }

  /// Whether `a` is eliminated before `b`.
  bool before(Group a, Group b) const { return place_[a] < place_[b]; }

  /// Offset in values() of the tile of two groups of the pattern; its rows belong to the one eliminated first.
  std::size_t offset(Group a, Group b) const;

  double* values() { return tiles_.data()->values; }
  void clear();

  /// Replaces the matrix, of which the diagonal tiles' upper triangles and all other tiles count, by its factor.
  /// Pivots that are not positive are taken as infinite, which holds their unknown at 0.
  void factorise();

  /// Solves in place, 12 numbers a group in the order of the groups.
  void solve(std::span<double> x) const;

 private:
  struct Row {
    std::uint32_t begin;  ///< of columns_ and, one further a row for the diagonal, of tiles_
    std::uint32_t end;
  };

  std::size_t diagonal(std::size_t row) const { return rows_[row].begin + row; }

  std::vector<std::uint32_t> place_;    ///< of a group in the order of elimination
  std::vector<Group> order_;            ///< the group at a place
  std::vector<Row> rows_;               ///< by place
  std::vector<std::uint32_t> columns_;  ///< places behind the row's own, ascending
  std::vector<Tile> tiles_;             ///< for each row its diagonal tile, then its columns
  mutable std::vector<double> work_;
};

}  // namespace vkm::ideal
