#pragma once

/// Tightening by a sequence of quadratic programs: each accepted step lowers the merit
///
///     length + 1.5 x largest multiplier x (sum of the rows' violations),
///
/// an exact penalty. The bound of the moves is a trust region. It never exceeds 0.26 of the least distance of strands:
/// no vertex then moves by half of that distance (0.26 sqrt 3 < 0.5), so that no strand passes through another.

#include "core/poll.hpp"
#include "ideal/contacts.hpp"
#include "ideal/rope.hpp"

namespace vkm::ideal {

/// Least part of the curve, in tube radii, between edges that are kept from passing through each other.
inline constexpr double strand_gap = 1.0;

struct SettleOptions {
  double radius = 1.0;      ///< least MinRad asked for
  double distance = 2.0;    ///< least distance of strangers asked for
  double tolerance = 1e-4;  ///< of the programs
  double violation = 0.02;  ///< largest that may remain, in tube radii
  double decrease = 1e-4;   ///< settled when a step promises a smaller part of the length
  double bound = 0.3;       ///< of the first step's moves
  double bound_most = 0.6;
  /// Of a level that is to come to rest: steps that the rows' curvature spoils are corrected, and where the programs
  /// run out the tightest state is returned, not the last.
  bool fine = false;
  double stiffness = 0.0;  ///< of the programs, in units of the tension times the radius squared
  int programs = 100;
  double shortening = 0.0;  ///< stop below this part of the first length
};

struct Settled {
  Rope rope;
  double bound = 0.0;      ///< at which the next step would begin
  double violation = 0.0;  ///< largest, in tube radii
  int programs = 0;
  bool settled = false;
};

Settled settle(Rope rope, const SettleOptions& options, Heartbeat& heartbeat);

/// Largest shortfall of the tube, in tube radii.
double violation(const Rope& rope, const Cycle& cycle, double radius, double distance);

}  // namespace vkm::ideal
