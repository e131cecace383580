#pragma once

/// Filaments and options as dicts, the form of both extensions; the results of their motion likewise.

#include <string>
#include <vector>

#include "filament/curve_arguments.hpp"
#include "filament/motion/filament_step.hpp"
#include "filament/motion/regularized_velocity.hpp"

namespace vkm {

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

inline std::vector<Filament> filaments_from(const std::vector<py::dict>& dicts) {
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

inline FilamentOptions options_from(const py::dict& dict) {
  FilamentOptions options;
  read_key(dict, "lia_only", options.lia_only);
  read_key(dict, "a_sim", options.a_sim);
  read_key(dict, "core_delta", options.core_delta);
  read_key(dict, "lia_constant", options.lia_constant);
  read_key(dict, "core_radius", options.core_radius);
  return options;
}

/// velocity, maximum_speed.
inline py::dict velocity_dict(const FilamentVelocity& result) {
  py::list velocity;
  for (const std::vector<Vec3>& field : result.velocity) velocity.append(array_from(field));
  py::dict dict;
  dict["velocity"] = velocity;
  dict["maximum_speed"] = result.maximum_speed;
  return dict;
}

/// filaments, maximum_stage_speed.
inline py::dict step_dict(const FilamentStep& step) {
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

}  // namespace vkm
