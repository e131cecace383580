#include "core/memory.hpp"

#include <cstdint>
#include <new>

#if defined(__unix__) || defined(__APPLE__)
#include <unistd.h>
#endif

namespace vkm {

namespace {

std::size_t half_of_memory() {
#if defined(__unix__) || defined(__APPLE__)
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long page_bytes = sysconf(_SC_PAGESIZE);
  if (pages > 0 && page_bytes > 0) return static_cast<std::size_t>(pages) / 2 * static_cast<std::size_t>(page_bytes);
#endif
  return SIZE_MAX / 4;
}

}  // namespace

void require_memory(std::size_t count, std::size_t bytes_each) {
  static const std::size_t limit = half_of_memory();
  if (bytes_each != 0 && count > limit / bytes_each) throw std::bad_alloc();
}

}  // namespace vkm
