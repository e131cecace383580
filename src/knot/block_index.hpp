#pragma once

/// Where the blocks of the embedded ideal databases lie, by id: written by the build, so that a lookup reads one block
/// and not megabytes of text.

#include <cstdint>
#include <span>
#include <string_view>

#include "knot/catalogue.hpp"

namespace vkm {

struct BlockPlace {
  std::string_view id;
  std::uint32_t begin;  ///< of the element in its text, in bytes
  std::uint32_t size;   ///< 0 for an element without an end
};

/// The blocks of one embedded text and tag in the order of their ids; of equal ids the first that the walk meets.
struct BlockIndex {
  std::string_view key;  ///< of the text
  std::string_view tag;  ///< AB, HT or TL
  std::span<const BlockPlace> places;
};

/// Of every embedded text and each of the three tags that it holds.
std::span<const BlockIndex> embedded_block_indices();

/// What find_block_text gives for an embedded text.
std::string_view find_embedded_block(const EmbeddedText& entry, std::string_view id, std::string_view tag);

}  // namespace vkm
