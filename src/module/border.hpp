#pragma once

/// The border between Python and the library: every binder includes this header and no pybind11 header of its own,
/// so that all of them see the same conversions.
///
/// Conversion of an array comes first (force-cast to float64), its shape check second, computation last. The text of
/// a failed check is the caller's, since functions differ in it. Results are fresh arrays that own their memory.

#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/lanes.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "module/casters.hpp"

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

/// poll_python as a poll for long loops.
Poll python_poll();

/// Held by a call that changes an object and polls meanwhile, so that none of two such calls is lost: the second one,
/// made by a signal's handler or another thread, raises RuntimeError.
class Changing {
 public:
  Changing(const void* object, const char* what);
  ~Changing();
  Changing(const Changing&) = delete;
  Changing& operator=(const Changing&) = delete;

 private:
  const void* object_;
};

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

/// Binds a read-write attribute that is text: str alone, not bytes, so that it is valid UTF-8.
template <class Class, class Record>
void def_text(Class& cls, const char* name, std::string Record::* member, const char* doc) {
  cls.def_property(
      name, [member](const Record& self) { return self.*member; },
      [member](Record& self, const py::str& value) { self.*member = value; }, doc);
}

}  // namespace vkm
