#pragma once

#include <cstddef>

namespace vkm {

/// Throws std::bad_alloc when `count` items of `bytes_each` would take more than half of the memory that the process
/// may have (the machine's, its control groups', its resource limits'), or more than is free of it at the moment. The
/// kernel grants such requests and kills the process once the pages are touched; asked first, the caller gets a
/// MemoryError instead. Ask before every allocation whose size a caller chooses.
void require_memory(std::size_t count, std::size_t bytes_each);

}  // namespace vkm
