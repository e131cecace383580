#include "module/border.hpp"

#include <algorithm>
#include <set>

#include "core/memory.hpp"
#include "module/c_symbol.hpp"

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
  require_memory(static_cast<std::size_t>(view.shape(0)), sizeof(double));
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

/// Raised by every poll where it is not 0.
int rehearsed_signal = 0;

/// What is being changed; the interpreter lock guards it.
std::set<const void*>& changing() {
  static std::set<const void*> objects;
  return objects;
}

}  // namespace

void poll_python() {
  if (rehearsed_signal != 0) PyErr_SetInterruptEx(rehearsed_signal);
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
}

Poll python_poll() { return poll_python; }

Changing::Changing(const void* object, const char* what) : object_(object) {
  if (!changing().insert(object).second) {
    throw std::runtime_error(std::string(what) + ": another call is changing this object");
  }
}

Changing::~Changing() { changing().erase(object_); }

}  // namespace vkm

/// For tests of what a handler may do: every tick of every long loop polls, and every poll finds this signal pending,
/// until the symbol is called with 0.
VKM_C_SYMBOL void vkm_rehearse_signal(int signal) {
  vkm::rehearsed_signal = signal;
  vkm::poll_interval = signal == 0 ? std::chrono::milliseconds(5) : std::chrono::milliseconds(0);
}
