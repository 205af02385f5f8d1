#include "panel/FileWatcher.h"

#include <QFileInfo>

namespace kelvar::cli {
namespace {

constexpr int kPauseMilliseconds = 150;

}  // namespace

FileWatcher::FileWatcher() {
  pause_.setSingleShot(true);
  pause_.setInterval(kPauseMilliseconds);
  const auto wait = [this] { pause_.start(); };
  QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &pause_, wait);
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &pause_, wait);
  QObject::connect(&pause_, &QTimer::timeout, &watcher_, [this] { compare(); });
}

void FileWatcher::setFiles(const QStringList& files) {
  if (files == states_.keys()) return;
  QMap<QString, FileState> states;
  for (const QString& file : files) states.insert(file, states_.value(file, fileState(file)));
  states_ = states;
  const QStringList before = watcher_.files() + watcher_.directories();
  if (!before.isEmpty()) watcher_.removePaths(before);
  watch();
}

/// Watches the folders too, where deleted files come back.
void FileWatcher::watch() {
  for (const QString& file : states_.keys()) {
    if (fileExists(file)) watcher_.addPath(file);
    const QString folder = QFileInfo(absoluteFileName(file)).path();
    if (fileExists(folder)) watcher_.addPath(folder);
  }
}

void FileWatcher::compare() {
  watch();
  QStringList changed;
  for (auto state = states_.begin(); state != states_.end(); ++state) {
    const FileState now = fileState(state.key());
    if (now == state.value()) continue;
    state.value() = now;
    changed.append(state.key());
  }
  if (!changed.isEmpty() && onChanged) onChanged(changed);
}

}  // namespace kelvar::cli
