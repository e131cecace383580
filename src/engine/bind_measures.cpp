// Energies, thickness, diagrams and Gauss integrals of curves on any number of threads, with the bits of _native.
// Records are those that _native binds.

#include <optional>

#include "engine/engine.hpp"
#include "far/filament_far_field.hpp"
#include "filament/curve_arguments.hpp"
#include "filament/energy/filament_energy.hpp"
#include "filament/topology/polygonal_gauss.hpp"
#include "filament/topology/topology_measures.hpp"
#include "knot/planar_diagram.hpp"
#include "mass/tail_surrogate.hpp"
#include "mass/vkm_mass.hpp"
#include "tube/tube_analysis.hpp"

namespace vkm {

namespace {

/// What `compute` gives without the interpreter lock.
template <class Compute>
auto unlocked(const Compute& compute) {
  const py::gil_scoped_release unlock;
  return compute();
}

constexpr auto neumann_of = [](const DoubleArray& array, double rc, int threads) {
  const std::vector<Vec3> points = points_from(array, shape_text);
  return unlocked([&] { return calculate_neumann_self_energy(points, rc, released_poll(), threads); });
};

constexpr auto mass_of = [](const DoubleArray& array, double chi_spin, int threads) {
  const std::vector<Vec3> points = points_from(array, shape_text);
  const VkmMass mass = unlocked([&] { return compute_vkm_mass(points, chi_spin, released_poll(), threads); });
  return std::pair(mass.m_core_kg, mass.m_fluid_kg);
};

constexpr auto tail_of = [](const std::vector<DoubleArray>& arrays, const TailApproxConfig& config, int threads) {
  std::vector<std::vector<Vec3>> filaments;
  for (const DoubleArray& array : arrays) filaments.push_back(points_from(array, shape_text));
  const TailApproxConfig own = config;
  return unlocked([&] { return tail_surrogate_energy(filaments, own, released_poll(), threads); });
};

constexpr auto writhe_of = [](const DoubleArray& array, int threads) {
  const std::vector<Vec3> points = points_from(array, shape_text);
  return unlocked([&] { return compute_writhe(points, released_poll(), threads); });
};

constexpr auto far_writhe_of = [](const DoubleArray& array, double tolerance, int threads) {
  const std::vector<Vec3> points = points_from(array, shape_text);
  const far::FarWrithe found = unlocked([&] { return far::far_writhe(points, tolerance, threads, released_poll()); });
  return std::tuple(found.writhe, found.bound, found.tree);
};

constexpr auto gauss_of = [](const DoubleArray& first, const std::optional<DoubleArray>& second, int threads) {
  const std::vector<Vec3> a = points_from(first, shape_text);
  const std::vector<Vec3> b = second ? points_from(*second, shape_text) : std::vector<Vec3>();
  const PolygonalGaussResult result = unlocked([&] {
    return second ? polygonal_gauss_pair(a, b, released_poll(), threads)
                  : polygonal_gauss_self(a, released_poll(), threads);
  });
  py::dict dict;
  dict["signed_integral"] = result.signed_integral;
  dict["absolute_integral"] = result.absolute_integral;
  dict["linking_integer_audit"] = result.linking_integer_audit;
  return dict;
};

constexpr auto tube_of = [](const DoubleArray& array, std::int32_t skip_neighbors, double contact_tol,
                            double equilateral_tol, int threads) {
  const std::vector<Vec3> points = points_from(array, shape_text);
  return unlocked(
      [&] { return analyze_tube(points, {skip_neighbors, contact_tol, equilateral_tol}, released_poll(), threads); });
};

constexpr auto code_of = [](const DoubleArray& array, int tries, int seed, double min_angle_deg, double depth_tol,
                            int threads) {
  const std::vector<Vec3> points = points_from(array, points_shape_text);
  return unlocked(
      [&] { return pd_from_curve(points, tries, seed, min_angle_deg, depth_tol, released_poll(), threads); });
};

constexpr auto crossings_of = [](const DoubleArray& array, int directions, int seed, int threads) {
  const std::vector<Vec3> points = points_from(array, shape_text);
  return unlocked([&] { return estimate_crossing_number(points, directions, seed, released_poll(), threads); });
};

}  // namespace

void bind_measures(py::module_& m) {
  using namespace py::literals;
  m.def("neumann_self_energy", neumann_of, "points"_a, "rc"_a, py::kw_only(), "threads"_a = 1,
        "calculate_neumann_self_energy on threads.");
  m.def("vkm_mass", mass_of, "points"_a, "chi_spin"_a, py::kw_only(), "threads"_a = 1, "compute_vkm_mass on threads.");
  m.def("tail_energy", tail_of, "filaments"_a, "config"_a, py::kw_only(), "threads"_a = 1,
        "compute_tail_energy_surrogate_J of a ParticleEvaluator of these filaments, on threads.");
  m.def("writhe", writhe_of, "points"_a, py::kw_only(), "threads"_a = 1, "compute_writhe on threads.");
  m.def("far_writhe", far_writhe_of, "points"_a, "tolerance"_a = 1e-6, py::kw_only(), "threads"_a = 1,
        "The sum of compute_writhe by the tree, a bound of its error, and whether the tree was used.");
  m.def("polygonal_gauss", gauss_of, "a"_a, "b"_a = py::none(), py::kw_only(), "threads"_a = 1,
        "compute_polygonal_gauss on threads: of one curve, or of two.");
  m.def("tube_analyze", tube_of, "points"_a, "skip_neighbors"_a = 2, "contact_tol"_a = 0.001,
        "equilateral_tol"_a = 0.001, py::kw_only(), "threads"_a = 1, "ResolvedTubeGeometry.analyze on threads.");
  m.def("pd_from_curve", code_of, "points"_a, "tries"_a = 40, "seed"_a = 12345, "min_angle_deg"_a = 1.0,
        "depth_tol"_a = 1e-6, py::kw_only(), "threads"_a = 1, "pd_from_curve on threads.");
  m.def("estimate_crossing_number", crossings_of, "points"_a, "directions"_a = 24, "seed"_a = 12345, py::kw_only(),
        "threads"_a = 1, "estimate_crossing_number on threads.");
}

}  // namespace vkm
