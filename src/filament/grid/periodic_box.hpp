#pragma once

/// Vector fields on a periodic box of nx x ny x nz cells, cell (i, j, k) at (i ny + j) nz + k with i along x: central
/// differences, interiors, and the helicity invariants of a velocity and its vorticity.

#include <array>
#include <span>
#include <tuple>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

using GridShape = std::array<int, 3>;

/// Cells of a box. Throws std::invalid_argument for a negative extent and std::bad_alloc beyond what memory can hold.
std::size_t cell_count(const GridShape& shape);

/// Vorticity as the helicity invariants take it: minus the textbook curl. Differences are central over 2 spacing, with
/// neighbours wrapped around. Throws std::invalid_argument if the field has fewer vectors than the box has cells.
std::vector<Vec3> compute_vorticity(std::span<const Vec3> F, const GridShape& shape, double spacing);

/// The textbook curl with the same differences.
std::vector<Vec3> curl_central(std::span<const Vec3> F, const GridShape& shape, double spacing);

/// Cells at least `margin` cells away from every face, k fastest; none if the margin is half an extent or more,
/// whatever the field holds. Throws std::invalid_argument for a negative margin or a field with fewer vectors than
/// cells.
std::vector<Vec3> extract_interior(std::span<const Vec3> F, const GridShape& shape, int margin);

/// (H_charge, H_mass, a_mu) = (sum v.w, sum |w|^2 r_sq, (H_charge / H_mass - 1) / 2). Empty input gives NaN for a_mu.
/// Throws std::invalid_argument if w is shorter than v, or r_sq shorter than w.
std::tuple<double, double, double> compute_invariants(std::span<const Vec3> v, std::span<const Vec3> w,
                                                      std::span<const double> r_sq);

}  // namespace vkm
