#include "mass/particle_evaluator.hpp"

#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "knot/ideal_light_reader.hpp"
#include "knot/resource_search.hpp"
#include "mass/canonical_constants.hpp"
#include "mass/relaxation.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

namespace {

constexpr double line_tension = 14.5267535;  // J/m, half of F_max
using stored::joule_per_mev;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// Whether the whole text matches ^(\d+)(:\d+)+$.
bool is_ideal_ab_id(std::string_view id) {
  std::size_t groups = 0;
  std::size_t at = 0;
  while (true) {
    const std::size_t begin = at;
    while (at < id.size() && is_digit(id[at])) ++at;
    if (at == begin) return false;
    ++groups;
    if (at == id.size()) return groups >= 2;
    if (id[at++] != ':') return false;
  }
}

}  // namespace

ParticleEvaluator::ParticleEvaluator(const std::string& knot_ab_id, std::int32_t resolution,
                                     bool allow_non_canonical_geometry_for_research_only, const Poll& poll) {
  if (!allow_non_canonical_geometry_for_research_only && !is_ideal_ab_id(knot_ab_id)) {
    throw std::runtime_error(
        "[!] VKMcore: ParticleEvaluator requires ideal.txt AB id (n:m:k). Non-canon geometry refs (KnotPlot/Tarnow) "
        "are blocked for CanonMass. Set allow_non_canonical_geometry_for_research_only=True for research only. Got: " +
        knot_ab_id);
  }
  const std::string text = find_ideal_ab_block_by_id(knot_ab_id, poll);
  if (text.empty()) {
    throw std::runtime_error("[!] VKMcore: Knoop ID " + knot_ab_id + " niet gevonden in ideal.txt / ideal catalog.");
  }
  filaments_ = read_ideal_filaments(text, knot_ab_id, resolution, poll);
  if (filaments_.empty()) {
    throw std::runtime_error("[!] VKMcore: Knoop ID " + knot_ab_id + " niet gevonden in database.");
  }
}

ParticleEvaluator::ParticleEvaluator(std::vector<std::vector<Vec3>> input_filaments)
    : filaments_(std::move(input_filaments)) {}

void ParticleEvaluator::relax(std::int32_t iterations, double timestep, const Poll& poll) {
  const auto before = filaments_;  // what a poll may replace
  filaments_ = relaxed(before, iterations, timestep, poll);
}

double ParticleEvaluator::get_dimless_ropelength(double stretch_lambda) const {
  if (filaments_.empty()) return 0.0;
  double length = 0.0;
  for (const auto& points : filaments_) {
    for (std::size_t i = 0; i < points.size(); ++i) length += norm(points[(i + 1) % points.size()] - points[i]);
  }
  return (length / electron_radius) / (stretch_lambda * stretch_lambda);
}

double ParticleEvaluator::get_physical_length_m() const { return get_dimless_ropelength() * electron_radius; }

double ParticleEvaluator::compute_core_energy_J() const { return get_physical_length_m() * line_tension; }

double ParticleEvaluator::compute_tail_energy_J(bool include_tail, const Poll& poll) const {
  return include_tail ? compute_tail_energy_surrogate_J(poll) : 0.0;
}

double ParticleEvaluator::get_mass_mev_ab_initio(bool include_tail, const Poll& poll) const {
  return (compute_tail_energy_J(include_tail, poll) + compute_core_energy_J()) / joule_per_mev;
}

double ParticleEvaluator::get_core_mass_mev_only() const { return compute_core_energy_J() / joule_per_mev; }

double ParticleEvaluator::compute_tail_energy_surrogate_J(const Poll& poll) const {
  return tail_surrogate_energy(filaments_, tail_, poll);
}

RelativisticMetrics ParticleEvaluator::compute_relativistic_metrics(double circulation, const Poll& poll) const {
  if (filaments_.empty()) return {};
  return relativistic_metrics(filaments_.front(), circulation, poll);
}

void ParticleEvaluator::print_canonical_derivation() {
  const std::string rule(66, '=');
  std::cout << '\n'
            << rule << "\nVKM CANON: DYNAMIC CLOSURE OF CORE DENSITY\n"
            << rule
            << "\nThe effective mass density of the vortex core (rho_core) is strictly\n"
               "derived as a dynamic closure relation. The maximum tangential tension\n"
               "(F_max) perfectly balances the hydrodynamic inertia of the fluid.\n\n"
               "Formula: rho_core = F_max / (pi * r_c^2 * ||v_swirl||^2)\n\n"
               "[*] Core Primitives:\n";
  // The stream keeps the format that is set here.
  std::cout << "    F_max   = " << std::defaultfloat << std::setprecision(8) << stored::maximal_force << " N\n";
  std::cout << "    r_c     = " << std::scientific << std::setprecision(8) << stored::core_radius << " m\n";
  std::cout << "    v_swirl = " << canonical::default_v_swirl << " m/s\n\n[*] Derived Invariant Densities:\n";
  std::cout << "    rho_core = " << std::setprecision(16) << stored::core_density << " kg/m^3\n";
  std::cout << "    rho_E    = " << 3.49924561231878e35 << " J/m^3\n" << rule << "\n\n" << std::flush;
}

}  // namespace vkm
