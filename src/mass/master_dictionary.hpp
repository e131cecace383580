#pragma once

/// The Master Dictionary: knots and links of the theory with the numbers that their golden masses take.
///
/// b bridge number and g genus enter the mass (mass/zoo_evaluator.hpp). The count of components and the braid word are
/// reference data: generator sigma_i is i and its inverse -i. The values are the theory's own assignments and not all
/// of them those of the knot tables; no rule derives or corrects them.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vkm {

struct DictionaryEntry {
  double bridge_b = 0.0;
  std::int32_t genus_g = 0;
  std::int32_t components = 0;
  std::vector<std::int32_t> braid_word;
};

/// By identifier, in the order of the identifiers' bytes.
using MasterDictionary = std::map<std::string, DictionaryEntry, std::less<>>;

/// Filled when the library is loaded, never changed.
extern const MasterDictionary master_dictionary;

}  // namespace vkm
