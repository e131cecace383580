#include "evidence/operational_spacetime.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

namespace {

double interval2(double t, const Vec3& x, double c) { return c * c * (t * t) - norm2(x); }

}  // namespace

RadarInterval OperationalSpacetimeAPI::radar_interval(double emission_time, double reception_time, double c) {
  RadarInterval result{emission_time, reception_time, quiet_nan, quiet_nan, false};
  if (!(c > 0.0) || !all_finite({emission_time, reception_time})) return result;
  result.causal = reception_time >= emission_time;
  if (result.causal) {
    result.radar_time = (emission_time + reception_time) * 0.5;
    result.radar_distance = (reception_time - emission_time) * (c * 0.5);
  }
  return result;
}

LorentzMapResult OperationalSpacetimeAPI::lorentz_boost_x(const Event& event, double velocity, double c) {
  return lorentz_boost(event, {velocity, 0.0, 0.0}, c);
}

LorentzMapResult OperationalSpacetimeAPI::lorentz_boost(const Event& event, const Vec3& velocity, double c) {
  LorentzMapResult result;
  const double speed = norm(velocity);
  if (!(c > 0.0) || !std::isfinite(speed) || !(speed < c) || !all_finite(event)) {
    result.transformed_event.fill(quiet_nan);
    result.gamma = quiet_nan;
    result.invariant_residual = quiet_nan;
    return result;
  }
  if (speed == 0.0) {
    result.transformed_event = event;
    return result;
  }

  const double beta = speed / c;
  const double gamma = 1.0 / std::sqrt(1.0 - beta * beta);
  const Vec3 n = velocity / speed;
  const double t = event[0];
  const Vec3 x{event[1], event[2], event[3]};
  const double along = dot(n, x);
  const double boosted_t = (t - (along * beta / c)) * gamma;
  const double boosted_along = (along - t * speed) * gamma;
  const Vec3 boosted = x - along * n + boosted_along * n;

  result.transformed_event = {boosted_t, boosted[0], boosted[1], boosted[2]};
  result.gamma = gamma;
  const double before = interval2(t, x, c);
  result.invariant_residual =
      std::fabs(interval2(boosted_t, boosted, c) - before) / (std::max(vkm::pow(c, 4.0), std::fabs(before)) + 1e-300);
  return result;
}

double OperationalSpacetimeAPI::minkowski_interval2(const Event& a, const Event& b, double c) {
  return interval2(a[0] - b[0], {a[1] - b[1], a[2] - b[2], a[3] - b[3]}, c);
}

}  // namespace vkm
