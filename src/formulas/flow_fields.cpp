#include "formulas/flow_fields.hpp"

#include <algorithm>

#include "formulas/guards.hpp"

namespace vkm {

namespace {

double sum_of_products(std::span<const Vec3> a, std::span<const Vec3> b) {
  double sum = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += dot(a[i], b[i]);
  return sum;
}

/// Where a difference at `i` of `count` samples reaches to, and over how many steps.
struct Stencil {
  Stencil(std::size_t i, std::size_t count)
      : low(i == 0 ? 0 : i - 1), high(i + 1 == count ? i : i + 1), wide(high - low == 2) {}

  std::size_t low;
  std::size_t high;
  bool wide;
};

}  // namespace

std::vector<double> bernoulli_pressure(std::span<const double> velocity_magnitude, double rho, double p_inf) {
  std::vector<double> pressure(velocity_magnitude.size());
  std::transform(velocity_magnitude.begin(), velocity_magnitude.end(), pressure.begin(),
                 [=](double v) { return p_inf - rho * 0.5 * v * v; });
  return pressure;
}

std::vector<double> velocity_magnitude(std::span<const Vec3> velocity) {
  std::vector<double> magnitude(velocity.size());
  std::transform(velocity.begin(), velocity.end(), magnitude.begin(), [](const Vec3& v) { return norm(v); });
  return magnitude;
}

double kinetic_energy(std::span<const Vec3> velocity, double rho) {
  return rho * 0.5 * sum_of_products(velocity, velocity);
}

double helicity_integral(std::span<const Vec3> velocity, std::span<const Vec3> vorticity, double dV) {
  reject_if(velocity.size() != vorticity.size(), "compute_helicity: velocity and vorticity must have the same length.");
  return sum_of_products(velocity, vorticity) * dV;
}

double circulation_surface_integral(std::span<const Vec3> omega_field, std::span<const Vec3> dA_field) {
  reject_if(omega_field.size() != dA_field.size(),
            "circulation_surface_integral: omega_field and dA_field must have the same length.");
  return sum_of_products(omega_field, dA_field);
}

double enstrophy(std::span<const double> omega_squared, std::span<const double> ds_area) {
  reject_if(omega_squared.size() != ds_area.size(), "enstrophy: omega_squared and ds_area must have the same length.");
  double sum = 0.0;
  for (std::size_t i = 0; i < omega_squared.size(); ++i) sum += omega_squared[i] * ds_area[i];
  return sum;
}

std::vector<std::vector<Vec3>> pressure_gradient(const std::vector<std::vector<double>>& pressure_field, double dx,
                                                 double dy) {
  const auto& p = pressure_field;
  const std::size_t rows = p.size();
  const std::size_t columns = p.empty() ? 0 : p.front().size();
  for (const auto& row : p) {
    reject_if(row.size() != columns, "pressure_gradient: the rows of pressure_field must have the same length.");
  }
  if (columns == 0) return std::vector<std::vector<Vec3>>(rows);
  reject_if(rows < 2 || columns < 2, "pressure_gradient: pressure_field needs at least two rows and two columns.");
  std::vector<std::vector<Vec3>> force(rows, std::vector<Vec3>(columns));
  for (std::size_t i = 0; i < rows; ++i) {
    const Stencil along_x(i, rows);
    const double step_x = along_x.wide ? dx + dx : dx;
    for (std::size_t j = 0; j < columns; ++j) {
      const Stencil along_y(j, columns);
      const double step_y = along_y.wide ? dy + dy : dy;
      force[i][j] = {-(p[along_x.high][j] - p[along_x.low][j]) / step_x,
                     -(p[i][along_y.high] - p[i][along_y.low]) / step_y, 0.0};
    }
  }
  return force;
}

}  // namespace vkm
