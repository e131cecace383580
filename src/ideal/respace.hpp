#pragma once

/// New vertices on the same curve, equally spaced.

#include <optional>
#include <span>

#include "ideal/rope.hpp"

namespace vkm::ideal {

/// The curve with so many vertices a component, at equal distances along it: along the polygon itself where its edges
/// are uneven, along a cubic (Catmull-Rom) through its vertices else. Nothing if the deformation from the old polygon
/// to the new one could pass strands through each other: no point may move by 0.45 of the least distance of strands.
std::optional<Rope> respaced(const Rope& rope, std::span<const Index> counts);

/// The same with edges of about h, but at least six a component.
std::optional<Rope> respaced(const Rope& rope, double h);

}  // namespace vkm::ideal
