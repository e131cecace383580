#pragma once

/// The walk over the elements `<tag ...>...</tag>` of an ideal database by which a block is found, as text.
///
/// A head runs from "<tag", whatever follows that prefix, through the next ">". The walk goes on behind a head, not
/// behind its element.

#include <string>
#include <string_view>

namespace vkm {

/// Calls visit(begin of the head, the head) for every head until it returns true.
template <class Visit>
void walk_heads(std::string_view text, std::string_view tag, const Visit& visit) {
  const std::string opening = std::string("<").append(tag);
  for (std::size_t at = 0; (at = text.find(opening, at)) != std::string_view::npos;) {
    const std::size_t end = text.find('>', at);
    if (end == std::string_view::npos) return;
    if (visit(at, text.substr(at, end + 1 - at))) return;
    at = end + 1;
  }
}

/// The element of a head, both tags included; empty if it has no end.
inline std::string_view element_of_head(std::string_view text, std::string_view tag, std::size_t begin,
                                        std::string_view head) {
  const std::string closing = std::string("</").append(tag).append(">");
  const std::size_t end = text.find(closing, begin + head.size() - 1);
  return end == std::string_view::npos ? std::string_view{} : text.substr(begin, end + closing.size() - begin);
}

}  // namespace vkm
