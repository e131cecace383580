#pragma once

/// The registrars of this room, one a concept, of which bind_knot (in mass) is composed.

#include "module/border.hpp"

namespace vkm {

void register_fourier_series(py::module_& m);
void register_ideal_database(py::module_& m);
void register_catalogue(py::module_& m);
void register_curve_descriptors(py::module_& m);
void register_planar_diagram(py::module_& m);
void register_fourier_helicity(py::module_& m);
void register_vortex_knot_system(py::module_& m);

}  // namespace vkm
