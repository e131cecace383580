#include "filament/sums/fields_wide.hpp"

#if VKM_HAS_WIDE

#include <algorithm>
#include <memory>

#include "core/pair_sums_wide.hpp"
#include "filament/sums/dipole_wide.hpp"
#include "filament/sums/magnetostatics.hpp"
#include "filament/sums/source_loop_wide.hpp"

namespace vkm {

namespace {

constexpr std::size_t row_lanes = 32;    // points of a row that share tables
constexpr std::size_t tile_rows = 32;    // rows of a plane that do
constexpr std::size_t chunk_size = 100;  // sources; their tables for a tile stay in the second cache

using Row = double[row_lanes];
using PerSource = double[chunk_size];

/// The factors of one row of points, source by source: R^2 = (its part along the row + first) + second, and likewise
/// m.R, whose parts are thus added x first.
struct RowFactors {
  alignas(64) double first[chunk_size + most_ahead] = {};
  alignas(64) double second[chunk_size + most_ahead] = {};
};

/// Where the sums of some points of a row stand, for the components along the slow, middle and fast axes.
struct RowSums {
  std::size_t from;  // in the row
  LaneSpace component;
  std::size_t size;
};

/// The lanes of vector v that are in use.
VKM_WIDE_INLINE __mmask8 lanes_of(const RowSums& at, std::size_t v) {
  const std::size_t before = v * wide_lanes;
  if (at.size >= before + wide_lanes) return 0xff;
  return static_cast<__mmask8>(at.size > before ? (1u << (at.size - before)) - 1u : 0u);
}

/// Adds the terms of a chunk to the sums, or returns false and leaves them.
template <bool near, class Terms>
VKM_WIDE bool add_chunk(const Terms& terms, std::size_t count, const RowSums& at) {
  WideVec3 sums[Terms::vectors];
#pragma GCC unroll 4
  for (std::size_t v = 0; v < Terms::vectors; ++v) {
    const __mmask8 lanes = lanes_of(at, v);
    sums[v] = {_mm512_maskz_loadu_pd(lanes, at.component.x + v * wide_lanes),
               _mm512_maskz_loadu_pd(lanes, at.component.y + v * wide_lanes),
               _mm512_maskz_loadu_pd(lanes, at.component.z + v * wide_lanes)};
  }
  if (!add_terms<near>(terms, count, sums)) return false;
#pragma GCC unroll 4
  for (std::size_t v = 0; v < Terms::vectors; ++v) {
    const __mmask8 lanes = lanes_of(at, v);
    _mm512_mask_storeu_pd(at.component.x + v * wide_lanes, lanes, sums[v].x);
    _mm512_mask_storeu_pd(at.component.y + v * wide_lanes, lanes, sums[v].y);
    _mm512_mask_storeu_pd(at.component.z + v * wide_lanes, lanes, sums[v].z);
  }
  return true;
}

/// What both fields have in common: a chunk of sources, and R from them to the points of a tile.
struct Tile {
  const std::size_t slow_axis, middle_axis, fast_axis;
  std::size_t sources = 0;
  alignas(64) PerSource at[3];
  alignas(64) PerSource vector[3];
  alignas(64) Row r[chunk_size];  // along the row
  alignas(64) Row r2[chunk_size + most_ahead] = {};
  alignas(64) PerSource slow, slow2;
  alignas(64) PerSource middle[tile_rows], middle2[tile_rows];
  RowFactors rest;  // of R^2 in the row at hand

  explicit Tile(const Meshgrid& grid) : slow_axis(grid.axis[0]), middle_axis(grid.axis[1]), fast_axis(grid.axis[2]) {}

  void take(std::span<const Vec3> places, std::span<const Vec3> vectors) {
    sources = places.size();
    for (std::size_t a = 0; a < 3; ++a) {
      std::fill_n(at[a], chunk_size, 0.0);
      std::fill_n(vector[a], chunk_size, 0.0);
      for (std::size_t s = 0; s < sources; ++s) {
        at[a][s] = places[s][a];
        vector[a][s] = vectors[s][a];
      }
    }
  }

