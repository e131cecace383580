#include "ideal/interior_point.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/kernel.hpp"
#include "ideal/tile_matrix.hpp"

namespace vkm::ideal {

namespace {

constexpr double delta = 1e-7;
constexpr double step_part = 0.99;
constexpr double first_products = 0.03;  // s z at the beginning, over the bound

using Numbers = std::vector<double>;

/// Unknowns and right-hand sides: the moves, coordinate by coordinate and filled up to whole tiles, then the edge
/// lengths.
struct Unknowns {
  Numbers d;
  Numbers h;
};

/// The largest magnitude; NaN if there is one.
double largest(const Numbers& values) {
  double most = 0.0;
  for (const double x : values) {
    if (!(std::abs(x) <= most)) most = std::isnan(most) ? most : std::abs(x);
  }
  return most;
}

double dot3(const Vec3& a, const double* x) { return a[0] * x[0] + a[1] * x[1] + a[2] * x[2]; }

void add3(double* x, const Vec3& a, double factor) {
  x[0] += factor * a[0];
  x[1] += factor * a[1];
  x[2] += factor * a[2];
}

class Solver {
 public:
  explicit Solver(const Program& program)
      : program_(program),
        n_(program.edges.size()),
        components_(program.components.size()),
        kinks_(program.kinks.size()),
        rows_(kinks_ + program.struts.size()),
        cycle_(program.components),
        next_(cycle_.next),
        previous_(cycle_.previous),
        component_(cycle_.component),
        matrix_(groups(), pattern()) {
    find_blocks();
  }

  Solution run(double tolerance, int most_iterations);

 private:
  std::size_t groups() const { return (n_ + 3) / 4; }

  std::vector<std::pair<TileMatrix::Group, TileMatrix::Group>> pattern() const;
  void find_blocks();

  /// Offset of the 3 x 3 block of two vertices, its rows those of the vertex eliminated first.
  std::uint32_t block(Index a, Index b) const {
    const Index ga = a / 4;
    const Index gb = b / 4;
    const bool turned = ga == gb ? b < a : matrix_.before(gb, ga);
    const Index row = turned ? b : a;
    const Index column = turned ? a : b;
    return static_cast<std::uint32_t>(matrix_.offset(ga, gb) + (row % 4) * 3 * tile_side + (column % 4) * 3);
  }
  void add_block(std::uint32_t at, const std::array<double, 6>& outer, double factor) {
    double* const b = matrix_.values() + at;
    b[0] += factor * outer[0];
    b[1] += factor * outer[1];
    b[2] += factor * outer[2];
    b[12] += factor * outer[1];
    b[13] += factor * outer[3];
    b[14] += factor * outer[4];
    b[24] += factor * outer[2];
    b[25] += factor * outer[4];
    b[26] += factor * outer[5];
  }

  void add_identity(std::uint32_t at, double factor) {
    for (std::size_t a = 0; a < 3; ++a) matrix_.values()[at + (tile_side + 1) * a] += factor;
  }

