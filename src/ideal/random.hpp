#pragma once

/// A small generator of random numbers for the search (S. Vigna's splitmix64, after Steele, Lea and Flood, Fast
/// splittable pseudorandom number generators, 2014). A stream is named by the seed, the phase of the search and the
/// task within it, so that a task draws the same numbers whatever thread runs it.

#include <cstdint>
#include <initializer_list>

namespace vkm::ideal {

class Random {
 public:
  Random(std::uint64_t seed, std::uint64_t phase, std::uint64_t task) {
    state_ = seed;
    for (const std::uint64_t word : {phase, task}) state_ = next() ^ (word * 0x9e3779b97f4a7c15ULL);
  }

  std::uint64_t next() {
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15ULL;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
  }

  /// In [0, 1).
  double uniform() { return static_cast<double>(next() >> 11) * 0x1p-53; }
  double uniform(double low, double high) { return low + (high - low) * uniform(); }

  /// About normal, of variance 1: a sum of twelve uniform numbers.
  double normal() {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) sum += uniform();
    return sum;
  }

  std::uint64_t below(std::uint64_t count) { return next() % count; }

 private:
  std::uint64_t state_;
};

}  // namespace vkm::ideal
