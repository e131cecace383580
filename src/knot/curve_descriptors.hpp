#pragma once

/// The geometry of a Fourier curve: exact curvature, length and bending energy, energy by mode, self-distance and
/// writhe, and the discrete curvature of a sampled closed curve.
///
/// r', r'' and r''' are the derivatives by the parameter s. Integrals are the plain rectangle rule on a uniform grid of
/// the period, which converges spectrally for a periodic function; the least sample counts only keep a careless
/// argument from giving nonsense. Lengths are in the units of the coefficients. No function raises on a degenerate
/// curve: the guards give finite values.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "knot/fourier_series.hpp"

namespace vkm {

/// What describe_fourier_block gathers.
struct GeometricDescriptors {
  double length = 0.0;              // curve length
  double bending_energy = 0.0;      // integral of curvature squared over arc length, 1 / length
  double min_self_distance = 0.0;   // least distance between samples that are not neighbours
  double writhe = 0.0;              // compute_writhe of the samples, read as an open list
  std::vector<double> mode_energy;  // mode_energies of the block, length squared
};

/// The points of a block at s = k 2 pi / nsamples, k = 0 .. nsamples - 1: a closed polygon, its first point not
/// repeated. None for nsamples below 1.
std::vector<Vec3> sample_period(const FourierBlock& block, std::int64_t nsamples, const Poll& poll = {});

/// kappa = |r' x r''| / max(eps, |r'|)^3 at each parameter: a stopped point gives a finite value.
std::vector<double> curvature_exact(const FourierBlock& block, std::span<const double> s, double eps = 1e-12,
                                    const Poll& poll = {});

/// Integral of |r'| over the period, with max(16, nsamples) samples.
double length_exact(const FourierBlock& block, std::int64_t nsamples = 4096, const Poll& poll = {});

/// Integral of kappa^2 v over the period, v = max(eps, |r'|), with max(32, nsamples) samples. The clamped speed stands
/// in the arc-length weight too.
double bending_energy_exact(const FourierBlock& block, std::int64_t nsamples = 4096, double eps = 1e-12,
                            const Poll& poll = {});

/// The squared amplitudes of each row, added up; entries missing in a shorter vector count as 0. There is no weight by
/// harmonic.
std::vector<double> mode_energies(const FourierBlock& block);

/// min_self_distance_sampled of max(64, nsamples) uniform samples of the period.
double min_self_distance_exactish(const FourierBlock& block, std::int64_t nsamples = 2048,
                                  std::int64_t exclude_window = 4, const Poll& poll = {});

/// All descriptors: self-distance and writhe from n = max(64, nsamples) samples, the integrals on the grid of 4 n.
GeometricDescriptors describe_fourier_block(const FourierBlock& block, std::int64_t nsamples = 2048,
                                            std::int64_t exclude_window = 4, const Poll& poll = {});

/// The same from the block's sample_period, of at least 64 points, for a caller who has further use for the points.
GeometricDescriptors describe_fourier_block(const FourierBlock& block, std::span<const Vec3> points,
                                            std::int64_t exclude_window, const Poll& poll = {});

/// |d1 x d2| / (|d1|^3 + eps) with central differences on the closed curve. Here eps is added; in curvature_exact it
/// clamps the speed. Zeros for fewer than three points.
std::vector<double> compute_curvature(std::span<const Vec3> points, double eps = 1e-8);

}  // namespace vkm
