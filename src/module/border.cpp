#include "module/border.hpp"

#include <algorithm>

#include "core/memory.hpp"

namespace vkm {

std::vector<Vec3> points_from(const DoubleArray& array, const char* text) {
  if (array.ndim() != 2 || array.shape(1) != 3) throw std::invalid_argument(text);
  const auto view = array.unchecked<2>();
  require_memory(static_cast<std::size_t>(view.shape(0)), sizeof(Vec3));  // a broadcast array can have any length
  std::vector<Vec3> points(static_cast<std::size_t>(view.shape(0)));
  for (py::ssize_t i = 0; i < view.shape(0); ++i) {
    points[static_cast<std::size_t>(i)] = {view(i, 0), view(i, 1), view(i, 2)};
  }
  return points;
}

Lanes lanes_from(const DoubleArray& array, const char* text) {
  if (array.ndim() != 2 || array.shape(1) != 3) throw std::invalid_argument(text);
  const auto view = array.unchecked<2>();
  Lanes lanes(static_cast<std::size_t>(view.shape(0)));
  for (py::ssize_t i = 0; i < view.shape(0); ++i) {
    lanes.set(static_cast<std::size_t>(i), {view(i, 0), view(i, 1), view(i, 2)});
  }
  return lanes;
}

std::vector<double> values_from(const DoubleArray& array, const char* text) {
  if (array.ndim() != 1) throw std::invalid_argument(text);
  const auto view = array.unchecked<1>();
  std::vector<double> values(static_cast<std::size_t>(view.shape(0)));
  for (py::ssize_t i = 0; i < view.shape(0); ++i) values[static_cast<std::size_t>(i)] = view(i);
  return values;
}

py::array_t<double> array_from(std::span<const Vec3> points) {
  py::array_t<double> array({static_cast<py::ssize_t>(points.size()), py::ssize_t{3}});
  double* out = array.mutable_data();
  for (const Vec3& point : points) {
    for (const double coordinate : point) *out++ = coordinate;
  }
  return array;
}

py::array_t<double> array_from(const Lanes& points) {
  py::array_t<double> array({static_cast<py::ssize_t>(points.size()), py::ssize_t{3}});
  double* out = array.mutable_data();
  for (std::size_t i = 0; i < points.size(); ++i) {
    for (std::size_t a = 0; a < 3; ++a) *out++ = points.axis(a)[i];
  }
  return array;
}

py::array_t<double> array_from(std::span<const double> values) {
  return array_from(values, {static_cast<py::ssize_t>(values.size())});
}

py::array_t<double> array_from(std::span<const double> values, const std::vector<py::ssize_t>& shape) {
  require_memory(values.size(), 2 * sizeof(double));  // the values and their copy
  py::array_t<double> array(shape);
  std::copy(values.begin(), values.end(), array.mutable_data());
  return array;
}

namespace {

/// A new float; throws what Python raised.
PyObject* new_float(double value) {
  PyObject* number = PyFloat_FromDouble(value);
  if (number == nullptr) throw py::error_already_set();
  return number;
}

py::object new_list(std::size_t size) {
  py::object list = py::reinterpret_steal<py::object>(PyList_New(static_cast<py::ssize_t>(size)));
  if (!list) throw py::error_already_set();
  return list;
}

bool read_list(py::handle source, std::vector<Vec3>& points) {
  if (!PyList_CheckExact(source.ptr())) return false;
  const auto count = static_cast<std::size_t>(PyList_GET_SIZE(source.ptr()));
  points.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    PyObject* row = PyList_GET_ITEM(source.ptr(), static_cast<py::ssize_t>(i));
    if (!(PyList_CheckExact(row) || PyTuple_CheckExact(row)) || PySequence_Fast_GET_SIZE(row) != 3) return false;
    PyObject** items = PySequence_Fast_ITEMS(row);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (!PyFloat_CheckExact(items[axis])) return false;
      points[i][axis] = PyFloat_AS_DOUBLE(items[axis]);
    }
  }
  return true;
}

bool read_list(py::handle source, std::vector<double>& values) {
  if (!PyList_CheckExact(source.ptr())) return false;
  const auto count = static_cast<std::size_t>(PyList_GET_SIZE(source.ptr()));
  values.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    PyObject* number = PyList_GET_ITEM(source.ptr(), static_cast<py::ssize_t>(i));
    if (!PyFloat_CheckExact(number)) return false;
    values[i] = PyFloat_AS_DOUBLE(number);
  }
  return true;
}

}  // namespace

bool read_directly(py::handle source, std::vector<Vec3>& points) {
  if (read_list(source, points)) return true;
  if (!py::isinstance<py::array_t<double>>(source)) return false;
  const auto array = py::reinterpret_borrow<DoubleArray>(source);
  if (array.ndim() != 2 || array.shape(1) != 3) return false;
  const auto view = array.unchecked<2>();
  points.resize(static_cast<std::size_t>(view.shape(0)));
  for (py::ssize_t i = 0; i < view.shape(0); ++i) {
    points[static_cast<std::size_t>(i)] = {view(i, 0), view(i, 1), view(i, 2)};
  }
  return true;
}

bool read_directly(py::handle source, std::vector<double>& values) {
  if (read_list(source, values)) return true;
  if (!py::isinstance<py::array_t<double>>(source)) return false;
  const auto array = py::reinterpret_borrow<DoubleArray>(source);
  if (array.ndim() != 1) return false;
  const auto view = array.unchecked<1>();
  values.resize(static_cast<std::size_t>(view.shape(0)));
  for (py::ssize_t i = 0; i < view.shape(0); ++i) values[static_cast<std::size_t>(i)] = view(i);
  return true;
}

py::handle list_of(std::span<const Vec3> points) {
  py::object list = new_list(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    PyObject* row = new_list(3).release().ptr();
    PyList_SET_ITEM(list.ptr(), static_cast<py::ssize_t>(i), row);
    for (py::ssize_t axis = 0; axis < 3; ++axis) {
      PyList_SET_ITEM(row, axis, new_float(points[i][static_cast<std::size_t>(axis)]));
    }
  }
  return list.release();
}

py::handle list_of(std::span<const double> values) {
  py::object list = new_list(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    PyList_SET_ITEM(list.ptr(), static_cast<py::ssize_t>(i), new_float(values[i]));
  }
  return list.release();
}

Poll python_poll() {
  return [] {
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  };
}

}  // namespace vkm
