#pragma once

/// SHA-256 (FIPS 180-4, Secure Hash Standard): the fingerprint of texts, files and point lists.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/poll.hpp"

namespace vkm {

/// Takes a message in pieces of any length.
class Sha256 {
 public:
  void update(std::span<const std::byte> bytes);
  /// The same; the heartbeat may end it.
  void update(std::span<const std::byte> bytes, Heartbeat& heartbeat);
  void update(std::string_view text) { update(std::as_bytes(std::span(text))); }

  /// The digest of all pieces as 64 lower-case hexadecimal digits. Ends the message: no update may follow.
  std::string finish_hex();

 private:
  static constexpr std::size_t block_size = 64;

  /// The first 32 bits of the fractional parts of the square roots of the first eight primes.
  std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                         0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::array<std::byte, block_size> block_{};  ///< the bytes that do not fill a block yet
  std::uint64_t length_ = 0;                   ///< of the message so far, in bytes
};

/// The digest of a text's bytes.
std::string sha256_hex(std::string_view text, const Poll& poll = {});

}  // namespace vkm
