#include "filament/motion/rigid_motion.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/elementary.hpp"

namespace vkm {

namespace {

using Matrix3 = std::array<Vec3, 3>;

constexpr double least_weight = 1e-30;

/// Either the given weights or ones.
class Weights {
 public:
  Weights(std::span<const double> weights, bool count) : weights_(weights), count_(count) {}
  double operator[](std::size_t i) const { return count_ ? weights_[i] : 1.0; }

  double sum(std::size_t n) const {
    double total = 0.0;
    for (std::size_t i = 0; i < n; ++i) total += (*this)[i];
    return std::max(least_weight, total);
  }

 private:
  std::span<const double> weights_;
  bool count_;
};

Vec3 weighted_mean(std::span<const Vec3> vectors, const Weights& w) {
  Vec3 sum{};
  for (std::size_t i = 0; i < vectors.size(); ++i) sum += w[i] * vectors[i];
  return sum / w.sum(vectors.size());
}

Vec3 normalized(const Vec3& v) {
  const double length = norm(v);
  if (!(length > 1e-30)) return {0.0, 0.0, 1.0};
  return v / length;
}

struct EigenPair {
  double value;
  Vec3 vector;
};

/// Eigenpairs of a symmetric matrix by classical Jacobi rotations (Jacobi 1846), by ascending value.
std::array<EigenPair, 3> symmetric_eigenpairs(Matrix3 c) {
  constexpr int most_rotations = 48;
  Matrix3 v = {{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};  // eigenvectors in columns
  for (int rotation = 0; rotation < most_rotations; ++rotation) {
    std::size_t p = 0, q = 1;
    if (std::abs(c[0][2]) > std::abs(c[p][q])) q = 2;
    if (std::abs(c[1][2]) > std::abs(c[p][q])) {
      p = 1;
      q = 2;
    }
    const double scale = std::max({1.0, std::abs(c[0][0]), std::abs(c[1][1]), std::abs(c[2][2])});
    if (std::abs(c[p][q]) < 1e-14 * scale) break;
    const double angle = 0.5 * vkm::atan2(2.0 * c[p][q], c[q][q] - c[p][p]);
    const double cosine = vkm::cos(angle), sine = vkm::sin(angle);
    const double pp = c[p][p], qq = c[q][q], pq = c[p][q];
    c[p][p] = cosine * cosine * pp - 2.0 * sine * cosine * pq + sine * sine * qq;
    c[q][q] = sine * sine * pp + 2.0 * sine * cosine * pq + cosine * cosine * qq;
    c[p][q] = c[q][p] = 0.0;
    const std::size_t r = 3 - p - q;
    const double rp = c[r][p], rq = c[r][q];
    c[r][p] = c[p][r] = cosine * rp - sine * rq;
    c[r][q] = c[q][r] = sine * rp + cosine * rq;
    for (Vec3& row : v) {
      const double vp = row[p], vq = row[q];
      row[p] = cosine * vp - sine * vq;
      row[q] = sine * vp + cosine * vq;
    }
  }
  std::array<EigenPair, 3> pairs;
  for (std::size_t k = 0; k < 3; ++k) {
    Vec3 axis = normalized({v[0][k], v[1][k], v[2][k]});
    std::size_t largest = 0;
    for (std::size_t a = 1; a < 3; ++a) {
      if (std::abs(axis[a]) > std::abs(axis[largest])) largest = a;
    }
    if (axis[largest] < 0.0) axis = axis * -1.0;
    pairs[k] = {c[k][k], axis};
  }
  for (std::size_t k = 1; k < 3; ++k) {  // insertion sort: stable, and at peace with NaN
    for (std::size_t j = k; j > 0 && pairs[j].value < pairs[j - 1].value; --j) std::swap(pairs[j], pairs[j - 1]);
  }
  return pairs;
}

/// Solves A x = b by Gauss-Jordan elimination with row pivoting; zeros when a pivot is below 1e-30.
Vec3 solve3(Matrix3 A, Vec3 b) {
  constexpr double least_pivot = 1e-30;
  for (std::size_t k = 0; k < 3; ++k) {
    std::size_t pivot = k;
    for (std::size_t r = k + 1; r < 3; ++r) {
      if (std::abs(A[r][k]) > std::abs(A[pivot][k])) pivot = r;
    }
    if (std::abs(A[pivot][k]) < least_pivot) return {};
    std::swap(A[k], A[pivot]);
    std::swap(b[k], b[pivot]);
    const double divisor = A[k][k];
    for (double& entry : A[k]) entry /= divisor;
    b[k] /= divisor;
    for (std::size_t r = 0; r < 3; ++r) {
      if (r == k) continue;
      const double factor = A[r][k];
      for (std::size_t c = 0; c < 3; ++c) A[r][c] -= factor * A[k][c];
      b[r] -= factor * b[k];
    }
  }
  return b;
}

}  // namespace

IntrinsicFrame intrinsic_frame(std::span<const Vec3> points, std::span<const double> weights) {
  IntrinsicFrame frame;
  if (points.empty()) return frame;
  const Weights w(weights, weights.size() == points.size());
  frame.centroid = weighted_mean(points, w);
  Matrix3 covariance{};
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3 r = points[i] - frame.centroid;
    for (std::size_t a = 0; a < 3; ++a) {
      for (std::size_t b = 0; b < 3; ++b) covariance[a][b] += w[i] * (r[a] * r[b]);
    }
  }
  const double total = w.sum(points.size());
  for (Vec3& row : covariance) row = row / total;
  const std::array<EigenPair, 3> pairs = symmetric_eigenpairs(covariance);
  for (std::size_t k = 0; k < 3; ++k) frame.eigenvalues[k] = pairs[k].value;
  frame.axis_z = pairs[0].vector;
  const Vec3& widest = pairs[2].vector;
  const Vec3 in_plane = normalized(widest - dot(widest, frame.axis_z) * frame.axis_z);
  frame.axis_y = normalized(cross(frame.axis_z, in_plane));
  frame.axis_x = normalized(cross(frame.axis_y, frame.axis_z));
  return frame;
}

RigidMotion rigid_motion(std::span<const Vec3> points, std::span<const Vec3> velocity,
                         std::span<const double> weights) {
  RigidMotion motion;
  const std::size_t n = std::min(points.size(), velocity.size());
  if (n == 0) return motion;
  motion.centroid = weighted_mean(points, Weights(weights, weights.size() == points.size()));
  const Weights w(weights, weights.size() >= n);
  motion.translation = weighted_mean(velocity.first(n), w);

  Matrix3 inertia{};
  Vec3 momentum{};
  double energy = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    const Vec3 r = points[i] - motion.centroid;
    const double r2 = norm2(r);
    for (std::size_t a = 0; a < 3; ++a) {
      for (std::size_t b = 0; b < 3; ++b) inertia[a][b] += w[i] * ((a == b ? r2 : 0.0) - r[a] * r[b]);
    }
    momentum += w[i] * cross(r, velocity[i] - motion.translation);
    energy += w[i] * norm2(velocity[i]);
  }
  motion.omega = solve3(inertia, momentum);

  double lost = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    const Vec3 turning = cross(motion.omega, points[i] - motion.centroid);
    const Vec3 rest = velocity[i] - motion.translation - turning;
    motion.translation_field.push_back(motion.translation);
    motion.rotation_field.push_back(turning);
    motion.deformation_field.push_back(rest);
    lost += w[i] * norm2(velocity[i] - (motion.translation + turning + rest));
  }
  const double divisor = std::max(1e-300, energy);
  motion.reconstruction_relative_error = std::sqrt(lost / divisor);
  motion.deformation_relative_norm = std::sqrt(std::max(energy - dot(motion.omega, momentum), 0.0) / divisor);
  return motion;
}

}  // namespace vkm
