#include "spectral/cycle_product.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/elementary.hpp"
#include "core/kernel.hpp"
#include "core/memory.hpp"
#include "spectral/lane_functions.hpp"

namespace vkm {

namespace {

using Complex = std::complex<double>;

constexpr std::size_t block_size = 256;  // points that share the constants of a factor
using Block = std::array<double, block_size>;

/// What a factor has in common for all t.
struct Factor {
  double length;   // L
  double radius;   // |z| = exp(-L / 2)
  double two_cos;  // 2 cos(m theta)

  /// Whether z is the radius times a cosine and a sine, and nothing made of it overflows.
  bool ordinary() const { return std::isfinite(length) && radius <= 1e150; }

  /// Whether D is 1 - 2 cos(m theta) z with a real part that rounds to 1: ln|D| is 0, and arg D the imaginary part.
  bool faint() const { return radius < 0x1p-60; }
};

Factor factor_of(std::int32_t nu, double theta, double ell, std::uint64_t m) {
  const double repetition = static_cast<double>(m);
  const double length = static_cast<double>(nu) * repetition * ell;
  return {length, vkm::exp(-0.5 * length), 2.0 * vkm::cos(repetition * theta)};
}

struct Determinant {
  double real;
  double imaginary;
};

/// D = 1 - 2 cos(m theta) z + z^2.
VKM_INLINE Determinant determinant(double two_cos, double zr, double zi) {
  return {(1.0 - two_cos * zr) + (zr * zr - zi * zi), -(two_cos * zi) + (zr * zi + zi * zr)};
}

/// D' / D by Smith's division, which neither overflows nor underflows before its result does.
VKM_INLINE Determinant log_derivative(const Factor& factor, double zr, double zi) {
  const Determinant den = determinant(factor.two_cos, zr, zi);
  const double linear = factor.two_cos * factor.length;
  const double square = 2.0 * factor.length;
  const double num_real = linear * zr - square * (zr * zr - zi * zi);
  const double num_imaginary = linear * zi - square * (zr * zi + zi * zr);
  const bool level = lane::magnitude(den.real) >= lane::magnitude(den.imaginary);
  const double large = level ? den.real : den.imaginary;
  const double small = level ? den.imaginary : den.real;
  const double ratio = small / large;
  const double scale = 1.0 / (large + small * ratio);
  const double a = level ? num_real : num_imaginary;
  const double b = level ? num_imaginary : num_real;
  const double turned = b - a * ratio;
  return {(a + b * ratio) * scale, (level ? turned : -turned) * scale};
}

Complex cycle_exponential(double t, double length) { return vkm::exp(Complex(-0.5 * length, -t * length)); }

// The kernels below leave NaN in lanes that they cannot reach and return how many there are; these lanes are then
// evaluated with the functions of the core, which also find the NaN that is meant.

VKM_KERNEL std::size_t ordinary_log_lanes(const double* t, std::size_t count, const Factor& factor, double* log_lanes,
                                          double* argument_lanes) {
  const Factor local = factor;
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const lane::SinCos turn = lane::sin_cos(-t[i] * local.length);
    const Determinant den = determinant(local.two_cos, local.radius * turn.cos, local.radius * turn.sin);
    const double value = 0.5 * lane::log(den.real * den.real + den.imaginary * den.imaginary);
    log_lanes[i] = value;
    argument_lanes[i] = lane::argument(den.imaginary, den.real);
    missed += value != value;
  }
  return missed;
}

VKM_KERNEL std::size_t faint_log_lanes(const double* t, std::size_t count, const Factor& factor, double* log_lanes,
                                       double* argument_lanes) {
  const Factor local = factor;
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const lane::SinCos turn = lane::sin_cos(-t[i] * local.length);
    const double value = 0.0 * turn.cos;
    log_lanes[i] = value;
    argument_lanes[i] = determinant(local.two_cos, local.radius * turn.cos, local.radius * turn.sin).imaginary;
    missed += value != value;
  }
  return missed;
}

VKM_KERNEL std::size_t derivative_lanes(const double* t, std::size_t count, const Factor& factor, double* real_lanes,
                                        double* imaginary_lanes) {
  const Factor local = factor;
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const lane::SinCos turn = lane::sin_cos(-t[i] * local.length);
    const Determinant term = log_derivative(local, local.radius * turn.cos, local.radius * turn.sin);
    real_lanes[i] = term.real;
    imaginary_lanes[i] = term.imaginary;
    missed += (term.real != term.real) | (term.imaginary != term.imaginary);
  }
  return missed;
}

VKM_KERNEL void subtract_weighted(double* sums, const double* terms, std::size_t count, double weight) {
  for (std::size_t i = 0; i < count; ++i) sums[i] -= weight * terms[i];
}

/// ln|D| and arg D of one factor for a block of points.
void log_terms(const double* t, std::size_t count, const Factor& factor, double* log_lanes, double* argument_lanes) {
  const bool ordinary = factor.ordinary();
  if (ordinary) {
    const auto lanes = factor.faint() ? faint_log_lanes : ordinary_log_lanes;
    if (lanes(t, count, factor, log_lanes, argument_lanes) == 0) return;
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (ordinary && !std::isnan(log_lanes[i])) continue;
    const Complex z = cycle_exponential(t[i], factor.length);
    const Determinant den = determinant(factor.two_cos, z.real(), z.imag());
    log_lanes[i] = vkm::log(vkm::hypot(den.real, den.imaginary));
    argument_lanes[i] = vkm::atan2(den.imaginary, den.real);
  }
}