  VKM_WIDE void place_row(std::span<const double> values) {
    Row x = {};
    std::copy_n(values.begin(), std::min(values.size(), row_lanes), x);
    for (std::size_t s = 0; s < chunk_size; ++s) {
      for (std::size_t k = 0; k < row_lanes; ++k) {
        r[s][k] = x[k] - at[fast_axis][s];
        r2[s][k] = r[s][k] * r[s][k];
      }
    }
  }

  VKM_WIDE static void place(double x, const PerSource& from, PerSource& offset, PerSource& square) {
    for (std::size_t s = 0; s < chunk_size; ++s) {
      offset[s] = x - from[s];
      square[s] = offset[s] * offset[s];
    }
  }

  VKM_WIDE static void multiply(const PerSource& a, const PerSource& b, PerSource& product) {
    for (std::size_t s = 0; s < chunk_size; ++s) product[s] = a[s] * b[s];
  }

  /// The parts of a sum of three products that do not lie along the row, in the order of addition.
  VKM_WIDE_INLINE void split(const PerSource& along_slow, const PerSource& along_middle, RowFactors& parts) const {
    const bool slow_first = slow_axis < middle_axis;
    const double* first = slow_first ? along_slow : along_middle;
    const double* second = slow_first ? along_middle : along_slow;
    for (std::size_t s = 0; s < chunk_size; ++s) {
      parts.first[s] = fast_axis == 2 ? first[s] + second[s] : first[s];
      parts.second[s] = fast_axis == 2 ? -0.0 : second[s];  // adding -0.0 changes nothing
    }
  }

  VKM_WIDE_INLINE Wide square(std::size_t s, std::size_t lane) const {
    return (load_wide(r2[s] + lane) + wide(rest.first[s])) + wide(rest.second[s]);
  }
};

/// A wire's elements: dl x R has one component that is the same along the slow axis, one along the middle axis and one
/// along the row.
class WireTile : public Tile {
 public:
  WireTile(const Meshgrid& grid, double factor) : Tile(grid), f_(factor) {}

  VKM_WIDE void fill_rows(std::size_t count) {
    for (std::size_t j = 0; j < count; ++j) {
      cross_along_row(slow_axis, middle[j], slow_part_[j]);
      multiply(vector[slow_axis], middle[j], slow_by_middle_[j]);
    }
  }

  VKM_WIDE void fill_plane() {
    cross_along_row(middle_axis, slow, middle_part_);
    multiply(vector[middle_axis], slow, middle_by_slow_);
  }

  VKM_WIDE void prepare_row(std::size_t j) {
    split(slow2, middle2[j], rest);
    const bool slow_first = (fast_axis + 1) % 3 == slow_axis;
    const double* first = slow_first ? slow_by_middle_[j] : middle_by_slow_;
    const double* second = slow_first ? middle_by_slow_ : slow_by_middle_[j];
    for (std::size_t s = 0; s < chunk_size; ++s) fast_part_[s] = (first[s] - second[s]) * f_;
  }

  template <PairForm form>
  struct Terms {
    static constexpr std::size_t vectors = 4;
    static constexpr std::size_t ahead = 1;
    static constexpr double near = least_distance;
    const WireTile& tile;
    std::size_t row, from;

