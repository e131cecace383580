#pragma once

/// The border between Python and the library: every binder includes this header and no pybind11 header of its own,
/// so that all of them see the same conversions.
///
/// Conversion of an array comes first (force-cast to float64), its shape check second, computation last. The text of
/// a failed check is the caller's, since functions differ in it. Results are fresh arrays that own their memory.

#include <pybind11/complex.h>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/typing.h>

#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/lanes.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace py = pybind11;

namespace vkm {

/// Any array or nested sequence, converted to float64; it may be strided.
using DoubleArray = py::array_t<double, py::array::forcecast>;
/// The same in C order, for kernels that walk raw memory.
using ContiguousArray = py::array_t<double, py::array::c_style | py::array::forcecast>;

/// The text of a bad shape for all functions that share the first one's conversion, whichever of them is called.
inline constexpr const char* points_shape_text = "pd_from_curve: expected array with shape (N,3)";

/// The rows of an (N, 3) array; std::invalid_argument(text) for any other shape.
std::vector<Vec3> points_from(const DoubleArray& array, const char* text);

/// The same, coordinate by coordinate for a kernel.
Lanes lanes_from(const DoubleArray& array, const char* text);

/// The entries of a 1-D array; std::invalid_argument(text) for any other rank.
std::vector<double> values_from(const DoubleArray& array, const char* text);

/// A new (N, 3) array.
py::array_t<double> array_from(std::span<const Vec3> points);
py::array_t<double> array_from(const Lanes& points);

/// A new 1-D array, or one of another shape that the values fill in C order.
py::array_t<double> array_from(std::span<const double> values);
py::array_t<double> array_from(std::span<const double> values, const std::vector<py::ssize_t>& shape);

/// A poll for long loops: raises KeyboardInterrupt (or what the pending signal's handler raises).
Poll python_poll();

/// A bound class. Its native destructor runs without the interpreter lock, which is held everywhere else: a large
/// object that goes away does not hold up other Python threads.
template <class... Types, class... Extra>
py::class_<Types...> bound_class(py::handle scope, const char* name, const Extra&... extra) {
  return py::class_<Types...>(scope, name, py::release_gil_before_calling_cpp_dtor(), extra...);
}

/// Binds a read-write attribute of list type. Each read gives a list of copies: elements of a plain read-write
/// attribute would be references into the owner and dangle once the list is replaced.
template <class Class, class Record, class List>
void def_list(Class& cls, const char* name, List Record::* member, const char* doc = "") {
  cls.def_property(
      name, [member](const Record& self) { return self.*member; },
      [member](Record& self, List value) { self.*member = std::move(value); }, doc);
}

/// The read-only form of def_list.
template <class Class, class Record, class List>
void def_list_readonly(Class& cls, const char* name, List Record::* member, const char* doc = "") {
  cls.def_property_readonly(name, [member](const Record& self) { return self.*member; }, doc);
}

}  // namespace vkm

namespace pybind11::detail {

/// Lists of points. Exact lists or tuples of three floats and (N, 3) float64 arrays are read directly, everything
/// else by the standard container conversion; the results are the same. It buys a factor of several on long lists.
template <>
struct type_caster<std::vector<vkm::Vec3>> : list_caster<std::vector<vkm::Vec3>, vkm::Vec3> {
  using Generic = list_caster<std::vector<vkm::Vec3>, vkm::Vec3>;

  bool load(handle src, bool convert) { return load_directly(src) || Generic::load(src, convert); }

  template <class Points>
  static handle cast(const Points& points, return_value_policy, handle) {
    object list = reinterpret_steal<object>(PyList_New(static_cast<ssize_t>(points.size())));
    if (!list) throw error_already_set();
    for (std::size_t i = 0; i < points.size(); ++i) {
      PyObject* row = PyList_New(3);
      if (row == nullptr) throw error_already_set();
      PyList_SET_ITEM(list.ptr(), static_cast<ssize_t>(i), row);
      for (ssize_t axis = 0; axis < 3; ++axis) {
        PyObject* number = PyFloat_FromDouble(points[i][static_cast<std::size_t>(axis)]);
        if (number == nullptr) throw error_already_set();
        PyList_SET_ITEM(row, axis, number);
      }
    }
    return list.release();
  }

