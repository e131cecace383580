#include "knot/catalogue.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "knot/block_index.hpp"

namespace vkm {

const EmbeddedText* find_embedded(std::span<const EmbeddedText> table, std::string_view key) {
  const auto found = std::lower_bound(table.begin(), table.end(), key,
                                      [](const EmbeddedText& entry, auto wanted) { return entry.key < wanted; });
  return found != table.end() && found->key == key ? &*found : nullptr;
}

std::string_view base_name(std::string_view path) { return path.substr(path.find_last_of("/\\") + 1); }

FourierBlock load_embedded_knot_block(const std::string& knot_id) {
  const EmbeddedText* entry = find_embedded(embedded_knot_files(), knot_id);
  if (entry == nullptr) throw std::runtime_error("Embedded knot id not found: " + knot_id);
  std::vector<FourierBlock> blocks = parse_fseries_from_string(entry->text);
  const int largest = index_of_largest_block(blocks);
  if (largest < 0) throw std::runtime_error("No Fourier block found in embedded knot: " + knot_id);
  return std::move(blocks[static_cast<std::size_t>(largest)]);
}

const EmbeddedText& embedded_ideal_entry(const std::string& name) {
  const auto table = embedded_ideal_files();
  if (const EmbeddedText* entry = find_embedded(table, name)) return *entry;
  for (const EmbeddedText& entry : table) {
    if (base_name(entry.key) == name) return entry;
  }
  throw std::runtime_error("Embedded ideal text not found: " + name);
}

std::string_view load_embedded_ideal_text(const std::string& name) { return embedded_ideal_entry(name).text; }

std::vector<IdealABBlock> parse_embedded_ideal_txt(const std::string& name) {
  return parse_ideal_txt_from_string(load_embedded_ideal_text(name));
}

IdealABBlock parse_embedded_ideal_ab_by_id(const std::string& ab_id, const std::string& name) {
  return parse_only_ideal_ab(find_embedded_block(embedded_ideal_entry(name), ab_id, "AB"), ab_id);
}

}  // namespace vkm