/// D' / D of one factor for a block of points.
void derivative_terms(const double* t, std::size_t count, const Factor& factor, double* real_lanes,
                      double* imaginary_lanes) {
  const bool ordinary = factor.ordinary();
  if (ordinary && derivative_lanes(t, count, factor, real_lanes, imaginary_lanes) == 0) return;
  for (std::size_t i = 0; i < count; ++i) {
    if (ordinary && !std::isnan(real_lanes[i]) && !std::isnan(imaginary_lanes[i])) continue;
    const Complex z = cycle_exponential(t[i], factor.length);
    const Determinant den = determinant(factor.two_cos, z.real(), z.imag());
    Determinant term = {lane::nan, lane::nan};
    if (den.real == 0.0 && den.imaginary == 0.0) {
      const double linear = factor.two_cos * factor.length;
      const double square = 2.0 * factor.length;
      term.real = (linear * z.real() - square * (z.real() * z.real() - z.imag() * z.imag())) / 0.0;
      term.imaginary = (linear * z.imag() - square * (2.0 * z.real() * z.imag())) / 0.0;
    } else if (std::isfinite(den.real) && std::isfinite(den.imaginary)) {
      term = log_derivative(factor, z.real(), z.imag());
    }
    real_lanes[i] = term.real;
    imaginary_lanes[i] = term.imaginary;
  }
}

/// Heartbeat over terms: a clock read for every few thousand lanes.
class LaneBeat {
 public:
  explicit LaneBeat(const Poll& poll) : heartbeat_(poll) {}

  void tick(std::size_t lanes) {
    done_ += lanes + 8;  // a factor's constants cost about as much as eight lanes
    if (done_ < 4096) return;
    done_ = 0;
    heartbeat_.tick();
  }

 private:
  Heartbeat heartbeat_;
  std::size_t done_ = 0;
};

double weight_of(const Sectors& sectors, std::size_t j) { return sectors.weights.empty() ? 1.0 : sectors.weights[j]; }

}  // namespace

void log_cycle_products(const Sectors& sectors, double ell, std::span<const std::uint64_t> truncations,
                        std::span<const double> t, const LogPrefactor& prefactor, const LogSink& sink,
                        const Poll& poll) {
  if (truncations.empty()) return;
  // Rows of equal truncation share their sums; the greatest truncations come first.
  std::vector<std::uint64_t> distinct(truncations.begin(), truncations.end());
  std::sort(distinct.begin(), distinct.end(), std::greater<>());
  distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
  std::vector<std::size_t> row_sums;
  for (const std::uint64_t truncation : truncations) {
    const auto place = std::lower_bound(distinct.begin(), distinct.end(), truncation, std::greater<>());
    row_sums.push_back(static_cast<std::size_t>(place - distinct.begin()));
  }

  require_memory(distinct.size(), 2 * sizeof(Block));
  std::vector<Block> real(distinct.size());
  std::vector<Block> imaginary(distinct.size());
  Block log_lanes;
  Block argument_lanes;
  LaneBeat beat(poll);
  for (std::size_t first = 0; first < t.size(); first += block_size) {
    const std::size_t count = std::min(block_size, t.size() - first);
    for (std::size_t i = 0; i < count; ++i) {
      const Complex start = prefactor ? prefactor(t[first + i]) : Complex(0.0, 0.0);
      real[0][i] = start.real();
      imaginary[0][i] = start.imag();
    }
    std::fill(real.begin() + 1, real.end(), real[0]);
    std::fill(imaginary.begin() + 1, imaginary.end(), imaginary[0]);

    for (std::size_t j = 0; j < sectors.nu.size(); ++j) {
      const double weight = weight_of(sectors, j);
      std::size_t active = distinct.size();  // rows that reach repetition m
      for (std::uint64_t m = 1;; ++m) {
        while (active > 0 && distinct[active - 1] < m) --active;
        if (active == 0) break;
        const Factor factor = factor_of(sectors.nu[j], sectors.theta[j], ell, m);
        log_terms(t.data() + first, count, factor, log_lanes.data(), argument_lanes.data());
        for (std::size_t row = 0; row < active; ++row) {
          subtract_weighted(real[row].data(), log_lanes.data(), count, weight);
          subtract_weighted(imaginary[row].data(), argument_lanes.data(), count, weight);
        }
        beat.tick(count);
      }
    }
    for (std::size_t row = 0; row < truncations.size(); ++row) {
      sink(row, first, {real[row_sums[row]].data(), count}, {imaginary[row_sums[row]].data(), count});
    }
  }
}

std::vector<Complex> cycle_product_log_derivative(const Sectors& sectors, double ell, std::uint64_t truncation,
                                                  std::span<const double> t, const Poll& poll) {
  std::vector<Complex> result(t.size());
  Block real_lanes;
  Block imaginary_lanes;
  LaneBeat beat(poll);
  for (std::size_t first = 0; first < t.size(); first += block_size) {
    const std::size_t count = std::min(block_size, t.size() - first);
    Block real{};
    Block imaginary{};
    for (std::size_t j = 0; j < sectors.nu.size(); ++j) {
      const double weight = weight_of(sectors, j);
      for (std::uint64_t m = 0; m < truncation; ++m) {
        const Factor factor = factor_of(sectors.nu[j], sectors.theta[j], ell, m + 1);
        derivative_terms(t.data() + first, count, factor, real_lanes.data(), imaginary_lanes.data());
        subtract_weighted(real.data(), real_lanes.data(), count, weight);
        subtract_weighted(imaginary.data(), imaginary_lanes.data(), count, weight);
        beat.tick(count);
      }
    }
    for (std::size_t i = 0; i < count; ++i) result[first + i] = {real[i], imaginary[i]};
  }
  return result;
}

}  // namespace vkm
