#pragma once

/// Writing of whole files, so that no failure, crash or full disk costs what the file held before.
///
/// The bytes go to a temporary file beside the target, which replaces it once they are on the disk (flush, fsync,
/// rename): a reader sees the old content or the new, never a part. The new file has the old one's mode, and where
/// allowed its owner. Symbolic links are followed. Written in place are devices and pipes, files with several names
/// (a rename would leave the others with the old content), and files in folders that take no new ones; the space that
/// these need is reserved before any byte of theirs changes.

#include <string>
#include <string_view>

#include "core/poll.hpp"

namespace vkm {

class OutputFile {
 public:
  /// Opens for replacing the file at `path`, which is left as it is until commit(). `poll` is called while the system
  /// waits (for the reader of a pipe), and may throw.
  explicit OutputFile(const std::string& path, const Poll& poll = {});
  /// Without a successful commit() the target is as it was before, unless it was written in place.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// False if the file could not be opened for writing.
  bool is_open() const { return descriptor_ >= 0; }

  /// Appends bytes. What fails is told by commit().
  void write(std::string_view bytes);

  /// Puts the bytes on the disk and in the place of the target. False if they are not all there, with the reason in
  /// failure().
  [[nodiscard]] bool commit();

  /// The system's words for the first failure ("No space left on device").
  std::string failure() const;

 private:
  void flush();
  void reserve();
  void note_failure();

  Poll poll_;
  std::string target_;     // links followed
  std::string temporary_;  // empty where the target is written in place
  std::string pending_;
  bool overwrites_ = false;  // an existing file in place: the text is gathered, and its space reserved first
  int descriptor_ = -1;
  int error_ = 0;
};

/// Replaces a file by `text`. Throws std::runtime_error: `open_failure` and the path if it cannot be opened, a text
/// with path and reason if it cannot be written; the old file is as it was then.
void write_file(const std::string& path, std::string_view text, const char* open_failure, const Poll& poll = {});

/// Commits, or throws std::runtime_error "cannot write <path>: <reason>".
void commit_or_throw(OutputFile& file, const std::string& path);

}  // namespace vkm
