#include "mass/zoo_evaluator.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "mass/canonical_constants.hpp"
#include "mass/master_dictionary.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

namespace {

constexpr double mass_quantum_kg = 1.0290437436843307e-54;
using stored::joule_per_mev;

double golden_mass_mev(const DictionaryEntry& entry) {
  const double golden = vkm::pow(canonical::phi, -2 * entry.genus_g);
  return entry.bridge_b * mass_quantum_kg * golden * canonical::c_squared / joule_per_mev;
}

}  // namespace

std::vector<ZooResult> ZooEvaluator::evaluate_all_golden_nls() {
  std::vector<ZooResult> results;
  results.reserve(master_dictionary.size());
  for (const auto& [identifier, entry] : master_dictionary)
    results.push_back({identifier, golden_mass_mev(entry), entry.bridge_b, entry.genus_g});
  return results;
}

double ZooEvaluator::get_entry_mass(std::string_view identifier) {
  const auto found = master_dictionary.find(identifier);
  return found == master_dictionary.end() ? -1.0 : golden_mass_mev(found->second);
}

}  // namespace vkm
