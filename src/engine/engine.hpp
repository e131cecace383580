#pragma once

/// The extension vkmcore._engine: what the package needs beyond the fixed interface of _native. Its functions are the
/// package's own, carry no promise to users, release the interpreter lock, and give the same bits for any number of
/// threads. Each binder is a function listed in module.cpp.

#include "module/border.hpp"

namespace vkm {

/// A poll for loops that run with the interpreter lock released: takes the lock, and throws what a pending signal's
/// handler raises. Only the thread that called from Python may call it.
inline Poll released_poll() {
  return [] {
    const py::gil_scoped_acquire lock;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  };
}

/// The binders, in the order of module.cpp.
void bind_dynamics(py::module_& m);
void bind_elementary(py::module_& m);
void bind_ideal(py::module_& m);
void bind_measures(py::module_& m);

}  // namespace vkm
