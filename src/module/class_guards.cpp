#include "module/class_guards.hpp"

namespace vkm {

namespace {

/// Called by pybind11 for the memory of an object that it is about to read and that has none yet.
void* refuse_memory(std::size_t) {
  throw py::type_error("this object was made without __init__ and holds no value: call its class instead");
}

PyObject* own_class(PyObject*, PyObject* object) {
  PyObject* type = reinterpret_cast<PyObject*>(Py_TYPE(object));
  Py_INCREF(type);
  return type;
}

PyObject* refuse_class(PyObject*, PyObject*) {
  PyErr_SetString(PyExc_TypeError, "__class__ cannot be assigned: the object's native value is of its own class");
  return nullptr;
}

PyMethodDef own_class_method = {"__class__", own_class, METH_O, nullptr};
PyMethodDef refuse_class_method = {"__class__", refuse_class, METH_VARARGS, nullptr};

}  // namespace

void guard_classes(py::module_& m) {
  const auto get = py::reinterpret_steal<py::object>(PyCFunction_New(&own_class_method, nullptr));
  const auto set = py::reinterpret_steal<py::object>(PyCFunction_New(&refuse_class_method, nullptr));
  const py::object property = py::module_::import("builtins").attr("property")(get, set);
  const auto contents = py::reinterpret_borrow<py::dict>(PyModule_GetDict(m.ptr()));
  for (const auto& [name, value] : contents) {
    if (PyType_Check(value.ptr()) == 0) continue;
    auto* type = reinterpret_cast<PyTypeObject*>(value.ptr());
    py::detail::type_info* info = py::detail::get_type_info(type);
    if (info == nullptr) continue;
    info->operator_new = refuse_memory;
    // Straight into the class's own names: an assignment would be one to the class's __class__.
    if (PyDict_SetItemString(type->tp_dict, "__class__", property.ptr()) != 0) throw py::error_already_set();
    PyType_Modified(type);
  }
}

}  // namespace vkm
