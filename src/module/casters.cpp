#include "module/casters.hpp"

namespace py = pybind11;

namespace vkm {

namespace {

/// Whether an object is an integer in the range of T; `failed` tells what is none from one out of range.
template <class T>
bool read_integer(py::handle source, T& number, bool& failed) {
  const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(source.ptr()));
  failed = !index;
  bool whole = false;
  if (index && std::is_signed_v<T>) {
    const long long value = PyLong_AsLongLong(index.ptr());
    number = static_cast<T>(value);
    whole = static_cast<long long>(number) == value;
  } else if (index) {
    const unsigned long long value = PyLong_AsUnsignedLongLong(index.ptr());
    number = static_cast<T>(value);
    whole = static_cast<unsigned long long>(number) == value;
  }
  failed = failed || PyErr_Occurred() != nullptr;
  forget_failed_conversion();
  return whole && !failed;
}

template <class T>
bool read_any_integer(py::handle source, bool convert, T& number) {
  // A float is no integer, whatever its value.
  if (PyFloat_Check(source.ptr())) return false;
  if (!convert && !PyLong_Check(source.ptr()) && !PyIndex_Check(source.ptr())) return false;
  bool failed = false;
  if (read_integer(source, number, failed)) return true;
  if (!failed || !convert || PyNumber_Check(source.ptr()) == 0) return false;
  const auto whole = py::reinterpret_steal<py::object>(PyNumber_Long(source.ptr()));
  if (!whole) forget_failed_conversion();
  return whole && read_integer(whole, number, failed);
}

bool read_item(PyObject* item, double& number) {
  if (PyFloat_CheckExact(item)) {
    number = PyFloat_AS_DOUBLE(item);
    return true;
  }
  if (!PyLong_CheckExact(item)) return false;
  number = PyLong_AsDouble(item);
  if (!(number == -1.0 && PyErr_Occurred() != nullptr)) return true;
  PyErr_Clear();  // too large: whoever asks says so
  return false;
}

bool read_item(PyObject* item, Vec3& point) {
  if (!(PyList_CheckExact(item) || PyTuple_CheckExact(item)) || PySequence_Fast_GET_SIZE(item) != 3) return false;
  PyObject** coordinates = PySequence_Fast_ITEMS(item);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (!read_item(coordinates[axis], point[axis])) return false;
  }
  return true;
}

template <class T>
bool read_list(PyObject* list, std::vector<T>& values) {
  const py::ssize_t size = PyList_GET_SIZE(list);
  require_memory(static_cast<std::size_t>(size), sizeof(T));
  values.clear();
  values.reserve(static_cast<std::size_t>(size));
  for (py::ssize_t i = 0; i < size; ++i) {
    if (PyList_GET_SIZE(list) != size) throw std::runtime_error("a list changed its length while it was read");
    T item{};
    if (!read_item(PyList_GET_ITEM(list, i), item)) return false;
    values.push_back(item);
    poll_after(static_cast<std::size_t>(i));
  }
  return true;
}

template <class T, class Fits>
bool read_list_or_array(py::handle source, std::vector<T>& values, Fits fits) {
  if (PyList_CheckExact(source.ptr())) return read_list(source.ptr(), values);
  if (!py::isinstance<py::array>(source)) return false;
  const auto array = py::reinterpret_borrow<py::array_t<double, 0>>(source);
  const py::dtype type = array.dtype();
  if (type.num() != py::detail::npy_api::NPY_DOUBLE_ || type.byteorder() != '=' || !fits(array)) return false;
  values.clear();
  append_rows(values, array);
  return true;
}

PyObject* written(double number) { return PyFloat_FromDouble(number); }

PyObject* written(const Vec3& point) {
  auto row = py::reinterpret_steal<py::object>(PyList_New(3));
  for (py::ssize_t axis = 0; row && axis < 3; ++axis) {
    PyObject* number = PyFloat_FromDouble(point[static_cast<std::size_t>(axis)]);
    if (number == nullptr) return nullptr;
    PyList_SET_ITEM(row.ptr(), axis, number);
  }
  return row.release().ptr();
}

