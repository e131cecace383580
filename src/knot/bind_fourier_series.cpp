#include <tuple>

#include "knot/fourier_knot.hpp"
#include "knot/fourier_series.hpp"
#include "knot/knot_registrars.hpp"

namespace vkm {

namespace {

void register_fourier_block(py::module_& m) {
  auto block = bound_class<FourierBlock>(m, "FourierBlock", R"(A closed curve as a truncated Fourier series.

x(s) = sum_i a_x[i] cos((i + 1) s) + b_x[i] sin((i + 1) s), the same for y and z; s in radians, period 2 pi. Row i is
harmonic i + 1; there is no constant term.)");
  block.def(py::init<>()).def_readwrite("header", &FourierBlock::header, "Text of the block's last % line.");
  def_list(block, "a_x", &FourierBlock::a_x, "Cosine coefficients of x.");
  def_list(block, "b_x", &FourierBlock::b_x, "Sine coefficients of x.");
  def_list(block, "a_y", &FourierBlock::a_y, "Cosine coefficients of y.");
  def_list(block, "b_y", &FourierBlock::b_y, "Sine coefficients of y.");
  def_list(block, "a_z", &FourierBlock::a_z, "Cosine coefficients of z.");
  def_list(block, "b_z", &FourierBlock::b_z, "Sine coefficients of z.");
}

void register_fourier_knot(py::module_& m) {
  auto knot = bound_class<FourierKnot>(m, "fourier_knot",
                                       "A knot from a .fseries file: loadBlocks, selectMaxHarmonics, reconstruct.");
  knot.def(py::init<>());
  def_list(knot, "blocks", &FourierKnot::blocks, "Blocks of the last loadBlocks.");
  knot.def_readwrite("activeBlock", &FourierKnot::activeBlock, "The block that reconstruct evaluates.");
  def_list(knot, "points", &FourierKnot::points, "Points of the last reconstruct.");
  knot.def(
      "loadBlocks",
      [](FourierKnot& self, const std::string& path) {
        const Changing changing(&self, "loadBlocks");
        self.loadBlocks(path, python_poll());
      },
      R"(Replace `blocks` by the blocks of the .fseries file at a path.

A row counts only if it has exactly six numbers; headers are not kept. `activeBlock` and `points` stay as they are.

Raises RuntimeError if the file cannot be opened; `blocks` is empty then.)");
  knot.def("selectMaxHarmonics", &FourierKnot::selectMaxHarmonics,
           R"(Copy the first block with the most rows into `activeBlock`.

Raises RuntimeError if there are no blocks.)");
  knot.def(
      "reconstruct",
      [](FourierKnot& self, std::size_t count) {
        const Changing changing(&self, "reconstruct");
        self.reconstruct(count, python_poll());
      },
      R"(Fill `points` with the given number of points at s = k 2 pi / N, the end point not repeated.

Raises RuntimeError if `activeBlock` has no rows, ValueError if one of its vectors is shorter than a_x.)");
}

}  // namespace

void register_fourier_series(py::module_& m) {
  register_fourier_block(m);
  register_fourier_knot(m);
  m.def(
      "parse_fseries_multi", [](const std::string& path) { return parse_fseries_multi(path, python_poll()); },
      py::arg("path"), R"(Parse a .fseries file into Fourier blocks.

An unreadable file gives an empty list; rows that do not begin with six numbers are dropped.)");
  m.def(
      "parse_fseries_from_string",
      [](std::string_view content) { return parse_fseries_from_string(content, python_poll()); }, py::arg("content"),
      R"(Parse .fseries content string into Fourier blocks.

A blank line ends a block; a line that begins with % ends it and is the header of the next.)");
  m.def(
      "index_of_largest_block", [](const std::vector<FourierBlock>& blocks) { return index_of_largest_block(blocks); },
      py::arg("blocks"), R"(Return index of block with most harmonics.

The first of equals; -1 for an empty list.)");
  m.def(
      "evaluate_fourier_block",
      [](FourierBlock block, const std::vector<double>& s) { return evaluate_fourier_block(block, s, python_poll()); },
      py::arg("block"), py::arg("s"), R"(Evaluate r(s) for the given Fourier block.

s in radians. Returns one [x, y, z] per entry of s.

Raises ValueError if one of the block's vectors is shorter than a_x.)");
  m.def(
      "evaluate_with_derivatives",
      [](const FourierBlock& block, double s) {
        const auto [r, r1, r2, r3] = evaluate_with_derivatives(block, s);
        return std::make_tuple(r, r1, r2, r3);
      },
      py::arg("block"), py::arg("s"),
      R"(Evaluate Fourier block and its first three derivatives at parameter s.

s in radians. Returns r, r', r'' and r''' as [x, y, z]; entries missing in a shorter vector count as 0.)");
}

}  // namespace vkm
