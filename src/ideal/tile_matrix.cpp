#include "ideal/tile_matrix.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "core/kernel.hpp"
#include "core/memory.hpp"
#include "ideal/tile_products_wide.hpp"

namespace vkm::ideal {

namespace {

/// x y + z with one rounding where the machine has the instruction at hand; every clone of a kernel then gives the
/// same bits. Under the sanitizers, where there are no clones, the call would take most of the time.
VKM_INLINE double multiply_add(double x, double y, double z) {
#if defined(__SANITIZE_ADDRESS__)
  return x * y + z;
#else
  return __builtin_fma(x, y, z);
#endif
}

/// c - a^T b for tiles. Four rows of c at a time stay in registers.
VKM_INLINE void subtract_product(const double* a, const double* b, double* c) {
  constexpr std::size_t n = tile_side;
  constexpr std::size_t band = 4;
  for (std::size_t first = 0; first < n; first += band) {
    double sum[band][n];
    for (std::size_t i = 0; i < band; ++i) {
#pragma GCC unroll 12
      for (std::size_t k = 0; k < n; ++k) sum[i][k] = c[(first + i) * n + k];
    }
    for (std::size_t m = 0; m < n; ++m) {
#pragma GCC unroll 4
      for (std::size_t i = 0; i < band; ++i) {
        const double factor = -a[m * n + first + i];
#pragma GCC unroll 12
        for (std::size_t k = 0; k < n; ++k) sum[i][k] = multiply_add(factor, b[m * n + k], sum[i][k]);
      }
    }
    for (std::size_t i = 0; i < band; ++i) {
#pragma GCC unroll 12
      for (std::size_t k = 0; k < n; ++k) c[(first + i) * n + k] = sum[i][k];
    }
  }
}

/// For each tile b of a row: b = w^T b.
VKM_KERNEL void scale_row_plain(const double* w, double* b, std::size_t count) {
  for (std::size_t tile = 0; tile < count; ++tile, b += tile_size) {
    double out[tile_size] = {};
    subtract_product(w, b, out);
    for (std::size_t k = 0; k < tile_size; ++k) b[k] = -out[k];
  }
}

/// targets[k] -= a^T b_k for consecutive tiles b_k.
VKM_KERNEL void subtract_products_plain(const double* a, const double* b, double* const* targets, std::size_t count) {
  for (std::size_t k = 0; k < count; ++k) subtract_product(a, b + k * tile_size, targets[k]);
}

void scale_row(const double* w, double* b, std::size_t count) {
  if (!scale_row_wide(w, b, count)) scale_row_plain(w, b, count);
}

void subtract_products(const double* a, const double* b, double* const* targets, std::size_t count) {
  if (!subtract_products_wide(a, b, targets, count)) subtract_products_plain(a, b, targets, count);
}

/// The inverse of the upper factor of a tile, of which the upper triangle counts. The loops run over whole rows, which
/// vector registers hold, and leave numbers below the diagonals that nothing reads.
VKM_INLINE void invert_factor(double* tile) {
  constexpr std::size_t n = tile_side;
  double r[n][n];
  double inverse[n][n] = {};
  std::memcpy(r, tile, sizeof r);
  for (std::size_t i = 0; i < n; ++i) {
    const double pivot = r[i][i] > 0.0 ? 1.0 / std::sqrt(r[i][i]) : 0.0;
    for (std::size_t k = 0; k < n; ++k) r[i][k] *= pivot;
    inverse[i][i] = pivot;
    for (std::size_t m = i + 1; m < n; ++m) {
      const double factor = -r[i][m];
      for (std::size_t k = 0; k < n; ++k) r[m][k] = multiply_add(factor, r[i][k], r[m][k]);
    }
  }
  // Columns of R^-1: X R = I row by row, x[i][k] = -sum_{i <= m < k} x[i][m] r[m][k] / r[k][k].
  for (std::size_t i = 0; i < n; ++i) {
    double rest[n] = {};
    for (std::size_t m = i; m < n; ++m) {
      const double x = m == i ? inverse[i][i] : rest[m] * inverse[m][m];
      inverse[i][m] = x;
      for (std::size_t k = 0; k < n; ++k) rest[k] = multiply_add(-x, r[m][k], rest[k]);
    }
  }
  std::memcpy(tile, inverse, sizeof inverse);
}

VKM_KERNEL void invert_diagonal(double* tile) { invert_factor(tile); }

VKM_INLINE double sum_of(const double* lanes) {
  double quarter[4];
  for (std::size_t k = 0; k < 4; ++k) quarter[k] = (lanes[k] + lanes[k + 4]) + lanes[k + 8];
  return (quarter[0] + quarter[2]) + (quarter[1] + quarter[3]);
}

/// y = w^T y, then y_k -= b_k^T y for the row's tiles.
VKM_KERNEL void forward_row(const double* tiles, double* y, double* all, const std::uint32_t* columns,
                            std::size_t count) {
  constexpr std::size_t n = tile_side;
  double own[n] = {};
  for (std::size_t m = 0; m < n; ++m) {
    const double factor = y[m];
    for (std::size_t k = 0; k < n; ++k) own[k] = multiply_add(factor, tiles[m * n + k], own[k]);
  }
  for (std::size_t k = 0; k < n; ++k) y[k] = own[k];
  for (std::size_t tile = 0; tile < count; ++tile) {
    const double* b = tiles + (tile + 1) * tile_size;
    double* target = all + columns[tile] * n;
    double sum[n];
    for (std::size_t k = 0; k < n; ++k) sum[k] = target[k];
    for (std::size_t m = 0; m < n; ++m) {
      const double factor = -own[m];
      for (std::size_t k = 0; k < n; ++k) sum[k] = multiply_add(factor, b[m * n + k], sum[k]);
    }
    for (std::size_t k = 0; k < n; ++k) target[k] = sum[k];
  }
}

/// y -= sum_k b_k x_k over the row's tiles, then y = w y. Sums run along rows of tiles, so that they are kept in lanes,
/// four rows at a time, and added up at the end in one fixed order.
VKM_KERNEL void backward_row(const double* tiles, double* y, const double* all, const std::uint32_t* columns,
                             std::size_t count) {
  constexpr std::size_t n = tile_side;
  constexpr std::size_t band = 4;
  double own[n];
  for (std::size_t first = 0; first < n; first += band) {
    double lanes[band][n] = {};
    for (std::size_t tile = 0; tile < count; ++tile) {
      const double* b = tiles + (tile + 1) * tile_size + first * n;
      const double* x = all + columns[tile] * n;
#pragma GCC unroll 4
      for (std::size_t i = 0; i < band; ++i) {
#pragma GCC unroll 12
        for (std::size_t k = 0; k < n; ++k) lanes[i][k] = multiply_add(b[i * n + k], x[k], lanes[i][k]);
      }
    }
#pragma GCC unroll 4
    for (std::size_t i = 0; i < band; ++i) own[first + i] = y[first + i] - sum_of(lanes[i]);
  }
  for (std::size_t m = 0; m < n; ++m) {
    double lanes[n];
    for (std::size_t k = 0; k < n; ++k) lanes[k] = tiles[m * n + k] * own[k];  // zeros below the diagonal
    y[m] = sum_of(lanes);
  }
}

/// Sets of groups as bits.
class Adjacency {
 public:
  explicit Adjacency(std::size_t groups) : words_((groups + 63) / 64), bits_(groups * words_, 0) {}

