#pragma once

/// Conversions of numbers, lists and arrays at the border, in the place of pybind11's. They accept and give the same,
/// and beyond that
///
/// - let the exceptions of a user's object pass: a KeyboardInterrupt or MemoryError in an element's __float__ reaches
///   the caller, and only the errors that mean "not convertible" go on to the next overload and its TypeError;
/// - ask for memory before they take what a caller's shape or length asks for;
/// - end by a signal within milliseconds, long lists included.
///
/// A signal's handler may change the list or array that is being read: nothing is kept of it from before a poll.

#include <pybind11/complex.h>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/typing.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/lanes.hpp"
#include "core/memory.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Raises KeyboardInterrupt (or what the handler of a pending signal raises).
///
/// The handler is Python code: it may change any object that Python can reach, and other threads may run while it
/// waits. A call that polls therefore takes bound records and `self` by value and copies arrays into vectors first;
/// one that writes back to `self` holds a Changing.
void poll_python();

/// Rows of an array or list between two polls of its conversion.
inline constexpr std::size_t rows_per_poll = std::size_t{1} << 16;

/// Polls behind every so many rows: a short conversion never does, so that the arguments of a call are those that the
/// caller gave. One long enough to be interrupted may see what a handler changes in arguments that are still to come.
inline void poll_after(std::size_t row) {
  if (row % rows_per_poll == rows_per_poll - 1) poll_python();
}

/// Clears the pending error if it says that a value cannot be converted, and throws any other.
void forget_failed_conversion();

/// Throws std::bad_alloc where the elements of an array would take absurd memory as float64; other objects pass.
void require_memory_of(pybind11::handle source);

/// Reads a number as pybind11 does; false for what is none, or is out of range.
bool read_number(pybind11::handle source, bool convert, double& number);
bool read_number(pybind11::handle source, bool convert, int& number);
bool read_number(pybind11::handle source, bool convert, unsigned int& number);
bool read_number(pybind11::handle source, bool convert, long& number);
bool read_number(pybind11::handle source, bool convert, unsigned long& number);

/// Reads an exact list of rows (lists or tuples of three floats), or of floats, or a float64 array of the same shape;
/// false, with any values, for everything else. It buys a factor of several on long lists; the results are the same.
bool read_directly(pybind11::handle source, std::vector<Vec3>& points);
bool read_directly(pybind11::handle source, std::vector<double>& values);

/// A new list of lists of three floats, or of floats.
pybind11::handle list_of(std::span<const Vec3> points);
pybind11::handle list_of(std::span<const double> values);

/// Calls take(begin, end) for the rows of an array, part by part, with polls between the parts: `take` looks the memory
/// up anew each time. Throws std::runtime_error if a signal's handler gives the array another shape meanwhile.
template <class Take>
void take_rows(const pybind11::array& array, Take take) {
  constexpr auto part = static_cast<pybind11::ssize_t>(rows_per_poll);
  const std::vector<pybind11::ssize_t> shape(array.shape(), array.shape() + array.ndim());
  for (pybind11::ssize_t begin = 0; begin < shape[0]; begin += part) {
    if (begin > 0) poll_python();
    if (!std::equal(shape.begin(), shape.end(), array.shape(), array.shape() + array.ndim())) {
      throw std::runtime_error("an array changed its shape while it was read");
    }
    take(begin, std::min(begin + part, shape[0]));
  }
}

/// Appends the rows of an (N, 3) array.
void append_rows(std::vector<Vec3>& points, const pybind11::array_t<double, 0>& array);

/// Appends the entries of a 1-D array.
template <class T>
void append_rows(std::vector<T>& values, const pybind11::array_t<T, 0>& array) {
  require_memory(static_cast<std::size_t>(array.shape(0)), sizeof(T));
  values.reserve(static_cast<std::size_t>(array.shape(0)));
  take_rows(array, [&](pybind11::ssize_t begin, pybind11::ssize_t end) {
    const auto view = array.template unchecked<1>();
    for (pybind11::ssize_t i = begin; i < end; ++i) values.push_back(view(i));
  });
}

/// A list that no Python code sees before it is full: a signal's handler could find it through the collector.
class NewList {
 public:
  NewList(std::size_t size, std::size_t bytes_each);

  /// Takes over the reference; null stands for a pending error.
  void set(std::size_t i, PyObject* item);

  pybind11::handle release();

 private:
  pybind11::object list_;
};

/// An int or float.
template <class T>
struct NumberCaster {
  bool load(pybind11::handle source, bool convert) { return source && read_number(source, convert, value); }

  static pybind11::handle cast(T number, pybind11::return_value_policy, pybind11::handle) {
    if constexpr (std::is_floating_point_v<T>) {
      return PyFloat_FromDouble(number);
    } else if constexpr (std::is_signed_v<T>) {
      return PyLong_FromLongLong(number);
    } else {
      return PyLong_FromUnsignedLongLong(number);
    }
  }

  PYBIND11_TYPE_CASTER(
      T, pybind11::detail::io_name<std::is_integral_v<T>>("typing.SupportsInt | typing.SupportsIndex", "int",
                                                          "typing.SupportsFloat | typing.SupportsIndex", "float"));
};

}  // namespace vkm

