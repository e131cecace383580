#pragma once

/// Radar times and Lorentz boosts. An event is (t, x, y, z), c the speed of light. Any consistent units.
///
/// Radar time and distance of an event, from the times at which a signal to it leaves and comes back: (t1 + t2) / 2 and
/// c (t2 - t1) / 2 (Einstein 1905).

#include <array>

#include "core/vec3.hpp"

namespace vkm {

using Event = std::array<double, 4>;

struct RadarInterval {
  double emission_time = 0.0;   ///< as given
  double reception_time = 0.0;  ///< as given
  double radar_time = 0.0;      ///< NaN unless causal
  double radar_distance = 0.0;  ///< NaN unless causal
  bool causal = false;          ///< received no earlier than emitted
};

struct LorentzMapResult {
  Event transformed_event{};
  double gamma = 1.0;
  double invariant_residual = 0.0;  ///< relative change of the interval to the origin
};

struct OperationalSpacetimeAPI {
  /// Not causal unless c is positive and both times are finite.
  static RadarInterval radar_interval(double emission_time, double reception_time, double c = 1.0);
  /// Along x.
  static LorentzMapResult lorentz_boost_x(const Event& event, double velocity, double c = 1.0);
  /// Every number of the result is NaN unless c is positive, the speed below c and all components are finite.
  static LorentzMapResult lorentz_boost(const Event& event, const Vec3& velocity, double c = 1.0);
  /// c^2 dt^2 - |dx|^2 of two events.
  static double minkowski_interval2(const Event& a, const Event& b, double c = 1.0);
};

}  // namespace vkm
