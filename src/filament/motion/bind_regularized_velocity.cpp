#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/motion/filament_step.hpp"
#include "filament/motion/regularized_velocity.hpp"

namespace vkm {

namespace {

/// The value of a key; a cast error that names the key, what it wants and what it holds, for another type.
template <class Value>
Value value_of(const py::dict& dict, const char* key, const char* wanted) {
  const py::object value = dict[key];
  try {
    return value.cast<Value>();
  } catch (const py::error_already_set& error) {
    if (!error.matches(PyExc_ValueError)) throw;
    throw py::value_error("key '" + std::string(key) + "': expected " + wanted + ": " + error.what());
  } catch (const py::cast_error&) {
    const std::string held = py::str(py::type::of(value).attr("__name__"));
    throw py::cast_error("key '" + std::string(key) + "': expected " + wanted + ", not " + held);
  }
}

template <class Value>
constexpr const char* name_of() {
  if constexpr (std::is_same_v<Value, bool>) return "a bool";
  if constexpr (std::is_same_v<Value, double>) return "a float";
  return "a str";
}

/// Overwrites `value` where the dict has the key.
template <class Value>
void read_key(const py::dict& dict, const char* key, Value& value) {
  if (dict.contains(key)) value = value_of<Value>(dict, key, name_of<Value>());
}

std::vector<Filament> filaments_from(const std::vector<py::dict>& dicts) {
  std::vector<Filament> filaments;
  filaments.reserve(dicts.size());
  for (const py::dict& dict : dicts) {
    Filament& filament = filaments.emplace_back();
    read_key(dict, "id", filament.id);
    read_key(dict, "carrier", filament.carrier);
    filament.points = points_from(value_of<DoubleArray>(dict, "points", "an array of points"), shape_text);
    read_key(dict, "circulation", filament.circulation);
    read_key(dict, "source", filament.source);
    read_key(dict, "ghost", filament.ghost);
  }
  return filaments;
}

FilamentOptions options_from(const py::dict& dict) {
  FilamentOptions options;
  read_key(dict, "lia_only", options.lia_only);
  read_key(dict, "a_sim", options.a_sim);
  read_key(dict, "core_delta", options.core_delta);
  read_key(dict, "lia_constant", options.lia_constant);
  read_key(dict, "core_radius", options.core_radius);
  return options;
}

py::dict velocity_dict(const std::vector<py::dict>& filaments, const py::dict& options) {
  const FilamentVelocity result = filament_velocity(filaments_from(filaments), options_from(options), python_poll());
  py::list velocity;
  for (const std::vector<Vec3>& field : result.velocity) velocity.append(array_from(field));
  py::dict dict;
  dict["velocity"] = velocity;
  dict["maximum_speed"] = result.maximum_speed;
  return dict;
}

py::dict step_dict(const std::vector<py::dict>& filaments, double dt, const py::dict& options) {
  const FilamentStep step = rk4_step(filaments_from(filaments), dt, options_from(options), python_poll());
  py::list moved;
  for (const Filament& filament : step.filaments) {
    py::dict dict;
    dict["id"] = filament.id;
    dict["carrier"] = filament.carrier;
    dict["points"] = array_from(filament.points);
    dict["circulation"] = filament.circulation;
    dict["ghost"] = filament.ghost;
    moved.append(dict);
  }
  py::dict dict;
  dict["filaments"] = moved;
  dict["maximum_stage_speed"] = step.maximum_stage_speed;
  return dict;
}

double cfl_dt(const std::vector<py::dict>& filaments, const py::dict& options, double cfl) {
  return cfl_time_step(filaments_from(filaments), options_from(options), cfl, python_poll());
}

constexpr const char* velocity_doc =
    R"(Compute the velocity of closed vortex filaments by local induction and the Biot-Savart sum of all sources.

filaments: list of dicts with the keys points (array (N, 3) in m, required; a closed polygon), circulation (m^2/s, 1.0),
source (induces, True), ghost (neither moves nor induces, False), id ("") and carrier ("A").
options: dict with the keys lia_only (local induction only, False), a_sim (softening length between different filaments
in m, 0.0), core_delta (the core radius is scaled by exp(core_delta), 0.0), lia_constant (added to the logarithm, 0.25)
and core_radius (m, 0.01).

Returns a dict: velocity, a list of arrays (N, 3) in m/s in the order of the input, zeros for ghosts, and maximum_speed.
compute_filament_velocity and compute_regularized_mutual_velocity are one computation.

The local term is Gamma / (4 pi) (log(2 sqrt(la lb) / a_eff) + C) times the discrete curvature binormal of the edges at
the vertex (Arms and Hama 1965; Schwarz, Phys. Rev. B 31 (1985) 5782), and the sum leaves these two edges out.
Raises KeyError without points and ValueError "Expected (N,3) array" for another shape.)";

}  // namespace

void register_regularized_velocity(py::module_& m) {
  for (const char* name : {"compute_filament_velocity", "compute_regularized_mutual_velocity"}) {
    m.def(name, &velocity_dict, py::arg("filaments"), py::arg("options") = py::dict(), velocity_doc);
  }

  m.def("rk4_step", &step_dict, py::arg("filaments"), py::arg("dt"), py::arg("options") = py::dict(),
        R"(Advance closed vortex filaments by one classical fourth-order Runge-Kutta step of dt seconds.

filaments and options as in compute_filament_velocity. Returns a dict: filaments, a list of dicts with the keys id,
carrier, points, circulation and ghost, and maximum_stage_speed (m/s, over the four stages). The key source is not
written back: restore it where it was False. The input is left as it is.)");

  m.def("estimate_cfl_dt", &cfl_dt, py::arg("filaments"), py::arg("options") = py::dict(), py::arg("cfl") = 0.5,
        R"(Estimate a time step: that in which the fastest vertex covers cfl of the shortest edge that moves.

filaments and options as in compute_filament_velocity. Returns seconds, at least 1e-6; 1e-6 where nothing moves.)");
}

}  // namespace vkm
