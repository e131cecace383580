#include "module/list_bindings.hpp"

#include <algorithm>
#include <cctype>

namespace vkm {

namespace {

constexpr const char* doc = R"(Return a dictionary of exported names in this module.

Args:
    pattern (str|None): optional case-insensitive substring filter.
    include_private (bool): include names beginning with '_' if True.

Returns: dict with keys: 'functions', 'classes', 'attributes', and 'counts'.
Also sets module __all__ = functions + classes (public names).)";

std::string lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
  return text;
}

py::dict list_bindings(py::handle module, const py::object& pattern, bool include_private) {
  const py::list names(module.attr("__dir__")());
  py::list functions;
  py::list classes;
  py::list attributes;
  const bool filtered = !pattern.is_none();
  const std::string wanted = filtered ? lower(py::str(pattern)) : std::string();

  for (const py::handle entry : names) {
    const std::string name = py::str(entry);
    if (!include_private && !name.empty() && name.front() == '_') continue;
    if (name == "list_bindings") continue;
    if (filtered && lower(name).find(wanted) == std::string::npos) continue;
    const py::object value = module.attr(name.c_str());
    if (PyType_Check(value.ptr()) != 0) {
      classes.append(name);
    } else if (PyCallable_Check(value.ptr()) != 0) {
      functions.append(name);
    } else {
      attributes.append(name);
    }
  }

  // The filtered list becomes __all__ too: it is what the last call found.
  py::list exported;
  for (const py::handle name : functions) exported.append(name);
  for (const py::handle name : classes) exported.append(name);
  module.attr("__all__") = exported;

  py::dict counts;
  counts["functions"] = functions.size();
  counts["classes"] = classes.size();
  counts["attributes"] = attributes.size();
  py::dict result;
  result["functions"] = functions;
  result["classes"] = classes;
  result["attributes"] = attributes;
  result["counts"] = counts;
  return result;
}

}  // namespace

void bind_list_bindings(py::module_& m) {
  // The module is captured unowned: a counted reference would be a cycle that the collector cannot see.
  const py::handle module = m;
  m.def(
      "list_bindings",
      [module](const py::object& pattern, bool include_private) {
        return list_bindings(module, pattern, include_private);
      },
      py::arg("pattern") = py::none(), py::arg("include_private") = false, doc);
}

}  // namespace vkm
