#pragma once

#include <optional>
#include <string>

#include "core/poll.hpp"

namespace vkm {

/// The bytes of a file; nothing if it cannot be opened for reading (a directory cannot). Throws std::bad_alloc for a
/// file that has no end. `poll` is called while the system waits, too (for the writer of a pipe).
std::optional<std::string> read_file(const std::string& path, const Poll& poll = {});

/// Whether the file can be opened for reading.
bool is_readable_file(const std::string& path);

}  // namespace vkm
