#pragma once

#include <QString>
#include <filesystem>

namespace kelvar {

/// A file that is written beside its place and then takes it, or goes away without a trace, also
/// where the program is killed meanwhile: as long as it is written to, it has no name, but for file
/// systems that know no files without one.
///
/// What was there before keeps its owner, group and permissions and its extended attributes, as far
/// as the system lets this user set them; where the group cannot be kept, it is given no more than
/// everybody. A symbolic link stays one: what it leads to is replaced. A hard link is broken: the
/// other names keep the old contents.
class FileReplacement {
 public:
  explicit FileReplacement(const QString& path);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  /// Why it cannot be begun, or none.
  QString begin();
  /// To be written to, between the two.
  int file() const { return file_; }
  /// Brings it to the disk and puts it in its place. Why that failed, or none.
  QString finish();

 private:
  template <class Make>
  bool nameBeside(const Make& make);
  /// Whether it got one; if not, the system's error number is set.
  bool giveName();

  std::filesystem::path target_;
  /// Its own name, while it has one.
  std::filesystem::path beside_;
  int file_ = -1;
};

}  // namespace kelvar
