#include "evidence/sha256.hpp"

#include <algorithm>
#include <bit>

#include "core/kernel.hpp"

namespace vkm {

namespace {

/// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> round_constants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2,
};

std::uint32_t big_endian_word(const std::byte* bytes) {
  std::uint32_t word = 0;
  for (int i = 0; i < 4; ++i) word = word << 8 | std::to_integer<std::uint32_t>(bytes[i]);
  return word;
}

/// One round: the new a is left in h, and the new e in d.
VKM_INLINE void round(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t& d, std::uint32_t e,
                      std::uint32_t f, std::uint32_t g, std::uint32_t& h, std::uint32_t constant_and_word) {
  using std::rotr;
  const std::uint32_t Sigma1 = rotr(e, 6) ^ rotr(e, 11) ^ rotr(e, 25);
  const std::uint32_t Ch = (e & f) ^ (~e & g);
  const std::uint32_t T1 = h + Sigma1 + Ch + constant_and_word;
  const std::uint32_t Sigma0 = rotr(a, 2) ^ rotr(a, 13) ^ rotr(a, 22);
  const std::uint32_t Maj = (a & b) ^ (a & c) ^ (b & c);
  d += T1;
  h = T1 + Sigma0 + Maj;
}

/// One block of 64 bytes into the state. The names of the functions and variables are the standard's.
void compress(std::array<std::uint32_t, 8>& state, const std::byte* block) {
  using std::rotr;
  std::array<std::uint32_t, 64> W;
  for (std::size_t t = 0; t < 16; ++t) W[t] = big_endian_word(block + 4 * t);
  for (std::size_t t = 16; t < 64; ++t) {
    const std::uint32_t sigma0 = rotr(W[t - 15], 7) ^ rotr(W[t - 15], 18) ^ (W[t - 15] >> 3);
    const std::uint32_t sigma1 = rotr(W[t - 2], 17) ^ rotr(W[t - 2], 19) ^ (W[t - 2] >> 10);
    W[t] = sigma1 + W[t - 7] + sigma0 + W[t - 16];
  }
  auto [a, b, c, d, e, f, g, h] = state;
  for (std::size_t t = 0; t < 64; t += 8) {
    // The standard moves all eight variables on after each round; here the next round takes them by their new names.
    round(a, b, c, d, e, f, g, h, round_constants[t] + W[t]);
    round(h, a, b, c, d, e, f, g, round_constants[t + 1] + W[t + 1]);
    round(g, h, a, b, c, d, e, f, round_constants[t + 2] + W[t + 2]);
    round(f, g, h, a, b, c, d, e, round_constants[t + 3] + W[t + 3]);
    round(e, f, g, h, a, b, c, d, round_constants[t + 4] + W[t + 4]);
    round(d, e, f, g, h, a, b, c, round_constants[t + 5] + W[t + 5]);
    round(c, d, e, f, g, h, a, b, round_constants[t + 6] + W[t + 6]);
    round(b, c, d, e, f, g, h, a, round_constants[t + 7] + W[t + 7]);
  }
  const std::array<std::uint32_t, 8> words = {a, b, c, d, e, f, g, h};
  for (std::size_t i = 0; i < 8; ++i) state[i] += words[i];
}

}  // namespace

void Sha256::update(std::span<const std::byte> bytes) {
  const std::size_t held = length_ % block_size;
  length_ += bytes.size();
  if (held != 0) {
    const std::size_t taken = std::min(block_size - held, bytes.size());
    std::copy_n(bytes.begin(), taken, block_.begin() + static_cast<std::ptrdiff_t>(held));
    bytes = bytes.subspan(taken);
    if (held + taken < block_size) return;
    compress(state_, block_.data());
  }
  for (; bytes.size() >= block_size; bytes = bytes.subspan(block_size)) compress(state_, bytes.data());
  std::copy(bytes.begin(), bytes.end(), block_.begin());
}

std::string Sha256::finish_hex() {
  // A one bit, zeros, and the length in bits as a 64-bit word at the end of the last block.
  const std::uint64_t bits = 8 * length_;
  std::array<std::byte, block_size + 8> padding{std::byte{0x80}};
  const std::size_t zeros_end = (block_size + 56 - 1 - length_ % block_size) % block_size + 1;
  for (std::size_t i = 0; i < 8; ++i) padding[zeros_end + i] = static_cast<std::byte>(bits >> (56 - 8 * i));
  update(std::span(padding).first(zeros_end + 8));

  constexpr char digits[] = "0123456789abcdef";
  std::string hex;
  hex.reserve(64);
  for (const std::uint32_t word : state_) {
    for (int shift = 28; shift >= 0; shift -= 4) hex += digits[word >> shift & 15];
  }
  return hex;
}

void Sha256::update(std::span<const std::byte> bytes, Heartbeat& heartbeat) {
  constexpr std::size_t part = std::size_t{1} << 16;
  for (; bytes.size() > part; bytes = bytes.subspan(part)) {
    update(bytes.first(part));
    heartbeat.tick();
  }
  update(bytes);
}

std::string sha256_hex(std::string_view text, const Poll& poll) {
  Heartbeat heartbeat(poll);
  Sha256 hash;
  hash.update(std::as_bytes(std::span(text)), heartbeat);
  return hash.finish_hex();
}

}  // namespace vkm
