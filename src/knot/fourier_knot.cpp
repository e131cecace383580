#include "knot/fourier_knot.hpp"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "core/text_file.hpp"
#include "core/text_numbers.hpp"
#include "knot/harmonics.hpp"

namespace vkm {

void FourierKnot::loadBlocks(const std::string& path, const Poll& poll) {
  const auto text = read_file(path, poll);
  if (!text) {
    blocks.clear();
    throw std::runtime_error("Cannot open file: " + path);
  }

  Heartbeat heartbeat(poll);
  std::vector<FourierBlock> loaded;
  FourierBlock block;
  const auto end_block = [&] {
    if (!block.a_x.empty()) loaded.push_back(std::move(block));
    block = {};
  };
  std::string_view content = *text;
  while (!content.empty()) {
    heartbeat.tick();
    const std::string_view line = content.substr(0, content.find('\n'));
    content.remove_prefix(std::min(line.size() + 1, content.size()));
    if (line.empty() || line.front() == '%') {
      end_block();
      continue;
    }
    NumberStream numbers(line);
    std::vector<double> row;
    while (const auto number = numbers.next()) row.push_back(*number);
    if (row.size() == 6) append_row(block, std::span<const double, 6>(row));
  }
  end_block();
  blocks = std::move(loaded);
}

void FourierKnot::selectMaxHarmonics() {
  if (blocks.empty()) throw std::runtime_error("No Fourier blocks loaded");
  activeBlock = blocks[static_cast<std::size_t>(index_of_largest_block(blocks))];
}

void FourierKnot::reconstruct(std::size_t count, const Poll& poll) {
  const FourierBlock block = activeBlock;  // what a poll may replace
  const std::size_t n = block.a_x.size();
  if (n == 0) throw std::runtime_error("No active Fourier block selected");
  if (std::min({block.b_x.size(), block.a_y.size(), block.b_y.size(), block.a_z.size(), block.b_z.size()}) < n) {
    throw std::invalid_argument("reconstruct: the six coefficient vectors must not be shorter than a_x");
  }
  require_memory(count, sizeof(Vec3));
  std::vector<Vec3> curve;
  curve.reserve(count);
  const double step = two_pi / static_cast<double>(count);
  Heartbeat heartbeat(poll);
  HarmonicColumn angles{};
  HarmonicTurns turns;
  for (std::size_t first = 0; first < count; first += harmonic_block) {
    const std::size_t used = std::min(harmonic_block, count - first);
    HarmonicPoints r;
    for (std::size_t i = 0; i < n; ++i) {
      // In this order of products, which is not the i + 1 times s_k of evaluate_fourier_block in its last bits.
      for (std::size_t k = 0; k < used; ++k) {
        angles[k] = static_cast<double>(i + 1) * static_cast<double>(first + k) * step;
      }
      turns.turn(angles, used);
      add_harmonic(r, turns, used, {block.a_x[i], block.a_y[i], block.a_z[i]},
                   {block.b_x[i], block.b_y[i], block.b_z[i]});
      heartbeat.tick();
    }
    for (std::size_t k = 0; k < used; ++k) curve.push_back(r[k]);
  }
  points = std::move(curve);
}

}  // namespace vkm