  double edge_row(std::size_t k, const Unknowns& x) const {
    const Vec3& u = program_.edges[k].direction;
    return dot3(u, &x.d[3 * next_[k]]) - dot3(u, &x.d[3 * k]) - x.h[component_[k]];
  }
  double kink_row(std::size_t r, const Unknowns& x) const {
    const Kink& kink = program_.kinks[r];
    return dot3(kink.gradient, &x.d[3 * next_[kink.at]]) - 2.0 * dot3(kink.gradient, &x.d[3 * kink.at]) +
           dot3(kink.gradient, &x.d[3 * previous_[kink.at]]) - kink.slope * x.h[component_[kink.at]];
  }
  double strut_row(std::size_t r, const Unknowns& x) const {
    const Strut& strut = program_.struts[r];
    const Vec3& w = strut.normal;
    return (1.0 - strut.s) * dot3(w, &x.d[3 * strut.i]) + strut.s * dot3(w, &x.d[3 * next_[strut.i]]) -
           (1.0 - strut.t) * dot3(w, &x.d[3 * strut.j]) - strut.t * dot3(w, &x.d[3 * next_[strut.j]]);
  }
  void rows(const Unknowns& x, Numbers& out) const {
    for (std::size_t r = 0; r < kinks_; ++r) out[r] = kink_row(r, x);
    for (std::size_t r = kinks_; r < rows_; ++r) out[r] = strut_row(r - kinks_, x);
  }
  double demand(std::size_t r) const {
    return r < kinks_ ? program_.kinks[r].demand : program_.struts[r - kinks_].demand;
  }
  /// x += A^T y
  void add_edges(const Numbers& y, Unknowns& x) const {
    for (std::size_t k = 0; k < n_; ++k) {
      const Vec3& u = program_.edges[k].direction;
      add3(&x.d[3 * next_[k]], u, y[k]);
      add3(&x.d[3 * k], u, -y[k]);
      x.h[component_[k]] -= y[k];
    }
  }
  /// x += G^T z
  void add_rows(const Numbers& z, Unknowns& x) const {
    for (std::size_t r = 0; r < kinks_; ++r) {
      const Kink& kink = program_.kinks[r];
      add3(&x.d[3 * next_[kink.at]], kink.gradient, z[r]);
      add3(&x.d[3 * kink.at], kink.gradient, -2.0 * z[r]);
      add3(&x.d[3 * previous_[kink.at]], kink.gradient, z[r]);
      x.h[component_[kink.at]] -= kink.slope * z[r];
    }
    for (std::size_t r = 0; r < program_.struts.size(); ++r) {
      const Strut& strut = program_.struts[r];
      const double f = z[kinks_ + r];
      add3(&x.d[3 * strut.i], strut.normal, f * (1.0 - strut.s));
      add3(&x.d[3 * next_[strut.i]], strut.normal, f * strut.s);
      add3(&x.d[3 * strut.j], strut.normal, -f * (1.0 - strut.t));
      add3(&x.d[3 * next_[strut.j]], strut.normal, -f * strut.t);
    }
  }
  /// Of the objective's bends at a vertex.
  double stiffness(std::size_t k) const {
    const double l = program_.edges[k].length;
    return program_.stiffness / (l * l * l);
  }
  /// x += H d
  void add_quadratic(const Unknowns& from, Unknowns& x) const {
    for (std::size_t k = 0; k < n_; ++k) {
      const auto& [u, l] = program_.edges[k];
      const double* a = &from.d[3 * k];
      const double* b = &from.d[3 * next_[k]];
      const Vec3 e = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
      const Vec3 across = e - dot(u, e) * u;
      add3(&x.d[3 * next_[k]], across, 1.0 / l);
      add3(&x.d[3 * k], across, -1.0 / l);
      const double* before = &from.d[3 * previous_[k]];
      const Vec3 bend = {b[0] - 2.0 * a[0] + before[0], b[1] - 2.0 * a[1] + before[1], b[2] - 2.0 * a[2] + before[2]};
      add3(&x.d[3 * next_[k]], bend, stiffness(k));
      add3(&x.d[3 * k], bend, -2.0 * stiffness(k));
      add3(&x.d[3 * previous_[k]], bend, stiffness(k));
    }
    for (std::size_t i = 0; i < 3 * n_; ++i) x.d[i] += program_.rho * from.d[i];
  }
  Unknowns zero() const { return {Numbers(12 * groups(), 0.0), Numbers(components_, 0.0)}; }

  void assemble(const Numbers& weights, const Numbers& box);
  void border(const Numbers& weights, const Numbers& box);
  void solve_system(Unknowns& x) const;

