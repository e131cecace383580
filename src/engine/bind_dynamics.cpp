// Velocities and steps of filaments on any number of threads, and by the tree, for vkmcore.dynamics.

#include <algorithm>
#include <optional>

#include "core/finite.hpp"
#include "engine/engine.hpp"
#include "far/filament_far_field.hpp"
#include "filament/motion/filament_arguments.hpp"
#include "filament/sums/biot_savart.hpp"

namespace vkm {

namespace {

using Dicts = std::vector<py::dict>;

/// What the tree has to say of a call: whether it was used for every velocity, and its error at samples.
struct FarReport {
  bool tree = true;
  double sampled_error = 0.0;
};

/// The direct sum, or the tree within a tolerance.
VelocityLaw law_of(const FilamentOptions& options, int threads, std::optional<double> tolerance, FarReport& report) {
  report.tree = tolerance.has_value();
  return [=, &report](std::span<const Filament> filaments) {
    const bool finite = std::ranges::all_of(filaments, [](const Filament& f) { return all_finite(f.points); });
    if (!tolerance || !finite) {
      report.tree = false;
      return filament_velocity(filaments, options, released_poll(), threads);
    }
    far::FilamentFarVelocity far =
        far::filament_far_velocity(filaments, options, *tolerance, threads, released_poll());
    report.tree = report.tree && far.tree;
    report.sampled_error = std::max(report.sampled_error, far.sampled_error);
    return std::move(far.velocity);
  };
}

py::dict with_report(py::dict dict, const FarReport& report) {
  dict["far_field"] = report.tree ? "tree" : "direct";
  dict["sampled_error"] = report.sampled_error;
  return dict;
}

constexpr auto velocity_of = [](const Dicts& dicts, const py::dict& option_dict, int threads,
                                std::optional<double> tolerance) {
  const std::vector<Filament> filaments = filaments_from(dicts);
  FarReport report;
  const VelocityLaw law = law_of(options_from(option_dict), threads, tolerance, report);
  FilamentVelocity result;
  {
    const py::gil_scoped_release unlock;
    result = law(filaments);
  }
  return with_report(velocity_dict(result), report);
};

constexpr auto step_of = [](const Dicts& dicts, double dt, const py::dict& option_dict, int threads,
                            std::optional<double> tolerance) {
  const std::vector<Filament> filaments = filaments_from(dicts);
  FarReport report;
  const VelocityLaw law = law_of(options_from(option_dict), threads, tolerance, report);
  FilamentStep step;
  {
    const py::gil_scoped_release unlock;
    step = rk4_step(filaments, dt, law);
  }
  return with_report(step_dict(step), report);
};

constexpr auto time_step_of = [](const Dicts& dicts, const py::dict& option_dict, double cfl, int threads,
                                 std::optional<double> tolerance) {
  const std::vector<Filament> filaments = filaments_from(dicts);
  FarReport report;
  const VelocityLaw law = law_of(options_from(option_dict), threads, tolerance, report);
  const py::gil_scoped_release unlock;
  return cfl_time_step(filaments, law, cfl);
};

constexpr auto field_of = [](const DoubleArray& curve_array, const DoubleArray& point_array, double circulation,
                             int threads) {
  const std::vector<Vec3> curve = points_from(curve_array, shape_text);
  const Lanes points = lanes_from(point_array, shape_text);
  std::optional<Lanes> velocity;
  {
    const py::gil_scoped_release unlock;
    velocity = closed_curve_velocity(curve, points, circulation, released_poll(), threads);
  }
  return array_from(*velocity);
};

constexpr auto far_field_of = [](const DoubleArray& curve_array, const DoubleArray& point_array, double circulation,
                                 double soft, double tolerance, int threads) {
  const std::vector<Vec3> curve = points_from(curve_array, shape_text);
  const std::vector<Vec3> points = points_from(point_array, shape_text);
  far::FarVelocity velocity;
  {
    const py::gil_scoped_release unlock;
    velocity = far::closed_curve_far_velocity(curve, points, circulation, soft, tolerance, threads, released_poll());
  }
  py::dict result;
  result["velocity"] = array_from(velocity.velocity);
  return with_report(result, {velocity.tree, velocity.sampled_error});
};

constexpr auto point_velocities_of = [](const DoubleArray& target_array, const DoubleArray& source_array,
                                        const DoubleArray& tangent_array, double circulation, int threads) {
  const std::vector<Vec3> targets = points_from(target_array, shape_text);
  const std::vector<Vec3> sources = points_from(source_array, shape_text);
  const std::vector<Vec3> tangents = points_from(tangent_array, shape_text);
  std::vector<Vec3> velocity;
  {
    const py::gil_scoped_release unlock;
    velocity = biot_savart_velocities(targets, sources, tangents, circulation, released_poll(), threads);
  }
  return array_from(velocity);
};

}  // namespace

void bind_dynamics(py::module_& m) {
  using namespace py::literals;
  m.def("filament_velocity", velocity_of, "filaments"_a, "options"_a = py::dict(), py::kw_only(), "threads"_a = 1,
        "tolerance"_a = py::none(),
        "compute_filament_velocity on threads, with its bits; or by the tree within a tolerance.");
  m.def("rk4_step", step_of, "filaments"_a, "dt"_a, "options"_a = py::dict(), py::kw_only(), "threads"_a = 1,
        "tolerance"_a = py::none(), "The step of rk4_step by filament_velocity.");
  m.def("estimate_cfl_dt", time_step_of, "filaments"_a, "options"_a = py::dict(), "cfl"_a = 0.5, py::kw_only(),
        "threads"_a = 1, "tolerance"_a = py::none(), "The time step of estimate_cfl_dt by filament_velocity.");
  m.def("closed_curve_velocity", field_of, "curve"_a, "points"_a, "circulation"_a = 1.0, py::kw_only(),
        "threads"_a = 1, "biot_savart_velocity_grid on threads, with its bits.");
  m.def("closed_curve_far_velocity", far_field_of, "curve"_a, "points"_a, "circulation"_a = 1.0, py::kw_only(),
        "soft"_a = 0.0, "tolerance"_a = 1e-6, "threads"_a = 1, "The velocity of a closed curve by the tree.");
  m.def("point_velocities", point_velocities_of, "targets"_a, "filament_points"_a, "tangent_vectors"_a,
        "circulation"_a = 1.0, py::kw_only(), "threads"_a = 1, "biot_savart_velocity at many points, with its bits.");
}

}  // namespace vkm
