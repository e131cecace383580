#pragma once

/// Numbers of the vortex core that are kept as they were once written down, rounded, and not computed from others. Each
/// stands here once. SI units.

namespace vkm::stored {

inline constexpr double core_radius = 1.40897017e-15;          // m; v_swirl / omega_c differs in the ninth digit
inline constexpr double core_density = 3893435826691868672.0;  // kg/m^3
inline constexpr double maximal_force = 29.053507;             // N
inline constexpr double joule_per_mev = 1.602176634e-13;       // exact in the SI; a product of e_charge is one bit off

}  // namespace vkm::stored
