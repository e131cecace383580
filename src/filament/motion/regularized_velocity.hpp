#pragma once

/// Velocity of closed vortex filaments: local induction with a logarithmic core model, plus the Biot-Savart sum over
/// the edges of all sources.
///
/// At vertex i of a filament of circulation Gamma, with the edges a (arriving) and b (leaving) of lengths la and lb,
///
///   v = Gamma / (4 pi) (log(2 sqrt(la lb) / a_eff) + C) kappa b^  +  sum over edges Gs / (4 pi) e x R / |R|^3,
///
/// kappa b^ = 2 a x b / (la lb (la + lb)) being the discrete curvature binormal. The local term stands for the two
/// edges at the vertex, which the sum leaves out (Arms and Hama 1965; Schwarz, Phys. Rev. B 31 (1985) 5782). Between
/// different filaments |R|^2 is softened by a_sim^2. SI units.

#include <limits>
#include <span>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

struct Filament {
  std::string id;
  std::string carrier = "A";  // a label that no computation reads
  std::vector<Vec3> points;   // m, vertices of a closed polygon
  double circulation = 1.0;   // m^2/s
  bool moving = true;
  bool source = true;  // induces velocity on others and, beyond the local term, on itself
  bool ghost = false;  // neither moves nor induces, and has no velocity

  bool moves() const { return moving && !ghost; }
  bool induces() const { return source && !ghost; }
};

struct FilamentOptions {
  bool lia_only = false;       // local induction only
  double a_sim = 0.0;          // m, softening between different filaments
  double core_delta = 0.0;     // the core radius is scaled by exp(core_delta)
  double lia_constant = 0.25;  // added to the logarithm
  double core_radius = 0.01;   // m, at least 1e-30
};

struct FilamentVelocity {
  std::vector<std::vector<Vec3>> velocity;  // m/s, by filament and vertex; zeros for ghosts
  double maximum_speed = 0.0;               // m/s
};

/// a_eff, in m.
double effective_core(const FilamentOptions& options);

/// The local term at a vertex, of its arriving edge and its leaving one; strength is Gamma / (4 pi).
Vec3 local_induction(const Vec3& a, const Vec3& b, double core, double constant, double strength);

/// The same bits for any number of threads.
FilamentVelocity filament_velocity(std::span<const Filament> filaments, const FilamentOptions& options,
                                   const Poll& poll = {}, int threads = 1);

}  // namespace vkm
