#pragma once

/// Steps of filaments under their velocity: the classical fourth-order scheme and an estimate of its time step.

#include <functional>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "filament/motion/regularized_velocity.hpp"

namespace vkm {

struct FilamentStep {
  std::vector<Filament> filaments;
  double maximum_stage_speed = 0.0;  // m/s, over the four stages
};

/// How fast filaments move.
using VelocityLaw = std::function<FilamentVelocity(std::span<const Filament>)>;

/// One classical Runge-Kutta step of `dt` seconds over all positions at once. Filaments that do not move stay as they
/// are, bit by bit.
FilamentStep rk4_step(std::span<const Filament> filaments, double dt, const VelocityLaw& law);

/// The same by filament_velocity.
FilamentStep rk4_step(std::span<const Filament> filaments, double dt, const FilamentOptions& options,
                      const Poll& poll = {});

/// Time in which the fastest vertex covers `cfl` of the shortest edge that moves, in s; at least 1e-6, and 1e-6 where
/// no edge of finite, positive length moves.
double cfl_time_step(std::span<const Filament> filaments, const VelocityLaw& law, double cfl);

/// The same by filament_velocity.
double cfl_time_step(std::span<const Filament> filaments, const FilamentOptions& options, double cfl = 0.5,
                     const Poll& poll = {});

}  // namespace vkm
