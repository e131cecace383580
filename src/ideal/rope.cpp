#include "ideal/rope.hpp"

namespace vkm::ideal {

Cycle::Cycle(std::span<const Component> components) {
  const std::size_t size = components.empty() ? 0 : components.back().end;
  for (auto* list : {&next, &previous, &component}) list->resize(size);
  for (Index c = 0; c < components.size(); ++c) {
    const auto [begin, end] = components[c];
    for (Index k = begin; k < end; ++k) {
      next[k] = k + 1 == end ? begin : k + 1;
      previous[k] = k == begin ? end - 1 : k - 1;
      component[k] = c;
    }
  }
}

Rope rope_of(std::span<const std::vector<Vec3>> polygons) {
  Rope rope;
  for (const auto& polygon : polygons) {
    const Index begin = rope.size();
    rope.points.insert(rope.points.end(), polygon.begin(), polygon.end());
    rope.components.push_back({begin, rope.size()});
  }
  return rope;
}

std::vector<double> lengths(const Rope& rope, const Cycle& cycle) {
  std::vector<double> sums(rope.components.size(), 0.0);
  for (Index k = 0; k < rope.size(); ++k) {
    sums[cycle.component[k]] += norm(rope.points[cycle.next[k]] - rope.points[k]);
  }
  return sums;
}

double length(const Rope& rope, const Cycle& cycle) {
  double sum = 0.0;
  for (const double part : lengths(rope, cycle)) sum += part;
  return sum;
}

void scale(Rope& rope, double factor) {
  for (Vec3& p : rope.points) p = factor * p;
}

}  // namespace vkm::ideal
