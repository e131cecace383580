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

/// The least time of each form over a few rounds.
PairForm measured(void (*run)(PairForm)) {
  constexpr int rounds = 12;
  std::array<std::chrono::nanoseconds, forms.size()> least;
  least.fill(std::chrono::nanoseconds::max());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t f = 0; f < forms.size(); ++f) {
      const auto start = std::chrono::steady_clock::now();
      run(forms[f]);
      least[f] = std::min<std::chrono::nanoseconds>(least[f], std::chrono::steady_clock::now() - start);
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

std::vector<std::pair<std::string, PairForm>> pair_forms() {
  std::vector<std::pair<std::string, PairForm>> list;
  for (const PairKernel* kernel : kernels()) list.emplace_back(kernel->name_, kernel->form());
  std::sort(list.begin(), list.end());
  return list;
}

}  // namespace vkm
