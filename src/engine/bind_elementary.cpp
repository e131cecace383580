#include <map>
#include <variant>

#include "core/elementary.hpp"
#include "engine/engine.hpp"

namespace vkm {

namespace {

using One = double (*)(double);
using Two = double (*)(double, double);
using Lanes = void (*)(std::span<const double>, std::span<double>);
using PairLanes = void (*)(std::span<const double>, std::span<const double>, std::span<double>);

const std::map<std::string, One> ones = {{"sin", sin},   {"cos", cos}, {"tan", tan}, {"asin", asin},
                                         {"acos", acos}, {"exp", exp}, {"log", log}, {"log10", log10}};
const std::map<std::string, Two> twos = {{"atan2", atan2}, {"pow", pow}, {"hypot", hypot}};
const std::map<std::string, Lanes> lane_forms = {{"sin", sin},   {"cos", cos}, {"tan", tan}, {"asin", asin},
                                                 {"acos", acos}, {"exp", exp}, {"log", log}};
const std::map<std::string, PairLanes> pair_lane_forms = {{"hypot", hypot}};

template <class Table>
typename Table::mapped_type form(const Table& table, const std::string& name) {
  const auto found = table.find(name);
  if (found == table.end()) throw std::invalid_argument("elementary: no such form of a function: " + name);
  return found->second;
}

py::array_t<double> elementary_values(const std::string& name, const ContiguousArray& x,
                                      const std::optional<ContiguousArray>& y, bool lanes) {
  const std::span<const double> a(x.data(), static_cast<std::size_t>(x.size()));
  const std::span<const double> b = y ? std::span(y->data(), static_cast<std::size_t>(y->size())) : a;
  if (a.size() != b.size()) throw std::invalid_argument("elementary: x and y must have the same size");
  std::vector<double> values(a.size());
  {
    const py::gil_scoped_release released;
    if (y && lanes) {
      form(pair_lane_forms, name)(a, b, values);
    } else if (y) {
      const Two f = form(twos, name);
      for (std::size_t i = 0; i < a.size(); ++i) values[i] = f(a[i], b[i]);
    } else if (lanes) {
      form(lane_forms, name)(a, values);
    } else {
      const One f = form(ones, name);
      for (std::size_t i = 0; i < a.size(); ++i) values[i] = f(a[i]);
    }
  }
  return array_from(values);
}

}  // namespace

void bind_elementary(py::module_& m) {
  m.def("elementary", elementary_values, py::arg("name"), py::arg("x"), py::arg("y") = py::none(),
        py::arg("lanes") = false,
        "Values of an elementary function (sin, cos, tan, asin, acos, exp, log, log10 of x; atan2, pow, hypot of x and "
        "y), correctly rounded; by the form for many numbers at a time if `lanes` is true. ValueError for a function "
        "that there is not.");
}

}  // namespace vkm
