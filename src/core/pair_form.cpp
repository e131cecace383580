#include "core/pair_form.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <string_view>

#include "core/wide.hpp"

namespace vkm {

namespace {

constexpr std::array<const char*, 4> names = {"plain", "divider", "mixed", "added"};
constexpr std::array<PairForm, 4> forms = {PairForm::plain, PairForm::divider, PairForm::mixed, PairForm::added};

/// Not a namespace's variable: kernels of other files are made before those of this one.
std::vector<const PairKernel*>& kernels() {
  static std::vector<const PairKernel*> list;
  return list;
}

/// The least time of each form over a millisecond, or over eight rounds where others have the processor meanwhile;
/// after a quarter of a millisecond with the widest vectors: a processor that has not used them for a while runs them
/// slowly at first.
PairForm measured(void (*run)(PairForm)) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::microseconds warming(250), measuring(1000);
  constexpr int least_rounds = 8;
  std::array<Clock::duration, forms.size()> least;
  least.fill(Clock::duration::max());
  const auto begin = Clock::now();
  while (Clock::now() - begin < warming) run(PairForm::mixed);
  for (int round = 0; round < least_rounds || Clock::now() - begin < warming + measuring; ++round) {
    for (std::size_t f = 0; f < forms.size(); ++f) {
      const auto start = Clock::now();
      run(forms[f]);
      least[f] = std::min(least[f], Clock::now() - start);
    }
  }
  return forms[static_cast<std::size_t>(std::min_element(least.begin(), least.end()) - least.begin())];
}

PairForm chosen(void (*run)(PairForm)) {
  if (const char* pinned = std::getenv("VKM_PAIR_FORM")) {
    for (std::size_t f = 0; f < forms.size(); ++f) {
      if (std::string_view(pinned) == names[f]) return forms[f];
    }
  }
  return measured(run);
}

}  // namespace

const char* name_of(PairForm form) { return names[static_cast<std::size_t>(form)]; }

PairKernel::PairKernel(const char* name, void (*run)(PairForm)) : name_(name), run_(run) { kernels().push_back(this); }

PairForm PairKernel::form() const {
  if (!has_wide()) return PairForm::plain;
  int form = chosen_.load(std::memory_order_relaxed);
  if (form < 0) {  // two threads at once may measure both, and one of their answers stays
    chosen_.compare_exchange_strong(form, static_cast<int>(chosen(run_)));
    form = chosen_.load(std::memory_order_relaxed);
  }
  return static_cast<PairForm>(form);
}

const TrialCurve& trial_curve() {
  static const TrialCurve curve = [] {
    TrialCurve made;
    for (std::size_t i = 0; i < 1024; ++i) {
      const double x = static_cast<double>(i) / 1024.0;
      made.at.push_back({x, x * x, 0.5 - x});
      made.edges.push_back({1.0 - x, x, 0.25});
    }
    return made;
  }();
  return curve;
}

std::vector<std::pair<std::string, PairForm>> pair_forms() {
  std::vector<std::pair<std::string, PairForm>> list;
  for (const PairKernel* kernel : kernels()) list.emplace_back(kernel->name_, kernel->form());
  std::sort(list.begin(), list.end());
  return list;
}

}  // namespace vkm
