#include "knot/ideal_database.hpp"
#include "knot/knot_registrars.hpp"

namespace vkm {

namespace {

void register_ideal_records(py::module_& m) {
  auto component = bound_class<IdealABComponent>(m, "IdealABComponent", R"(One component of an ideal knot or link.

r(s) = A0 + B0 + the series `fourier`; s in radians.)");
  component.def(py::init<>())
      .def_readwrite("component_index", &IdealABComponent::component_index, "Attribute I of the opening tag.")
      .def_readwrite("A0", &IdealABComponent::A0, "The A triple of row 0.")
      .def_readwrite("B0", &IdealABComponent::B0, "The B triple of row 0.")
      .def_readwrite("fourier", &IdealABComponent::fourier, "The rows from harmonic 1 on.");

  auto block = bound_class<IdealABBlock>(m, "IdealABBlock", "One knot or link of the ideal database.");
  block.def(py::init<>())
      .def_readwrite("id", &IdealABBlock::id, "Attribute Id, as \"3:1:1\".")
      .def_readwrite("conway", &IdealABBlock::conway, "Conway notation.")
      .def_readwrite("L", &IdealABBlock::L, "Length.")
      .def_readwrite("D", &IdealABBlock::D, "Tube diameter.")
      .def_readwrite("n", &IdealABBlock::n, "Number of components that the file states.")
      .def_readwrite("source_tag", &IdealABBlock::source_tag, "\"AB\", \"HT\" or \"TL\".");
  def_list(block, "components", &IdealABBlock::components, "The components, in file order.");
  block.def_readwrite("fourier", &IdealABBlock::fourier, "A copy of the first component's series.");
}

void register_parsers(py::module_& m) {
  m.def(
      "parse_ideal_txt_multi", [](const std::string& path) { return parse_ideal_txt_multi(path, python_poll()); },
      py::arg("path"),
      R"(Parse an ideal.txt-style file into IdealABBlock entries.

Only AB blocks. Raises RuntimeError if the file cannot be opened.)");
  m.def(
      "parse_ideal_txt_from_string",
      [](std::string_view content) { return parse_ideal_txt_from_string(content, python_poll()); }, py::arg("content"),
      R"(Parse ideal.txt-style content string into IdealABBlock entries.

Only AB blocks. Attributes and rows that do not parse fall back or are skipped; an I too large for an int raises
IndexError.)");
  m.def(
      "parse_ideal_halvard_from_string",
      [](std::string_view content) { return parse_ideal_halvard_from_string(content, python_poll()); },
      py::arg("content"),
      R"(Parse Halvard ideal*.txt content (AB, HT, TL) into IdealABBlock entries.

All AB blocks come first, then the HT, then the TL blocks.)");
  m.def(
      "parse_ideal_ab_by_id_from_string",
      [](std::string_view content, const std::string& ab_id) {
        return parse_ideal_ab_by_id_from_string(content, ab_id, python_poll());
      },
      py::arg("content"), py::arg("ab_id"),
      R"(Parse a single AB block by Id from ideal.txt-style content string.

Raises RuntimeError if there is none.)");
  m.def(
      "index_of_ideal_id",
      [](const std::vector<IdealABBlock>& blocks, std::string_view id) { return index_of_ideal_id(blocks, id); },
      py::arg("blocks"), py::arg("id"), "Return index of IdealABBlock with given id, or -1 if not found.");
  m.def("format_ideal_ab_header", &format_ideal_ab_header, py::arg("ab"),
        R"(Format AB metadata as: AB Id="..." Conway="..." L="..." D="..." n="..."

L and D are written with six decimals.)");
}

}  // namespace

void register_ideal_database(py::module_& m) {
  register_ideal_records(m);
  register_parsers(m);
  m.def(
      "evaluate_ideal_component",
      [](IdealABComponent component, const DoubleArray& s) {
        return array_from(evaluate_ideal_component(component, values_from(s, "s must be 1D"), python_poll()));
      },
      py::arg("component"), py::arg("s"), R"(Evaluate a single ideal AB component (includes I=0 offset).

s in radians, shape (N,). Returns an array of shape (N, 3); both triples of row 0 are added.

Raises ValueError if s is not one-dimensional.)");
  m.def(
      "evaluate_ideal_ab_components",
      [](IdealABBlock ab, const DoubleArray& s) {
        std::vector<py::array_t<double>> arrays;
        for (const auto& curve : evaluate_ideal_ab_components(ab, values_from(s, "s must be 1D"), python_poll())) {
          arrays.push_back(array_from(curve));
        }
        return arrays;
      },
      py::arg("ab"), py::arg("s"), R"(Evaluate all components of an ideal AB block.

s in radians, shape (N,). Returns one array of shape (N, 3) a component.

Raises ValueError if s is not one-dimensional.)");
}

}  // namespace vkm
