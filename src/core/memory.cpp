#include "core/memory.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <limits>
#include <new>
#include <string>

#if defined(__unix__) || defined(__APPLE__)
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace vkm {

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

/// Below it nobody asks what is free: reading it costs some tens of microseconds.
constexpr std::size_t small_request = std::size_t{64} << 20;

std::size_t physical_memory() {
#if defined(__unix__) || defined(__APPLE__)
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long page_bytes = sysconf(_SC_PAGESIZE);
  if (pages > 0 && page_bytes > 0) return static_cast<std::size_t>(pages) * static_cast<std::size_t>(page_bytes);
#endif
  return unlimited;
}

/// The number that a file of the system begins with; `otherwise` without one ("max").
std::size_t number_in(const std::string& path, std::size_t otherwise) {
  std::ifstream file(path);
  std::size_t number = 0;
  return file >> number ? number : otherwise;
}

/// The number behind a key in a file of lines "key number" or "key: number kB"; 0 without the key.
std::size_t number_of(const std::string& path, const std::string& key) {
  std::ifstream file(path);
  std::size_t number = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.rfind(key, 0) != 0) continue;
    const std::size_t begin = std::min(line.find_first_of("0123456789", key.size()), line.size());
    const bool whole = line.find_first_not_of(" :\t", key.size()) == begin;
    if (whole && std::from_chars(line.data() + begin, line.data() + line.size(), number).ec == std::errc()) {
      return line.find("kB") == std::string::npos ? number : number * 1024;
    }
  }
  return 0;
}

/// What the process may have, and how much of it is free at the moment.
struct Room {
  std::size_t whole = unlimited;
  std::size_t free = unlimited;

  void narrow(std::size_t limit, std::size_t used) {
    whole = std::min(whole, limit);
    free = std::min(free, limit - std::min(used, limit));
  }
};

/// The control group that the process is in and those around it, in the file system of version 2 or 1. Cached files
/// count as used there, but give way.
void narrow_by_control_groups(Room& room) {
  std::ifstream groups("/proc/self/cgroup");
  for (std::string line; std::getline(groups, line);) {
    const bool second = line.rfind("0::", 0) == 0;
    const std::size_t memory = line.find(":memory:");
    if (!second && memory == std::string::npos) continue;
    const std::string root = second ? "/sys/fs/cgroup" : "/sys/fs/cgroup/memory";
    std::string path = second ? line.substr(3) : line.substr(memory + 8);
    for (;;) {
      if (path == "/") path.clear();
      const std::string group = root + path + "/";
      const std::size_t limit = number_in(group + (second ? "memory.max" : "memory.limit_in_bytes"), unlimited);
      if (limit < unlimited) {
        const std::size_t used = number_in(group + (second ? "memory.current" : "memory.usage_in_bytes"), 0);
        const std::size_t cached = number_of(group + "memory.stat", second ? "file" : "total_cache");
        room.narrow(limit, used - std::min(cached, used));
      }
      if (path.empty()) break;
      path.resize(path.find_last_of('/'));
    }
  }
}

Room room_of_process() {
  Room room;
  room.narrow(physical_memory(), 0);
#if defined(__unix__) || defined(__APPLE__)
  if (const std::size_t available = number_of("/proc/meminfo", "MemAvailable"); available > 0) {
    room.free = std::min(room.free, available);
  }
  rlimit limit{};
  if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
    room.narrow(limit.rlim_cur, number_of("/proc/self/status", "VmSize"));
  }
  if (getrlimit(RLIMIT_DATA, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
    room.narrow(limit.rlim_cur, number_of("/proc/self/status", "VmData"));
  }
  narrow_by_control_groups(room);
#endif
  return room;
}

}  // namespace

void require_memory(std::size_t count, std::size_t bytes_each) {
  if (bytes_each == 0 || count <= small_request / bytes_each) return;
  const Room room = room_of_process();
  if (count > std::min(room.whole / 2, room.free) / bytes_each) throw std::bad_alloc();
}

}  // namespace vkm
