#pragma once

/// The hand-written twins of the products of tiles (tile_matrix.hpp): the same bits in less time, as a whole tile of
/// sums stays in registers. Each declines, by saying false, on machines without the vectors it is written for.

#include <cstddef>

#include "core/wide.hpp"
#include "ideal/tile_matrix.hpp"

namespace vkm::ideal {

#if VKM_HAS_WIDE

/// For each tile b of a row: b = w^T b.
bool scale_row_wide(const double* w, double* b, std::size_t count);

/// targets[k] -= a^T b_k for consecutive tiles b_k.
bool subtract_products_wide(const double* a, const double* b, double* const* targets, std::size_t count);

#else

inline bool scale_row_wide(const double*, double*, std::size_t) { return false; }
inline bool subtract_products_wide(const double*, const double*, double* const*, std::size_t) { return false; }

#endif

}  // namespace vkm::ideal
