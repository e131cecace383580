#include "knot/ideal_light_reader.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "core/text_numbers.hpp"
#include "knot/harmonics.hpp"

namespace vkm {

namespace {

constexpr auto npos = std::string_view::npos;
constexpr int harmonic_limit = 20;

struct Coefficients {
  std::array<Vec3, harmonic_limit> a{};
  std::array<Vec3, harmonic_limit> b{};
  int greatest = 0;
};

/// What stands behind the first `opening` of a tag.
std::optional<std::string_view> behind(std::string_view tag, std::string_view opening) {
  const std::size_t at = tag.find(opening);
  if (at == npos) return std::nullopt;
  return tag.substr(at + opening.size());
}

/// The harmonic of a row: 1 if it is not given or no number, beyond the limit if it is too large for an int.
int read_harmonic(std::string_view tag) {
  const auto text = behind(tag, "I=\"");
  if (!text) return 1;
  if (const auto value = read_int_prefix(*text)) return *value;
  return read_double_prefix(*text) ? harmonic_limit : 1;
}

Coefficients read_coefficients(std::string_view part) {
  Coefficients rows;
  for (std::size_t at = 0; (at = part.find("<Coeff", at)) != npos;) {
    const std::size_t end = part.find("/>", at);
    if (end == npos) break;
    const std::string_view tag = part.substr(at, end - at);
    at = end + 2;
    const auto a = behind(tag, "A=\"");
    const auto b = behind(tag, "B=\"");
    const int harmonic = read_harmonic(tag);
    Vec3 a_row{};
    Vec3 b_row{};
    if (!a || !b || harmonic < 0 || harmonic >= harmonic_limit) continue;
    if (!scan_triple(*a, a_row.data()) || !scan_triple(*b, b_row.data())) continue;
    rows.a[static_cast<std::size_t>(harmonic)] = a_row;
    rows.b[static_cast<std::size_t>(harmonic)] = b_row;
    rows.greatest = std::max(rows.greatest, harmonic);
  }
  return rows;
}

std::vector<Vec3> sample(const Coefficients& rows, int resolution, Heartbeat& heartbeat) {
  std::vector<Vec3> points;
  points.reserve(static_cast<std::size_t>(std::max(resolution, 0)));
  const auto n = static_cast<std::size_t>(std::max(resolution, 0));
  const auto greatest = static_cast<std::size_t>(rows.greatest);
  HarmonicColumn t{};
  HarmonicColumn angles{};
  HarmonicTurns turns;
  for (std::size_t first = 0; first < n; first += harmonic_block) {
    const std::size_t count = std::min(harmonic_block, n - first);
    HarmonicPoints r;
    for (std::size_t axis = 0; axis < 3; ++axis) r.axis[axis].fill(rows.a[0][axis]);
    for (std::size_t k = 0; k < count; ++k) t[k] = static_cast<double>(first + k) * two_pi / resolution;
    for (std::size_t j = 1; j <= greatest; ++j) {
      for (std::size_t k = 0; k < count; ++k) angles[k] = static_cast<double>(j) * t[k];
      turns.turn(angles, count);
      add_harmonic(r, turns, count, rows.a[j], rows.b[j]);
    }
    for (std::size_t k = 0; k < count; ++k) points.push_back(r[k]);
    heartbeat.tick();
  }
  return points;
}

std::vector<std::string_view> parts_of(std::string_view body) {
  constexpr std::string_view closing = "</Component>";
  std::vector<std::string_view> parts;
  for (std::size_t at = 0; (at = body.find("<Component", at)) != npos;) {
    const std::size_t end = body.find(closing, at);
    if (end == npos) break;
    parts.push_back(body.substr(at, end - at));
    at = end + closing.size();
  }
  if (parts.empty()) parts.push_back(body);
  return parts;
}

}  // namespace

std::vector<std::vector<Vec3>> read_ideal_filaments(std::string_view text, const std::string& id, int resolution,
                                                    const Poll& poll) {
  const std::size_t begin = text.find("<AB Id=\"" + id + "\"");
  if (begin == npos) return {};
  const std::size_t end = text.find("</AB>", begin);
  if (end == npos) return {};
  const std::vector<std::string_view> parts = parts_of(text.substr(begin, end - begin));
  if (resolution > 0) require_memory(static_cast<std::size_t>(resolution) * parts.size(), sizeof(Vec3));
  Heartbeat heartbeat(poll);
  std::vector<std::vector<Vec3>> filaments;
  filaments.reserve(parts.size());
  for (const std::string_view part : parts) filaments.push_back(sample(read_coefficients(part), resolution, heartbeat));
  return filaments;
}

}  // namespace vkm