 private:
  bool load_directly(handle src) { return load_list(src) || load_array(src); }

  bool load_list(handle src) {
    if (!PyList_CheckExact(src.ptr())) return false;
    const auto count = static_cast<std::size_t>(PyList_GET_SIZE(src.ptr()));
    value.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
      PyObject* row = PyList_GET_ITEM(src.ptr(), static_cast<ssize_t>(i));
      if (!(PyList_CheckExact(row) || PyTuple_CheckExact(row)) || PySequence_Fast_GET_SIZE(row) != 3) return false;
      PyObject** items = PySequence_Fast_ITEMS(row);
      for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!PyFloat_CheckExact(items[axis])) return false;
        value[i][axis] = PyFloat_AS_DOUBLE(items[axis]);
      }
    }
    return true;
  }

  bool load_array(handle src) {
    if (!isinstance<array_t<double>>(src)) return false;
    const auto source = reinterpret_borrow<array_t<double>>(src);
    if (source.ndim() != 2 || source.shape(1) != 3) return false;
    const auto view = source.unchecked<2>();
    value.resize(static_cast<std::size_t>(view.shape(0)));
    for (ssize_t i = 0; i < view.shape(0); ++i)
      value[static_cast<std::size_t>(i)] = {view(i, 0), view(i, 1), view(i, 2)};
    return true;
  }
};

/// Lists of floats, in the same way: exact lists of floats and float64 arrays of one dimension are read directly.
template <>
struct type_caster<std::vector<double>> : list_caster<std::vector<double>, double> {
  using Generic = list_caster<std::vector<double>, double>;

  bool load(handle src, bool convert) { return load_list(src) || load_array(src) || Generic::load(src, convert); }

  template <class Numbers>
  static handle cast(const Numbers& numbers, return_value_policy, handle) {
    object list = reinterpret_steal<object>(PyList_New(static_cast<ssize_t>(numbers.size())));
    if (!list) throw error_already_set();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      PyObject* number = PyFloat_FromDouble(numbers[i]);
      if (number == nullptr) throw error_already_set();
      PyList_SET_ITEM(list.ptr(), static_cast<ssize_t>(i), number);
    }
    return list.release();
  }

 private:
  bool load_list(handle src) {
    if (!PyList_CheckExact(src.ptr())) return false;
    const auto count = static_cast<std::size_t>(PyList_GET_SIZE(src.ptr()));
    value.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
      PyObject* number = PyList_GET_ITEM(src.ptr(), static_cast<ssize_t>(i));
      if (!PyFloat_CheckExact(number)) return false;
      value[i] = PyFloat_AS_DOUBLE(number);
    }
    return true;
  }

  bool load_array(handle src) {
    if (!isinstance<array_t<double>>(src)) return false;
    const auto source = reinterpret_borrow<array_t<double>>(src);
    if (source.ndim() != 1) return false;
    const auto view = source.unchecked<1>();
    value.resize(static_cast<std::size_t>(view.shape(0)));
    for (ssize_t i = 0; i < view.shape(0); ++i) value[static_cast<std::size_t>(i)] = view(i);
    return true;
  }
};

/// Arguments that a function reads through a span: lists, held as vectors for the time of the call.
template <class T>
struct type_caster<std::span<const T>> {
  using List = make_caster<std::vector<T>>;
  static constexpr auto name = List::name;
  template <class>
  using cast_op_type = std::span<const T>;

  bool load(handle src, bool convert) { return list_.load(src, convert); }
  operator std::span<const T>() { return static_cast<std::vector<T>&>(list_); }

 private:
  List list_;
};

}  // namespace pybind11::detail