  const Program& program_;
  std::size_t n_;
  std::size_t components_;
  std::size_t kinks_;
  std::size_t rows_;
  Cycle cycle_;
  const std::vector<Index>& next_;
  const std::vector<Index>& previous_;
  const std::vector<Index>& component_;
  TileMatrix matrix_;
  std::vector<std::uint32_t> own_;    ///< blocks (v, v)
  std::vector<std::uint32_t> along_;  ///< blocks (k, next)
  std::vector<std::uint32_t> over_;   ///< blocks (previous, next)
  std::vector<std::array<std::uint32_t, 10>> strut_blocks_;
  std::vector<Unknowns> border_columns_;  ///< K^-1 times the border, a component each
  std::vector<Numbers> border_rows_;      ///< the border
  Numbers schur_;                         ///< of the border, factorised (lower triangle)
};

std::vector<std::pair<TileMatrix::Group, TileMatrix::Group>> Solver::pattern() const {
  std::vector<std::pair<TileMatrix::Group, TileMatrix::Group>> pairs;
  const auto add = [&](Index a, Index b) { pairs.emplace_back(a / 4, b / 4); };
  for (Index k = 0; k < n_; ++k) {
    add(k, next_[k]);
    add(previous_[k], next_[k]);
  }
  for (const Strut& strut : program_.struts) {
    const std::array<Index, 4> v = {strut.i, next_[strut.i], strut.j, next_[strut.j]};
    for (std::size_t a = 0; a < 4; ++a) {
      for (std::size_t b = a + 1; b < 4; ++b) add(v[a], v[b]);
    }
  }
  return pairs;
}

void Solver::find_blocks() {
  for (Index k = 0; k < n_; ++k) {
    own_.push_back(block(k, k));
    along_.push_back(block(k, next_[k]));
  }
  for (Index k = 0; k < n_; ++k) over_.push_back(block(previous_[k], next_[k]));
  for (const Strut& strut : program_.struts) {
    const std::array<Index, 4> v = {strut.i, next_[strut.i], strut.j, next_[strut.j]};
    auto& blocks = strut_blocks_.emplace_back();
    std::size_t at = 0;
    for (std::size_t a = 0; a < 4; ++a) {
      for (std::size_t b = a; b < 4; ++b) blocks[at++] = block(v[a], v[b]);
    }
  }
}

std::array<double, 6> outer_product(const Vec3& w) {
  return {w[0] * w[0], w[0] * w[1], w[0] * w[2], w[1] * w[1], w[1] * w[2], w[2] * w[2]};
}

void Solver::assemble(const Numbers& weights, const Numbers& box) {
  matrix_.clear();
  double* const values = matrix_.values();
  for (std::size_t v = 0; v < n_; ++v) {
    for (std::size_t a = 0; a < 3; ++a) values[own_[v] + 13 * a] += program_.rho + box[3 * v + a];
  }
  for (std::size_t v = n_; v < 4 * groups(); ++v) {
    const auto group = static_cast<TileMatrix::Group>(v / 4);
    for (std::size_t a = 0; a < 3; ++a) values[matrix_.offset(group, group) + 13 * (3 * (v % 4) + a)] = 1.0;
  }
  for (std::size_t k = 0; k < n_; ++k) {
    const auto& [u, l] = program_.edges[k];
    const double along = 1.0 / delta - 1.0 / l;
    auto outer = outer_product(u);
    for (double& x : outer) x *= along;
    outer[0] += 1.0 / l;
    outer[3] += 1.0 / l;
    outer[5] += 1.0 / l;
    add_block(own_[k], outer, 1.0);
    add_block(own_[next_[k]], outer, 1.0);
    add_block(along_[k], outer, -1.0);
    add_identity(own_[previous_[k]], stiffness(k));
    add_identity(own_[k], 4.0 * stiffness(k));
    add_identity(own_[next_[k]], stiffness(k));
    add_identity(along_[previous_[k]], -2.0 * stiffness(k));
    add_identity(along_[k], -2.0 * stiffness(k));
    add_identity(over_[k], stiffness(k));
  }
  for (std::size_t r = 0; r < kinks_; ++r) {
    const Kink& kink = program_.kinks[r];
    const auto outer = outer_product(kink.gradient);
    const Index previous = previous_[kink.at];
    add_block(own_[previous], outer, weights[r]);
    add_block(own_[kink.at], outer, 4.0 * weights[r]);
    add_block(own_[next_[kink.at]], outer, weights[r]);
    add_block(along_[previous], outer, -2.0 * weights[r]);
    add_block(along_[kink.at], outer, -2.0 * weights[r]);
    add_block(over_[kink.at], outer, weights[r]);
  }
  for (std::size_t r = 0; r < program_.struts.size(); ++r) {
    const Strut& strut = program_.struts[r];
    const auto outer = outer_product(strut.normal);
    const std::array<double, 4> c = {1.0 - strut.s, strut.s, strut.t - 1.0, -strut.t};
    const double weight = weights[kinks_ + r];
    std::size_t at = 0;
    for (std::size_t a = 0; a < 4; ++a) {
      for (std::size_t b = a; b < 4; ++b) add_block(strut_blocks_[r][at++], outer, weight * c[a] * c[b]);
    }
  }
  matrix_.factorise();
  border(weights, box);
}

/// The border B = K_dh, the columns w = K^-1 B, and the Schur complement of the h: the form K on the vectors
/// (-w_c, e_c), whose large terms cancel row by row and not in the sum.
void Solver::border(const Numbers& weights, const Numbers& box) {
  border_columns_.assign(components_, zero());
  border_rows_.assign(components_, {});
  std::vector<Unknowns> lifted(components_);
  for (Index c = 0; c < components_; ++c) {
    Unknowns column = zero();
    Numbers edges(n_, 0.0);
    for (Index k = program_.components[c].begin; k < program_.components[c].end; ++k) edges[k] = -1.0 / delta;
    Numbers rows(rows_, 0.0);
    for (std::size_t r = 0; r < kinks_; ++r) {
      if (component_[program_.kinks[r].at] == c) rows[r] = -weights[r] * program_.kinks[r].slope;
    }
    add_edges(edges, column);
    add_rows(rows, column);
    border_rows_[c] = column.d;
    matrix_.solve(column.d);
    lifted[c] = zero();
    for (std::size_t i = 0; i < 3 * n_; ++i) lifted[c].d[i] = -column.d[i];
    lifted[c].h[c] = 1.0;
    border_columns_[c].d = std::move(column.d);
  }
  // The form of each lifted vector with its rows: image = W^(1/2)-free products, one row at a time.
  std::vector<Numbers> edge_images(components_, Numbers(n_));
  std::vector<Numbers> row_images(components_, Numbers(rows_));
  std::vector<Unknowns> bent(components_, zero());
  for (std::size_t c = 0; c < components_; ++c) {
    for (std::size_t k = 0; k < n_; ++k) edge_images[c][k] = edge_row(k, lifted[c]);
    rows(lifted[c], row_images[c]);
    add_quadratic(lifted[c], bent[c]);
    for (std::size_t i = 0; i < 3 * n_; ++i) bent[c].d[i] += box[i] * lifted[c].d[i];
  }
  schur_.assign(components_ * components_, 0.0);
  for (std::size_t a = 0; a < components_; ++a) {
    for (std::size_t b = 0; b <= a; ++b) {
      double sum = 0.0;
      for (std::size_t k = 0; k < n_; ++k) sum += edge_images[a][k] * edge_images[b][k] / delta;
      for (std::size_t r = 0; r < rows_; ++r) sum += weights[r] * row_images[a][r] * row_images[b][r];
      for (std::size_t i = 0; i < 3 * n_; ++i) sum += lifted[a].d[i] * bent[b].d[i];
      schur_[a * components_ + b] = sum;
    }
  }
  for (std::size_t a = 0; a < components_; ++a) {
    for (std::size_t b = 0; b <= a; ++b) {
      double sum = schur_[a * components_ + b];
      for (std::size_t m = 0; m < b; ++m) sum -= schur_[a * components_ + m] * schur_[b * components_ + m];
      schur_[a * components_ + b] = a == b ? std::sqrt(std::max(sum, 1e-300)) : sum / schur_[b * components_ + b];
    }
  }
}

/// Solves the whole system with its border, in place.
void Solver::solve_system(Unknowns& x) const {
  matrix_.solve(x.d);
  for (std::size_t c = 0; c < components_; ++c) {
    double sum = x.h[c];
    for (std::size_t i = 0; i < 3 * n_; ++i) sum -= border_rows_[c][i] * x.d[i];
    x.h[c] = sum;
  }
  for (std::size_t a = 0; a < components_; ++a) {
    for (std::size_t m = 0; m < a; ++m) x.h[a] -= schur_[a * components_ + m] * x.h[m];
    x.h[a] /= schur_[a * components_ + a];
  }
  for (std::size_t a = components_; a-- > 0;) {
    for (std::size_t m = a + 1; m < components_; ++m) x.h[a] -= schur_[m * components_ + a] * x.h[m];
    x.h[a] /= schur_[a * components_ + a];
  }
  for (std::size_t c = 0; c < components_; ++c) {
    for (std::size_t i = 0; i < 3 * n_; ++i) x.d[i] -= border_columns_[c].d[i] * x.h[c];
  }
}

/// A set of slacks s and their forces z, at least zero, and a step of both.
struct Pairs {
  explicit Pairs(std::size_t count) : s(count), z(count), ds(count), dz(count), products(count), size(count) {}

