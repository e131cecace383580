#include "evidence/swirl_tonic.hpp"

#include <cmath>

#include "evidence/quiet_nan.hpp"

namespace vkm {

double SwirlTonicAPI::stokes_circulation(Series ux, Series uy, Series uz, Series dlx, Series dly, Series dlz) {
  if (ux.empty()) return quiet_nan;
  for (const Series& other : {uy, uz, dlx, dly, dlz}) {
    if (other.size() != ux.size()) return quiet_nan;
  }
  double sum = 0.0;
  for (std::size_t i = 0; i < ux.size(); ++i) sum += ux[i] * dlx[i] + uy[i] * dly[i] + uz[i] * dlz[i];
  return sum;
}

double SwirlTonicAPI::material_holonomy(double circulation, double scale) {
  return scale > 0.0 && std::isfinite(circulation) ? circulation / scale : quiet_nan;
}

bool SwirlTonicAPI::material_tonic_not_a_eff(bool claimed) { return !claimed; }

SwirlTonicResult SwirlTonicAPI::evaluate(Series ux, Series uy, Series uz, Series dlx, Series dly, Series dlz,
                                         double scale, bool claimed) {
  SwirlTonicResult result;
  result.circulation = stokes_circulation(ux, uy, uz, dlx, dly, dlz);
  result.holonomy = material_holonomy(result.circulation, scale);
  result.material_not_a_eff = material_tonic_not_a_eff(claimed);
  result.passed = std::isfinite(result.holonomy) && result.material_not_a_eff;
  result.message = result.passed ? "swirl-tonic ok" : "swirl-tonic guard failure";
  return result;
}

}  // namespace vkm
