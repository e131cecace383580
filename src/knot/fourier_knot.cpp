#include "knot/fourier_knot.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "core/text_file.hpp"
#include "core/text_numbers.hpp"

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
    heartbeat.tick_each(64);
    const std::string_view line = content.substr(0, content.find('\n'));
    content.remove_prefix(std::min(line.size() + 1, content.size()));
    if (line.empty() || line.front() == '%') {
      end_block();
      continue;
    }
    NumberStream numbers(line);
    std::vector<double> row;
    while (const auto number = numbers.next()) row.push_back(*number);
    if (row.size() != 6) continue;
    block.a_x.push_back(row[0]);
    block.b_x.push_back(row[1]);
    block.a_y.push_back(row[2]);
    block.b_y.push_back(row[3]);
    block.a_z.push_back(row[4]);
    block.b_z.push_back(row[5]);
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
  for (std::size_t k = 0; k < count; ++k) {
    Vec3 r{};
    for (std::size_t i = 0; i < n; ++i) {
      // In this order of products, which is not the i + 1 times s_k of evaluate_fourier_block in its last bits.
      const double angle = static_cast<double>(i + 1) * static_cast<double>(k) * step;
      const double c = std::cos(angle);
      const double d = std::sin(angle);
      r[0] += block.a_x[i] * c + block.b_x[i] * d;
      r[1] += block.a_y[i] * c + block.b_y[i] * d;
      r[2] += block.a_z[i] * c + block.b_z[i] * d;
    }
    curve.push_back(r);
    heartbeat.tick();
  }
  points = std::move(curve);
}

}  // namespace vkm