    VKM_WIDE_INLINE Wide square(std::size_t s, std::size_t v) const { return tile.square(s, from + v * wide_lanes); }
    /// In the mixed form the first vector has the reciprocal from the divider, the others the root.
    static constexpr bool turned(std::size_t v) { return form == PairForm::mixed && v == 0; }
    VKM_WIDE_INLINE static Wide root(Wide r2, std::size_t v) {
      return turned(v) ? square_root(r2) : WideForm<form>::root(r2);
    }
    VKM_WIDE_INLINE static Wide divide(Wide n) { return n; }
    VKM_WIDE_INLINE WideVec3 term(std::size_t s, std::size_t v, Wide n, Wide r2, Wide) const {
      const std::size_t lane = from + v * wide_lanes;
      const Wide q = turned(v) ? wide(1.0) / (n * r2) : WideForm<form>::reciprocal(n * r2);
      return {load_wide(tile.slow_part_[row][s] + lane) * q, load_wide(tile.middle_part_[s] + lane) * q,
              wide(tile.fast_part_[s]) * q};
    }
  };

 private:
  /// (dl x R) f along `component`, where R along the axis that is neither this nor the row's is `other`.
  VKM_WIDE void cross_along_row(std::size_t component, const PerSource& other, Row* out) const {
    const std::size_t b = (component + 1) % 3, c = (component + 2) % 3;
    for (std::size_t s = 0; s < chunk_size; ++s) {
      const double db = vector[b][s], dc = vector[c][s], o = other[s];
      if (c == fast_axis) {
        for (std::size_t k = 0; k < row_lanes; ++k) out[s][k] = (db * r[s][k] - dc * o) * f_;
      } else {
        for (std::size_t k = 0; k < row_lanes; ++k) out[s][k] = (db * o - dc * r[s][k]) * f_;
      }
    }
  }

  double f_;
  alignas(64) PerSource middle_by_slow_;
  alignas(64) PerSource slow_by_middle_[tile_rows];
  alignas(64) PerSource fast_part_;
  alignas(64) Row middle_part_[chunk_size];
  alignas(64) Row slow_part_[tile_rows][chunk_size];
};

/// Dipoles: R^2 and m.R have parts that are the same along a row.
class DipoleTile : public Tile {
 public:
  explicit DipoleTile(const Meshgrid& grid) : Tile(grid) {}

  VKM_WIDE void fill_rows(std::size_t count) {
    for (std::size_t s = 0; s < chunk_size; ++s) {
      for (std::size_t k = 0; k < row_lanes; ++k) mr_[s][k] = vector[fast_axis][s] * r[s][k];
    }
    for (std::size_t j = 0; j < count; ++j) multiply(vector[middle_axis], middle[j], m_middle_[j]);
  }

  VKM_WIDE void fill_plane() { multiply(vector[slow_axis], slow, m_slow_); }

  VKM_WIDE void prepare_row(std::size_t j) {
    split(slow2, middle2[j], rest);
    split(m_slow_, m_middle_[j], mr_rest_);
  }

  template <PairForm form>
  struct Terms {
    static constexpr std::size_t vectors = 2;
    static constexpr std::size_t ahead = 2;
    static constexpr double near = least_distance;
    const DipoleTile& tile;
    std::size_t row, from;

    VKM_WIDE_INLINE Wide square(std::size_t s, std::size_t v) const { return tile.square(s, from + v * wide_lanes); }
    VKM_WIDE_INLINE static Wide root(Wide r2, std::size_t) { return WideForm<form>::root(r2); }
    VKM_WIDE_INLINE static Wide divide(Wide n) { return WideForm<form>::reciprocal(n); }
    VKM_WIDE_INLINE WideVec3 term(std::size_t s, std::size_t v, Wide n, Wide r2, Wide per_n) const {
      const std::size_t lane = from + v * wide_lanes;
      const Wide mr = (load_wide(tile.mr_[s] + lane) + wide(tile.mr_rest_.first[s])) + wide(tile.mr_rest_.second[s]);
      const WideVec3 m = {wide(tile.vector[tile.slow_axis][s]), wide(tile.vector[tile.middle_axis][s]),
                          wide(tile.vector[tile.fast_axis][s])};
      return dipole_field(m, {wide(tile.slow[s]), wide(tile.middle[row][s]), load_wide(tile.r[s] + lane)}, mr, n, r2,
                          per_n);
    }
  };

