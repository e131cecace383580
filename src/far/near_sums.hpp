#pragma once

/// The sum over near elements, one by one:
///
///   u(x) = sum e x R / (R^2 + a^2)^(3/2),   R = x - y,
///
/// the roots being as exact as is asked for (eight.hpp).

#include <cstddef>
#include <span>

#include "core/lane_view.hpp"

namespace vkm::far {

/// Elements: places, vectors, and a number of each.
struct NearSources {
  LaneView at, element;
  const double* number;
};

/// Points with two numbers of elements that each leaves out, and the sums at them.
struct NearPoints {
  LaneView at;
  const double *first_left_out, *second_left_out;
  LaneSpace sums;
};

struct NearRule {
  double soft2;  // a^2
  int steps;     // of Newton's method for the root: 2 to 4
};

/// The elements from `first` to `last` - 1, and whether the numbers count among them.
struct NearRun {
  std::size_t first, last;
  bool leave_out;
};

/// Adds runs of elements to the sums of the points from `begin` to `end` - 1. Points and their numbers are read up to a
/// whole number of sixteens behind `begin`.
void add_near(const NearSources& sources, std::span<const NearRun> runs, const NearRule& rule, const NearPoints& points,
              std::size_t begin, std::size_t end);

inline constexpr std::size_t near_margin = 16;

}  // namespace vkm::far
