#pragma once

/// Where a knot or an ideal block is found: in the embedded tables first, on disk after them.
///
/// The environment variables VKM_RESOURCE_DIR, VKM_KNOT_DATA_DIR, VKM_IDEAL_DATABASE and VKM_IDEAL_TXT are read at
/// every call; relative paths start at the working directory.

#include <string>
#include <string_view>

#include "core/poll.hpp"

namespace vkm {

/// Whether an embedded text may serve as a source of ideal blocks: "ideal*.txt", and nothing of the knotplot family,
/// so that the geometry of an outside tool cannot pass as the catalogue's.
bool is_canonical_ideal_name(std::string_view name);

/// Text of the AB block with this id; empty if no source holds it.
std::string find_ideal_ab_block_by_id(const std::string& ab_id, const Poll& poll = {});

/// Text of the block with this id and tag; an empty tag tries AB, HT and TL at each source. Empty if not found.
std::string find_ideal_block_by_id(const std::string& block_id, const std::string& tag, const Poll& poll = {});

/// Path of "knot.<knot_id>.fseries", searched under `base_dir` if that is not empty, under the directories of the
/// environment, and in the usual places; empty if not found.
std::string resolve_knot_fseries_path(const std::string& knot_id, const std::string& base_dir);

/// The whole file; empty if it cannot be opened.
std::string read_text_file(const std::string& path, const Poll& poll = {});

}  // namespace vkm
