#pragma once

/// The forms of a kernel whose terms have a root and a quotient for each pair, and the choice among them.
///
/// A processor can leave both to its divider, or do one or both of them by multiply-adds that give the same bits
/// (wide.hpp), so that divider and multipliers work side by side. Which form is the quickest differs between kernels,
/// and between processors of one vector width: each kernel is measured on its first use, in about a millisecond.
/// The bits are the same whichever it is; the environment variable VKM_PAIR_FORM names one for tests.

#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

enum class PairForm {
  plain,    // the compiler's vectors, divider
  divider,  // eight lanes, divider
  mixed,    // eight lanes, the divider's root and a quotient by multiply-adds
  added,    // eight lanes, both by multiply-adds
};

const char* name_of(PairForm form);

/// A kernel and its form on this machine. Kernels are objects with static duration.
class PairKernel {
 public:
  /// `run` does about ten microseconds of the kernel's usual work in a form.
  PairKernel(const char* name, void (*run)(PairForm form));

  /// The form to take for data of moderate magnitude (wide.hpp).
  PairForm form() const;

  /// That one, or the plain form for other data.
  PairForm form_for(bool moderate) const { return moderate ? form() : PairForm::plain; }

 private:
  const char* name_;
  void (*run_)(PairForm form);
  mutable std::atomic<int> chosen_ = -1;

  friend std::vector<std::pair<std::string, PairForm>> pair_forms();
};

/// A curve of 1024 places and edges to measure forms with, made once: what a measurement allocates disturbs it.
struct TrialCurve {
  std::vector<Vec3> at, edges;
};
const TrialCurve& trial_curve();

/// The form of every kernel, by name.
std::vector<std::pair<std::string, PairForm>> pair_forms();

}  // namespace vkm
