#include "knot/named_knot.hpp"

#include <stdexcept>

#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "knot/catalogue.hpp"
#include "knot/resource_search.hpp"

namespace vkm {

std::vector<Vec3> sample_both_ends_centred(const FourierBlock& block, int resolution, const Poll& poll) {
  if (resolution < 1) return {};
  const auto count = static_cast<std::size_t>(resolution);
  require_memory(count, sizeof(Vec3) + sizeof(double));
  std::vector<double> s(count);
  const double last = resolution - 1;
  for (std::size_t i = 0; i < count; ++i) s[i] = static_cast<double>(i) * two_pi / last;
  std::vector<Vec3> points = evaluate_fourier_block(block, s, poll);
  Vec3 mean{};
  for (const Vec3& point : points) mean += point;
  mean = mean / static_cast<double>(count);
  for (Vec3& point : points) point -= mean;
  return points;
}

std::vector<Vec3> sample_named_knot(const std::string& knot_id, int resolution, const Poll& poll) {
  if (const EmbeddedText* entry = find_embedded(embedded_knot_files(), knot_id)) {
    const std::vector<FourierBlock> blocks = parse_fseries_from_string(entry->text);
    const int largest = index_of_largest_block(blocks);
    if (largest >= 0) return sample_both_ends_centred(blocks[static_cast<std::size_t>(largest)], resolution, poll);
  }
  const std::string path = resolve_knot_fseries_path(knot_id, "");
  if (path.empty()) throw std::runtime_error("Could not find .fseries file for knot: " + knot_id);
  const std::vector<FourierBlock> blocks = parse_fseries_multi(path, poll);
  const int largest = index_of_largest_block(blocks);
  std::vector<Vec3> points;
  if (largest >= 0) points = sample_both_ends_centred(blocks[static_cast<std::size_t>(largest)], resolution, poll);
  if (points.empty()) throw std::runtime_error("Failed to load knot " + knot_id + " from " + path);
  return points;
}

}  // namespace vkm
