#include "core/text_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "core/memory.hpp"

namespace vkm {

namespace {

constexpr std::size_t least_piece = std::size_t{1} << 16;
constexpr std::size_t greatest_piece = std::size_t{1} << 24;  // some milliseconds

/// A file that is open for reading, or none.
class InputFile {
 public:
  InputFile(const std::string& path, int flags, const Poll& poll) {
    if (path.find('\0') != std::string::npos) return;
    // A pipe waits for its writer, and a signal ends the wait.
    while ((descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags)) < 0 && errno == EINTR) {
      if (poll) poll();
    }
    struct stat status{};
    if (descriptor_ >= 0 && ::fstat(descriptor_, &status) == 0 && S_ISDIR(status.st_mode)) close();
  }
  ~InputFile() { close(); }
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  bool is_open() const { return descriptor_ >= 0; }

  /// The bytes read, 0 at the end and for a failure.
  std::size_t read(char* buffer, std::size_t size, const Poll& poll) {
    for (;;) {
      const ssize_t count = ::read(descriptor_, buffer, size);
      if (count >= 0) return static_cast<std::size_t>(count);
      if (errno != EINTR) return 0;
      if (poll) poll();
    }
  }

 private:
  void close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
  }

  int descriptor_ = -1;
};

}  // namespace

std::optional<std::string> read_file(const std::string& path, const Poll& poll) {
  InputFile file(path, 0, poll);
  if (!file.is_open()) return std::nullopt;
  Heartbeat heartbeat(poll);
  std::string text;
  std::size_t size = 0;
  for (;;) {
    heartbeat.tick();
    // Not every file has a size to ask for, and some have no end.
    const std::size_t piece = size < least_piece ? least_piece : (size < greatest_piece ? size : greatest_piece);
    require_memory(size + piece, 2);
    if (text.capacity() < size + piece) text.reserve(2 * (size + piece));
    text.resize(size + piece);
    const std::size_t count = file.read(text.data() + size, piece, poll);
    size += count;
    if (count == 0) break;
  }
  text.resize(size);
  return text;
}

bool is_readable_file(const std::string& path) { return InputFile(path, O_NONBLOCK, {}).is_open(); }

}  // namespace vkm