  Numbers s;
  Numbers z;
  Numbers ds;
  Numbers dz;
  Numbers products;  ///< s z less its target; in the corrector with the predictor's ds dz
  std::size_t size;
};

VKM_KERNEL void find_products(double* __restrict products, const double* s, const double* z, const double* ds,
                              const double* dz, double target, double corrected, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) products[i] = (s[i] * z[i] - target) + corrected * (ds[i] * dz[i]);
}

VKM_KERNEL void find_force_step(double* __restrict dz, const double* s, const double* z, const double* ds,
                                const double* products, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) dz[i] = -(products[i] + z[i] * ds[i]) / s[i];
}

VKM_KERNEL void add_scaled(double* __restrict x, const double* dx, double factor, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) x[i] += factor * dx[i];
}

/// box = z / s of both sides
VKM_KERNEL void find_box(double* __restrict box, const double* upper_z, const double* upper_s, const double* lower_z,
                         const double* lower_s, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) box[i] = upper_z[i] / upper_s[i] + lower_z[i] / lower_s[i];
}

VKM_KERNEL void add_box(double* __restrict x, const double* upper, const double* upper_s, const double* lower,
                        const double* lower_s, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) x[i] += upper[i] / upper_s[i] - lower[i] / lower_s[i];
}

/// Sets the products' targets: s z + (s dz + z ds) = target - correction.
void aim(Pairs& pairs, double target, bool corrected) {
  find_products(pairs.products.data(), pairs.s.data(), pairs.z.data(), pairs.ds.data(), pairs.dz.data(), target,
                corrected ? 1.0 : 0.0, pairs.size);
}

