#include "knot/curve_descriptors.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "filament/topology/topology_measures.hpp"
#include "knot/self_distance.hpp"

namespace vkm {

namespace {

using Derivatives = std::array<Vec3, 4>;  // r, r', r'', r'''

constexpr std::int64_t least_length_samples = 16;
constexpr std::int64_t least_bending_samples = 32;
constexpr std::int64_t least_polygon_samples = 64;
constexpr std::int64_t least_descriptor_samples = 512;

/// |r'| ds
double length_element(const Derivatives& at, double ds) { return norm(at[1]) * ds; }

/// kappa^2 v ds
double bending_element(const Derivatives& at, double eps, double ds) {
  const double v = std::max(eps, norm(at[1]));
  const double kappa = norm(cross(at[1], at[2])) / (v * v * v);
  return kappa * kappa * v * ds;
}

/// Calls visit(derivatives, ds) at s = k ds, k = 0 .. n - 1, ds = 2 pi / n.
template <class Visit>
void over_period(const FourierBlock& block, std::int64_t n, const Poll& poll, Visit visit) {
  const double ds = two_pi / static_cast<double>(n);
  Heartbeat heartbeat(poll);
  for (std::int64_t k = 0; k < n; ++k) {
    visit(evaluate_with_derivatives(block, static_cast<double>(k) * ds), ds);
    heartbeat.tick();
  }
}

std::vector<Vec3> polygon_of(const FourierBlock& block, std::int64_t nsamples, const Poll& poll) {
  return sample_period(block, std::max(nsamples, least_polygon_samples), poll);
}

}  // namespace

std::vector<Vec3> sample_period(const FourierBlock& block, std::int64_t nsamples, const Poll& poll) {
  const auto n = static_cast<std::size_t>(std::max<std::int64_t>(nsamples, 0));
  // Parameters, points, and what the self-distance and the writhe make of them.
  require_memory(n, 256);
  std::vector<double> s(n);
  for (std::size_t k = 0; k < n; ++k) s[k] = static_cast<double>(k) * two_pi / static_cast<double>(n);
  return evaluate_fourier_block(block, s, poll);
}

std::vector<double> curvature_exact(const FourierBlock& block, std::span<const double> s, double eps,
                                    const Poll& poll) {
  std::vector<double> kappa;
  kappa.reserve(s.size());
  Heartbeat heartbeat(poll);
  for (const double parameter : s) {
    const Derivatives at = evaluate_with_derivatives(block, parameter);
    kappa.push_back(norm(cross(at[1], at[2])) / vkm::pow(std::max(eps, norm(at[1])), 3.0));
    heartbeat.tick();
  }
  return kappa;
}

double length_exact(const FourierBlock& block, std::int64_t nsamples, const Poll& poll) {
  double sum = 0.0;
  over_period(block, std::max(nsamples, least_length_samples), poll,
              [&](const Derivatives& at, double ds) { sum += length_element(at, ds); });
  return sum;
}

double bending_energy_exact(const FourierBlock& block, std::int64_t nsamples, double eps, const Poll& poll) {
  double sum = 0.0;
  over_period(block, std::max(nsamples, least_bending_samples), poll,
              [&](const Derivatives& at, double ds) { sum += bending_element(at, eps, ds); });
  return sum;
}

std::vector<double> mode_energies(const FourierBlock& block) {
  const std::array columns{&block.a_x, &block.b_x, &block.a_y, &block.b_y, &block.a_z, &block.b_z};
  std::size_t n = 0;
  for (const auto* column : columns) n = std::max(n, column->size());
  std::vector<double> energies(n, 0.0);
  for (const auto* column : columns) {
    for (std::size_t i = 0; i < column->size(); ++i) energies[i] += (*column)[i] * (*column)[i];
  }
  return energies;
}

double min_self_distance_exactish(const FourierBlock& block, std::int64_t nsamples, std::int64_t exclude_window,
                                  const Poll& poll) {
  return min_self_distance_sampled(polygon_of(block, nsamples, poll), exclude_window, poll);
}

GeometricDescriptors describe_fourier_block(const FourierBlock& block, std::int64_t nsamples,
                                            std::int64_t exclude_window, const Poll& poll) {
  return describe_fourier_block(block, polygon_of(block, nsamples, poll), exclude_window, poll);
}

GeometricDescriptors describe_fourier_block(const FourierBlock& block, std::span<const Vec3> points,
                                            std::int64_t exclude_window, const Poll& poll) {
  constexpr double eps = 1e-12;
  const std::int64_t m = std::max(4 * static_cast<std::int64_t>(points.size()), least_descriptor_samples);
  GeometricDescriptors result;
  over_period(block, m, poll, [&](const Derivatives& at, double ds) {
    result.length += length_element(at, ds);
    result.bending_energy += bending_element(at, eps, ds);
  });
  result.min_self_distance = min_self_distance_sampled(points, exclude_window, poll);
  result.writhe = compute_writhe(points, poll);
  result.mode_energy = mode_energies(block);
  return result;
}

std::vector<double> compute_curvature(std::span<const Vec3> points, double eps) {
  const std::size_t n = points.size();
  std::vector<double> kappa(n, 0.0);
  if (n < 3) return kappa;
  for (std::size_t i = 0; i < n; ++i) {
    const Vec3& next = points[i + 1 < n ? i + 1 : 0];
    const Vec3& previous = points[i > 0 ? i - 1 : n - 1];
    const Vec3 d1 = (next - previous) / 2.0;
    const Vec3 d2 = next - 2.0 * points[i] + previous;
    const double v = norm(d1);
    kappa[i] = norm(cross(d1, d2)) / (v * v * v + eps);
  }
  return kappa;
}

}  // namespace vkm
