#pragma once

/// The nine arguments, from `knot_name` on, with which every builder of invariants ends in Python.

#include <string>
#include <utility>

#include "mass/knot_invariants.hpp"
#include "module/border.hpp"

namespace vkm {

/// Binds call(head..., KnotMetadata) as a function of the head arguments and of the nine.
template <class... Head, class Call, class... HeadArg>
void def_with_metadata(py::module_& m, const char* name, Call call, const char* doc, const HeadArg&... head) {
  m.def(
      name,
      [call](Head... values, std::string knot_name, std::int32_t crossing_number, std::int32_t braid_index,
             std::int32_t seifert_genus, std::int32_t chirality, bool hyperbolic, double hyperbolic_volume,
             std::int64_t nsamples, std::int32_t exclude_window) {
        return call(values..., KnotMetadata{std::move(knot_name), crossing_number, braid_index, seifert_genus,
                                            chirality, hyperbolic, hyperbolic_volume, nsamples, exclude_window});
      },
      head..., py::arg("knot_name") = "", py::arg("crossing_number") = 0, py::arg("braid_index") = 0,
      py::arg("seifert_genus") = 0, py::arg("chirality") = 0, py::arg("hyperbolic") = false,
      py::arg("hyperbolic_volume") = 0.0, py::arg("nsamples") = 2048, py::arg("exclude_window") = 4, doc);
}

}  // namespace vkm
