#include "far/taylor.hpp"

#include <algorithm>
#include <array>

namespace vkm::far {

namespace {

using Row = ExpansionSpace::Row;
using Slot = ExpansionSpace::Slot;
using Place = std::uint16_t;

/// The place of (a, b, c): by degree, then by falling a, then by rising c.
constexpr std::size_t place_of(int a, int b, int c) {
  const auto rest = static_cast<std::size_t>(b + c);
  return index_count(a + b + c - 1) + rest * (rest + 1) / 2 + static_cast<std::size_t>(c);
}

/// A multi-index k, its degree, and the first axis with a part in it.
struct Index {
  std::array<int, 3> k;
  int degree;
  std::size_t axis;
  std::array<Place, 3> before;    // of k - e by axis, 0 where there is none
  std::array<Place, 3> twice;     // of k - 2 e
  std::array<double, 3> squares;  // k_i (k_i - 1)
};

struct Tables {
  std::vector<Index> indices;
  std::vector<std::size_t> pair_rows;                    // by n: where its row of `pairs` begins
  std::vector<Place> pairs;                              // by n, m: the place of n + m
  std::array<std::vector<std::vector<Place>>, 3> lines;  // by axis: all k + j e, by the degree of k, whose k_i is 0

  Tables() {
    for (int degree = 0; degree <= most_order; ++degree) {
      for (int a = degree; a >= 0; --a) {
        for (int c = 0; c <= degree - a; ++c) add({a, degree - a - c, c});
      }
    }
    for (const Index& n : indices) {
      pair_rows.push_back(pairs.size());
      for (std::size_t m = 0; m < index_count(most_order - n.degree); ++m) {
        const auto& k = indices[m].k;
        pairs.push_back(static_cast<Place>(place_of(n.k[0] + k[0], n.k[1] + k[1], n.k[2] + k[2])));
      }
    }
  }

  void add(std::array<int, 3> k) {
    const int degree = k[0] + k[1] + k[2];
    Index index{k, degree, 0, {}, {}, {}};
    for (std::size_t axis = 0; axis < 3; ++axis) index.squares[axis] = k[axis] * (k[axis] - 1);
    while (degree > 0 && k[index.axis] == 0) ++index.axis;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      std::array<int, 3> less = k;
      if (--less[axis] >= 0) index.before[axis] = static_cast<Place>(place_of(less[0], less[1], less[2]));
      if (--less[axis] >= 0) index.twice[axis] = static_cast<Place>(place_of(less[0], less[1], less[2]));
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (index.k[axis] != 0) continue;
      std::vector<Place>& line = lines[axis].emplace_back();
      for (std::array<int, 3> j = index.k; j[0] + j[1] + j[2] <= most_order; ++j[axis]) {
        line.push_back(static_cast<Place>(place_of(j[0], j[1], j[2])));
      }
    }
    indices.push_back(index);
  }
};

const Tables& tables() {
  static const Tables all;
  return all;
}

constexpr std::array<double, most_order + 1> reciprocals = [] {
  std::array<double, most_order + 1> list{};
  for (int i = 1; i <= most_order; ++i) list[static_cast<std::size_t>(i)] = 1.0 / i;
  return list;
}();

/// All t^k / k! up to a degree, at eight points.
VKM_INLINE void fill_monomials(const Index* indices, const Eight (&t)[3], int degree, Slot* monomials) {
  Eight parts[3][most_order + 1];
  for (int axis = 0; axis < 3; ++axis) {
    for (int i = 1; i <= degree; ++i) parts[axis][i] = t[axis] * reciprocals[static_cast<std::size_t>(i)];
  }
  monomials[0].value = Eight{} + 1.0;
  const std::size_t count = index_count(degree);
  for (std::size_t i = 1; i < count; ++i) {
    const Index& index = indices[i];
    monomials[i].value = monomials[index.before[index.axis]].value * parts[index.axis][index.k[index.axis]];
  }
}

/// The sum of eight, in an order of its own.
VKM_INLINE double total(const Eight& x) { return ((x[0] + x[4]) + (x[2] + x[6])) + ((x[1] + x[5]) + (x[3] + x[7])); }

VKM_KERNEL void moments_of(const LaneView& places, const LaneView& elements, std::size_t count, const Vec3& centre,
                           int order, const Index* indices, Slot* monomials, Row* sums, Vec3* moments) {
  const std::size_t terms = index_count(order);
  for (std::size_t i = 0; i < terms; ++i) sums[i] = Row{};
  for (std::size_t s = 0; s < count; s += eight) {
    Eight x, y, z, ex, ey, ez;
    load(places.x + s, x), load(places.y + s, y), load(places.z + s, z);
    load(elements.x + s, ex), load(elements.y + s, ey), load(elements.z + s, ez);
    for (std::size_t k = count - s; k < eight; ++k) ex[k] = ey[k] = ez[k] = 0.0;
    const Eight offset[3] = {centre[0] - x, centre[1] - y, centre[2] - z};
    fill_monomials(indices, offset, order, monomials);
    for (std::size_t i = 0; i < terms; ++i) {
      const Eight monomial = monomials[i].value;
      sums[i].x += ex * monomial;
      sums[i].y += ey * monomial;
      sums[i].z += ez * monomial;
    }
  }
  for (std::size_t i = 0; i < terms; ++i) moments[i] += Vec3{total(sums[i].x), total(sums[i].y), total(sums[i].z)};
}

/// D_k for all k up to a degree.
VKM_INLINE void fill_derivatives(const Index* indices, const Eight (&r)[3], double soft2, int order, Slot* d) {
  const Eight r2 = r[0] * r[0] + r[1] * r[1] + r[2] * r[2] + soft2;
  Eight root;
  reciprocal_root<4>(r2, root);
  const Eight per_r2 = root * root;
  d[0].value = root;
  Eight multiples[3][most_order + 1];
  for (int axis = 0; axis < 3; ++axis) {
    for (int i = 0; i <= order; ++i) multiples[axis][i] = r[axis] * static_cast<double>(i);
  }
  std::size_t i = 1;
  for (int degree = 1; degree <= order; ++degree) {
    const Eight first = per_r2 * (reciprocals[static_cast<std::size_t>(degree)] - 2.0);
    const Eight second = per_r2 * (reciprocals[static_cast<std::size_t>(degree)] - 1.0);
    for (; i < index_count(degree); ++i) {
      const Index& index = indices[i];
      Eight once = {}, twice = {};
#pragma GCC unroll 3
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const int k = index.k[axis];
        once += multiples[axis][k] * d[index.before[axis]].value;
        twice += index.squares[axis] * d[index.twice[axis]].value;
      }
      d[i].value = first * once + second * twice;
    }
  }
}

