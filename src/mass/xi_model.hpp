#pragma once

/// Models that turn a knot's invariants into Xi, the dimensionless topological factor of its mass, and into a sector:
/// an exposed knot's mass is multiplied by the gate lambda_c / (pi r_c), a shielded one's is not.
///
/// Symbols: k crossing number, b braid index, g genus, chi chirality, V and L the effective volume and ropelength.

#include <cstdint>

#include "mass/knot_invariants.hpp"

namespace vkm {

enum class SectorGate : std::int32_t { Shielded = 0, Exposed = 1, Unknown = -1 };

class XiModel {
 public:
  virtual ~XiModel() = default;
  virtual double compute_xi(const KnotInvariants& K) const = 0;
  virtual SectorGate assign_gate(const KnotInvariants& K) const = 0;
};

struct SimpleInvariantXiModelParams {
  double a_k = 0.0;    // weight of k
  double a_b = 0.0;    // of b
  double a_g = 0.0;    // of g
  double a_vol = 0.0;  // of V
  double a_L = 0.0;    // of L
  double a_chi = 0.0;  // of chi
};

/// Xi = exp(a_vol V + (a_b b + a_k k + a_g g) + a_L L + a_chi chi); exposed above four crossings.
class SimpleInvariantXiModel final : public XiModel {
 public:
  explicit SimpleInvariantXiModel(const SimpleInvariantXiModelParams& params = {}) : params_(params) {}
  double compute_xi(const KnotInvariants& K) const override;
  SectorGate assign_gate(const KnotInvariants& K) const override;

 private:
  SimpleInvariantXiModelParams params_;
};

struct VKMCanonicalXiModelParams {
  double alpha_C = 0.0;                  // weight of C
  double beta_L = 0.0;                   // of L
  double gamma_H = 0.0;                  // of H
  double delta_V = 0.0;                  // of V
  std::int32_t golden_layer = 0;         // powers of phi^-2
  bool use_crossing_number_as_C = true;  // else C = 0
  bool use_writhe_as_H = true;           // else H = 0
};

/// Xi = phi^(-2 golden_layer) ((alpha_C C + beta_L L + gamma_H H) + delta_V V), phi the golden ratio; exposed if
/// hyperbolic and above four crossings.
class VKMCanonicalXiModel final : public XiModel {
 public:
  explicit VKMCanonicalXiModel(const VKMCanonicalXiModelParams& params = {}) : params_(params) {}
  double compute_xi(const KnotInvariants& K) const override;
  SectorGate assign_gate(const KnotInvariants& K) const override;

 private:
  VKMCanonicalXiModelParams params_;
};

}  // namespace vkm
