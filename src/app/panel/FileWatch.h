#pragma once

#include <QFileSystemWatcher>
#include <QMap>
#include <QTimer>
#include <functional>

#include "platform/FileName.h"

namespace kelvar::app {

/// Tells when files change, vanish or come back, a moment after the last sign of it: programs write
/// a file in several goes, and often put a new one in its place.
class FileWatch {
 public:
  FileWatch();

  /// With the files that have changed.
  std::function<void(const QStringList& files)> didChange;

  void setFiles(const QStringList& files);

 private:
  void watch();
  void compare();

  QMap<QString, FileState> states_;
  QFileSystemWatcher watcher_;
  QTimer pause_;
};

}  // namespace kelvar::app
