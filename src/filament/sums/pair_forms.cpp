#include "filament/sums/pair_forms.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <vector>

namespace vkm {

namespace {

constexpr std::array<const char*, 4> names = {"plain", "divider", "mixed", "added"};
constexpr std::array<PairForm, 4> forms = {PairForm::plain, PairForm::divider, PairForm::mixed, PairForm::added};

/// One reciprocal a pair serves all three components: the divider is what limits this loop.
VKM_KERNEL void add_closed_curve_plain(const PairRun& run, double softening) {
  const auto term = [softening](const LaneVec3& dl, const LaneVec3& r, auto...) VKM_TERM {
    const double r2 = dot(r, r);
    return cross(dl, r) * (1.0 / (r2 * std::sqrt(r2) + softening));
  };
  add_sources(run.sources, run.first, run.last, run.points, run.sums, term);
}

VKM_KERNEL void add_induced_plain(const PairRun& run, double soft2, double strength) {
  const auto term = [=](const LaneVec3& edge, const LaneVec3& r, auto...) VKM_TERM {
    const double r2 = dot(r, r) + soft2;
    return cross(edge, r) * (strength / (std::sqrt(r2) * r2));
  };
  add_sources(run.sources, run.first, run.last, run.points, run.sums, term);
}

/// The quickest form for one block of points and some sources: the least time of each over a few rounds.
PairForm measured_form() {
  constexpr std::size_t sources = 256, rounds = 12;
  std::vector<Vec3> at(sources), vector(sources);
  for (std::size_t s = 0; s < sources; ++s) {
    const double x = static_cast<double>(s) / sources;
    at[s] = {x, x * x, 0.5 - x};
    vector[s] = {1.0 - x, x, 0.25};
  }
  Lanes points(lane_block), sums(lane_block);
  for (std::size_t k = 0; k < lane_block; ++k) points.set(k, {2.0, static_cast<double>(k), -1.0});
  std::array<std::chrono::nanoseconds, 4> least;
  least.fill(std::chrono::nanoseconds::max());
  const PointSources list{at.data(), vector.data()};
  for (std::size_t round = 0; round < rounds; ++round) {
    for (std::size_t f = 0; f < forms.size(); ++f) {
      const auto start = std::chrono::steady_clock::now();
      add_induced({list, 0, sources, view(points), space(sums)}, 0.01, 1.0, forms[f]);
      least[f] = std::min<std::chrono::nanoseconds>(least[f], std::chrono::steady_clock::now() - start);
    }
  }
  return forms[static_cast<std::size_t>(std::min_element(least.begin(), least.end()) - least.begin())];
}

PairForm chosen_form() {
  if (const char* pinned = std::getenv("VKM_PAIR_FORM")) {
    for (std::size_t f = 0; f < forms.size(); ++f) {
      if (std::string_view(pinned) == names[f]) return forms[f];
    }
  }
  return measured_form();
}

}  // namespace

void add_closed_curve(const PairRun& run, double softening, PairForm form) {
  if (form == PairForm::plain || !add_closed_curve_wide(run, softening, form)) add_closed_curve_plain(run, softening);
}

void add_induced(const PairRun& run, double soft2, double strength, PairForm form) {
  if (form == PairForm::plain || !add_induced_wide(run, soft2, strength, form)) add_induced_plain(run, soft2, strength);
}

PairForm pair_form() {
  if (!has_wide()) return PairForm::plain;
  static const PairForm form = chosen_form();
  return form;
}

const char* name_of(PairForm form) { return names[static_cast<std::size_t>(form)]; }

PairForm pair_form_for(std::span<const Vec3> vertices, double scale) {
  const PairForm form = pair_form();
  if (form == PairForm::plain || scale == 0.0 || !moderate(scale) || !moderate(vertices)) return PairForm::plain;
  return form;
}

}  // namespace vkm
