#include "core/text_file.hpp"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "core/memory.hpp"

namespace vkm {

namespace {

std::ifstream open_file(const std::string& path) {
  std::error_code error;
  if (path.find('\0') != std::string::npos || std::filesystem::is_directory(path, error)) return {};
  return std::ifstream(path, std::ios::binary);
}

}  // namespace

std::optional<std::string> read_file(const std::string& path) {
  std::ifstream file = open_file(path);
  if (!file.is_open()) return std::nullopt;
  std::string text;
  std::size_t size = 0;
  std::size_t piece = 1 << 16;
  while (file) {
    // Not every file has a size to ask for, and some have no end.
    require_memory(size + piece, 2);
    text.resize(size + piece);
    file.read(text.data() + size, static_cast<std::streamsize>(piece));
    size += static_cast<std::size_t>(file.gcount());
    piece = size;
    if (piece < (1 << 16)) piece = 1 << 16;
  }
  text.resize(size);
  return text;
}

bool is_readable_file(const std::string& path) { return open_file(path).is_open(); }

}  // namespace vkm
