#pragma once

/// Independent tasks on threads. What a task computes follows from its number alone, so that results have the same bits
/// for any number of threads.

#include <cstddef>
#include <functional>

#include "core/poll.hpp"

namespace vkm {

/// Runs task(0 .. count - 1, heartbeat) on so many threads, the calling one among them. The calling thread alone polls;
/// where the poll or a task throws, the other tasks are told to end at their next tick, and the exception goes on.
void run_tasks(std::size_t count, int threads, const Poll& poll,
               const std::function<void(std::size_t, Heartbeat&)>& task);

}  // namespace vkm
