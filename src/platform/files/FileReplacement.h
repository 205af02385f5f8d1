#pragma once

#include <QString>
#include <filesystem>

#include "pixels/Result.h"

namespace kelvar {

/// A new file that is written in the folder of an old one and then takes its place.
///
/// Until then, it has no name, so that it disappears even if the program is killed; on file systems
/// without unnamed files, it has a temporary name.
///
/// The old file's owner, group, permissions and extended attributes are kept as far as the system
/// lets this user set them; if the group cannot be kept, the new group gets no more permissions
/// than other users. A symbolic link stays and its target is replaced. A hard link is broken: the
/// other names keep the old contents.
class FileReplacement {
 public:
  explicit FileReplacement(const QString& path);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  Result<void> begin();
  /// The descriptor to write to, between `begin` and `finish`.
  int file() const { return file_; }
  /// Flushes the file to the disk and puts it in its place.
  Result<void> finish();

 private:
  template <class Make>
  bool nameBeside(const Make& make);
  /// Sets `errno` if it returns false.
  bool giveName();

  std::filesystem::path target_;
  /// The temporary name; empty while it has none.
  std::filesystem::path beside_;
  int file_ = -1;
};

}  // namespace kelvar
