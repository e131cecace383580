#include "knot/loaded_knot.hpp"

#include <algorithm>

#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "knot/curve_descriptors.hpp"
#include "knot/fourier_series.hpp"

namespace vkm {

namespace {

/// Parameters from 0 to 2 pi, both included.
std::vector<double> period_with_both_ends(std::int64_t nsamples) {
  const std::int64_t n = std::max<std::int64_t>(nsamples, 0);
  // A parameter, a point and a curvature, and the lists that Python makes of them.
  require_memory(static_cast<std::size_t>(n), 64);
  std::vector<double> s(static_cast<std::size_t>(n));
  for (std::size_t k = 0; k < s.size(); ++k) s[k] = static_cast<double>(k) * two_pi / static_cast<double>(n - 1);
  return s;
}

void subtract_mean(std::vector<Vec3>& points) {
  Vec3 mean{};
  for (const Vec3& point : points) mean += point;
  mean = mean / static_cast<double>(points.size());
  for (Vec3& point : points) point -= mean;
}

}  // namespace

std::string knot_name_of_path(std::string_view path) {
  constexpr std::string_view word = "knot";
  const std::size_t slash = path.find_last_of("/\\");
  if (slash != std::string_view::npos) path.remove_prefix(slash + 1);
  std::string name(path.substr(0, path.rfind('.')));
  const auto same_letter = [](char c, char lower) { return (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) == lower; };
  const auto found = std::search(name.begin(), name.end(), word.begin(), word.end(), same_letter);
  if (found != name.end()) name.erase(found, found + word.size());
  return name;
}

std::vector<LoadedKnot> load_all_knots(std::span<const std::string> paths, std::int64_t nsamples, const Poll& poll) {
  const std::vector<double> s = period_with_both_ends(nsamples);
  std::vector<LoadedKnot> knots;
  Heartbeat heartbeat(poll);
  for (const std::string& path : paths) {
    heartbeat.tick();
    const std::vector<FourierBlock> blocks = parse_fseries_multi(path, poll);
    const int largest = index_of_largest_block(blocks);
    if (largest < 0) continue;
    LoadedKnot knot;
    knot.name = knot_name_of_path(path);
    knot.points = evaluate_fourier_block(blocks[static_cast<std::size_t>(largest)], s, poll);
    subtract_mean(knot.points);
    knot.curvature = compute_curvature(knot.points, 1e-8);
    knots.push_back(std::move(knot));
  }
  return knots;
}

}  // namespace vkm
