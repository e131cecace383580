#pragma once

#include <span>
#include <string>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// SHA-256 of the stored numbers, not of the geometry: for each point its x, y and z as little-endian IEEE-754 doubles,
/// 24 bytes a point, with no header and no count. Points that differ in the sign of a zero differ in their hash.
std::string sha256_hex_of_points(std::span<const Vec3> points, const Poll& poll = {});

}  // namespace vkm
