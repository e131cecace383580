#include "filament/motion/frames.hpp"
#include "filament/motion/vortex_knot_system.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_frenet_helicity(py::module_& m) {
  using Points = std::vector<Vec3>;

  m.def(
      "compute_frenet_frames",
      [](const Points& X) {
        FrenetFrames frames = compute_frenet_frames(X);
        return std::make_tuple(std::move(frames.T), std::move(frames.N), std::move(frames.B));
      },
      R"(compute_frenet_frames(X): the lists (T, N, B) of unit tangents, normals and binormals.

Central differences over the inner points of an open curve; the ends copy their neighbours. A straight stretch gives
NaN normals; fewer than three points give zero vectors.)");

  m.def(
      "compute_curvature_torsion",
      [](const Points& T, const Points& N) {
        CurvatureTorsion result = compute_curvature_torsion(T, N);
        return std::make_tuple(std::move(result.curvature), std::move(result.torsion));
      },
      R"(compute_curvature_torsion(T, N): the lists (curvature, torsion), per index and not per unit length.

ValueError if the lists differ in length; fewer than three entries give zeros.)");

  m.def(
      "compute_helicity",
      [](const Points& velocity, const Points& vorticity) { return compute_helicity(velocity, vorticity); },
      R"(Compute helicity H = ∫ v · ω dV.

compute_helicity(velocity, vorticity) on two lists of vectors. What it returns is the mean of the pointwise products,
accumulated in single precision; NaN for empty lists. ValueError if the vorticity is the shorter list.)");

  m.def(
      "evolve_vortex_knot",
      [](const Points& positions, const Points& tangents, double dt, double gamma) {
        return advance_along_tangents(positions, tangents, dt, gamma);
      },
      R"(evolve_vortex_knot(positions, tangents, dt, gamma): positions + (dt gamma) tangents, as a new list.

One explicit step in which the tangents play the velocity. ValueError if there are fewer tangents than positions.)");

  m.def(
      "rk4_integrate",
      [](const Points& positions, const Points& tangents, double dt, double gamma) {
        return advance_along_tangents(positions, tangents, dt, gamma);
      },
      R"(Runge-Kutta 4th order time integrator for vortex elements.

rk4_integrate(positions, tangents, dt, gamma). With velocities that do not change within the step all four stages agree:
the result is that of evolve_vortex_knot. The integrator of the filament equations is rk4_step.)");
}

}  // namespace vkm
