#include "filament/motion/frames.hpp"

#include <stdexcept>

namespace vkm {

namespace {

template <class T>
void copy_ends(std::vector<T>& values) {
  values.front() = values[1];
  values.back() = values[values.size() - 2];
}

}  // namespace

FrenetFrames compute_frenet_frames(std::span<const Vec3> X) {
  const std::size_t n = X.size();
  FrenetFrames frames{std::vector<Vec3>(n), std::vector<Vec3>(n), std::vector<Vec3>(n)};
  if (n < 3) return frames;
  for (std::size_t i = 1; i + 1 < n; ++i) {
    const Vec3 d1 = X[i + 1] - X[i - 1];
    const Vec3 d2 = (X[i + 1] - X[i]) - (X[i] - X[i - 1]);
    frames.T[i] = d1 / norm(d1);
    frames.N[i] = d2 / norm(d2);
    frames.B[i] = cross(frames.T[i], frames.N[i]);
  }
  copy_ends(frames.T);
  copy_ends(frames.N);
  copy_ends(frames.B);
  return frames;
}

CurvatureTorsion compute_curvature_torsion(std::span<const Vec3> T, std::span<const Vec3> N) {
  if (T.size() != N.size()) throw std::invalid_argument("compute_curvature_torsion: T and N must have the same length");
  const std::size_t n = T.size();
  CurvatureTorsion result{std::vector<double>(n), std::vector<double>(n)};
  if (n < 3) return result;
  for (std::size_t i = 1; i + 1 < n; ++i) {
    result.curvature[i] = 0.5 * norm(T[i + 1] - T[i - 1]);
    result.torsion[i] = 0.5 * dot(cross(T[i], N[i]), N[i + 1] - N[i - 1]);
  }
  copy_ends(result.curvature);
  copy_ends(result.torsion);
  return result;
}

double compute_helicity(std::span<const Vec3> velocity, std::span<const Vec3> vorticity) {
  if (vorticity.size() < velocity.size()) {
    throw std::invalid_argument("compute_helicity: vorticity must be at least as long as velocity");
  }
  float sum = 0.0F;
  for (std::size_t i = 0; i < velocity.size(); ++i) sum += static_cast<float>(dot(velocity[i], vorticity[i]));
  return static_cast<double>(sum / static_cast<float>(velocity.size()));
}

}  // namespace vkm
