#pragma once

/// Curve evaluation for the dynamics code: a Fourier series whose first row is a true constant, with its tangents, and
/// the writhe of points with given tangents.

#include <array>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm::KnotDynamics {

struct FourierResult {
  std::vector<Vec3> positions;
  std::vector<Vec3> tangents;  // derivatives by the parameter, not normalised
};

/// Row j holds a_x b_x a_y b_y a_z b_z of harmonic j, counted from 0. Everywhere else in the library the first row of
/// a series is harmonic 1 (fourier_series.hpp); both conventions are meant.
FourierResult evaluate_fourier_series(std::span<const std::array<double, 6>> rows, std::span<const double> t,
                                      const Poll& poll = {});

/// (ds^2 / 4 pi) sum over i != j of ((T_i x T_j) . d) / |d|^3, d = r_i - r_j, ds = 2 pi / N: the Gauss integral of a
/// closed curve by its parameter, T = dr/ds. Pairs nearer than 1e-6 are left out. 0 for no points;
/// std::invalid_argument when there are fewer tangents than points.
double writhe_gauss_curve(std::span<const Vec3> r, std::span<const Vec3> T, const Poll& poll = {});

}  // namespace vkm::KnotDynamics
