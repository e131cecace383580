#pragma once

/// One component of an ideal knot or link: the coefficient rows of its curve
///
///   r(s) = A0 + B0 + sum_k A_k cos(k s) + B_k sin(k s),  s in radians, period 2 pi.

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "knot/fourier_series.hpp"

namespace vkm {

struct IdealABComponent {
  int component_index = 0;  // attribute I of the component's opening tag
  Vec3 A0{};                // the A triple of the row with I = 0
  Vec3 B0{};                // the B triple of the row with I = 0
  FourierBlock fourier;     // the rows with I of at least 1; harmonics without a row are zeros
};

/// Reads a component from its opening tag and the text behind it. Rows that do not parse are skipped, the last row of
/// a harmonic counts. Throws std::out_of_range if an I is too large for an int. `harmonics` is the sum of the lengths
/// of all series of one database so far, this one's is added: std::bad_alloc before they take absurd memory together.
IdealABComponent parse_ideal_component(std::string_view opening_tag, std::string_view text, std::size_t& harmonics);

/// The points r(s). Both triples of row 0 are offsets: the stored B0 counts, although the sine of 0 is 0.
std::vector<Vec3> evaluate_ideal_component(const IdealABComponent& component, std::span<const double> s,
                                           const Poll& poll = {});

}  // namespace vkm
