#include "evidence/points_hash.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <limits>

#include "evidence/sha256.hpp"

namespace vkm {

std::string sha256_hex_of_points(std::span<const Vec3> points, const Poll& poll) {
  static_assert(std::numeric_limits<double>::is_iec559 && sizeof(Vec3) == 24);
  Heartbeat heartbeat(poll);
  Sha256 hash;
  if constexpr (std::endian::native == std::endian::little) {
    hash.update(std::as_bytes(points), heartbeat);
  } else {
    for (const Vec3& point : points) {
      for (const double x : point) {
        auto bytes = std::bit_cast<std::array<std::byte, sizeof x>>(x);
        std::ranges::reverse(bytes);
        hash.update(bytes);
      }
      heartbeat.tick();
    }
  }
  return hash.finish_hex();
}

}  // namespace vkm
