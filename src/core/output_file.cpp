#include "core/output_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace vkm {

namespace {

constexpr std::size_t piece_size = std::size_t{1} << 18;

/// The file that a path stands for, whether it exists or not; the path itself where its links go in circles.
std::filesystem::path without_links(const std::string& path) {
  std::filesystem::path target(path);
  std::error_code error;
  for (int links = 0; links < 40 && std::filesystem::is_symlink(target, error); ++links) {
    const std::filesystem::path next = std::filesystem::read_symlink(target, error);
    if (error) break;
    target = target.parent_path() / next;  // an absolute link replaces all
  }
  return target;
}

/// Opens; a signal's handler runs while the system waits.
int open_file(const std::string& path, int flags, mode_t mode, const Poll& poll) {
  for (;;) {
    const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC, mode);
    if (descriptor >= 0 || errno != EINTR) return descriptor;
    if (poll) poll();
  }
}

/// A new file beside the target: its descriptor, and its path in `temporary`.
int open_beside(const std::filesystem::path& target, std::string& temporary, const Poll& poll) {
  static unsigned long serial = 0;
  const std::filesystem::path folder = target.parent_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    const std::string name = ".vkmcore-" + std::to_string(::getpid()) + "-" + std::to_string(++serial) + ".tmp";
    temporary = (folder / name).string();
    const int descriptor = open_file(temporary, O_WRONLY | O_CREAT | O_EXCL, 0666, poll);
    if (descriptor >= 0 || errno != EEXIST) return descriptor;
  }
  return -1;
}

bool same_file(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

/// Gives a new file the owner, where that is allowed, and the mode of the old one. The mode comes last: a change of
/// owner clears the bits that lend the owner's rights.
void take_rights(int descriptor, const struct stat& old) {
  struct stat fresh{};
  if (::fstat(descriptor, &fresh) != 0) return;
  const bool same_owner = fresh.st_uid == old.st_uid && fresh.st_gid == old.st_gid;
  if (!same_owner && ::fchown(descriptor, old.st_uid, old.st_gid) != 0 &&
      ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0) {
    errno = 0;
  }
  if (::fchmod(descriptor, old.st_mode & 07777) != 0) errno = 0;
}

/// Without it a power cut may undo the rename. Not every file system can.
void sync_folder(const std::filesystem::path& folder) {
  const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

OutputFile::OutputFile(const std::string& path, const Poll& poll) : poll_(poll) {
  if (path.empty() || path.find('\0') != std::string::npos) {
    error_ = ENOENT;
    return;
  }
  target_ = without_links(path).string();
  struct stat named{};
  struct stat old{};
  const bool exists = ::stat(path.c_str(), &named) == 0;
  // What the system calls a link need not lead to a path: /dev/stdout does not, where it is a pipe.
  const bool reached = exists && ::stat(target_.c_str(), &old) == 0 && same_file(old, named);
  if (exists && !reached) target_ = path;
  const bool regular = exists && S_ISREG(named.st_mode);
  if (regular && ::access(target_.c_str(), W_OK) != 0) {
    note_failure();
    return;
  }
  if (!exists || (regular && reached && old.st_nlink == 1)) {
    descriptor_ = open_beside(target_, temporary_, poll_);
    if (descriptor_ >= 0) {
      if (exists) take_rights(descriptor_, old);
      return;
    }
    temporary_.clear();
    if (!exists) {
      note_failure();
      return;
    }
  }
  overwrites_ = regular;
  descriptor_ = open_file(target_, O_WRONLY, 0666, poll_);
  if (descriptor_ < 0) note_failure();
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void OutputFile::note_failure() {
  if (error_ == 0) error_ = errno;
}

void OutputFile::write(std::string_view bytes) {
  if (!is_open()) return;
  pending_ += bytes;
  if (pending_.size() >= piece_size && !overwrites_) flush();
}

void OutputFile::flush() {
  std::string_view rest = pending_;
  while (!rest.empty() && error_ == 0) {
    const ssize_t written = ::write(descriptor_, rest.data(), rest.size() < piece_size ? rest.size() : piece_size);
    if (written > 0) {
      rest.remove_prefix(static_cast<std::size_t>(written));
    } else if (written == 0 || errno != EINTR) {
      if (written == 0) errno = EIO;
      note_failure();
    }
    if (poll_) poll_();
  }
  pending_.clear();
}

/// Space for all of the text before any of the old content is overwritten.
void OutputFile::reserve() {
  struct stat old{};
  if (::fstat(descriptor_, &old) != 0) return note_failure();
  const auto size = static_cast<off_t>(pending_.size());
  if (size > old.st_size) {
    errno = ::posix_fallocate(descriptor_, old.st_size, size - old.st_size);
    if (errno == EOPNOTSUPP || errno == EINVAL || errno == EINTR) errno = 0;  // not every file system can promise
    if (errno != 0) {
      note_failure();
      if (::ftruncate(descriptor_, old.st_size) != 0) errno = 0;
      return;
    }
  }
  // A file that shrinks is cut first: a crash leaves a part of the new text, not a mixture that looks whole.
  if (::ftruncate(descriptor_, size) != 0) note_failure();
}

bool OutputFile::commit() {
  if (!is_open()) return false;
  if (overwrites_) reserve();
  flush();
  // Pipes and terminals have nothing to sync, and say so.
  if (error_ == 0 && ::fsync(descriptor_) != 0 && errno != EINVAL && errno != EROFS && errno != ENOTSUP) note_failure();
  if (::close(descriptor_) != 0) note_failure();
  descriptor_ = -1;
  if (error_ != 0) return false;
  if (temporary_.empty()) return true;
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) {
    note_failure();
    return false;
  }
  temporary_.clear();
  sync_folder(std::filesystem::path(target_).parent_path());
  return true;
}

std::string OutputFile::failure() const { return std::generic_category().message(error_); }

void commit_or_throw(OutputFile& file, const std::string& path) {
  if (!file.commit()) throw std::runtime_error("cannot write " + path + ": " + file.failure());
}

void write_file(const std::string& path, std::string_view text, const char* open_failure, const Poll& poll) {
  OutputFile file(path, poll);
  if (!file.is_open()) throw std::runtime_error(open_failure + path);
  file.write(text);
  commit_or_throw(file, path);
}

}  // namespace vkm
