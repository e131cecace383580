#pragma once

/// A second, lighter reader of the ideal database, behind the particle evaluator.
///
/// It stays separate from the parsers of ideal_database.hpp, for its curves are others: harmonics of 20 and above are
/// dropped, B of row 0 does not enter, attributes may come in any order, and numbers need commas between them.

#include <string>
#include <string_view>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// The closed filaments of the AB block with this id, one a component, each of `resolution` points
///
///   r(t) = A_0 + sum_k A_k cos(k t) + B_k sin(k t),  t = i 2 pi / resolution,  k = 1 .. greatest harmonic read.
///
/// No filaments if the text does not hold the block; filaments without points for a resolution below 1.
std::vector<std::vector<Vec3>> read_ideal_filaments(std::string_view text, const std::string& id, int resolution,
                                                    const Poll& poll = {});

}  // namespace vkm
