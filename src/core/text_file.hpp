#pragma once

#include <optional>
#include <string>

namespace vkm {

/// The bytes of a file; nothing if it cannot be opened for reading (a directory cannot).
std::optional<std::string> read_file(const std::string& path);

/// Whether the file can be opened for reading.
bool is_readable_file(const std::string& path);

}  // namespace vkm
