#pragma once

#include <cstddef>

namespace vkm {

/// Throws std::bad_alloc when `count` items of `bytes_each` would take more than half of the machine's memory.
/// The kernel grants such requests and kills the process once the pages are touched; asked first, the caller gets a
/// MemoryError instead.
void require_memory(std::size_t count, std::size_t bytes_each);

}  // namespace vkm