namespace pybind11::detail {

template <>
struct type_caster<double> : vkm::NumberCaster<double> {};
template <>
struct type_caster<int> : vkm::NumberCaster<int> {};
template <>
struct type_caster<unsigned int> : vkm::NumberCaster<unsigned int> {};
template <>
struct type_caster<long> : vkm::NumberCaster<long> {};
template <>
struct type_caster<unsigned long> : vkm::NumberCaster<unsigned long> {};

template <class T>
struct type_caster<std::vector<T>> {
  using Item = make_caster<T>;
  static constexpr bool direct = std::is_same_v<T, double> || std::is_same_v<T, vkm::Vec3>;

  bool load(handle source, bool convert) {
    if constexpr (direct) {
      if (vkm::read_directly(source, value)) return true;
    }
    if (!object_is_convertible_to_std_vector(source)) return false;
    if (isinstance<sequence>(source)) return load_items(source, convert);
    // A generator is exhausted first, so that a failure does not leave it half read.
    return convert && load_items(tuple(reinterpret_borrow<iterable>(source)), convert);
  }

  template <class List>
  static handle cast(List&& items, return_value_policy policy, handle parent) {
    if constexpr (direct) {
      return vkm::list_of(items);
    } else {
      if (!std::is_lvalue_reference_v<List>) policy = return_value_policy_override<T>::policy(policy);
      vkm::NewList list(items.size(), sizeof(T));
      for (std::size_t i = 0; i < items.size(); ++i) {
        list.set(i, Item::cast(forward_like<List>(items[i]), policy, parent).ptr());
      }
      return list.release();
    }
  }

  PYBIND11_TYPE_CASTER(std::vector<T>,
                       io_name("collections.abc.Sequence", "list") + const_name("[") + Item::name + const_name("]"));

 private:
  bool load_items(handle items, bool convert) {
    vkm::require_memory_of(items);
    const std::size_t size = reinterpret_borrow<sequence>(items).size();
    vkm::require_memory(size, sizeof(T));
    value.clear();
    value.reserve(size);
    for (const handle element : items) {
      Item item;
      if (!item.load(element, convert)) return false;
      value.push_back(cast_op<T&&>(std::move(item)));
      vkm::poll_after(value.size());
    }
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

  bool load(handle source, bool convert) { return list_.load(source, convert); }
  operator std::span<const T>() { return static_cast<std::vector<T>&>(list_); }

 private:
  List list_;
};

/// Arrays of one element type, converted where that is asked for.
template <class T, int Flags>
struct vkm_array_caster {
  using Array = array_t<T, Flags>;

  bool load(handle source, bool convert) {
    if (!convert && !Array::check_(source)) return false;
    if (!Array::check_(source)) vkm::require_memory_of(source);  // a copy, of any length where it is broadcast
    try {
      value = Array(reinterpret_borrow<object>(source));
    } catch (error_already_set& error) {
      error.restore();
      vkm::forget_failed_conversion();
      return false;
    }
    return true;
  }

  static handle cast(const handle& source, return_value_policy, handle) { return source.inc_ref(); }
  PYBIND11_TYPE_CASTER(Array, handle_type_name<Array>::name);
};

/// Integers, converted from what numpy casts to them as it does; but a number out of range raises, where that wraps.
template <class T, int Flags>
struct vkm_integer_array_caster : vkm_array_caster<T, Flags> {
  bool load(handle source, bool convert) {
    if (isinstance<array_t<T>>(source) || !convert) return vkm_array_caster<T, Flags>::load(source, convert);
    vkm::require_memory_of(source);
    const auto whole =
        reinterpret_steal<object>(npy_api::get().PyArray_FromAny_(source.ptr(), nullptr, 0, 0, 0, nullptr));
    if (!whole) vkm::forget_failed_conversion();
    if (!whole || !vkm_array_caster<T, Flags>::load(whole, convert)) return false;
    const auto numbers = array_t<double, array::c_style | array::forcecast>(whole);
    constexpr double end = static_cast<double>(std::numeric_limits<T>::max() / 2 + 1) * 2.0;
    for (ssize_t i = 0; i < numbers.size(); ++i) {
      const double number = numbers.data()[i];
      if (number > -end - 1.0 && number < end) continue;
      throw std::invalid_argument(
          "an integer of an array must lie within " + std::to_string(std::numeric_limits<T>::min()) + " .. " +
          std::to_string(std::numeric_limits<T>::max()) + ", not " + std::string(str(float_(number))));
    }
    return true;
  }
};

template <int Flags>
struct pyobject_caster<array_t<std::int32_t, Flags>> : vkm_integer_array_caster<std::int32_t, Flags> {};
template <int Flags>
struct pyobject_caster<array_t<std::int64_t, Flags>> : vkm_integer_array_caster<std::int64_t, Flags> {};
template <int Flags>
struct pyobject_caster<array_t<double, Flags>> : vkm_array_caster<double, Flags> {};
template <int Flags>
struct pyobject_caster<array_t<std::complex<double>, Flags>> : vkm_array_caster<std::complex<double>, Flags> {};

}  // namespace pybind11::detail
