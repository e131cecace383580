// The entry of vkmcore._engine.

#include "core/kernel.hpp"
#include "core/pair_form.hpp"
#include "engine/engine.hpp"

PYBIND11_MODULE(_engine, m) {
  m.doc() = "The package's own extension. Use the functions of vkmcore; these are theirs.";
  m.def(
      "pair_forms",
      [] {
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