/// The moments of eight cells, cell by cell, in lanes. They are read up to a whole number of eights.
VKM_INLINE void spread(const double* const (&cells)[eight], std::size_t numbers, Row* rows) {
  for (std::size_t e = 0; e < numbers; e += eight) {
    Eight in[eight], out[eight];
#pragma GCC unroll 8
    for (std::size_t k = 0; k < eight; ++k) load(cells[k] + e, in[k]);
    transpose(in, out);
    std::memcpy(reinterpret_cast<double*>(rows) + e * eight, out, sizeof out);
  }
}

/// Adds sum over m of D_{n+m} M_m to the coefficients of A for so many n, from `n` on, of one degree.
template <std::size_t rows>
VKM_INLINE void add_rows(const Tables& t, std::size_t n, std::size_t terms, const Row* moments, const Slot* d,
                         Row* sums) {
  Row sum[rows];
  const Place* place[rows];
  for (std::size_t i = 0; i < rows; ++i) {
    sum[i] = sums[n + i];
    place[i] = t.pairs.data() + t.pair_rows[n + i];
  }
  for (std::size_t m = 0; m < terms; ++m) {
#pragma GCC unroll 4
    for (std::size_t i = 0; i < rows; ++i) {
      const Eight derivative = d[place[i][m]].value;
      sum[i].x += moments[m].x * derivative;
      sum[i].y += moments[m].y * derivative;
      sum[i].z += moments[m].z * derivative;
    }
  }
  for (std::size_t i = 0; i < rows; ++i) sums[n + i] = sum[i];
}

/// The coefficients of A, degree 0 left out.
VKM_KERNEL void add_eight_cells(const Eight (&r)[3], const double* const (&cells)[eight], double soft2, int order,
                                const Tables& t, Row* moments, Slot* d, Row* sums) {
  spread(cells, 3 * index_count(order - 1), moments);
  fill_derivatives(t.indices.data(), r, soft2, order, d);
  std::size_t n = 1;
  for (int degree = 1; degree <= order; ++degree) {
    const std::size_t terms = index_count(order - degree), end = index_count(degree);
    for (; n + 3 <= end; n += 3) add_rows<3>(t, n, terms, moments, d, sums);
    for (; n < end; ++n) add_rows<1>(t, n, terms, moments, d, sums);
  }
}

VKM_KERNEL void velocity_of(const Vec3* velocity, const Vec3& centre, int degree, const LaneView& points,
                            std::size_t count, const Index* indices, Slot* monomials, const LaneSpace& sums) {
  const std::size_t terms = index_count(degree);
  for (std::size_t p = 0; p < count; p += eight) {
    Eight x, y, z, u, v, w;
    load(points.x + p, x), load(points.y + p, y), load(points.z + p, z);
    load(sums.x + p, u), load(sums.y + p, v), load(sums.z + p, w);
    const Eight offset[3] = {x - centre[0], y - centre[1], z - centre[2]};
    fill_monomials(indices, offset, degree, monomials);
    for (std::size_t i = 0; i < terms; ++i) {
      const Eight monomial = monomials[i].value;
      u += monomial * velocity[i][0];
      v += monomial * velocity[i][1];
      w += monomial * velocity[i][2];
    }
    for (std::size_t k = 0; k < std::min(eight, count - p); ++k) {
      sums.x[p + k] = u[k];
      sums.y[p + k] = v[k];
      sums.z[p + k] = w[k];
    }
  }
}

