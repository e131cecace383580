// The entry of vkmcore._engine.

#include "core/kernel.hpp"
#include "core/pair_form.hpp"
#include "engine/engine.hpp"
#include "filament/sums/fields_wide.hpp"
#include "formulas/plummer_dipoles.hpp"

PYBIND11_MODULE(_engine, m) {
  m.doc() = "The package's own extension. Use the functions of vkmcore; these are theirs.";
  m.def(
      "pair_forms",
      [] {
        // The engine does not run these, and would not have them without a name.
        for (const vkm::PairKernel* kernel : {&vkm::wire_grid_kernel, &vkm::dipole_grid_kernel, &vkm::plummer_kernel}) {
          kernel->form();
        }
        pybind11::dict forms;
        for (const auto& [kernel, form] : vkm::pair_forms()) forms[kernel.c_str()] = vkm::name_of(form);
        return forms;
      },
      "The form of each sum over pairs on this machine, by kernel.");
  m.def("vector_bits", vkm::kernel_vector_bits, "Width in bits of the vectors that the kernels use on this machine.");
  vkm::bind_dynamics(m);
  vkm::bind_elementary(m);
  vkm::bind_ideal(m);
  vkm::bind_measures(m);
}
