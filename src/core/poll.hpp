#pragma once

/// Long loops stay interruptible: they tick a Heartbeat, which now and then calls the caller's poll. The poll throws
/// to abandon the computation (the Python border's poll throws on Ctrl-C). Work on a copy where an abandoned call
/// must leave its object as it was.

#include <chrono>
#include <functional>
#include <utility>

namespace vkm {

using Poll = std::function<void()>;

class Heartbeat {
 public:
  explicit Heartbeat(Poll poll) : poll_(std::move(poll)) {}

  /// Polls at most once in five milliseconds. Costs a clock read: tick once per some ten microseconds of work.
  void tick() {
    if (!poll_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now - last_ < std::chrono::milliseconds(5)) return;
    last_ = now;
    poll_();
  }

 private:
  Poll poll_;
  std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

}  // namespace vkm