 private:
  RowFactors mr_rest_;
  alignas(64) PerSource m_slow_;
  alignas(64) PerSource m_middle_[tile_rows];
  alignas(64) Row mr_[chunk_size];
};

bool fits(std::span<const Vec3> at, std::span<const Vec3> vectors, const Meshgrid& grid, PairForm form) {
  bool fits = form != PairForm::plain && grid.values[2].size() >= wide_lanes && moderate(at) && moderate(vectors);
  for (const std::vector<double>& values : grid.values) fits = fits && moderate(values);
  return fits;
}

/// Sums chunk after chunk of the sources, which keeps their order at every point.
template <PairForm form, class Kernel>
Lanes sum_over(std::span<const Vec3> at, std::span<const Vec3> vectors, const Meshgrid& grid, Kernel& tile,
               const Poll& poll) {
  const std::span<const double> planes = grid.values[0], rows = grid.values[1], columns = grid.values[2];
  Lanes field(planes.size() * rows.size() * columns.size());
  Heartbeat heartbeat(poll);
  const auto sum_row = [&](std::size_t i, std::size_t j, std::size_t row, std::size_t column) {
    tile.prepare_row(j);
    const std::size_t first = (i * rows.size() + row + j) * columns.size() + column;
    const std::size_t count = std::min(row_lanes, columns.size() - column);
    using Terms = typename Kernel::template Terms<form>;
    for (std::size_t from = 0; from < count; from += Terms::vectors * wide_lanes) {
      const std::size_t place = first + from;
      const RowSums sums{from,
                         {field.axis(tile.slow_axis) + place, field.axis(tile.middle_axis) + place,
                          field.axis(tile.fast_axis) + place},
                         count - from};
      const Terms terms{tile, j, from};
      quick_or_careful([&](auto near) { return add_chunk<near>(terms, tile.sources, sums); });
    }
  };
  for (std::size_t s = 0; s < at.size(); s += chunk_size) {
    const std::size_t sources = std::min(chunk_size, at.size() - s);
    tile.take(at.subspan(s, sources), vectors.subspan(s, sources));
    for (std::size_t column = 0; column < columns.size(); column += row_lanes) {
      tile.place_row(columns.subspan(column));
      for (std::size_t row = 0; row < rows.size(); row += tile_rows) {
        const std::size_t count = std::min(tile_rows, rows.size() - row);
        for (std::size_t j = 0; j < count; ++j) {
          tile.place(rows[row + j], tile.at[tile.middle_axis], tile.middle[j], tile.middle2[j]);
        }
        tile.fill_rows(count);
        for (std::size_t i = 0; i < planes.size(); ++i) {
          tile.place(planes[i], tile.at[tile.slow_axis], tile.slow, tile.slow2);
          tile.fill_plane();
          for (std::size_t j = 0; j < count; ++j) sum_row(i, j, row, column);
          heartbeat.tick();
        }
      }
    }
  }
  return field;
}

}  // namespace

std::optional<Lanes> wire_field_on_meshgrid(std::span<const Vec3> at, std::span<const Vec3> elements, double f,
                                            const Meshgrid& grid, const Poll& poll, PairForm form) {
  if (!fits(at, elements, grid, form)) return std::nullopt;
  const auto tile = std::make_unique<WireTile>(grid, f);
  return with_form(form, [&](auto constant) { return sum_over<constant>(at, elements, grid, *tile, poll); });
}

std::optional<Lanes> dipole_field_on_meshgrid(std::span<const Vec3> at, std::span<const Vec3> moments,
                                              const Meshgrid& grid, const Poll& poll, PairForm form) {
  if (!fits(at, moments, grid, form)) return std::nullopt;
  const auto tile = std::make_unique<DipoleTile>(grid);
  return with_form(form, [&](auto constant) { return sum_over<constant>(at, moments, grid, *tile, poll); });
}

}  // namespace vkm

#endif
