#include "mass/xi_model.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "mass/canonical_constants.hpp"

namespace vkm {

namespace {

constexpr std::int32_t most_shielded_crossings = 4;

}  // namespace

double SimpleInvariantXiModel::compute_xi(const KnotInvariants& K) const {
  const double topology = params_.a_b * K.braid_index + params_.a_k * K.crossing_number + params_.a_g * K.seifert_genus;
  return vkm::exp(params_.a_vol * K.effective_volume() + topology + params_.a_L * K.effective_ropelength() +
                  params_.a_chi * K.chirality);
}

SectorGate SimpleInvariantXiModel::assign_gate(const KnotInvariants& K) const {
  return K.crossing_number > most_shielded_crossings ? SectorGate::Exposed : SectorGate::Shielded;
}

double VKMCanonicalXiModel::compute_xi(const KnotInvariants& K) const {
  const double C = params_.use_crossing_number_as_C ? K.crossing_number : 0.0;
  const double H = params_.use_writhe_as_H ? K.writhe : 0.0;
  const double sum = (params_.alpha_C * C + params_.beta_L * K.effective_ropelength() + params_.gamma_H * H) +
                     params_.delta_V * K.effective_volume();
  return vkm::pow(canonical::phi, -2.0 * params_.golden_layer) * sum;
}

SectorGate VKMCanonicalXiModel::assign_gate(const KnotInvariants& K) const {
  return K.hyperbolic && K.crossing_number > most_shielded_crossings ? SectorGate::Exposed : SectorGate::Shielded;
}

}  // namespace vkm
