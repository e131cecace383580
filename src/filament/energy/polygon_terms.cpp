#include "filament/energy/polygon_terms.hpp"

#include <cmath>

namespace vkm {

namespace {

VKM_KERNEL void fill_neumann_plain(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count,
                                   double rc2, double* __restrict terms) {
  const LaneVec3 p = edges.place(i), e = edges.element(i);
  for (std::size_t k = 0; k < count; ++k) {
    const LaneVec3 r = edges.place(first + k) - p;
    terms[k] = 2.0 * (dot(e, edges.element(first + k)) / std::sqrt(dot(r, r) + rc2));
  }
}

VKM_KERNEL void fill_writhe_plain(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count,
                                  double rc2, double* __restrict terms) {
  const LaneVec3 p = edges.place(i), e = edges.element(i);
  for (std::size_t k = 0; k < count; ++k) {
    const LaneVec3 r = edges.place(first + k) - p;
    const double d = std::sqrt(dot(r, r) + rc2);
    terms[k] = 2.0 * dot(cross(e, edges.element(first + k)), r) / (d * d * d);
  }
}

/// Eight rows, to measure the forms with.
void try_form(decltype(fill_neumann)& fill, PairForm form) {
  static const Lanes at(trial_curve().at), edges(trial_curve().edges);
  double terms[1024];
  for (std::size_t i = 0; i < 8; ++i) fill({view(at), view(edges)}, i, 0, 1024, 0.01, terms, form);
}

}  // namespace

void fill_neumann(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                  double* terms, PairForm form) {
  if (form == PairForm::plain) return fill_neumann_plain(edges, i, first, count, rc2, terms);
  fill_neumann_wide(edges, i, first, count, rc2, terms, form);
}

void fill_writhe(const LaneSources& edges, std::size_t i, std::size_t first, std::size_t count, double rc2,
                 double* terms, PairForm form) {
  if (form == PairForm::plain) return fill_writhe_plain(edges, i, first, count, rc2, terms);
  fill_writhe_wide(edges, i, first, count, rc2, terms, form);
}

const PairKernel neumann_kernel("Neumann energy", [](PairForm form) { try_form(fill_neumann, form); });
const PairKernel writhe_kernel("writhe with a core", [](PairForm form) { try_form(fill_writhe, form); });

}  // namespace vkm