  std::uint64_t* row(std::size_t a) { return bits_.data() + a * words_; }
  std::size_t words() const { return words_; }
  void set(std::size_t a, std::size_t b) { row(a)[b / 64] |= std::uint64_t{1} << (b % 64); }
  void reset(std::size_t a, std::size_t b) { row(a)[b / 64] &= ~(std::uint64_t{1} << (b % 64)); }
  std::size_t degree(std::size_t a) {
    std::size_t sum = 0;
    for (std::size_t w = 0; w < words_; ++w) sum += static_cast<std::size_t>(std::popcount(row(a)[w]));
    return sum;
  }
  template <class Visit>
  void members(std::size_t a, Visit visit) {
    for (std::size_t w = 0; w < words_; ++w) {
      for (std::uint64_t rest = row(a)[w]; rest != 0; rest &= rest - 1) {
        visit(w * 64 + static_cast<std::size_t>(std::countr_zero(rest)));
      }
    }
  }

 private:
  std::size_t words_;
  std::vector<std::uint64_t> bits_;
};

}  // namespace

TileMatrix::TileMatrix(std::size_t groups, std::span<const std::pair<Group, Group>> pairs)
    : place_(groups), order_(groups), rows_(groups), work_(groups * tile_side) {
  require_memory(groups * groups, 1);
  Adjacency adjacency(groups);
  for (const auto& [a, b] : pairs) {
    if (a == b) continue;
    adjacency.set(a, b);
    adjacency.set(b, a);
  }
  std::vector<std::size_t> degree(groups);
  for (std::size_t a = 0; a < groups; ++a) degree[a] = adjacency.degree(a);
  constexpr std::size_t done = SIZE_MAX;
  std::vector<Group> neighbours;  // of each group when it is eliminated, one after the other
  for (std::size_t place = 0; place < groups; ++place) {
    const auto pivot = static_cast<std::size_t>(std::min_element(degree.begin(), degree.end()) - degree.begin());
    order_[place] = static_cast<Group>(pivot);
    place_[pivot] = static_cast<std::uint32_t>(place);
    degree[pivot] = done;
    rows_[place].begin = static_cast<std::uint32_t>(neighbours.size());
    adjacency.members(pivot, [&](std::size_t a) { neighbours.push_back(static_cast<Group>(a)); });
    rows_[place].end = static_cast<std::uint32_t>(neighbours.size());
    for (std::size_t k = rows_[place].begin; k < rows_[place].end; ++k) {
      const std::size_t a = neighbours[k];
      for (std::size_t w = 0; w < adjacency.words(); ++w) adjacency.row(a)[w] |= adjacency.row(pivot)[w];
      adjacency.reset(a, a);
      adjacency.reset(a, pivot);
      degree[a] = adjacency.degree(a);
    }
  }
  columns_.resize(neighbours.size());
  for (const Row& row : rows_) {
    for (std::size_t k = row.begin; k < row.end; ++k) columns_[k] = place_[neighbours[k]];
    std::sort(columns_.begin() + row.begin, columns_.begin() + row.end);
  }
  require_memory(columns_.size() + groups, sizeof(Tile));
  tiles_.resize(columns_.size() + groups);
}

std::size_t TileMatrix::offset(Group a, Group b) const {
  const std::uint32_t first = std::min(place_[a], place_[b]);
  const std::uint32_t second = std::max(place_[a], place_[b]);
  if (first == second) return diagonal(first) * tile_size;
  const Row& row = rows_[first];
  const auto at = std::lower_bound(columns_.begin() + row.begin, columns_.begin() + row.end, second);
  return (diagonal(first) + 1 + static_cast<std::size_t>(at - (columns_.begin() + row.begin))) * tile_size;
}

void TileMatrix::clear() { std::memset(tiles_.data(), 0, tiles_.size() * sizeof(Tile)); }

void TileMatrix::factorise() {
  std::vector<double*> targets;
  for (std::size_t place = 0; place < rows_.size(); ++place) {
    const Row& row = rows_[place];
    const std::size_t count = row.end - row.begin;
    double* const own = tiles_[diagonal(place)].values;
    double* const rest = own + tile_size;
    invert_diagonal(own);
    scale_row(own, rest, count);
    for (std::size_t k = 0; k < count; ++k) {
      // The targets of row k of the product are tiles of one row, among its columns in ascending order.
      const std::uint32_t to = columns_[row.begin + k];
      double* const base = tiles_[diagonal(to)].values;
      targets.clear();
      targets.push_back(base);
      const std::uint32_t* column = columns_.data() + rows_[to].begin;
      double* tile = base + tile_size;
      for (std::size_t m = k + 1; m < count; ++m) {
        const std::uint32_t wanted = columns_[row.begin + m];
        while (*column != wanted) {
          ++column;
          tile += tile_size;
        }
        targets.push_back(tile);
      }
      subtract_products(rest + k * tile_size, rest + k * tile_size, targets.data(), count - k);
    }
  }
}

void TileMatrix::solve(std::span<double> x) const {
  double* const y = work_.data();
  for (std::size_t place = 0; place < rows_.size(); ++place) {
    std::memcpy(y + place * tile_side, x.data() + order_[place] * tile_side, tile_side * sizeof(double));
  }
  for (std::size_t place = 0; place < rows_.size(); ++place) {
    const Row& row = rows_[place];
    forward_row(tiles_[diagonal(place)].values, y + place * tile_side, y, columns_.data() + row.begin,
                row.end - row.begin);
  }
  for (std::size_t place = rows_.size(); place-- > 0;) {
    const Row& row = rows_[place];
    backward_row(tiles_[diagonal(place)].values, y + place * tile_side, y, columns_.data() + row.begin,
                 row.end - row.begin);
  }
  for (std::size_t place = 0; place < rows_.size(); ++place) {
    std::memcpy(x.data() + order_[place] * tile_side, y + place * tile_side, tile_side * sizeof(double));
  }
}

}  // namespace vkm::ideal
