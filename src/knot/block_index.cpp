#include "knot/block_index.hpp"

#include <algorithm>

namespace vkm {

std::string_view find_embedded_block(const EmbeddedText& entry, std::string_view id, std::string_view tag) {
  // A quote in the id would match across attributes, and other tags are not indexed: the walk knows what they give.
  if (id.find('"') != std::string_view::npos || (tag != "AB" && tag != "HT" && tag != "TL")) {
    return find_block_text(entry.text, id, tag);
  }
  for (const BlockIndex& index : embedded_block_indices()) {
    if (index.key != entry.key || index.tag != tag) continue;
    const auto found = std::lower_bound(index.places.begin(), index.places.end(), id,
                                        [](const BlockPlace& place, auto wanted) { return place.id < wanted; });
    if (found == index.places.end() || found->id != id) return {};
    return entry.text.substr(found->begin, found->size);
  }
  return {};
}

}  // namespace vkm
