#pragma once

/// Indexing of closed polygons by vertex numbers that may lie outside 0..n-1.

#include <cstdint>

namespace vkm {

inline constexpr std::uint64_t vertex_at(std::uint64_t k, std::uint64_t n) { return k % n; }

inline constexpr std::uint64_t next_vertex(std::uint64_t k, std::uint64_t n) { return (k + 1) % n; }

/// k - 1 is taken as signed before it is reduced.
inline constexpr std::uint64_t previous_vertex(std::uint64_t k, std::uint64_t n) {
  const auto remainder = static_cast<std::int64_t>(k - 1) % static_cast<std::int64_t>(n);
  return static_cast<std::uint64_t>(remainder < 0 ? remainder + static_cast<std::int64_t>(n) : remainder);
}

}  // namespace vkm