/// Runs change(values, weights) on all lines along each axis in turn: weights s^j / j!.
template <class Change>
void shift(std::vector<Vec3>& values, const Vec3& by, int degree, const Change& change) {
  const Tables& t = tables();
  Vec3 line[most_order + 1];
  double weights[most_order + 1];
  for (std::size_t axis = 0; axis < 3; ++axis) {
    weights[0] = 1.0;
    for (std::size_t j = 1; j <= static_cast<std::size_t>(degree); ++j) {
      weights[j] = weights[j - 1] * by[axis] * reciprocals[j];
    }
    for (const std::vector<Place>& places : t.lines[axis]) {
      const int length = degree + 1 - t.indices[places[0]].degree;
      if (length <= 1) break;
      const auto size = static_cast<std::size_t>(length);
      for (std::size_t j = 0; j < size; ++j) line[j] = values[places[j]];
      for (std::size_t j = 0; j < size; ++j) values[places[j]] = change(line, weights, j, size);
    }
  }
}

}  // namespace

void add_moments(const LaneView& places, const LaneView& elements, std::size_t count, const Vec3& centre, int order,
                 ExpansionSpace& space, Coefficients moments) {
  moments_of(places, elements, count, centre, order, tables().indices.data(), space.numbers.data(), space.sums.data(),
             moments.data());
}

void add_shifted_moments(ConstCoefficients from, const Vec3& by, int order, ExpansionSpace& space, Coefficients to) {
  const std::size_t count = index_count(order);
  std::copy_n(from.begin(), count, space.shifted.begin());
  // (Z' - y) = (Z - y) - by.
  shift(space.shifted, -1.0 * by, order, [](const Vec3* line, const double* weights, std::size_t j, std::size_t) {
    Vec3 sum = line[j];
    for (std::size_t i = 0; i < j; ++i) sum += line[i] * weights[j - i];
    return sum;
  });
  for (std::size_t i = 0; i < count; ++i) to[i] += space.shifted[i];
}

void add_shifted_local(ConstCoefficients from, const Vec3& by, int degree, ExpansionSpace& space, Coefficients to) {
  const std::size_t count = index_count(degree);
  std::copy_n(from.begin(), count, space.shifted.begin());
  shift(space.shifted, by, degree, [](const Vec3* line, const double* weights, std::size_t j, std::size_t size) {
    Vec3 sum = line[j];
    for (std::size_t i = j + 1; i < size; ++i) sum += line[i] * weights[i - j];
    return sum;
  });
  for (std::size_t i = 0; i < count; ++i) to[i] += space.shifted[i];
}

void add_local(std::span<const FarCell> cells, double soft2, ExpansionSpace& space, Coefficients velocity) {
  if (cells.empty()) return;
  const Tables& t = tables();
  const int most = cells[0].order;
  for (std::size_t n = 0; n < index_count(most); ++n) space.sums[n] = Row{};
  for (std::size_t c = 0; c < cells.size(); c += eight) {
    const int order = cells[c].order;
    Eight r[3] = {Eight{} + 1.0, Eight{}, Eight{}};
    for (std::size_t k = 0; k < std::min(eight, cells.size() - c); ++k) {
      for (std::size_t axis = 0; axis < 3; ++axis) r[axis][k] = cells[c + k].offset[axis];
    }
    const double* moments[eight];
    for (std::size_t k = 0; k < eight; ++k) {
      const bool one = c + k < cells.size();
      moments[k] = one ? cells[c + k].moments.front().data() : space.zeros.front().data();
    }
    add_eight_cells(r, moments, soft2, order, t, space.moments.data(), space.numbers.data(), space.sums.data());
  }
  std::vector<Vec3>& A = space.shifted;
  for (std::size_t n = 1; n < index_count(most); ++n) {
    A[n] = {total(space.sums[n].x), total(space.sums[n].y), total(space.sums[n].z)};
  }
  for (std::size_t n = 0; n < index_count(most - 1); ++n) {
    const auto& k = t.indices[n].k;
    const Vec3& x = A[place_of(k[0] + 1, k[1], k[2])];
    const Vec3& y = A[place_of(k[0], k[1] + 1, k[2])];
    const Vec3& z = A[place_of(k[0], k[1], k[2] + 1)];
    velocity[n] += {y[2] - z[1], z[0] - x[2], x[1] - y[0]};
  }
}

void add_velocity(ConstCoefficients velocity, const Vec3& centre, int degree, const LaneView& points, std::size_t count,
                  ExpansionSpace& space, const LaneSpace& sums) {
  velocity_of(velocity.data(), centre, degree, points, count, tables().indices.data(), space.numbers.data(), sums);
}

}  // namespace vkm::far
