#include "core/tasks.hpp"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace vkm {

namespace {

struct Cancelled {};

}  // namespace

void run_tasks(std::size_t count, int threads, const Poll& poll,
               const std::function<void(std::size_t, Heartbeat&)>& task) {
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> cancelled = false;
  std::mutex mutex;
  std::condition_variable ended;
  std::exception_ptr failure;
  std::size_t running = 0;

  const auto fail = [&](std::exception_ptr error) {
    const std::lock_guard lock(mutex);
    if (!failure) failure = std::move(error);
    cancelled = true;
  };
  const auto work = [&](const Poll& own_poll) {
    Heartbeat heartbeat(own_poll);
    try {
      for (std::size_t i = next++; i < count && !cancelled; i = next++) task(i, heartbeat);
    } catch (const Cancelled&) {
    } catch (...) {
      fail(std::current_exception());
    }
  };
  const Poll cancel_poll = [&cancelled] {
    if (cancelled) throw Cancelled{};
  };
  const auto helpers = std::min(static_cast<std::size_t>(std::max(threads, 1)), count) - (count == 0 ? 0 : 1);
  std::vector<std::thread> pool;
  running = helpers;
  for (std::size_t t = 0; t < helpers; ++t) {
    pool.emplace_back([&] {
      work(cancel_poll);
      const std::lock_guard lock(mutex);
      --running;
      ended.notify_one();
    });
  }
  work([&] {
    cancel_poll();
    if (poll) poll();
  });
  {
    std::unique_lock lock(mutex);
    while (!ended.wait_for(lock, std::chrono::milliseconds(20), [&] { return running == 0; })) {
      if (!poll || cancelled) continue;
      lock.unlock();
      try {
        poll();
      } catch (...) {
        fail(std::current_exception());
      }
      lock.lock();
    }
  }
  for (auto& thread : pool) thread.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace vkm
