#include "knot/fourier_series.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/text_file.hpp"
#include "core/text_numbers.hpp"
#include "knot/harmonics.hpp"

namespace vkm {

namespace {

/// One row of a block, as the evaluators want it.
struct Row {
  double harmonic;
  Vec3 a;
  Vec3 b;
};

/// The rows that are not all zero.
std::vector<Row> rows_of(const FourierBlock& block, bool& dropped) {
  const std::size_t n = block.a_x.size();
  if (std::min({block.b_x.size(), block.a_y.size(), block.b_y.size(), block.a_z.size(), block.b_z.size()}) < n) {
    throw std::invalid_argument("evaluate_fourier_block: the six coefficient vectors must not be shorter than a_x");
  }
  std::vector<Row> rows;
  rows.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    const Row row{static_cast<double>(i + 1),
                  {block.a_x[i], block.a_y[i], block.a_z[i]},
                  {block.b_x[i], block.b_y[i], block.b_z[i]}};
    if (row.a != Vec3{} || row.b != Vec3{}) rows.push_back(row);
  }
  dropped = rows.size() < n;
  return rows;
}

double entry(const std::vector<double>& values, std::size_t i) { return i < values.size() ? values[i] : 0.0; }

void end_block(FourierBlock& block, std::vector<FourierBlock>& blocks) {
  if (block.a_x.empty()) return;
  blocks.push_back(std::move(block));
  block = {};
}

}  // namespace

std::vector<FourierBlock> parse_fseries_from_string(std::string_view content, const Poll& poll) {
  Heartbeat heartbeat(poll);
  std::vector<FourierBlock> blocks;
  FourierBlock block;
  while (!content.empty()) {
    heartbeat.tick();
    std::string_view line = content.substr(0, content.find('\n'));
    content.remove_prefix(std::min(line.size() + 1, content.size()));
    line = line.substr(0, line.find_last_not_of("\r\n \t") + 1);
    if (line.empty()) {
      end_block(block, blocks);
      continue;
    }
    if (line.front() == '%') {
      end_block(block, blocks);
      line.remove_prefix(1);
      block.header = line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
      continue;
    }
    NumberStream numbers(line);
    std::array<double, 6> row{};
    const bool whole = std::all_of(row.begin(), row.end(), [&](double& number) {
      const auto next = numbers.next();
      number = next.value_or(0.0);
      return next.has_value();
    });
    if (!whole) continue;
    append_row(block, row);
  }
  end_block(block, blocks);
  return blocks;
}

std::vector<FourierBlock> parse_fseries_multi(const std::string& path, const Poll& poll) {
  const auto text = read_file(path, poll);
  return text ? parse_fseries_from_string(*text, poll) : std::vector<FourierBlock>{};
}

int index_of_largest_block(std::span<const FourierBlock> blocks) {
  const auto largest = std::max_element(blocks.begin(), blocks.end(), [](const auto& left, const auto& right) {
    return left.a_x.size() < right.a_x.size();
  });
  return largest == blocks.end() ? -1 : static_cast<int>(largest - blocks.begin());
}

std::vector<Vec3> evaluate_fourier_block(const FourierBlock& block, std::span<const double> s, const Poll& poll) {
  bool dropped = false;
  const std::vector<Row> rows = rows_of(block, dropped);
  const double n = static_cast<double>(block.a_x.size());
  require_memory(s.size(), sizeof(Vec3));
  std::vector<Vec3> points;
  points.reserve(s.size());
  Heartbeat heartbeat(poll);
  HarmonicColumn angles{};
  HarmonicTurns turns;
  for (std::size_t first = 0; first < s.size(); first += harmonic_block) {
    const std::size_t count = std::min(harmonic_block, s.size() - first);
    HarmonicPoints r;
    for (const Row& row : rows) {
      for (std::size_t k = 0; k < count; ++k) angles[k] = row.harmonic * s[first + k];
      turns.turn(angles, count);
      add_harmonic(r, turns, count, row.a, row.b);
      heartbeat.tick();
    }
    for (std::size_t k = 0; k < count; ++k) {
      // A row of zeros adds nothing, but for an angle without sine and cosine, whose product with 0 is no number.
      const bool lost = dropped && !std::isfinite(n * s[first + k]);
      points.push_back(lost ? Vec3{std::nan(""), std::nan(""), std::nan("")} : r[k]);
    }
    heartbeat.tick();
  }
  return points;
}

std::array<Vec3, 4> evaluate_with_derivatives(const FourierBlock& block, double s) {
  const std::size_t n = std::max(
      {block.a_x.size(), block.b_x.size(), block.a_y.size(), block.b_y.size(), block.a_z.size(), block.b_z.size()});
  Vec3 r{};
  Vec3 r1{};
  Vec3 r2{};
  Vec3 r3{};
  HarmonicColumn angles{};
  HarmonicTurns turns;
  for (std::size_t i = 0; i < n; ++i) {
    const double j = static_cast<double>(i + 1);
    const std::size_t k = i % harmonic_block;
    if (k == 0) {
      const std::size_t count = std::min(harmonic_block, n - i);
      for (std::size_t l = 0; l < count; ++l) angles[l] = static_cast<double>(i + l + 1) * s;
      turns.turn(angles, count);
    }
    const double c = turns.cosine[k];
    const double d = turns.sine[k];
    const Vec3 a{entry(block.a_x, i), entry(block.a_y, i), entry(block.a_z, i)};
    const Vec3 b{entry(block.b_x, i), entry(block.b_y, i), entry(block.b_z, i)};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      r[axis] += a[axis] * c + b[axis] * d;
      r1[axis] += j * b[axis] * c - j * a[axis] * d;
      r2[axis] += -(j * j) * a[axis] * c - (j * j) * b[axis] * d;
      r3[axis] += (j * j * j) * a[axis] * d - (j * j * j) * b[axis] * c;
    }
  }
  return {r, r1, r2, r3};
}

}  // namespace vkm
