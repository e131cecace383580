#pragma once

/// The catalogue inside the library: the texts of `src/knot_fseries/` and `resources/`, put there by the build.
///
/// Both tables lie in read-only data, once in memory however many ask; nothing is copied or touched before a lookup.
/// Keys are in the order of their bytes.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "knot/fourier_series.hpp"
#include "knot/ideal_database.hpp"

namespace vkm {

struct EmbeddedText {
  std::string_view key;
  std::string_view text;
};

/// `.fseries` texts by knot identifier, as "3_1".
std::span<const EmbeddedText> embedded_knot_files();

/// Texts of `resources/` by path, as "ideal/ideal.txt".
std::span<const EmbeddedText> embedded_ideal_files();

/// The entry with exactly this key, or null.
const EmbeddedText* find_embedded(std::span<const EmbeddedText> table, std::string_view key);

/// What stands behind the last slash or backslash.
std::string_view base_name(std::string_view path);

/// The largest block of an embedded knot; std::runtime_error if the key is unknown or its text holds no block.
FourierBlock load_embedded_knot_block(const std::string& knot_id);

/// The entry of an embedded ideal text by key or else, first in key order, by base name; std::runtime_error if none.
const EmbeddedText& embedded_ideal_entry(const std::string& name);

/// The text of that entry.
std::string_view load_embedded_ideal_text(const std::string& name);

/// The AB blocks of an embedded ideal text.
std::vector<IdealABBlock> parse_embedded_ideal_txt(const std::string& name);

/// One AB block of an embedded ideal text.
IdealABBlock parse_embedded_ideal_ab_by_id(const std::string& ab_id, const std::string& name);

}  // namespace vkm
