#pragma once

/// Long loops stay interruptible: they tick a Heartbeat, which now and then calls the caller's poll. The poll throws
/// to abandon the computation (the Python border's poll throws on Ctrl-C). A poll may run code of the user, which may
/// change or drop whatever the user can reach: a function that polls owns what it reads. Work on a copy where an
/// abandoned call must leave its object as it was.

#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>

namespace vkm {

using Poll = std::function<void()>;

/// Least time between two polls of a heartbeat. Tests set it to zero: every tick polls then.
inline std::chrono::nanoseconds poll_interval = std::chrono::milliseconds(5);

class Heartbeat {
 public:
  explicit Heartbeat(Poll poll) : poll_(std::move(poll)) {}

  /// Polls at most once in `poll_interval`. Costs a clock read: tick once per some ten microseconds of work.
  void tick() {
    if (!poll_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now - last_ < poll_interval) return;
    last_ = now;
    poll_();
  }

  /// The tick of one step in `every`, for loops of short steps that are counted anyway.
  void tick(std::size_t step, std::size_t every) {
    if (step % every == every - 1 || poll_interval.count() == 0) tick();
  }

 private:
  Poll poll_;
  std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

}  // namespace vkm
