#pragma once

/// Taylor expansions of the vector potential of elements e at places y, softened by a:
///
///   A(x) = sum e / sqrt(|x - y|^2 + a^2),   u = curl A = sum e x (x - y) / (|x - y|^2 + a^2)^(3/2).
///
/// About the middle Z of a cell of sources and the middle z of a cell of points, with R = z - Z, multi-indices m and n,
/// and D_k the k-th derivative of f(R) = 1 / sqrt(R^2 + a^2):
///
///   moments             M_m = sum e (Z - y)^m / m!
///   local coefficients  L_n = sum over |m| <= p - |n| of D_{n+m} M_m,      A(x) = sum L_n (x - z)^n / n!
///   recurrence          |k| (R^2 + a^2) D_k + (2|k| - 1) sum k_i R_i D_{k - e_i}
///                         + (|k| - 1) sum k_i (k_i - 1) D_{k - 2 e_i} = 0
///
/// (Z.-H. Duan and R. Krasny, J. Comput. Chem. 22 (2001) 184; for the softened kernel K. Lindsay and R. Krasny, J.
/// Comput. Phys. 172 (2001) 879). Any a is expanded exactly. Cut off at the total degree p, the remainder is that of
/// Legendre's series: the terms of degree j of A are at most |e| r^j / d^(j+1) with r >= |x - z| + |y - Z| and
/// d^2 = R^2 + a^2, and their curl is at most sqrt(j (j + 1)) |e| r^(j-1) / d^(j+1).
///
/// The curl is taken of the coefficients: cells of points hold those of u, up to degree p - 1.

#include <cstddef>
#include <span>
#include <vector>

#include "core/lane_view.hpp"
#include "core/vec3.hpp"
#include "far/eight.hpp"

namespace vkm::far {

inline constexpr int most_order = 20;

/// Multi-indices up to a total degree, and the place of the first one of a degree.
constexpr std::size_t index_count(int degree) {
  const auto d = static_cast<std::size_t>(degree + 1);
  return d * (d + 1) * (d + 2) / 6;
}

/// Coefficients of three components, by multi-index.
using Coefficients = std::span<Vec3>;
using ConstCoefficients = std::span<const Vec3>;

/// Vectors behind the last coefficient that may be read.
inline constexpr std::size_t margin = 3;

/// Numbers that the functions below work with; one for each thread.
struct ExpansionSpace {
  struct Slot {
    Eight value;
  };
  struct Row {
    Eight x, y, z;
  };
  std::vector<Slot> numbers = std::vector<Slot>(index_count(most_order));
  std::vector<Row> moments = std::vector<Row>(index_count(most_order) + margin);
  std::vector<Row> sums = std::vector<Row>(index_count(most_order));
  std::vector<Vec3> shifted = std::vector<Vec3>(index_count(most_order));
  std::vector<Vec3> zeros = std::vector<Vec3>(index_count(most_order) + margin);
};

/// Moments up to degree `order` of `count` elements about `centre` are added. Runs of coordinates are read up to a whole
/// number of eights, where the elements must be finite.
void add_moments(const LaneView& places, const LaneView& elements, std::size_t count, const Vec3& centre, int order,
                 ExpansionSpace& space, Coefficients moments);

/// Moments about another centre, `shift` = the old centre minus the new one, are added to `to`.
void add_shifted_moments(ConstCoefficients from, const Vec3& shift, int order, ExpansionSpace& space,
                         Coefficients to);

/// A cell of sources as seen from a cell of points: the terms up to the total degree `order` are taken, at least 1. Its
/// moments are those of degrees up to order - 1 at least, with a margin behind them.
struct FarCell {
  Vec3 offset;  // R
  ConstCoefficients moments;
  int order;
};

/// Adds the coefficients of u that cells of sources induce, given by descending order, up to degree order - 1 each.
void add_local(std::span<const FarCell> cells, double soft2, ExpansionSpace& space, Coefficients velocity);

/// Coefficients of degrees up to `degree` about another centre, `shift` = the new centre minus the old one, are added.
void add_shifted_local(ConstCoefficients from, const Vec3& shift, int degree, ExpansionSpace& space, Coefficients to);

/// Adds u at points, given by their coordinates, to the sums.
void add_velocity(ConstCoefficients velocity, const Vec3& centre, int degree, const LaneView& points,
                  std::size_t count, ExpansionSpace& space, const LaneSpace& sums);

}  // namespace vkm::far
