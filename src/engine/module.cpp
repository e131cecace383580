// The entry of vkmcore._engine.

#include "core/kernel.hpp"
#include "engine/engine.hpp"

PYBIND11_MODULE(_engine, m) {
  m.doc() = "The package's own extension. Use the functions of vkmcore; these are theirs.";
  m.def("vector_bits", vkm::kernel_vector_bits, "Width in bits of the vectors that the kernels use on this machine.");
  vkm::bind_dynamics(m);
  vkm::bind_elementary(m);
  vkm::bind_ideal(m);
}
