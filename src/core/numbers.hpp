#pragma once

/// Multiples of pi as the literals that every formula of the library uses.

namespace vkm {

inline constexpr double pi = 3.141592653589793;
inline constexpr double two_pi = 6.283185307179586;
inline constexpr double four_pi = 12.566370614359172;
inline constexpr double inv_four_pi = 0.07957747154594767;  // 1 / (4 pi)

}  // namespace vkm
