#pragma once

/// Threads for kernels whose outputs are independent: each output is computed whole by one thread, in the same order
/// of operations, so that the number of threads changes no bit of any result.

#include <cstddef>
#include <functional>

#include "core/poll.hpp"

namespace vkm {

/// Threads that a call may use: the environment variable VKM_NUM_THREADS where it holds a positive number, else the
/// processors that this process may run on.
int thread_limit();

/// Threads worth starting for `pairs` interactions of about a nanosecond each: starting one costs some 20 microseconds.
int threads_for(std::size_t pairs);

/// Calls work(0) .. work(count - 1), each once and in no particular order, on threads_for(pairs) threads, the caller's
/// among them. They have ended when the call returns or throws: none outlives it, and a fork is safe at any time. The
/// heartbeat ticks in the caller's thread alone; what it throws ends the loop early. `work` must not throw.
void parallel_for(std::size_t count, std::size_t pairs, Heartbeat& heartbeat,
                  const std::function<void(std::size_t)>& work);

}  // namespace vkm
