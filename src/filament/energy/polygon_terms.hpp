#pragma once

/// The terms of the double sums over a closed polygon (filament_energy.hpp), in their forms (core/pair_form.hpp): of
/// the edge i with the edges first .. first + count - 1. Up to a whole number of eights may be read and written. Forms
/// other than the plain one are for rc2 > 0.

#include <cstddef>

#include "core/pair_form.hpp"
#include "core/pair_sums.hpp"
#include "core/wide.hpp"

namespace vkm {

/// Writes 2 e_i . e_j / sqrt(R^2 + rc2).
void fill_neumann(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                  double* terms, PairForm form);

/// Writes 2 (e_i x e_j) . R / (R^2 + rc2)^(3/2), R = x_j - x_i.
void fill_writhe(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                 double* terms, PairForm form);

extern const PairKernel neumann_kernel, writhe_kernel;

#if VKM_HAS_WIDE
void fill_neumann_wide(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                       double* terms, PairForm form);
void fill_writhe_wide(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                      double* terms, PairForm form);
#else
inline void fill_neumann_wide(const LaneSources&, std::size_t, std::size_t, std::size_t, double, double*, PairForm) {}
inline void fill_writhe_wide(const LaneSources&, std::size_t, std::size_t, std::size_t, double, double*, PairForm) {}
#endif

}  // namespace vkm
