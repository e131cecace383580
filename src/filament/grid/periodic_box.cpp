#include "filament/grid/periodic_box.hpp"

#include <cstdint>
#include <stdexcept>

#include "core/memory.hpp"

namespace vkm {

namespace {

/// Central differences of a cell along i, j and k.
struct Differences {
  Vec3 i;
  Vec3 j;
  Vec3 k;
};

void require_field(std::span<const Vec3> F, std::size_t count) {
  if (F.size() < count) throw std::invalid_argument("field must have a vector for each cell of the shape");
}

template <class Combine>
std::vector<Vec3> stencil(std::span<const Vec3> F, const GridShape& shape, double spacing, Combine combine) {
  const std::size_t count = cell_count(shape);
  require_field(F, count);
  std::vector<Vec3> out;
  if (count == 0) return out;
  out.reserve(count);
  const auto nx = static_cast<std::size_t>(shape[0]);
  const auto ny = static_cast<std::size_t>(shape[1]);
  const auto nz = static_cast<std::size_t>(shape[2]);
  const double h2 = spacing + spacing;
  const auto before = [](std::size_t at, std::size_t n) { return at == 0 ? n - 1 : at - 1; };
  const auto behind = [](std::size_t at, std::size_t n) { return at + 1 == n ? 0 : at + 1; };
  for (std::size_t i = 0; i < nx; ++i) {
    for (std::size_t j = 0; j < ny; ++j) {
      const Vec3* row = &F[(i * ny + j) * nz];
      const Vec3* row_i_minus = &F[(before(i, nx) * ny + j) * nz];
      const Vec3* row_i_plus = &F[(behind(i, nx) * ny + j) * nz];
      const Vec3* row_j_minus = &F[(i * ny + before(j, ny)) * nz];
      const Vec3* row_j_plus = &F[(i * ny + behind(j, ny)) * nz];
      for (std::size_t k = 0; k < nz; ++k) {
        out.push_back(combine(Differences{(row_i_plus[k] - row_i_minus[k]) / h2, (row_j_plus[k] - row_j_minus[k]) / h2,
                                          (row[behind(k, nz)] - row[before(k, nz)]) / h2}));
      }
    }
  }
  return out;
}

}  // namespace

std::size_t cell_count(const GridShape& shape) {
  for (const int extent : shape) {
    if (extent < 0) throw std::invalid_argument("grid extents must not be negative");
  }
  if (shape[0] == 0 || shape[1] == 0 || shape[2] == 0) return 0;
  std::size_t count = 1;
  for (const int extent : shape) {
    require_memory(count, static_cast<std::size_t>(extent) * sizeof(Vec3));
    count *= static_cast<std::size_t>(extent);
  }
  return count;
}

std::vector<Vec3> compute_vorticity(std::span<const Vec3> F, const GridShape& shape, double spacing) {
  return stencil(F, shape, spacing,
                 [](const Differences& D) -> Vec3 { return {D.k[1] - D.j[2], D.i[2] - D.k[0], D.j[0] - D.i[1]}; });
}

std::vector<Vec3> curl_central(std::span<const Vec3> F, const GridShape& shape, double spacing) {
  return stencil(F, shape, spacing,
                 [](const Differences& D) -> Vec3 { return {D.j[2] - D.k[1], D.k[0] - D.i[2], D.i[1] - D.j[0]}; });
}

std::vector<Vec3> extract_interior(std::span<const Vec3> F, const GridShape& shape, int margin) {
  if (margin < 0) throw std::invalid_argument("margin must not be negative");
  std::vector<Vec3> interior;
  for (const int extent : shape) {
    if (extent <= 2 * std::int64_t{margin}) return interior;
  }
  require_field(F, cell_count(shape));
  std::size_t count = 1;
  for (const int extent : shape) count *= static_cast<std::size_t>(extent - 2 * margin);
  interior.reserve(count);
  const auto cell = [&](int i, int j, int k) {
    return (static_cast<std::size_t>(i) * static_cast<std::size_t>(shape[1]) + static_cast<std::size_t>(j)) *
               static_cast<std::size_t>(shape[2]) +
           static_cast<std::size_t>(k);
  };
  for (int i = margin; i < shape[0] - margin; ++i) {
    for (int j = margin; j < shape[1] - margin; ++j) {
      for (int k = margin; k < shape[2] - margin; ++k) interior.push_back(F[cell(i, j, k)]);
    }
  }
  return interior;
}

std::tuple<double, double, double> compute_invariants(std::span<const Vec3> v, std::span<const Vec3> w,
                                                      std::span<const double> r_sq) {
  if (w.size() < v.size()) throw std::invalid_argument("vorticity must be at least as long as velocity");
  if (r_sq.size() < w.size()) throw std::invalid_argument("r_sq must be at least as long as vorticity");
  double H_charge = 0.0;
  for (std::size_t i = 0; i < v.size(); ++i) H_charge += dot(v[i], w[i]);
  double H_mass = 0.0;
  for (std::size_t i = 0; i < w.size(); ++i) {
    const double size = norm(w[i]);
    H_mass += size * size * r_sq[i];
  }
  return {H_charge, H_mass, 0.5 * (H_charge / H_mass - 1.0)};
}

}  // namespace vkm