template <class T>
py::handle new_list_of(std::span<const T> values, std::size_t bytes_each) {
  NewList list(values.size(), bytes_each);
  for (std::size_t i = 0; i < values.size(); ++i) list.set(i, written(values[i]));
  return list.release();
}

}  // namespace

void forget_failed_conversion() {
  if (PyErr_Occurred() == nullptr) return;
  for (PyObject* kind : {PyExc_TypeError, PyExc_ValueError, PyExc_OverflowError}) {
    if (PyErr_ExceptionMatches(kind) != 0) return PyErr_Clear();
  }
  throw py::error_already_set();
}

void require_memory_of(py::handle source) {
  if (!py::isinstance<py::array>(source)) return;
  require_memory(static_cast<std::size_t>(py::reinterpret_borrow<py::array>(source).size()), sizeof(double));
}

bool read_number(py::handle source, bool convert, double& number) {
  if (read_item(source.ptr(), number)) return true;
  if (!convert && !PyFloat_Check(source.ptr()) && !PyLong_Check(source.ptr())) return false;
  number = PyFloat_AsDouble(source.ptr());
  if (!(number == -1.0 && PyErr_Occurred() != nullptr)) return true;
  forget_failed_conversion();
  if (!convert || PyNumber_Check(source.ptr()) == 0) return false;
  const auto converted = py::reinterpret_steal<py::object>(PyNumber_Float(source.ptr()));
  if (!converted) forget_failed_conversion();
  return converted && read_number(converted, false, number);
}

bool read_number(py::handle source, bool convert, int& number) { return read_any_integer(source, convert, number); }
bool read_number(py::handle source, bool convert, unsigned int& number) {
  return read_any_integer(source, convert, number);
}
bool read_number(py::handle source, bool convert, long& number) { return read_any_integer(source, convert, number); }
bool read_number(py::handle source, bool convert, unsigned long& number) {
  return read_any_integer(source, convert, number);
}

void append_rows(std::vector<Vec3>& points, const py::array_t<double, 0>& array) {
  require_memory(static_cast<std::size_t>(array.shape(0)), sizeof(Vec3));
  points.reserve(static_cast<std::size_t>(array.shape(0)));
  take_rows(array, [&](py::ssize_t begin, py::ssize_t end) {
    const auto view = array.unchecked<2>();
    for (py::ssize_t i = begin; i < end; ++i) points.push_back({view(i, 0), view(i, 1), view(i, 2)});
  });
}

bool read_directly(py::handle source, std::vector<Vec3>& points) {
  return read_list_or_array(source, points, [](const auto& array) { return array.ndim() == 2 && array.shape(1) == 3; });
}

bool read_directly(py::handle source, std::vector<double>& values) {
  return read_list_or_array(source, values, [](const auto& array) { return array.ndim() == 1; });
}

NewList::NewList(std::size_t size, std::size_t bytes_each) {
  require_memory(size, bytes_each);
  list_ = py::reinterpret_steal<py::object>(PyList_New(static_cast<py::ssize_t>(size)));
  if (!list_) throw py::error_already_set();
  PyObject_GC_UnTrack(list_.ptr());
}

void NewList::set(std::size_t i, PyObject* item) {
  if (item == nullptr) throw py::error_already_set();
  PyList_SET_ITEM(list_.ptr(), static_cast<py::ssize_t>(i), item);
  poll_after(i);
}

py::handle NewList::release() {
  PyObject_GC_Track(list_.ptr());
  return list_.release();
}

py::handle list_of(std::span<const Vec3> points) {
  return new_list_of(points, 184);  // bytes of a list of three floats, and of its place
}

py::handle list_of(std::span<const double> values) {
  return new_list_of(values, 32);  // bytes of a float, and of its place
}

}  // namespace vkm
