#include "knot/catalogue.hpp"
#include "knot/knot_registrars.hpp"
#include "knot/resource_search.hpp"

namespace vkm {

namespace {

using TextDict = py::typing::Dict<py::str, py::str>;

py::str text_from(std::string_view text) { return py::str(text.data(), text.size()); }

/// Straight from the embedded table: each text is copied once, into its Python string.
TextDict dict_from(std::span<const EmbeddedText> table) {
  TextDict files;
  for (const EmbeddedText& entry : table) files[text_from(entry.key)] = text_from(entry.text);
  return files;
}

}  // namespace

void register_catalogue(py::module_& m) {
  m.def(
      "get_embedded_knot_files", [] { return dict_from(embedded_knot_files()); },
      "Return embedded .fseries resources as {knot_id: file_content}.");
  m.def(
      "get_embedded_ideal_files", [] { return dict_from(embedded_ideal_files()); },
      "Return embedded ideal*.txt resources as {relative_name: content}.");
  m.def("load_embedded_knot_block", &load_embedded_knot_block, py::arg("knot_id"),
        R"(Load embedded knot by id and return its largest Fourier block.

Raises RuntimeError if the id is unknown or its text holds no block.)");
  m.def("load_embedded_ideal_text", &load_embedded_ideal_text, py::arg("name") = "ideal.txt",
        R"(Load embedded ideal text resource from library (basename fallback supported).

Raises RuntimeError if there is none.)");
  m.def("parse_embedded_ideal_txt", &parse_embedded_ideal_txt, py::arg("name") = "ideal.txt",
        R"(Parse embedded ideal*.txt resource into AB blocks.

Raises RuntimeError if there is no such resource.)");
  m.def("parse_embedded_ideal_ab_by_id", &parse_embedded_ideal_ab_by_id, py::arg("ab_id"),
        py::arg("name") = "ideal.txt", R"(Parse a single AB block by Id from an embedded ideal*.txt resource.

Raises RuntimeError if the resource or the block does not exist.)");
  m.def(
      "find_ideal_ab_block_by_id",
      [](const std::string& ab_id) { return find_ideal_ab_block_by_id(ab_id, python_poll()); }, py::arg("ab_id"),
      R"(Find <AB Id="..."> block XML in embedded/disk ideal*.txt (never knotplot). Returns empty string if not found.

Sources, in order: the embedded databases; ideal*.txt under VKM_RESOURCE_DIR, beside VKM_KNOT_DATA_DIR and in the usual
places; VKM_IDEAL_DATABASE; ideal_database.txt; VKM_IDEAL_TXT.)");
  m.def(
      "find_ideal_block_by_id",
      [](const std::string& block_id, const std::string& tag) {
        return find_ideal_block_by_id(block_id, tag, python_poll());
      },
      py::arg("block_id"), py::arg("tag") = "",
      R"(Find <AB>, <HT>, or <TL> block XML by Id in ideal*.txt sources. Empty tag tries AB, HT, TL in order.

Returns an empty string if not found.)");
}

}  // namespace vkm
