#include "knot/fourier_helicity.hpp"

#include <algorithm>
#include <stdexcept>

#include "core/memory.hpp"
#include "filament/grid/periodic_box.hpp"
#include "filament/sums/biot_savart.hpp"
#include "knot/named_knot.hpp"

namespace vkm {

std::tuple<double, double, double> compute_helicity_from_fourier_block(const FourierBlock& block, int grid_size,
                                                                       double spacing, int interior_margin,
                                                                       int nsamples, const Poll& poll) {
  if (interior_margin < 0) throw std::invalid_argument("interior_margin must not be negative");
  const int G = std::max(grid_size, 0);
  const int c = G / 2;
  const GridShape shape{G, G, G};
  require_memory(cell_count(shape), 6 * sizeof(Vec3));                                // grid, fields, interiors
  require_memory(static_cast<std::size_t>(std::max(nsamples, 0)), 4 * sizeof(Vec3));  // curve and its segments
  const std::vector<Vec3> curve = sample_both_ends_centred(block, nsamples, poll);

  std::vector<Vec3> grid;
  grid.reserve(cell_count(shape));
  for (int i = 0; i < G; ++i) {
    for (int j = 0; j < G; ++j) {
      for (int k = 0; k < G; ++k) grid.push_back({(i - c) * spacing, (j - c) * spacing, (k - c) * spacing});
    }
  }
  const std::vector<Vec3> velocity = closed_curve_velocity(curve, grid, 1.0, poll);
  const std::vector<Vec3> vorticity = compute_vorticity(velocity, shape, spacing);
  const std::vector<Vec3> v_sub = extract_interior(velocity, shape, interior_margin);
  const std::vector<Vec3> w_sub = extract_interior(vorticity, shape, interior_margin);

  std::vector<double> r_sq;
  r_sq.reserve(v_sub.size());
  const auto square = [&](int index) {
    const double x = (index - c) * spacing;
    return x * x;
  };
  for (int a = interior_margin; a < G - interior_margin; ++a) {
    for (int b = interior_margin; b < G - interior_margin; ++b) {
      for (int d = interior_margin; d < G - interior_margin; ++d) r_sq.push_back(square(a) + square(b) + square(d));
    }
  }
  return compute_invariants(v_sub, w_sub, r_sq);
}

}  // namespace vkm
