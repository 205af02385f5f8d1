#pragma once

#include <QMimeData>
#include <QStringList>
#include <QUrl>

namespace kelvar::app {

/// The files of this machine that are being dropped.
inline QStringList droppedFiles(const QMimeData* data) {
  QStringList files;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) files.append(url.toLocalFile());
  }
  return files;
}

}  // namespace kelvar::app
