#include "core/parallel.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <vector>

#if defined(__linux__)
#include <sched.h>
#endif

namespace vkm {

namespace {

constexpr std::size_t pairs_per_thread = 200'000;

int available_processors() {
#if defined(__linux__)
  cpu_set_t allowed;
  if (sched_getaffinity(0, sizeof allowed, &allowed) == 0) return std::max(1, CPU_COUNT(&allowed));
#endif
  return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

}  // namespace

int thread_limit() {
  if (const char* wish = std::getenv("VKM_NUM_THREADS")) {
    const long threads = std::strtol(wish, nullptr, 10);
    if (threads > 0) return static_cast<int>(std::min(threads, 1024L));
  }
  return available_processors();
}

int threads_for(std::size_t pairs) {
  const std::size_t worth = pairs / pairs_per_thread;
  if (worth < 2) return 1;
  return static_cast<int>(std::min(worth, static_cast<std::size_t>(thread_limit())));
}

void parallel_for(std::size_t count, std::size_t pairs, Heartbeat& heartbeat,
                  const std::function<void(std::size_t)>& work) {
  const std::size_t threads = std::min(count, static_cast<std::size_t>(threads_for(pairs)));
  std::atomic<std::size_t> next{0};
  const auto take = [&next] { return next.fetch_add(1, std::memory_order_relaxed); };
  std::vector<std::jthread> helpers;  // joined on every way out
  try {
    while (helpers.size() + 1 < threads) {
      helpers.emplace_back([&] {
        for (std::size_t i = take(); i < count; i = take()) work(i);
      });
    }
  } catch (const std::system_error&) {
    // The system grants no more threads: those that run share the work.
  }
  try {
    for (std::size_t i = take(); i < count; i = take()) {
      work(i);
      heartbeat.tick();
    }
  } catch (...) {
    next = count;
    throw;
  }
}

}  // namespace vkm
