#include "module/border.hpp"

#include <algorithm>
#include <set>

#include "core/memory.hpp"
#include "module/c_symbol.hpp"

namespace vkm {

namespace {

/// The array as a view of any strides, which all of its flavours are.
py::array_t<double, 0> strided(const DoubleArray& array) {
  return py::reinterpret_borrow<py::array_t<double, 0>>(array);
}

/// A new array of `shape`; fill(out, begin, end) writes its values, part by part.
template <class Fill>
py::array_t<double> filled_array(const std::vector<py::ssize_t>& shape, std::size_t size, Fill fill) {
  require_memory(size, 2 * sizeof(double));  // the values and their copy
  py::array_t<double> array(shape);
  double* out = array.mutable_data();
  for (std::size_t begin = 0; begin < size; begin += rows_per_poll) {
    if (begin > 0) poll_python();
    fill(out, begin, std::min(begin + rows_per_poll, size));
  }
  return array;
}

}  // namespace

std::vector<Vec3> points_from(const DoubleArray& array, const char* text) {
  if (array.ndim() != 2 || array.shape(1) != 3) throw std::invalid_argument(text);
  std::vector<Vec3> points;
  append_rows(points, strided(array));
  return points;
}

Lanes lanes_from(const DoubleArray& array, const char* text) {
  if (array.ndim() != 2 || array.shape(1) != 3) throw std::invalid_argument(text);
  Lanes lanes(static_cast<std::size_t>(array.shape(0)));
  take_rows(array, [&](py::ssize_t begin, py::ssize_t end) {
    const auto view = array.unchecked<2>();
    for (py::ssize_t i = begin; i < end; ++i) {
      lanes.set(static_cast<std::size_t>(i), {view(i, 0), view(i, 1), view(i, 2)});
    }
  });
  return lanes;
}

std::vector<double> values_from(const DoubleArray& array, const char* text) {
  if (array.ndim() != 1) throw std::invalid_argument(text);
  std::vector<double> values;
  append_rows(values, strided(array));
  return values;
}

py::array_t<double> array_from(std::span<const Vec3> points) {
  return filled_array({static_cast<py::ssize_t>(points.size()), 3}, points.size() * 3,
                      [&](double* out, std::size_t begin, std::size_t end) {
                        for (std::size_t i = begin; i < end; ++i) out[i] = points[i / 3][i % 3];
                      });
}

py::array_t<double> array_from(const Lanes& points) {
  return filled_array({static_cast<py::ssize_t>(points.size()), 3}, points.size() * 3,
                      [&](double* out, std::size_t begin, std::size_t end) {
                        for (std::size_t i = begin; i < end; ++i) out[i] = points.axis(i % 3)[i / 3];
                      });
}

py::array_t<double> array_from(std::span<const double> values) {
  return array_from(values, {static_cast<py::ssize_t>(values.size())});
}

py::array_t<double> array_from(std::span<const double> values, const std::vector<py::ssize_t>& shape) {
  return filled_array(shape, values.size(), [&](double* out, std::size_t begin, std::size_t end) {
    std::copy(values.begin() + static_cast<std::ptrdiff_t>(begin), values.begin() + static_cast<std::ptrdiff_t>(end),
              out + begin);
  });
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
