#pragma once

#include <QFileSystemWatcher>
#include <QMap>
#include <QTimer>
#include <functional>

#include "platform/files/FileName.h"

namespace kelvar::cli {

/// Reports when files change, disappear or reappear. It waits a moment after the last sign of a
/// change, because programs write files in several steps and often replace them with new ones.
class FileWatcher {
 public:
  FileWatcher();

  /// Called with the files that have changed.
  std::function<void(const QStringList& files)> onChanged;

  void setFiles(const QStringList& files);

 private:
  void watch();
  void compare();

  QMap<QString, FileState> states_;
  QFileSystemWatcher watcher_;
  QTimer pause_;
};

}  // namespace kelvar::cli