/// The forces' step that goes with the slacks'.
void follow(Pairs& pairs) {
  find_force_step(pairs.dz.data(), pairs.s.data(), pairs.z.data(), pairs.ds.data(), pairs.products.data(), pairs.size);
}

/// Shortens the step to one that keeps s + step ds >= 0.
void shorten(double& step, const Numbers& s, const Numbers& ds) {
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] + step * ds[i] < 0.0) step = -s[i] / ds[i];
  }
}

void shorten(double& step, const Pairs& pairs) {
  shorten(step, pairs.s, pairs.ds);
  shorten(step, pairs.z, pairs.dz);
}

double gap(const Pairs& pairs, double step) {
  double sum = 0.0;
  for (std::size_t i = 0; i < pairs.size; ++i) {
    sum += (pairs.s[i] + step * pairs.ds[i]) * (pairs.z[i] + step * pairs.dz[i]);
  }
  return sum;
}

Solution Solver::run(double tolerance, int most_iterations) {
  const double bound = program_.bound;
  const std::size_t coordinates = 3 * n_;
  Unknowns x = zero();
  double total = 0.0;
  for (std::size_t k = 0; k < n_; ++k) {
    x.h[component_[k]] += program_.edges[k].length / program_.components[component_[k]].size();
    total += program_.edges[k].length;
  }
  Numbers y(n_, 1.0);
  Pairs own(rows_);          // the rows' slacks and forces
  Pairs upper(coordinates);  // bound - d
  Pairs lower(coordinates);  // bound + d
  Numbers image(rows_);
  const double mu_start = first_products * bound;
  rows(x, image);
  for (std::size_t r = 0; r < rows_; ++r) {
    // What a tenth of the bound does to the row.
    const double scale = r < kinks_ ? norm(program_.kinks[r].gradient) : 1.0;
    own.s[r] = std::max(image[r] - demand(r), 0.1 * bound * scale);
    own.z[r] = mu_start / own.s[r];
  }
  for (Pairs* box : {&upper, &lower}) {
    std::fill(box->s.begin(), box->s.end(), bound);
    std::fill(box->z.begin(), box->z.end(), mu_start / bound);
  }

  Numbers r_e(n_);
  Numbers r_g(rows_);
  Numbers weights(rows_);
  Numbers box(12 * groups(), 0.0);
  Numbers dy(n_);
  Numbers scratch(rows_);
  Numbers edge_scratch(n_);
  const auto pairs = static_cast<double>(rows_ + 2 * coordinates);

  Solution solution;
  for (;; ++solution.iterations) {
    for (std::size_t k = 0; k < n_; ++k) r_e[k] = edge_row(k, x) + program_.edges[k].length;
    rows(x, image);
    for (std::size_t r = 0; r < rows_; ++r) r_g[r] = image[r] - own.s[r] - demand(r);
    Unknowns r_d = zero();  // gradient of the objective + A^T y - G^T z + box
    add_quadratic(x, r_d);
    for (std::size_t c = 0; c < components_; ++c) r_d.h[c] = program_.components[c].size();
    add_edges(y, r_d);
    for (std::size_t r = 0; r < rows_; ++r) scratch[r] = -own.z[r];
    add_rows(scratch, r_d);
    add_scaled(r_d.d.data(), upper.z.data(), 1.0, coordinates);
    add_scaled(r_d.d.data(), lower.z.data(), -1.0, coordinates);

    const double sum = gap(own, 0.0) + gap(upper, 0.0) + gap(lower, 0.0);
    const Numbers parts = {largest(r_e), largest(r_g), largest(r_d.d), largest(r_d.h) / static_cast<double>(n_),
                           sum / total};
    solution.residual = largest(parts);
    solution.solved = solution.residual <= tolerance;
    if (solution.solved || solution.iterations == most_iterations || !std::isfinite(solution.residual)) break;

    const double mu = sum / pairs;
    for (std::size_t r = 0; r < rows_; ++r) weights[r] = own.z[r] / own.s[r];
    find_box(box.data(), upper.z.data(), upper.s.data(), lower.z.data(), lower.s.data(), coordinates);
    assemble(weights, box);

    Unknowns step;
    const auto find_step = [&](double target, bool corrected) {
      step = zero();
      add_scaled(step.d.data(), r_d.d.data(), -1.0, coordinates);
      for (std::size_t c = 0; c < components_; ++c) step.h[c] = -r_d.h[c];
      for (std::size_t k = 0; k < n_; ++k) edge_scratch[k] = -r_e[k] / delta;
      add_edges(edge_scratch, step);
      for (Pairs* all : {&own, &upper, &lower}) aim(*all, target, corrected);
      for (std::size_t r = 0; r < rows_; ++r) scratch[r] = -(own.products[r] / own.s[r] + weights[r] * r_g[r]);
      add_rows(scratch, step);
      add_box(step.d.data(), upper.products.data(), upper.s.data(), lower.products.data(), lower.s.data(), coordinates);
      solve_system(step);
      rows(step, own.ds);
      add_scaled(own.ds.data(), r_g.data(), 1.0, rows_);
      for (std::size_t i = 0; i < coordinates; ++i) {
        upper.ds[i] = -step.d[i];
        lower.ds[i] = step.d[i];
      }
      double most = 1.0 / step_part;
      for (Pairs* all : {&own, &upper, &lower}) {
        follow(*all);
        shorten(most, *all);
      }
      return most;
    };
    const double reach = std::min(1.0, find_step(0.0, false));
    const double part = (gap(own, reach) + gap(upper, reach) + gap(lower, reach)) / sum;
    const double most = find_step(mu * part * part * part, true);
    const double size = step_part * most;
    for (std::size_t k = 0; k < n_; ++k) dy[k] = (edge_row(k, step) + r_e[k]) / delta;

    for (std::size_t i = 0; i < coordinates; ++i) {
      x.d[i] += size * step.d[i];
      upper.s[i] = bound - x.d[i];
      lower.s[i] = bound + x.d[i];
    }
    for (std::size_t c = 0; c < components_; ++c) x.h[c] += size * step.h[c];
    add_scaled(y.data(), dy.data(), size, n_);
    add_scaled(own.s.data(), own.ds.data(), size, rows_);
    for (Pairs* all : {&own, &upper, &lower}) add_scaled(all->z.data(), all->dz.data(), size, all->size);
  }

  solution.moves.resize(n_);
  for (std::size_t k = 0; k < n_; ++k) solution.moves[k] = {x.d[3 * k], x.d[3 * k + 1], x.d[3 * k + 2]};
  solution.edge_lengths = x.h;
  solution.edge_forces = y;
  solution.kink_forces.assign(own.z.begin(), own.z.begin() + static_cast<std::ptrdiff_t>(kinks_));
  solution.strut_forces.assign(own.z.begin() + static_cast<std::ptrdiff_t>(kinks_), own.z.end());
  return solution;
}

}  // namespace

Solution solve(const Program& program, double tolerance, int most_iterations) {
  return Solver(program).run(tolerance, most_iterations);
}

}  // namespace vkm::ideal
