#pragma once

/// Circulation of a sampled loop and its material holonomy, which must not be taken for an effective vector potential.
/// Units are the caller's.

#include <span>
#include <string>

namespace vkm {

struct SwirlTonicResult {
  double circulation = 0.0;         ///< sum of u . dl
  double holonomy = 0.0;            ///< circulation over scale
  bool material_not_a_eff = false;  ///< the identification is not claimed
  bool passed = false;
  std::string message;
};

struct SwirlTonicAPI {
  using Series = std::span<const double>;

  /// sum u_x dl_x + u_y dl_y + u_z dl_z; NaN for no samples or for lists of different lengths.
  static double stokes_circulation(Series ux, Series uy, Series uz, Series dlx, Series dly, Series dlz);
  /// NaN unless scale is positive and circulation finite.
  static double material_holonomy(double circulation, double scale);
  static bool material_tonic_not_a_eff(bool claimed);
  static SwirlTonicResult evaluate(Series ux, Series uy, Series uz, Series dlx, Series dly, Series dlz, double scale,
                                   bool claimed);
};

}  // namespace vkm
