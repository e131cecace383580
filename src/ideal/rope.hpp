#pragma once

/// A rope: closed polygons, one a component, whose vertices stand in one list. Unit of length: the radius of the tube
/// that the rope is to carry.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm::ideal {

using Index = std::uint32_t;

/// A component: the vertices begin .. end - 1.
struct Component {
  Index begin;
  Index end;
  Index size() const { return end - begin; }
};

struct Rope {
  std::vector<Vec3> points;
  std::vector<Component> components;

  Index size() const { return static_cast<Index>(points.size()); }
};

/// The neighbours of each vertex, and its component. Edge k runs from vertex k to next[k].
struct Cycle {
  explicit Cycle(std::span<const Component> components);
  explicit Cycle(const Rope& rope) : Cycle(rope.components) {}

  std::vector<Index> next;
  std::vector<Index> previous;
  std::vector<Index> component;
};

Rope rope_of(std::span<const std::vector<Vec3>> polygons);

double length(const Rope& rope, const Cycle& cycle);

/// Length of each component.
std::vector<double> lengths(const Rope& rope, const Cycle& cycle);

void scale(Rope& rope, double factor);

}  // namespace vkm::ideal
